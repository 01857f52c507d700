#include <gtest/gtest.h>
#include <nodeline/ops/graph_ops.h>
#include <support/ids.h>
#include <support/named_graphs.h>

namespace nodeline::test {
namespace {

TEST(Neighbourhood, LiftsEdgesBetweenContentsToTheSiblings) {
    TwoBoxes g;
    EXPECT_EQ(Pairs(GetChildrenEx(g.a)), (IdPairs{PairOf(g.b, g.edge)}));
    EXPECT_EQ(Pairs(GetParentsEx(g.b)), (IdPairs{PairOf(g.a, g.edge)}));
    EXPECT_TRUE(Pairs(GetParentsEx(g.a)).empty());
    EXPECT_TRUE(Pairs(GetChildrenEx(g.b)).empty());
    EXPECT_TRUE(Pairs(GetEdgesOutEx(g.a)).empty());
    EXPECT_TRUE(Pairs(GetEdgesInEx(g.b)).empty());
}

TEST(Neighbourhood, ShowsEdgesThatLeaveTheOwnerWithTheRootOnce) {
    TwoBoxes g;
    EXPECT_EQ(Pairs(GetEdgesOutEx(g.x)), (IdPairs{PairOf(g.root, g.edge)}));
    EXPECT_EQ(Pairs(GetEdgesInEx(g.y)), (IdPairs{PairOf(g.root, g.edge)}));
    EXPECT_TRUE(Pairs(GetChildrenEx(g.x)).empty());
    EXPECT_TRUE(Pairs(GetParentsEx(g.y)).empty());
    EXPECT_TRUE(Pairs(GetEdgesInEx(g.x)).empty());
}

TEST(Neighbourhood, ShowsEdgesOfContentsThatLeaveTheOwner) {
    Courts g;
    const Edge far = g.x.LinkTo(g.z);
    EXPECT_EQ(Pairs(GetEdgesOutEx(g.a)), (IdPairs{PairOf(g.root, far)}));
    EXPECT_EQ(Pairs(GetChildrenEx(g.a)), (IdPairs{PairOf(g.b, g.x_to_b)}));
    EXPECT_EQ(Pairs(GetChildrenEx(g.c)), (IdPairs{PairOf(g.d, g.b_to_z), PairOf(g.d, far)}));
}

TEST(Neighbourhood, ShowsAnEdgeToAnOuterOwnerWithTheRoot) {
    Courts g;
    const Edge up = g.x.LinkTo(g.c);
    EXPECT_EQ(Pairs(GetEdgesOutEx(g.x)), (IdPairs{PairOf(g.root, g.x_to_b), PairOf(g.root, up)}));
}

TEST(Neighbourhood, ShowsAnEdgeToTheOwnerItselfTwice) {
    Courts g;
    const Edge up = g.x.LinkTo(g.c);
    const Edge down = g.c.LinkTo(g.x);
    EXPECT_EQ(Pairs(GetEdgesOutEx(g.a)), (IdPairs{PairOf(g.c, up), PairOf(g.c, up)}));
    EXPECT_EQ(Pairs(GetEdgesInEx(g.a)), (IdPairs{PairOf(g.c, down), PairOf(g.c, down)}));
}

TEST(Neighbourhood, ShowsASelfLoopOfTheNodeOnBothSides) {
    Arrow g;
    const Edge loop = g.a.LinkTo(g.a);
    EXPECT_EQ(Pairs(GetChildrenEx(g.a)), (IdPairs{PairOf(g.a, loop), PairOf(g.b, g.edge)}));
    EXPECT_EQ(Pairs(GetParentsEx(g.a)), (IdPairs{PairOf(g.a, loop)}));
}

TEST(Neighbourhood, LeavesOutWhatStaysWithinTheNode) {
    Stairs g;
    g.a.LinkTo(g.b);
    g.c.LinkTo(g.a);
    g.b.LinkTo(g.c);
    g.c.LinkTo(g.c);
    for (const auto collect : {GetChildrenEx, GetParentsEx, GetEdgesInEx, GetEdgesOutEx}) {
        EXPECT_TRUE(Pairs(collect(g.a)).empty());
    }
}

TEST(Neighbourhood, IsSortedByNodeThenByEdgeWithAPairForEachEdge) {
    Fork g;
    const Edge second_to_c = g.a.LinkTo(g.c);
    const Edge second_to_b = g.a.LinkTo(g.b);
    EXPECT_EQ(Pairs(GetChildrenEx(g.a)), (IdPairs{PairOf(g.b, g.to_b), PairOf(g.b, second_to_b),
                                                  PairOf(g.c, g.to_c), PairOf(g.c, second_to_c)}));
    EXPECT_EQ(CalcDegreeEx(GetChildrenEx(g.a)), 2);
}

TEST(Neighbourhood, OfTheRootAndOfBreakNodesIsEmpty) {
    Arrow g;
    g.edge.AddBreakNodesIn(g.root, 1);
    for (const Node& node : {g.root, g.edge.GetBreakNodes().GetItem(0)}) {
        for (const auto collect : {GetChildrenEx, GetParentsEx, GetEdgesInEx, GetEdgesOutEx}) {
            const auto set = collect(node);
            ASSERT_TRUE(set);
            EXPECT_EQ(set->GetCount(), 0);
        }
    }
}

TEST(Neighbourhood, IsAFreshSetThatItsHandleOwns) {
    Arrow g;
    const auto set = GetChildrenEx(g.a);
    EXPECT_TRUE(set.owns());
    EXPECT_EQ(set.GetRefCount(), 1);
    EXPECT_NE(GetChildrenEx(g.a).get(), set.get());
    const auto* sorted = dynamic_cast<GraphSet<NodeEdgePair>*>(set.get());
    ASSERT_NE(sorted, nullptr);
    EXPECT_TRUE(sorted->IsSorted());
}

// The far end is gone and has no owner: the edge leads nowhere.
TEST(Neighbourhood, LeavesOutEdgesWhoseFarEndWasRemoved) {
    Courts g;
    g.x.Remove();
    ASSERT_EQ(g.b.GetEdgesIn().GetCount(), 1);
    EXPECT_TRUE(Pairs(GetParentsEx(g.b)).empty());
    EXPECT_TRUE(Pairs(GetEdgesInEx(g.b)).empty());
}

TEST(Neighbourhood, LeavesOutEdgesToANodeThatOwnsItself) {
    Arrow g;
    g.b.SetOwner(g.b);
    EXPECT_TRUE(Pairs(GetChildrenEx(g.a)).empty());
    EXPECT_TRUE(Pairs(GetEdgesOutEx(g.a)).empty());
    g.b.SetOwner(g.root);
}

TEST(Neighbourhood, FollowsAChangeOfOwner) {
    TwoBoxes g;
    g.y.SetOwner(g.a);
    EXPECT_TRUE(Pairs(GetChildrenEx(g.a)).empty());
    EXPECT_EQ(Pairs(GetChildrenEx(g.x)), (IdPairs{PairOf(g.y, g.edge)}));
    EXPECT_TRUE(Pairs(GetEdgesOutEx(g.x)).empty());
}

TEST(CalcDegreeEx, CountsRunsOfEqualNodes) {
    Fork g;
    const graph_ptr2<GraphSet<NodeEdgePair>> set(new GraphSet<NodeEdgePair>, true);
    EXPECT_EQ(CalcDegreeEx(set), 0);
    set->Add({g.b, g.to_b});
    EXPECT_EQ(CalcDegreeEx(set), 1);
    set->Add({g.b, g.to_c});
    set->Add({g.c, g.to_c});
    EXPECT_EQ(CalcDegreeEx(set), 2);
    // It does not sort, so what is not sorted counts again.
    set->Add({g.b, g.to_b});
    EXPECT_EQ(CalcDegreeEx(set), 3);
    EXPECT_EQ(CalcDegreeEx(graph_ptr2<IGraphSet<NodeEdgePair>>()), 0);
}

}  // namespace
}  // namespace nodeline::test
