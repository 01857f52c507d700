#include <gtest/gtest.h>
#include <nodeline/ops/graph_ops.h>
#include <support/ids.h>
#include <support/named_graphs.h>

#include <chrono>
#include <vector>

namespace nodeline::test {
namespace {

// Far above what a slow machine needs for a walk, and far below what a search for each item costs.
constexpr double kSecondsAtMost = 30.0;

template <class F>
double SecondsFor(F f) {
    const auto start = std::chrono::steady_clock::now();
    f();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

TEST(Width, OfAMillionSiblingsIsTakenApartQuickly) {
    Empty g;
    for (int i = 0; i < 1000000; ++i) g.root.AddNode();
    const graph_ptr<INodeImpl> last = g.root.GetOwned().GetItem(999999).record();
    EXPECT_LT(SecondsFor([&] { g.root.Remove(); }), kSecondsAtMost);
    EXPECT_EQ(g.root.GetOwned().GetCount(), 0);
    EXPECT_EQ(last->GetRefCount(), 1);
}

// A hub in the middle of a star of edges.
class Star : public ::testing::Test {
protected:
    static constexpr int kRays = 200000;

    void SetUp() override {
        for (int i = 0; i < kRays; ++i) {
            Node leaf = g.root.AddNode();
            edges.push_back(i % 2 == 0 ? hub.LinkTo(leaf) : leaf.LinkTo(hub));
        }
    }

    Empty g;
    Node hub = g.root.AddNode();
    std::vector<Edge> edges;
};

TEST_F(Star, IsTakenApartQuickly) {
    EXPECT_LT(SecondsFor([&] { g.graph.reset(); }), kSecondsAtMost);
    for (const Edge& edge : edges) ASSERT_FALSE(edge.From());
}

TEST_F(Star, LosesItsEdgesQuicklyFromTheFirst) {
    EXPECT_LT(SecondsFor([&] {
                  for (Edge& edge : edges) edge.Remove();
              }),
              kSecondsAtMost);
    EXPECT_EQ(hub.GetEdgesOut().GetCount(), 0);
    EXPECT_EQ(hub.GetEdgesIn().GetCount(), 0);
}

TEST_F(Star, LosesItsEdgesQuicklyFromTheLast) {
    EXPECT_LT(SecondsFor([&] {
                  for (auto it = edges.rbegin(); it != edges.rend(); ++it) it->Remove();
              }),
              kSecondsAtMost);
    EXPECT_EQ(hub.GetEdgesOut().GetCount(), 0);
    EXPECT_EQ(hub.GetEdgesIn().GetCount(), 0);
}

TEST_F(Star, LosesItsHubQuickly) {
    EXPECT_LT(SecondsFor([&] { hub.Remove(); }), kSecondsAtMost);
    EXPECT_TRUE(hub.IsDummy());
    EXPECT_EQ(g.root.GetOwned().GetCount(), kRays);
}

TEST_F(Star, MovesToAnotherOwnerQuickly) {
    Node box = g.root.AddNode();
    std::vector<Node> nodes;
    ForEachNodeIn(
        g.root, [&](const Node& node) { nodes.push_back(node); }, false, false);
    EXPECT_LT(SecondsFor([&] {
                  for (Node& node : nodes) {
                      if (node != box) node.SetOwner(box);
                  }
              }),
              kSecondsAtMost);
    EXPECT_EQ(Ids(g.root.GetOwned()), IdsOf(box));
    EXPECT_EQ(box.GetOwned().GetCount(), kRays + 1);
}

TEST_F(Star, HasItsNeighboursCountedQuickly) {
    int degree = 0;
    EXPECT_LT(SecondsFor([&] {
                  for (int i = 0; i < 1000; ++i) degree = OutDegree(hub) + InDegree(hub);
              }),
              kSecondsAtMost);
    EXPECT_EQ(degree, kRays);
    EXPECT_EQ(GetChildrenEx(hub)->GetCount(), kRays / 2);
}

// Each edge reaches from a node to the next.
TEST(Chain, OfManyEdgesIsTakenApartWithOneHandleOnItsEnd) {
    Empty g;
    Node node = g.root.AddNode();
    for (int i = 0; i < 300000; ++i) {
        Node next = g.root.AddNode();
        node.LinkTo(next);
        node = next;
    }
    g.graph.reset();
    EXPECT_EQ(node.GetEdgesIn().GetCount(), 0);
    EXPECT_FALSE(node.GetOwner());
}

}  // namespace
}  // namespace nodeline::test
