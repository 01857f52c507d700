#include <gtest/gtest.h>
#include <support/random_graph.h>

#include <vector>

namespace nodeline {
namespace {

TEST(RoutePoints, AreThePositionsOfTheBreakNodes) {
    int bends = 0;
    for (std::uint64_t seed = 1; seed <= 40; ++seed) {
        test::RandomGraph random_graph(seed);
        test::Random random(seed);
        random_graph.Place(random);
        for (const Edge& edge : random_graph.edges) {
            // Asked before the nodes are made, and after.
            const std::vector<point<double>> before = edge.GetRoute();
            std::vector<point<double>> expected;
            for (const Node& bend : edge.GetBreakNodes()) expected.push_back(bend.GetPosition());
            ASSERT_EQ(before, expected) << "seed " << seed;
            ASSERT_EQ(edge.GetRoute(), expected) << "seed " << seed;
            bends += static_cast<int>(expected.size());
        }
    }
    EXPECT_GT(bends, 1000);
}

TEST(RoutePoints, AreNoneForAnEdgeWithoutARoute) {
    const graph_ptr2<Graph> graph(new Graph, true);
    Node a = graph->GetRoot().AddNode();
    EXPECT_TRUE(a.LinkTo(graph->GetRoot().AddNode()).GetRoute().empty());
}

}  // namespace
}  // namespace nodeline
