#include <gtest/gtest.h>
#include <support/layout_graphs.h>
#include <support/step_bench.h>

#include <cfloat>
#include <vector>

namespace nodeline::test {
namespace {

using internal::DEPEND_IN;
using internal::DEPEND_INOUT;
using internal::DEPEND_OUT;

struct Forced : StepBench {
    explicit Forced(const Node& owner) : StepBench(owner) {
        internal::determine_levels(run);
        internal::place_nodes_on_levels(run);
    }
    void Adjust(int k, internal::DependenceLevel dependence, bool with_dummies = false,
                double lower = -DBL_MAX, double upper = DBL_MAX) {
        const auto& level = run.level_at(k);
        internal::BlockAdjuster(run).force_adjust_block(level.data(), level.data() + level.size(),
                                                        dependence, with_dummies, lower, upper);
    }
};

// Pairs of equal boxes: each on the right is pulled by as much as its partner is set off.
struct Pulled : Rungs {
    explicit Pulled(const std::vector<double>& forces)
        : Rungs(static_cast<int>(forces.size())), bench(root) {
        for (std::size_t i = 0; i < forces.size(); ++i) {
            bench.YOf(b[i]) = 100.0 * static_cast<double>(i);
            bench.YOf(a[i]) = bench.YOf(b[i]) + forces[i];
        }
    }
    // How far each node on the right has moved.
    std::vector<double> Shifts() {
        std::vector<double> shifts;
        for (std::size_t i = 0; i < b.size(); ++i) {
            shifts.push_back(bench.YOf(b[i]) - 100.0 * static_cast<double>(i));
        }
        return shifts;
    }
    std::vector<double> Adjusted(double lower = -DBL_MAX, double upper = DBL_MAX) {
        bench.Adjust(2, DEPEND_IN, false, lower, upper);
        return Shifts();
    }

