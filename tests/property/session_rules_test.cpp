// What holds after each step of long sessions.
#include <gtest/gtest.h>
#include <nodeline/model/break_nodes.h>
#include <nodeline/ops/graph_ops.h>
#include <support/session.h>
#include <support/watched_layout.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace nodeline::test {
namespace {

constexpr double kHair = 1e-6;

// A session whose only layout object is watched.
struct WatchedSession {
    WatchedSession(std::uint64_t seed, const SessionPlan& plan)
        : session(seed, plan, [this] { return graph_ptr2<ILayout>(layout.get(), false); }) {}

    std::unique_ptr<WatchedLayout> layout = std::make_unique<WatchedLayout>();
    Session session;
};

SessionPlan NestedPlan() {
    SessionPlan plan;
    plan.nodes = 14;
    plan.edges = 20;
    plan.drags = true;
    plan.bounded = true;
    return plan;
}

SessionPlan FlatPlan() {
    SessionPlan plan = NestedPlan();
    plan.depth = 1;
    return plan;
}

// Whether the edge still has bends inside one of its ends, from a time when it ran into it.
bool RunsOnInside(const Edge& edge) {
    const graph_ptr<IEdgeVis> vis = edge.store()->get_edge_vis(edge.record());
    const auto* route = dynamic_cast<const DefaultEdgeVis*>(vis.get());
    for (const Node& end : {edge.From(), edge.To()}) {
        const BreakChain* chain = route->FindChain(end.GetID());
        if (chain != nullptr && chain->GetCount() > 0) return true;
    }
    return false;
}

// The layout of one owner alone routes an edge between two of its nodes: out of the middle of the
// right side, into the middle of the left side.
void ExpectEndsAtNodes(const Edge& edge) {
    const NodeSet route = edge.GetBreakNodes();
    ASSERT_GE(route.GetCount(), 4);
    const Node from = edge.From();
    const Node to = edge.To();
    const point<double> first = route.GetItem(0).GetPosition();
    const point<double> last = route.GetItem(route.GetCount() - 1).GetPosition();
    ASSERT_NEAR(first.x, from.GetPosition().x + from.GetSize().cx, kHair);
    ASSERT_NEAR(first.y, from.GetPosition().y + 0.5 * from.GetSize().cy, kHair);
    ASSERT_NEAR(last.x, to.GetPosition().x, kHair);
    ASSERT_NEAR(last.y, to.GetPosition().y + 0.5 * to.GetSize().cy, kHair);
}

// Answers how many edges it looked at.
long ExpectRoutes(const WatchedSession& watched) {
    long count = 0;
    for (const Edge& edge : watched.session.edges) {
        const Node owner = edge.From().GetOwner();
        if (owner != edge.To().GetOwner() || RunsOnInside(edge)) continue;
        const auto known = watched.layout->placed.find(owner.GetID());
        if (known == watched.layout->placed.end()) continue;
        if (known->second.edges.count(edge.GetID()) == 0) continue;
        ++count;
        ExpectEndsAtNodes(edge);
        if (testing::Test::HasFatalFailure()) break;
    }
    return count;
}

// A node that has gone to another owner is still pushed by the next update of the old one, and its
// edges keep old bends; a make takes care of both.
void Settle(WatchedSession& watched, const std::string& did) {
    if (did != "move a node") return;
    watched.session.root.MakeLayout();
    watched.session.Recalculate();
}

TEST(SessionRules, OldNodesKeepLevelsAndOrderAndEdgesEndAtTheirNodes) {
    long old_nodes = 0;
    long routes = 0;
    for (std::uint64_t seed = 1; seed <= 300; ++seed) {
        WatchedSession watched(seed, NestedPlan());
        std::string did = "make";
        for (int i = 0; i <= 200; ++i) {
            watched.session.Recalculate();
            Settle(watched, did);
            SCOPED_TRACE("seed " + std::to_string(seed) + ", step " + std::to_string(i) + ": " +
                         did);
            ASSERT_EQ(watched.layout->broken, std::vector<std::string>());
            routes += ExpectRoutes(watched);
            if (HasFatalFailure()) return;
            did = watched.session.Change();
        }
        old_nodes += watched.layout->old_nodes;
    }
    EXPECT_GT(old_nodes, 300000);
    EXPECT_GT(routes, 100000);
}

double TopOf(const Session& session) {
    double top = 1e9;
    for (const Node& node : session.root.GetOwned()) {
        if (!IsFlagSet(node, NodeHidden)) top = std::min(top, node.GetPosition().y);
    }
    return top;
}

// One that fits something in may leave overlaps, and the next one opens them; a drawing that is
// lower than the margin stays there.
TEST(SessionRules, ARepeatedUpdateOfAFlatGraphMovesNothing) {
    long calm = 0;
    long all = 0;
    for (std::uint64_t seed = 1; seed <= 60; ++seed) {
        WatchedSession watched(seed, FlatPlan());
        Session& session = watched.session;
        std::string did = "make";
        for (int i = 0; i <= 60; ++i) {
            SCOPED_TRACE("seed " + std::to_string(seed) + ", step " + std::to_string(i) + ": " +
                         did);
            session.Recalculate();
            session.root.UpdateLayout();
            session.Recalculate();
            const Picture before = session.Look();
            const bool at_margin = std::abs(TopOf(session) - 12.0) < kHair;
            session.root.UpdateLayout();
            session.Recalculate();
            ++all;
            if (at_margin && watched.layout->was_calm) {
                ++calm;
                ASSERT_EQ(Difference(session.Look(), before), "");
            }
            did = session.Change();
        }
    }
    EXPECT_GT(calm, all / 2);
}

// By node, over all owners.
std::map<int, int> LevelsOf(const WatchedLayout& layout) {
    std::map<int, int> levels;
    for (const auto& [owner, placed] : layout.placed) {
        levels.insert(placed.levels.begin(), placed.levels.end());
    }
    return levels;
}

void ExpectAllPlaced(const WatchedSession& watched) {
    for (const Node& node : watched.session.nodes) {
        const auto known = watched.layout->placed.find(node.GetOwner().GetID());
        ASSERT_NE(known, watched.layout->placed.end());
        ASSERT_EQ(known->second.nodes.count(node.GetID()), 1u) << node.GetID();
    }
}

void FoldAndUnfold(WatchedSession& watched, const Node& node, FoldDirection direction) {
    Session& session = watched.session;
    const auto levels = LevelsOf(*watched.layout);
    Fold(node, direction);
    session.Recalculate();
    ASSERT_EQ(LevelsOf(*watched.layout), levels);
    Unfold(node, direction);
    // Neighbours in other owners come back with an update of theirs.
    session.root.UpdateLayout();
    session.Recalculate();
    ASSERT_EQ(LevelsOf(*watched.layout), levels);
    ExpectAllPlaced(watched);
    if (testing::Test::HasFatalFailure()) return;
    ExpectRoutes(watched);
}

TEST(SessionRules, FoldAndUnfoldOfASideBringAllNodesBackToTheirLevels) {
    for (std::uint64_t seed = 1; seed <= 100; ++seed) {
        WatchedSession watched(seed, seed % 2 == 0 ? NestedPlan() : FlatPlan());
        watched.session.Recalculate();
        for (const Node& node : watched.session.nodes) {
            for (const FoldDirection direction : {FoldParents, FoldChildren}) {
                SCOPED_TRACE("seed " + std::to_string(seed) + ", node " +
                             std::to_string(node.GetID()));
                FoldAndUnfold(watched, node, direction);
                if (HasFatalFailure()) return;
            }
        }
        ASSERT_EQ(watched.layout->broken, std::vector<std::string>());
    }
}

}  // namespace
}  // namespace nodeline::test
