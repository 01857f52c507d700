#include <gtest/gtest.h>
#include <nodeline/layout/inc_layout.h>
#include <support/plain_layout.h>
#include <support/session.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace nodeline::test {
namespace {

graph_ptr2<ILayout> NewLayout() { return IncLayout::Create(); }

// The plain layout keeps handles of nodes, and these keep the store: were the layouts owned by the
// store, they would keep each other alive.
struct PlainLayouts {
    graph_ptr2<ILayout> New() {
        layouts.push_back(std::make_unique<PlainLayout>());
        return {layouts.back().get(), false};
    }

    std::vector<std::unique_ptr<PlainLayout>> layouts;
};

struct PlainSession : PlainLayouts, Session {
    PlainSession(std::uint64_t seed, const SessionPlan& plan)
        : Session(seed, plan, [this] { return New(); }) {}
};

// The same changes for both layouts, and the same bits after each.
void Compare(std::uint64_t seed, const SessionPlan& plan, int changes) {
    Session session(seed, plan, NewLayout);
    PlainSession plain(seed, plan);
    std::string story = "seed " + std::to_string(seed) + ": make";
    for (int i = 0; i <= changes; ++i) {
        session.Recalculate();
        plain.Recalculate();
        ASSERT_EQ(Difference(session.Look(), plain.Look()), "") << story;
        plain.Change();
        story += ", " + session.Change();
    }
}

void CompareMany(std::uint64_t first, std::uint64_t count, const SessionPlan& plan, int changes) {
    for (std::uint64_t seed = first; seed < first + count; ++seed) {
        Compare(seed, plan, changes);
        if (testing::Test::HasFatalFailure()) return;
    }
}

TEST(LayoutAgainstPlain, MakesOfFlatGraphs) {
    SessionPlan plan;
    plan.depth = 1;
    plan.nodes = 10;
    plan.edges = 14;
    CompareMany(1, 700, plan, 0);
    plan.edges = 30;
    CompareMany(1000, 300, plan, 0);
}

TEST(LayoutAgainstPlain, MakesOfNestedGraphs) { CompareMany(2000, 400, SessionPlan(), 0); }

TEST(LayoutAgainstPlain, SessionsOnFlatGraphs) {
    SessionPlan plan;
    plan.depth = 1;
    plan.nodes = 9;
    plan.edges = 12;
    CompareMany(3000, 400, plan, 12);
}

TEST(LayoutAgainstPlain, SessionsOnNestedGraphs) {
    SessionPlan plan;
    plan.nodes = 12;
    plan.edges = 16;
    CompareMany(4000, 400, plan, 12);
}

TEST(LayoutAgainstPlain, SessionsWithoutUpheavalsOnDeepGraphs) {
    SessionPlan plan;
    plan.depth = 6;
    plan.upheavals = false;
    CompareMany(5000, 80, plan, 12);
}

TEST(LayoutAgainstPlain, SessionsWithSeveralLayoutObjects) {
    SessionPlan plan;
    plan.own_layouts = 4;
    CompareMany(6000, 150, plan, 10);
}

}  // namespace
}  // namespace nodeline::test
