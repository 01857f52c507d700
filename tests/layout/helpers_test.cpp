#include <gtest/gtest.h>
#include <nodeline/ops/graph_ops.h>
#include <support/layout_graphs.h>
#include <support/step_bench.h>

namespace nodeline::test {
namespace {

// A whole make of one owner, and what it leaves for the next run.
struct Made : StepBench {
    explicit Made(const Node& owner) : StepBench(owner) {
        internal::determine_levels(run);
        internal::place_nodes_on_levels(run);
        internal::barycentric_adjust(run);
        internal::calculate_initial_y_coords(run);
        internal::force_adjust(run);
        internal::calculate_x_coords(run);
        internal::make_epilogue(run);
    }
};

TEST(LayoutHelpers, ANodeWithoutLanesIsAsHighAsItIs) {
    const BoxArrow g;
    Made made(g.root);
    EXPECT_EQ(made.run.get_height(made.At(g.a)), 20.0);
}

TEST(LayoutHelpers, EachLaneAddsASpacingAndTheWidthOfOneEdge) {
    Row g;
    g.a.LinkTo(g.c);
    g.d.LinkTo(g.a);
    g.d.LinkTo(g.b);
    Made made(g.root);
    EXPECT_EQ(made.Lanes(g.d), 2);
    EXPECT_EQ(made.run.get_height(made.At(g.d)), 20.0 + 2 * (2.0 + 1.0));
}

// The first edge of the parents sets the width of all lanes, or of the children if there are none.
TEST(LayoutHelpers, LanesAreAsWideAsTheFirstEdge) {
    BoxArrow g;
    g.edge.SetTag(8);
    const Edge back = g.b.LinkTo(g.a);
    Made made(g.root);
    EXPECT_EQ(made.run.get_height(made.At(g.b)), 20.0 + (2.0 + 3.0));
    EXPECT_EQ(made.run.get_height(made.At(g.a)), 20.0 + (2.0 + 1.0));
    EXPECT_TRUE(made.Way(back).reversed);
}

TEST(LayoutHelpers, LanesWithoutAnEdgeHaveNoWidth) {
    Measured lone;
    const Node a = lone.AddBox();
    StepBench bench(lone.root);
    internal::at(bench.run.backedge_count, bench.At(a)) = 3;
    EXPECT_EQ(bench.run.get_height(bench.At(a)), 20.0 + 3 * 2.0);
}

TEST(LayoutHelpers, ADummyNodeIsAsHighAsItsEdgeIsWide) {
    RowWithShortcut g;
    g.far.SetTag(10);
    Made made(g.root);
    EXPECT_EQ(made.run.get_height(made.Bend(g.far, 2)), 3.5);
}

TEST(LayoutHelpers, AnEdgeToAHiddenNodeIsNotOldAfterTheRun) {
    Fan g;
    Hide(g.b2);
    Made made(g.root);
    EXPECT_FALSE(internal::at(made.run.edges, made.At(g.to_b2)).marked_old);
    EXPECT_TRUE(internal::at(made.run.edges, made.At(g.to_b1)).marked_old);
    for (int i = 0; i < 4; ++i) EXPECT_TRUE(made.run.break_info(made.At(g.to_b1), i).old);
    EXPECT_EQ(made.Bends(g.to_b2), 0);
}

TEST(LayoutHelpers, TheBendsOfAnEdgeThatWasHiddenStayUnmarked) {
    BoxArrow g;
    g.Make();
    Hide(g.b);
    StepBench bench(g.root);
    internal::determine_levels(bench.run);
    internal::make_epilogue(bench.run);
    bench.run.keep_chain(bench.At(g.edge));
    for (int i = 0; i < 4; ++i) EXPECT_FALSE(bench.run.break_info(bench.At(g.edge), i).old);
}

TEST(LayoutHelpers, AHiddenNodeIsNewToTheNextRunThoughItIsOld) {
    BoxArrow g;
    Hide(g.b);
    Made made(g.root);
    internal::OwnerStore store = made.run.finish();
    const internal::LayoutRun next({}, g.root, std::move(store), made.local);
    const auto a = made.At(g.a);
    const auto b = made.At(g.b);
    EXPECT_TRUE(internal::at(next.old_infos, b).old);
    EXPECT_TRUE(internal::at(next.old_infos, b).was_hidden);
    EXPECT_TRUE(next.is_new(b));
    EXPECT_FALSE(next.is_new(a));
    EXPECT_EQ(internal::at(next.old_infos, b).level, 2);
}

}  // namespace
}  // namespace nodeline::test
