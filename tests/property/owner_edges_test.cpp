#include <gtest/gtest.h>
#include <nodeline/ops/graph_ops.h>
#include <nodeline/ops/internal/owner_edges.h>
#include <support/ids.h>
#include <support/random_graph.h>

#include <algorithm>
#include <vector>

namespace nodeline::test {
namespace {

using internal::OwnerEdges;
using EdgeEnd = Node (Edge::*)() const;
using NodeEdges = EdgeSet (Node::*)() const;

struct Side {
    OwnerEdges::Kind siblings;
    OwnerEdges::Kind border;
    graph_ptr2<IGraphSet<NodeEdgePair>> (*siblings_ex)(Node);
    graph_ptr2<IGraphSet<NodeEdgePair>> (*border_ex)(Node);
    EdgeEnd far;
    NodeEdges edges;
};

const std::vector<Side>& Sides() {
    static const std::vector<Side> sides{
        {OwnerEdges::kParents, OwnerEdges::kEdgesIn, GetParentsEx, GetEdgesInEx, &Edge::From,
         &Node::GetEdgesIn},
        {OwnerEdges::kChildren, OwnerEdges::kEdgesOut, GetChildrenEx, GetEdgesOutEx, &Edge::To,
         &Node::GetEdgesOut}};
    return sides;
}

// The node of `owner` that holds `node`; empty where `node` does not lie inside.
Node HolderIn(const Node& owner, Node node) {
    while (node) {
        const Node above = node.GetOwner();
        if (above && above == owner) return node;
        if (above && above == node) break;
        node = above;
    }
    return {};
}

bool IsInGraph(const Node& node) { return static_cast<bool>(GetRoot(node)); }

// The neighbours of a node by their definition: for each edge of each node in it, where the other
// end lies as seen from the owner.
struct Neighbours {
    IdPairs siblings;
    IdPairs border;

