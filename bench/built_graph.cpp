#include <bench/built_graph.h>

#include <nodeline/handlers/handlers.h>
#include <nodeline/model/break_nodes.h>
#include <nodeline/ops/graph_ops.h>

namespace nodeline::bench {

namespace {

class FixedNodeHandler : public INodeHandler {
public:
    void Draw(Node, IPainter*) override {}
    nodeline::size<double> GetSize(Node) override { return kNodeSize; }
    NodeFrame GetSize(Node, nodeline::size<double> inner) override { return {inner, {0.0, 0.0}}; }
};

class FixedEdgeHandler : public IEdgeHandler {
public:
    void Draw(Edge, IPainter*) override {}
    [[nodiscard]] double GetWidth(Edge) const override { return 1.0; }
};

}  // namespace

BuiltGraph Build(const GraphPlan& plan) {
    BuiltGraph built{IncLayout::Create(), graph_ptr2<Graph>(new Graph, true)};
    built.graph->SetDefaultLayout(built.layout);
    built.graph->SetDefaultNodeHandler(graph_ptr2<INodeHandler>(new FixedNodeHandler, true));
    built.graph->SetDefaultEdgeHandler(graph_ptr2<IEdgeHandler>(new FixedEdgeHandler, true));

    Node root = built.graph->GetRoot();
    std::vector<Node> nodes;
    nodes.reserve(plan.owners.size());
    const auto node_at = [&](int number) -> Node& {
        return nodes[static_cast<std::size_t>(number)];
    };
    for (const int owner : plan.owners) {
        nodes.push_back((owner == kInRoot ? root : node_at(owner)).AddNode());
    }
    for (const PlannedEdge& edge : plan.edges) node_at(edge.from).LinkTo(node_at(edge.to));
    return built;
}

Elements CountElements(const BuiltGraph& built) {
    Elements elements;
    const auto count = [&](const Node& node) {
        ++elements.nodes;
        for (const Edge& edge : node.GetEdgesOut()) {
            ++elements.edges;
            const auto vis = edge.store()->get_edge_vis(edge.record());
            for (const auto& chain : dynamic_cast<DefaultEdgeVis&>(*vis).GetRoute()) {
                elements.breaks += chain->GetCount();
            }
        }
    };
    ForEachNodeIn(built.graph->GetRoot(), count, false, false);
    return elements;
}

}  // namespace nodeline::bench
