#include <formats/read_file.h>
#include <support/random_graph.h>

#include <gtest/gtest.h>

#include <array>

namespace nodeline::formats {
namespace {

constexpr std::array<Format, 4> kFormats = {Format::kText, Format::kDot, Format::kGraphml,
                                            Format::kJson};

// What a file in the format makes of what a graph was written as.
ReadFile Again(const ReadFile& file, Format format) {
    const WrittenGraph written = WriteGraph(file.graph, "out", format, file.report.looks);
    return ReadFile(written.text, "again", {.show_all = true, .format = format});
}

TEST(Writer, WritesText) {
    const ReadFile file(
        "digraph { 5 [label=\"a \\\"b\\\"\"]; subgraph cluster_7 { label=A; 6 } 5 -> 6 [label=e] "
        "}");
    EXPECT_EQ(WriteGraph(file.graph, "out", Format::kText, {}).text,
              "3 nodes, 1 edge\n[nodes]\n5 \"a \"b\"\" 0 0\n7 \"A\" 0 0\n6 \"6\" 0 7\n[edges]\n"
              "5 6 \"e\"\n");
}

TEST(Writer, WritesDot) {
    const ReadFile file(
        "t\n[nodes]\n1 \"a\\b\" 0 0\n2 \"A & B\" 0 0\n3 \"\" 0 2\n[edges]\n1 2 \"e\"\n3 1 \"\"\n");
    EXPECT_EQ(WriteGraph(file.graph, "out", Format::kDot, {}).text,
              "digraph {\n    compound=true;\n    1 [label=\"a\\\\b\"];\n"
              "    subgraph \"cluster_2\" {\n        graph [label=\"A &amp; B\"];\n"
              "        3 [label=\"\"];\n    }\n"
              "    1 -> 3 [label=\"e\" lhead=\"cluster_2\"];\n    3 -> 1;\n}\n");
}

TEST(Writer, WritesGraphml) {
    const ReadFile file(
        "t\n[nodes]\n1 \"a<&>\" 0 0\n2 \"A\" 0 0\n3 \"b\" 0 2\n[edges]\n1 2 \"e\"\n");
    EXPECT_EQ(WriteGraph(file.graph, "out", Format::kGraphml, {}).text,
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<graphml xmlns=\"http://graphml.graphdrawing.org/xmlns\">\n"
              "<key id=\"label\" for=\"all\" attr.name=\"label\" attr.type=\"string\"/>\n"
              "<graph edgedefault=\"directed\">\n"
              "<node id=\"1\"><data key=\"label\">a&lt;&amp;&gt;</data></node>\n"
              "<node id=\"2\"><data key=\"label\">A</data><graph edgedefault=\"directed\">\n"
              "<node id=\"3\"><data key=\"label\">b</data></node>\n</graph></node>\n"
              "<edge source=\"1\" target=\"2\"><data key=\"label\">e</data></edge>\n"
              "</graph>\n</graphml>\n");
}

TEST(Writer, WritesJson) {
    const ReadFile file(
        "t\n[nodes]\n1 \"a\"b\" 0 0\n2 \"A\" 0 0\n3 \"b\" 0 2\n[edges]\n1 2 \"e\"\n3 1 \"\"\n");
    EXPECT_EQ(WriteGraph(file.graph, "out", Format::kJson, {}).text,
              "{\"graph\":{\"directed\":true,\n\"nodes\":{\n\"1\":{\"label\":\"a\\\"b\"},\n"
              "\"2\":{\"label\":\"A\"},\n\"3\":{\"label\":\"b\",\"metadata\":{\"owner\":\"2\"}}},\n"
              "\"edges\":[\n{\"source\":\"1\",\"target\":\"2\",\"label\":\"e\"},\n"
              "{\"source\":\"3\",\"target\":\"1\"}]}}\n");
}

TEST(Writer, AnEmptyGraphIsAFile) {
    const ReadFile empty("t\n[nodes]\n");
    for (const Format format : kFormats) {
        const ReadFile again = Again(empty, format);
        EXPECT_TRUE(again.is_read) << NameOf(format) << again.error;
        EXPECT_TRUE(again.Nodes().empty());
    }
}

TEST(Writer, NumbersNodesWhoseTagsAreNoIds) {
    graph_ptr2<Graph> graph(new Graph, true);
    Node a = graph->GetRoot().AddNode();
    Node b = graph->GetRoot().AddNode();
    a.LinkTo(b);
    EXPECT_EQ(WriteGraph(graph, "", Format::kText, {}).text,
              "2 nodes, 1 edge\n[nodes]\n1 \"\" 0 0\n2 \"\" 0 0\n[edges]\n1 2 \"\"\n");
    a.SetTag(-1);
    b.SetTag(8);
    EXPECT_EQ(WriteGraph(graph, "", Format::kText, {}).text,
              "2 nodes, 1 edge\n[nodes]\n1 \"\" 0 0\n2 \"\" 0 0\n[edges]\n1 2 \"\"\n");
}

TEST(Writer, EveryFormatKeepsRandomGraphs) {
    for (std::uint64_t seed = 1; seed <= 100; ++seed) {
        test::RandomGraph random(seed);
        GraphLooks looks;
        int tag = 0;
        for (Node node : random.nodes) {
            tag += 1 + static_cast<int>(seed % 3);
            node.SetTag(tag);
            node.SetCaption("n" + std::to_string(tag % 17));
            if (tag % 5 == 0) looks.nodes[node.GetID()].fill = paintcore::_color(tag & 255, 1, 2);
            if (tag % 7 == 0) looks.nodes[node.GetID()].pen_width = 0.5 * tag;
        }
        for (Edge edge : random.edges) {
            edge.SetCaption(edge.GetID() % 2 == 0 ? "e" + std::to_string(edge.GetID()) : "");
            if (edge.GetID() % 3 == 0)
                looks.edges[edge.GetID()].line = paintcore::_color(1, 2, 3, 4);
        }
        const std::string before = Outline(random.graph, looks);
        for (const Format format : {Format::kDot, Format::kGraphml, Format::kJson}) {
            const std::string text = WriteGraph(random.graph, "", format, looks).text;
            const ReadFile again(text, "again", {.format = format});
            ASSERT_TRUE(again.is_read) << again.error;
            EXPECT_TRUE(again.report.warnings.empty()) << again.report.warnings.front();
            EXPECT_EQ(Outline(again.graph, again.report.looks), before)
                << NameOf(format) << ", seed " << seed;
        }
        const WrittenGraph text = WriteGraph(random.graph, "t.txt", Format::kText, looks);
        ASSERT_EQ(text.warnings.size(), 1U);
        const ReadFile again(text.text);
        EXPECT_EQ(WriteGraph(again.graph, "", Format::kText, {}).text, text.text);
    }
}

TEST(Writer, TellsWhatTextCannotHold) {
    const ReadFile file(
        "digraph { a [color=red label=\"x\\ny\"]; b [color=blue]; a -> b [label=\"\\n\"] }");
    const WrittenGraph written = WriteGraph(file.graph, "o.txt", Format::kText, file.report.looks);
    EXPECT_EQ(written.warnings,
              std::vector<std::string>{"o.txt: warning: 2 captions with line feeds, written as "
                                       "blanks; 2 nodes without colours and pens"});
    EXPECT_EQ(Tree(ReadFile(written.text)), "x y b");
}

TEST(Writer, InnerClustersDoNotTakeOverColours) {
    const ReadFile file(
        "digraph { subgraph cluster_a { label=A color=red penwidth=3 style=filled fillcolor=blue "
        "fontcolor=white\nsubgraph cluster_b { label=B color=\"\" penwidth=\"\" style=\"\" "
        "fillcolor=\"\" fontcolor=\"\"; x } } }");
    EXPECT_TRUE(file.LookOf("B").IsPlain());
    const ReadFile again = Again(file, Format::kDot);
    EXPECT_EQ(again.LookOf("A"), file.LookOf("A"));
    EXPECT_FALSE(again.LookOf("A").IsPlain());
    EXPECT_TRUE(again.LookOf("B").IsPlain());
}

TEST(Writer, PassesOverEdgesWhoseTargetIsGone) {
    graph_ptr2<Graph> graph(new Graph, true);
    Node a = graph->GetRoot().AddNode();
    Node b = graph->GetRoot().AddNode();
    a.LinkTo(b);
    b.Remove();
    EXPECT_EQ(WriteGraph(graph, "", Format::kText, {}).text,
              "1 node, 0 edges\n[nodes]\n1 \"\" 0 0\n[edges]\n");
}

}  // namespace
}  // namespace nodeline::formats
