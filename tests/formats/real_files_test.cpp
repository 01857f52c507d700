#include <formats/read_file.h>

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace nodeline::formats {
namespace {

std::string ReadAll(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

struct RealFile {
    const char* name;
    int nodes;
    int edges;
    int owners;
    // The caption of one node.
    const char* caption;
};

class RealFiles : public testing::TestWithParam<RealFile> {
protected:
    ReadFile file{ReadAll(std::string(NODELINE_TEST_DATA "/formats/") + GetParam().name),
                  GetParam().name};
};

TEST_P(RealFiles, HaveTheirNodesEdgesAndOwners) {
    ASSERT_TRUE(file.is_read) << file.error;
    const GraphListing listing(file.graph, file.report.looks);
    int owners = 0;
    for (const Node& node : listing.nodes()) owners += IsOwner(node) ? 1 : 0;
    EXPECT_EQ(listing.nodes().size(),
              static_cast<std::size_t>(GetParam().nodes + GetParam().owners));
    EXPECT_EQ(listing.edges().size(), static_cast<std::size_t>(GetParam().edges));
    EXPECT_EQ(owners, GetParam().owners);
    EXPECT_TRUE(file.Find(GetParam().caption)) << Tree(file).substr(0, 1000);
    EXPECT_LE(file.report.warnings.size(), 1U);
}

TEST_P(RealFiles, StayTheSameInEveryFormat) {
    ASSERT_TRUE(file.is_read) << file.error;
    const std::string before = Outline(file.graph, file.report.looks);
    for (const Format format : {Format::kDot, Format::kGraphml, Format::kJson}) {
        const WrittenGraph written = WriteGraph(file.graph, "out", format, file.report.looks);
        EXPECT_TRUE(written.warnings.empty()) << written.warnings.front();
        const ReadFile again(written.text, "out");
        EXPECT_EQ(again.report.format, format) << again.error;
        EXPECT_TRUE(again.report.warnings.empty());
        EXPECT_EQ(Outline(again.graph, again.report.looks), before) << NameOf(format);
    }
}

// The numbers were counted by hand or by the tools that the graphs come from.
INSTANTIATE_TEST_SUITE_P(
    Dot, RealFiles,
    testing::Values(RealFile{"Latin1.gv", 1, 0, 0, "áâãäåæçèéêëìíîïðñòóôõöøùúûü"},
                    RealFile{"clust4.gv", 10, 13, 2, "process #2"},
                    RealFile{"html2.gv", 4, 3, 0, "elephant two corn c f penguin 4"},
                    RealFile{"japanese.gv", 7, 8, 0, "下駄配列"},
                    RealFile{"ldbxtried.gv", 30, 70, 1, "21079\nlefty"},
                    RealFile{"structs.gv", 3, 2, 0, "hello world | b | c | d | e | f | g | h"},
                    RealFile{"switch.gv", 64, 80, 0, ""},
                    RealFile{"table.gv", 3, 2, 0, "elefantel two buca c f patratos 4"},
                    RealFile{"unix.gv", 41, 49, 0, "Wollongong"},
                    RealFile{"zlib-calls-by-file.gv", 151, 207, 15, "adler32_z"},
                    RealFile{"systemd-units.gv", 259, 721, 9, "machine.slice"}),
    [](const auto& file) {
        std::string name = file.param.name;
        for (char& c : name) c = c == '-' || c == '.' ? '_' : c;
        return name;
    });

}  // namespace
}  // namespace nodeline::formats
