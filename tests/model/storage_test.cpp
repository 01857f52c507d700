#include <gtest/gtest.h>
#include <nodeline/model/break_nodes.h>
#include <nodeline/model/storage.h>
#include <support/ids.h>

#include <type_traits>

namespace nodeline::test {
namespace {

// As the counters stand before anything is made.
const int first_node_id = DefaultNodeImpl::current_id;
const int first_edge_id = DefaultEdgeImpl::current_id;
const int first_break_id = DummyNodeImpl::current_id;

class Storage : public ::testing::Test {
protected:
    ~Storage() override { root->remove(); }

    graph_ptr<INodeImpl> root{new DefaultRootNodeImpl};
};
using RootRecord = Storage;
using NodeRecord = Storage;
using EdgeRecord = Storage;
using Links = Storage;
using Neighbours = Storage;

TEST(Ids, NodesCountUpFromOneEdgesFromZeroAndBreakNodesDownFromMinusOne) {
    EXPECT_EQ(first_node_id, 1);
    EXPECT_EQ(first_edge_id, 0);
    EXPECT_EQ(first_break_id, -1);
}

TEST_F(Storage, NewNodeTakesTheNextIdOfTheProcess) {
    const int next = DefaultNodeImpl::current_id;
    EXPECT_EQ(root->add_node()->get_id(), next);
    EXPECT_EQ(root->add_node()->get_id(), next + 1);
    EXPECT_EQ(DefaultNodeImpl::current_id, next + 2);
}

TEST_F(Storage, SecondGraphContinuesTheSameCounters) {
    const auto a = root->add_node();
    const auto loop = a->link_to(a);
    const graph_ptr<INodeImpl> other_root(new DefaultRootNodeImpl);
    const auto b = other_root->add_node();
    EXPECT_EQ(b->get_id(), a->get_id() + 1);
    EXPECT_EQ(b->link_to(b)->get_id(), loop->get_id() + 1);
    other_root->remove();
}

TEST_F(Storage, ClassesDeriveAsTheInterfacesSay) {
    EXPECT_TRUE((std::is_base_of_v<Countable, INodeImpl>));
    EXPECT_TRUE((std::is_base_of_v<Countable, IEdgeImpl>));
    EXPECT_TRUE((std::is_base_of_v<Countable, IGraphStorage>));
    EXPECT_TRUE((std::is_base_of_v<INodeImpl, DefaultRootNodeImpl>));
    EXPECT_TRUE((std::is_base_of_v<DefaultRootNodeImpl, DefaultNodeImpl>));
    EXPECT_TRUE((std::is_base_of_v<INodeImpl, DummyNodeImpl>));
}

TEST_F(Storage, RemoveRootLetsGoOfTheRootAndTakesNothingApart) {
    const auto a = root->add_node();
    const graph_ptr<IGraphStorage> storage(new DefaultStorage(root));
    EXPECT_EQ(storage->get_root().get(), root.get());
    storage->remove_root();
    EXPECT_FALSE(storage->get_root());
    EXPECT_EQ(Ids(root->get_owned()), IdsOf(a));
    EXPECT_EQ(a->get_owner().get(), root.get());
}

TEST_F(RootRecord, HasTheIdZeroAndNoOwner) {
    EXPECT_EQ(root->get_id(), 0);
    EXPECT_TRUE(root == 0);
    EXPECT_FALSE(root->get_owner());
}

TEST_F(RootRecord, TakesNoCaptionTagOrCondition) {
    root->set_caption("root");
    root->set_tag(7);
    root->set_condition(7);
    EXPECT_EQ(root->get_caption(), "");
    EXPECT_EQ(root->get_tag(), 0);
    EXPECT_EQ(root->get_condition(), 0);
}

TEST_F(RootRecord, IgnoresLinksAndOwners) {
    const auto a = root->add_node();
    const int next = DefaultEdgeImpl::current_id;
    EXPECT_FALSE(root->link_to(a));
    EXPECT_EQ(DefaultEdgeImpl::current_id, next);
    EXPECT_EQ(a->get_edges_in()->GetCount(), 0);
    root->set_owner(a);
    EXPECT_FALSE(root->get_owner());
    EXPECT_EQ(a->get_owned()->GetCount(), 0);
}

TEST_F(RootRecord, HasNoNeighboursAndAFreshSetForEachQuestion) {
    const auto a = root->add_node();
    a->link_to(a);
    EXPECT_EQ(root->get_parents()->GetCount(), 0);
    EXPECT_EQ(root->get_children()->GetCount(), 0);
    EXPECT_EQ(root->get_edges_in()->GetCount(), 0);
    EXPECT_EQ(root->get_edges_out()->GetCount(), 0);
    const auto once = root->get_parents();
    EXPECT_NE(root->get_parents().get(), once.get());
    const auto edges = root->get_edges_out();
    EXPECT_NE(root->get_edges_out().get(), edges.get());
}

TEST_F(RootRecord, OwnedSetIsLive) {
    const auto owned = root->get_owned();
    EXPECT_EQ(owned->GetCount(), 0);
    const auto a = root->add_node();
    EXPECT_EQ(Ids(owned), IdsOf(a));
    EXPECT_EQ(root->get_owned().get(), owned.get());
}

TEST_F(NodeRecord, StartsBlankUnderItsOwner) {
    const auto a = root->add_node();
    EXPECT_EQ(a->get_caption(), "");
    EXPECT_EQ(a->get_tag(), 0);
    EXPECT_EQ(a->get_condition(), 0);
    EXPECT_EQ(a->get_owner().get(), root.get());
    EXPECT_EQ(a->get_owned()->GetCount(), 0);
    EXPECT_EQ(a->get_edges_in()->GetCount(), 0);
    EXPECT_EQ(a->get_edges_out()->GetCount(), 0);
    EXPECT_EQ(a->get_parents()->GetCount(), 0);
    EXPECT_EQ(a->get_children()->GetCount(), 0);
}

TEST_F(NodeRecord, KeepsCaptionTagAndCondition) {
    const auto a = root->add_node();
    a->set_caption("parse");
    a->set_tag(-3);
    a->set_condition(40);
    EXPECT_EQ(a->get_caption(), "parse");
    EXPECT_EQ(a->get_tag(), -3);
    EXPECT_EQ(a->get_condition(), 40);
}

TEST_F(NodeRecord, OwnsNodesInTheOrderOfAdding) {
    const auto a = root->add_node();
    const auto b = a->add_node();
    const auto c = a->add_node();
    EXPECT_EQ(Ids(a->get_owned()), IdsOf(b, c));
    EXPECT_EQ(c->get_owner().get(), a.get());
    EXPECT_EQ(Ids(root->get_owned()), IdsOf(a));
}

TEST_F(NodeRecord, AddingUnsortsTheOwnedSet) {
    const auto a = root->add_node();
    root->get_owned()->Find(a);
    EXPECT_TRUE(root->get_owned()->IsSorted());
    root->add_node();
    EXPECT_FALSE(root->get_owned()->IsSorted());
}

TEST_F(EdgeRecord, StartsBlankBetweenItsEnds) {
    const auto a = root->add_node();
    const auto b = root->add_node();
    const int next = DefaultEdgeImpl::current_id;
    const auto edge = a->link_to(b);
    EXPECT_EQ(edge->get_id(), next);
    EXPECT_EQ(edge->from().get(), a.get());
    EXPECT_EQ(edge->to().get(), b.get());
    EXPECT_EQ(edge->get_caption(), "");
    EXPECT_EQ(edge->get_tag(), 0);
    EXPECT_EQ(edge->get_condition(), 0);
}

TEST_F(EdgeRecord, KeepsCaptionTagAndCondition) {
    const auto a = root->add_node();
    const auto edge = a->link_to(a);
    edge->set_caption("calls");
    edge->set_tag(5);
    edge->set_condition(24);
    EXPECT_EQ(edge->get_caption(), "calls");
    EXPECT_EQ(edge->get_tag(), 5);
    EXPECT_EQ(edge->get_condition(), 24);
}

TEST_F(Links, StandInTheEdgeSetsOfBothEnds) {
    const auto a = root->add_node();
    const auto b = a->add_node();
    const auto edge = a->link_to(b);
    EXPECT_EQ(Ids(a->get_edges_out()), IdsOf(edge));
    EXPECT_EQ(Ids(b->get_edges_in()), IdsOf(edge));
    EXPECT_EQ(a->get_edges_in()->GetCount(), 0);
    EXPECT_EQ(b->get_edges_out()->GetCount(), 0);
}

TEST_F(Links, TwoBetweenTheSameNodesAreTwoEdgesAndOneNeighbour) {
    const auto a = root->add_node();
    const auto b = root->add_node();
    const auto first = a->link_to(b);
    const auto second = a->link_to(b);
    EXPECT_EQ(Ids(a->get_edges_out()), IdsOf(first, second));
    EXPECT_EQ(Ids(a->get_children()), IdsOf(b));
    EXPECT_EQ(Ids(b->get_parents()), IdsOf(a));
}

TEST_F(Links, SelfLoopStandsInBothSetsOfItsNode) {
    const auto a = root->add_node();
    const auto loop = a->link_to(a);
    EXPECT_EQ(Ids(a->get_edges_in()), IdsOf(loop));
    EXPECT_EQ(Ids(a->get_edges_out()), IdsOf(loop));
    EXPECT_EQ(Ids(a->get_parents()), IdsOf(a));
    EXPECT_EQ(Ids(a->get_children()), IdsOf(a));
}

TEST_F(Links, EdgeSetsAreLiveAndUnsortedAfterALink) {
    const auto a = root->add_node();
    const auto b = root->add_node();
    const auto out = a->get_edges_out();
    const auto in = b->get_edges_in();
    const auto edge = a->link_to(b);
    EXPECT_EQ(Ids(out), IdsOf(edge));
    out->Find(edge);
    in->Find(edge);
    a->link_to(b);
    EXPECT_FALSE(out->IsSorted());
    EXPECT_FALSE(in->IsSorted());
    EXPECT_EQ(a->get_edges_out().get(), out.get());
}

TEST_F(Neighbours, AreDistinctAndOrderedById) {
    const auto a = root->add_node();
    const auto b = root->add_node();
    const auto c = root->add_node();
    a->link_to(c);
    a->link_to(a);
    a->link_to(c);
    a->link_to(b);
    EXPECT_EQ(Ids(a->get_children()), IdsOf(a, b, c));
    c->link_to(a);
    b->link_to(a);
    EXPECT_EQ(Ids(a->get_parents()), IdsOf(a, b, c));
}

TEST_F(Neighbours, FollowANewLink) {
    const auto a = root->add_node();
    const auto b = root->add_node();
    const auto c = root->add_node();
    EXPECT_EQ(a->get_children()->GetCount(), 0);
    a->link_to(b);
    EXPECT_EQ(Ids(a->get_children()), IdsOf(b));
    EXPECT_EQ(Ids(b->get_parents()), IdsOf(a));
    a->link_to(c);
    EXPECT_EQ(Ids(a->get_children()), IdsOf(b, c));
    c->link_to(b);
    EXPECT_EQ(Ids(b->get_parents()), IdsOf(a, c));
}

TEST_F(Neighbours, AreKeptBetweenQuestions) {
    const auto a = root->add_node();
    a->link_to(a);
    EXPECT_EQ(a->get_children().get(), a->get_children().get());
    EXPECT_EQ(a->get_parents().get(), a->get_parents().get());
}

TEST_F(Neighbours, FollowTheRemovalOfAnEdge) {
    const auto a = root->add_node();
    const auto b = root->add_node();
    const auto c = root->add_node();
    const auto first = a->link_to(b);
    a->link_to(c);
    EXPECT_EQ(Ids(a->get_children()), IdsOf(b, c));
    EXPECT_EQ(Ids(b->get_parents()), IdsOf(a));
    first->remove();
    EXPECT_EQ(Ids(a->get_children()), IdsOf(c));
    EXPECT_EQ(b->get_parents()->GetCount(), 0);
}

TEST_F(Neighbours, OperationAppendsToWhatTheResultHolds) {
    auto* a = new DefaultNodeImpl(root);
    const graph_ptr<INodeImpl> keep(a);
    const auto b = root->add_node();
    const auto c = root->add_node();
    a->link_to(c);
    a->link_to(b);
    const graph_ptr<NodeImplSet> result(new NodeImplSet);
    result->Add(c);
    a->get_neighbours(a->get_edges_out(), &IEdgeImpl::to, result);
    EXPECT_EQ(Ids(result), IdsOf(b, c));
    EXPECT_TRUE(result->IsSorted());
    a->delete_node();
}

TEST_F(Neighbours, OperationLeavesAResultOfOneItemUnsorted) {
    auto* a = new DefaultNodeImpl(root);
    const graph_ptr<INodeImpl> keep(a);
    const auto b = root->add_node();
    a->link_to(b);
    const graph_ptr<NodeImplSet> result(new NodeImplSet);
    a->get_neighbours(a->get_edges_out(), &IEdgeImpl::to, result);
    EXPECT_EQ(Ids(result), IdsOf(b));
    EXPECT_FALSE(result->IsSorted());
    a->delete_node();
}

#ifdef NDEBUG
TEST_F(Links, ToTheRootOrToNothingAreNotMade) {
    const auto a = root->add_node();
    const int next = DefaultEdgeImpl::current_id;
    EXPECT_FALSE(a->link_to(root));
    EXPECT_FALSE(a->link_to(graph_ptr<INodeImpl>()));
    EXPECT_EQ(a->get_edges_out()->GetCount(), 0);
    EXPECT_EQ(DefaultEdgeImpl::current_id, next);
}
#else
using LinksDeathTest = Storage;
TEST_F(LinksDeathTest, ToTheRootOrToNothingAreCaught) {
    const auto a = root->add_node();
    EXPECT_DEATH(a->link_to(root), "an edge ends at a real node");
    EXPECT_DEATH(a->link_to(graph_ptr<INodeImpl>()), "an edge ends at a real node");
}
#endif

}  // namespace
}  // namespace nodeline::test
