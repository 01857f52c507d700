#include <gtest/gtest.h>
#include <nodeline/ops/graph_ops.h>
#include <support/named_graphs.h>

#include <vector>

namespace nodeline::test {
namespace {

using Point = point<double>;

std::vector<Point> Bends(const Edge& edge, const Node& owner) {
    std::vector<Point> points;
    for (const Node& bend : edge.GetBreakNodesIn(owner)) points.push_back(bend.GetPosition());
    return points;
}

void Bend(Edge edge, const Node& owner, const std::vector<Point>& points) {
    edge.AddBreakNodesIn(owner, static_cast<int>(points.size()));
    const NodeSet bends = edge.GetBreakNodesIn(owner);
    for (int i = 0; i < bends.GetCount(); ++i) {
        Node(bends.GetItem(i)).SetPosition(points[static_cast<std::size_t>(i)]);
    }
}

TEST(Shift, AddsToThePosition) {
    Arrow g;
    g.a.SetPosition(1, 2);
    _shift(g.a, {10, 20});
    EXPECT_EQ(g.a.GetPosition(), (Point{11, 22}));
    EXPECT_EQ(g.b.GetPosition(), (Point{0, 0}));
}

TEST(BreakNodesShift, MovesABendAsOftenAsItsEdgeStandsInTheSet) {
    Fork g;
    Bend(g.to_b, g.root, {{0, 0}, {1, 1}});
    Bend(g.to_c, g.root, {{5, 5}});
    const graph_ptr2<GraphSet<NodeEdgePair>> pairs(new GraphSet<NodeEdgePair>, true);
    pairs->Add({g.b, g.to_b});
    pairs->Add({g.b, g.to_b});
    _break_nodes_shift(pairs, {10, 1}, g.root);
    EXPECT_EQ(Bends(g.to_b, g.root), (std::vector<Point>{{20, 2}, {21, 3}}));
    EXPECT_EQ(Bends(g.to_c, g.root), (std::vector<Point>{{5, 5}}));
    _break_nodes_shift(graph_ptr2<IGraphSet<NodeEdgePair>>(), {10, 1}, g.root);
    EXPECT_EQ(Bends(g.to_c, g.root), (std::vector<Point>{{5, 5}}));
}

TEST(BreakNodesShift, MovesOnlyTheBendsInTheOwner) {
    TwoBoxes g;
    Bend(g.edge, g.a, {{1, 1}});
    Bend(g.edge, g.root, {{2, 2}});
    _break_nodes_shift(GetChildrenEx(g.a), {10, 10}, g.root);
    EXPECT_EQ(Bends(g.edge, g.a), (std::vector<Point>{{1, 1}}));
    EXPECT_EQ(Bends(g.edge, g.root), (std::vector<Point>{{12, 12}}));
}

TEST(ShiftWithEdges, MovesBendsOfEdgesToSiblingsAndNotFromThem) {
    Arrow g;
    Bend(g.edge, g.root, {{5, 5}});
    ShiftWithEdges(g.b, {1, 1});
    EXPECT_EQ(Bends(g.edge, g.root), (std::vector<Point>{{5, 5}}));
    ShiftWithEdges(g.a, {1, 1});
    EXPECT_EQ(Bends(g.edge, g.root), (std::vector<Point>{{6, 6}}));
    EXPECT_EQ(g.a.GetPosition(), (Point{1, 1}));
    EXPECT_EQ(g.b.GetPosition(), (Point{1, 1}));
}

TEST(ShiftWithEdges, MovesBendsOfEdgesAcrossTheBorderOfTheOwner) {
    TwoBoxes g;
    Bend(g.edge, g.a, {{1, 1}});
    Bend(g.edge, g.root, {{2, 2}});
    Bend(g.edge, g.b, {{3, 3}});
    ShiftWithEdges(g.x, {10, 0});
    ShiftWithEdges(g.y, {0, 10});
    EXPECT_EQ(Bends(g.edge, g.a), (std::vector<Point>{{11, 1}}));
    EXPECT_EQ(Bends(g.edge, g.root), (std::vector<Point>{{2, 2}}));
    EXPECT_EQ(Bends(g.edge, g.b), (std::vector<Point>{{3, 13}}));
}

TEST(ShiftWithEdges, MovesBendsOfAnEdgeToTheOwnerItselfTwice) {
    Stairs g;
    Edge up = g.b.LinkTo(g.a);
    Bend(up, g.a, {{1, 1}});
    ShiftWithEdges(g.b, {10, 10});
    EXPECT_EQ(Bends(up, g.a), (std::vector<Point>{{21, 21}}));
}

TEST(ShiftWithEdges, OfABreakNodeMovesItAlone) {
    Arrow g;
    Bend(g.edge, g.root, {{1, 1}, {2, 2}});
    ShiftWithEdges(g.edge.GetBreakNodes().GetItem(0), {10, 10});
    EXPECT_EQ(Bends(g.edge, g.root), (std::vector<Point>{{11, 11}, {2, 2}}));
}

TEST(ShiftPosition, OfNothingOverALeafChangesNothing) {
    Arrow g;
    g.a.SetPosition(3, 4);
    Bend(g.edge, g.root, {{5, 5}});
    ShiftPosition(g.a, 0, 0);
    EXPECT_EQ(g.a.GetPosition(), (Point{3, 4}));
    EXPECT_EQ(Bends(g.edge, g.root), (std::vector<Point>{{5, 5}}));
}

TEST(ShiftPosition, OfNothingMakesTheContentsAbsoluteAndUnshiftTakesThemBack) {
    Stairs g;
    g.root.SetPosition(10, 10);
    g.a.SetPosition(1, 1);
    g.b.SetPosition(2, 2);
    ShiftPosition(g.root, 0, 0);
    EXPECT_EQ(g.root.GetPosition(), (Point{10, 10}));
    EXPECT_EQ(g.a.GetPosition(), (Point{11, 11}));
    EXPECT_EQ(g.b.GetPosition(), (Point{13, 13}));
    EXPECT_EQ(g.c.GetPosition(), (Point{13, 13}));
    UnshiftPosition(g.root);
    EXPECT_EQ(g.root.GetPosition(), (Point{10, 10}));
    EXPECT_EQ(g.a.GetPosition(), (Point{1, 1}));
    EXPECT_EQ(g.b.GetPosition(), (Point{2, 2}));
    EXPECT_EQ(g.c.GetPosition(), (Point{0, 0}));
}

TEST(ShiftPosition, AddsUpWithDepth) {
    Stairs g;
    ShiftPosition(g.a, Point{1, 2});
    EXPECT_EQ(g.a.GetPosition(), (Point{1, 2}));
    EXPECT_EQ(g.b.GetPosition(), (Point{2, 4}));
    EXPECT_EQ(g.c.GetPosition(), (Point{3, 6}));
}

TEST(ShiftPosition, LeavesTheEdgesOfTheNodeItselfAlone) {
    Arrow g;
    Bend(g.edge, g.root, {{5, 5}});
    ShiftPosition(g.a, 7, 7);
    EXPECT_EQ(g.a.GetPosition(), (Point{7, 7}));
    EXPECT_EQ(Bends(g.edge, g.root), (std::vector<Point>{{5, 5}}));
}

TEST(ShiftPosition, OfNothingMovesTheBendsInACompoundNodeByItsPosition) {
    Courts g;
    g.c.SetPosition(100, 10);
    Bend(g.x_to_b, g.c, {{1, 1}, {2, 2}});
    Bend(g.b_to_z, g.c, {{3, 3}});
    Bend(g.b_to_z, g.root, {{4, 4}});
    ShiftPosition(g.c, 0, 0);
    EXPECT_EQ(Bends(g.x_to_b, g.c), (std::vector<Point>{{101, 11}, {102, 12}}));
    EXPECT_EQ(Bends(g.b_to_z, g.c), (std::vector<Point>{{103, 13}}));
    EXPECT_EQ(Bends(g.b_to_z, g.root), (std::vector<Point>{{4, 4}}));
    EXPECT_EQ(g.a.GetPosition(), (Point{100, 10}));
    EXPECT_EQ(g.x.GetPosition(), (Point{100, 10}));
}

// Moving asks every edge for its bends in the owner, and whoever was asked counts when the route
// turns.
TEST(ShiftPosition, LeavesAnEmptyStretchInTheOwner) {
    Arrow g;
    ShiftPosition(g.root, 0, 0);
    Node c = g.root.AddNode();
    g.a.SetOwner(c);
    g.b.SetOwner(c);
    Bend(g.edge, c, {{1, 1}, {2, 2}});
    EXPECT_EQ(g.edge.GetBreakNodes().GetCount(), 4);
}

TEST(ShiftPosition, StepMovesByTheOwnersPosition) {
    Stairs g;
    g.a.SetPosition(5, 6);
    g.b.SetPosition(1, 1);
    _shift_position(g.b, {10, 10});
    EXPECT_EQ(g.b.GetPosition(), (Point{16, 17}));
    EXPECT_EQ(g.c.GetPosition(), (Point{0, 0}));
}

TEST(UnshiftWithEdges, TakesTheOwnersPositionOff) {
    Courts g;
    g.c.SetPosition(100, 10);
    g.b.SetPosition(130, 30);
    Bend(g.b_to_z, g.c, {{150, 40}});
    Bend(g.x_to_b, g.c, {{120, 20}});
    UnshiftWithEdges(g.b);
    EXPECT_EQ(g.b.GetPosition(), (Point{30, 20}));
    EXPECT_EQ(Bends(g.b_to_z, g.c), (std::vector<Point>{{50, 30}}));
    EXPECT_EQ(Bends(g.x_to_b, g.c), (std::vector<Point>{{120, 20}}));
}

TEST(MoveNode, WithoutBendsMovesTheNodeAlone) {
    Stairs g;
    Edge edge = g.a.LinkTo(g.root.AddNode());
    MoveNode(g.a, 5, 6);
    EXPECT_EQ(g.a.GetPosition(), (Point{5, 6}));
    EXPECT_EQ(g.b.GetPosition(), (Point{0, 0}));
    EXPECT_EQ(edge.GetBreakNodes().GetCount(), 0);
}

TEST(MoveNode, TakesTheFirstBendOfEdgesOutAndTheLastOfEdgesIn) {
    Arrow g;
    Edge back = g.b.LinkTo(g.a);
    g.a.SetSize({20, 10});
    Bend(g.edge, g.root, {{1, 1}, {2, 2}, {3, 3}});
    Bend(back, g.root, {{4, 4}, {5, 5}});
    MoveNode(g.a, 100, 50);
    EXPECT_EQ(Bends(g.edge, g.root), (std::vector<Point>{{120, 55}, {2, 2}, {3, 3}}));
    EXPECT_EQ(Bends(back, g.root), (std::vector<Point>{{4, 4}, {100, 55}}));
    EXPECT_EQ(g.a.GetPosition(), (Point{100, 50}));
}

TEST(MoveNode, TakesTheEndOfTheWholeRoute) {
    TwoBoxes g;
    Bend(g.edge, g.a, {{1, 1}});
    Bend(g.edge, g.root, {{2, 2}});
    Bend(g.edge, g.b, {{3, 3}});
    MoveNode(g.x, 10, 10);
    MoveNode(g.y, 90, 90);
    EXPECT_EQ(Bends(g.edge, g.a), (std::vector<Point>{{10, 10}}));
    EXPECT_EQ(Bends(g.edge, g.root), (std::vector<Point>{{2, 2}}));
    EXPECT_EQ(Bends(g.edge, g.b), (std::vector<Point>{{90, 90}}));
}

TEST(MoveNode, PlacesTheOneBendOfALoopByTheIncomingRule) {
    Empty g;
    Node n = g.root.AddNode();
    n.SetSize({20, 10});
    Edge loop = n.LinkTo(n);
    Bend(loop, g.root, {{1, 1}});
    MoveNode(n, 100, 50);
    EXPECT_EQ(Bends(loop, g.root), (std::vector<Point>{{100, 55}}));
}

TEST(MoveNode, AsksForNoLayout) {
    Arrow g;
    g.root.store()->clear_make_list();
    MoveNode(g.a, 1, 1);
    EXPECT_FALSE(g.graph->RecalculateLayout(nullptr));
}

#ifdef NDEBUG
TEST(MovingMisuse, EmptyHandlesAndTheRootDoNothing) {
    Empty g;
    _shift(Node(), {1, 1});
    ShiftWithEdges(Node(), {1, 1});
    ShiftPosition(Node(), 1, 1);
    UnshiftPosition(Node());
    MoveNode(Node(), 1, 1);
    UnshiftWithEdges(g.root);
    EXPECT_EQ(g.root.GetPosition(), (Point{0, 0}));
}
#else
TEST(MovingMisuseDeathTest, EmptyHandlesAreCaught) {
    EXPECT_DEATH(_shift(Node(), {1, 1}), "empty handle");
    EXPECT_DEATH(MoveNode(Node(), 1, 1), "empty handle");
}
#endif

}  // namespace
}  // namespace nodeline::test
