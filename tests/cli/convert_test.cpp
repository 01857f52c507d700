#include <cli/program.h>
#include <support/fonts/test_fonts.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using test_support::kSmallGraph;
using test_support::ProgramResult;

class Convert : public test_support::ProgramTest {};

constexpr const char* kColouredGraph =
    "digraph { subgraph cluster_1 { label=\"parser\"; 2 [label=scanner] }\n"
    "30 [label=main fillcolor=red]; 30 -> 2 [label=\"next token\" color=blue] }\n";

TEST_F(Convert, WritesTheFormatThatTheNameAsksFor) {
    Write("g.txt", kSmallGraph);
    for (const std::string ending : {"dot", "gv", "graphml", "xml", "json"}) {
        const ProgramResult there = RunProgram("convert g.txt g." + ending);
        EXPECT_EQ(there.status, 0);
        EXPECT_EQ(there.err, "");
        EXPECT_EQ(there.out, "wrote g." + ending + ": 3 nodes, 2 edges\n");
        EXPECT_EQ(RunProgram("convert g." + ending + " back.txt").status, 0);
        EXPECT_EQ(
            Read("back.txt"),
            "3 nodes, 2 edges\n[nodes]\n1 \"parser\" 0 0\n2 \"scanner\" 0 1\n30 \"main\" 0 0\n"
            "[edges]\n30 2 \"next token\"\n2 30 \"\"\n")
            << ending;
    }
}

TEST_F(Convert, WritesTheFormatThatAnOptionAsksFor) {
    Write("g.txt", kSmallGraph);
    EXPECT_EQ(RunProgram("convert g.txt out --to dot").status, 0);
    EXPECT_EQ(Read("out").rfind("digraph {", 0), 0U);
    EXPECT_EQ(RunProgram("convert g.txt out.dot --to json").status, 0);
    EXPECT_EQ(Read("out.dot").rfind("{\"graph\":", 0), 0U);
}

TEST_F(Convert, GoesBetweenStandardInputAndStandardOutput) {
    Write("g", kColouredGraph);
    const ProgramResult result = RunProgram("convert - - --to text <g");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out.rfind("3 nodes, 1 edge\n[nodes]\n", 0), 0U) << result.out;
    EXPECT_EQ(result.err,
              "standard output: warning: 1 node without colours and pens; 1 edge without colours "
              "and pens\nwrote standard output: 3 nodes, 1 edge\n");
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(Convert, KeepsColours) {
    Write("g.dot", kColouredGraph);
    EXPECT_EQ(RunProgram("convert g.dot g.graphml").status, 0);
    EXPECT_EQ(RunProgram("convert g.graphml g.json").status, 0);
    EXPECT_NE(Read("g.json").find("\"fillcolor\":\"#ff0000\""), std::string::npos);
    EXPECT_NE(Read("g.json").find("\"color\":\"#0000ff\""), std::string::npos);
}

TEST_F(Convert, TellsWhatIsLost) {
    Write("g.dot", "digraph { rankdir=LR a [shape=box label=\"x\\ny\"] }");
    const ProgramResult result = RunProgram("convert g.dot g.txt");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err,
              "g.dot: warning: 2 attributes ignored: rankdir, shape\n"
              "g.txt: warning: 1 caption with line feeds, written as blanks\n");
}

TEST_F(Convert, TellsThatALayoutIsLost) {
    Write("g.txt", kSmallGraph);
    Write("l.json", RunProgram("layout g.txt").out);
    const ProgramResult result = RunProgram("convert l.json g.dot");
    EXPECT_EQ(result.err, "g.dot: warning: without the layout of the input\n");
    EXPECT_EQ(result.out, "wrote g.dot: 3 nodes, 2 edges\n");
}

TEST_F(Convert, NeverTakesThePlaceOfTheInput) {
    Write("g.dot", "digraph { a }");
    ExpectError("convert g.dot ./g.dot", 2,
                "./g.dot: the output would take the place of the graph");
    EXPECT_EQ(Read("g.dot"), "digraph { a }");
}

TEST_F(Convert, AnOutputNeedsAFormat) {
    Write("g.dot", "digraph { a }");
    ExpectError("convert g.dot out.svg", 2,
                "out.svg: the name ends in none of .txt, .dot, .gv, .graphml, .xml and .json; --to "
                "chooses the format");
    ExpectError("convert g.dot -", 2, "standard output has no ending; --to chooses the format");
}

TEST_F(Convert, LeavesNothingBehindWhereItFails) {
    Write("g.dot", "digraph { a }");
    ExpectError("convert g.dot nowhere/out.txt", 1,
                "cannot write nowhere/out.txt: No such file or directory");
    std::filesystem::create_directory(folder() / "folder.dot");
    ExpectError("convert g.dot folder.dot", 1, "cannot write folder.dot: Is a directory");
    EXPECT_EQ(CountFiles(), 2);
    EXPECT_EQ(RunProgramInto("/dev/full", "convert g.dot - --to text").status, 1);
}

TEST_F(Convert, BadFilesOfEachFormatEndWithTheirLine) {
    Write("g.dot", "digraph {\n a -> -> b }");
    Write("g.graphml", "<graphml>\n<graph>\n<node id=\"a\">\n</graph></graphml>");
    Write("g.json", "{\"graph\":\n {\"nodes\": [{}]}}");
    Write("g.txt", "title\n[nodes]\n1 \"a\" 0 2\n");
    Write("out.json", "as it was");
    const auto expect_bad = [&](const std::string& name, const std::string& line) {
        ExpectError("convert " + name + " out.json", 1, line);
        ExpectError("render " + name, 1, line);
        ExpectError("layout " + name, 1, line);
    };
    expect_bad("g.dot", "g.dot:2: syntax error near '->'");
    expect_bad("g.graphml", "g.graphml:4: Start-end tags mismatch");
    expect_bad("g.json", "g.json:2: a node has no id");
    expect_bad("g.txt", "g.txt:3: node 1 names node 2 as its owner, which is not declared");
    EXPECT_EQ(Read("out.json"), "as it was");
    EXPECT_EQ(CountFiles(), 5);
}

TEST_F(Convert, ThePictureHasTheColoursOfTheFile) {
    Write("g.dot", kColouredGraph);
    EXPECT_EQ(RunProgram("render g.dot").status, 0);
    const std::string picture = Read("g.svg");
    EXPECT_NE(picture.find("#ff0000"), std::string::npos);
    EXPECT_NE(picture.find("#0000ff"), std::string::npos);
    EXPECT_EQ(RunProgram("render g.dot --handler simple").status, 0);
    EXPECT_EQ(Read("g.svg").find("#ff0000"), std::string::npos);
}

TEST_F(Convert, ALayoutIsShownAsItIs) {
    Write("g.txt", kSmallGraph);
    const std::string layout = RunProgram("layout g.txt").out;
    Write("l.json", layout);
    EXPECT_EQ(RunProgram("layout l.json").out, layout);
    std::string moved = layout;
    const std::string position = "\"position\":[";
    const std::size_t at = moved.rfind(position) + position.size();
    moved.insert(at, "1");
    Write("m.json", moved);
    EXPECT_EQ(RunProgram("layout m.json").out, moved) << "no layout corrects the position";
    EXPECT_EQ(RunProgram("render m.json").status, 0);
    EXPECT_EQ(RunProgram("layout m.json --fold 2:children --unfold 2:children").status, 0);
}

}  // namespace
