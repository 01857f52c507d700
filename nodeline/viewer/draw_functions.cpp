#include <nodeline/handlers/edge_handler.h>
#include <nodeline/handlers/node_handler.h>
#include <nodeline/viewer/draw_functions.h>
#include <nodeline/viewer/internal/draw_area.h>

#include <algorithm>
#include <vector>

namespace nodeline {

void DrawNode::operator()(Node node) const {
    const graph_ptr2<INodeHandler> handler = node.GetHandler();
    handler->SetZoomFactor(zoom);
    handler->Draw(node, painter);
}

void DrawEdge::operator()(Edge edge) const {
    edge.GetHandler()->SetZoomFactor(zoom);
    edge.GetHandler()->Draw(edge, painter);
}

void DrawGraph(const graph_ptr2<Graph>& graph, IPainter* painter, double zoom) {
    const auto draw_node = [&](const Node& node) {
        if (IsFlagSet(node, NodeDrawn)) DrawNode{painter, zoom}(node);
    };
    std::vector<Edge> edges;
    const auto collect = [&edges](const Node& node) {
        for (const Edge& edge : node.GetEdgesOut()) {
            if (IsFlagSet(edge, EdgeDrawn)) edges.push_back(edge);
        }
    };
    ForEachNodeIn(graph->GetRoot(), draw_node, false, false);
    ForEachNodeIn(graph->GetRoot(), collect, false, false);
    // What lies on top is the same as in a viewer.
    std::sort(edges.begin(), edges.end(),
              [](const Edge& a, const Edge& b) { return a.GetID() < b.GetID(); });
    for (const Edge& edge : edges) DrawEdge{painter, zoom}(edge);
}

void DrawGraphIn(const graph_ptr2<Graph>& graph, const rectangle<double>& area, IPainter* painter,
                 double zoom) {
    struct Draw {
        DrawNode node;
        DrawEdge edge;
        void operator()(const Node& n) const { node(n); }
        void operator()(const Edge& e) const { edge(e); }
    };
    internal::draw_in_area(*graph, area, Draw{{painter, zoom}, {painter, zoom}});
}

void CollectEdgesInNodes::operator()(Node node) {
    const point<double> p = node.GetPosition();
    const size<double> s = node.GetSize();
    const EdgeSet met = graph->HitEdgeTest(p.x, p.y, p.x + s.cx, p.y + s.cy);
    for (int i = 0; i < met.GetCount(); ++i) edges.push_back(met.GetItem(i));
}

}  // namespace nodeline
