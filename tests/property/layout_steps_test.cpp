#include <gtest/gtest.h>
#include <nodeline/layout/inc_layout.h>
#include <support/bits.h>
#include <support/plain_layout.h>
#include <support/session.h>
#include <support/step_bench.h>

#include <cfloat>
#include <cstddef>
#include <memory>

namespace nodeline::test {
namespace {

graph_ptr2<ILayout> NewLayout() { return IncLayout::Create(); }

SessionPlan FlatPlan() {
    SessionPlan plan;
    plan.depth = 1;
    plan.nodes = 9;
    plan.edges = 14;
    return plan;
}

// The same measured graph twice: one for the steps of the layout, one for those spelled out.
struct Twins {
    explicit Twins(std::uint64_t seed)
        : random(seed), a(seed, FlatPlan(), NewLayout), b(seed, FlatPlan(), NewLayout) {
        a.Recalculate();
        b.Recalculate();
        bench = std::make_unique<StepBench>(a.root);
        plain.BeginMake(b.root);
    }

    // Levels as if some nodes had been placed before.
    void PresetLevels() {
        for (std::size_t i = 0; i < plain.nodes.size(); ++i) {
            if (!random.OneIn(3)) continue;
            const int level = random.Between(1, 8);
            bench->run.infos[i].level = level;
            (*plain.infos)[plain.nodes[i]].level = level;
        }
    }
    void FindLevels() {
        const auto all = internal::all_nodes(bench->run);
        for (const auto& component : internal::find_connectivity_components(bench->run, all)) {
            internal::enumerate_connectivity_component(bench->run, component);
        }
        for (const auto& component : plain.find_connectivity_components(plain.nodes)) {
            plain.enumerate_connectivity_component(component);
        }
        internal::mark_reversed_edges(bench->run, all, true);
        plain.mark_reversed_edges(plain.nodes, true);
        internal::mark_levels(bench->run, all);
        plain.mark_levels(plain.nodes);
        internal::mark_reversed_edges(bench->run, all, false);
        plain.mark_reversed_edges(plain.nodes, false);
    }
    void ExpectSameLevels() {
        for (std::size_t i = 0; i < plain.nodes.size(); ++i) {
            const Node& n = plain.nodes[i];
            ASSERT_EQ(bench->run.number[i], plain.local_infos[n].number) << i;
            ASSERT_EQ(bench->run.infos[i].level, (*plain.infos)[n].level) << i;
        }
    }
    // Every place of the table holds the same kind of node at the same y.
    void ExpectSameTable() {
        auto& run = bench->run;
        ASSERT_EQ(run.levels.size(), plain.levels.size());
        for (std::size_t k = 0; k < plain.levels.size(); ++k) {
            ASSERT_EQ(run.levels[k].size(), plain.levels[k].size()) << k;
            for (std::size_t i = 0; i < plain.levels[k].size(); ++i) {
                const Node& n = plain.levels[k][i];
                const internal::Vertex v = run.levels[k][i];
                ASSERT_EQ(run.is_dummy(v), n.IsDummy());
                ASSERT_TRUE(SameBits(internal::at(run.y, v), n.GetPosition().y))
                    << "level " << k << ", place " << i;
            }
        }
    }
    void ScatterY() {
        auto& run = bench->run;
        for (std::size_t k = 0; k < plain.levels.size(); ++k) {
            for (std::size_t i = 0; i < plain.levels[k].size(); ++i) {
                const double y = random.Real(-300.0, 300.0);
                internal::at(run.y, run.levels[k][i]) = y;
                plain.levels[k][i].SetPosition(0.0, y);
            }
        }
    }
    void AdjustSomeBlock() {
        const int k = random.Below(static_cast<int>(plain.levels.size()));
        const auto& level = plain.levels[static_cast<std::size_t>(k)];
        const auto& vertices = bench->run.level_at(k);
        const int last = random.Between(0, static_cast<int>(level.size()));
        const int first = random.Between(0, last);
        const int dependence = random.Below(3);
        const bool with_dummies = random.OneIn(2);
        const double lower = random.OneIn(3) ? -DBL_MAX : random.Real(-200.0, 200.0);
        const double upper = random.OneIn(3) ? DBL_MAX : random.Real(-200.0, 400.0);
        internal::BlockAdjuster(bench->run)
            .force_adjust_block(vertices.data() + first, vertices.data() + last,
                                static_cast<internal::DependenceLevel>(dependence), with_dummies,
                                lower, upper);
        plain.force_adjust_block(level.data() + first, level.data() + last,
                                 static_cast<PlainLayout::DependenceLevel>(dependence),
                                 with_dummies, lower, upper);
    }

    Random random;
    Session a;
    Session b;
    PlainLayout plain;
    std::unique_ptr<StepBench> bench;
};

TEST(LayoutSteps, NumbersAndLevelsAreThoseOfTheWalks) {
    for (std::uint64_t seed = 1; seed <= 1500; ++seed) {
        SCOPED_TRACE(seed);
        Twins twins(seed);
        if (seed % 2 == 0) twins.PresetLevels();
        twins.FindLevels();
        twins.ExpectSameLevels();
        if (HasFatalFailure()) return;
    }
}

TEST(LayoutSteps, EveryStepOfAMakeLeavesTheSameTable) {
    for (std::uint64_t seed = 1; seed <= 300; ++seed) {
        SCOPED_TRACE(seed);
        Twins twins(seed);
        twins.FindLevels();
        auto& run = twins.bench->run;
        internal::place_nodes_on_levels(run);
        twins.plain.place_nodes_on_levels();
        twins.ExpectSameTable();
        internal::barycentric_adjust(run);
        twins.plain.barycentric_adjust();
        twins.ExpectSameTable();
        internal::calculate_initial_y_coords(run);
        twins.plain.calculate_initial_y_coords();
        twins.ExpectSameTable();
        internal::force_adjust(run);
        twins.plain.force_adjust();
        twins.ExpectSameTable();
        if (HasFatalFailure()) return;
    }
}

TEST(LayoutSteps, BlocksMoveAlikeUnderAnyForcesAndBounds) {
    for (std::uint64_t seed = 1; seed <= 300; ++seed) {
        SCOPED_TRACE(seed);
        Twins twins(seed);
        twins.FindLevels();
        internal::place_nodes_on_levels(twins.bench->run);
        twins.plain.place_nodes_on_levels();
        for (int i = 0; i < 8; ++i) {
            twins.ScatterY();
            twins.AdjustSomeBlock();
            twins.AdjustSomeBlock();
            twins.ExpectSameTable();
            if (HasFatalFailure()) return;
        }
    }
}

}  // namespace
}  // namespace nodeline::test
