#include <nodeline/handlers/edge_handler.h>

namespace nodeline {

IEdgeHandler::~IEdgeHandler() = default;

void IEdgeHandler::SetZoomFactor(double /*factor*/) {}

int IEdgeHandler::HandleMouseMove(Edge edge, double x, double y, int keys, MouseButton button) {
    OnMouseMove(edge, x, y, keys, button);
    return HandlerIgnored;
}

int IEdgeHandler::HandleButtonDown(Edge edge, double x, double y, int keys, MouseButton button) {
    OnButtonDown(edge, x, y, keys, button);
    return HandlerIgnored;
}

int IEdgeHandler::HandleButtonUp(Edge edge, double x, double y, int keys, MouseButton button) {
    OnButtonUp(edge, x, y, keys, button);
    return HandlerIgnored;
}

int IEdgeHandler::HandleClick(Edge edge, double x, double y, int keys, MouseButton button) {
    OnDoubleClick(edge, x, y, keys, button);
    return HandlerIgnored;
}

int IEdgeHandler::HandleDoubleClick(Edge edge, double x, double y, int keys, MouseButton button) {
    OnDoubleClick(edge, x, y, keys, button);
    return HandlerIgnored;
}

int IEdgeHandler::HandleMouseHover(Edge edge) {
    OnMouseHover(edge);
    return HandlerIgnored;
}

int IEdgeHandler::HandleMouseLeave(Edge edge) {
    OnMouseLeave(edge);
    return HandlerIgnored;
}

int IEdgeHandler::HandleOnTooltip(Edge edge, CGraphTooltipEvent* event) {
    OnTooltip(edge, event);
    return HandlerIgnored;
}

int IEdgeHandler::HandleOnTooltipTrack(Edge edge, CGraphTooltipEvent* event) {
    OnTooltipTrack(edge, event);
    return HandlerIgnored;
}

}  // namespace nodeline
