#include <gtest/gtest.h>
#include <nodeline/ops/graph_ops.h>
#include <support/random_graph.h>

#include <algorithm>
#include <vector>

namespace nodeline {
namespace {

std::vector<int> IdsOf(const std::vector<Node>& nodes) {
    std::vector<int> ids;
    for (const Node& node : nodes) ids.push_back(node.GetID());
    return ids;
}

TEST(SortByOwnership, IsTheOrderOfTheComparatorWhereIdsFollowOwnership) {
    for (std::uint64_t seed = 1; seed <= 50; ++seed) {
        test::RandomGraphPlan plan;
        plan.moves = 0;  // so every owner is older than what it owns
        const test::RandomGraph random_graph(seed, plan);
        test::Random random(seed);
        std::vector<Node> nodes;
        for (const Node& node : random_graph.AllNodes()) {
            if (!random.OneIn(3)) nodes.push_back(node);
            if (random.OneIn(9)) nodes.push_back(node);
        }
        for (std::size_t i = nodes.size(); i > 1; --i) {
            std::swap(nodes[i - 1],
                      nodes[static_cast<std::size_t>(random.Below(static_cast<int>(i)))]);
        }
        std::vector<Node> expected = nodes;
        std::sort(expected.begin(), expected.end(), NodeByOwnershipComparator);
        SortByOwnership(nodes);
        ASSERT_EQ(IdsOf(nodes), IdsOf(expected)) << "seed " << seed;
    }
}

TEST(SortByOwnership, PutsOwnersFirstAlsoWhereTheComparatorGoesInCircles) {
    const graph_ptr2<Graph> graph(new Graph, true);
    Node inner = graph->GetRoot().AddNode();
    const Node between = graph->GetRoot().AddNode();
    const Node owner = graph->GetRoot().AddNode();
    inner.SetOwner(owner);
    // inner < between < owner by id, and owner < inner by ownership.
    ASSERT_TRUE(NodeByOwnershipComparator(inner, between));
    ASSERT_TRUE(NodeByOwnershipComparator(between, owner));
    ASSERT_TRUE(NodeByOwnershipComparator(owner, inner));
    std::vector<Node> nodes{between, inner, owner};
    SortByOwnership(nodes);
    EXPECT_EQ(IdsOf(nodes), IdsOf({owner, inner, between}));
}

TEST(SortByOwnership, KeepsOwnersFirstInGraphsThatWereTurnedAbout) {
    for (std::uint64_t seed = 1; seed <= 50; ++seed) {
        test::RandomGraphPlan plan;
        plan.moves = 30;
        const test::RandomGraph random_graph(seed, plan);
        std::vector<Node> nodes = random_graph.nodes;
        const std::size_t count = nodes.size();
        SortByOwnership(nodes);
        ASSERT_EQ(nodes.size(), count);
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            for (std::size_t j = i + 1; j < nodes.size(); ++j) {
                for (Node p = nodes[i]; p.GetID() != 0 && p.GetOwner() != p; p = p.GetOwner()) {
                    ASSERT_NE(p.GetOwner(), nodes[j]) << "seed " << seed;
                }
            }
        }
    }
}

TEST(SortByOwnership, PutsTheRootLastAsItHasNoOwner) {
    const graph_ptr2<Graph> graph(new Graph, true);
    const Node node = graph->GetRoot().AddNode();
    std::vector<Node> nodes{graph->GetRoot(), node};
    SortByOwnership(nodes);
    EXPECT_EQ(IdsOf(nodes), IdsOf({node, graph->GetRoot()}));
}

TEST(SortByOwnership, OfNothingIsNothing) {
    std::vector<Node> nodes;
    SortByOwnership(nodes);
    EXPECT_TRUE(nodes.empty());
}

}  // namespace
}  // namespace nodeline
