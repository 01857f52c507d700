#include <nodeline/handlers/port_node_handler.h>

#include <nodeline/ops/graph_ops.h>

#include <cassert>

namespace nodeline {

namespace {

using paintcore::_color;

int CountVisible(const NodeSet& nodes) {
    int count = 0;
    for (const Node& node : nodes) count += IsFlagSet(node, NodeHidden) ? 0 : 1;
    return count;
}

bool IsLeaf(Node node) { return node.GetOwned().GetCount() == 0; }

int PortStateOf(int visible, int all) {
    if (all < 1) return 0;
    if (visible == 0) return PortHidden;
    return visible == all ? PortVisible : PortPartial;
}

// A side that is partly in view is first opened completely.
void Toggle(Node node, FoldDirection direction, bool is_complete) {
    if (is_complete) {
        Fold(node, direction);
    } else {
        Unfold(node, direction);
    }
}

}  // namespace

PortNodeHandler::PortNodeHandler() {
    CPortNodeDrawInfo& look = GetDrawInfo();
    look.font = {"Arial", paintcore::FontPlain, 7, 0, 0, 1.0};
    look.text_color = _color(120, 10, 10);
    look.border_color = _color(0, 0, 0);
    look.fill_top = _color(205, 200, 200);
    look.fill_bottom = _color(150, 130, 130);
    look.selected_fill_top = _color(255, 165, 0);
    look.selected_fill_bottom = _color(205, 175, 0);
    look.new_fill_top = _color(160, 160, 250);
    look.new_fill_bottom = _color(100, 100, 160);
    look.selected_border_color = _color(255, 0, 0);
    look.max_caption_length = 24;
    look.fixed_width = true;
}

PortNodeHandler::~PortNodeHandler() = default;

void PortNodeHandler::Draw(Node node, IPainter* painter) {
    const bool pressed = pressed_node_ == node.GetID();
    const int left = PortStateOf(CountVisibleParents(node), CountAllParents(node));
    const int right = PortStateOf(CountVisibleChildren(node), CountAllChildren(node));
    drawer_.SetLeftPortState(left | (left_port_pressed_ && pressed ? PortPressed : 0));
    drawer_.SetRightPortState(right | (right_port_pressed_ && pressed ? PortPressed : 0));
    drawer_.Draw(node, painter);
}

size<double> PortNodeHandler::GetSize(Node node) { return drawer_.GetSize(node); }

NodeFrame PortNodeHandler::GetSize(Node node, size<double> inner) {
    return drawer_.GetSize(node, inner);
}

int PortNodeHandler::HandleButtonDown(Node node, double x, double y, int keys, MouseButton button) {
    int result = HandlerIgnored;
    if (IsLeaf(node)) {
        const bool left = drawer_.IsLeftPortClicked(node, x, y);
        const bool right = drawer_.IsRightPortClicked(node, x, y);
        left_port_pressed_ = left_port_pressed_ || left;
        right_port_pressed_ = right_port_pressed_ || right;
        if (left || right) result = HandlerRepaint;
    }
    if (!pressed_node_) pressed_node_ = node.GetID();
    OnButtonDown(node, x, y, keys, button);
    return result;
}

int PortNodeHandler::HandleButtonUp(Node node, double x, double y, int keys, MouseButton button) {
    int result = HandlerDone;
    if (pressed_node_) {
        result = pressed_node_ == node.GetID() ? HandlerRepaint : HandlerRecalculate;
    }
    LetGo();
    OnButtonUp(node, x, y, keys, button);
    return result;
}

int PortNodeHandler::HandleClick(Node node, double x, double y, int keys, MouseButton button) {
    const bool taken = button == MouseButton::Left && IsLeaf(node);
    if (taken) TakeClick(node, x, y);
    OnClick(node, x, y, keys, button);
    return taken ? HandlerRecalculate : HandlerIgnored;
}

void PortNodeHandler::TakeClick(Node node, double x, double y) {
    if (drawer_.IsLeftPortClicked(node, x, y) && CountAllParents(node) != 0) {
        Toggle(node, FoldParents, CountAllParents(node) == CountVisibleParents(node));
    } else if (drawer_.IsRightPortClicked(node, x, y) && CountAllChildren(node) != 0) {
        Toggle(node, FoldChildren, CountAllChildren(node) == CountVisibleChildren(node));
    } else {
        SetFlag(node, NodeSelected, !IsFlagSet(node, NodeSelected));
    }
}

void PortNodeHandler::LetGo() {
    left_port_pressed_ = false;
    right_port_pressed_ = false;
    pressed_node_.reset();
}

int PortNodeHandler::HandleMouseHover(Node node) {
    LetGo();
    const bool leaf = IsLeaf(node);
    if (leaf) SetFlag(node, NodeHovered, true);
    OnMouseHover(node);
    return leaf ? HandlerRepaint : HandlerIgnored;
}

int PortNodeHandler::HandleMouseLeave(Node node) {
    LetGo();
    const bool leaf = IsLeaf(node);
    if (leaf) SetFlag(node, NodeHovered, false);
    OnMouseLeave(node);
    return leaf ? HandlerRepaint : HandlerIgnored;
}

int PortNodeHandler::HandleOnTooltip(Node node, CGraphTooltipEvent* event) {
    assert(event != nullptr);
    if (event == nullptr || !IsLeaf(node)) return HandlerIgnored;
    event->text = node.GetCaption();
    event->trackRect = MakeDRect(node.GetPosition(), node.GetSize());
    OnTooltip(node, event);
    return HandlerDone;
}

void PortNodeHandler::SetZoomFactor(double factor) { drawer_.SetZoomFactor(factor); }

int PortNodeHandler::CountVisibleChildren(Node node) { return CountVisible(node.GetChildren()); }

int PortNodeHandler::CountVisibleParents(Node node) { return CountVisible(node.GetParents()); }

int PortNodeHandler::CountAllChildren(Node node) { return node.GetChildren().GetCount(); }

int PortNodeHandler::CountAllParents(Node node) { return node.GetParents().GetCount(); }

void PortNodeHandler::SetIPainter(IPainter* painter) { drawer_.SetIPainter(painter); }

IPainter* PortNodeHandler::GetIPainter() const { return drawer_.GetIPainter(); }

}  // namespace nodeline
