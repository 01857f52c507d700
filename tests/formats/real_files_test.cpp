#include <formats/read_file.h>
#include <support/real_graphs.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>

namespace nodeline::formats {
namespace {

using test_support::RealGraph;

std::string ReadAll(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

// Without what narrows the view to starting points.
ReadFile ReadPath(const std::string& path) {
    return ReadFile(ReadAll(path), path, {.show_all = true});
}

long DepthOf(Node node) {
    long depth = 0;
    for (; node.GetOwner(); node = node.GetOwner()) ++depth;
    return depth;
}

void ExpectCounts(const ReadFile& file, const RealGraph& graph) {
    ASSERT_TRUE(file.is_read) << file.error;
    const GraphListing listing(file.graph, file.report.looks);
    long owners = 0;
    long depth = 0;
    for (const Node& node : listing.nodes()) {
        owners += IsOwner(node) ? 1 : 0;
        depth = std::max(depth, DepthOf(node));
    }
    EXPECT_EQ(static_cast<long>(listing.nodes().size()), graph.CountAll());
    EXPECT_EQ(static_cast<long>(listing.edges().size()), graph.edges);
    EXPECT_EQ(owners, graph.owners);
    EXPECT_EQ(depth, graph.max_depth);
}

void ExpectTheSameInEveryFormat(const ReadFile& file) {
    ASSERT_TRUE(file.is_read) << file.error;
    const std::string before = Outline(file.graph, file.report.looks);
    for (const Format format : {Format::kText, Format::kDot, Format::kGraphml, Format::kJson}) {
        // A text has no room for colours and for captions of several lines.
        if (format == Format::kText && file.report.format != Format::kText) continue;
        const WrittenGraph written = WriteGraph(file.graph, "out", format, file.report.looks);
        EXPECT_TRUE(written.warnings.empty()) << written.warnings.front();
        const ReadFile again(written.text, "out", {.show_all = true});
        EXPECT_EQ(again.report.format, format) << again.error;
        EXPECT_TRUE(again.report.warnings.empty());
        EXPECT_EQ(Outline(again.graph, again.report.looks), before) << NameOf(format);
    }
}

// A caption in the way of a text on one line: fields of records are parted by a bar alone, and what
// breaks lines is a blank.
std::string OnOneLine(std::string caption) {
    for (std::size_t at; (at = caption.find("<BR")) != std::string::npos;) {
        caption.replace(at, caption.find('>', at) - at + 1, " ");
    }
    std::string line;
    for (const char c : caption) {
        const bool is_blank = c == ' ' || c == '\n' || c == '\r' || c == '\t';
        const bool is_after_gap = line.empty() || line.back() == ' ' || line.back() == '|';
        if (is_blank && is_after_gap) continue;
        if (c == '|' && !line.empty() && line.back() == ' ') line.pop_back();
        line += is_blank ? ' ' : c;
    }
    if (!line.empty() && line.back() == ' ') line.pop_back();
    return line;
}

// What tells a node from others where ids may differ: its caption and those of all its owners.
std::string PathOf(const Node& node) {
    std::string path;
    for (Node n = node; n.GetOwner(); n = n.GetOwner()) path += OnOneLine(n.GetCaption()) + " < ";
    return path;
}

std::vector<std::string> SortedNodes(const ReadFile& file) {
    const GraphListing listing(file.graph, file.report.looks);
    std::vector<std::string> nodes;
    for (const Node& node : listing.nodes()) nodes.push_back(PathOf(node));
    std::sort(nodes.begin(), nodes.end());
    return nodes;
}

std::vector<std::string> SortedEdges(const ReadFile& file) {
    const GraphListing listing(file.graph, file.report.looks);
    std::vector<std::string> edges;
    for (const Edge& edge : listing.edges()) {
        edges.push_back(PathOf(edge.From()) + "-> " + PathOf(edge.To()) + ": " +
                        OnOneLine(edge.GetCaption()));
    }
    std::sort(edges.begin(), edges.end());
    return edges;
}

class RealGraphs : public testing::TestWithParam<RealGraph> {};
class RealGraphsInDot : public testing::TestWithParam<RealGraph> {};

TEST(RealGraphTable, IsWhole) { test_support::ExpectAllRealGraphs(); }

TEST_P(RealGraphs, HaveTheirNodesEdgesAndOwners) {
    const ReadFile file = ReadPath(GetParam().text);
    EXPECT_EQ(file.report.format, Format::kText);
    EXPECT_TRUE(file.report.warnings.empty()) << file.report.warnings.front();
    ExpectCounts(file, GetParam());
}

TEST_P(RealGraphs, StayTheSameInEveryFormat) {
    ExpectTheSameInEveryFormat(ReadPath(GetParam().text));
}

TEST_P(RealGraphsInDot, HaveTheirNodesEdgesAndOwners) {
    const ReadFile file = ReadPath(GetParam().dot);
    EXPECT_EQ(file.report.format, Format::kDot);
    EXPECT_LE(file.report.warnings.size(), 1U);
    ExpectCounts(file, GetParam());
}

TEST_P(RealGraphsInDot, StayTheSameInEveryFormat) {
    ExpectTheSameInEveryFormat(ReadPath(GetParam().dot));
}

TEST_P(RealGraphsInDot, AreThoseOfTheText) {
    const ReadFile text = ReadPath(GetParam().text);
    const ReadFile dot = ReadPath(GetParam().dot);
    EXPECT_EQ(SortedNodes(dot), SortedNodes(text));
    EXPECT_EQ(SortedEdges(dot), SortedEdges(text));
}

INSTANTIATE_TEST_SUITE_P(Table, RealGraphs, testing::ValuesIn(test_support::ReadRealGraphs()),
                         test_support::NameOfTest);
INSTANTIATE_TEST_SUITE_P(Table, RealGraphsInDot,
                         testing::ValuesIn(test_support::ReadRealGraphsInDot()),
                         test_support::NameOfTest);

}  // namespace
}  // namespace nodeline::formats