    Neighbours(const Node& limit, const Side& side) {
        const Node owner = limit.GetOwner();
        ForEachNodeIn(
            limit, [&](const Node& n) { look_at(limit, owner, n, side); }, true, true);
        std::sort(siblings.begin(), siblings.end());
        std::sort(border.begin(), border.end());
    }

private:
    void look_at(const Node& limit, const Node& owner, const Node& n, const Side& side) {
        for (const Edge& edge : (n.*side.edges)()) {
            const Node far = (edge.*side.far)();
            if (const Node holder = HolderIn(owner, far)) {
                const bool is_own_loop = far == limit && n == limit;
                if (holder != limit || is_own_loop) siblings.push_back(PairOf(holder, edge));
            } else if (far == owner) {
                border.insert(border.end(), 2, PairOf(owner, edge));
            } else if (IsInGraph(far)) {
                border.push_back(PairOf(GetRoot(owner), edge));
            }
        }
    }
};

RandomGraph Sample(std::uint64_t seed) {
    RandomGraphPlan plan;
    plan.nodes = 10 + static_cast<int>(seed % 5) * 15;
    plan.edges = 3 * plan.nodes;
    plan.moves = plan.nodes / 4;
    plan.removals = static_cast<int>(seed % 4) * 2;
    RandomGraph g(seed, plan);
    if (seed % 3 == 0 && !g.nodes.empty()) {
        Random random(seed);
        Node loner = random.Of(g.nodes);
        loner.SetOwner(loner);
    }
    return g;
}

// In the picture of `g`, not counting what lies in a node that owns itself.
std::vector<Node> NodesInTree(const RandomGraph& g) {
    std::vector<Node> nodes;
    for (const Node& node : g.nodes) {
        if (IsInGraph(node)) nodes.push_back(node);
    }
    return nodes;
}

void FreeLoners(const RandomGraph& g) {
    for (Node node : g.nodes) {
        if (!node.IsDummy() && node.GetOwner() == node) node.Remove();
    }
}

TEST(Neighbourhood, IsWhatItsDefinitionSays) {
    int pairs = 0;
    for (std::uint64_t seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        const RandomGraph g = Sample(seed);
        for (const Node& node : NodesInTree(g)) {
            for (const Side& side : Sides()) {
                const Neighbours expected(node, side);
                ASSERT_EQ(Pairs(side.siblings_ex(node)), expected.siblings);
                ASSERT_EQ(Pairs(side.border_ex(node)), expected.border);
                pairs += static_cast<int>(expected.siblings.size() + expected.border.size());
            }
        }
        FreeLoners(g);
    }
    EXPECT_GT(pairs, 10000);
}

std::vector<int> EdgeIds(const IdPairs& pairs) {
    std::vector<int> ids;
    for (const auto& pair : pairs) ids.push_back(pair.second);
    return ids;
}

// Node ids and edge ids of a run, the node's 0 where the entry names none.
IdPairs Entries(const OwnerEdges& all, OwnerEdges::Run run) {
    IdPairs pairs;
    for (const OwnerEdges::Entry& entry : run) {
        const int node =
            entry.node < 0 ? 0 : all.nodes[static_cast<std::size_t>(entry.node)]->get_id();
        pairs.emplace_back(node, all.edges[static_cast<std::size_t>(entry.edge)]->get_id());
    }
    return pairs;
}

void ExpectSameAsNodeByNode(const Node& owner, const OwnerEdges& all, bool sorted) {
    const NodeSet owned = owner.GetOwned();
    ASSERT_EQ(all.node_count(), owned.GetCount());
    for (std::int32_t i = 0; i < all.node_count(); ++i) {
        const Node node = owned.GetItem(i);
        ASSERT_EQ(all.nodes[static_cast<std::size_t>(i)], node.record().get());
        for (const Side& side : Sides()) {
            IdPairs siblings = Entries(all, all.Of(side.siblings, i));
            std::vector<int> border = EdgeIds(Entries(all, all.Of(side.border, i)));
            std::vector<int> border_expected = EdgeIds(Pairs(side.border_ex(node)));
            if (!sorted) {
                std::sort(siblings.begin(), siblings.end());
                std::sort(border.begin(), border.end());
                std::sort(border_expected.begin(), border_expected.end());
            }
            ASSERT_EQ(siblings, Pairs(side.siblings_ex(node)));
            ASSERT_EQ(border, border_expected);
        }
    }
}

TEST(OwnerEdges, CollectsForAllNodesOfAnOwnerWhatTheyHaveOneByOne) {
    for (std::uint64_t seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        const RandomGraph g = Sample(seed);
        std::vector<Node> owners = NodesInTree(g);
        owners.push_back(g.root);
        // One object for all owners: nothing of an earlier one may stay behind.
        OwnerEdges sorted;
        OwnerEdges unsorted;
        for (const Node& owner : owners) {
            sorted.Collect(*owner.record());
            ASSERT_NO_FATAL_FAILURE(ExpectSameAsNodeByNode(owner, sorted, true));
            unsorted.Collect(*owner.record(), false);
            ASSERT_NO_FATAL_FAILURE(ExpectSameAsNodeByNode(owner, unsorted, false));
        }
        FreeLoners(g);
    }
}

TEST(OwnerEdges, NumbersEachEdgeOnce) {
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        const RandomGraph g(seed);
        OwnerEdges all;
        all.Collect(*g.root.record());
        std::vector<IEdgeImpl*> edges = all.edges;
        std::sort(edges.begin(), edges.end());
        EXPECT_EQ(std::adjacent_find(edges.begin(), edges.end()), edges.end());
        EXPECT_EQ(all.edge_count(), static_cast<std::int32_t>(edges.size()));
    }
}

TEST(OwnerEdges, OfANodeThatOwnsNothingIsEmpty) {
    const RandomGraph g(1, {1, 0, 0, 0, 1});
    OwnerEdges all;
    all.Collect(*g.root.record());
    EXPECT_EQ(all.node_count(), 1);
    all.Collect(*g.nodes.front().record());
    EXPECT_EQ(all.node_count(), 0);
    EXPECT_EQ(all.edge_count(), 0);
}

// Ids that lie far apart are kept in a table of another kind.
TEST(OwnerEdges, WorksOnIdsThatLieFarApart) {
    RandomGraph g(5);
    const int node_id = DefaultNodeImpl::current_id;
    const int edge_id = DefaultEdgeImpl::current_id;
    DefaultNodeImpl::current_id += 1000000;
    DefaultEdgeImpl::current_id += 1000000;
    Node late = g.root.AddNode();
    for (Node node : g.nodes) {
        late.LinkTo(node);
        node.LinkTo(late);
    }
    DefaultNodeImpl::current_id = node_id + 1;
    DefaultEdgeImpl::current_id = edge_id + 2 * static_cast<int>(g.nodes.size());
    OwnerEdges all;
    all.Collect(*g.root.record());
    ASSERT_NO_FATAL_FAILURE(ExpectSameAsNodeByNode(g.root, all, true));
}

}  // namespace
}  // namespace nodeline::test
