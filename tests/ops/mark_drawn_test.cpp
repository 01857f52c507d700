#include <gtest/gtest.h>
#include <nodeline/ops/graph_ops.h>

#include <cstddef>
#include <cstdint>
#include <vector>

#include "support/random.h"

namespace nodeline {
namespace {

std::vector<int> ConditionsOf(const Graph& graph) {
    std::vector<int> all;
    ForEachNodeIn(
        graph.GetRoot(),
        [&all](const Node& node) {
            all.push_back(node.GetCondition());
            for (const Edge& edge : node.GetEdgesOut()) all.push_back(edge.GetCondition());
        },
        false, false);
    return all;
}

// The two sweeps, without anything remembered.
void MarkAnew(const Graph& graph) {
    ForEachNodeIn(graph.GetRoot(), ProcessOutgoingEdges{_mark_edge_drawn}, false, false);
    _mark_node_drawn(graph.GetRoot(), true);
}

// A graph that changes at random.
class ChangingGraph {
public:
    explicit ChangingGraph(std::uint64_t seed) : random_(seed), graph_(new Graph, true) {
        for (int i = 0; i < 6; ++i) Change();
    }

    [[nodiscard]] const graph_ptr2<Graph>& graph() const { return graph_; }

    void Change() {
        const std::vector<Node> nodes = Nodes();
        const Node node = random_.Of(nodes);
        const Node other = random_.Of(nodes);
        const bool is_root = node.GetID() == 0;
        switch (random_.Below(11)) {
            case 0:
            case 1:
                Node(node).AddNode();
                return;
            case 2:
            case 3:
                if (!is_root && other.GetID() != 0) Node(node).LinkTo(other);
                return;
            case 4:
                SetFlag(node, NodeHidden, !IsFlagSet(node, NodeHidden));
                return;
            case 5:
                SetFlag(node, NodeDrawn, !IsFlagSet(node, NodeDrawn));
                return;
            case 6:
                if (!is_root && nodes.size() > 12) RemoveWithEdges(node);
                return;
            case 7:
                if (!is_root && !IsUnder(other, node)) Node(node).SetOwner(other);
                return;
            case 8:
                if (node.GetEdgesOut().GetCount() > 0) node.GetEdgesOut().GetItem(0).Remove();
                return;
            case 9:
                if (node.GetEdgesOut().GetCount() > 0) {
                    const Edge edge = node.GetEdgesOut().GetItem(0);
                    SetFlag(edge, EdgeDrawn, !IsFlagSet(edge, EdgeDrawn));
                }
                return;
            default:
                if (!is_root) Fold(node, FoldChildren);
                return;
        }
    }

private:
    [[nodiscard]] std::vector<Node> Nodes() const {
        std::vector<Node> all;
        ForEachNodeIn(
            graph_->GetRoot(), [&all](const Node& n) { all.push_back(n); }, false, true);
        return all;
    }

    static bool IsUnder(Node node, const Node& owner) {
        while (node.GetID() != 0 && node.GetID() != owner.GetID()) node = node.GetOwner();
        return node.GetID() == owner.GetID();
    }

    static void RemoveWithEdges(Node node) {
        ForEachNodeIn(
            node,
            [](const Node& n) {
                while (n.GetEdgesOut().GetCount() > 0) n.GetEdgesOut().GetItem(0).Remove();
                while (n.GetEdgesIn().GetCount() > 0) n.GetEdgesIn().GetItem(0).Remove();
            },
            false, true);
        node.Remove();
    }

    test::Random random_;
    graph_ptr2<Graph> graph_;
};

TEST(MarkDrawnInProperty, WhatIsRememberedIsWhatWouldBeComputed) {
    for (std::uint64_t seed = 1; seed <= 60; ++seed) {
        ChangingGraph a(seed);
        ChangingGraph b(seed + 1000);
        for (int step = 0; step < 120; ++step) {
            (step % 3 == 0 ? b : a).Change();
            for (const ChangingGraph* changing : {&a, &b}) {
                MarkDrawnIn(changing->graph());
                const std::vector<int> remembered = ConditionsOf(*changing->graph());
                MarkAnew(*changing->graph());
                ASSERT_EQ(remembered, ConditionsOf(*changing->graph()))
                    << "seed " << seed << ", step " << step;
            }
        }
    }
}

TEST(MarkDrawnInProperty, WorksAgainAfterTheRootHasBeenEmptied) {
    const graph_ptr2<Graph> graph(new Graph, true);
    graph->GetRoot().AddNode();
    MarkDrawnIn(graph);
    graph->GetRoot().Remove();
    const Node node = graph->GetRoot().AddNode();
    MarkDrawnIn(graph);
    EXPECT_TRUE(IsFlagSet(node, NodeDrawn));
}

}  // namespace
}  // namespace nodeline
