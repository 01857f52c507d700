// With all that it adds switched off, the stable layout makes the pictures of the incremental one.
#include <gtest/gtest.h>
#include <nodeline/layout/inc_layout.h>
#include <nodeline/layout/stable_layout.h>
#include <support/measures.h>
#include <support/picture_rules.h>
#include <support/session.h>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace nodeline::test {
namespace {

// Sums are taken in another order.
constexpr double kRounding = 1e-9;

graph_ptr2<ILayout> NewInc() { return IncLayout::Create(); }

graph_ptr2<ILayout> NewStable() {
    StableLayout::Options options;
    options.sweeps = 3;
    options.straighten = false;
    return StableLayout::Create(options);
}

// A turn beside a node without a width asks for room, and so do lanes of several widths; only one
// of the two layouts leaves it.
void AskForNoRoomAtTurns(Session& session) {
    for (Node node : session.nodes) {
        if (node.GetTag() < SizeTag(1, 0)) node.SetTag(node.GetTag() + SizeTag(1, 0));
    }
    for (Edge edge : session.edges) edge.SetTag(1);
}

// Highest point of nodes and bends.
double TopOf(const Session& session) {
    double top = std::numeric_limits<double>::infinity();
    for (const Node& node : session.nodes) top = std::min(top, node.GetPosition().y);
    for (const Edge& edge : session.edges) {
        for (const Node& bend : edge.GetBreakNodes()) top = std::min(top, bend.GetPosition().y);
    }
    return top;
}

void ExpectSamePicture(const Session& inc, const Session& stable) {
    const double up = stable.nodes[0].GetPosition().y - inc.nodes[0].GetPosition().y;
    EXPECT_LE(up, kRounding);
    const auto expect_same = [&](const Node& a, const Node& b) {
        EXPECT_NEAR(b.GetPosition().x, a.GetPosition().x, kRounding);
        EXPECT_NEAR(b.GetPosition().y, a.GetPosition().y + up, kRounding);
    };
    for (std::size_t i = 0; i < inc.nodes.size(); ++i) expect_same(inc.nodes[i], stable.nodes[i]);
    for (std::size_t i = 0; i < inc.edges.size(); ++i) {
        const NodeSet a = inc.edges[i].GetBreakNodes();
        const NodeSet b = stable.edges[i].GetBreakNodes();
        ASSERT_EQ(a.GetCount(), b.GetCount());
        for (int k = 0; k < a.GetCount(); ++k) expect_same(a.GetItem(k), b.GetItem(k));
    }
    EXPECT_NEAR(stable.root.GetSize().cx, inc.root.GetSize().cx, kRounding);
    // Room for the bends below the last node is what the other one leaves out.
    EXPECT_GE(stable.root.GetSize().cy, inc.root.GetSize().cy + up - kRounding);
}

TEST(StableAgainstInc, FlatGraphsAreTheSameButForWhatTheRulesAskFor) {
    int moved_to_margin = 0;
    int taller = 0;
    for (std::uint64_t seed = 1; seed <= 300; ++seed) {
        SCOPED_TRACE(seed);
        SessionPlan plan;
        plan.depth = 1;
        plan.nodes = 5 + static_cast<int>(seed % 40);
        plan.edges = plan.nodes * (1 + static_cast<int>(seed % 3)) * 2 / 3;
        plan.acyclic = seed % 2 == 0;
        Session inc(seed, plan, NewInc);
        Session stable(seed, plan, NewStable);
        for (Session* session : {&inc, &stable}) {
            AskForNoRoomAtTurns(*session);
            session->Recalculate();
        }
        ExpectSamePicture(inc, stable);
        if (HasFailure()) return;
        EXPECT_NEAR(TopOf(stable), 12.0, kRounding);
        PictureRules rules;
        rules.is_made = true;
        EXPECT_EQ(Faults(stable.graph, rules), "");
        const double up = stable.nodes[0].GetPosition().y - inc.nodes[0].GetPosition().y;
        if (up < -kRounding) ++moved_to_margin;
        if (stable.root.GetSize().cy > inc.root.GetSize().cy + up + kRounding) ++taller;
    }
    // Both happen, and are no rule.
    EXPECT_GT(moved_to_margin, 20);
    EXPECT_LT(moved_to_margin, 150);
    EXPECT_GT(taller, 20);
    EXPECT_LT(taller, 150);
}

}  // namespace
}  // namespace nodeline::test
