#include <gtest/gtest.h>
#include <nodeline/ops/graph_ops.h>
#include <support/named_graphs.h>

namespace nodeline::test {
namespace {

TEST(Flags, HaveTheirFixedValues) {
    EXPECT_EQ(NodeHidden, 1);
    EXPECT_EQ(NodeSelected, 2);
    EXPECT_EQ(NodeDrawn, 4);
    EXPECT_EQ(NodeMarked, 8);
    EXPECT_EQ(NodeNew, 16);
    EXPECT_EQ(NodeHovered, 32);
    EXPECT_EQ(EdgeDrawn, 4);
    EXPECT_EQ(EdgeMarked, 8);
    EXPECT_EQ(EdgeHovered, 16);
}

TEST(Flags, AreSetAndClearedOneByOne) {
    Arrow g;
    SetFlag(g.a, NodeMarked, true);
    SetFlag(g.a, NodeNew, true);
    SetFlag(g.a, NodeMarked, false);
    EXPECT_EQ(g.a.GetCondition(), NodeNew);
    EXPECT_EQ(g.b.GetCondition(), 0);
    SetFlag(g.edge, EdgeMarked, true);
    EXPECT_EQ(g.edge.GetCondition(), EdgeMarked);
    EXPECT_TRUE(IsFlagSet(g.edge, EdgeMarked));
    SetFlag(g.edge, EdgeMarked, false);
    EXPECT_FALSE(IsFlagSet(g.edge, EdgeMarked));
}

TEST(Flags, MaskSetsAllItsBitsAndIsSetByAnyOfThem) {
    Arrow g;
    SetFlag(g.a, 3, true);
    EXPECT_TRUE(IsFlagSet(g.a, NodeHidden));
    EXPECT_TRUE(IsFlagSet(g.a, NodeSelected));
    Unselect(g.a);
    EXPECT_TRUE(IsFlagSet(g.a, 3));
    EXPECT_FALSE(IsFlagSet(g.a, NodeSelected));
    SetFlag(g.a, 3, false);
    EXPECT_FALSE(IsFlagSet(g.a, 3));
    SetFlag(g.edge, EdgeDrawn | EdgeHovered, true);
    EXPECT_TRUE(IsFlagSet(g.edge, EdgeDrawn | EdgeMarked));
}

TEST(Flags, NeverStickToTheRoot) {
    Empty g;
    SetFlag(g.root, NodeHidden, true);
    EXPECT_FALSE(IsFlagSet(g.root, NodeHidden));
    Select(g.root);
    Hide(g.root);
    EXPECT_EQ(g.root.GetCondition(), 0);
}

TEST(Flags, StickToBreakNodes) {
    Arrow g;
    g.edge.AddBreakNodesIn(g.root, 1);
    SetFlag(g.edge.GetBreakNodes().GetItem(0), NodeHovered, true);
    EXPECT_TRUE(IsFlagSet(g.edge.GetBreakNodes().GetItem(0), NodeHovered));
}

TEST(Flags, SelectAndUnselectTouchOneBit) {
    Arrow g;
    g.a.SetCondition(NodeMarked);
    Select(g.a);
    EXPECT_EQ(g.a.GetCondition(), NodeMarked | NodeSelected);
    Select(g.a);
    Unselect(g.a);
    EXPECT_EQ(g.a.GetCondition(), NodeMarked);
}

TEST(Flags, MarkOldClearsNewAlone) {
    Arrow g;
    g.a.SetCondition(NodeNew | NodeSelected);
    MarkOld(g.a);
    EXPECT_EQ(g.a.GetCondition(), NodeSelected);
}

TEST(Visibility, HideKeepsWhetherTheNodeIsNew) {
    Arrow g;
    Hide(g.a);
    EXPECT_EQ(g.a.GetCondition(), NodeHidden);
    g.b.SetCondition(NodeNew);
    Hide(g.b);
    EXPECT_EQ(g.b.GetCondition(), NodeHidden | NodeNew);
}

TEST(Visibility, ShowMakesAHiddenNodeNew) {
    Arrow g;
    Hide(g.a);
    Show(g.a);
    EXPECT_EQ(g.a.GetCondition(), NodeNew);
}

TEST(Visibility, ShowOfAVisibleNodeChangesNothing) {
    Arrow g;
    g.a.SetCondition(NodeSelected);
    Show(g.a);
    EXPECT_EQ(g.a.GetCondition(), NodeSelected);
}

TEST(DrawnMarks, NewNodesAndEdgesHaveNone) {
    Arrow g;
    EXPECT_FALSE(IsFlagSet(g.a, NodeDrawn));
    EXPECT_FALSE(IsFlagSet(g.edge, EdgeDrawn));
}

TEST(DrawnMarks, GoToEverythingVisible) {
    Courts g;
    MarkDrawnIn(g.graph);
    for (const Node& node : {g.a, g.b, g.c, g.d, g.x, g.z}) EXPECT_TRUE(IsFlagSet(node, NodeDrawn));
    EXPECT_TRUE(IsFlagSet(g.x_to_b, EdgeDrawn));
    EXPECT_TRUE(IsFlagSet(g.b_to_z, EdgeDrawn));
    EXPECT_EQ(g.root.GetCondition(), 0);
}

TEST(DrawnMarks, LeaveOutEdgesWithAHiddenEndWhicheverItIs) {
    Fork g;
    Edge back = g.c.LinkTo(g.a);
    Hide(g.c);
    MarkDrawnIn(g.graph);
    EXPECT_TRUE(IsFlagSet(g.to_b, EdgeDrawn));
    EXPECT_FALSE(IsFlagSet(g.to_c, EdgeDrawn));
    EXPECT_FALSE(IsFlagSet(back, EdgeDrawn));
    EXPECT_FALSE(IsFlagSet(g.c, NodeDrawn));
    EXPECT_TRUE(IsFlagSet(g.a, NodeDrawn));
}

TEST(DrawnMarks, LeaveOutTheContentsOfAHiddenNodeWithTheirEdges) {
    Courts g;
    Hide(g.c);
    MarkDrawnIn(g.graph);
    for (const Node& node : {g.a, g.b, g.c, g.x}) EXPECT_FALSE(IsFlagSet(node, NodeDrawn));
    EXPECT_FALSE(IsFlagSet(g.a, NodeHidden));
    EXPECT_FALSE(IsFlagSet(g.x_to_b, EdgeDrawn));
    EXPECT_FALSE(IsFlagSet(g.b_to_z, EdgeDrawn));
    EXPECT_TRUE(IsFlagSet(g.z, NodeDrawn));
}

TEST(DrawnMarks, HiddenNodeUnderAVisibleOwnerTakesItsOwnContentsOut) {
    Courts g;
    Hide(g.a);
    MarkDrawnIn(g.graph);
    EXPECT_FALSE(IsFlagSet(g.a, NodeDrawn));
    EXPECT_FALSE(IsFlagSet(g.x, NodeDrawn));
    EXPECT_TRUE(IsFlagSet(g.b, NodeDrawn));
    EXPECT_TRUE(IsFlagSet(g.c, NodeDrawn));
    EXPECT_FALSE(IsFlagSet(g.x_to_b, EdgeDrawn));
    EXPECT_TRUE(IsFlagSet(g.b_to_z, EdgeDrawn));
}

TEST(DrawnMarks, ComeBackWhenTheNodeIsShown) {
    Courts g;
    Hide(g.c);
    MarkDrawnIn(g.graph);
    Show(g.c);
    MarkDrawnIn(g.graph);
    EXPECT_TRUE(IsFlagSet(g.x, NodeDrawn));
    EXPECT_TRUE(IsFlagSet(g.x_to_b, EdgeDrawn));
}

TEST(DrawnMarks, KeepTheOtherBits) {
    Arrow g;
    g.a.SetCondition(NodeMarked | NodeNew);
    g.edge.SetCondition(EdgeMarked);
    Hide(g.b);
    MarkDrawnIn(g.graph);
    EXPECT_EQ(g.a.GetCondition(), NodeMarked | NodeNew | NodeDrawn);
    EXPECT_EQ(g.b.GetCondition(), NodeHidden);
    EXPECT_EQ(g.edge.GetCondition(), EdgeMarked);
}

TEST(DrawnMarks, NeverGoToBreakNodes) {
    Arrow g;
    g.edge.AddBreakNodesIn(g.root, 2);
    MarkDrawnIn(g.graph);
    EXPECT_EQ(g.edge.GetBreakNodes().GetItem(0).GetCondition(), 0);
    EXPECT_EQ(g.edge.GetBreakNodes().GetItem(1).GetCondition(), 0);
}

TEST(DrawnMarks, OfASubtreeFollowWhatItsOwnerIs) {
    Courts g;
    MarkDrawnIn(g.graph);
    _mark_node_drawn(g.a, false);
    EXPECT_FALSE(IsFlagSet(g.a, NodeDrawn));
    EXPECT_FALSE(IsFlagSet(g.x, NodeDrawn));
    EXPECT_FALSE(IsFlagSet(g.x_to_b, EdgeDrawn));
    EXPECT_TRUE(IsFlagSet(g.b, NodeDrawn));
    _mark_node_drawn(g.a, true);
    EXPECT_TRUE(IsFlagSet(g.x, NodeDrawn));
    // The second sweep only takes marks away from edges.
    EXPECT_FALSE(IsFlagSet(g.x_to_b, EdgeDrawn));
    _mark_edge_drawn(g.x_to_b);
    EXPECT_TRUE(IsFlagSet(g.x_to_b, EdgeDrawn));
    _mark_edge_nondrawn(g.x_to_b);
    EXPECT_FALSE(IsFlagSet(g.x_to_b, EdgeDrawn));
}

// Such an edge is reached from its target alone, so the first sweep passes it by.
TEST(DrawnMarks, PassByAnEdgeWhoseSourceIsGone) {
    Arrow g;
    g.a.Remove();
    MarkDrawnIn(g.graph);
    EXPECT_FALSE(IsFlagSet(g.edge, EdgeDrawn));
    EXPECT_TRUE(IsFlagSet(g.b, NodeDrawn));
}

TEST(DrawnMarks, OfNoGraphDoNothing) {
    Arrow g;
    MarkDrawnIn(graph_ptr2<Graph>());
    EXPECT_FALSE(IsFlagSet(g.a, NodeDrawn));
}

}  // namespace
}  // namespace nodeline::test
