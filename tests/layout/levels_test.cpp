#include <gtest/gtest.h>
#include <nodeline/ops/graph_ops.h>
#include <support/layout_graphs.h>
#include <support/step_bench.h>

#include <vector>

namespace nodeline::test {
namespace {

struct Levels : StepBench {
    explicit Levels(const Measured& g) : StepBench(g.root) { internal::determine_levels(run); }
};

TEST(Levels, ASingleNodeHasLevelOneAndNumberZero) {
    Measured g;
    const Node a = g.AddBox();
    const Levels levels(g);
    EXPECT_EQ(levels.LevelOf(a), 1);
    EXPECT_EQ(levels.NumberOf(a), 0);
}

// A loop makes a node neither a source nor a sink of the first sweep: it comes behind the source.
//
//   [v]<) ---> [w] <--- [u]
TEST(Levels, ALoopCountsInTheFirstSweepOnly) {
    Measured g;
    Node v = g.AddBox();
    Node w = g.AddBox();
    Node u = g.AddBox();
    const Edge loop = v.LinkTo(v);
    v.LinkTo(w);
    u.LinkTo(w);
    const Levels levels(g);
    EXPECT_EQ(levels.NumberOf(u), 0);
    EXPECT_EQ(levels.NumberOf(v), 1);
    EXPECT_EQ(levels.NumberOf(w), 2);
    EXPECT_TRUE(levels.Way(loop).flat);
    EXPECT_FALSE(levels.Way(loop).reversed);
    EXPECT_EQ(levels.LevelOf(v), 1);
}

TEST(Levels, ANodeWithNothingButALoopIsNumberedBehindTheSweep) {
    Measured g;
    Node a = g.AddBox();
    const Edge loop = a.LinkTo(a);
    const Levels levels(g);
    EXPECT_EQ(levels.NumberOf(a), 0);
    EXPECT_EQ(levels.LevelOf(a), 1);
    EXPECT_TRUE(levels.Way(loop).flat);
}

TEST(Levels, OfTwoNodesInACycleTheFirstGoesAhead) {
    Measured g;
    Node a = g.AddBox();
    Node b = g.AddBox();
    const Edge back = b.LinkTo(a);
    const Edge forth = a.LinkTo(b);
    const Levels levels(g);
    EXPECT_EQ(levels.NumberOf(a), 0);
    EXPECT_EQ(levels.NumberOf(b), 1);
    EXPECT_TRUE(levels.Way(back).reversed);
    EXPECT_FALSE(levels.Way(forth).reversed);
    EXPECT_EQ(levels.LevelOf(a), 1);
    EXPECT_EQ(levels.LevelOf(b), 2);
}

// The doubled edge gives its source no surplus: the first node of the component goes ahead.
//
//   [c] ---> [a] ===> [b]
//    ^-----------------'
TEST(Levels, ParallelEdgesCountOnceAndHaveEachTheirDirection) {
    Measured g;
    Node c = g.AddBox();
    Node a = g.AddBox();
    Node b = g.AddBox();
    c.LinkTo(a);
    const Edge first = a.LinkTo(b);
    const Edge second = a.LinkTo(b);
    const Edge back = b.LinkTo(c);
    const Edge back_too = b.LinkTo(c);
    const Levels levels(g);
    EXPECT_EQ(levels.NumberOf(c), 0);
    EXPECT_FALSE(levels.Way(first).reversed);
    EXPECT_FALSE(levels.Way(second).reversed);
    EXPECT_TRUE(levels.Way(back).reversed);
    EXPECT_TRUE(levels.Way(back_too).reversed);
}

//   [a] ---> [b] ---> [c]      and back from c to a
//     '----------------^
TEST(Levels, ACycleIsCutAtTheNodeWithTheLargestSurplus) {
    Measured g;
    Node b = g.AddBox();
    Node c = g.AddBox();
    Node a = g.AddBox();
    a.LinkTo(b);
    b.LinkTo(c);
    const Edge back = c.LinkTo(a);
    a.LinkTo(c);
    const Levels levels(g);
    EXPECT_EQ(levels.NumberOf(a), 0);
    EXPECT_TRUE(levels.Way(back).reversed);
    EXPECT_EQ(levels.LevelOf(a), 1);
    EXPECT_EQ(levels.LevelOf(b), 2);
    EXPECT_EQ(levels.LevelOf(c), 3);
}

TEST(Levels, SourcesShareNumberZeroAndSinksCountDown) {
    Rungs g(1);
    Node c = g.AddBox();
    g.a[0].LinkTo(c);
    Node d = g.AddBox();
    d.LinkTo(c);
    const Levels levels(g);
    EXPECT_EQ(levels.NumberOf(g.a[0]), 0);
    EXPECT_EQ(levels.NumberOf(d), 0);
    EXPECT_EQ(levels.NumberOf(g.b[0]), 3);
    EXPECT_EQ(levels.NumberOf(c), 2);
}

struct Chain : Measured {
    explicit Chain(int count) {
        for (int i = 0; i < count; ++i) {
            nodes.push_back(AddBox());
            if (i > 0) nodes[static_cast<std::size_t>(i) - 1].LinkTo(nodes.back());
        }
    }
    Node& At(int level) { return nodes[static_cast<std::size_t>(level) - 1]; }

