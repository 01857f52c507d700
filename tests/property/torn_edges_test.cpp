// Nodes that were removed with edges still leaving them, and what that does to the sets of others:
// an edge may be known to one of its ends alone. No layout may stumble over it.
#include <gtest/gtest.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/layout/inc_layout.h>
#include <nodeline/layout/stable_layout.h>
#include <nodeline/ops/graph_ops.h>
#include <support/random_graph.h>

#include <algorithm>
#include <cmath>
#include <functional>

namespace nodeline {
namespace {

bool IsTorn(const test::RandomGraph& g) {
    return std::any_of(g.nodes.begin(), g.nodes.end(), [](const Node& node) {
        for (const Edge& edge : node.GetEdgesIn()) {
            bool known = false;
            for (const Edge& out : edge.From().GetEdgesOut()) known = known || out == edge;
            if (!known) return true;
        }
        return false;
    });
}

void ExpectFinite(const test::RandomGraph& g, std::uint64_t seed) {
    for (const Node& node : g.AllNodes()) {
        const point<double> p = node.GetPosition();
        const size<double> s = node.GetSize();
        ASSERT_TRUE(std::isfinite(p.x) && std::isfinite(p.y)) << "seed " << seed;
        ASSERT_TRUE(std::isfinite(s.cx) && std::isfinite(s.cy)) << "seed " << seed;
    }
}

void RunSessions(const std::function<graph_ptr2<ILayout>()>& new_layout) {
    int torn = 0;
    for (std::uint64_t seed = 1; seed <= 150; ++seed) {
        test::RandomGraphPlan plan;
        plan.nodes = 24;
        plan.edges = 34;
        plan.depth = 3;
        test::RandomGraph g(seed, plan);
        torn += IsTorn(g) ? 1 : 0;
        g.graph->SetDefaultLayout(new_layout());
        g.root.MakeLayout();
        g.graph->RecalculateLayout(nullptr);
        ExpectFinite(g, seed);
        test::Random random(seed);
        for (int i = 0; i < 6; ++i) {
            const Node node = random.Of(g.nodes);
            if (random.OneIn(2)) {
                Fold(node, FoldChildren);
            } else {
                Unfold(node, FoldChildren);
            }
            if (random.OneIn(4)) {
                g.root.MakeLayout();
            } else {
                g.root.UpdateLayout();
            }
            g.graph->RecalculateLayout(nullptr);
            ExpectFinite(g, seed);
        }
    }
    EXPECT_GT(torn, 20);
}

TEST(TornEdges, DoNotTroubleStableLayout) {
    RunSessions([] { return checked_upcast<ILayout>(StableLayout::Create()); });
}

TEST(TornEdges, DoNotTroubleIncLayout) {
    RunSessions([] { return checked_upcast<ILayout>(IncLayout::Create()); });
}

}  // namespace
}  // namespace nodeline
