#include <gtest/gtest.h>
#include <nodeline/ops/graph_ops.h>
#include <support/ids.h>
#include <support/random_graph.h>

#include <cmath>
#include <limits>
#include <map>
#include <ostream>
#include <vector>

namespace nodeline::test {
namespace {

struct Query {
    double x1, y1, x2, y2;
};

std::ostream& operator<<(std::ostream& out, const Query& q) {
    return out << q.x1 << ' ' << q.y1 << ' ' << q.x2 << ' ' << q.y2;
}

// What hit tests know: nodes and edges that have a visual record, by id.
struct Known {
    std::map<int, Node> nodes;
    std::map<int, Edge> edges;
};

std::vector<int> NodesByHand(const Known& known, const Query& q) {
    std::vector<Node> touching;
    std::vector<Node> enclosing;
    for (const auto& [id, node] : known.nodes) {
        if (!node.GetOwner() && id != 0) continue;
        const double x = node.GetPosition().x;
        const double y = node.GetPosition().y;
        const double w = node.GetSize().cx;
        const double h = node.GetSize().cy;
        if (q.x1 > x + w || x > q.x2 || q.y1 > y + h || y > q.y2) continue;
        const bool inside = q.x1 > x && x + w > q.x2 && q.y1 > y && y + h > q.y2;
        (inside ? enclosing : touching).push_back(node);
    }
    for (const Node& n : enclosing) {
        bool is_deepest = true;
        for (const Node& other : enclosing) {
            if (!IsRoot(other) && other.GetOwner() == n) is_deepest = false;
        }
        if (is_deepest) touching.push_back(n);
    }
    std::vector<int> ids;
    for (const Node& node : touching) ids.push_back(node.GetID());
    return ids;
}

bool IsSegmentHit(const Query& q, const point<double>& a, const point<double>& b) {
    if (q.x1 <= a.x && a.x <= q.x2 && q.y1 <= a.y && a.y <= q.y2) return true;
    if (q.x1 <= b.x && b.x <= q.x2 && q.y1 <= b.y && b.y <= q.y2) return true;
    if (a.x >= q.x2 && b.x >= q.x2) return false;
    if (q.x1 >= a.x && q.x1 >= b.x) return false;
    if (a.y >= q.y2 && b.y >= q.y2) return false;
    if (q.y1 >= a.y && q.y1 >= b.y) return false;
    const double dx = a.x - b.x;
    const double dy = a.y - b.y;
    double y = (q.x2 - a.x) * dy / dx + a.y;
    if (q.y1 <= y && y <= q.y2) return true;
    y = (q.x1 - a.x) * dy / dx + a.y;
    if (q.y1 <= y && y <= q.y2) return true;
    const double x = dx * (q.y1 - a.y) / dy + a.x;
    return q.x1 <= x && x <= q.x2;
}

std::vector<int> EdgesByHand(const Known& known, const Query& q) {
    std::vector<int> ids;
    for (const auto& [id, edge] : known.edges) {
        const NodeSet bends = edge.GetBreakNodes();
        for (int i = 0; i + 1 < bends.GetCount(); ++i) {
            if (!IsSegmentHit(q, bends.GetItem(i).GetPosition(),
                              bends.GetItem(i + 1).GetPosition()))
                continue;
            ids.push_back(id);
            break;
        }
    }
    return ids;
}

// Mostly plain numbers, some on a coarse grid so that borders meet, and now and then one that is
// hard to compare.
double Coordinate(Random& random) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    static const std::vector<double> odd{
        kInfinity, -kInfinity, std::numeric_limits<double>::quiet_NaN(), 1e308, -1e308, 0.0};
    if (random.OneIn(25)) return random.Of(odd);
    if (random.OneIn(2)) return 50.0 * random.Between(-10, 10);
    return random.Real(-600.0, 600.0);
}

double Extent(Random& random) {
    return random.OneIn(20) ? Coordinate(random) : std::fabs(Coordinate(random)) / 2;
}

class Session {
public:
    explicit Session(std::uint64_t seed) : random_(seed), g_(seed, {60, 90, 10, 2, 4}) {
        g_.Place(random_);
        for (const Node& node : g_.AllNodes()) known_.nodes.emplace(node.GetID(), node);
        for (const Edge& edge : g_.edges) known_.edges.emplace(edge.GetID(), edge);
        for (int i = 0; i < 30; ++i) move_something();
    }

    void Run() {
        for (int round = 0; round < 25; ++round) {
            // The more queries in a row, the more of them are answered by the index.
            const int queries = random_.Between(1, 8);
            for (int i = 0; i < queries; ++i) ASSERT_NO_FATAL_FAILURE(compare());
            change_something();
        }
    }

    int nodes_found = 0;
    int edges_found = 0;

private:
    Query query() {
        Query q{Coordinate(random_), Coordinate(random_), 0, 0};
        if (random_.OneIn(3)) {
            q.x2 = q.x1;
            q.y2 = q.y1;
        } else {
            q.x2 = random_.OneIn(8) ? Coordinate(random_) : q.x1 + Extent(random_);
            q.y2 = random_.OneIn(8) ? Coordinate(random_) : q.y1 + Extent(random_);
        }
        return q;
    }

    void compare() {
        const Query q = query();
        const auto nodes = Ids(g_.graph->HitNodeTest(q.x1, q.y1, q.x2, q.y2));
        const auto edges = Ids(g_.graph->HitEdgeTest(q.x1, q.y1, q.x2, q.y2));
        ASSERT_EQ(nodes, NodesByHand(known_, q)) << "query " << q;
        ASSERT_EQ(edges, EdgesByHand(known_, q)) << "query " << q;
        nodes_found += static_cast<int>(nodes.size());
        edges_found += static_cast<int>(edges.size());
    }