    std::vector<Node> nodes;
};

TEST(Levels, AStartNodeIsPulledToItsNearestChild) {
    Chain g(7);
    Node s = g.AddBox();
    s.LinkTo(g.At(5));
    s.LinkTo(g.At(7));
    const Levels levels(g);
    EXPECT_EQ(levels.LevelOf(g.At(5)), 5);
    EXPECT_EQ(levels.LevelOf(g.At(7)), 7);
    EXPECT_EQ(levels.LevelOf(s), 4);
    EXPECT_EQ(levels.LevelOf(g.At(1)), 1);
}

TEST(Levels, AStartNodeAheadOfLevelTwoStaysOnLevelOne) {
    Chain g(4);
    Node s = g.AddBox();
    s.LinkTo(g.At(2));
    const Levels levels(g);
    EXPECT_EQ(levels.LevelOf(s), 1);
}

// Levels that were there before hold the child far to the right; only a second start node lets the
// first one follow.
TEST(Levels, ASingleStartNodeIsNotPulled) {
    for (const int starts : {1, 2}) {
        BoxArrow g;
        if (starts == 2) g.AddBox();
        StepBench bench(g.root);
        const auto all = internal::all_nodes(bench.run);
        internal::at(bench.run.infos, bench.At(g.b)).level = 5;
        for (const auto& component : internal::find_connectivity_components(bench.run, all)) {
            internal::enumerate_connectivity_component(bench.run, component);
        }
        internal::mark_reversed_edges(bench.run, all, true);
        internal::mark_levels(bench.run, all);
        EXPECT_EQ(bench.LevelOf(g.b), 5);
        EXPECT_EQ(bench.LevelOf(g.a), starts == 1 ? 1 : 4);
    }
}

TEST(Levels, ComponentsAreFoundChildrenFirst) {
    Measured g;
    Node a = g.AddBox();
    Node b = g.AddBox();
    Node c = g.AddBox();
    Node d = g.AddBox();
    const Node alone = g.AddBox();
    b.LinkTo(a);
    a.LinkTo(d);
    d.LinkTo(c);
    StepBench bench(g.root);
    const auto components =
        internal::find_connectivity_components(bench.run, internal::all_nodes(bench.run));
    ASSERT_EQ(components.size(), 2u);
    EXPECT_EQ(components[0], bench.Places({a, d, c, b}));
    EXPECT_EQ(components[1], bench.Places({alone}));
}

TEST(Levels, WithoutNodesNothingHappens) {
    BoxArrow g;
    StepBench bench(g.root);
    EXPECT_TRUE(internal::find_connectivity_components(bench.run, {}).empty());
    internal::enumerate_connectivity_component(bench.run, {});
    internal::mark_reversed_edges(bench.run, {}, true);
    internal::mark_levels(bench.run, {});
    EXPECT_EQ(bench.LevelOf(g.a), -1);
    EXPECT_EQ(bench.NumberOf(g.a), -1);
    EXPECT_FALSE(bench.Way(g.edge).flat);
}

// Two rows of diamonds have as many paths as there are subsets of them.
TEST(Levels, TheNumberOfPathsDoesNotCount) {
    Measured g;
    Node end = g.AddBox();
    for (int i = 0; i < 60; ++i) {
        Node up = g.AddBox();
        Node down = g.AddBox();
        end.LinkTo(up);
        end.LinkTo(down);
        end = g.AddBox();
        up.LinkTo(end);
        down.LinkTo(end);
    }
    const Levels levels(g);
    EXPECT_EQ(levels.LevelOf(end), 121);
}

TEST(Levels, HiddenNodesAreLeftOutOnlyWhereTheSettingsSaySo) {
    Row g;
    Hide(g.b);
    internal::LayoutSettings settings;
    settings.include_hidden = false;
    StepBench without(g.root, settings);
    internal::determine_levels(without.run);
    EXPECT_EQ(without.LevelOf(g.a), 1);
    EXPECT_EQ(without.LevelOf(g.b), -1);
    EXPECT_EQ(without.LevelOf(g.c), 1);
    EXPECT_EQ(without.LevelOf(g.d), 2);
    const Levels with(g);
    EXPECT_EQ(with.LevelOf(g.d), 4);
}

}  // namespace
}  // namespace nodeline::test
