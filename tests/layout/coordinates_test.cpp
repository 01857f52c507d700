#include <gtest/gtest.h>
#include <nodeline/ops/graph_ops.h>
#include <support/layout_graphs.h>
#include <support/step_bench.h>

#include <cstddef>
#include <vector>

namespace nodeline::test {
namespace {

using Route = std::vector<point<double>>;

Route RouteOf(const Edge& edge) {
    Route route;
    for (const Node& bend : edge.GetBreakNodes()) route.push_back(bend.GetPosition());
    return route;
}

point<double> BendOf(const Edge& edge, int index) {
    return edge.GetBreakNodes().GetItem(index).GetPosition();
}

double BottomOf(const Node& node) { return node.GetPosition().y + node.GetSize().cy; }

TEST(Coordinates, ATableWithoutInnerLevelsIsAsWideAsAGap) {
    for (const std::size_t count : {0u, 1u, 2u}) {
        BoxArrow g;
        StepBench bench(g.root);
        bench.run.levels.resize(count);
        internal::calculate_x_coords(bench.run);
        EXPECT_EQ(bench.run.extent.cx, 30.0) << count;
        EXPECT_EQ(bench.run.extent.cy, 0.0) << count;
    }
}

TEST(Coordinates, ThePortsOfATableOfTwoBordersFaceEachOther) {
    Measured g;
    Node box = g.AddBox(0, 0);
    Node inside = Measured::AddBox(box, 40, 20);
    Node o = g.AddBox();
    const Edge into = o.LinkTo(inside);
    const Edge out = inside.LinkTo(o);
    StepBench bench(box);
    internal::determine_levels(bench.run);
    internal::place_nodes_on_levels(bench.run);
    auto& levels = bench.run.levels;
    ASSERT_EQ(levels.size(), 3u);
    levels.erase(levels.begin() + 1);
    bench.YOf(inside) = 50.0;
    internal::calculate_x_coords(bench.run);
    const NodeSet in_bends = into.GetBreakNodesIn(box);
    const NodeSet out_bends = out.GetBreakNodesIn(box);
    EXPECT_EQ(in_bends.GetItem(0).GetPosition(), (point<double>{0.0, 60.0}));
    EXPECT_EQ(out_bends.GetItem(2).GetPosition(), (point<double>{30.0, 60.0}));
}

TEST(Coordinates, OneNodeStandsInTheMiddleOfItsBand) {
    Measured g;
    const Node a = g.AddBox(100, 20);
    g.Make();
    EXPECT_EQ(a.GetPosition(), (point<double>{35.0, 12.0}));
    EXPECT_EQ(g.root.GetSize().cx, 170.0);
    EXPECT_EQ(g.root.GetSize().cy, 44.0);
}

TEST(Coordinates, AForwardEdgeHasTwoBendsAtEachEnd) {
    BoxArrow g;
    g.Make();
    EXPECT_EQ(g.b.GetPosition().x, 115.0);
    EXPECT_EQ(RouteOf(g.edge), (Route{{75.0, 22.0}, {80.0, 22.0}, {110.0, 22.0}, {115.0, 22.0}}));
}

// The hidden box leaves nothing on its level but the bends of the edge past it.
TEST(Coordinates, ALevelOfDummyNodesTakesNoWidth) {
    Measured g;
    Node a = g.AddBox(100, 20);
    Node h = g.AddBox();
    Node c = g.AddBox(60, 20);
    a.LinkTo(h);
    h.LinkTo(c);
    const Edge past = a.LinkTo(c);
    Hide(h);
    g.Make();
    EXPECT_EQ(a.GetPosition().x, 35.0);
    ASSERT_EQ(past.GetBreakNodes().GetCount(), 6);
    EXPECT_EQ(BendOf(past, 2).x, 170.0);
    EXPECT_EQ(BendOf(past, 3), BendOf(past, 2));
    EXPECT_EQ(BendOf(past, 4).x, 170.0);
    EXPECT_EQ(c.GetPosition().x, 175.0);
}

TEST(Coordinates, ADrawingThatBeginsAboveTheMarginMovesDown) {
    for (const bool above : {true, false}) {
        BoxArrow g;
        StepBench bench(g.root);
        internal::determine_levels(bench.run);
        internal::place_nodes_on_levels(bench.run);
        bench.YOf(g.a) = above ? 5.0 : 20.0;
        bench.YOf(g.b) = 30.0;
        internal::calculate_x_coords(bench.run);
        EXPECT_EQ(bench.YOf(g.a), above ? 12.0 : 20.0);
        EXPECT_EQ(bench.YOf(g.b), above ? 37.0 : 30.0);
        EXPECT_EQ(bench.run.extent.cy, above ? 69.0 : 62.0);
    }
}

TEST(Coordinates, ABandDoesNotShrinkInAnUpdate) {
    Measured g;
    Node a = g.AddBox(100, 20);
    Node b = g.AddBox(40, 20);
    a.LinkTo(b);
    g.Make();
    const double b_x = b.GetPosition().x;
    a.SetTag(SizeTag(500, 200));
    g.Update();
    EXPECT_EQ(a.GetSize().cx, 50.0);
    EXPECT_EQ(a.GetPosition().x, 60.0);
    EXPECT_EQ(b.GetPosition().x, b_x);
    // A resize fits the band anew.
    g.Resize();
    EXPECT_EQ(a.GetPosition().x, 35.0);
    EXPECT_EQ(b.GetPosition().x, b_x - 50.0);
}

TEST(Coordinates, ABandThatGrowsPushesTheNextOne) {
    Measured g;
    Node a = g.AddBox(100, 20);
    Node b = g.AddBox(40, 20);
    a.LinkTo(b);
    g.Make();
    a.SetTag(SizeTag(1500, 200));
    g.Update();
    EXPECT_EQ(a.GetPosition().x, 35.0);
    // The stored band of b begins too early now, and is as wide as what b needs: its end grows.
    EXPECT_EQ(b.GetPosition().x, 225.0);
}

// Bands of an update, by what was stored: wide enough or not, beginning late enough or not.
TEST(Coordinates, AStoredBandIsKeptWhereItFits) {
    struct Case {
        internal::Level stored;
        double start;
        double end;
    };
    const std::vector<Case> cases{{{40.0, 110.0, 70.0}, 40.0, 110.0},
                                  {{10.0, 100.0, 90.0}, 30.0, 100.0},
                                  {{10.0, 60.0, 50.0}, 30.0, 80.0},
                                  {{60.0, 90.0, 30.0}, 30.0, 90.0}};
    for (const Case& band : cases) {
        Measured g;
        const Node a = g.AddBox(40, 20);
        StepBench bench(g.root);
        internal::determine_levels(bench.run);
        internal::place_nodes_on_levels(bench.run);
        bench.run.extent_at(1) = band.stored;
        internal::calculate_x_coords(bench.run);
        EXPECT_EQ(bench.run.extent_at(1).start, band.start);
        EXPECT_EQ(bench.run.extent_at(1).end, band.end);
        EXPECT_EQ(bench.run.extent_at(1).width, band.end - band.start);
        EXPECT_EQ(internal::at(bench.run.x, bench.At(a)), (band.start + band.end - 40.0) * 0.5);
    }
}

TEST(Coordinates, ReversedEdgesOfANodeRunOneBelowTheOther) {
    Row g;
    g.a.LinkTo(g.c);
    Edge to_a = g.d.LinkTo(g.a);
    to_a.SetTag(8);
    const Edge to_b = g.d.LinkTo(g.b);
    g.Make();
    const double d_bottom = BottomOf(g.d);
    EXPECT_EQ(BendOf(to_a, 2).y, d_bottom + 2.0);
    EXPECT_EQ(BendOf(to_a, 3).y, d_bottom + 2.0);
    EXPECT_EQ(BendOf(to_b, 2).y, d_bottom + 2.0 + 3.0 + 2.0);
    const point<double> d = g.d.GetPosition();
    EXPECT_EQ(BendOf(to_a, 0), (point<double>{d.x + 40.0, d.y + 10.0}));
    EXPECT_EQ(BendOf(to_a, 1), (point<double>{d.x + 45.0, d.y + 10.0}));
    EXPECT_EQ(BendOf(to_a, 2).x, d.x + 45.0);
    EXPECT_EQ(BendOf(to_a, 3).x, d.x - 5.0);
}

TEST(Coordinates, AReversedEdgeComesInBelowItsTarget) {
    Ring g;
    g.Make();
    const Route route = RouteOf(g.back);
    ASSERT_EQ(route.size(), 12u);
    const point<double> a = g.a.GetPosition();
    const double run = a.y + 20.0 + 2.0;
    EXPECT_EQ(route[8], (point<double>{a.x + 45.0, run}));
    EXPECT_EQ(route[9], (point<double>{a.x - 5.0, run}));
    EXPECT_EQ(route[10], (point<double>{a.x - 5.0, a.y + 10.0}));
    EXPECT_EQ(route[11], (point<double>{a.x, a.y + 10.0}));
    // Through the levels between from right to left, level by level.
    EXPECT_GT(route[4].x, route[5].x);
    EXPECT_EQ(route[4].y, route[5].y);
    EXPECT_GT(route[5].x, route[6].x);
    EXPECT_GT(route[6].x, route[7].x);
}

TEST(Coordinates, ALoopRunsBelowItsNodeAndArrivesLikeAForwardEdge) {
    Measured g;
    Node a = g.AddBox(100, 20);
    const Edge loop = a.LinkTo(a);
    g.Make();
    EXPECT_EQ(RouteOf(loop), (Route{{135.0, 22.0},
                                    {140.0, 22.0},
                                    {140.0, 34.0},
                                    {30.0, 34.0},
                                    {30.0, 22.0},
                                    {35.0, 22.0}}));
    EXPECT_EQ(g.root.GetSize().cy, 32.0 + 2.0 + 1.0 + 12.0);
}

TEST(Coordinates, AnEdgeToAHiddenNodeIsNotRouted) {
    BoxArrow g;
    Hide(g.b);
    g.Make();
    EXPECT_EQ(g.edge.GetBreakNodes().GetCount(), 0);
    Show(g.b);
    g.Update();
    ASSERT_EQ(g.edge.GetBreakNodes().GetCount(), 4);
    const Route route = RouteOf(g.edge);
    Hide(g.b);
    g.a.SetTag(SizeTag(400, 600));
    g.Update();
    EXPECT_EQ(RouteOf(g.edge)[0].y, route[0].y);
    EXPECT_EQ(g.a.GetSize().cy, 60.0);
}

TEST(Coordinates, AnEdgeMeetsAnOpenNodeAtTheHeightOfItsPort) {
    Box g;
    Measured::AddBox(g.box, 40, 70);
    g.Make();
    const Edge out = g.out;
    const NodeSet inside = out.GetBreakNodesIn(g.box);
    const NodeSet outside = out.GetBreakNodesIn(g.root);
    const point<double> port = inside.GetItem(inside.GetCount() - 1).GetPosition();
    const double right = g.box.GetPosition().x + g.box.GetSize().cx;
    EXPECT_EQ(port.x, right);
    EXPECT_EQ(outside.GetItem(0).GetPosition(), port);
    EXPECT_NE(port.y, g.box.GetPosition().y + 0.5 * g.box.GetSize().cy);
    const NodeSet before = g.into.GetBreakNodesIn(g.root);
    const NodeSet within = g.into.GetBreakNodesIn(g.box);
    EXPECT_EQ(within.GetItem(0).GetPosition().x, g.box.GetPosition().x);
    EXPECT_EQ(before.GetItem(before.GetCount() - 1).GetPosition().y,
              within.GetItem(0).GetPosition().y);
}

// A dummy node whose level no other bend of its chain shares stands alone, at the left edge.
TEST(Coordinates, ADummyNodeWithoutAPartnerStandsAtTheLeftEdge) {
    RowWithShortcut g;
    StepBench bench(g.root);
    internal::determine_levels(bench.run);
    internal::place_nodes_on_levels(bench.run);
    bench.run.break_info(bench.At(g.far), 3).level = -1;
    internal::calculate_x_coords(bench.run);
    const NodeSet bends = g.far.GetBreakNodesIn(g.root);
    EXPECT_EQ(bends.GetItem(2).GetPosition().x, bench.run.extent_at(2).start);
    EXPECT_EQ(bends.GetItem(3).GetPosition().x, 0.0);
    EXPECT_EQ(bends.GetItem(4).GetPosition().x, bench.run.extent_at(3).start);
    EXPECT_EQ(bends.GetItem(5).GetPosition().x, bench.run.extent_at(3).end);
}

TEST(Coordinates, APortWithoutANeighbourStaysWhereItIs) {
    Box g;
    StepBench bench(g.box);
    internal::determine_levels(bench.run);
    internal::place_nodes_on_levels(bench.run);
    bench.run.set_shape(bench.At(g.into), internal::LinkShape());
    internal::calculate_x_coords(bench.run);
    EXPECT_EQ(g.into.GetBreakNodesIn(g.box).GetItem(0).GetPosition(), (point<double>{0.0, 0.0}));
    EXPECT_GT(g.out.GetBreakNodesIn(g.box).GetItem(2).GetPosition().x, 0.0);
}

}  // namespace
}  // namespace nodeline::test
