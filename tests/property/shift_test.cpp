#include <gtest/gtest.h>
#include <nodeline/ops/graph_ops.h>
#include <support/bits.h>
#include <support/random_graph.h>

#include <functional>
#include <set>
#include <vector>

namespace nodeline::test {
namespace {

using Point = point<double>;

void ShiftNodeByNode(Node node, const Point& delta) {
    _shift(node, delta);
    for (const Node& child : node.GetOwned()) {
        ForEachNodeIn(
            child, [&](const Node& n) { _shift_position(n, delta); }, false, true);
    }
}

void UnshiftNodeByNode(const Node& node) {
    for (const Node& child : node.GetOwned()) ForEachNodeIn(child, UnshiftWithEdges, true, true);
}

// What moves, in an order that does not depend on ids.
std::vector<Point> Positions(const RandomGraph& g) {
    std::vector<Point> points;
    for (const Node& node : g.AllNodes()) points.push_back(node.GetPosition());
    for (const Edge& edge : g.edges) {
        for (const Node& bend : edge.GetBreakNodes()) points.push_back(bend.GetPosition());
        std::set<int> asked;
        for (Node end : {edge.From(), edge.To()}) {
            for (Node owner = end.GetOwner(); owner; owner = owner.GetOwner()) {
                if (!asked.insert(owner.GetID()).second) continue;
                for (const Node& bend : edge.GetBreakNodesIn(owner)) {
                    points.push_back(bend.GetPosition());
                }
            }
        }
    }
    return points;
}

// Two graphs alike: one is moved as a whole, the other node by node.
class Twins {
public:
    explicit Twins(std::uint64_t seed)
        : whole(seed, plan(seed)), single(seed, plan(seed)), random_(seed) {
        Random place(seed);
        whole.Place(place);
        place = Random(seed);
        single.Place(place);
    }

    // Applies `f` to the same node of both.
    void Do(const std::function<void(RandomGraph&, Node)>& for_whole,
            const std::function<void(RandomGraph&, Node)>& for_single) {
        const auto node =
            static_cast<std::size_t>(random_.Below(static_cast<int>(whole.nodes.size()) + 1));
        for_whole(whole, whole.AllNodes()[node]);
        for_single(single, single.AllNodes()[node]);
    }

    void ExpectAlike() const {
        const std::vector<Point> expected = Positions(single);
        const std::vector<Point> points = Positions(whole);
        ASSERT_EQ(points.size(), expected.size());
        for (std::size_t i = 0; i < points.size(); ++i) {
            ASSERT_TRUE(SameBits(points[i], expected[i]))
                << "point " << i << ": " << points[i].x << ' ' << points[i].y << " instead of "
                << expected[i].x << ' ' << expected[i].y;
        }
    }

    RandomGraph whole;
    RandomGraph single;

private:
    static RandomGraphPlan plan(std::uint64_t seed) {
        RandomGraphPlan plan;
        plan.nodes = 20 + static_cast<int>(seed % 4) * 15;
        plan.edges = 2 * plan.nodes;
        plan.moves = 10;
        plan.removals = static_cast<int>(seed % 3);
        return plan;
    }

    Random random_;
};

class Shift : public ::testing::TestWithParam<int> {
protected:
    [[nodiscard]] static std::uint64_t seed() { return static_cast<std::uint64_t>(GetParam()); }
};

TEST_P(Shift, AsAWholeGivesTheBitsOfNodeByNode) {
    Twins twins(seed());
    Random random(seed());
    for (int i = 0; i < 4; ++i) {
        const Point delta =
            random.OneIn(2) ? Point{0.0, 0.0} : Point{random.Real(-99, 99), random.Real(-99, 99)};
        twins.Do([&](RandomGraph&, const Node& node) { ShiftPosition(node, delta); },
                 [&](RandomGraph&, const Node& node) { ShiftNodeByNode(node, delta); });
        ASSERT_NO_FATAL_FAILURE(twins.ExpectAlike());
    }
}

TEST_P(Shift, BackAsAWholeGivesTheBitsOfNodeByNode) {
    Twins twins(seed());
    for (int i = 0; i < 3; ++i) {
        twins.Do([](RandomGraph&, const Node& node) { UnshiftPosition(node); },
                 [](RandomGraph&, const Node& node) { UnshiftNodeByNode(node); });
        ASSERT_NO_FATAL_FAILURE(twins.ExpectAlike());
    }
}

// Moving asks edges for their bends in owners, which shows in later routes.
TEST_P(Shift, LeavesTheSameStretchesBehind) {
    Twins twins(seed());
    for (RandomGraph* g : {&twins.whole, &twins.single}) {
        for (Edge edge : g->edges) edge.RemoveBreakNodes();
    }
    ShiftPosition(twins.whole.root, 0.0, 0.0);
    ShiftNodeByNode(twins.single.root, {0.0, 0.0});
    for (RandomGraph* g : {&twins.whole, &twins.single}) {
        Random random(seed());
        Node box = g->root.AddNode();
        for (Node node : g->nodes) {
            if (random.OneIn(2)) node.SetOwner(box);
        }
        for (Edge edge : g->edges) {
            if (edge.To().GetOwner()) edge.AddBreakNodesIn(edge.To().GetOwner(), 2);
        }
    }
    ASSERT_NO_FATAL_FAILURE(twins.ExpectAlike());
}

INSTANTIATE_TEST_SUITE_P(Seeds, Shift, ::testing::Range(1, 61));

// A shift of nothing and its opposite lead back, where no digits are lost.
TEST(ShiftAndBack, RestoreWholeNumbers) {
    for (std::uint64_t seed = 1; seed <= 30; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        RandomGraph g(seed);
        Random random(seed);
        g.Place(random);
        const auto round = [](Node node) {
            const Point p = node.GetPosition();
            node.SetPosition(static_cast<int>(p.x), static_cast<int>(p.y));
        };
        for (const Node& node : g.AllNodes()) round(node);
        for (const Edge& edge : g.edges) {
            for (const Node& end : {edge.From(), edge.To()}) {
                for (Node owner = end.GetOwner(); owner; owner = owner.GetOwner()) {
                    for (const Node& bend : edge.GetBreakNodesIn(owner)) round(bend);
                }
            }
        }
        const std::vector<Point> before = Positions(g);
        ShiftPosition(g.root, 0.0, 0.0);
        EXPECT_NE(Positions(g), before);
        UnshiftPosition(g.root);
        EXPECT_EQ(Positions(g), before);
    }
}

}  // namespace
}  // namespace nodeline::test
