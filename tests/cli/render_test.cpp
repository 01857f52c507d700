#include <cli/program.h>
#include <support/fonts/test_fonts.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <regex>

namespace {

using test_support::kNarrowGraph;
using test_support::kSmallGraph;
using test_support::ProgramResult;

class Render : public test_support::ProgramTest {};

int Count(const std::string& text, const std::string& part) {
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

TEST_F(Render, PutsThePictureBesideTheInput) {
    std::filesystem::create_directory(folder() / "sub");
    Write("sub/g.txt", kSmallGraph);
    const ProgramResult result = RunProgram("render sub/g.txt");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_TRUE(std::regex_match(
        result.out,
        std::regex("wrote sub/g\\.svg: 3 nodes, 2 edges, 2 levels, [0-9]+\\.[0-9]{2} s\n")))
        << result.out;
    EXPECT_EQ(Read("sub/g.svg").rfind("<?xml", 0), 0U);
}

TEST_F(Render, WritesTheFormatThatTheNameOfThePictureAsksFor) {
    Write("g.txt", kSmallGraph);
    EXPECT_EQ(RunProgram("render g.txt -o a.SVG").status, 0);
    EXPECT_EQ(RunProgram("render g.txt --output b.pdf").status, 0);
    EXPECT_EQ(RunProgram("render g.txt -o c.png").status, 0);
    EXPECT_EQ(Read("a.SVG").rfind("<?xml", 0), 0U);
    EXPECT_EQ(Read("b.pdf").rfind("%PDF-", 0), 0U);
    EXPECT_EQ(Read("c.png").rfind("\x89PNG\r\n", 0), 0U);
}

TEST_F(Render, WritesTheFormatThatIsAskedForUnderAnyName) {
    Write("g.txt", kSmallGraph);
    EXPECT_EQ(RunProgram("render g.txt --format png").status, 0);
    EXPECT_EQ(RunProgram("render g.txt --format pdf -o picture.png").status, 0);
    EXPECT_EQ(RunProgram("render g.txt -o plain").status, 0);
    EXPECT_EQ(Read("g.png").rfind("\x89PNG\r\n", 0), 0U);
    EXPECT_EQ(Read("picture.png").rfind("%PDF-", 0), 0U);
    EXPECT_EQ(Read("plain").rfind("<?xml", 0), 0U);
}

TEST_F(Render, ReadsStandardInputAndWritesStandardOutput) {
    Write("g.txt", kSmallGraph);
    EXPECT_EQ(RunProgram("render g.txt").status, 0);
    const std::string picture = Read("g.svg");
    for (const char* arguments : {"render - <g.txt", "render - -o - <g.txt", "render g.txt -o -"}) {
        const ProgramResult result = RunProgram(arguments);
        EXPECT_EQ(result.status, 0) << arguments;
        EXPECT_EQ(result.out, picture) << arguments;
        EXPECT_EQ(result.err.rfind("wrote standard output: 3 nodes", 0), 0U) << result.err;
    }
    EXPECT_EQ(RunProgram("render - -o in.svg <g.txt").status, 0);
    EXPECT_EQ(Read("in.svg"), picture);
    EXPECT_EQ(CountFiles(), 3);
}

TEST_F(Render, IsTheSameAtEveryRun) {
    Write("g.txt", kSmallGraph);
    for (const char* format : {"svg", "pdf", "png"}) {
        const std::string arguments = std::string("render g.txt -o - --format ") + format;
        const ProgramResult first = RunProgram(arguments);
        EXPECT_EQ(first.status, 0);
        EXPECT_EQ(RunProgram(arguments).out, first.out) << format;
    }
}

TEST_F(Render, DrawsOwnersUnderWhatTheyOwnAndEdgesOverAll) {
    Write("g.txt", kSmallGraph);
    const std::string svg = RunProgram("render g.txt -o -").out;
    const std::size_t owner = svg.find(">parser<");
    const std::size_t inner = svg.find(">scanner<");
    const std::size_t edge = svg.find("<path");
    ASSERT_NE(owner, std::string::npos);
    ASSERT_NE(inner, std::string::npos);
    ASSERT_NE(edge, std::string::npos);
    EXPECT_LT(owner, inner);
    EXPECT_LT(inner, edge);
    EXPECT_GT(edge, svg.find(">main<"));
}

TEST_F(Render, EscapesCaptionsAndReplacesBytesThatAreNoText) {
    Write("g.txt", "title\n[nodes]\n1 \"a<b>&\"\" 0 0\n2 \"x\xff\x01y\" 0 0\n");
    const std::string svg = RunProgram("render g.txt -o -").out;
    EXPECT_NE(svg.find("a&lt;b&gt;&amp;"), std::string::npos) << svg;
    EXPECT_NE(svg.find("x\xef\xbf\xbd\xef\xbf\xbdy"), std::string::npos) << svg;
    EXPECT_EQ(svg.find('\xff'), std::string::npos);
}

TEST_F(Render, ScalesThePicture) {
    Write("g.txt", kSmallGraph);
    const auto width = [&](const std::string& options) {
        const std::string svg = RunProgram("render g.txt -o - " + options).out;
        std::smatch match;
        return std::regex_search(svg, match, std::regex("width=\"([0-9.]+)\""))
                   ? std::stod(match[1])
                   : 0.0;
    };
    const double one = width("");
    EXPECT_GT(one, 100.0);
    EXPECT_NEAR(width("--scale 3"), 3.0 * one, 3.0);
    EXPECT_NEAR(width("--scale 0.5"), 0.5 * one, 1.0);
}

TEST_F(Render, DrawsPortsUnlessAskedForSimpleBoxes) {
    Write("g.txt", kSmallGraph);
    const std::string svg = RunProgram("render g.txt -o -").out;
    EXPECT_EQ(Count(svg, ">-<"), 4) << "the ports of two leaves: " << svg;
    EXPECT_EQ(RunProgram("render g.txt -o - --handler port").out, svg);
    EXPECT_EQ(Count(RunProgram("render g.txt -o - --handler simple").out, ">-<"), 0);
}

TEST_F(Render, DrawsBareRectanglesWithTheDefaultHandler) {
    Write("g.txt", kSmallGraph);
    const std::string svg = RunProgram("render g.txt -o - --handler default").out;
    EXPECT_EQ(Count(svg, "<text"), 0);
    EXPECT_GE(Count(svg, "<rect"), 3);
}

TEST_F(Render, ShowsOnlyWhatStartingPointsLeadTo) {
    Write("g.txt", kNarrowGraph);
    const ProgramResult narrow = RunProgram("render g.txt");
    EXPECT_EQ(narrow.out.rfind("wrote g.svg: 3 of 4 nodes, 2 of 3 edges, 3 levels, ", 0), 0U)
        << narrow.out;
    EXPECT_NE(narrow.out.find("; --all shows every node\n"), std::string::npos);
    EXPECT_EQ(Read("g.svg").find(">g<"), std::string::npos);
}

TEST_F(Render, ShowsEverythingWhenAskedTo) {
    Write("g.txt", kNarrowGraph);
    const ProgramResult all = RunProgram("render g.txt --all");
    EXPECT_EQ(all.out.rfind("wrote g.svg: 4 nodes, 3 edges, 4 levels, ", 0), 0U) << all.out;
    EXPECT_EQ(all.out.find("--all"), std::string::npos);
    EXPECT_NE(Read("g.svg").find(">g<"), std::string::npos);
}

TEST_F(Render, OfAGraphWithoutNodesIsAnEmptyPicture) {
    Write("g.txt", "title\n[nodes]\n");
    const ProgramResult result = RunProgram("render g.txt");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out.rfind("wrote g.svg: 0 nodes, 0 edges, 0 levels, ", 0), 0U) << result.out;
    EXPECT_EQ(Count(Read("g.svg"), "<text"), 0);
}

TEST_F(Render, LeavesNothingBehindWhereItCannotWrite) {
    Write("g.txt", kSmallGraph);
    std::filesystem::create_directory(folder() / "taken.svg");
    for (const char* output : {"missing/g.svg", "taken.svg", "g.txt/x.svg"}) {
        const ProgramResult result = RunProgram(std::string("render g.txt -o ") + output);
        EXPECT_EQ(result.status, 1) << output;
        EXPECT_EQ(result.err.rfind(std::string("cannot write ") + output + ": ", 0), 0U)
            << result.err;
        EXPECT_EQ(CountFiles(), 2) << output;
    }
}

TEST_F(Render, LeavesAnOldPictureWhereTheInputIsBad) {
    Write("g.txt", "title\n[edges]\n1 2\n");
    Write("g.svg", "old");
    EXPECT_EQ(RunProgram("render g.txt").status, 1);
    EXPECT_EQ(Read("g.svg"), "old");
}

TEST_F(Render, SaysThatAPictureIsTooLarge) {
    Write("g.txt", kSmallGraph);
    const ProgramResult result = RunProgram("render g.txt -o g.png --scale 1e6");
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("g.png: a picture of "), std::string::npos) << result.err;
    EXPECT_NE(result.err.find("is too large"), std::string::npos) << result.err;
    EXPECT_FALSE(Exists("g.png"));
}

TEST_F(Render, SaysThatStandardOutputIsFull) {
    Write("g.txt", kSmallGraph);
    const ProgramResult result = RunProgramInto("/dev/full", "render g.txt -o -");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "standard output cannot be written\n");
}

// Lanes of edges may run below all nodes, and the incremental layout makes no room for them there.
TEST_F(Render, MakesRoomForRoutesBelowAllNodes) {
    const std::string example = NODELINE_EXAMPLES "/graphs/inflate-blocks.txt";
    const std::string svg = RunProgram("render " + example + " --layout inc -o -").out;
    std::smatch height;
    ASSERT_TRUE(std::regex_search(svg, height, std::regex("height=\"([0-9.]+)\"")));
    double lowest = 0.0;
    const std::regex point("[ML][0-9.]+ ([0-9.]+)");
    for (std::sregex_iterator it(svg.begin(), svg.end(), point), end; it != end; ++it) {
        lowest = std::max(lowest, std::stod((*it)[1]));
    }
    EXPECT_GT(lowest, 850.0);
    EXPECT_LT(lowest, std::stod(height[1]));
}

}  // namespace
