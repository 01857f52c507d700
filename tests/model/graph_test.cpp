#include <gtest/gtest.h>
#include <nodeline/functor/subscriber.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/layout/inc_layout.h>
#include <nodeline/model/graph.h>
#include <support/ids.h>
#include <support/layout_log.h>
#include <support/named_graphs.h>

#include <type_traits>

namespace nodeline::test {
namespace {

TEST(Graph, StartsWithAnEmptyRootAndOneMakeRequest) {
    Empty g;
    EXPECT_EQ(g.root.GetID(), 0);
    EXPECT_EQ(g.root.GetOwned().GetCount(), 0);
    EXPECT_EQ(Ids(g.root.store()->get_make_list()), IdsOf(g.root));
    EXPECT_EQ(g.root.store()->get_update_list()->GetCount(), 0);
    EXPECT_EQ(g.root.store()->get_resize_list()->GetCount(), 0);
}

TEST(Graph, RootIsTheSameNodeEachTime) {
    Empty g;
    EXPECT_EQ(g.graph->GetRoot().record().get(), g.root.record().get());
    EXPECT_EQ(g.graph->GetRoot().store().get(), g.root.store().get());
}

TEST(Graph, IsASubscriberAndNoValue) {
    EXPECT_TRUE((std::is_base_of_v<subscriber_base_t, Graph>));
    EXPECT_FALSE(std::is_copy_constructible_v<Graph>);
    EXPECT_TRUE(std::has_virtual_destructor_v<Graph>);
}

TEST(Graph, TakesAStorageOfItsOwn) {
    const graph_ptr<INodeImpl> root(new DefaultRootNodeImpl);
    const auto a = root->add_node();
    const graph_ptr<IGraphStorage> storage(new DefaultStorage(root));
    {
        const graph_ptr2<Graph> graph(new Graph(storage), true);
        EXPECT_EQ(graph->GetRoot().record().get(), root.get());
        EXPECT_EQ(Ids(graph->GetRoot().GetOwned()), IdsOf(a));
        EXPECT_EQ(storage->GetRefCount(), 2);
    }
    EXPECT_EQ(storage->GetRefCount(), 1);
    EXPECT_EQ(storage->get_root().get(), root.get());
    EXPECT_EQ(root->get_owned()->GetCount(), 0);
    EXPECT_FALSE(a->get_owner());
}

TEST(Graph, AnotherStorageBringsItsRootAndLeavesTheStore) {
    Arrow g;
    g.a.SetPosition(1, 2);
    const graph_ptr<INodeImpl> other_root(new DefaultRootNodeImpl);
    const auto c = other_root->add_node();
    g.graph->SetStorage(graph_ptr<IGraphStorage>(new DefaultStorage(other_root)));
    EXPECT_EQ(g.graph->GetRoot().record().get(), other_root.get());
    EXPECT_EQ(g.graph->GetRoot().store().get(), g.root.store().get());
    EXPECT_EQ(Ids(g.graph->GetRoot().GetOwned()), IdsOf(c));
    EXPECT_EQ(g.a.GetPosition(), (point<double>{1, 2}));
    EXPECT_EQ(Ids(g.root.store()->get_make_list()), IdsOf(g.root));
    EXPECT_EQ(g.a.GetOwner().record().get(), g.root.record().get());
    g.root.Remove();
}

TEST(Graph, DefaultsOfTheGraphAreThoseOfItsStore) {
    Arrow g;
    EXPECT_EQ(g.graph->GetDefaultNodeHandler().get(), GetDefaultNodeHandler().get());
    const graph_ptr2<INodeHandler> handler(new DummyNodeHandler, true);
    g.graph->SetDefaultNodeHandler(handler);
    EXPECT_EQ(g.graph->GetDefaultNodeHandler().get(), handler.get());
    EXPECT_EQ(g.a.GetHandler().get(), handler.get());
    LayoutLog::Lines lines;
    const graph_ptr2<ILayout> layout(new LayoutLog(lines), true);
    g.graph->SetDefaultLayout(layout);
    EXPECT_EQ(g.root.GetLayout().get(), layout.get());
}

TEST(Graph, GivesBackWhatItWasHanded) {
    LayoutLog::Lines lines;
    const graph_ptr2<ILayout> layout(new LayoutLog(lines), true);
    {
        Arrow g;
        g.graph->SetDefaultLayout(layout);
        g.a.SetLayout(layout);
        EXPECT_EQ(layout.GetRefCount(), 3);
    }
    EXPECT_EQ(layout.GetRefCount(), 1);
}

TEST(Graph, ChangesAskForNoLayout) {
    Arrow g;
    LayoutLog::Lines lines;
    g.root.store()->clear_make_list();
    Node c = g.root.AddNode();
    Edge edge = g.b.LinkTo(c);
    c.SetOwner(g.a);
    c.SetSize({1, 1});
    c.SetPosition(2, 2);
    c.SetCaption("c");
    c.SetCondition(1);
    c.SetLayout(graph_ptr2<ILayout>(new LayoutLog(lines), true));
    c.SetHandler(graph_ptr2<INodeHandler>(new DummyNodeHandler, true));
    edge.AddBreakNodesIn(g.root, 2);
    edge.Remove();
    c.Remove();
    EXPECT_FALSE(g.graph->RecalculateLayout(nullptr));
    EXPECT_TRUE(lines.empty());
}

}  // namespace
}  // namespace nodeline::test
