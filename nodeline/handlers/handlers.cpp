#include <nodeline/handlers/handlers.h>

#include <nodeline/ops/graph_ops.h>

#include <cassert>

namespace nodeline {

namespace {

constexpr int kArrowLength = 7;
constexpr int kArrowWidth = 5;

// The one `Handler` of the process. Static objects that die later than the handle still get a
// handler: each call makes a new one then.
template <class Interface, class Handler>
graph_ptr2<Interface> GetDefault() {
    static bool gone = false;
    struct Holder {
        graph_ptr2<Interface> handle;

        ~Holder() { gone = true; }
    };
    if (gone) return {new Handler, true};
    static const Holder holder{{new Handler, true}};
    return holder.handle;
}

}  // namespace

graph_ptr2<INodeHandler> GetDefaultNodeHandler() {
    return GetDefault<INodeHandler, DummyNodeHandler>();
}

graph_ptr2<IEdgeHandler> GetDefaultEdgeHandler() {
    return GetDefault<IEdgeHandler, DummyEdgeHandler>();
}

void SimpleNodeHandler::Draw(Node node, IPainter* painter) { drawer_.Draw(node, painter); }

size<double> SimpleNodeHandler::GetSize(Node node) { return drawer_.GetSize(node); }

NodeFrame SimpleNodeHandler::GetSize(Node node, size<double> inner) {
    return drawer_.GetSize(node, inner);
}

void SimpleNodeHandler::SetZoomFactor(double factor) { drawer_.SetZoomFactor(factor); }

void SimpleNodeHandler::SetIPainter(IPainter* painter) { drawer_.SetIPainter(painter); }

IPainter* SimpleNodeHandler::GetIPainter() const { return drawer_.GetIPainter(); }

void DummyNodeHandler::Draw(Node node, IPainter* painter) {
    if (painter == nullptr) return;
    const double z = zoom_factor_;
    const point<double> p = node.GetPosition();
    const size<double> s = node.GetSize();
    painter->Rectangle(p.x * z, p.y * z, p.x * z + s.cx * z, p.y * z + s.cy * z);
}

size<double> DummyNodeHandler::GetSize(Node /*node*/) { return {10.0, 10.0}; }

NodeFrame DummyNodeHandler::GetSize(Node /*node*/, size<double> inner) {
    return {inner, {0.0, 0.0}};
}

void DummyNodeHandler::SetZoomFactor(double factor) {
    if (factor > 0.0) zoom_factor_ = factor;
}

void DummyEdgeHandler::Draw(Edge edge, IPainter* painter) {
    if (painter == nullptr || !IsFlagSet(edge, EdgeDrawn)) return;
    const std::vector<point<double>> route = edge.GetRoute();
    if (route.size() < 2) return;

    paintcore::_color line = IsFlagSet(edge, EdgeMarked) ? marked_color : color;
    if (IsFlagSet(edge, EdgeHovered)) line = line.Lightened();
    painter->SetPen({line, pen_width, 1, 0, 0});
    painter->MoveTo(route.front().x, route.front().y);
    for (std::size_t i = 1; i < route.size(); ++i) painter->LineTo(route[i].x, route[i].y);

    painter->SetArrowSize(kArrowLength, kArrowWidth);
    painter->BeginPlot(paintcore::PlotArrowhead);
    painter->Vertex(route[route.size() - 2].x, route[route.size() - 2].y);
    painter->Vertex(route.back().x, route.back().y);
    painter->EndPlot();
}

void DummyEdgeHandler::SetZoomFactor(double factor) {
    if (factor > 0.0) zoom_factor_ = factor;
}

double DummyEdgeHandler::GetWidth(Edge /*edge*/) const { return 1.0; }

int DummyEdgeHandler::HandleMouseHover(Edge edge) {
    SetFlag(edge, EdgeHovered, true);
    return HandlerRepaint;
}

int DummyEdgeHandler::HandleMouseLeave(Edge edge) {
    SetFlag(edge, EdgeHovered, false);
    return HandlerRepaint;
}

int DummyEdgeHandler::HandleOnTooltip(Edge edge, CGraphTooltipEvent* event) {
    assert(event != nullptr);
    if (event == nullptr) return HandlerIgnored;
    event->text = edge.GetCaption();
    const double d = zoom_factor_ > 1.0 ? zoom_factor_ + 0.01 : 1.01;
    const point<double> p = event->pos;
    event->trackRect = {p.x - d, p.y - d, p.x + d, p.y + d};
    OnTooltip(edge, event);
    return HandlerDone;
}

}  // namespace nodeline
