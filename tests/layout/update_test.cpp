#include <gtest/gtest.h>
#include <nodeline/ops/graph_ops.h>
#include <support/layout_graphs.h>
#include <support/step_bench.h>

#include <memory>
#include <utility>
#include <vector>

namespace nodeline::test {
namespace {

// What a finished make leaves, and the run of an update after it, step by step.
class UpdateBench {
public:
    explicit UpdateBench(const Node& owner) : owner_(owner), made_(owner) {
        internal::determine_levels(made_.run);
        internal::place_nodes_on_levels(made_.run);
        internal::barycentric_adjust(made_.run);
        internal::calculate_initial_y_coords(made_.run);
        internal::force_adjust(made_.run);
        internal::calculate_x_coords(made_.run);
        internal::make_epilogue(made_.run);
        store_ = made_.run.finish();
    }
    // A run over what the graph is now.
    void Begin() {
        extents_ = store_.level_extents;
        run = std::make_unique<internal::LayoutRun>(internal::LayoutSettings(), owner_,
                                                    std::move(store_), local_);
        run->level_extents = extents_;
        run->load_positions();
    }
    internal::Vertex At(const Node& node) const {
        for (internal::Vertex v = 0; v < run->node_count(); ++v) {
            if (run->id_of(v) == node.GetID()) return v;
        }
        return internal::kNoVertex;
    }
    int LevelOf(const Node& node) const { return run->level_of(At(node)); }
    double YOf(const Node& node) const { return internal::at(run->y, At(node)); }
    void FindLevels() {
        internal::restore_old_levels(*run);
        internal::make_y_shifts(*run);
        internal::determine_new_nodes_levels(*run);
    }

