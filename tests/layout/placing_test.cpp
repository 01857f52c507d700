#include <gtest/gtest.h>
#include <support/layout_graphs.h>
#include <support/step_bench.h>

#include <vector>

namespace nodeline::test {
namespace {

using internal::ORDER_IN;
using internal::ORDER_OUT;
using Vertices = std::vector<internal::Vertex>;

struct Placed : StepBench {
    explicit Placed(const Node& owner) : StepBench(owner) {
        internal::determine_levels(run);
        internal::place_nodes_on_levels(run);
    }
    std::vector<internal::Vertex> Level(int k) { return run.level_at(k); }
    std::size_t Height() const { return run.levels.size(); }
};

TEST(Placing, TwoNodesStandBetweenTwoEmptyBorders) {
    const BoxArrow g;
    Placed placed(g.root);
    ASSERT_EQ(placed.Height(), 4u);
    EXPECT_EQ(placed.Level(0), Vertices());
    EXPECT_EQ(placed.Level(1), placed.Places({g.a}));
    EXPECT_EQ(placed.Level(2), placed.Places({g.b}));
    EXPECT_EQ(placed.Level(3), Vertices());
    EXPECT_EQ(placed.Bends(g.edge), 4);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(placed.Bend(g.edge, i), internal::kNoVertex);
        EXPECT_EQ(placed.BendLevel(g.edge, i), -1);
    }
    EXPECT_EQ(placed.Neighbours(ORDER_OUT, placed.At(g.a)), placed.Places({g.b}));
    EXPECT_EQ(placed.Neighbours(ORDER_IN, placed.At(g.b)), placed.Places({g.a}));
}

TEST(Placing, AForwardEdgeOverThreeLevelsHasTwoDummyNodes) {
    const RowWithShortcut g;
    Placed placed(g.root);
    EXPECT_EQ(placed.Bends(g.far), 8);
    EXPECT_EQ(placed.Shelf(placed.Bend(g.far, 2)), 2);
    EXPECT_EQ(placed.Shelf(placed.Bend(g.far, 4)), 3);
    for (const int i : {0, 1, 3, 5, 6, 7}) {
        EXPECT_EQ(placed.Bend(g.far, i), internal::kNoVertex) << i;
    }
    EXPECT_EQ(placed.BendLevel(g.far, 3), 2);
    EXPECT_EQ(placed.BendLevel(g.far, 5), 3);
    EXPECT_EQ(placed.BendLevel(g.far, 1), -1);
    EXPECT_EQ(placed.Neighbours(ORDER_IN, placed.At(g.d)),
              (Vertices{placed.Bend(g.far, 4), placed.At(g.c)}));
    EXPECT_EQ(placed.Lanes(g.a), 0);
}

TEST(Placing, AReversedEdgeIsLinkedFromItsTargetToItsSource) {
    const Ring g;
    Placed placed(g.root);
    EXPECT_EQ(placed.Bends(g.back), 12);
    const auto early = placed.Bend(g.back, 4);
    const auto late = placed.Bend(g.back, 6);
    EXPECT_EQ(placed.Shelf(early), 3);
    EXPECT_EQ(placed.Shelf(late), 2);
    for (const int i : {0, 1, 2, 3, 5, 7, 8, 9, 10, 11}) {
        EXPECT_EQ(placed.Bend(g.back, i), internal::kNoVertex) << i;
    }
    EXPECT_EQ(placed.Neighbours(ORDER_IN, late), placed.Places({g.a}));
    EXPECT_EQ(placed.Neighbours(ORDER_OUT, late), Vertices{early});
    EXPECT_EQ(placed.Neighbours(ORDER_OUT, early), placed.Places({g.d}));
    EXPECT_EQ(placed.Lanes(g.a), 1);
    EXPECT_EQ(placed.Lanes(g.d), 1);
    EXPECT_EQ(placed.Lanes(g.b), 0);
}

TEST(Placing, AnEdgeToTheLevelBeforeHasEightBendsAndALaneAtEachEnd) {
    BoxArrow g;
    const Edge back = g.b.LinkTo(g.a);
    const Placed placed(g.root);
    EXPECT_EQ(placed.Bends(back), 8);
    EXPECT_EQ(placed.Lanes(g.a), 1);
    EXPECT_EQ(placed.Lanes(g.b), 1);
    EXPECT_EQ(placed.Neighbours(ORDER_OUT, placed.At(g.a)), placed.Places({g.b, g.b}));
}

TEST(Placing, ALoopHasOneLaneAndNoLinks) {
    Measured g;
    Node a = g.AddBox();
    const Edge loop = a.LinkTo(a);
    const Placed placed(g.root);
    EXPECT_EQ(placed.Bends(loop), 6);
    EXPECT_EQ(placed.Lanes(a), 1);
    EXPECT_TRUE(placed.run.segments.empty());
}

TEST(Placing, AFlatEdgeHasALaneAtEachEnd) {
    const BoxArrow g;
    StepBench bench(g.root);
    bench.run.infos[0].level = 1;
    bench.run.infos[1].level = 1;
    internal::mark_reversed_edges(bench.run, internal::all_nodes(bench.run), false);
    internal::place_nodes_on_levels(bench.run);
    EXPECT_EQ(bench.Bends(g.edge), 6);
    EXPECT_EQ(bench.Lanes(g.a), 1);
    EXPECT_EQ(bench.Lanes(g.b), 1);
    EXPECT_TRUE(bench.run.segments.empty());
    EXPECT_EQ(bench.run.level_at(1), bench.Places({g.a, g.b}));
}

TEST(Placing, AnEdgeFromOutsideRunsInFromTheLeftBorder) {
    const Box g;
    Placed placed(g.box);
    EXPECT_EQ(placed.Bends(g.into), 7);
    EXPECT_EQ(placed.Shelf(placed.Bend(g.into, 0)), 0);
    EXPECT_EQ(placed.Shelf(placed.Bend(g.into, 2)), 1);
    EXPECT_EQ(placed.Shelf(placed.Bend(g.into, 4)), 2);
    for (const int i : {1, 3, 5, 6}) EXPECT_EQ(placed.Bend(g.into, i), internal::kNoVertex) << i;
    EXPECT_EQ(placed.BendLevel(g.into, 1), 1);
    EXPECT_EQ(placed.BendLevel(g.into, 5), -1);
    const Vertices before = placed.Neighbours(ORDER_IN, placed.At(g.r));
    EXPECT_EQ(before, (Vertices{placed.At(g.q), placed.Bend(g.into, 4)}));
}

TEST(Placing, AnEdgeToOutsideRunsOutToTheRightBorder) {
    Box g;
    const Edge early = g.p.LinkTo(g.z);
    Placed placed(g.box);
    ASSERT_EQ(placed.Height(), 5u);
    EXPECT_EQ(placed.Bends(g.out), 3);
    EXPECT_EQ(placed.Shelf(placed.Bend(g.out, 2)), 4);
    EXPECT_EQ(placed.Bends(early), 7);
    EXPECT_EQ(placed.Shelf(placed.Bend(early, 2)), 2);
    EXPECT_EQ(placed.Shelf(placed.Bend(early, 4)), 3);
    EXPECT_EQ(placed.Shelf(placed.Bend(early, 6)), 4);
    EXPECT_EQ(placed.BendLevel(early, 5), 3);
    EXPECT_EQ(placed.BendLevel(early, 1), -1);
}

// The chain is made twice, and what the first one left on the levels stays there.
TEST(Placing, AnEdgeToTheOwnerItselfIsGivenTwoChains) {
    Measured g;
    Node box = g.AddBox(0, 0);
    Node inside = Measured::AddBox(box, 40, 20);
    const Edge up = inside.LinkTo(box);
    Placed placed(box);
    EXPECT_EQ(placed.Bends(up), 3);
    EXPECT_EQ(placed.Level(2).size(), 2u);
    EXPECT_FALSE(placed.run.in_any_order);
    g.Make();
    EXPECT_EQ(up.GetBreakNodesIn(box).GetCount(), 3);
}

TEST(Placing, ALevelKeepsTheOrderOfTheNodesWithTheirChainsBehindThem) {
    Measured g;
    Node a = g.AddBox();
    Node b = g.AddBox();
    Node c = g.AddBox();
    Node d = g.AddBox();
    a.LinkTo(b);
    b.LinkTo(c);
    const Edge far = a.LinkTo(c);
    a.LinkTo(d);
    Placed placed(g.root);
    EXPECT_EQ(placed.Level(2), (Vertices{placed.Bend(far, 2), placed.At(b), placed.At(d)}));
}

TEST(Placing, ANewParentOfALevelOneNodeMovesTheDrawingUpByALevel) {
    BoxArrow g;
    g.Make();
    const double a_x = g.a.GetPosition().x;
    const double b_x = g.b.GetPosition().x;
    Node n = g.AddBox();
    const Edge edge = n.LinkTo(g.a);
    g.Update();
    EXPECT_EQ(n.GetPosition().x, a_x);
    EXPECT_EQ(g.a.GetPosition().x, b_x);
    EXPECT_EQ(g.b.GetPosition().x, b_x + (b_x - a_x));
    EXPECT_EQ(edge.GetBreakNodes().GetCount(), 4);
    EXPECT_EQ(g.a.GetPosition().y, 12.0);
}

}  // namespace
}  // namespace nodeline::test
