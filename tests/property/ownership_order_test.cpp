#include <gtest/gtest.h>
#include <nodeline/ops/graph_ops.h>
#include <support/random_graph.h>

#include <vector>

namespace nodeline::test {
namespace {

bool LiesUnder(const Node& node, const Node& owner) {
    for (Node p = node.GetOwner(); p; p = p.GetOwner()) {
        if (p == owner) return true;
    }
    return false;
}

bool GoesBefore(Node a, Node b) {
    if (a.IsDummy() != b.IsDummy()) return b.IsDummy();
    if (!a.IsDummy() && LiesUnder(b, a)) return true;
    if (!a.IsDummy() && LiesUnder(a, b)) return false;
    return a.GetID() < b.GetID();
}

TEST(OwnershipOrder, IsWhatItsDefinitionSaysForAnyTwoNodes) {
    for (std::uint64_t seed = 1; seed <= 25; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        RandomGraph g(seed);
        Random random(seed);
        g.Place(random);
        std::vector<Node> nodes = g.AllNodes();
        for (const Edge& edge : g.edges) {
            const NodeSet bends = edge.GetBreakNodes();
            if (bends.GetCount() > 0 && nodes.size() < 80) nodes.push_back(bends.GetItem(0));
        }
        for (const Node& a : nodes) {
            for (const Node& b : nodes) {
                ASSERT_EQ(NodeByOwnershipComparator(a, b), GoesBefore(a, b))
                    << a.GetID() << " and " << b.GetID();
                if (a != b) {
                    ASSERT_NE(NodeByOwnershipComparator(a, b), NodeByOwnershipComparator(b, a));
                }
            }
            ASSERT_FALSE(NodeByOwnershipComparator(a, a));
        }
    }
}

}  // namespace
}  // namespace nodeline::test