    std::unique_ptr<internal::LayoutRun> run;

private:
    Node owner_;
    StepBench made_;
    internal::OwnerStore store_;
    internal::LocalInfos local_;
    std::vector<internal::Level> extents_;
};

TEST(LayoutUpdate, WithoutAChangeNothingMoves) {
    Ring g;
    Node e = g.AddBox();
    Node f = g.AddBox(10, 70);
    g.a.LinkTo(e);
    e.LinkTo(g.d);
    f.LinkTo(g.c);
    g.Make();
    const std::vector<Node> all{g.a, g.b, g.c, g.d, e, f};
    std::vector<point<double>> places;
    for (const Node& n : all) places.push_back(n.GetPosition());
    for (const Node& n : g.back.GetBreakNodes()) places.push_back(n.GetPosition());
    const auto size = g.root.GetSize();
    for (int round = 0; round < 3; ++round) {
        g.Update();
        std::vector<point<double>> now;
        for (const Node& n : all) now.push_back(n.GetPosition());
        for (const Node& n : g.back.GetBreakNodes()) now.push_back(n.GetPosition());
        EXPECT_EQ(now, places);
        EXPECT_EQ(g.root.GetSize().cx, size.cx);
        EXPECT_EQ(g.root.GetSize().cy, size.cy);
    }
}

TEST(LayoutUpdate, TheOldTableComesBackInItsOrder) {
    RowWithShortcut g;
    UpdateBench bench(g.root);
    bench.Begin();
    internal::restore_old_levels(*bench.run);
    auto& levels = bench.run->levels;
    ASSERT_EQ(levels.size(), 6u);
    EXPECT_TRUE(levels[0].empty());
    EXPECT_EQ(levels[1], std::vector<internal::Vertex>{bench.At(g.a)});
    ASSERT_EQ(levels[2].size(), 2u);
    ASSERT_EQ(levels[3].size(), 2u);
    EXPECT_EQ(levels[4], std::vector<internal::Vertex>{bench.At(g.d)});
    EXPECT_TRUE(levels[5].empty());
    // The table is closed by a level of its own, and the extents get one more than it has.
    EXPECT_EQ(bench.run->level_extents.size(), 7u);
    const auto dummies = static_cast<int>(bench.run->is_dummy(levels[2][0])) +
                         static_cast<int>(bench.run->is_dummy(levels[2][1]));
    EXPECT_EQ(dummies, 1);
}

//   [a] ---> [b1]
//     '----> [b2]
//     '----> [b3]
TEST(LayoutUpdate, WhatLiesBelowAGrownNodeMovesByTheOverlap) {
    Fan g;
    g.Make();
    const double a = g.a.GetPosition().y;
    const double b1 = g.b1.GetPosition().y;
    const double b2 = g.b2.GetPosition().y;
    const double b3 = g.b3.GetPosition().y;
    ASSERT_EQ(b3, b2 + 32.0);
    g.b2.SetTag(SizeTag(400, 600));
    g.Update();
    // Of the gap of 12, a gap of 1 is kept.
    EXPECT_EQ(g.b1.GetPosition().y, b1);
    EXPECT_EQ(g.b2.GetPosition().y, b2);
    EXPECT_EQ(g.b3.GetPosition().y, b3 + 29.0);
    EXPECT_EQ(g.a.GetPosition().y, a);
    // The same again, now with nothing left to open.
    g.Update();
    EXPECT_EQ(g.b3.GetPosition().y, b3 + 29.0);
}

TEST(LayoutUpdate, ShiftsHoldForAllLevelsAlike) {
    Fan g;
    g.Make();
    Node low = g.AddBox();
    low.LinkTo(g.b3);
    g.Update();
    const double before = low.GetPosition().y;
    const double b3 = g.b3.GetPosition().y;
    ASSERT_GT(before + 10.0, b3);
    g.b2.SetTag(SizeTag(400, 600));
    g.Resize();
    EXPECT_EQ(g.b3.GetPosition().y, b3 + 29.0);
    EXPECT_EQ(low.GetPosition().y, before + 29.0);
}

TEST(LayoutUpdate, ANodeBelowTwoOverlapsMovesByTheirSum) {
    Rungs g(3);
    UpdateBench bench(g.root);
    bench.Begin();
    internal::restore_old_levels(*bench.run);
    auto& y = bench.run->y;
    for (int i = 0; i < 3; ++i) {
        const auto k = static_cast<std::size_t>(i);
        internal::at(y, bench.At(g.a[k])) = 100.0 * i;
        internal::at(y, bench.At(g.b[k])) = 100.0 * i;
    }
    // On level 1 the first reaches 5 into the second, on level 2 the second 7 into the third.
    internal::at(bench.run->sizes, bench.At(g.a[0])).cy = 104.0;
    internal::at(bench.run->sizes, bench.At(g.b[1])).cy = 106.0;
    internal::make_y_shifts(*bench.run);
    EXPECT_EQ(bench.YOf(g.a[0]), 0.0);
    EXPECT_EQ(bench.YOf(g.a[1]), 105.0);
    EXPECT_EQ(bench.YOf(g.a[2]), 212.0);
    EXPECT_EQ(bench.YOf(g.b[0]), 0.0);
    EXPECT_EQ(bench.YOf(g.b[1]), 105.0);
    EXPECT_EQ(bench.YOf(g.b[2]), 212.0);
}

TEST(LayoutUpdate, OfTwoOverlapsAtOneHeightTheLargerCounts) {
    Rungs g(2);
    UpdateBench bench(g.root);
    bench.Begin();
    internal::restore_old_levels(*bench.run);
    for (const Node& n : {g.a[0], g.b[0]}) internal::at(bench.run->y, bench.At(n)) = 0.0;
    for (const Node& n : {g.a[1], g.b[1]}) internal::at(bench.run->y, bench.At(n)) = 50.0;
    internal::at(bench.run->sizes, bench.At(g.a[0])).cy = 54.0;
    internal::at(bench.run->sizes, bench.At(g.b[0])).cy = 58.0;
    internal::make_y_shifts(*bench.run);
    EXPECT_EQ(bench.YOf(g.a[1]), 59.0);
    EXPECT_EQ(bench.YOf(g.b[1]), 59.0);
}

TEST(LayoutUpdate, ANewChildStandsBehindItsParent) {
    Row g;
    UpdateBench bench(g.root);
    const Node n = g.AddBox();
    g.c.LinkTo(n);
    bench.Begin();
    bench.FindLevels();
    EXPECT_EQ(bench.LevelOf(n), 4);
    EXPECT_EQ(bench.LevelOf(g.d), 4);
}

TEST(LayoutUpdate, ANewParentOfTheFirstNodeWantsLevelZero) {
    Row g;
    UpdateBench bench(g.root);
    Node n = g.AddBox();
    n.LinkTo(g.a);
    bench.Begin();
    bench.FindLevels();
    EXPECT_EQ(bench.LevelOf(n), 0);
    internal::place_nodes_on_levels(*bench.run);
    EXPECT_EQ(bench.LevelOf(n), 1);
    EXPECT_EQ(bench.LevelOf(g.a), 2);
    EXPECT_EQ(bench.LevelOf(g.d), 5);
}

TEST(LayoutUpdate, OfLevelsWithEqualPenaltiesTheLowestWins) {
    Row g;
    UpdateBench bench(g.root);
    Node n = g.AddBox();
    const Edge from_parent = g.b.LinkTo(n);
    const Edge to_child = n.LinkTo(g.c);
    bench.Begin();
    bench.FindLevels();
    EXPECT_EQ(bench.LevelOf(n), 2);
    internal::place_nodes_on_levels(*bench.run);
    EXPECT_EQ(from_parent.GetBreakNodesIn(g.root).GetCount(), 6);
    EXPECT_EQ(to_child.GetBreakNodesIn(g.root).GetCount(), 4);
}

TEST(LayoutUpdate, ANodeBetweenALateParentAndAnEarlyChildTakesTheLowestLevel) {
    Row g;
    const Node e = g.AddBox();
    g.d.LinkTo(e);
    UpdateBench bench(g.root);
    Node n = g.AddBox();
    Node late = e;
    late.LinkTo(n);
    n.LinkTo(g.b);
    bench.Begin();
    ASSERT_EQ(internal::at(bench.run->old_infos, bench.At(e)).level, 5);
    bench.FindLevels();
    EXPECT_EQ(bench.LevelOf(n), 2);
}

// One parent on level 1 and two children on level 4: anything between is free of penalties.
TEST(LayoutUpdate, ANewNodeWithRoomStandsRightBehindItsParent) {
    Row g;
    UpdateBench bench(g.root);
    const Node n = g.AddBox();
    g.a.LinkTo(n);
    Node(n).LinkTo(g.d);
    bench.Begin();
    bench.FindLevels();
    EXPECT_EQ(bench.LevelOf(n), 2);
}

TEST(LayoutUpdate, NewNodesThatKnowOnlyNewOnesAreSettledFromTheirNeighbours) {
    Row g;
    UpdateBench bench(g.root);
    const Node far = g.AddBox();
    const Node middle = g.AddBox();
    const Node near = g.AddBox();
    Node(middle).LinkTo(far);
    Node(near).LinkTo(middle);
    g.d.LinkTo(near);
    bench.Begin();
    bench.FindLevels();
    EXPECT_EQ(bench.LevelOf(near), 5);
    EXPECT_EQ(bench.LevelOf(middle), 6);
    EXPECT_EQ(bench.LevelOf(far), 7);
}

TEST(LayoutUpdate, SettledLevelsAreNotBelowZero) {
    Row g;
    UpdateBench bench(g.root);
    Node first = g.AddBox();
    Node second = g.AddBox();
    Node third = g.AddBox();
    first.LinkTo(second);
    second.LinkTo(third);
    third.LinkTo(g.a);
    bench.Begin();
    bench.FindLevels();
    EXPECT_EQ(bench.LevelOf(third), 0);
    EXPECT_EQ(bench.LevelOf(second), 0);
    EXPECT_EQ(bench.LevelOf(first), 0);
}

TEST(LayoutUpdate, AComponentOfNewNodesIsLeveledLikeAGraph) {
    Row g;
    UpdateBench bench(g.root);
    Node first = g.AddBox();
    const Node second = g.AddBox();
    first.LinkTo(second);
    const Edge back = Node(second).LinkTo(first);
    bench.Begin();
    bench.FindLevels();
    EXPECT_EQ(bench.LevelOf(first), 1);
    EXPECT_EQ(bench.LevelOf(second), 2);
    EXPECT_EQ(bench.LevelOf(g.d), 4);
    internal::place_nodes_on_levels(*bench.run);
    EXPECT_EQ(back.GetBreakNodesIn(g.root).GetCount(), 8);
}

TEST(LayoutUpdate, ANodeThatIsShownAgainKeepsItsLevel) {
    Row g;
    g.Make();
    const double d_x = g.d.GetPosition().x;
    const double c_x = g.c.GetPosition().x;
    Hide(g.c);
    g.Update();
    EXPECT_EQ(g.cd.GetBreakNodes().GetCount(), 4);
    g.a.SetTag(SizeTag(400, 300));
    Show(g.c);
    g.Update();
    EXPECT_EQ(g.c.GetPosition().x, c_x);
    EXPECT_EQ(g.d.GetPosition().x, d_x);
    // New for y: level with b and d, its neighbours that stayed.
    EXPECT_EQ(g.c.GetPosition().y, g.b.GetPosition().y);
}

TEST(LayoutUpdate, AShownNodeGoesToTheGapNearestToItsNeighbours) {
    Fan g;
    Node tail = g.AddBox();
    g.b3.LinkTo(tail);
    Hide(g.b2);
    g.Make();
    const double b1 = g.b1.GetPosition().y;
    Show(g.b2);
    g.Update();
    // Between b1 and b3 there is no room for it; it goes above or below both, and these stay apart.
    EXPECT_EQ(g.b1.GetPosition().x, g.b2.GetPosition().x);
    EXPECT_EQ(g.b3.GetPosition().y - g.b1.GetPosition().y, 32.0);
    const double y = g.b2.GetPosition().y;
    EXPECT_TRUE(y <= g.b1.GetPosition().y - 32.0 || y >= g.b3.GetPosition().y + 32.0)
        << y << " beside " << b1;
}

// A hidden node alone was laid out: level 1 has no old node in the table.
TEST(LayoutUpdate, OnALevelWithoutOldNodesNewOnesStackFromTheTop) {
    Measured g;
    const Node hidden = g.AddBox();
    Hide(hidden);
    UpdateBench bench(g.root);
    const Node n = g.AddBox();
    const Node m = g.AddBox();
    bench.Begin();
    bench.FindLevels();
    internal::place_nodes_on_levels(*bench.run);
    internal::calculate_new_nodes_y_coords(*bench.run);
    EXPECT_EQ(bench.LevelOf(n), 1);
    EXPECT_EQ(bench.YOf(n), 6.0);
    EXPECT_EQ(bench.YOf(m), 38.0);
}

// Its only neighbour is new and behind it, so it wishes for 0 and stacks upwards from the old node.
TEST(LayoutUpdate, ANewNodeThatNothingOldPullsWishesForTheTop) {
    Measured g;
    const Node a = g.AddBox();
    UpdateBench bench(g.root);
    Node n = g.AddBox();
    const Node m = g.AddBox();
    n.LinkTo(m);
    bench.Begin();
    bench.FindLevels();
    internal::place_nodes_on_levels(*bench.run);
    internal::calculate_new_nodes_y_coords(*bench.run);
    EXPECT_EQ(bench.YOf(a), 12.0);
    EXPECT_EQ(bench.YOf(n), 12.0 - 6.0 - 6.0 - 20.0);
    // On the next level its child sees where it came to stand.
    EXPECT_EQ(bench.YOf(m), bench.YOf(n));
}

TEST(LayoutUpdate, ANewNodeFillsAGapThatIsLargeEnough) {
    Fan g;
    g.Make();
    g.b2.Remove();
    g.Update();
    const double b1 = g.b1.GetPosition().y;
    const double b3 = g.b3.GetPosition().y;
    ASSERT_EQ(b3 - b1, 64.0);
    // Height and spacing of the new node are just below the 44 minus 12 that are free.
    const Node small = g.AddBox(40, 19);
    g.a.LinkTo(small);
    g.Update();
    EXPECT_EQ(g.b1.GetPosition().y, b1);
    EXPECT_EQ(g.b3.GetPosition().y, b3);
    EXPECT_GE(small.GetPosition().y, b1 + 20.0 + 12.0);
    EXPECT_LE(small.GetPosition().y + 19.0 + 12.0, b3);
}

TEST(LayoutUpdate, ANodeThatWasOnlyResizedIsNewToTheNextUpdate) {
    BoxArrow g;
    g.Make();
    Node n = g.AddBox();
    const Edge edge = g.b.LinkTo(n);
    g.Resize();
    EXPECT_EQ(edge.GetBreakNodes().GetCount(), 0);
    EXPECT_EQ(n.GetPosition(), (point<double>{0.0, 0.0}));
    g.Update();
    EXPECT_EQ(edge.GetBreakNodes().GetCount(), 4);
    EXPECT_EQ(n.GetPosition().x, g.b.GetPosition().x + 80.0);
}

TEST(LayoutUpdate, AResizeKeepsLanesAndOrder) {
    Ring g;
    g.Make();
    const double height = g.root.GetSize().cy;
    g.Resize();
    EXPECT_EQ(g.root.GetSize().cy, height);
    EXPECT_EQ(g.back.GetBreakNodes().GetCount(), 12);
    g.b.SetTag(SizeTag(900, 200));
    g.Resize();
    EXPECT_EQ(g.c.GetPosition().x, g.b.GetPosition().x + 90.0 + 40.0);
    EXPECT_EQ(g.root.GetSize().cy, height);
}

// Nothing that was new is placed: the table is empty, and the step ends there.
TEST(LayoutUpdate, WithoutOldNodesTheTableIsEmpty) {
    BoxArrow g;
    StepBench bench(g.root);
    internal::restore_old_levels(bench.run);
    EXPECT_TRUE(bench.run.levels.empty());
    internal::make_y_shifts(bench.run);
    EXPECT_EQ(bench.YOf(g.a), 0.0);
}

}  // namespace
}  // namespace nodeline::test
