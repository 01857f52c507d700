#include <load/loaded_graph.h>

#include <gtest/gtest.h>

namespace nodeline {
namespace {

using Strings = std::vector<std::string>;

TEST(Load, OfAnEmptyStreamGivesAnEmptyGraph) {
    const LoadedGraph loaded("");
    EXPECT_TRUE(loaded.is_loaded);
    EXPECT_EQ(loaded.Root().GetOwned().GetCount(), 0);
    EXPECT_EQ(loaded.error.line, 0);
    EXPECT_EQ(loaded.error.reason, "");
}

TEST(Load, ReadsNodesOwnersAndEdges) {
    const LoadedGraph loaded(
        "a small graph\n[nodes]\n1 \"parser\" 0 0\n2 \"scanner\" 0 1\n3 \"main\" 0 0\n"
        "[edges]\n3 2 \"next token\"\n");
    ASSERT_TRUE(loaded.is_loaded);
    EXPECT_EQ(Captions(loaded.Root().GetOwned()), (Strings{"parser", "main"}));
    EXPECT_EQ(Captions(loaded.Find("parser").GetOwned()), (Strings{"scanner"}));
    const EdgeSet edges = loaded.Find("main").GetEdgesOut();
    ASSERT_EQ(edges.GetCount(), 1);
    EXPECT_EQ(edges.GetItem(0).GetCaption(), "next token");
    EXPECT_EQ(edges.GetItem(0).To(), loaded.Find("scanner"));
}

TEST(Load, DropsTheFirstLineWhateverItHolds) {
    const LoadedGraph loaded("[nodes]\n1 \"a\" 0 0\n[nodes]\n2 \"b\" 0 0\n");
    EXPECT_TRUE(loaded.is_loaded);
    EXPECT_EQ(Captions(loaded.Root().GetOwned()), (Strings{"b"}));
}

TEST(Load, SkipsLinesBeforeTheFirstSectionAndThoseOfTypes) {
    const LoadedGraph loaded(
        "title\n1 \"a\" 0 0\nnot a line at all\n[types]\n2 \"b\" 0 0\n99 99\n[nodes]\n3 \"c\" 0 "
        "0\n");
    EXPECT_TRUE(loaded.is_loaded);
    EXPECT_EQ(Captions(loaded.Root().GetOwned()), (Strings{"c"}));
}

TEST(Load, TakesAKeywordOnlyAsAWholeAndExactLine) {
    for (const char* keyword : {"[Nodes]", " [nodes]", "[nodes] ", "[nodes]\r", "[nodes]x"}) {
        const LoadedGraph loaded("title\n" + std::string(keyword) + "\n1 \"a\" 0 0\n");
        EXPECT_TRUE(loaded.is_loaded);
        EXPECT_EQ(loaded.Root().GetOwned().GetCount(), 0) << keyword;
    }
}

TEST(Load, ReadsClustersLikeNodes) {
    const LoadedGraph loaded(
        "title\n[clusters]\n1 \"a\" 0 0\n[nodes]\n2 \"b\" 0 1\n[edges]\n1 2 \"\"\n");
    ASSERT_TRUE(loaded.is_loaded);
    EXPECT_EQ(Captions(loaded.Find("a").GetOwned()), (Strings{"b"}));
    EXPECT_EQ(loaded.Find("b").GetParents().GetCount(), 1);
}

TEST(Load, TakesSectionsRepeatedlyAndInAnyOrder) {
    const LoadedGraph loaded(
        "title\n[nodes]\n1 \"a\" 0 2\n[edges]\n1 1 \"\"\n[clusters]\n2 \"b\" 0 0\n[types]\n7 7\n"
        "[edges]\n1 2 \"\"\n[nodes]\n3 \"c\" 0 2\n");
    ASSERT_TRUE(loaded.is_loaded);
    EXPECT_EQ(Captions(loaded.Root().GetOwned()), (Strings{"b"}));
    EXPECT_EQ(Captions(loaded.Find("b").GetOwned()), (Strings{"a", "c"}));
    EXPECT_EQ(loaded.Find("a").GetEdgesOut().GetCount(), 2);
}

TEST(Load, AssignsOwnersAfterEdgesSoEdgesRunAcrossThem) {
    const LoadedGraph loaded(
        "title\n[nodes]\n1 \"a\" 0 2\n2 \"b\" 0 0\n3 \"c\" 0 4\n4 \"d\" 0 0\n[edges]\n1 3 \"\"\n2 "
        "1 \"\"\n");
    ASSERT_TRUE(loaded.is_loaded);
    const auto neighbours = GetChildrenEx(loaded.Find("b"));
    ASSERT_EQ(neighbours->GetCount(), 1);
    EXPECT_EQ(neighbours->GetItem(0).node, loaded.Find("d"));
    EXPECT_EQ(loaded.Find("a").GetOwner(), loaded.Find("b"));
}

TEST(Load, KeepsInnerQuotesOfCaptions) {
    const LoadedGraph loaded("title\n[nodes]\n3 \"a \"b\" c\" 0 0\n");
    ASSERT_TRUE(loaded.is_loaded);
    EXPECT_TRUE(loaded.Find("a \"b\" c"));
}

TEST(Load, TakesALineWithoutQuotesAsItIs) {
    const LoadedGraph loaded("title\n[nodes]\n3 \"c\" 0 0\n7 3\n[edges]\n7 3\n");
    ASSERT_TRUE(loaded.is_loaded);
    const Node node = loaded.Find("7 3");
    ASSERT_TRUE(node);
    EXPECT_EQ(node.GetOwner(), loaded.Find("c"));
    EXPECT_EQ(node.GetEdgesOut().GetItem(0).GetCaption(), "7 3");
}

TEST(Load, SkipsLinesWithoutANumber) {
    const LoadedGraph loaded(
        "title\n[nodes]\n\n   \n\"a\" 0 0\n-1 \"b\" 0 0\n1 \"c\" 0 0\n[edges]\n\n-1 9\n");
    EXPECT_TRUE(loaded.is_loaded);
    EXPECT_EQ(Captions(loaded.Root().GetOwned()), (Strings{"c"}));
}

TEST(Load, TakesTextInThePlaceOfAnIdAsTheIdZero) {
    const LoadedGraph loaded("title\n[nodes]\nx \"a\" 0 0\n1 \"b\" 0 0\n[edges]\n1 x\n");
    ASSERT_TRUE(loaded.is_loaded);
    EXPECT_EQ(Captions(loaded.Find("b").GetChildren()), (Strings{"a"}));
}

TEST(Load, TakesAnOwnerOfZeroAsTheRootEvenIfANodeHasThatId) {
    const LoadedGraph loaded("title\n[nodes]\n0 \"zero\" 0 0\n1 \"a\" 0 0\n");
    ASSERT_TRUE(loaded.is_loaded);
    EXPECT_EQ(Captions(loaded.Root().GetOwned()), (Strings{"zero", "a"}));
}

TEST(Load, ReadsTheLastLineWithoutALineEnd) {
    const LoadedGraph loaded("title\n[nodes]\n1 \"a\" 0 0\n[edges]\n1 1 \"loop\"");
    ASSERT_TRUE(loaded.is_loaded);
    EXPECT_EQ(loaded.Find("a").GetEdgesOut().GetCount(), 1);
}

TEST(Load, ReplacesWhatTheGraphHeld) {
    LoadedGraph loaded("title\n[nodes]\n1 \"old\" 0 0\n[edges]\n1 1 \"\"\n");
    const Node old = loaded.Find("old");
    std::istringstream in("title\n[nodes]\n1 \"new\" 0 0\n");
    EXPECT_TRUE(Load(loaded.graph, in));
    EXPECT_EQ(Captions(loaded.Root().GetOwned()), (Strings{"new"}));
    EXPECT_FALSE(old.GetOwner());
    EXPECT_EQ(old.GetEdgesOut().GetCount(), 0);
}

TEST(Load, ReadsTheStreamToItsEndAndAsksForNoLayout) {
    graph_ptr2<Graph> graph(new Graph, true);
    graph->RecalculateLayout(nullptr);
    std::istringstream in("title\n[nodes]\n1 \"a\" 0 0\n");
    EXPECT_TRUE(Load(graph, in));
    EXPECT_TRUE(in.eof());
    EXPECT_FALSE(graph->RecalculateLayout(nullptr));
}

TEST(Load, GivesNodesIdsOfTheirOwnInFileOrder) {
    const LoadedGraph loaded("title\n[nodes]\n900 \"a\" 0 0\n20 \"b\" 0 0\n-5 \"c\" 0 0\n");
    ASSERT_TRUE(loaded.is_loaded);
    const int first = loaded.Find("a").GetID();
    EXPECT_EQ(loaded.Find("b").GetID(), first + 1);
    EXPECT_EQ(loaded.Find("c").GetID(), first + 2);
}

TEST(Load, TakesIdsThatLieFarApart) {
    const LoadedGraph loaded(
        "title\n[nodes]\n2147483647 \"a\" 0 0\n-2147483648 \"b\" 0 2147483647\n1000000 \"c\" 0 0\n"
        "3 \"d\" 0 1000000\n[edges]\n3 -2147483648 \"\"\n");
    ASSERT_TRUE(loaded.is_loaded);
    EXPECT_EQ(loaded.error.reason, "");
    EXPECT_EQ(Captions(loaded.Find("a").GetOwned()), (Strings{"b"}));
    EXPECT_EQ(Captions(loaded.Find("d").GetChildren()), (Strings{"b"}));
}

TEST(Load, KeepsTheFirstNodeUnderAnIdAndTheOthersOutOfReach) {
    const LoadedGraph loaded(
        "title\n[nodes]\n1 \"first\" 0 0\n2 \"b\" 0 1\n1 \"second\" 0 2\n[edges]\n2 1 \"\"\n");
    ASSERT_TRUE(loaded.is_loaded);
    EXPECT_EQ(Captions(loaded.Root().GetOwned()), (Strings{"first", "second"}));
    EXPECT_EQ(Captions(loaded.Find("b").GetChildren()), (Strings{"first"}));
    EXPECT_EQ(loaded.error.line, 5);
    EXPECT_EQ(loaded.error.reason, "node 1 is declared above, and edges will not find this one");
}

TEST(Load, TellsTheIdsOfTheFileNodeByNode) {
    graph_ptr2<Graph> graph(new Graph, true);
    std::istringstream in("title\n[nodes]\n7 \"a\" 0 5\n\n5 \"b\" 0 0\n7 \"c\" 0 0\n");
    Strings seen;
    const bool is_loaded = Load(graph, in, nullptr, [&](const Node& node, int id) {
        seen.push_back(node.GetCaption() + " " + std::to_string(id));
    });
    EXPECT_TRUE(is_loaded);
    EXPECT_EQ(seen, (Strings{"a 7", "b 5", "c 7"}));
}

TEST(Load, TakesBytesThatAreNoTextAsCaptions) {
    const std::string caption("\xff\xfe\0\x01", 4);
    const LoadedGraph loaded("title\n[nodes]\n1 \"" + caption + "\" 0 0\n");
    ASSERT_TRUE(loaded.is_loaded);
    EXPECT_TRUE(loaded.Find(caption));
}

TEST(Load, LeavesEveryNodeWithoutFlags) {
    const LoadedGraph loaded("title\n[nodes]\n1 \"a thread\" 0 0\n2 \"b\" 0 1\n");
    EXPECT_EQ(loaded.Find("a thread").GetCondition(), 0);
    EXPECT_EQ(loaded.Find("b").GetCondition(), 0);
}

}  // namespace
}  // namespace nodeline
