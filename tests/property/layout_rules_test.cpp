#include <gtest/gtest.h>
#include <nodeline/layout/inc_layout.h>
#include <nodeline/ops/graph_ops.h>
#include <support/bits.h>
#include <support/measures.h>
#include <support/session.h>

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace nodeline::test {
namespace {

constexpr double kHair = 1e-6;

graph_ptr2<ILayout> NewLayout() { return IncLayout::Create(); }

double RightOf(const Node& node) { return node.GetPosition().x + node.GetSize().cx; }
double BottomOf(const Node& node) { return node.GetPosition().y + node.GetSize().cy; }
double CentreOf(const Node& node) { return node.GetPosition().x + 0.5 * node.GetSize().cx; }

bool IsShown(Node node) {
    for (; node && !IsRoot(node); node = node.GetOwner()) {
        if (IsFlagSet(node, NodeHidden)) return false;
    }
    return true;
}

SessionPlan LargePlan() {
    SessionPlan plan;
    plan.nodes = 40;
    plan.edges = 60;
    return plan;
}

// Nodes of one owner, column by column: those whose middles lie on one line.
std::map<long long, std::vector<Node>> ColumnsOf(const Node& owner) {
    std::map<long long, std::vector<Node>> columns;
    for (const Node& n : owner.GetOwned()) {
        if (IsShown(n)) columns[static_cast<long long>(CentreOf(n) * 1000.0 + 0.5)].push_back(n);
    }
    for (auto& [x, column] : columns) {
        std::sort(column.begin(), column.end(), [](const Node& a, const Node& b) {
            return a.GetPosition().y < b.GetPosition().y;
        });
    }
    return columns;
}

void ExpectSpaced(const Node& owner) {
    const auto columns = ColumnsOf(owner);
    double least = 30.0;
    for (const auto& [x, column] : columns) {
        double left = RightOf(column.front());
        double right = left;
        for (std::size_t i = 0; i < column.size(); ++i) {
            left = std::min(left, column[i].GetPosition().x);
            right = std::max(right, RightOf(column[i]));
            if (i == 0) continue;
            ASSERT_GE(column[i].GetPosition().y, BottomOf(column[i - 1]) + 12.0 - kHair);
        }
        ASSERT_GE(left, least - kHair);
        // A band of no width adds no gap.
        least = right > left ? right + 30.0 : right;
    }
}

void ExpectInside(const Node& owner) {
    for (const Node& n : owner.GetOwned()) {
        if (!IsShown(n)) continue;
        ASSERT_GE(n.GetPosition().x, owner.GetPosition().x);
        ASSERT_GE(n.GetPosition().y, owner.GetPosition().y + 12.0 - kHair);
        ASSERT_LE(RightOf(n), RightOf(owner) + kHair);
    }
}

// The bottom of a drawing is that of the last real node of some level with its lanes: all nodes of
// a level lie above its last one.
void ExpectNotBelow(const Node& owner) {
    for (const Node& n : owner.GetOwned()) {
        if (!IsShown(n)) continue;
        ASSERT_LE(BottomOf(n), BottomOf(owner) + kHair);
    }
}

// Whether the layout of one owner alone routes the edge, and both ends show.
bool IsBetweenSiblings(const Edge& edge) {
    return edge.From().GetOwner() == edge.To().GetOwner() && IsShown(edge.From()) &&
           IsShown(edge.To());
}

void ExpectRouted(const Edge& edge) {
    const NodeSet route = edge.GetBreakNodes();
    ASSERT_GE(route.GetCount(), 4);
    const point<double> first = route.GetItem(0).GetPosition();
    const point<double> last = route.GetItem(route.GetCount() - 1).GetPosition();
    ASSERT_NEAR(first.x, RightOf(edge.From()), kHair);
    ASSERT_NEAR(last.x, edge.To().GetPosition().x, kHair);
    for (const auto& [bend, end] : {std::pair(first, edge.From()), std::pair(last, edge.To())}) {
        ASSERT_GE(bend.y, end.GetPosition().y - kHair);
        ASSERT_LE(bend.y, BottomOf(end) + kHair);
    }
}

template <class Check>
void ForEachOwner(const Session& session, Check check) {
    std::vector<Node> owners{session.root};
    owners.insert(owners.end(), session.nodes.begin(), session.nodes.end());
    for (const Node& owner : owners) {
        if (owner.GetOwned().GetCount() > 0 && !testing::Test::HasFatalFailure()) check(owner);
    }
}

TEST(LayoutRules, EdgesOfAnAcyclicGraphLeadToTheRight) {
    SessionPlan plan = LargePlan();
    plan.acyclic = true;
    plan.depth = 1;
    for (std::uint64_t seed = 1; seed <= 200; ++seed) {
        SCOPED_TRACE(seed);
        Session session(seed, plan, NewLayout);
        session.Recalculate();
        for (const Edge& e : session.edges) {
            if (e.From() == e.To()) continue;
            ASSERT_LT(RightOf(e.From()), e.To().GetPosition().x);
        }
    }
}

TEST(LayoutRules, AMakeKeepsTheSpacingAndStaysInItsOwners) {
    for (std::uint64_t seed = 1; seed <= 200; ++seed) {
        SCOPED_TRACE(seed);
        Session session(seed, LargePlan(), NewLayout);
        session.Recalculate();
        ForEachOwner(session, ExpectSpaced);
        ForEachOwner(session, ExpectInside);
        ForEachOwner(session, ExpectNotBelow);
    }
}

TEST(LayoutRules, RoutesBeginOnTheRightAndEndOnTheLeft) {
    for (std::uint64_t seed = 1; seed <= 100; ++seed) {
        SCOPED_TRACE(seed);
        Session session(seed, LargePlan(), NewLayout);
        session.Recalculate();
        for (const Edge& edge : session.edges) {
            if (IsBetweenSiblings(edge)) ExpectRouted(edge);
            if (HasFatalFailure()) return;
        }
    }
}

// After updates too, but for y: gaps may shrink to what an overlap leaves, and a node that comes
// back may stand low.
TEST(LayoutRules, UpdatesKeepNodesInTheWidthOfTheirOwners) {
    SessionPlan plan = LargePlan();
    plan.upheavals = false;
    for (std::uint64_t seed = 300; seed < 360; ++seed) {
        Session session(seed, plan, NewLayout);
        std::string story = std::to_string(seed);
        for (int i = 0; i < 8; ++i) {
            session.Recalculate();
            story += ", " + session.Change();
            session.root.UpdateLayout();
            session.Recalculate();
            SCOPED_TRACE(story);
            ForEachOwner(session, ExpectInside);
            if (testing::Test::HasFatalFailure()) return;
        }
    }
}

TEST(LayoutRules, TheSameGraphIsLaidOutTheSameAgain) {
    for (std::uint64_t seed = 1; seed <= 40; ++seed) {
        Session first(seed, LargePlan(), NewLayout);
        Session second(seed, LargePlan(), NewLayout);
        for (int i = 0; i < 12; ++i) {
            first.Recalculate();
            second.Recalculate();
            ASSERT_EQ(Difference(first.Look(), second.Look()), "") << seed << ", change " << i;
            first.Change();
            second.Change();
        }
    }
}

// A make starts anew whatever was there before. A picture that no make has touched keeps the y of
// nodes without neighbours, which compete with it once, so both graphs begin at the origin.
TEST(LayoutRules, AMakeOfANewLayoutObjectIsTheSame) {
    for (std::uint64_t seed = 1; seed <= 40; ++seed) {
        Session session(seed, LargePlan(), NewLayout);
        session.Recalculate();
        const Picture before = session.Look();
        for (Node n : session.nodes) n.SetPosition(0.0, 0.0);
        session.graph->SetDefaultLayout(NewLayout());
        session.root.MakeLayout();
        session.Recalculate();
        ASSERT_EQ(Difference(session.Look(), before), "") << seed;
    }
}

// Two graphs that take turns each have their own layout object: neither sees the other.
TEST(LayoutRules, LayoutObjectsThatTakeTurnsDoNotDisturbEachOther) {
    for (std::uint64_t seed = 1; seed <= 30; ++seed) {
        Session alone(seed, LargePlan(), NewLayout);
        std::vector<Picture> pictures;
        for (int i = 0; i < 8; ++i) {
            alone.Recalculate();
            pictures.push_back(alone.Look());
            alone.Change();
        }
        Session session(seed, LargePlan(), NewLayout);
        Session other(seed + 1000, LargePlan(), NewLayout);
        for (const Picture& picture : pictures) {
            other.Recalculate();
            session.Recalculate();
            ASSERT_EQ(Difference(session.Look(), picture), "") << seed;
            other.Change();
            session.Change();
        }
    }
}

// Inside an owner, another object with the same settings gives the same picture.
TEST(LayoutRules, AnOwnerWithALayoutObjectOfItsOwnLooksTheSameAfterAMake) {
    SessionPlan plan = LargePlan();
    for (std::uint64_t seed = 1; seed <= 60; ++seed) {
        Session plain(seed, plan, NewLayout);
        Session mixed(seed, plan, NewLayout);
        for (std::size_t i = 0; i < mixed.nodes.size(); i += 3) {
            mixed.nodes[i].SetLayout(NewLayout());
        }
        plain.Recalculate();
        mixed.Recalculate();
        ASSERT_EQ(Difference(plain.Look(), mixed.Look()), "") << seed;
    }
}

void ExpectNear(const Picture& now, const Picture& before) {
    ASSERT_EQ(now.size(), before.size());
    for (std::size_t i = 0; i < now.size(); ++i) {
        ASSERT_NEAR(now[i].x, before[i].x, kHair) << now[i].kind << now[i].item;
        ASSERT_NEAR(now[i].y, before[i].y, kHair) << now[i].kind << now[i].item;
    }
}

// But for rounding where the whole drawing is brought back to the margin: the top of a make may lie
// below it by the last digit. A make leaves no overlap to open, and nothing is new after it.
// Updates that do fit something in may leave overlaps, which the next one opens.
TEST(LayoutRules, AnUpdateWithoutAChangeAfterAMakeMovesNothing) {
    SessionPlan plan = LargePlan();
    plan.depth = 1;
    for (std::uint64_t seed = 1; seed <= 100; ++seed) {
        Session session(seed, plan, NewLayout);
        session.Recalculate();
        const Picture made = session.Look();
        for (int i = 0; i < 3; ++i) {
            session.root.UpdateLayout();
            session.Recalculate();
            ExpectNear(session.Look(), made);
            if (HasFatalFailure()) FAIL() << seed << ", update " << i;
        }
    }
}

}  // namespace
}  // namespace nodeline::test
