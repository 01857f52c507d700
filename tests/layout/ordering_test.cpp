#include <gtest/gtest.h>
#include <nodeline/ops/graph_ops.h>
#include <support/layout_graphs.h>
#include <support/step_bench.h>

#include <vector>

namespace nodeline::test {
namespace {

struct Ordered : StepBench {
    explicit Ordered(const Node& owner) : StepBench(owner) {
        internal::determine_levels(run);
        internal::place_nodes_on_levels(run);
    }
    std::vector<internal::Vertex> Level(int k) { return run.level_at(k); }
    std::vector<double> Ys(int k) {
        std::vector<double> ys;
        for (const internal::Vertex v : run.level_at(k)) ys.push_back(internal::at(run.y, v));
        return ys;
    }
};

TEST(Ordering, AnOnlyLevelKeepsTheOrderOfPlacing) {
    Measured g;
    const std::vector<Node> nodes{g.AddBox(), g.AddBox(), g.AddBox()};
    for (const Node& n : nodes) Node(n).SetPosition(0.0, -10.0 * n.GetID());
    Ordered bench(g.root);
    ASSERT_EQ(bench.run.levels.size(), 3u);
    internal::barycentric_adjust(bench.run);
    EXPECT_EQ(bench.Level(1), bench.Places(nodes));
    EXPECT_EQ(bench.Ys(1), (std::vector<double>{0.0, 1.0, 2.0}));
}

// Level 2 has equal means and stays; the sweep back pulls c above b; the last sweep keeps that.
//
//   [a] ---> [p] <--- [c]
//   [b] ---> [q]
TEST(Ordering, OfTwoLevelsTheSweepBackSortsTheFirst) {
    Measured g;
    Node a = g.AddBox();
    Node b = g.AddBox();
    Node c = g.AddBox();
    const Node p = g.AddBox();
    const Node q = g.AddBox();
    a.LinkTo(p);
    c.LinkTo(p);
    b.LinkTo(q);
    Ordered bench(g.root);
    ASSERT_EQ(bench.run.levels.size(), 4u);
    internal::barycentric_adjust(bench.run);
    EXPECT_EQ(bench.Level(1), bench.Places({a, c, b}));
    EXPECT_EQ(bench.Level(2), bench.Places({p, q}));
    EXPECT_EQ(bench.Ys(1), (std::vector<double>{0.0, 1.0, 2.0}));
}

//   [a] ---> [y]        placed as x, y
//   [b] ---> [x]
TEST(Ordering, TheSweepForwardSortsTheLastInnerLevel) {
    Measured g;
    Node a = g.AddBox();
    Node b = g.AddBox();
    const Node x = g.AddBox();
    const Node y = g.AddBox();
    a.LinkTo(y);
    b.LinkTo(x);
    Ordered bench(g.root);
    EXPECT_EQ(bench.Level(2), bench.Places({x, y}));
    internal::barycentric_adjust(bench.run);
    EXPECT_EQ(bench.Level(2), bench.Places({y, x}));
    EXPECT_EQ(bench.Level(1), bench.Places({a, b}));
}

TEST(Ordering, EqualMeansKeepTheirOrder) {
    Fan g;
    Node other = g.AddBox();
    other.LinkTo(g.b2);
    other.LinkTo(g.b1);
    g.a.LinkTo(g.b2);
    Ordered bench(g.root);
    internal::barycentric_adjust(bench.run);
    // Parallel segments count each: b2 lies nearer to a than b1.
    EXPECT_EQ(bench.Level(2), bench.Places({g.b3, g.b2, g.b1}));
    Fan plain;
    Ordered same(plain.root);
    internal::barycentric_adjust(same.run);
    EXPECT_EQ(same.Level(2), same.Places({plain.b1, plain.b2, plain.b3}));
}

//   [a1] --> [b1] --> [c]
//   [a2] --> [b2] -----^
//             [s] -----^
TEST(Ordering, ANodeWithoutNeighboursOnASideCompetesWithItsPlace) {
    Measured g;
    Node a1 = g.AddBox();
    Node a2 = g.AddBox();
    Node b1 = g.AddBox();
    Node b2 = g.AddBox();
    Node s = g.AddBox();
    const Node c = g.AddBox();
    a1.LinkTo(b1);
    a2.LinkTo(b2);
    b1.LinkTo(c);
    b2.LinkTo(c);
    s.LinkTo(c);
    Ordered bench(g.root);
    ASSERT_EQ(bench.LevelOf(s), 2);
    bench.YOf(s) = 5.0;
    internal::barycentric_adjust(bench.run);
    EXPECT_EQ(bench.Level(2), bench.Places({b1, b2, s}));
    EXPECT_EQ(bench.YOf(s), 2.0);
}

TEST(Ordering, AnEmptyLevelIsPassedOver) {
    Row g;
    Hide(g.b);
    Ordered bench(g.root);
    EXPECT_TRUE(bench.Level(2).empty());
    internal::barycentric_adjust(bench.run);
    internal::calculate_initial_y_coords(bench.run);
    EXPECT_TRUE(bench.Level(2).empty());
    EXPECT_EQ(bench.YOf(g.a), 6.0);
    EXPECT_EQ(bench.YOf(g.d), 6.0);
}

TEST(Ordering, StackedNodesKeepHalfOfEachOnesSpacing) {
    Measured g;
    Node a = g.AddBox();
    Node b = g.AddBox();
    Node b_too = g.AddBox();
    Node c = g.AddBox();
    a.LinkTo(b);
    a.LinkTo(b_too);
    b.LinkTo(c);
    const Edge far = a.LinkTo(c);
    const Edge farther = a.LinkTo(c);
    g.graph->RecalculateLayout(nullptr);
    Ordered bench(g.root);
    bench.run.level_at(2) = {bench.At(b), bench.At(b_too), bench.Bend(far, 2),
                             bench.Bend(farther, 2)};
    internal::calculate_initial_y_coords(bench.run);
    EXPECT_EQ(bench.Ys(2), (std::vector<double>{6.0, 38.0, 65.0, 68.0}));
    EXPECT_EQ(bench.Ys(1), (std::vector<double>{6.0}));
}

TEST(Ordering, XStaysZeroUntilCoordinatesAreCalculated) {
    BoxArrow g;
    g.a.SetPosition(50.0, 60.0);
    g.b.SetPosition(-3.0, 60.0);
    Ordered bench(g.root);
    internal::barycentric_adjust(bench.run);
    internal::calculate_initial_y_coords(bench.run);
    EXPECT_EQ(bench.run.x, (std::vector<double>{0.0, 0.0}));
    EXPECT_EQ(bench.YOf(g.a), 6.0);
    EXPECT_EQ(bench.YOf(g.b), 6.0);
}

}  // namespace
}  // namespace nodeline::test
