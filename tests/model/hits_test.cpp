#include <gtest/gtest.h>
#include <nodeline/model/graph.h>
#include <support/ids.h>
#include <support/named_graphs.h>

#include <limits>
#include <vector>

namespace nodeline::test {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

void Put(Node node, double left, double top, double width, double height) {
    node.SetPosition(left, top);
    node.SetSize({width, height});
}

// Routes an edge within the root.
void Route(Edge edge, const Node& owner, const std::vector<point<double>>& points) {
    edge.RemoveBreakNodes();
    edge.AddBreakNodesIn(owner, static_cast<int>(points.size()));
    const NodeSet bends = edge.GetBreakNodesIn(owner);
    for (int i = 0; i < bends.GetCount(); ++i) {
        Node(bends.GetItem(i)).SetPosition(points[static_cast<std::size_t>(i)]);
    }
}

// Each query is made three times: by a walk, with a fresh index, and with the index there is.
std::vector<int> NodesAt(const graph_ptr2<Graph>& graph, double x1, double y1, double x2,
                         double y2) {
    const auto first = Ids(graph->HitNodeTest(x1, y1, x2, y2));
    EXPECT_EQ(Ids(graph->HitNodeTest(x1, y1, x2, y2)), first);
    EXPECT_EQ(Ids(graph->HitNodeTest(x1, y1, x2, y2)), first);
    return first;
}

std::vector<int> NodesAt(const graph_ptr2<Graph>& graph, double x, double y) {
    return NodesAt(graph, x, y, x, y);
}

bool IsHit(const graph_ptr2<Graph>& graph, double x1, double y1, double x2, double y2) {
    const int first = graph->HitEdgeTest(x1, y1, x2, y2).GetCount();
    EXPECT_EQ(graph->HitEdgeTest(x1, y1, x2, y2).GetCount(), first);
    EXPECT_EQ(graph->HitEdgeTest(x1, y1, x2, y2).GetCount(), first);
    return first > 0;
}

class NodeHits : public ::testing::Test {
protected:
    NodeHits() {
        Put(g.a, 0, 0, 100, 100);
        Put(g.b, 10, 10, 80, 80);
        Put(g.c, 20, 20, 40, 40);
    }
    Stairs g;
};

TEST_F(NodeHits, QueryInsideCompoundNodesGivesTheInnermostAlone) {
    EXPECT_EQ(NodesAt(g.graph, 30, 30), IdsOf(g.c));
    EXPECT_EQ(NodesAt(g.graph, 70, 70), IdsOf(g.b));
    EXPECT_EQ(NodesAt(g.graph, 5, 5), IdsOf(g.a));
    EXPECT_EQ(NodesAt(g.graph, 200, 200), std::vector<int>());
}

TEST_F(NodeHits, RectangleThatCrossesANodeGivesItAheadOfTheOneAround) {
    EXPECT_EQ(NodesAt(g.graph, 50, 50, 70, 70), IdsOf(g.c, g.b));
}

TEST_F(NodeHits, RectangleAroundEverythingGivesEverythingByRisingId) {
    EXPECT_EQ(NodesAt(g.graph, -10, -10, 200, 200), IdsOf(g.a, g.b, g.c));
}

TEST_F(NodeHits, TouchingEdgesCountAsOverlap) {
    EXPECT_EQ(NodesAt(g.graph, 100, 100, 120, 120), IdsOf(g.a));
    EXPECT_EQ(NodesAt(g.graph, -20, -20, 0, 0), IdsOf(g.a));
    EXPECT_EQ(NodesAt(g.graph, 100.5, 0, 120, 120), std::vector<int>());
}

TEST_F(NodeHits, QueryOnTheBorderTouchesAndDoesNotLieInside) {
    EXPECT_EQ(NodesAt(g.graph, 20, 30), IdsOf(g.c, g.b));
}

// An owner counts as enclosing only while a node that it owns encloses the query too.
TEST_F(NodeHits, InnermostIsJudgedByOwnershipAndNotBySize) {
    Put(g.c, 300, 300, 10, 10);
    EXPECT_EQ(NodesAt(g.graph, 30, 30), IdsOf(g.b));
    Node d = g.root.AddNode();
    Put(d, 25, 25, 10, 10);
    EXPECT_EQ(NodesAt(g.graph, 30, 30), IdsOf(g.b, d));
}

TEST_F(NodeHits, RootTakesPartOnceItHasAVisualRecord) {
    EXPECT_EQ(NodesAt(g.graph, 5, 5), IdsOf(g.a));
    Put(g.root, -50, -50, 500, 500);
    EXPECT_EQ(NodesAt(g.graph, 5, 5), IdsOf(g.a));
    EXPECT_EQ(NodesAt(g.graph, 300, 300), IdsOf(g.root));
    EXPECT_EQ(NodesAt(g.graph, -60, -60, 600, 600), IdsOf(g.root, g.a, g.b, g.c));
}

TEST_F(NodeHits, RootAtTheOriginTakesPartAsAPoint) {
    (void)g.root.GetPosition();
    EXPECT_EQ(NodesAt(g.graph, 0, 0), IdsOf(g.root, g.a));
}

TEST_F(NodeHits, MissRemovedNodesAndTheirContents) {
    g.a.Remove();
    EXPECT_EQ(NodesAt(g.graph, 30, 30), std::vector<int>());
    EXPECT_EQ(NodesAt(g.graph, -10, -10, 200, 200), std::vector<int>());
}

TEST_F(NodeHits, MissBreakNodes) {
    Edge edge = g.c.LinkTo(g.c);
    Route(edge, g.b, {{30, 30}, {31, 31}});
    EXPECT_EQ(NodesAt(g.graph, 30, 30), IdsOf(g.c));
}

TEST_F(NodeHits, FollowEveryMoveAndResize) {
    EXPECT_EQ(NodesAt(g.graph, 30, 30), IdsOf(g.c));
    g.c.SetPosition(500, 500);
    EXPECT_EQ(NodesAt(g.graph, 30, 30), IdsOf(g.b));
    EXPECT_EQ(NodesAt(g.graph, 510, 510), IdsOf(g.c));
    g.c.SetSize({5, 5});
    EXPECT_EQ(NodesAt(g.graph, 510, 510), std::vector<int>());
}

TEST_F(NodeHits, FollowAChangeOfOwner) {
    EXPECT_EQ(NodesAt(g.graph, 30, 30), IdsOf(g.c));
    g.c.SetOwner(g.root);
    EXPECT_EQ(NodesAt(g.graph, 30, 30), IdsOf(g.b, g.c));
}

TEST_F(NodeHits, NodeThatOwnsItselfIsNeverTheInnermost) {
    g.c.SetOwner(g.c);
    EXPECT_EQ(NodesAt(g.graph, 30, 30), IdsOf(g.b));
    EXPECT_EQ(NodesAt(g.graph, 50, 50, 70, 70), IdsOf(g.c, g.b));
    g.c.SetOwner(g.b);
}

TEST_F(NodeHits, InvertedRectangleIsTakenAsItIs) {
    EXPECT_EQ(NodesAt(g.graph, 70, 70, 50, 50), IdsOf(g.b));
    EXPECT_EQ(NodesAt(g.graph, 30, 30, 10, 10), IdsOf(g.b));
    EXPECT_EQ(NodesAt(g.graph, 150, 150, -50, -50), std::vector<int>());
}

TEST_F(NodeHits, BoundsThatAreNoNumbersSetNothingApart) {
    EXPECT_EQ(NodesAt(g.graph, kNaN, kNaN, kNaN, kNaN), IdsOf(g.a, g.b, g.c));
    EXPECT_EQ(NodesAt(g.graph, kNaN, 200, 200, 300), std::vector<int>());
    Put(g.c, kNaN, 20, 40, 40);
    EXPECT_EQ(NodesAt(g.graph, 1000, 30), IdsOf(g.c));
}

TEST_F(NodeHits, InfiniteRectangleMeetsEverything) {
    EXPECT_EQ(NodesAt(g.graph, -kInfinity, -kInfinity, kInfinity, kInfinity), IdsOf(g.a, g.b, g.c));
    EXPECT_EQ(NodesAt(g.graph, kInfinity, kInfinity, -kInfinity, -kInfinity), std::vector<int>());
}

TEST_F(NodeHits, NegativeSizesAreTakenAsTheyAre) {
    Put(g.a, 100, 100, -50, -50);
    EXPECT_EQ(NodesAt(g.graph, 70, 110), std::vector<int>());
    EXPECT_EQ(NodesAt(g.graph, 40, 40, 120, 120), IdsOf(g.a, g.b, g.c));
}

class EdgeHits : public ::testing::Test {
protected:
    void Line(point<double> from, point<double> to) { Route(g.edge, g.root, {from, to}); }
    [[nodiscard]] bool Hit(double x1, double y1, double x2, double y2) const {
        return IsHit(g.graph, x1, y1, x2, y2);
    }
    Arrow g;
};

TEST_F(EdgeHits, EndInsideIsAHit) {
    Line({10, 10}, {50, 50});
    EXPECT_TRUE(Hit(5, 5, 15, 15));
    EXPECT_TRUE(Hit(45, 45, 55, 55));
    EXPECT_TRUE(Hit(10, 10, 10, 10));
}

TEST_F(EdgeHits, SegmentThroughTheRectangleIsAHitWithBothEndsOutside) {
    Line({0, 0}, {100, 50});
    EXPECT_TRUE(Hit(40, 15, 60, 35));
    EXPECT_FALSE(Hit(40, 40, 60, 60));
    EXPECT_FALSE(Hit(40, 0, 60, 10));
}

TEST_F(EdgeHits, SteepSegmentThroughTopAndBottomIsAHit) {
    Line({50, 0}, {52, 100});
    EXPECT_TRUE(Hit(45, 40, 55, 60));
    EXPECT_FALSE(Hit(60, 40, 70, 60));
}

TEST_F(EdgeHits, UprightAndLevelSegmentsAreHit) {
    Line({50, 0}, {50, 100});
    EXPECT_TRUE(Hit(45, 40, 55, 60));
    EXPECT_FALSE(Hit(55, 40, 65, 60));
    Line({0, 50}, {100, 50});
    EXPECT_TRUE(Hit(40, 45, 60, 55));
    EXPECT_FALSE(Hit(40, 55, 60, 65));
}

TEST_F(EdgeHits, TouchOfACornerIsAHitWhereASideShowsIt) {
    Line({50, 150}, {150, 50});
    EXPECT_TRUE(Hit(0, 0, 100, 100));
    Line({-50, 50}, {50, -50});
    EXPECT_TRUE(Hit(0, 0, 100, 100));
    Line({-10, 10}, {10, 30});
    EXPECT_TRUE(Hit(0, 0, 100, 20));
}

// It lies on one side of the rectangle as a whole, and meets two of its corners all the same.
TEST_F(EdgeHits, SegmentAlongASideWithBothEndsBeyondItIsMissed) {
    Line({10, -10}, {10, 50});
    EXPECT_FALSE(Hit(0, 0, 10, 20));
    EXPECT_FALSE(Hit(10, 0, 30, 20));
    EXPECT_TRUE(Hit(9, 0, 11, 20));
    Line({-10, 20}, {30, 20});
    EXPECT_FALSE(Hit(0, 0, 10, 20));
    EXPECT_FALSE(Hit(0, 20, 10, 30));
    EXPECT_TRUE(Hit(0, 0, 10, 20.5));
}

TEST_F(EdgeHits, RouteOfOneBendCannotBeHit) {
    Route(g.edge, g.root, {{10, 10}});
    EXPECT_FALSE(Hit(0, 0, 20, 20));
    g.edge.RemoveBreakNodes();
    EXPECT_FALSE(Hit(-kInfinity, -kInfinity, kInfinity, kInfinity));
}

TEST_F(EdgeHits, EverySegmentOfALongRouteCanBeHit) {
    std::vector<point<double>> points;
    for (int i = 0; i < 40; ++i) points.push_back({100.0 * i, i % 2 == 0 ? 0.0 : 60.0});
    Route(g.edge, g.root, points);
    for (int i = 0; i + 1 < 40; ++i) {
        const double x = 100.0 * i + 50.0;
        EXPECT_TRUE(Hit(x - 1, 29, x + 1, 31)) << "segment " << i;
        EXPECT_FALSE(Hit(x - 1, 50, x + 1, 55)) << "segment " << i;
    }
}

TEST_F(EdgeHits, GiveEachEdgeOnceByRisingId) {
    Edge second = g.b.LinkTo(g.a);
    Edge third = g.a.LinkTo(g.a);
    Route(third, g.root, {{0, 0}, {10, 10}, {0, 20}, {10, 0}});
    Route(g.edge, g.root, {{0, 0}, {10, 10}});
    Route(second, g.root, {{500, 500}, {600, 600}});
    EXPECT_EQ(Ids(g.graph->HitEdgeTest(0, 0, 10, 10)), IdsOf(g.edge, third));
    EXPECT_EQ(Ids(g.graph->HitEdgeTest(0, 0, 10, 10)), IdsOf(g.edge, third));
}

TEST_F(EdgeHits, FollowEveryMoveOfABend) {
    Line({0, 0}, {10, 10});
    EXPECT_TRUE(Hit(5, 5, 6, 6));
    Node(g.edge.GetBreakNodes().GetItem(1)).SetPosition(0, 100);
    EXPECT_FALSE(Hit(5, 5, 6, 6));
    EXPECT_TRUE(Hit(-1, 50, 1, 51));
}

TEST_F(EdgeHits, FollowNewRoutesAndRemovals) {
    Line({0, 0}, {10, 10});
    EXPECT_TRUE(Hit(0, 0, 10, 10));
    Line({50, 50}, {60, 60});
    EXPECT_FALSE(Hit(0, 0, 10, 10));
    EXPECT_TRUE(Hit(50, 50, 60, 60));
    g.edge.Remove();
    EXPECT_FALSE(Hit(50, 50, 60, 60));
}

// The route goes by who owned the ends when it was last computed.
TEST_F(EdgeHits, TestComputesTheRouteAndKeepsIt) {
    Line({0, 0}, {10, 10});
    EXPECT_TRUE(Hit(0, 0, 10, 10));
    Node c = g.root.AddNode();
    g.a.SetOwner(c);
    g.b.SetOwner(c);
    EXPECT_EQ(g.edge.GetBreakNodes().GetCount(), 2);
    EXPECT_TRUE(Hit(0, 0, 10, 10));
}

TEST_F(EdgeHits, SegmentsWithBoundsThatAreNoNumbersAreJudgedByTheComparisons) {
    Line({kNaN, 5}, {10, 10});
    EXPECT_TRUE(Hit(9, 9, 11, 11));
    EXPECT_FALSE(Hit(100, 100, 110, 110));
    Line({0, 0}, {10, 10});
    EXPECT_FALSE(Hit(kNaN, kNaN, kNaN, kNaN));
    EXPECT_FALSE(Hit(kInfinity, kInfinity, kInfinity, kInfinity));
    EXPECT_TRUE(Hit(-kInfinity, -kInfinity, kInfinity, kInfinity));
}

}  // namespace
}  // namespace nodeline::test
