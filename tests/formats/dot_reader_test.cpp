#include <formats/read_file.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace nodeline::formats {
namespace {

TEST(DotReader, ReadsNodesAndEdgesInTheirOrder) {
    const ReadFile file("digraph G { b; a; a -> b -> c; {a c} -> {b d} [label=x] }");
    EXPECT_EQ(file.report.format, Format::kDot);
    EXPECT_EQ(Tree(file), "b a c d");
    EXPECT_EQ(Edges(file), "a>b b>c a>b:x a>d:x c>b:x c>d:x");
    EXPECT_TRUE(file.report.warnings.empty());
    EXPECT_FALSE(file.report.has_layout);
}

TEST(DotReader, ClustersOwnWhatIsInThemAtAnyDepth) {
    const ReadFile file(
        "digraph { subgraph cluster_a { label=A; x; subgraph cluster_b { label=B; y;\n"
        "subgraph cluster_c { label=C; z } } } w; x -> w }");
    EXPECT_EQ(Tree(file), "A{x B{y C{z}}} w");
    EXPECT_EQ(Edges(file), "x>w");
}

TEST(DotReader, ClustersWithoutALabelGoByTheirNames) {
    const ReadFile file(
        "digraph { label=whole; subgraph cluster_a { label=A; subgraph cluster_b { x } }\n"
        "subgraph clusterc { y } subgraph cluster_d { label=\"\"; z } }");
    EXPECT_EQ(Tree(file), "A{cluster_b{x}} clusterc{y} {z}");
}

TEST(DotReader, ClustersThatAreOpenedAgainGoOn) {
    const ReadFile file(
        "digraph { subgraph cluster_a { label=A; x } y; subgraph cluster_a { z } }");
    EXPECT_EQ(Tree(file), "A{x z} y");
}

TEST(DotReader, OtherSubgraphsOwnNothing) {
    const ReadFile file(
        "digraph { { rank=same; a; b } subgraph s { c; subgraph cluster_d { label=D; d } }\n"
        "subgraph cluster_e { label=E; subgraph t { e } } }");
    EXPECT_EQ(Tree(file), "a b c D{d} E{e}");
    EXPECT_EQ(file.report.warnings,
              std::vector<std::string>{"g: warning: 1 attribute ignored: rank"});
}

TEST(DotReader, ANodeInTwoClustersStaysInTheFirst) {
    const ReadFile file(
        "digraph { subgraph cluster_a { label=A; x } subgraph cluster_b { label=B; x; y } }");
    EXPECT_EQ(Tree(file), "A{x} B{y}");
    EXPECT_EQ(
        file.report.warnings,
        std::vector<std::string>{"g: warning: 1 node in several clusters, taken into the first"});
}

TEST(DotReader, AnEmptyClusterIsANode) {
    EXPECT_EQ(Tree(ReadFile("digraph { a subgraph cluster_b { label=B } }")), "a B");
}

TEST(DotReader, EdgesMayEndAtClusters) {
    const ReadFile file(
        "digraph { compound=true; subgraph cluster_a { label=A; x } subgraph cluster_b { label=B;"
        "y }\nx -> y [lhead=cluster_b]; x -> y [ltail=cluster_a, lhead=cluster_b];\n"
        "x -> x [lhead=cluster_a]; x -> y [lhead=cluster_z] }");
    EXPECT_EQ(Edges(file), "x>B A>B x>A x>y");
    EXPECT_EQ(file.report.warnings,
              std::vector<std::string>{"g: warning: 1 edge end at a cluster that is not there"});
}

TEST(DotReader, UndirectedGraphsRunFromTailToHead) {
    EXPECT_EQ(Edges(ReadFile("graph { b -- a; a -- b -- c }")), "b>a a>b b>c");
    EXPECT_EQ(Edges(ReadFile("strict graph { b -- a; a -- b; a -- a }")), "b>a a>a");
}

TEST(DotReader, PortsAreDropped) {
    const ReadFile file("digraph { a:p:n -> b:sw; a [shape=record label=\"<p> left|right\"] }");
    EXPECT_EQ(Edges(file), "left | right>b");
    EXPECT_EQ(
        file.report.warnings,
        std::vector<std::string>{"g: warning: 3 attributes ignored: shape, headport, tailport"});
}

TEST(DotReader, SeveralGraphsAreAnOwnerEach) {
    const ReadFile file(
        "digraph one { a -> b } graph { label=second; a -- c }\n/* x */ digraph {}");
    EXPECT_EQ(Tree(file), "one{a b} second{a c} ");
    EXPECT_EQ(Edges(file), "a>b a>c");
}

TEST(DotReader, SeveralGraphsKeepTheirNamesBesideTheLabelsOfClusters) {
    const ReadFile file(
        "digraph one { subgraph cluster_x { label=X; a } } digraph two { b }"
        "digraph three { label=third; subgraph cluster_y { c } }");
    EXPECT_EQ(Tree(file), "one{X{a}} two{b} third{cluster_y{c}}");
}

TEST(DotReader, NamesThatAreIntegersBecomeTags) {
    const ReadFile file("digraph { 30; subgraph cluster_7 { label=A; -5 } }");
    EXPECT_EQ(file.Find("30").GetTag(), 30);
    EXPECT_EQ(file.Find("-5").GetTag(), -5);
    EXPECT_EQ(file.Find("A").GetTag(), 7);
}

TEST(DotReader, OtherNamesAreCountedFromOne) {
    const ReadFile file("digraph { 30; b; subgraph cluster_7 { label=A; c } }");
    EXPECT_EQ(file.Find("30").GetTag(), 1);
    EXPECT_EQ(file.Find("b").GetTag(), 2);
    EXPECT_EQ(file.Find("c").GetTag(), 3);
    EXPECT_EQ(file.Find("A").GetTag(), 4);
    EXPECT_EQ(ReadFile("digraph { 0; 5 }").Find("5").GetTag(), 2) << "0 is the root";
    EXPECT_EQ(ReadFile("digraph { 5; 05 }").Find("05").GetTag(), 2);
}

TEST(DotReader, ALabelIsTheCaptionEvenIfItIsEmpty) {
    const ReadFile file("digraph { a; b [label=B]; c; d [label=\"\"]; node [label=E]; e }");
    EXPECT_EQ(Tree(file), "a B c  E");
}

TEST(DotReader, LabelsAreReadInTheirCharacterSet) {
    EXPECT_EQ(Tree(ReadFile("graph { charset=latin1 a [label=\"\xe4\"] }")), "\xc3\xa4");
    EXPECT_EQ(Tree(ReadFile("graph { a [label=\"\xc3\xa4\"] }")), "\xc3\xa4");
}

TEST(DotReader, EveryLossIsToldOnceInOneLine) {
    const ReadFile file(
        "digraph { rankdir=LR; node [shape=box]; a [shape=oval, color=mauve]; b [URL=x]\n"
        "a -> b [weight=2 color=mauve] }",
        "calls.dot");
    EXPECT_EQ(file.report.warnings,
              std::vector<std::string>{"calls.dot: warning: 4 attributes ignored: rankdir, URL, "
                                       "shape, weight; 1 colour unknown: mauve"});
}

TEST(DotReader, ReadsColoursAndPens) {
    using paintcore::_color;
    const ReadFile file(
        "digraph { a [fillcolor=red fontcolor=\"#010203\" color=\"0.5 1 1\" penwidth=2.5]\n"
        "b [style=filled color=\"#11223344\"] c [color=blue]\n"
        "a -> b [color=\"red:blue\" penwidth=3]; b -> c }");
    const NodeLook a = file.LookOf("a");
    EXPECT_EQ(a.fill, _color(255, 0, 0));
    EXPECT_EQ(a.text, _color(1, 2, 3));
    EXPECT_EQ(a.border, _color(0, 255, 255));
    EXPECT_EQ(a.pen_width, 2.5);
    EXPECT_EQ(file.LookOf("b").fill, _color(0x11, 0x22, 0x33, 0x44));
    EXPECT_FALSE(file.LookOf("c").fill.has_value());
    EXPECT_EQ(file.LookOf("c").border, _color(0, 0, 255));
    ASSERT_EQ(file.report.looks.edges.size(), 1U);
    EXPECT_EQ(file.report.looks.edges.begin()->second.line, _color(255, 0, 0));
    EXPECT_EQ(file.report.looks.edges.begin()->second.pen_width, 3.0);
}

TEST(DotReader, NarrowsNoView) {
    const ReadFile file("digraph { a; b [label=\"a Thread\"] }");
    EXPECT_FALSE(IsFlagSet(file.Find("a"), NodeHidden));
}

TEST(DotReader, ErrorsTellTheirLines) {
    EXPECT_EQ(ReadFile("digraph {\n a -> ;\n}").error, "g:2: syntax error near ';'");
    EXPECT_EQ(ReadFile("digraph {\n a \n", "x.dot").error, "x.dot:3: syntax error");
    EXPECT_EQ(ReadFile("digraph {\n}\n}").error, "g:3: syntax error near '}'");
    EXPECT_EQ(ReadFile("digrph {}", "x.gv").error, "x.gv:1: syntax error near 'digrph'");
    EXPECT_EQ(ReadFile("// nothing\n", "x.gv").error, "x.gv:1: there is no graph in the file");
    EXPECT_EQ(ReadFile("", "x.gv").error, "x.gv:1: the file is empty");
    EXPECT_EQ(ReadFile(std::string("digraph {\n a\0 }", 15)).error,
              "g:2: a byte of the value 0 belongs in no DOT file");
}

TEST(DotReader, ReadsOnAfterAnErrorInAStringOrAComment) {
    for (const char* broken : {"digraph { a [label=\"x", "digraph { /* x", "digraph { a [label=<x",
                               "digraph { a [label=<<b>", "strict", "digraph { subgraph {"}) {
        EXPECT_FALSE(ReadFile(broken, "g.dot").is_read) << broken;
        EXPECT_EQ(Tree(ReadFile("digraph { a }")), "a") << broken;
    }
}

TEST(DotReader, RefusesEndsThatBelongToNoGraph) {
    for (const char* end : {"/* x", "\"x", "<x", "<<<<x>", "# x\n/*", "/* \" < */ \"<"}) {
        EXPECT_EQ(ReadFile("digraph { a }\n" + std::string(end), "g").error.substr(0, 4),
                  "g:" + std::to_string(2 + std::count(end, end + std::strlen(end), '\n')) + ":")
            << end;
        EXPECT_EQ(Tree(ReadFile("digraph { a }")), "a") << end;
    }
    EXPECT_EQ(ReadFile("digraph { a }\n/* x").error,
              "g:2: the end of the file belongs to no graph");
    EXPECT_EQ(Tree(ReadFile("digraph { a } // x")), "a");
    EXPECT_EQ(Tree(ReadFile("digraph { a }\n# x\n/* y */\n\n")), "a");
}

TEST(DotReader, RefusesBracesThatAreNestedTooDeep) {
    const auto nested = [](int depth) {
        std::string text = "digraph {";
        for (int i = 0; i < depth; ++i) text += "subgraph cluster" + std::to_string(i) + " {\n";
        return text + "a" + std::string(static_cast<std::size_t>(depth) + 1, '}');
    };
    EXPECT_TRUE(ReadFile(nested(999)).is_read);
    EXPECT_EQ(ReadFile(nested(1000)).error, "g:1000: braces are nested more than 1000 deep");
    EXPECT_FALSE(ReadFile(nested(1000000)).is_read);
    const std::string braces(5000, '{');
    EXPECT_TRUE(ReadFile("digraph { a [label=\"" + braces + "\"] b [label=<" + braces + ">] /* " +
                         braces + "*/ }")
                    .is_read);
}

}  // namespace
}  // namespace nodeline::formats
