#include <nodeline/handlers/edge_handler.h>
#include <nodeline/handlers/node_handler.h>
#include <nodeline/viewer/draw_functions.h>

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

void CollectEdgesInNodes::operator()(Node node) {
    const point<double> p = node.GetPosition();
    const size<double> s = node.GetSize();
    const EdgeSet met = graph->HitEdgeTest(p.x, p.y, p.x + s.cx, p.y + s.cy);
    for (int i = 0; i < met.GetCount(); ++i) edges.push_back(met.GetItem(i));
}

}  // namespace nodeline
