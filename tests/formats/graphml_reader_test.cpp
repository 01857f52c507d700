#include <formats/read_file.h>

#include <gtest/gtest.h>

namespace nodeline::formats {
namespace {

// A file with keys and the contents of its only graph.
std::string Graphml(const std::string& contents, const std::string& keys = "") {
    return "<?xml version=\"1.0\"?>\n<graphml xmlns:y=\"y\">\n" + keys +
           "<graph edgedefault=\"undirected\">\n" + contents + "</graph></graphml>\n";
}

const char* const kLabelKey = "<key id=\"d0\" for=\"all\" attr.name=\"label\"/>\n";

TEST(GraphmlReader, ReadsNodesAndEdgesInTheirOrder) {
    const ReadFile file(
        Graphml("<edge source=\"b\" target=\"a\"/><node id=\"b\"/><node id=\"a\"/>"
                "<edge id=\"e\" source=\"a\" target=\"b\" directed=\"false\"/>"));
    EXPECT_EQ(file.report.format, Format::kGraphml);
    EXPECT_EQ(Tree(file), "b a");
    EXPECT_EQ(Edges(file), "b>a a>b");
    EXPECT_TRUE(file.report.warnings.empty());
}

TEST(GraphmlReader, NodesOwnTheirGraphs) {
    const ReadFile file(
        Graphml("<node id=\"a\"><graph><node id=\"b\"><graph><node id=\"c\"/></graph></node>"
                "<edge source=\"d\" target=\"c\"/></graph><graph><node id=\"e\"/></graph></node>"
                "<node id=\"d\"/><edge source=\"a\" target=\"d\"/>"));
    EXPECT_EQ(Tree(file), "a{b{c} e} d");
    EXPECT_EQ(Edges(file), "d>c a>d");
}

TEST(GraphmlReader, DataWithTheUsualNamesAreCaptions) {
    for (const char* name : {"label", "Label", "name", "caption", "description", "title"}) {
        const std::string key =
            std::string("<key id=\"k\" for=\"all\" attr.name=\"") + name + "\"/>";
        const ReadFile file(
            Graphml("<node id=\"a\"><data key=\"k\">A &amp; <![CDATA[<b>]]></data>"
                    "</node><edge source=\"a\" target=\"a\"><data key=\"k\">E</data>"
                    "</edge>",
                    key));
        EXPECT_EQ(Tree(file), "A & <b>") << name;
        EXPECT_EQ(Edges(file), "A & <b>>A & <b>:E") << name;
    }
    EXPECT_EQ(Tree(ReadFile(Graphml("<node id=\"a\"><data key=\"label\">A</data></node>"))), "A")
        << "a key that is not declared is taken by its id";
    EXPECT_EQ(Tree(ReadFile(Graphml("<node id=\"a\"><desc>A</desc></node>"))), "A");
}

TEST(GraphmlReader, TheBestNameForACaptionWins) {
    const ReadFile file(
        Graphml("<node id=\"a\"><data key=\"n\">name</data><data key=\"d0\">label</data>"
                "<data key=\"s\">description</data></node>",
                std::string(kLabelKey) + "<key id=\"n\" attr.name=\"name\"/>"
                                         "<key id=\"s\" attr.name=\"description\"/>"));
    EXPECT_EQ(Tree(file), "label");
}

TEST(GraphmlReader, AnEmptyLabelIsAnEmptyCaption) {
    const ReadFile file(
        Graphml("<node id=\"a\"><data key=\"d0\"></data></node>"
                "<node id=\"b\"><data key=\"d0\"> </data></node>",
                kLabelKey));
    EXPECT_EQ(Tree(file), " ");
    EXPECT_EQ(file.Nodes().front().GetCaption(), "");
}

TEST(GraphmlReader, KeysHaveUsualValues) {
    const ReadFile file(
        Graphml("<node id=\"a\"/><node id=\"b\"><data key=\"c\">#0000ff</data></node>"
                "<edge source=\"a\" target=\"b\"/>",
                "<key id=\"c\" for=\"node\" attr.name=\"fillcolor\"><default>red</default></key>"));
    EXPECT_EQ(file.LookOf("a").fill, paintcore::_color(255, 0, 0));
    EXPECT_EQ(file.LookOf("b").fill, paintcore::_color(0, 0, 255));
    EXPECT_TRUE(file.report.looks.edges.empty());
}

TEST(GraphmlReader, ReadsTheShapesOfAnEditor) {
    const ReadFile file(Graphml(
        "<node id=\"n0\"><data key=\"g\"><y:GenericNode><y:Geometry x=\"1\"/>"
        "<y:Fill color=\"#FFCC00\" transparent=\"false\"/>"
        "<y:BorderStyle color=\"#102030\" width=\"2.0\" type=\"line\"/>"
        "<y:NodeLabel textColor=\"#FF0000\">\n  first<y:LabelModel/> </y:NodeLabel>"
        "<y:NodeLabel>second</y:NodeLabel></y:GenericNode></data></node>"
        "<node id=\"n1\"><data key=\"g\"><y:ProxyAutoBoundsNode><y:Realizers active=\"0\">"
        "<y:GroupNode><y:NodeLabel>group</y:NodeLabel></y:GroupNode>"
        "<y:GroupNode><y:NodeLabel>closed</y:NodeLabel></y:GroupNode></y:Realizers>"
        "</y:ProxyAutoBoundsNode></data><graph><node id=\"n1::n0\"><data key=\"g\"><y:ShapeNode>"
        "<y:Fill hasColor=\"false\"/><y:NodeLabel hasText=\"false\"/></y:ShapeNode></data></node>"
        "</graph></node>"
        "<edge source=\"n0\" target=\"n1\"><data key=\"e\"><y:PolyLineEdge>"
        "<y:LineStyle color=\"#00FF00\" width=\"3.0\"/><y:EdgeLabel>edge</y:EdgeLabel>"
        "</y:PolyLineEdge></data></edge>"));
    EXPECT_EQ(Tree(file), "first group{n1::n0}");
    EXPECT_EQ(Edges(file), "first>group:edge");
    const NodeLook look = file.LookOf("first");
    EXPECT_EQ(look.fill, paintcore::_color(255, 0xcc, 0));
    EXPECT_EQ(look.border, paintcore::_color(0x10, 0x20, 0x30));
    EXPECT_EQ(look.text, paintcore::_color(255, 0, 0));
    EXPECT_EQ(look.pen_width, 2.0);
    ASSERT_EQ(file.report.looks.edges.size(), 1U);
    EXPECT_EQ(file.report.looks.edges.begin()->second.line, paintcore::_color(0, 255, 0));
    EXPECT_EQ(file.report.warnings,
              std::vector<std::string>{"g: warning: 1 attribute ignored: y:Geometry"});
}

TEST(GraphmlReader, PortsAndHyperedgesAreDropped) {
    const ReadFile file(
        Graphml("<node id=\"a\"><port name=\"p\"/><data key=\"w\">1</data></node>"
                "<hyperedge/><edge source=\"a\" target=\"a\" sourceport=\"p\"/>"));
    EXPECT_EQ(Edges(file), "a>a");
    EXPECT_EQ(file.report.warnings,
              std::vector<std::string>{"g: warning: 3 attributes ignored: port, w, hyperedge"});
}

TEST(GraphmlReader, SeveralGraphsAreAnOwnerEach) {
    const ReadFile file(
        "<graphml><graph id=\"one\"><node id=\"a\"/></graph>"
        "<graph id=\"two\"><data key=\"label\">second</data><node id=\"b\"/>"
        "<edge source=\"a\" target=\"b\"/></graph></graphml>");
    EXPECT_EQ(Tree(file), "one{a} second{b}");
    EXPECT_EQ(Edges(file), "a>b");
}

TEST(GraphmlReader, IdsThatAreIntegersBecomeTags) {
    EXPECT_EQ(ReadFile(Graphml("<node id=\"30\"/><node id=\"7\"/>")).Find("7").GetTag(), 7);
    EXPECT_EQ(ReadFile(Graphml("<node id=\"30\"/><node id=\"n7\"/>")).Find("n7").GetTag(), 2);
}

TEST(GraphmlReader, ErrorsTellTheirLines) {
    EXPECT_EQ(ReadFile("<graphml>\n<graph>\n</grph>\n</graphml>").error,
              "g:3: Start-end tags mismatch");
    EXPECT_EQ(ReadFile("<graphml>\n<graph").error, "g:2: Error parsing start element tag");
    EXPECT_EQ(ReadFile("<svg>\n</svg>", "g.graphml").error,
              "g.graphml:1: the outermost element is not <graphml>");
    EXPECT_EQ(ReadFile("noise", "g.graphml").error, "g.graphml:1: No document element found");
    EXPECT_EQ(ReadFile("", "g.graphml").error, "g.graphml:1: the file is empty");
    EXPECT_EQ(ReadFile("\n<graphml>\n</graphml>").error, "g:2: there is no <graph> in the file");
    EXPECT_EQ(ReadFile(Graphml("<node/>")).error, "g:4: a node has no id");
    EXPECT_EQ(ReadFile(Graphml("<node id=\"a\"/>\n<node id=\"a\"/>")).error,
              "g:5: the node \"a\" is declared above");
    EXPECT_EQ(ReadFile(Graphml("<node id=\"a\"/>\n\n<edge source=\"a\"/>")).error,
              "g:6: an edge has no target");
    EXPECT_EQ(ReadFile(Graphml("<edge source=\"a\" target=\"b\"/>")).error,
              "g:4: an edge names the node \"a\", which is not declared");
}

TEST(GraphmlReader, NestingHasNoEnd) {
    constexpr int kDepth = 100000;
    std::string text = "<graphml><graph>";
    for (int i = 1; i <= kDepth; ++i) text += "<node id=\"" + std::to_string(i) + "\"><graph>";
    for (int i = 1; i <= kDepth; ++i) text += "</graph></node>";
    const ReadFile file(text + "</graph></graphml>");
    EXPECT_EQ(file.Nodes().size(), static_cast<std::size_t>(kDepth)) << file.error;
}

}  // namespace
}  // namespace nodeline::formats