    Forced bench;
};

using Shifts = std::vector<double>;

TEST(Force, OpposingForcesHoldEachOther) {
    EXPECT_EQ(Pulled({10.0, -10.0}).Adjusted(), (Shifts{0.0, 0.0}));
}

TEST(Force, PartingForcesMoveTheirNodesApart) {
    EXPECT_EQ(Pulled({-10.0, 10.0}).Adjusted(), (Shifts{-10.0, 10.0}));
}

TEST(Force, EqualForcesStayInOneBlock) {
    EXPECT_EQ(Pulled({7.0, 7.0}).Adjusted(), (Shifts{7.0, 7.0}));
}

TEST(Force, AWeakPullUpAboveAStrongOneSharesItsShift) {
    EXPECT_EQ(Pulled({-5.0, -20.0}).Adjusted(), (Shifts{-12.5, -12.5}));
}

TEST(Force, AStrongPullUpAboveAWeakOneGoesAlone) {
    EXPECT_EQ(Pulled({-20.0, -5.0}).Adjusted(), (Shifts{-20.0, -5.0}));
}

TEST(Force, ANodeWithoutForceBehindABlockThatIsPulledUpStartsAnother) {
    EXPECT_EQ(Pulled({-5.0, -20.0, 0.0}).Adjusted(), (Shifts{-12.5, -12.5, 0.0}));
}

// The second block is pulled down by 3 in the mean: less than the first, and the gap must not
// shrink.
TEST(Force, ALaterBlockShiftsAtLeastAsFarAsTheOneBefore) {
    EXPECT_EQ(Pulled({6.0, 12.0, -6.0}).Adjusted(), (Shifts{6.0, 6.0, 6.0}));
}

TEST(Force, TheLowerBoundPushesDown) {
    EXPECT_EQ(Pulled({-10.0, 0.0}).Adjusted(30.0), (Shifts{30.0, 30.0}));
}

TEST(Force, TheUpperBoundPushesUpUntilOneFits) {
    Pulled g({0.0, 0.0, 0.0});
    // The last one must end half a gap above the bound; the next one above it ends far higher.
    EXPECT_EQ(g.Adjusted(-DBL_MAX, 200.0), (Shifts{0.0, 0.0, -26.0}));
}

TEST(Force, TheUpperBoundMayPushAboveTheLowerOne) {
    Pulled g({0.0, 0.0});
    EXPECT_EQ(g.Adjusted(0.0, 40.0), (Shifts{-18.0, -86.0}));
}

TEST(Force, ATableOfOneInnerLevelIsLeftAlone) {
    Measured g;
    const Node a = g.AddBox();
    Forced bench(g.root);
    ASSERT_EQ(bench.run.levels.size(), 3u);
    bench.YOf(a) = 17.0;
    internal::force_adjust(bench.run);
    EXPECT_EQ(bench.YOf(a), 17.0);
}

TEST(Force, OfTwoInnerLevelsTheFirstAnchorsAndThenFollows) {
    Fan g;
    Node lone = g.AddBox();
    lone.LinkTo(g.b3);
    Forced bench(g.root);
    bench.YOf(g.a) = 100.0;
    bench.YOf(lone) = 300.0;
    bench.YOf(g.b1) = 0.0;
    bench.YOf(g.b2) = 90.0;
    bench.YOf(g.b3) = 180.0;
    internal::force_adjust(bench.run);
    // Forward: pulls of 100, 10 and 20. The first two share 55, and the third may not shift less.
    EXPECT_EQ(bench.YOf(g.b1), 55.0);
    EXPECT_EQ(bench.YOf(g.b2), 145.0);
    EXPECT_EQ(bench.YOf(g.b3), 235.0);
    // Back: pulls of 45 and -65, which share -10.
    EXPECT_EQ(bench.YOf(g.a), 90.0);
    EXPECT_EQ(bench.YOf(lone), 290.0);
}

// A row of two levels with a long edge past the middle one, whose dummy node lies between two
// boxes.
struct Passed : Measured {
    Passed() : bench(root) {
        auto& level = bench.run.level_at(2);
        passing = bench.Bend(far, 2);
        level = {bench.At(b1), passing, bench.At(b2)};
    }