    void move_something() {
        if (!g_.nodes.empty()) {
            Node node = random_.Of(g_.nodes);
            node.SetPosition(Coordinate(random_), Coordinate(random_));
            if (random_.OneIn(2)) node.SetSize({Extent(random_), Extent(random_)});
        }
        if (!g_.edges.empty()) {
            const NodeSet bends = random_.Of(g_.edges).GetBreakNodes();
            if (bends.GetCount() == 0) return;
            Node bend = bends.GetItem(random_.Below(bends.GetCount()));
            bend.SetPosition(Coordinate(random_), Coordinate(random_));
        }
    }

    void change_something() {
        if (g_.nodes.empty()) return;
        Node node = random_.Of(g_.nodes);
        Node other = random_.OneIn(3) ? g_.root : random_.Of(g_.nodes);
        switch (random_.Below(9)) {
            case 0:
                if (other != node) node.SetOwner(other);
                break;
            case 1: {
                Node fresh = node.AddNode();
                fresh.SetPosition(Coordinate(random_), Coordinate(random_));
                fresh.SetSize({Extent(random_), Extent(random_)});
                g_.nodes.push_back(fresh);
                known_.nodes.emplace(fresh.GetID(), fresh);
                break;
            }
            case 2:
                remove(node);
                break;
            case 3: {
                if (g_.edges.empty()) break;
                Edge edge = random_.Of(g_.edges);
                edge.RemoveBreakNodes();
                edge.AddBreakNodesIn(edge.From().GetOwner() ? edge.From().GetOwner() : g_.root,
                                     random_.Between(0, 20));
                for (Node bend : edge.GetBreakNodes()) {
                    bend.SetPosition(Coordinate(random_), Coordinate(random_));
                }
                break;
            }
            case 4: {
                if (g_.edges.empty()) break;
                const int place = random_.Below(static_cast<int>(g_.edges.size()));
                Edge edge = g_.edges[static_cast<std::size_t>(place)];
                edge.Remove();
                known_.edges.erase(edge.GetID());
                g_.edges.erase(g_.edges.begin() + place);
                break;
            }
            case 5:
                ShiftPosition(node, Coordinate(random_), 10.0);
                break;
            case 6:
                MoveNode(node, Coordinate(random_), Coordinate(random_));
                break;
            default:
                move_something();
        }
    }

    // Of what goes, only the node itself is forgotten; the contents keep a place, and no owner.
    void remove(Node node) {
        node.Remove();
        known_.nodes.erase(node.GetID());
        std::vector<Node> left;
        for (Node n : g_.nodes) {
            if (!n.IsDummy()) left.push_back(n);
        }
        g_.nodes = left;
        std::vector<Edge> edges;
        for (const Edge& edge : g_.edges) {
            if (edge.From()) edges.push_back(edge);
        }
        g_.edges = edges;
    }

    Random random_;
    RandomGraph g_;
    Known known_;
};

TEST(HitTests, AnswerThroughTheIndexWhatTheyAnswerByHand) {
    int nodes_found = 0;
    int edges_found = 0;
    for (std::uint64_t seed = 1; seed <= 50; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Session session(seed);
        ASSERT_NO_FATAL_FAILURE(session.Run());
        nodes_found += session.nodes_found;
        edges_found += session.edges_found;
    }
    EXPECT_GT(nodes_found, 10000);
    EXPECT_GT(edges_found, 10000);
}

// Large enough for an index of several levels.
TEST(HitTests, AnswerAlikeOverAWideField) {
    Random random(7);
    const graph_ptr2<Graph> graph(new Graph(), true);
    Known known;
    std::vector<Node> nodes;
    for (int i = 0; i < 6000; ++i) {
        Node node = graph->GetRoot().AddNode();
        node.SetPosition(random.Real(0, 20000), random.Real(0, 20000));
        node.SetSize({random.Real(1, 300), random.Real(1, 300)});
        nodes.push_back(node);
        known.nodes.emplace(node.GetID(), node);
    }
    for (int i = 0; i < 3000; ++i) {
        Edge edge = Node(random.Of(nodes)).LinkTo(random.Of(nodes));
        edge.AddBreakNodesIn(graph->GetRoot(), random.Between(1, 30));
        point<double> p{random.Real(0, 20000), random.Real(0, 20000)};
        for (Node bend : edge.GetBreakNodes()) {
            bend.SetPosition(p);
            p = p + point<double>{random.Real(-200, 200), random.Real(-200, 200)};
        }
        known.edges.emplace(edge.GetID(), edge);
    }
    int found = 0;
    for (int i = 0; i < 60; ++i) {
        const double x = random.Real(0, 20000);
        const double y = random.Real(0, 20000);
        const Query q{x, y, x + random.Real(0, 500), y + random.Real(0, 500)};
        const auto hit_nodes = Ids(graph->HitNodeTest(q.x1, q.y1, q.x2, q.y2));
        const auto hit_edges = Ids(graph->HitEdgeTest(q.x1, q.y1, q.x2, q.y2));
        ASSERT_EQ(hit_nodes, NodesByHand(known, q)) << "query " << q;
        ASSERT_EQ(hit_edges, EdgesByHand(known, q)) << "query " << q;
        found += static_cast<int>(hit_nodes.size() + hit_edges.size());
    }
    EXPECT_GT(found, 100);
}

}  // namespace
}  // namespace nodeline::test
