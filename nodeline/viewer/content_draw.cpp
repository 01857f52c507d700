#include <nodeline/viewer/content.h>
#include <nodeline/viewer/draw_functions.h>
#include <nodeline/viewer/internal/draw_area.h>
#include <viewkit/invalid_region.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

namespace nodeline {
namespace {

using Watch = viewkit::Watch<CVisualElement>;

// More nodes than this are not worth painting one by one.
constexpr std::size_t kMostNodesAlone = 2;
// The same where the pointer is followed and may pass several between two paints.
constexpr std::size_t kMostNodesHovered = 8;
// How far, in pixels, a pen or an arrowhead reaches beyond its node or its route.
constexpr double kMostBeyond = 8.0;

// None for no route.
std::optional<rectangle<double>> ExtentOf(const std::vector<point<double>>& route) {
    if (route.empty()) return std::nullopt;
    rectangle<double> r{route[0].x, route[0].y, route[0].x, route[0].y};
    for (const point<double>& p : route) {
        r = {std::min(r.left, p.x), std::min(r.top, p.y), std::max(r.right, p.x),
             std::max(r.bottom, p.y)};
    }
    return r;
}

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

void CContent::draw_requested(paintcore::IPainter* painter) {
    if (redraw_nodes_.size() > (tell_hover_ ? kMostNodesHovered : kMostNodesAlone)) {
        Invalidate();
    } else if (tell_hover_) {
        draw_around_requested(painter);
    } else {
        draw_over_requested(painter);
    }
}

// With the background, and with all that is in the same place: what the pointer passes again and
// again would get darker each time.
void CContent::draw_around_requested(paintcore::IPainter* painter) {
    const Watch watch(this);
    std::vector<rectangle<double>> areas;
    for (const Node& node : redraw_nodes_) {
        areas.push_back(MakeDRect(node.GetPosition(), node.GetSize()));
    }
    for (const Edge& edge : redraw_edges_) {
        if (const auto extent = ExtentOf(edge.GetRoute())) areas.push_back(*extent);
    }
    const rectangle<double> view = GetDrawRect(painter);
    for (rectangle<double> area : areas) {
        area = whole_pixels_around(area);
        area = {std::max(area.left, view.left), std::max(area.top, view.top),
                std::min(area.right, view.right), std::min(area.bottom, view.bottom)};
        if (watch && area.left < area.right && area.top < area.bottom) draw_area(painter, area);
    }
}

rectangle<double> CContent::whole_pixels_around(const rectangle<double>& r) const {
    const auto before = [this](double at, double start) {
        return (std::floor((at - start) * scale_) - kMostBeyond) / scale_ + start;
    };
    const auto after = [this](double at, double start) {
        return (std::ceil((at - start) * scale_) + kMostBeyond) / scale_ + start;
    };
    return {before(r.left, horz_start_), before(r.top, vert_start_), after(r.right, horz_start_),
            after(r.bottom, vert_start_)};
}

// Paints over what stands there, without a clip and without the background.
void CContent::draw_over_requested(paintcore::IPainter* painter) {
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
