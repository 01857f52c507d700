#include <gtest/gtest.h>
#include <nodeline/ops/graph_ops.h>
#include <support/ids.h>
#include <support/named_graphs.h>

#include <vector>

namespace nodeline::test {
namespace {

std::vector<int> Visited(const Node& start, bool children_first, bool with_self) {
    std::vector<int> ids;
    ForEachNodeIn(
        start, [&](const Node& node) { ids.push_back(node.GetID()); }, children_first, with_self);
    return ids;
}

TEST(ForEachNodeIn, VisitsOwnersAheadOfWhatTheyOwnOrBehindIt) {
    Stairs g;
    EXPECT_EQ(Visited(g.b, true, true), IdsOf(g.c, g.b));
    EXPECT_EQ(Visited(g.b, false, true), IdsOf(g.b, g.c));
    EXPECT_EQ(Visited(g.b, true, false), IdsOf(g.c));
    EXPECT_EQ(Visited(g.b, false, false), IdsOf(g.c));
}

TEST(ForEachNodeIn, OverALeafWithoutItselfVisitsNothing) {
    Stairs g;
    EXPECT_TRUE(Visited(g.c, false, false).empty());
    EXPECT_TRUE(Visited(g.c, true, false).empty());
    EXPECT_EQ(Visited(g.c, true, true), IdsOf(g.c));
}

TEST(ForEachNodeIn, GoesDepthFirstInSetOrder) {
    Courts g;
    EXPECT_EQ(Visited(g.root, false, true), IdsOf(g.root, g.c, g.a, g.x, g.b, g.d, g.z));
    EXPECT_EQ(Visited(g.root, true, true), IdsOf(g.x, g.a, g.b, g.c, g.z, g.d, g.root));
    g.c.SetOwner(g.root);
    EXPECT_EQ(Visited(g.root, false, false), IdsOf(g.d, g.z, g.c, g.a, g.x, g.b));
}

TEST(ForEachNodeIn, HandsTheFunctionOnAndGivesItBack) {
    struct Counter {
        int count = 0;
        void operator()(const Node&) { ++count; }
    };
    Courts g;
    EXPECT_EQ(ForEachNodeIn(g.root, Counter(), true, true).count, 7);
    EXPECT_EQ(ForEachNodeIn(g.root, Counter(), false, false).count, 6);
}

TEST(ForEachNodeIn, TakesPlainFunctions) {
    Stairs g;
    ForEachNodeIn(g.a, Hide, false, false);
    EXPECT_FALSE(IsFlagSet(g.a, NodeHidden));
    EXPECT_TRUE(IsFlagSet(g.b, NodeHidden));
    EXPECT_TRUE(IsFlagSet(g.c, NodeHidden));
}

TEST(ForEachNodeIn, VisitsANodeThatOwnsItselfOnce) {
    Stairs g;
    g.b.SetOwner(g.b);
    EXPECT_EQ(Visited(g.b, false, true), IdsOf(g.b, g.c));
    EXPECT_EQ(Visited(g.b, true, true), IdsOf(g.c, g.b));
    g.b.SetOwner(g.a);
}

TEST(ProcessOutgoingEdges, AppliesTheFunctionInSetOrder) {
    Fork g;
    std::vector<int> ids;
    ProcessOutgoingEdges collect{[&](const Edge& edge) { ids.push_back(edge.GetID()); }};
    collect(g.a);
    collect(g.b);
    EXPECT_EQ(ids, IdsOf(g.to_b, g.to_c));
}

TEST(ProcessOutgoingEdges, ServesAWalkOverASubtree) {
    Courts g;
    ForEachNodeIn(g.c, ProcessOutgoingEdges{_mark_edge_drawn}, false, true);
    EXPECT_TRUE(IsFlagSet(g.x_to_b, EdgeDrawn));
    EXPECT_TRUE(IsFlagSet(g.b_to_z, EdgeDrawn));
}

TEST(GetRoot, ClimbsFromAnyNode) {
    Stairs g;
    EXPECT_EQ(GetRoot(g.c).record().get(), g.root.record().get());
    EXPECT_EQ(GetRoot(g.a).record().get(), g.root.record().get());
    EXPECT_EQ(GetRoot(g.root).record().get(), g.root.record().get());
}

TEST(GetRoot, OfABreakNodeGoesThroughItsEdge) {
    TwoBoxes g;
    g.edge.AddBreakNodesIn(g.a, 1);
    EXPECT_EQ(GetRoot(g.edge.GetBreakNodes().GetItem(0)).record().get(), g.root.record().get());
}

TEST(GetRoot, OfWhatIsInNoGraphIsAnEmptyHandle) {
    Stairs g;
    Edge edge = g.c.LinkTo(g.c);
    edge.AddBreakNodesIn(g.b, 1);
    const Node bend = edge.GetBreakNodes().GetItem(0);
    edge.Remove();
    EXPECT_FALSE(GetRoot(bend));
    g.b.SetOwner(g.b);
    EXPECT_FALSE(GetRoot(g.c));
    g.b.SetOwner(g.a);
    g.a.Remove();
    EXPECT_FALSE(GetRoot(g.c));
    EXPECT_FALSE(GetRoot(Node()));
}

TEST(IsRoot, GoesByTheId) {
    Arrow g;
    EXPECT_TRUE(IsRoot(g.root));
    EXPECT_FALSE(IsRoot(g.a));
    g.edge.AddBreakNodesIn(g.root, 1);
    EXPECT_FALSE(IsRoot(g.edge.GetBreakNodes().GetItem(0)));
}

TEST(OwnershipOrder, PutsOwnersAheadOfWhatTheyOwn) {
    Stairs g;
    EXPECT_TRUE(NodeByOwnershipComparator(g.a, g.b));
    EXPECT_FALSE(NodeByOwnershipComparator(g.b, g.a));
    EXPECT_TRUE(NodeByOwnershipComparator(g.a, g.c));
    EXPECT_FALSE(NodeByOwnershipComparator(g.c, g.a));
}

TEST(OwnershipOrder, GoesByOwnershipAgainstTheIds) {
    Arrow g;
    g.a.SetOwner(g.b);
    EXPECT_TRUE(NodeByOwnershipComparator(g.b, g.a));
    EXPECT_FALSE(NodeByOwnershipComparator(g.a, g.b));
    Node c = g.root.AddNode();
    g.b.SetOwner(c);
    EXPECT_TRUE(NodeByOwnershipComparator(c, g.a));
    EXPECT_FALSE(NodeByOwnershipComparator(g.a, c));
}

TEST(OwnershipOrder, PutsUnrelatedNodesByIdAndNoNodeAheadOfItself) {
    Courts g;
    EXPECT_TRUE(NodeByOwnershipComparator(g.a, g.z));
    EXPECT_FALSE(NodeByOwnershipComparator(g.z, g.a));
    EXPECT_FALSE(NodeByOwnershipComparator(g.a, g.a));
}

TEST(OwnershipOrder, PutsBreakNodesAndTheRootLast) {
    Arrow g;
    g.edge.AddBreakNodesIn(g.root, 2);
    const Node first = g.edge.GetBreakNodes().GetItem(0);
    const Node second = g.edge.GetBreakNodes().GetItem(1);
    EXPECT_TRUE(NodeByOwnershipComparator(g.a, first));
    EXPECT_FALSE(NodeByOwnershipComparator(first, g.a));
    EXPECT_TRUE(NodeByOwnershipComparator(second, first));
    EXPECT_FALSE(NodeByOwnershipComparator(first, second));
    EXPECT_TRUE(NodeByOwnershipComparator(g.a, g.root));
    EXPECT_FALSE(NodeByOwnershipComparator(g.root, g.a));
}

TEST(Degrees, CountDistinctNeighbours) {
    Arrow g;
    g.a.LinkTo(g.b);
    g.a.LinkTo(g.a);
    EXPECT_EQ(OutDegree(g.a), 2);
    EXPECT_EQ(InDegree(g.b), 1);
    EXPECT_EQ(InDegree(g.a), 1);
    EXPECT_EQ(OutDegree(g.b), 0);
}

TEST(NodeOnEdge, IsTrueForBothEndsAndNoOther) {
    Fork g;
    EXPECT_TRUE(NodeOnEdge(g.a, g.to_b));
    EXPECT_TRUE(NodeOnEdge(g.b, g.to_b));
    EXPECT_FALSE(NodeOnEdge(g.c, g.to_b));
}

TEST(NodeOnEdge, IsTrueForTheBreakNodesOfTheEdge) {
    Fork g;
    g.to_b.AddBreakNodesIn(g.root, 2);
    const Node bend = g.to_b.GetBreakNodes().GetItem(1);
    EXPECT_TRUE(NodeOnEdge(bend, g.to_b));
    EXPECT_FALSE(NodeOnEdge(bend, g.to_c));
}

TEST(NodeOnEdge, IsFalseForTheRoot) {
    Fork g;
    EXPECT_FALSE(NodeOnEdge(g.root, g.to_b));
}

TEST(ExistEdgeBetweenNodes, GoesByDirection) {
    Arrow g;
    EXPECT_TRUE(ExistEdgeBetweenNodes(g.a, g.b));
    EXPECT_FALSE(ExistEdgeBetweenNodes(g.b, g.a));
    EXPECT_FALSE(ExistEdgeBetweenNodes(g.a, g.a));
    g.a.LinkTo(g.a);
    EXPECT_TRUE(ExistEdgeBetweenNodes(g.a, g.a));
}

TEST(MakeDRect, SpansFromThePointOverTheSize) {
    EXPECT_EQ(MakeDRect({1, 2}, {10, 20}), (rectangle<double>{1, 2, 11, 22}));
    EXPECT_EQ(MakeDRect({1, 2}, {-3, 0}), (rectangle<double>{1, 2, -2, 2}));
}

}  // namespace
}  // namespace nodeline::test
