#include <gtest/gtest.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/layout/inc_layout.h>
#include <nodeline/model/graph.h>
#include <support/ids.h>
#include <support/layout_log.h>
#include <support/named_graphs.h>

#include <vector>

namespace nodeline::test {
namespace {

std::vector<int> Requests(const Node& node,
                          graph_ptr<IGraphSet<graph_ptr<INodeImpl>>> (IGraphVis::*list)()) {
    return Ids((node.store().get()->*list)());
}

TEST(NodeHandle, ForwardsToItsRecord) {
    Arrow g;
    g.a.SetCaption("parse");
    g.a.SetTag(12);
    g.a.SetCondition(9);
    EXPECT_EQ(g.a.record()->get_caption(), "parse");
    EXPECT_EQ(g.a.record()->get_tag(), 12);
    EXPECT_EQ(g.a.record()->get_condition(), 9);
    EXPECT_EQ(g.a.GetCaption(), "parse");
    EXPECT_EQ(g.a.GetTag(), 12);
    EXPECT_EQ(g.a.GetCondition(), 9);
    EXPECT_EQ(g.a.GetID(), g.a.record()->get_id());
}

TEST(NodeHandle, SetsCarryTheStore) {
    Arrow g;
    EXPECT_EQ(g.a.GetChildren().GetItem(0).store().get(), g.a.store().get());
    EXPECT_EQ(g.b.GetParents().GetItem(0).store().get(), g.a.store().get());
    EXPECT_EQ(g.a.GetEdgesOut().GetItem(0).store().get(), g.a.store().get());
    EXPECT_EQ(g.b.GetEdgesIn().GetItem(0).store().get(), g.a.store().get());
    EXPECT_EQ(g.root.GetOwned().GetItem(0).store().get(), g.a.store().get());
    EXPECT_EQ(g.a.GetOwner().store().get(), g.a.store().get());
    EXPECT_EQ(g.edge.From().store().get(), g.a.store().get());
}

TEST(NodeHandle, LinkCarriesTheStoreOfItsSource) {
    Arrow first;
    Empty second;
    const Node foreign(second.root.store(), first.b.record());
    const Edge edge = first.a.LinkTo(foreign);
    EXPECT_EQ(edge.store().get(), first.a.store().get());
}

TEST(NodeHandle, IsDummyWithoutAnOwner) {
    Arrow g;
    g.edge.AddBreakNodesIn(g.root, 1);
    EXPECT_TRUE(g.root.IsDummy());
    EXPECT_FALSE(g.a.IsDummy());
    EXPECT_TRUE(Node(g.edge.GetBreakNodes().GetItem(0)).IsDummy());
}

TEST(NodeHandle, OwnerOfTheRootIsAnEmptyHandle) {
    Empty g;
    const Node owner = g.root.GetOwner();
    EXPECT_FALSE(owner);
    const Node copy(owner);
    EXPECT_FALSE(copy);
}

TEST(NodeHandle, TwoOnOneRecordAreTheSameNode) {
    Arrow g;
    const Node copy = g.a;
    EXPECT_TRUE(copy == g.a);
    EXPECT_FALSE(copy != g.a);
    EXPECT_TRUE(g.a != g.b);
}

TEST(NodeHandle, CopySeesTheMovesOfTheOther) {
    Arrow g;
    const Node copy = g.a;
    g.a.SetPosition(1, 2);
    EXPECT_EQ(g.a.GetPosition(), (point<double>{1, 2}));
    EXPECT_EQ(copy.GetPosition(), (point<double>{1, 2}));
    g.a.SetPosition(point<double>{3, 4});
    EXPECT_EQ(copy.GetPosition(), (point<double>{3, 4}));
    g.a.SetSize({5, 6});
    EXPECT_EQ(copy.GetSize(), (size<double>{5, 6}));
}

TEST(NodeHandle, ReadingThePositionMakesAVisualRecord) {
    Arrow g;
    EXPECT_EQ(g.graph->HitNodeTest(-1, -1, 1, 1).GetCount(), 0);
    EXPECT_EQ(g.a.GetPosition(), (point<double>{0, 0}));
    EXPECT_EQ(g.b.GetSize(), (size<double>{0, 0}));
    EXPECT_EQ(Ids(g.graph->HitNodeTest(-1, -1, 1, 1)), IdsOf(g.a, g.b));
}

TEST(NodeHandle, LayoutAndHandlerFallBackOnTheDefaults) {
    Arrow g;
    EXPECT_EQ(g.a.GetLayout().get(), GetDefaultLayout().get());
    EXPECT_EQ(g.a.GetHandler().get(), GetDefaultNodeHandler().get());
    LayoutLog::Lines lines;
    const graph_ptr2<ILayout> layout(new LayoutLog(lines), true);
    const graph_ptr2<INodeHandler> handler(new DummyNodeHandler, true);
    g.a.SetLayout(layout);
    g.a.SetHandler(handler);
    EXPECT_EQ(g.a.GetLayout().get(), layout.get());
    EXPECT_EQ(g.a.GetHandler().get(), handler.get());
    EXPECT_EQ(g.b.GetLayout().get(), GetDefaultLayout().get());
}

TEST(NodeHandle, AsksForWorkOnTheList) {
    Arrow g;
    g.a.MakeLayout();
    g.b.UpdateLayout();
    g.b.ResizeSelf();
    EXPECT_EQ(Requests(g.a, &IGraphVis::get_make_list), IdsOf(g.root, g.a));
    EXPECT_EQ(Requests(g.a, &IGraphVis::get_update_list), IdsOf(g.b));
    EXPECT_EQ(Requests(g.a, &IGraphVis::get_resize_list), IdsOf(g.b));
}

TEST(NodeHandle, ResizeAllAsksForOwnersAheadOfWhatTheyOwn) {
    Stairs g;
    Node d = g.a.AddNode();
    Node e = g.b.AddNode();
    Node beside = g.root.AddNode();
    g.a.ResizeAll();
    EXPECT_EQ(Requests(g.a, &IGraphVis::get_resize_list), IdsOf(g.a, g.b, g.c, e, d));
    EXPECT_EQ(_apply_resize_all(beside), 0);
    EXPECT_EQ(Requests(g.a, &IGraphVis::get_resize_list), IdsOf(g.a, g.b, g.c, e, d, beside));
}

TEST(NodeHandle, RemoveForgetsTheNodesPlaceAndKeepsThoseOfItsContents) {
    Stairs g;
    g.a.SetPosition(1, 1);
    g.b.SetPosition(2, 2);
    g.a.Remove();
    EXPECT_EQ(g.a.GetPosition(), (point<double>{0, 0}));
    EXPECT_EQ(g.b.GetPosition(), (point<double>{2, 2}));
    EXPECT_EQ(g.graph->HitNodeTest(-9, -9, 9, 9).GetCount(), 0);
}

TEST(EdgeHandle, ForwardsToItsRecord) {
    Arrow g;
    g.edge.SetCaption("calls");
    g.edge.SetTag(3);
    g.edge.SetCondition(16);
    EXPECT_EQ(g.edge.record()->get_caption(), "calls");
    EXPECT_EQ(g.edge.record()->get_tag(), 3);
    EXPECT_EQ(g.edge.record()->get_condition(), 16);
    EXPECT_EQ(g.edge.GetCaption(), "calls");
    EXPECT_EQ(g.edge.GetTag(), 3);
    EXPECT_EQ(g.edge.GetCondition(), 16);
    EXPECT_EQ(g.edge.GetID(), g.edge.record()->get_id());
}

TEST(EdgeHandle, KnowsItsEnds) {
    Arrow g;
    EXPECT_TRUE(g.edge.From() == g.a);
    EXPECT_TRUE(g.edge.To() == g.b);
    EXPECT_TRUE(g.a.GetEdgesOut().GetItem(0) == g.edge);
    EXPECT_TRUE(g.edge != g.a.LinkTo(g.b));
}

TEST(EdgeHandle, HandlerFollowsTheDefaultOfTheGraphAtOnce) {
    Arrow g;
    EXPECT_EQ(g.edge.GetHandler().get(), GetDefaultEdgeHandler().get());
    const graph_ptr2<IEdgeHandler> handler(new DummyEdgeHandler, true);
    g.graph->SetDefaultEdgeHandler(handler);
    EXPECT_EQ(g.edge.GetHandler().get(), handler.get());
    EXPECT_EQ(g.b.LinkTo(g.a).GetHandler().get(), handler.get());
}

TEST(EdgeHandle, KeepsBreakNodesPerOwner) {
    TwoBoxes g;
    g.edge.AddBreakNodesIn(g.a, 1);
    g.edge.AddBreakNodesIn(g.root, 2);
    EXPECT_EQ(g.edge.GetBreakNodesIn(g.a).GetCount(), 1);
    EXPECT_EQ(g.edge.GetBreakNodesIn(g.root).GetCount(), 2);
    EXPECT_EQ(g.edge.GetBreakNodes().GetCount(), 3);
    EXPECT_EQ(g.edge.GetBreakNodes().GetItem(0).store().get(), g.a.store().get());
    g.edge.RemoveBreakNodesIn(g.a);
    EXPECT_EQ(g.edge.GetBreakNodes().GetCount(), 2);
    g.edge.RemoveBreakNodes();
    EXPECT_EQ(g.edge.GetBreakNodes().GetCount(), 0);
}

TEST(EdgeHandle, RemoveTakesTheBreakNodesAlong) {
    Arrow g;
    g.edge.AddBreakNodesIn(g.root, 2);
    g.edge.Remove();
    EXPECT_EQ(g.a.GetEdgesOut().GetCount(), 0);
    EXPECT_EQ(g.b.GetEdgesIn().GetCount(), 0);
    EXPECT_EQ(g.edge.GetBreakNodes().GetCount(), 0);
    EXPECT_EQ(g.edge.GetBreakNodesIn(g.root).GetCount(), 0);
}

TEST(HandleSets, ShowTheRecordsLive) {
    Arrow g;
    const NodeSet owned = g.root.GetOwned();
    const EdgeSet out = g.a.GetEdgesOut();
    Node c = g.root.AddNode();
    const Edge edge = g.a.LinkTo(c);
    EXPECT_EQ(Ids(owned), IdsOf(g.a, g.b, c));
    EXPECT_EQ(Ids(out), IdsOf(g.edge, edge));
}

TEST(HandleSets, AreValuesThatAreCopiedAndAssigned) {
    Arrow g;
    NodeSet nodes = g.root.GetOwned();
    const NodeSet copy(nodes);
    nodes = g.a.GetChildren();
    EXPECT_EQ(Ids(nodes), IdsOf(g.b));
    EXPECT_EQ(Ids(copy), IdsOf(g.a, g.b));
    EdgeSet edges = g.a.GetEdgesOut();
    const EdgeSet edge_copy(edges);
    edges = g.b.GetEdgesOut();
    EXPECT_EQ(edges.GetCount(), 0);
    EXPECT_EQ(Ids(edge_copy), IdsOf(g.edge));
    EXPECT_EQ(copy.GetRefCount(), 0);
}

TEST(HandleSets, EmptyOnesHoldNothing) {
    EXPECT_EQ(NodeSet().GetCount(), 0);
    EXPECT_EQ(EdgeSet().GetCount(), 0);
    EXPECT_FALSE(NodeSet().GetItem(0));
    EXPECT_FALSE(EdgeSet().GetItem(0));
}

TEST(NodeEdgePairs, AreOrderedByNodeThenByEdge) {
    Arrow g;
    const Edge second = g.b.LinkTo(g.a);
    const NodeEdgePair a1{g.a, g.edge};
    const NodeEdgePair a2{g.a, second};
    const NodeEdgePair b1{g.b, g.edge};
    EXPECT_TRUE(a1 < a2);
    EXPECT_FALSE(a2 < a1);
    EXPECT_TRUE(a2 < b1);
    EXPECT_FALSE(b1 < a2);
    EXPECT_FALSE(a1 < a1);
}

TEST(NodeEdgePairs, HoldFourCounts) {
    Arrow g;
    const int store = g.a.store()->GetRefCount();
    const int node = g.a.record()->GetRefCount();
    const int edge = g.edge.record()->GetRefCount();
    const NodeEdgePair pair{g.a, g.edge};
    EXPECT_EQ(g.a.store()->GetRefCount(), store + 2);
    EXPECT_EQ(pair.node.record()->GetRefCount(), node + 1);
    EXPECT_EQ(pair.edge.record()->GetRefCount(), edge + 1);
}

#ifdef NDEBUG
TEST(HandleMisuse, EmptyHandlesAnswerEmptyValues) {
    Node node;
    node.SetCaption("x");
    node.SetTag(1);
    node.SetCondition(1);
    node.SetPosition(1, 1);
    node.SetSize({1, 1});
    node.SetOwner(node);
    node.SetLayout(graph_ptr2<ILayout>());
    node.SetHandler(graph_ptr2<INodeHandler>());
    node.MakeLayout();
    node.UpdateLayout();
    node.ResizeSelf();
    node.ResizeAll();
    node.Remove();
    EXPECT_EQ(node.GetID(), 0);
    EXPECT_EQ(node.GetCaption(), "");
    EXPECT_EQ(node.GetTag(), 0);
    EXPECT_EQ(node.GetCondition(), 0);
    EXPECT_EQ(node.GetParents().GetCount(), 0);
    EXPECT_EQ(node.GetChildren().GetCount(), 0);
    EXPECT_EQ(node.GetEdgesIn().GetCount(), 0);
    EXPECT_EQ(node.GetEdgesOut().GetCount(), 0);
    EXPECT_EQ(node.GetOwned().GetCount(), 0);
    EXPECT_FALSE(node.GetOwner());
    EXPECT_FALSE(node.AddNode());
    EXPECT_FALSE(node.LinkTo(node));
    EXPECT_FALSE(node.IsDummy());
    EXPECT_FALSE(node.GetLayout());
    EXPECT_FALSE(node.GetHandler());
    EXPECT_EQ(node.GetSize(), (size<double>{0, 0}));
    EXPECT_EQ(node.GetPosition(), (point<double>{0, 0}));
}

TEST(HandleMisuse, EmptyEdgeHandlesAnswerEmptyValues) {
    Empty g;
    Edge edge;
    edge.SetCaption("x");
    edge.SetTag(1);
    edge.SetCondition(1);
    edge.AddBreakNodesIn(g.root, 1);
    edge.RemoveBreakNodesIn(g.root);
    edge.RemoveBreakNodes();
    edge.Remove();
    EXPECT_EQ(edge.GetID(), 0);
    EXPECT_EQ(edge.GetCaption(), "");
    EXPECT_EQ(edge.GetTag(), 0);
    EXPECT_EQ(edge.GetCondition(), 0);
    EXPECT_FALSE(edge.From());
    EXPECT_FALSE(edge.To());
    EXPECT_FALSE(edge.GetHandler());
    EXPECT_EQ(edge.GetBreakNodes().GetCount(), 0);
    EXPECT_EQ(edge.GetBreakNodesIn(g.root).GetCount(), 0);
}

TEST(HandleMisuse, IndexOutOfRangeGivesAnEmptyHandle) {
    Arrow g;
    EXPECT_FALSE(g.root.GetOwned().GetItem(2));
    EXPECT_FALSE(g.root.GetOwned().GetItem(-1));
    EXPECT_FALSE(g.a.GetEdgesOut().GetItem(1));
}

TEST(HandleMisuse, LinkFromOrToTheRootGivesAnEmptyHandle) {
    Arrow g;
    EXPECT_FALSE(g.a.LinkTo(g.root));
    EXPECT_FALSE(g.root.LinkTo(g.a));
    EXPECT_EQ(Ids(g.a.GetEdgesOut()), IdsOf(g.edge));
}

TEST(HandleMisuse, BreakNodesInNoOwnerAreNone) {
    Arrow g;
    g.edge.AddBreakNodesIn(Node(), 2);
    EXPECT_EQ(g.edge.GetBreakNodesIn(Node()).GetCount(), 0);
    EXPECT_EQ(g.edge.GetBreakNodesIn(g.root).GetCount(), 0);
}
#else
TEST(HandleMisuseDeathTest, EmptyHandlesAreCaught) {
    Arrow g;
    Node node;
    Edge edge;
    EXPECT_DEATH((void)node.GetID(), "empty handle");
    EXPECT_DEATH(node.SetCaption("x"), "empty handle");
    EXPECT_DEATH(node.SetPosition(1, 1), "empty handle");
    EXPECT_DEATH((void)node.GetOwned(), "empty handle");
    EXPECT_DEATH(node.MakeLayout(), "empty handle");
    EXPECT_DEATH(node.ResizeAll(), "empty handle");
    EXPECT_DEATH(node.Remove(), "empty handle");
    EXPECT_DEATH((void)edge.From(), "empty handle");
    EXPECT_DEATH((void)edge.GetBreakNodes(), "empty handle");
    EXPECT_DEATH(edge.Remove(), "empty handle");
    EXPECT_DEATH(g.edge.AddBreakNodesIn(Node(), 2), "empty handle");
}

TEST(HandleMisuseDeathTest, IndexOutOfRangeIsCaught) {
    Arrow g;
    EXPECT_DEATH((void)g.root.GetOwned().GetItem(2), "index out of range");
    EXPECT_DEATH((void)g.a.GetEdgesOut().GetItem(-1), "index out of range");
}

TEST(HandleMisuseDeathTest, LinkToTheRootIsCaught) {
    Arrow g;
    EXPECT_DEATH(g.a.LinkTo(g.root), "an edge ends at a real node");
}
#endif

}  // namespace
}  // namespace nodeline::test
