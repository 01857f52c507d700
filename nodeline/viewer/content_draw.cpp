#include <nodeline/viewer/content.h>
#include <nodeline/viewer/draw_functions.h>
#include <nodeline/viewer/internal/draw_area.h>
#include <viewkit/invalid_region.h>

#include <vector>

namespace nodeline {
namespace {

using Watch = viewkit::Watch<CVisualElement>;

// More nodes than this are not worth painting one by one.
constexpr std::size_t kMostNodesAlone = 2;
// The same where the pointer is followed and may pass several between two paints.
constexpr std::size_t kMostNodesHovered = 8;

// Draws nodes and edges until the surface that they are drawn for is gone, and then nothing more:
// the painter has gone with it.
class Drawing {
public:
    Drawing(CVisualElement* surface, paintcore::IPainter* painter, double scale)
        : watch_(surface), draw_node_{painter, scale}, draw_edge_{painter, scale} {}

    explicit operator bool() const { return static_cast<bool>(watch_); }

    void operator()(const Node& node) const {
        if (watch_) draw_node_(node);
    }
    void operator()(const Edge& edge) const {
        if (watch_) draw_edge_(edge);
    }

private:
    Watch watch_;
    DrawNode draw_node_;
    DrawEdge draw_edge_;
};

}  // namespace

void CContent::DrawContent(paintcore::IPainter* painter) {
    const Watch watch(this);
    const bool is_laid_out = RecalculateLayout(painter);
    if (watch && is_laid_out) emit_view();
    if (watch && is_laid_out) Invalidate();
    if (!watch) return;
    MarkDrawnIn(graph_);
    end_stale_hover();
    if (!watch) return;
    if (need_coord_system_) SetCoordSystem(painter);
    OnDraw(this, painter);
    if (!watch) return;
    draw_requested(painter);
    if (!watch) return;
    redraw_nodes_.clear();
    redraw_edges_.clear();
    const viewkit::CInvalidRegion region(GetDrawRect(painter), GetDrawValidRect(painter));
    for (int i = 0; i < region.GetCount() && watch; ++i) draw_area(painter, region[i]);
}

void CContent::DrawPicture(paintcore::IPainter* painter) {
    if (need_coord_system_) SetCoordSystem(painter);
    draw_area(painter, GetDrawRect(painter));
}

// Paints over what stands there, without a clip and without the background.
void CContent::draw_requested(paintcore::IPainter* painter) {
    if (redraw_nodes_.size() > (tell_hover_ ? kMostNodesHovered : kMostNodesAlone)) {
        Invalidate();
        return;
    }
    std::vector<Node> nodes = redraw_nodes_;
    const std::vector<Edge> edges = redraw_edges_;
    SortByOwnership(nodes);
    const Drawing draw(this, painter, scale_);
    for (const Node& node : nodes) ForEachNodeIn(node, draw, false, true);
    if (!draw) return;
    CollectEdgesInNodes collect{{}, graph_};
    for (const Node& node : nodes) collect(node);
    for (const Edge& edge : edges) draw(edge);
    for (const Edge& edge : collect.edges) draw(edge);
}

void CContent::draw_area(paintcore::IPainter* painter, const rectangle<double>& area) {
    painter->SetClipRect(area.left, area.top, area.right, area.bottom, false);
    painter->SetBrush({paintcore::GetSysPalette()[paintcore::SysPalette::kBackground], 1});
    painter->FillRect(area);
    const Drawing draw(this, painter, scale_);
    const graph_ptr2<Graph> graph = graph_;
    internal::draw_in_area(*graph, area, draw);
    if (draw) painter->ResetClip();
}

}  // namespace nodeline
