#include <gtest/gtest.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/layout/stable_layout.h>
#include <nodeline/ops/graph_ops.h>

#include <set>
#include <thread>

// One thread fills and lays out a graph while another thread works on its own.

namespace nodeline {
namespace {

class BoxHandler : public INodeHandler {
public:
    void Draw(Node, IPainter*) override {}
    size<double> GetSize(Node) override { return {20.0, 10.0}; }
    NodeFrame GetSize(Node, size<double> inner) override {
        return {{inner.cx + 8.0, inner.cy + 8.0}, {4.0, 4.0}};
    }
};

graph_ptr2<Graph> MakeGraph() {
    graph_ptr2<Graph> graph(new Graph(), true);
    graph->SetDefaultNodeHandler(graph_ptr2<INodeHandler>(new BoxHandler, true));
    graph->SetDefaultEdgeHandler(graph_ptr2<IEdgeHandler>(new DummyEdgeHandler, true));
    graph->SetDefaultLayout(checked_upcast<ILayout>(StableLayout::Create()));
    return graph;
}

void FillAndLayOut(const graph_ptr2<Graph>& graph) {
    for (int round = 0; round < 20; ++round) {
        Node owner = graph->GetRoot().AddNode();
        Node last = owner.AddNode();
        for (int i = 0; i < 20; ++i) {
            Node next = owner.AddNode();
            last.LinkTo(next);
            last = next;
        }
        owner.UpdateLayout();
        graph->RecalculateLayout(nullptr);
        Hide(last);
        owner.UpdateLayout();
        graph->RecalculateLayout(nullptr);
    }
}

TEST(TwoGraphs, AreFilledAndLaidOutOnTwoThreads) {
    const graph_ptr2<Graph> here = MakeGraph();
    const graph_ptr2<Graph> there = MakeGraph();
    std::thread other([&there] { FillAndLayOut(there); });
    FillAndLayOut(here);
    MarkDrawnIn(here);
    other.join();
    std::set<int> ids;
    int count = 0;
    for (const auto& graph : {here, there}) {
        const auto take = [&](const Node& node) {
            ids.insert(node.GetID());
            ++count;
        };
        ForEachNodeIn(graph->GetRoot(), take, false, false);
    }
    EXPECT_EQ(count, 2 * 20 * 22);
    EXPECT_EQ(ids.size(), static_cast<std::size_t>(count));
}

}  // namespace
}  // namespace nodeline
