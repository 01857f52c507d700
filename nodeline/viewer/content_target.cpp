#include <nodeline/viewer/content.h>

#include <vector>

namespace nodeline {
namespace {

using Watch = viewkit::Watch<CVisualElement>;

bool Holds(const Node& node, const point<double>& p) {
    const rectangle<double> r = MakeDRect(node.GetPosition(), node.GetSize());
    return r.left <= p.x && p.x <= r.right && r.top <= p.y && p.y <= r.bottom;
}

// A node or the innermost drawn one of its owners; empty where that is the root.
Node DrawnOwnerOf(Node node) {
    while (!node.IsDummy() && !IsFlagSet(node, NodeDrawn)) {
        const Node owner = node.GetOwner();
        if (owner == node) return {};
        node = owner;
    }
    return node.IsDummy() ? Node() : node;
}

}  // namespace

// A hit test leaves out the owners of what it finds, also where that is not drawn.
Node CContent::GetNodeAt(point<int> pixel) const {
    const NodeSet met = HitNodeTest(pixel.x, pixel.y, pixel.x, pixel.y);
    if (!pick_drawn_) return met.GetCount() > 0 ? met.GetItem(0) : graph_->GetRoot();
    MarkDrawnIn(graph_);
    const point<double> p = ConvertP2L(pixel);
    std::vector<Node> seen;
    for (const Node& node : met) {
        const Node drawn = DrawnOwnerOf(node);
        if (drawn && Holds(drawn, p)) seen.push_back(drawn);
    }
    SortByOwnership(seen);
    return seen.empty() ? graph_->GetRoot() : seen.back();
}

Edge CContent::GetEdgeAt(point<int> pixel) const {
    const EdgeSet met = HitEdgeTest(pixel.x, pixel.y, pixel.x, pixel.y);
    if (!pick_drawn_) return met.GetCount() > 0 ? met.GetItem(0) : Edge();
    MarkDrawnIn(graph_);
    for (int i = met.GetCount() - 1; i >= 0; --i) {
        if (const Edge edge = met.GetItem(i); IsFlagSet(edge, EdgeDrawn)) return edge;
    }
    return {};
}

// ---------------------------------------------------------------------------------------------
// The single press

void CContent::SetSinglePress(bool on) {
    single_press_ = on;
    drag_tracker_->SetOwnButtonEnds(on);
    zoom_rect_->SetOwnButtonEnds(on);
}

bool CContent::has_mouse() const {
    return HasCapture() || drag_tracker_->HasCapture() || zoom_rect_->HasCapture();
}

void CContent::forget_press() {
    pressed_nodes_.clear();
    press_button_ = MouseButton::None;
    drag_tracker_->Reset();
    zoom_rect_->Reset();
    ReleaseMouse();
}

void CContent::drop_press() {
    const bool was_pressed = press_button_ != MouseButton::None;
    forget_press();
    if (was_pressed) OnPressDropped(this);
}

// One of the rubber rectangles may have taken the mouse, and goes on with the press.
void CContent::lose_press() {
    if (!single_press_ || has_mouse()) return;
    const Watch watch(this);
    drop_press();
    // This lets the ports go that the press has held down.
    if (watch) end_hover();
}

void CContent::HandleCaptureLost() { lose_press(); }

void CContent::HandleDragCancel(DragTracker* /*tracker*/) { lose_press(); }

void CContent::HandleRubberCancel(ZoomRect* /*rect*/) { lose_press(); }

}  // namespace nodeline
