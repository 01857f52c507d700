#include <gtest/gtest.h>
#include <nodeline/ops/internal/owner_edges.h>
#include <support/random.h>
#include <support/random_graph.h>

#include <vector>

namespace nodeline::test {
namespace {

using internal::OwnerEdges;

// All that can be read of a collection.
struct Reading {
    std::vector<INodeImpl*> nodes;
    std::vector<int> node_ids;
    std::vector<int> edge_ids;
    std::vector<std::vector<int>> runs;

    explicit Reading(const OwnerEdges& all) : nodes(all.nodes), node_ids(all.node_ids) {
        const auto id_of = [&](std::int32_t edge) {
            return all.edge_ids[static_cast<std::size_t>(edge)];
        };
        for (std::int32_t v = 0; v < all.node_count(); ++v) {
            for (const auto kind : {OwnerEdges::kParents, OwnerEdges::kChildren,
                                    OwnerEdges::kEdgesIn, OwnerEdges::kEdgesOut}) {
                runs.emplace_back();
                for (const auto& entry : all.Of(kind, v)) {
                    runs.back().push_back(entry.node);
                    runs.back().push_back(id_of(entry.edge));
                }
            }
        }
        for (std::int32_t e = 0; e < all.edge_count(); ++e) {
            const auto& ends = all.ends[static_cast<std::size_t>(e)];
            edge_ids.insert(edge_ids.end(), {id_of(e), ends.from, ends.to});
        }
    }
    bool operator==(const Reading& other) const {
        return nodes == other.nodes && node_ids == other.node_ids && edge_ids == other.edge_ids &&
               runs == other.runs;
    }
};

Reading Collected(const Node& owner) {
    OwnerEdges fresh;
    fresh.Collect(*owner.record());
    return Reading(fresh);
}

Reading Refreshed(OwnerEdges& kept, const Node& owner) {
    kept.Refresh(*owner.record());
    return Reading(kept);
}

// Under itself, a node would be cut off from the root, and nobody would take it apart.
bool LiesIn(Node node, const Node& owner) {
    for (; node; node = node.GetOwner()) {
        if (node == owner) return true;
    }
    return false;
}

void ChangeOne(RandomGraph& g, Random& random) {
    if (g.nodes.empty()) return;
    Node node = random.Of(g.nodes);
    switch (random.Between(0, 3)) {
        case 0: {
            const Node owner = random.OneIn(4) ? g.root : random.Of(g.nodes);
            if (!LiesIn(owner, node)) node.SetOwner(owner);
            break;
        }
        case 1:
            g.nodes.push_back(node.AddNode());
            break;
        case 2:
            g.edges.push_back(node.LinkTo(random.Of(g.nodes)));
            break;
        default:
            if (g.edges.empty()) break;
            const std::size_t place =
                static_cast<std::size_t>(random.Between(0, static_cast<int>(g.edges.size()) - 1));
            g.edges[place].Remove();
            g.edges.erase(g.edges.begin() + static_cast<std::ptrdiff_t>(place));
    }
}

TEST(NeighbourhoodRefresh, GivesWhatCollectingAnewGives) {
    for (std::uint64_t seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        RandomGraph g(seed);
        Random random(seed);
        std::vector<Node> owners = g.AllNodes();
        std::vector<OwnerEdges> kept(owners.size());
        for (int round = 0; round < 25; ++round) {
            for (std::size_t i = 0; i < owners.size(); ++i) {
                ASSERT_TRUE(Refreshed(kept[i], owners[i]) == Collected(owners[i])) << round;
            }
            ChangeOne(g, random);
        }
    }
}

TEST(NeighbourhoodRefresh, SeesANodeThatMovesBetweenTheLastTwoOwners) {
    graph_ptr2<Graph> graph(new Graph, true);
    Node root = graph->GetRoot();
    Node a = root.AddNode();
    Node b = root.AddNode();
    Node inner = a.AddNode();
    inner.LinkTo(b);
    OwnerEdges kept;
    EXPECT_EQ(Refreshed(kept, root).runs.size(), 8u);
    EXPECT_FALSE(kept.Of(OwnerEdges::kChildren, 0).empty());
    // The walk meets the same nodes in the same order, but the edge is within one of them now.
    inner.SetOwner(b);
    kept.Refresh(*root.record());
    EXPECT_TRUE(kept.Of(OwnerEdges::kChildren, 0).empty());
    EXPECT_TRUE(kept.Of(OwnerEdges::kParents, 1).empty());
}

TEST(NeighbourhoodRefresh, SeesThatWhatLiesOutsideHasLeftTheGraph) {
    graph_ptr2<Graph> graph(new Graph, true);
    Node root = graph->GetRoot();
    Node box = root.AddNode();
    Node inner = box.AddNode();
    Node outside = root.AddNode();
    inner.LinkTo(outside);
    OwnerEdges kept;
    kept.Refresh(*box.record());
    EXPECT_EQ(kept.Of(OwnerEdges::kEdgesOut, 0).size(), 1u);
    // A node that owns itself is under no root, though its edges are still there.
    outside.SetOwner(outside);
    kept.Refresh(*box.record());
    EXPECT_TRUE(kept.Of(OwnerEdges::kEdgesOut, 0).empty());
    outside.SetOwner(root);
    outside.Remove();
}

TEST(NeighbourhoodRefresh, TellsAnEdgeFromOneInItsPlace) {
    graph_ptr2<Graph> graph(new Graph, true);
    Node root = graph->GetRoot();
    Node a = root.AddNode();
    Node b = root.AddNode();
    OwnerEdges kept;
    for (int round = 0; round < 5; ++round) {
        Edge edge = a.LinkTo(b);
        kept.Refresh(*root.record());
        ASSERT_EQ(kept.edge_ids, std::vector<int>{edge.GetID()});
        edge.Remove();
    }
}

}  // namespace
}  // namespace nodeline::test
