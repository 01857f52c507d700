#include <gtest/gtest.h>
#include <nodeline/ops/graph_ops.h>
#include <support/ids.h>
#include <support/named_graphs.h>

#include <vector>

namespace nodeline::test {
namespace {

std::vector<int> Updates(const Node& node) { return Ids(node.store()->get_update_list()); }

TEST(Folding, HidesTheChildrenOrTheParents) {
    Fork g;
    Fold(g.a, FoldChildren);
    EXPECT_TRUE(IsFlagSet(g.b, NodeHidden));
    EXPECT_TRUE(IsFlagSet(g.c, NodeHidden));
    EXPECT_FALSE(IsFlagSet(g.a, NodeHidden));
    Fold(g.b, FoldParents);
    EXPECT_TRUE(IsFlagSet(g.a, NodeHidden));
}

TEST(Folding, HasFixedDirections) {
    EXPECT_EQ(static_cast<int>(FoldParents), 0);
    EXPECT_EQ(static_cast<int>(FoldChildren), 1);
}

TEST(Folding, InAnyOtherDirectionFoldsParents) {
    Arrow g;
    Fold(g.b, static_cast<FoldDirection>(2));
    EXPECT_TRUE(IsFlagSet(g.a, NodeHidden));
    EXPECT_FALSE(IsFlagSet(g.b, NodeHidden));
}

TEST(Folding, AsksForAnUpdateOfTheOwner) {
    Courts g;
    Fold(g.b, FoldChildren);
    EXPECT_EQ(Updates(g.root), IdsOf(g.c));
    EXPECT_TRUE(IsFlagSet(g.z, NodeHidden));
    Unfold(g.b, FoldChildren);
    EXPECT_EQ(Updates(g.root), IdsOf(g.c, g.c));
    EXPECT_EQ(g.root.store()->get_resize_list()->GetCount(), 0);
    EXPECT_EQ(Ids(g.root.store()->get_make_list()), IdsOf(g.root));
}

TEST(Folding, OfTheRootAndOfBreakNodesDoesNothing) {
    Arrow g;
    g.edge.AddBreakNodesIn(g.root, 1);
    g.a.SetCondition(NodeNew);
    for (const Node& node : {g.root, g.edge.GetBreakNodes().GetItem(0)}) {
        Fold(node, FoldChildren);
        Unfold(node, FoldChildren);
    }
    EXPECT_TRUE(IsFlagSet(g.a, NodeNew));
    EXPECT_TRUE(Updates(g.root).empty());
}

TEST(Folding, OfANodeWithoutNeighboursMarksAllOldAndAsksForAnUpdate) {
    Arrow g;
    g.a.SetCondition(NodeNew);
    Fold(g.b, FoldChildren);
    EXPECT_FALSE(IsFlagSet(g.a, NodeNew));
    EXPECT_EQ(Updates(g.root), IdsOf(g.root));
}

TEST(Folding, DoesNotWalkOn) {
    Arrow g;
    Node c = g.root.AddNode();
    g.b.LinkTo(c);
    Fold(g.a, FoldChildren);
    EXPECT_TRUE(IsFlagSet(g.b, NodeHidden));
    EXPECT_FALSE(IsFlagSet(c, NodeHidden));
}

TEST(Folding, OfACompoundNodeGoesByItsOwnEdges) {
    TwoBoxes g;
    Fold(g.a, FoldChildren);
    EXPECT_FALSE(IsFlagSet(g.b, NodeHidden));
    EXPECT_FALSE(IsFlagSet(g.y, NodeHidden));
}

TEST(Folding, OfANodeWithASelfLoopHidesTheNodeItself) {
    Empty g;
    Node n = g.root.AddNode();
    n.LinkTo(n);
    Fold(n, FoldChildren);
    EXPECT_TRUE(IsFlagSet(n, NodeHidden));
}

TEST(Folding, IsNotCounted) {
    Fork g;
    Node d = g.root.AddNode();
    d.LinkTo(g.b);
    Fold(g.a, FoldChildren);
    Fold(d, FoldChildren);
    Unfold(d, FoldChildren);
    EXPECT_FALSE(IsFlagSet(g.b, NodeHidden));
    EXPECT_TRUE(IsFlagSet(g.c, NodeHidden));
}

TEST(Unfolding, ShowsTheChildrenAndMarksThemAloneNew) {
    Fork g;
    Node inner = g.b.AddNode();
    Node other = g.root.AddNode();
    Fold(g.a, FoldChildren);
    inner.SetCondition(NodeNew);
    other.SetCondition(NodeNew | NodeSelected);
    Unfold(g.a, FoldChildren);
    EXPECT_EQ(g.b.GetCondition(), NodeNew);
    EXPECT_EQ(g.c.GetCondition(), NodeNew);
    EXPECT_EQ(g.a.GetCondition(), 0);
    EXPECT_EQ(inner.GetCondition(), 0);
    EXPECT_EQ(other.GetCondition(), NodeSelected);
}

TEST(Unfolding, OfWhatWasNeverHiddenMarksAllOldAndAsksForAnUpdate) {
    Fork g;
    g.b.SetCondition(NodeNew);
    Unfold(g.a, FoldChildren);
    EXPECT_EQ(g.b.GetCondition(), 0);
    EXPECT_EQ(g.c.GetCondition(), 0);
    EXPECT_EQ(Updates(g.root), IdsOf(g.root));
}

TEST(Unfolding, OfALeafChangesNothingAndAsksForNothing) {
    Fork g;
    g.a.SetCondition(NodeNew);
    Unfold(g.b, FoldChildren);
    EXPECT_TRUE(IsFlagSet(g.a, NodeNew));
    EXPECT_TRUE(Updates(g.root).empty());
}

TEST(OutOfSight, AreHiddenNodesAndAllThatTheyOwn) {
    const graph_ptr2<Graph> graph(new Graph(), true);
    Node outer = graph->GetRoot().AddNode();
    Node inner = outer.AddNode();
    Node leaf = inner.AddNode();
    EXPECT_FALSE(IsOutOfSight(leaf));
    Hide(outer);
    for (const Node& node : {outer, inner, leaf}) EXPECT_TRUE(IsOutOfSight(node));
    EXPECT_FALSE(IsOutOfSight(graph->GetRoot()));
    EXPECT_FALSE(IsOutOfSight(Node()));
    leaf.Remove();
    EXPECT_FALSE(IsOutOfSight(leaf));
}

TEST(OutOfSight, ANodeIsShownWithItsOwnersAndNothingElse) {
    const graph_ptr2<Graph> graph(new Graph(), true);
    Node outer = graph->GetRoot().AddNode();
    Node inner = outer.AddNode();
    Node leaf = inner.AddNode();
    Node other = inner.AddNode();
    for (const Node& node : {outer, leaf, other}) Hide(node);
    ShowWithOwners(leaf);
    EXPECT_FALSE(IsOutOfSight(leaf));
    EXPECT_TRUE(IsFlagSet(outer, NodeNew));
    EXPECT_FALSE(IsFlagSet(inner, NodeNew));
    EXPECT_TRUE(IsOutOfSight(other));
    ShowWithOwners(graph->GetRoot());
    ShowWithOwners(Node());
    EXPECT_TRUE(IsOutOfSight(other));
}

}  // namespace
}  // namespace nodeline::test
