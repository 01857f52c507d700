#include <nodeline/viewer/content.h>

#include <algorithm>
#include <utility>

namespace nodeline {
namespace {

using Watch = viewkit::Watch<CVisualElement>;

bool IsDrawn(const Node& node) { return !node.IsDummy() && IsFlagSet(node, NodeDrawn); }

bool IsDrawn(const Edge& edge) { return edge.From() && IsFlagSet(edge, EdgeDrawn); }

template <class Item>
bool IsSame(const Item& a, const Item& b) {
    return a.record().get() == b.record().get();
}

template <class Item>
void AddOnce(std::vector<Item>& items, const Item& item) {
    const auto is_same = [&item](const Item& other) { return IsSame(item, other); };
    if (std::none_of(items.begin(), items.end(), is_same)) items.push_back(item);
}

}  // namespace

void CContent::SetTellHover(bool on) {
    tell_hover_ = on;
    if (!on) end_hover();
}

void CContent::hover_at(point<int> pixel) {
    MarkDrawnIn(graph_);
    Node node = GetNodeAt(pixel);
    if (!IsDrawn(node)) node = {};
    Edge edge;
    // Edges lie over what owns nodes, and may lie over others by chance only.
    if (!node || node.GetOwned().GetCount() > 0) {
        edge = GetEdgeAt(pixel);
        if (edge && !IsDrawn(edge)) edge = {};
        if (edge) node = {};
    }
    if (IsSame(node, hovered_node_) && IsSame(edge, hovered_edge_)) return;
    const Watch watch(this);
    const graph_ptr2<Graph> graph = graph_;
    int result = leave_hovered();
    if (!watch) return;
    // The handler may have changed the graph, or told the surface to show another.
    const bool is_there = graph.get() == graph_.get() && tell_hover_ && !hovered_node_ &&
                          !hovered_edge_ && (!node || IsDrawn(node)) && (!edge || IsDrawn(edge));
    if (is_there) result |= enter(node, edge);
    if (watch) obey_hover(result);
}

int CContent::enter(const Node& node, const Edge& edge) {
    const Watch watch(this);
    hovered_node_ = node;
    hovered_edge_ = edge;
    int result = HandlerIgnored;
    if (node) {
        result = node.GetHandler()->HandleMouseHover(node);
        if (watch && result == HandlerRepaint) AddOnce(redraw_nodes_, node);
    } else if (edge) {
        result = edge.GetHandler()->HandleMouseHover(edge);
        if (watch && result == HandlerRepaint) AddOnce(redraw_edges_, edge);
    }
    return result;
}

int CContent::leave_hovered() {
    const Watch watch(this);
    const Node node = std::exchange(hovered_node_, {});
    const Edge edge = std::exchange(hovered_edge_, {});
    int result = HandlerIgnored;
    if (node && !node.IsDummy()) {
        result = node.GetHandler()->HandleMouseLeave(node);
        if (watch && result == HandlerRepaint && IsDrawn(node)) AddOnce(redraw_nodes_, node);
    } else if (edge && edge.From()) {
        result = edge.GetHandler()->HandleMouseLeave(edge);
        if (watch && result == HandlerRepaint && IsDrawn(edge)) AddOnce(redraw_edges_, edge);
    }
    return result;
}

// The view is where it was, so nobody need hear of it for a repaint.
void CContent::obey_hover(int result) {
    if (result >= HandlerRecalculate) {
        handle_epilogue(result);
    } else if (result >= HandlerRepaint) {
        OnChange(this, viewkit::UpdateType::Content);
    }
}

void CContent::end_hover() {
    if (!hovered_node_ && !hovered_edge_) return;
    const Watch watch(this);
    const int result = leave_hovered();
    if (watch) obey_hover(result);
}

// Where a graph has changed and the pointer has not moved. What was hovered is not in the picture
// any more, so there is nothing to repaint.
void CContent::end_stale_hover() {
    const bool is_stale =
        (hovered_node_ && !IsDrawn(hovered_node_)) || (hovered_edge_ && !IsDrawn(hovered_edge_));
    if (is_stale) end_hover();
}

}  // namespace nodeline
