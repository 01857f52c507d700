#include <gtest/gtest.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/layout/inc_layout.h>
#include <nodeline/model/graph.h>
#include <support/ids.h>
#include <support/layout_log.h>
#include <support/named_graphs.h>

#include <memory>
#include <vector>

namespace nodeline::test {
namespace {

class VisualStore : public ::testing::Test {
protected:
    [[nodiscard]] IGraphVis& store() const { return *g.root.store(); }
    // What a query that meets the origin finds.
    [[nodiscard]] std::vector<int> hits() const { return Ids(store().test_node_hit(-1, -1, 1, 1)); }

    Arrow g;
    LayoutLog::Lines lines;
    graph_ptr2<ILayout> layout{new LayoutLog(lines), true};
    graph_ptr2<INodeHandler> handler{new DummyNodeHandler, true};
    graph_ptr2<IEdgeHandler> edge_handler{new DummyEdgeHandler, true};
};
using WorkLists = VisualStore;

TEST_F(VisualStore, GivesEachRecordOneVisualRecord) {
    const auto vis = store().get_node_vis(g.a.record());
    EXPECT_EQ(vis->get_node_impl().get(), g.a.record().get());
    EXPECT_EQ(store().get_node_vis(g.a.record()).get(), vis.get());
    EXPECT_NE(store().get_node_vis(g.b.record()).get(), vis.get());
    const auto edge_vis = store().get_edge_vis(g.edge.record());
    EXPECT_EQ(edge_vis->get_edge_impl().get(), g.edge.record().get());
    EXPECT_EQ(store().get_edge_vis(g.edge.record()).get(), edge_vis.get());
}

TEST_F(VisualStore, VisualRecordStartsAtTheOriginWithoutExtent) {
    const auto vis = store().get_node_vis(g.a.record());
    EXPECT_EQ(vis->get_position(), (point<double>{0, 0}));
    EXPECT_EQ(vis->get_size(), (size<double>{0, 0}));
    vis->set_position({1, 2});
    vis->set_size({3, 4});
    EXPECT_EQ(vis->get_position(), (point<double>{1, 2}));
    EXPECT_EQ(vis->get_size(), (size<double>{3, 4}));
}

TEST_F(VisualStore, NullRecordHasNoVisualRecordAndMakesNone) {
    EXPECT_FALSE(store().get_node_vis(graph_ptr<INodeImpl>()));
    EXPECT_FALSE(store().get_edge_vis(graph_ptr<IEdgeImpl>()));
    EXPECT_TRUE(hits().empty());
}

TEST_F(VisualStore, NodeExistsForHitTestsOnceSomebodyAskedForItsVisualRecord) {
    EXPECT_TRUE(hits().empty());
    store().get_node_vis(g.a.record());
    EXPECT_EQ(hits(), IdsOf(g.a));
}

TEST_F(VisualStore, AskingForALayoutLeavesNothingThatHitTestsMeet) {
    EXPECT_EQ(store().get_node_layout(g.a.record()).get(), store().get_default_layout().get());
    store().set_node_layout(g.a.record(), layout);
    store().set_node_painter(g.b.record(), handler);
    EXPECT_TRUE(hits().empty());
}

TEST_F(VisualStore, RemovalForgetsPositionLayoutAndHandler) {
    g.a.SetPosition(5, 5);
    store().set_node_layout(g.a.record(), layout);
    store().set_node_painter(g.a.record(), handler);
    store().remove_node_vis(g.a.record());
    EXPECT_EQ(store().get_node_layout(g.a.record()).get(), store().get_default_layout().get());
    EXPECT_EQ(store().get_node_painter(g.a.record()).get(),
              store().get_default_node_painter().get());
    EXPECT_EQ(g.a.GetPosition(), (point<double>{0, 0}));
}

TEST_F(VisualStore, RemovalOfWhatIsUnknownDoesNothing) {
    store().remove_node_vis(g.a.record());
    store().remove_edge_vis(g.edge.record());
    store().remove_node_vis(graph_ptr<INodeImpl>());
    store().remove_edge_vis(graph_ptr<IEdgeImpl>());
    EXPECT_TRUE(hits().empty());
}

TEST_F(VisualStore, RemovalOfAnEdgeForgetsItsRoute) {
    g.edge.AddBreakNodesIn(g.root, 2);
    store().remove_edge_vis(g.edge.record());
    EXPECT_EQ(g.edge.GetBreakNodes().GetCount(), 0);
}

TEST_F(VisualStore, RemovalOfABreakNodeForgetsItsPlace) {
    g.edge.AddBreakNodesIn(g.root, 1);
    Node bend = g.edge.GetBreakNodes().GetItem(0);
    bend.SetPosition(3, 4);
    bend.SetSize({1, 1});
    store().remove_node_vis(bend.record());
    EXPECT_EQ(bend.GetPosition(), (point<double>{0, 0}));
    EXPECT_EQ(bend.GetSize(), (size<double>{0, 0}));
}

TEST_F(VisualStore, RemovalLeavesTheWorkListsAlone) {
    store().add_to_make_list(g.a.record());
    store().remove_node_vis(g.a.record());
    EXPECT_EQ(Ids(store().get_make_list()), IdsOf(g.root, g.a));
}

TEST_F(VisualStore, StartsWithTheDefaultsOfTheProcess) {
    EXPECT_EQ(store().get_default_layout().get(), GetDefaultLayout().get());
    EXPECT_EQ(store().get_default_node_painter().get(), GetDefaultNodeHandler().get());
    EXPECT_EQ(store().get_default_edge_painter().get(), GetDefaultEdgeHandler().get());
}

TEST_F(VisualStore, EmptyDefaultIsFilledFromTheProcess) {
    store().set_default_layout(graph_ptr2<ILayout>());
    store().set_default_node_painter(graph_ptr2<INodeHandler>());
    store().set_default_edge_painter(graph_ptr2<IEdgeHandler>());
    EXPECT_EQ(store().get_node_layout(g.a.record()).get(), GetDefaultLayout().get());
    EXPECT_EQ(store().get_node_painter(g.a.record()).get(), GetDefaultNodeHandler().get());
    EXPECT_EQ(store().get_default_edge_painter().get(), GetDefaultEdgeHandler().get());
}

TEST_F(VisualStore, NodesWithoutALayoutOfTheirOwnFollowTheDefaultAtOnce) {
    store().get_node_layout(g.a.record());
    store().set_default_layout(layout);
    EXPECT_EQ(store().get_node_layout(g.a.record()).get(), layout.get());
}

TEST_F(VisualStore, NodesWithALayoutOfTheirOwnKeepIt) {
    const graph_ptr2<ILayout> own(new LayoutLog(lines), true);
    store().set_node_layout(g.a.record(), own);
    store().set_default_layout(layout);
    EXPECT_EQ(store().get_node_layout(g.a.record()).get(), own.get());
    store().set_node_layout(g.a.record(), graph_ptr2<ILayout>());
    EXPECT_EQ(store().get_node_layout(g.a.record()).get(), layout.get());
}

TEST_F(VisualStore, NodesWithAHandlerOfTheirOwnKeepIt) {
    const graph_ptr2<INodeHandler> own(new DummyNodeHandler, true);
    store().set_node_painter(g.a.record(), own);
    store().set_default_node_painter(handler);
    EXPECT_EQ(store().get_node_painter(g.a.record()).get(), own.get());
    EXPECT_EQ(store().get_node_painter(g.b.record()).get(), handler.get());
}

TEST_F(VisualStore, NullRecordHasTheDefaultLayoutAndHandler) {
    const graph_ptr<INodeImpl> none;
    store().set_node_layout(none, layout);
    store().set_node_painter(none, handler);
    EXPECT_EQ(store().get_node_layout(none).get(), GetDefaultLayout().get());
    EXPECT_EQ(store().get_node_painter(none).get(), GetDefaultNodeHandler().get());
}

TEST_F(VisualStore, SharesHandlesWithTheirCount) {
    const int before = layout.GetRefCount();
    store().set_node_layout(g.a.record(), layout);
    EXPECT_EQ(layout.GetRefCount(), before + 1);
    store().remove_node_vis(g.a.record());
    EXPECT_EQ(layout.GetRefCount(), before);
}

TEST_F(WorkLists, KeepTheOrderOfTheCallsAndDuplicates) {
    for (const Node& node : {g.b, g.a, g.b}) {
        store().add_to_update_list(node.record());
        store().add_to_resize_list(node.record());
    }
    store().add_to_make_list(g.a.record());
    store().add_to_make_list(g.a.record());
    EXPECT_EQ(Ids(store().get_update_list()), IdsOf(g.b, g.a, g.b));
    EXPECT_EQ(Ids(store().get_resize_list()), IdsOf(g.b, g.a, g.b));
    EXPECT_EQ(Ids(store().get_make_list()), IdsOf(g.root, g.a, g.a));
}

TEST_F(WorkLists, AreHandedOutLive) {
    const auto list = store().get_update_list();
    store().add_to_update_list(g.a.record());
    EXPECT_EQ(Ids(list), IdsOf(g.a));
    store().clear_update_list();
    EXPECT_EQ(list->GetCount(), 0);
    EXPECT_EQ(store().get_update_list().get(), list.get());
}

TEST_F(WorkLists, AreClearedOneByOne) {
    store().add_to_update_list(g.a.record());
    store().add_to_resize_list(g.b.record());
    store().clear_make_list();
    EXPECT_EQ(store().get_make_list()->GetCount(), 0);
    EXPECT_EQ(Ids(store().get_update_list()), IdsOf(g.a));
    store().clear_resize_list();
    EXPECT_EQ(store().get_resize_list()->GetCount(), 0);
    EXPECT_EQ(Ids(store().get_update_list()), IdsOf(g.a));
}

TEST_F(WorkLists, HoldTheirRecordsUntilTheyAreCleared) {
    const int before = g.a.record()->GetRefCount();
    store().add_to_resize_list(g.a.record());
    EXPECT_EQ(g.a.record()->GetRefCount(), before + 1);
    store().clear_resize_list();
    EXPECT_EQ(g.a.record()->GetRefCount(), before);
}

TEST_F(WorkLists, SortedFlagOutlivesAClear) {
    const auto list = store().get_update_list();
    auto* set = dynamic_cast<NodeImplSet*>(list.get());
    ASSERT_NE(set, nullptr);
    store().add_to_update_list(g.a.record());
    EXPECT_FALSE(set->IsSorted());
    set->Find(g.a.record());
    store().clear_update_list();
    EXPECT_TRUE(set->IsSorted());
}

TEST(VisualStoreLife, StoreOutlivesItsGraphWhileHandlesRemain) {
    auto g = std::make_unique<Arrow>();
    Node a = g->a;
    a.SetPosition(1, 2);
    g.reset();
    EXPECT_EQ(a.GetPosition(), (point<double>{1, 2}));
    EXPECT_EQ(a.store()->GetRefCount(), 1);
}

}  // namespace
}  // namespace nodeline::test
