#include <gtest/gtest.h>
#include <nodeline/model/break_nodes.h>
#include <nodeline/model/graph.h>
#include <support/ids.h>
#include <support/named_graphs.h>

#include <vector>

namespace nodeline::test {
namespace {

graph_ptr<IEdgeVis> vis_of(const Edge& edge) { return edge.store()->get_edge_vis(edge.record()); }

DefaultEdgeVis* stock_vis_of(const Edge& edge) {
    return dynamic_cast<DefaultEdgeVis*>(vis_of(edge).get());
}

// Adds bends in `owner` and gives their ids.
std::vector<int> Bend(Edge edge, const Node& owner, int count) {
    const int first = DummyNodeImpl::current_id;
    edge.AddBreakNodesIn(owner, count);
    std::vector<int> ids;
    for (int i = 0; i < count; ++i) ids.push_back(first - i);
    return ids;
}

std::vector<int> Joined(std::vector<int> first, const std::vector<int>& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

TEST(BreakNodes, TakeConsecutiveFallingIds) {
    Arrow g;
    const int next = DummyNodeImpl::current_id;
    g.edge.AddBreakNodesIn(g.root, 2);
    EXPECT_EQ(Ids(g.edge.GetBreakNodesIn(g.root)), (std::vector<int>{next, next - 1}));
    EXPECT_EQ(DummyNodeImpl::current_id, next - 2);
}

TEST(BreakNodes, AddedLaterStandBehindTheOthers) {
    Arrow g;
    const auto first = Bend(g.edge, g.root, 2);
    const NodeSet live = g.edge.GetBreakNodesIn(g.root);
    Edge other = g.b.LinkTo(g.a);
    Bend(other, g.root, 1);
    const auto second = Bend(g.edge, g.root, 3);
    EXPECT_EQ(Ids(live), Joined(first, second));
    EXPECT_EQ(Ids(g.edge.GetBreakNodes()), Joined(first, second));
}

TEST(BreakNodes, StartAtTheOriginWithoutExtent) {
    Arrow g;
    Bend(g.edge, g.root, 1);
    const Node bend = g.edge.GetBreakNodes().GetItem(0);
    EXPECT_EQ(bend.GetPosition(), (point<double>{0, 0}));
    EXPECT_EQ(bend.GetSize(), (size<double>{0, 0}));
    EXPECT_EQ(bend.GetCondition(), 0);
}

TEST(BreakNodes, KeepPositionSizeAndCondition) {
    Arrow g;
    Bend(g.edge, g.root, 2);
    Node bend = g.edge.GetBreakNodes().GetItem(1);
    bend.SetPosition(3, 4);
    bend.SetSize({5, 6});
    bend.SetCondition(8);
    const Node again = g.edge.GetBreakNodesIn(g.root).GetItem(1);
    EXPECT_EQ(again.GetPosition(), (point<double>{3, 4}));
    EXPECT_EQ(again.GetSize(), (size<double>{5, 6}));
    EXPECT_EQ(again.GetCondition(), 8);
    EXPECT_EQ(g.edge.GetBreakNodes().GetItem(0).GetPosition(), (point<double>{0, 0}));
}

TEST(BreakNodes, AreTheSameRecordsWhereverTheyAreAskedFor) {
    Arrow g;
    Bend(g.edge, g.root, 2);
    const auto all = vis_of(g.edge)->get_break_nodes();
    const auto here = vis_of(g.edge)->get_break_nodes_in(0);
    EXPECT_EQ((*all)[1].get(), (*here)[1].get());
    g.edge.AddBreakNodesIn(g.root, 1);
    EXPECT_EQ((*vis_of(g.edge)->get_break_nodes())[1].get(), (*here)[1].get());
}

TEST(BreakNodes, KnowTheirEdgeAndNothingElse) {
    Arrow g;
    Bend(g.edge, g.root, 1);
    Node bend = g.edge.GetBreakNodes().GetItem(0);
    EXPECT_EQ(Ids(bend.GetEdgesIn()), IdsOf(g.edge));
    EXPECT_EQ(Ids(bend.GetEdgesOut()), IdsOf(g.edge));
    EXPECT_EQ(bend.record()->get_edges_in().get(), bend.record()->get_edges_out().get());
    EXPECT_EQ(bend.GetParents().GetCount(), 0);
    EXPECT_EQ(bend.GetChildren().GetCount(), 0);
    EXPECT_EQ(bend.GetOwned().GetCount(), 0);
    EXPECT_FALSE(bend.GetOwner());
    EXPECT_TRUE(bend.IsDummy());
}

TEST(BreakNodes, GiveAFreshSetOfOwnedNodesEachTime) {
    Arrow g;
    Bend(g.edge, g.root, 1);
    const auto bend = g.edge.GetBreakNodes().GetItem(0).record();
    const auto owned = bend->get_owned();
    EXPECT_NE(bend->get_owned().get(), owned.get());
    EXPECT_NE(bend->get_parents().get(), bend->get_children().get());
}

TEST(BreakNodes, IgnoreCaptionTagOwnerAndRemoval) {
    Arrow g;
    const auto ids = Bend(g.edge, g.root, 1);
    const auto bend = g.edge.GetBreakNodes().GetItem(0).record();
    bend->set_caption("bend");
    bend->set_tag(4);
    bend->set_owner(g.a.record());
    bend->remove();
    EXPECT_EQ(bend->get_caption(), "");
    EXPECT_EQ(bend->get_tag(), 0);
    EXPECT_FALSE(bend->get_owner());
    EXPECT_FALSE(bend->add_node());
    EXPECT_FALSE(bend->link_to(g.a.record()));
    EXPECT_EQ(g.a.GetOwned().GetCount(), 0);
    EXPECT_EQ(Ids(g.edge.GetBreakNodes()), ids);
}

TEST(BreakNodes, KeepTheirPositionAfterTheirEdgeWasRoutedAnew) {
    Arrow g;
    Bend(g.edge, g.root, 1);
    Node bend = g.edge.GetBreakNodes().GetItem(0);
    bend.SetPosition(7, 8);
    g.edge.RemoveBreakNodes();
    EXPECT_EQ(bend.GetPosition(), (point<double>{7, 8}));
    bend.SetPosition(9, 9);
    EXPECT_EQ(bend.GetPosition(), (point<double>{9, 9}));
    EXPECT_EQ(Ids(bend.GetEdgesOut()), IdsOf(g.edge));
}

TEST(Stretches, AddingNoneMakesNoEntryAndKeepsTheRoute) {
    Arrow g;
    Bend(g.edge, g.root, 2);
    const auto route = vis_of(g.edge)->get_break_nodes();
    vis_of(g.edge)->add_break_nodes_in(0, 0);
    vis_of(g.edge)->add_break_nodes_in(0, -3);
    EXPECT_EQ(vis_of(g.edge)->get_break_nodes().get(), route.get());
    EXPECT_EQ(route->GetCount(), 2);
}

TEST(Stretches, AskingAnUnknownOwnerGivesALiveEmptySetAndKeepsTheRoute) {
    Arrow g;
    const auto ids = Bend(g.edge, g.root, 2);
    const auto route = vis_of(g.edge)->get_break_nodes();
    const NodeSet stretch = g.edge.GetBreakNodesIn(g.a);
    EXPECT_EQ(stretch.GetCount(), 0);
    EXPECT_EQ(vis_of(g.edge)->get_break_nodes().get(), route.get());
    EXPECT_EQ(Ids(route), ids);
    g.edge.AddBreakNodesIn(g.a, 1);
    EXPECT_EQ(stretch.GetCount(), 1);
}

TEST(Stretches, RemovalOfOneLeavesTheOthers) {
    TwoBoxes g;
    const auto in_a = Bend(g.edge, g.a, 1);
    Bend(g.edge, g.root, 2);
    const auto in_b = Bend(g.edge, g.b, 1);
    g.edge.RemoveBreakNodesIn(g.root);
    EXPECT_EQ(g.edge.GetBreakNodesIn(g.root).GetCount(), 0);
    EXPECT_EQ(Ids(g.edge.GetBreakNodes()), Joined(in_a, in_b));
}

TEST(Stretches, RemovalOfAllLeavesNone) {
    TwoBoxes g;
    Bend(g.edge, g.a, 1);
    Bend(g.edge, g.root, 2);
    g.edge.RemoveBreakNodes();
    EXPECT_EQ(g.edge.GetBreakNodes().GetCount(), 0);
    EXPECT_EQ(g.edge.GetBreakNodesIn(g.a).GetCount(), 0);
}

TEST(Stretches, RemovalOfAnUnknownOneForgetsTheRouteAllTheSame) {
    Arrow g;
    Bend(g.edge, g.root, 1);
    const auto route = vis_of(g.edge)->get_break_nodes();
    g.edge.RemoveBreakNodesIn(g.a);
    EXPECT_NE(vis_of(g.edge)->get_break_nodes().get(), route.get());
    EXPECT_EQ(Ids(vis_of(g.edge)->get_break_nodes()), Ids(route));
}

TEST(Stretches, RemovedOneStartsOver) {
    Arrow g;
    Bend(g.edge, g.root, 2);
    const NodeSet old = g.edge.GetBreakNodesIn(g.root);
    g.edge.RemoveBreakNodesIn(g.root);
    const auto ids = Bend(g.edge, g.root, 1);
    EXPECT_EQ(Ids(g.edge.GetBreakNodesIn(g.root)), ids);
    EXPECT_EQ(old.GetCount(), 2);
}

TEST(Route, OfNodesWithOneOwnerIsItsStretch) {
    Arrow g;
    const auto ids = Bend(g.edge, g.root, 3);
    EXPECT_EQ(Ids(g.edge.GetBreakNodes()), ids);
}

TEST(Route, OfAnEdgeWithoutBendsIsEmpty) {
    Arrow g;
    EXPECT_EQ(g.edge.GetBreakNodes().GetCount(), 0);
}

TEST(Route, GoesUpFromTheSourceAndDownToTheTarget) {
    Courts g;
    Edge edge = g.x.LinkTo(g.z);
    const auto in_d = Bend(edge, g.d, 1);
    const auto in_root = Bend(edge, g.root, 2);
    const auto in_c = Bend(edge, g.c, 1);
    const auto in_a = Bend(edge, g.a, 2);
    EXPECT_EQ(Ids(edge.GetBreakNodes()), Joined(Joined(in_a, in_c), Joined(in_root, in_d)));
}

TEST(Route, GoesDownThroughTheOwnersOfTheTargetOutermostFirst) {
    Courts g;
    Edge edge = g.z.LinkTo(g.x);
    const auto in_a = Bend(edge, g.a, 1);
    const auto in_c = Bend(edge, g.c, 1);
    EXPECT_EQ(Ids(edge.GetBreakNodes()), Joined(in_c, in_a));
    const auto in_root = Bend(edge, g.root, 1);
    EXPECT_EQ(Ids(edge.GetBreakNodes()), Joined(in_root, Joined(in_c, in_a)));
}

// Only the highest owner is left out on the way down, so bends in two common owners count twice
// in the lower one.
TEST(Route, PassesTwiceThroughALowerOwnerThatBothEndsShare) {
    Courts g;
    const auto in_c = Bend(g.x_to_b, g.c, 1);
    const auto in_root = Bend(g.x_to_b, g.root, 1);
    EXPECT_EQ(Ids(g.x_to_b.GetBreakNodes()), Joined(in_c, Joined(in_root, in_c)));
}

TEST(Route, PassesTwiceAlsoWhereTheUpperOwnerWasOnlyAskedForItsBends) {
    Courts g;
    const auto in_c = Bend(g.x_to_b, g.c, 1);
    EXPECT_EQ(g.x_to_b.GetBreakNodesIn(g.root).GetCount(), 0);
    g.x_to_b.RemoveBreakNodesIn(g.d);
    EXPECT_EQ(Ids(g.x_to_b.GetBreakNodes()), Joined(in_c, in_c));
    g.x_to_b.RemoveBreakNodesIn(g.root);
    EXPECT_EQ(Ids(g.x_to_b.GetBreakNodes()), in_c);
}

TEST(Route, GoesThroughEveryOwnerOfTheTargetWhereTheSourceHasNone) {
    Courts g;
    Edge edge = g.z.LinkTo(g.x);
    EXPECT_EQ(edge.GetBreakNodesIn(g.d).GetCount(), 0);
    const auto in_c = Bend(edge, g.c, 1);
    EXPECT_EQ(Ids(edge.GetBreakNodes()), in_c);
}

TEST(Route, IgnoresStretchesInOwnersThatHoldNeitherEnd) {
    Courts g;
    Bend(g.x_to_b, g.d, 2);
    EXPECT_EQ(g.x_to_b.GetBreakNodes().GetCount(), 0);
    const auto in_c = Bend(g.x_to_b, g.c, 1);
    EXPECT_EQ(Ids(g.x_to_b.GetBreakNodes()), in_c);
}

TEST(Route, IsComputedOnce) {
    Arrow g;
    Bend(g.edge, g.root, 2);
    const auto route = vis_of(g.edge)->get_break_nodes();
    EXPECT_EQ(vis_of(g.edge)->get_break_nodes().get(), route.get());
    g.edge.AddBreakNodesIn(g.root, 1);
    EXPECT_EQ(route->GetCount(), 2);
    EXPECT_EQ(vis_of(g.edge)->get_break_nodes()->GetCount(), 3);
}

// Who owns an end is looked up when the route is computed, and not again.
TEST(Route, StaysAsItWasAfterAChangeOfOwner) {
    TwoBoxes g;
    const auto in_a = Bend(g.edge, g.a, 1);
    const auto in_root = Bend(g.edge, g.root, 2);
    ASSERT_EQ(Ids(g.edge.GetBreakNodes()), Joined(in_a, in_root));
    g.x.SetOwner(g.root);
    EXPECT_EQ(Ids(g.edge.GetBreakNodes()), Joined(in_a, in_root));
    g.edge.RemoveBreakNodesIn(g.b);
    EXPECT_EQ(Ids(g.edge.GetBreakNodes()), in_root);
}

TEST(Route, AsStretchesMatchesTheRouteAsNodes) {
    Courts g;
    Edge edge = g.x.LinkTo(g.z);
    for (const Node& owner : {g.a, g.c, g.root, g.d}) Bend(edge, owner, 2);
    std::vector<int> ids;
    for (const auto& chain : stock_vis_of(edge)->GetRoute()) {
        for (int i = 0; i < chain->GetCount(); ++i) ids.push_back(chain->GetIdAt(i));
    }
    EXPECT_EQ(ids, Ids(edge.GetBreakNodes()));
}

TEST(Route, OfARemovedEdgeIsEmpty) {
    Arrow g;
    Bend(g.edge, g.root, 2);
    g.edge.Remove();
    EXPECT_EQ(g.edge.GetBreakNodes().GetCount(), 0);
}

TEST(Chains, AreReplacedAsAWhole) {
    Arrow g;
    Bend(g.edge, g.root, 2);
    const Node old = g.edge.GetBreakNodes().GetItem(0);
    const int next = DummyNodeImpl::current_id;
    const auto chain = stock_vis_of(g.edge)->ReplaceChain(0, 3);
    chain->SetPositionAt(1, 4, 5);
    EXPECT_EQ(Ids(g.edge.GetBreakNodes()), (std::vector<int>{next, next - 1, next - 2}));
    EXPECT_EQ(g.edge.GetBreakNodes().GetItem(1).GetPosition(), (point<double>{4, 5}));
    EXPECT_EQ(old.GetPosition(), (point<double>{0, 0}));
}

TEST(Chains, AreShiftedAsAWhole) {
    Arrow g;
    Bend(g.edge, g.root, 2);
    BreakChain* chain = stock_vis_of(g.edge)->FindChain(0);
    ASSERT_NE(chain, nullptr);
    chain->SetPositionAt(1, 1, 1);
    chain->Shift({2, 3});
    EXPECT_EQ(chain->GetPositionAt(0), (point<double>{2, 3}));
    EXPECT_EQ(chain->GetPositionAt(1), (point<double>{3, 4}));
    chain->SetPositionAt(2, 9, 9);
    chain->SetPositionAt(-1, 9, 9);
    EXPECT_EQ(chain->GetCount(), 2);
}

TEST(Chains, AreFoundWithoutMakingAnything) {
    Courts g;
    DefaultEdgeVis* vis = stock_vis_of(g.x_to_b);
    const auto in_c = Bend(g.x_to_b, g.c, 1);
    EXPECT_EQ(vis->FindChain(0), nullptr);
    EXPECT_EQ(Ids(g.x_to_b.GetBreakNodes()), in_c);
    // Asking, however, leaves an owner behind that the route turns at.
    EXPECT_EQ(vis->AskChain(0), nullptr);
    g.x_to_b.RemoveBreakNodesIn(g.d);
    EXPECT_EQ(Ids(g.x_to_b.GetBreakNodes()), Joined(in_c, in_c));
    EXPECT_EQ(vis->AskChain(g.c.GetID()), vis->FindChain(g.c.GetID()));
}

}  // namespace
}  // namespace nodeline::test