    Node a1 = AddBox();
    Node a2 = AddBox();
    Node b1 = AddBox();
    Node b2 = AddBox();
    Node c = AddBox();
    Edge a1b1 = a1.LinkTo(b1);
    Edge a2b2 = a2.LinkTo(b2);
    Edge b1c = b1.LinkTo(c);
    Edge far = a1.LinkTo(c);
    Forced bench;
    internal::Vertex passing = 0;
};

TEST(Force, DummyNodesMoveWithTheBlockBeforeThem) {
    Passed g;
    g.bench.YOf(g.a1) = 40.0;
    g.bench.YOf(g.a2) = 300.0;
    g.bench.YOf(g.b1) = 50.0;
    internal::at(g.bench.run.y, g.passing) = 80.0;
    g.bench.YOf(g.b2) = 200.0;
    g.bench.Adjust(2, DEPEND_IN);
    EXPECT_EQ(g.bench.YOf(g.b1), 40.0);
    EXPECT_EQ(internal::at(g.bench.run.y, g.passing), 70.0);
    EXPECT_EQ(g.bench.YOf(g.b2), 300.0);
}

TEST(Force, ADummyNodeBetweenBoxesStaysBetweenThem) {
    for (const double target : {-500.0, 150.0, 500.0}) {
        Passed g;
        g.bench.YOf(g.b1) = 100.0;
        internal::at(g.bench.run.y, g.passing) = 140.0;
        g.bench.YOf(g.b2) = 200.0;
        g.bench.YOf(g.c) = target;
        const auto& level = g.bench.run.level_at(2);
        internal::BlockAdjuster(g.bench.run)
            .force_adjust_block(level.data() + 1, level.data() + 2, DEPEND_OUT, true, 126.0, 194.0);
        const double y = internal::at(g.bench.run.y, g.passing);
        // One spacing of a dummy node below it, and the width of its edge.
        EXPECT_EQ(y, target < 0.0 ? 126.0 : target > 200.0 ? 192.0 : 160.0);
    }
}

// A long edge passes two boxes that nothing pulls, above them or below, towards its far target.
TEST(Force, RunsOfDummyNodesAtTheEndsOfALevelAreFreeOutwards) {
    for (const bool at_start : {true, false}) {
        RowWithShortcut g;
        const Node u = g.AddBox();
        const Node v = g.AddBox();
        Forced bench(g.root);
        const auto dummy = bench.Bend(g.far, 2);
        const auto second = bench.Bend(g.far, 4);
        bench.run.level_at(2) = {at_start ? dummy : bench.At(u), at_start ? bench.At(u) : dummy};
        bench.run.level_at(3) = {at_start ? second : bench.At(v), at_start ? bench.At(v) : second};
        bench.run.level_at(4).clear();
        bench.YOf(u) = 0.0;
        bench.YOf(v) = 0.0;
        bench.YOf(g.d) = at_start ? -900.0 : 900.0;
        internal::at(bench.run.y, dummy) = at_start ? -10.0 : 40.0;
        internal::at(bench.run.y, second) = at_start ? -10.0 : 40.0;
        internal::force_adjust(bench.run);
        EXPECT_EQ(internal::at(bench.run.y, second), bench.YOf(g.d) + 10.0) << at_start;
        EXPECT_EQ(internal::at(bench.run.y, dummy), bench.YOf(g.d) + 10.0) << at_start;
        EXPECT_EQ(bench.YOf(u), 0.0);
    }
}

TEST(Force, ARealNodeIsNotPulledByDummyNodes) {
    RowWithShortcut g;
    Forced bench(g.root);
    internal::at(bench.run.y, bench.Bend(g.far, 2)) = 500.0;
    bench.YOf(g.a) = 0.0;
    bench.YOf(g.b) = 30.0;
    bench.Adjust(1, DEPEND_OUT);
    EXPECT_EQ(bench.YOf(g.a), 30.0);
}

// Behind a node, only what was in the picture before pulls when both sides do.
TEST(Force, WithBothSidesOnlyOldNeighboursPullFromTheRight) {
    Row g;
    Forced bench(g.root);
    bench.YOf(g.a) = 10.0;
    bench.YOf(g.b) = 0.0;
    bench.YOf(g.c) = 70.0;
    bench.Adjust(2, DEPEND_INOUT, true);
    EXPECT_EQ(bench.YOf(g.b), 10.0);
    internal::at(bench.run.infos, bench.At(g.c)).old = true;
    bench.Adjust(2, DEPEND_INOUT, true);
    EXPECT_EQ(bench.YOf(g.b), 40.0);
    internal::at(bench.run.infos, bench.At(g.c)).was_hidden = true;
    bench.Adjust(2, DEPEND_INOUT, true);
    EXPECT_EQ(bench.YOf(g.b), 10.0);
}

TEST(Force, AnOpenNodePullsToThePortOfTheEdge) {
    Box g;
    Measured::AddBox(g.box, 40, 70);
    g.Make();
    Forced bench(g.root);
    bench.YOf(g.box) = 100.0;
    bench.YOf(g.z) = 0.0;
    const auto ports = g.out.GetBreakNodesIn(g.box);
    ASSERT_GT(ports.GetCount(), 0);
    const double port = ports.GetItem(ports.GetCount() - 1).GetPosition().y;
    bench.Adjust(3, DEPEND_IN);
    EXPECT_EQ(bench.YOf(g.z), 100.0 + port - 10.0);
    EXPECT_NE(port, 0.5 * g.box.GetSize().cy);
}

}  // namespace
}  // namespace nodeline::test
