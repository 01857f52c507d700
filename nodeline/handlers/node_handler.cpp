#include <nodeline/handlers/node_handler.h>

namespace nodeline {

INodeHandler::~INodeHandler() = default;

bool INodeHandler::IsRecursiveProcessingNeeded() { return true; }

int INodeHandler::HandleMouseMove(Node node, double x, double y, int keys, MouseButton button) {
    OnMouseMove(node, x, y, keys, button);
    return HandlerIgnored;
}

int INodeHandler::HandleButtonDown(Node node, double x, double y, int keys, MouseButton button) {
    OnButtonDown(node, x, y, keys, button);
    return HandlerIgnored;
}

int INodeHandler::HandleButtonUp(Node node, double x, double y, int keys, MouseButton button) {
    OnButtonUp(node, x, y, keys, button);
    return HandlerIgnored;
}

int INodeHandler::HandleClick(Node node, double x, double y, int keys, MouseButton button) {
    OnDoubleClick(node, x, y, keys, button);
    return HandlerIgnored;
}

int INodeHandler::HandleDoubleClick(Node node, double x, double y, int keys, MouseButton button) {
    OnDoubleClick(node, x, y, keys, button);
    return HandlerIgnored;
}

int INodeHandler::HandleMouseHover(Node node) {
    OnMouseHover(node);
    return HandlerIgnored;
}

int INodeHandler::HandleMouseLeave(Node node) {
    OnMouseLeave(node);
    return HandlerIgnored;
}

int INodeHandler::HandleOnTooltip(Node node, CGraphTooltipEvent* event) {
    OnTooltip(node, event);
    return HandlerIgnored;
}

int INodeHandler::HandleOnTooltipTrack(Node node, CGraphTooltipEvent* event) {
    OnTooltipTrack(node, event);
    return HandlerIgnored;
}

int INodeHandler::HandleOnSelectRect(Node node, rectangle<double> rect) {
    OnSelectRect(node, rect);
    return HandlerIgnored;
}

int INodeHandler::HandleContextMenu(Node node, double x, double y) {
    OnContextMenu(node, x, y);
    return HandlerIgnored;
}

void INodeHandler::SetZoomFactor(double /*factor*/) {}

}  // namespace nodeline
