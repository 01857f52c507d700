#include <gtest/gtest.h>
#include <nodeline/model/graph.h>
#include <support/ids.h>
#include <support/plain_set.h>
#include <support/random.h>

#include <map>
#include <optional>
#include <vector>

namespace nodeline::test {
namespace {

// A storage of numbers, with every operation as the steps that define it.
class PlainStorage {
public:
    struct PlainNode {
        std::optional<int> owner;
        PlainSet owned, out, in, parents, children;
    };
    struct PlainEdge {
        std::optional<int> from, to;
    };

    PlainStorage() { nodes[0]; }

    void AddNode(int owner, int id) {
        nodes[id].owner = owner;
        nodes[owner].owned.Add(id);
    }

    void Link(int from, int to, int id) {
        edges[id] = {from, to};
        nodes[from].out.Add(id);
        nodes[from].children.ids.clear();
        nodes[to].in.Add(id);
        nodes[to].parents.ids.clear();
    }

    void SetOwner(int node, int owner) {
        for (int p = owner; p != 0;) {
            p = *nodes[p].owner;
            if (p == node) return;
        }
        unlink(node);
        nodes[node].owner = owner;
        nodes[owner].owned.Add(node);
    }

    void RemoveNode(int node) {
        unlink(node);
        delete_node(node);
    }

    void RemoveEdge(int edge) {
        const int source = *edges[edge].from;
        nodes[source].out.Remove(edge);
        nodes[source].children.ids.clear();
        delete_edge_to(edge);
        edges[edge] = {};
    }

    const std::vector<int>& Children(int node) {
        PlainNode& n = nodes[node];
        if (n.children.ids.empty()) {
            for (const int edge : n.out.ids) n.children.Add(*edges[edge].to);
            n.children.SortUnique();
        }
        return n.children.ids;
    }

    const std::vector<int>& Parents(int node) {
        PlainNode& n = nodes[node];
        if (n.parents.ids.empty()) {
            for (const int edge : n.in.ids) n.parents.Add(*edges[edge].from);
            n.parents.SortUnique();
        }
        return n.parents.ids;
    }

    std::map<int, PlainNode> nodes;
    std::map<int, PlainEdge> edges;

private:
    void unlink(int node) { nodes[*nodes[node].owner].owned.Remove(node); }

    void delete_node(int node) {
        PlainNode& n = nodes[node];
        while (!n.owned.ids.empty()) {
            const int first = n.owned.ids[0];
            n.owned.Remove(first);
            delete_node(first);
        }
        while (!n.in.ids.empty()) {
            const int first = n.in.ids[0];
            n.in.Remove(first);
            delete_edge_from(first);
        }
        n.owner.reset();
        for (PlainSet* set : {&n.owned, &n.out, &n.in, &n.parents, &n.children}) set->ids.clear();
    }

    void delete_edge_from(int edge) {
        const int source = *edges[edge].from;
        nodes[source].out.Remove(edge);
        nodes[source].children.ids.clear();
        RemoveEdge(edge);
    }

    void delete_edge_to(int edge) {
        const int target = *edges[edge].to;
        nodes[target].in.Remove(edge);
        nodes[target].parents.ids.clear();
    }
};

class Session {
public:
    explicit Session(std::uint64_t seed) : random_(seed), graph_(new Graph(), true) {
        nodes_.emplace(0, graph_->GetRoot());
    }

    void Run() {
        for (int step = 0; step < 120; ++step) {
            act();
            // Neighbours are kept once they are computed, so asking is part of the sequence.
            if (random_.OneIn(3)) {
                ASSERT_NO_FATAL_FAILURE(compare_neighbours());
            }
            ASSERT_NO_FATAL_FAILURE(compare());
        }
        ASSERT_NO_FATAL_FAILURE(compare_neighbours());
    }

    int strays = 0;

private:
    [[nodiscard]] std::vector<Node> alive(bool with_root) const {
        std::vector<Node> nodes;
        for (const auto& [id, node] : nodes_) {
            if (id == 0 ? with_root : static_cast<bool>(node.GetOwner())) nodes.push_back(node);
        }
        return nodes;
    }

    void act() {
        const std::vector<Node> inner = alive(false);
        const std::vector<Node> all = alive(true);
        const int action = random_.Below(12);
        if (inner.size() < 4 || action < 3) return add(random_.Of(all));
        if (action < 8) return link(random_.Of(inner), random_.Of(inner));
        if (action == 8) return move(random_.Of(inner), random_.Of(all));
        if (action == 9) return remove_edge();
        if (action == 10) remove(random_.Of(inner));
    }

    void add(Node owner) {
        const Node node = owner.AddNode();
        nodes_.emplace(node.GetID(), node);
        plain_.AddNode(owner.GetID(), node.GetID());
    }

    void link(Node from, const Node& to) {
        const Edge edge = from.LinkTo(to);
        edges_.emplace(edge.GetID(), edge);
        plain_.Link(from.GetID(), to.GetID(), edge.GetID());
    }

    void move(Node node, const Node& owner) {
        if (node == owner) return;
        node.SetOwner(owner);
        plain_.SetOwner(node.GetID(), owner.GetID());
    }

    void remove_edge() {
        std::vector<Edge> edges;
        for (const auto& [id, edge] : edges_) {
            if (edge.From()) edges.push_back(edge);
        }
        if (edges.empty()) return;
        Edge edge = random_.Of(edges);
        plain_.RemoveEdge(edge.GetID());
        edge.Remove();
    }

    void remove(Node node) {
        node.Remove();
        plain_.RemoveNode(node.GetID());
    }

    static std::optional<int> id_or_none(const Node& node) {
        return node ? std::optional<int>(node.GetID()) : std::nullopt;
    }

    void compare() {
        for (const auto& [id, node] : nodes_) {
            const PlainStorage::PlainNode& plain = plain_.nodes.at(id);
            ASSERT_EQ(id_or_none(node.GetOwner()), plain.owner) << "node " << id;
            ASSERT_EQ(Ids(node.GetOwned()), plain.owned.ids) << "node " << id;
            ASSERT_EQ(Ids(node.GetEdgesOut()), plain.out.ids) << "node " << id;
            ASSERT_EQ(Ids(node.GetEdgesIn()), plain.in.ids) << "node " << id;
            for (const Edge& edge : node.GetEdgesIn()) {
                if (edge.From().IsDummy()) ++strays;
            }
        }
        for (const auto& [id, edge] : edges_) {
            ASSERT_EQ(id_or_none(edge.From()), plain_.edges[id].from) << "edge " << id;
            ASSERT_EQ(id_or_none(edge.To()), plain_.edges[id].to) << "edge " << id;
        }
    }

    void compare_neighbours() {
        for (const auto& [id, node] : nodes_) {
            ASSERT_EQ(Ids(node.GetChildren()), plain_.Children(id)) << "node " << id;
            ASSERT_EQ(Ids(node.GetParents()), plain_.Parents(id)) << "node " << id;
        }
    }

    Random random_;
    graph_ptr2<Graph> graph_;
    std::map<int, Node> nodes_;
    std::map<int, Edge> edges_;
    PlainStorage plain_;
};

TEST(Storage, IsWhatItsStepsSayAfterAnySequenceOfCalls) {
    int strays = 0;
    for (std::uint64_t seed = 1; seed <= 200; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Session session(seed);
        ASSERT_NO_FATAL_FAILURE(session.Run());
        strays += session.strays;
    }
    // Edges that removed nodes left behind are among what was compared.
    EXPECT_GT(strays, 1000);
}

}  // namespace
}  // namespace nodeline::test
