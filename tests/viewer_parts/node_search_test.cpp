#include <apps/viewer/node_search.h>
#include <gtest/gtest.h>
#include <nodeline/ops/graph_ops.h>

#include <QStringList>
#include <chrono>
#include <string>

namespace nodeline::app {
namespace {

class NodeSearchTest : public testing::Test {
protected:
    Node Add(Node owner, const std::string& caption) {
        Node node = owner.AddNode();
        node.SetCaption(caption);
        return node;
    }
    QStringList Find(const QString& text, std::size_t most = 1000) {
        search.Collect(graph);
        QStringList captions;
        for (const std::size_t row : search.Find(text, most).rows) {
            captions << search.GetCaption(row);
        }
        return captions;
    }

    graph_ptr2<Graph> graph{new Graph, true};
    Node root = graph->GetRoot();
    NodeSearch search;
};

TEST_F(NodeSearchTest, FindsPartsOfCaptionsWhateverTheCase) {
    Add(root, "Parser");
    Add(root, "reparse");
    Add(root, "scanner");
    EXPECT_EQ(Find("PARSE"), QStringList({"Parser", "reparse"}));
}

TEST_F(NodeSearchTest, FoldsTheCaseOfLettersBeyondAscii) {
    Add(root, "\xC3\x84nderung");
    EXPECT_EQ(Find(QStringLiteral("\u00e4nder")), QStringList({QStringLiteral("\u00c4nderung")}));
}

TEST_F(NodeSearchTest, CaptionsThatStartWithTheTextComeFirst) {
    Add(root, "a node");
    Add(root, "nodes");
    Add(root, "my node");
    Add(root, "Node");
    EXPECT_EQ(Find("node"), QStringList({"Node", "nodes", "a node", "my node"}));
}

TEST_F(NodeSearchTest, BlankTextFindsEverything) {
    Add(root, "b");
    Add(root, "a b");
    EXPECT_EQ(Find(""), QStringList({"a b", "b"}));
    EXPECT_EQ(Find("  "), QStringList({"a b", "b"}));
}

TEST_F(NodeSearchTest, BlanksAroundTheTextDoNotCountButThoseWithinDo) {
    Add(root, "a b");
    Add(root, "ab");
    EXPECT_EQ(Find(" a b "), QStringList({"a b"}));
}

TEST_F(NodeSearchTest, DoesNotFindTheRoot) {
    Add(root, "only");
    search.Collect(graph);
    EXPECT_EQ(search.GetCount(), 1U);
}

TEST_F(NodeSearchTest, PathNamesOwnersFromTheOutermost) {
    Node a = Add(root, "a");
    Node b = Add(a, "b");
    Add(b, "leaf");
    search.Collect(graph);
    const NodeSearch::Result result = search.Find("leaf", 10);
    ASSERT_EQ(result.rows.size(), 1U);
    EXPECT_EQ(search.GetPath(result.rows[0]), QStringLiteral("a \u203a b"));
    EXPECT_EQ(search.GetPath(search.Find("a", 10).rows[0]), QString());
}

TEST_F(NodeSearchTest, KnowsWhetherAnyNodeIsNested) {
    Node a = Add(root, "a");
    search.Collect(graph);
    EXPECT_FALSE(search.IsNested());
    Add(a, "b");
    search.Collect(graph);
    EXPECT_TRUE(search.IsNested());
}

TEST_F(NodeSearchTest, NodesInHiddenOwnersAreHidden) {
    Node owner = Add(root, "owner");
    Node inner = Add(owner, "inner");
    Add(inner, "hit 1");
    Add(root, "hit 2");
    search.Collect(graph);
    EXPECT_EQ(search.Find("hit", 10).hidden_count, 0U);
    Hide(owner);
    search.Refresh();
    const NodeSearch::Result result = search.Find("hit", 10);
    EXPECT_EQ(result.hidden_count, 1U);
    EXPECT_TRUE(search.IsHidden(result.rows[0]));
    EXPECT_FALSE(search.IsHidden(result.rows[1]));
    Show(owner);
    search.Refresh();
    EXPECT_EQ(search.Find("hit", 10).hidden_count, 0U);
}

TEST_F(NodeSearchTest, RowsAreLimitedAndTheBestOnesStay) {
    for (const char* caption : {"xa", "xb", "ax", "bx"}) Add(root, caption);
    EXPECT_EQ(Find("x", 1), QStringList({"xa"}));
    EXPECT_EQ(Find("x", 3), QStringList({"xa", "xb", "ax"}));
    const NodeSearch::Result none = search.Find("x", 0);
    EXPECT_TRUE(none.rows.empty());
    EXPECT_EQ(none.count, 4U);
}

TEST_F(NodeSearchTest, NullGraphHasNoNodes) {
    Add(root, "a");
    search.Collect(graph);
    search.Collect(graph_ptr2<Graph>());
    EXPECT_EQ(search.GetCount(), 0U);
    EXPECT_EQ(search.Find("a", 10).count, 0U);
}

TEST_F(NodeSearchTest, FiftyThousandCaptionsAreFoundInTheTimeOfAKeyPress) {
    constexpr std::size_t kNodes = 50000;
    for (std::size_t i = 0; i < kNodes; ++i) {
        root.AddNode().SetCaption("Function number " + std::to_string(i));
    }
    search.Collect(graph);
    const auto start = std::chrono::steady_clock::now();
    const NodeSearch::Result result = search.Find("number", 1000);
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    EXPECT_EQ(result.count, kNodes);
    EXPECT_EQ(result.rows.size(), 1000U);
    // Some milliseconds; the margin is for sanitizers and busy machines.
    EXPECT_LT(taken.count(), 1.0);
}

}  // namespace
}  // namespace nodeline::app
