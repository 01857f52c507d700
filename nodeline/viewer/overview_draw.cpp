#include <nodeline/handlers/node_handler.h>
#include <nodeline/ops/graph_ops.h>
#include <nodeline/viewer/draw_functions.h>
#include <nodeline/viewer/internal/node_sketch.h>
#include <nodeline/viewer/overview.h>
#include <viewkit/control.h>

// What an overview paints: the nodes, and the rectangle as a part of the picture or over it.

namespace nodeline {
namespace {

using paintcore::_color;
using Watch = viewkit::Watch<CVisualElement>;

constexpr paintcore::pen kViewPen{_color(180, 20, 20), 2, 1};
// A leaf that is lower or narrower, in pixels, is only its colour.
constexpr double kSmall = 2.0;

void FillBackground(paintcore::IPainter* painter) {
    const rectangle<double> all = painter->GetPaintRect();
    painter->SetBrush({paintcore::GetSysPalette()[paintcore::SysPalette::kBackground], 1});
    painter->FillRect(all);
}

// Draws nodes: those that are large enough as they are, of the others the colour.
class NodePicture {
public:
    // The painter maps the coordinates of the graph; `factor` is pixels to the unit.
    NodePicture(paintcore::IPainter* painter, const size<int>& extent, const size<double>& factor,
                double zoom)
        : draw_{painter, zoom}, sketch_draw_{&finder_, zoom}, sketch_(extent), factor_(factor) {
        paintcore::MapMode mode = paintcore::MapMode::Identity;
        paintcore::CoordInfo info;
        painter->GetCoordSystem(mode, &info);
        finder_.SetDevicePaintRect(
            {0.0, 0.0, static_cast<double>(extent.cx), static_cast<double>(extent.cy)});
        finder_.BeginPaint(paintcore::IPainter::StdSettings::All);
        finder_.SetCoordSystem(mode, &info);
    }

    void Add(const Node& node) {
        const point<double> p = node.GetPosition();
        const size<double> s = node.GetSize();
        const size<double> pixels{s.cx * factor_.cx, s.cy * factor_.cy};
        const bool is_small = pixels.cx < kSmall || pixels.cy < kSmall;
        if (!is_small || node.GetOwned().GetCount() > 0) {
            draw_(node);
            return;
        }
        const point<double> at{p.x * factor_.cx, p.y * factor_.cy};
        const rectangle<double> r = MakeDRect(at, pixels);
        const bool stands_out = IsFlagSet(node, NodeSelected | NodeMarked | NodeNew);
        if (!stands_out && !sketch_.HasRoom(r)) return;
        sketch_draw_(node);
        if (const auto color = finder_.Take()) sketch_.Fill(r, *color, stands_out);
    }
    // Draws what has only been sketched. The painter's units are pixels.
    void DrawSketch() const { sketch_.Draw(draw_.painter); }

private:
    internal::ColorFinder finder_;
    DrawNode draw_;
    DrawNode sketch_draw_;
    internal::PixelSketch sketch_;
    size<double> factor_;
};

}  // namespace

void COverviewContent::DrawContent(paintcore::IPainter* painter) {
    if (!view_overlay_) {
        draw_all_nodes(painter);
        return;
    }
    const bool has_pixels = GetDrawValidRect(nullptr) == GetDrawRect(nullptr);
    const graph_ptr2<Graph> graph = shown_graph();
    if (!graph) {
        FillBackground(painter);
        return;
    }
    if (has_pixels && is_held(*graph)) {
        OnNodesHeld();
        return;
    }
    nodes_are_due_ = false;
    if (has_pixels && is_picture_of(*graph)) return;
    painted_store_ = graph->GetRoot().store();
    painted_revision_ = graph->GetRevision();
    draw_picture(painter);
}

void COverviewContent::DrawPicture(paintcore::IPainter* painter) {
    if (view_overlay_) {
        draw_picture(painter);
    } else {
        DrawContent(painter);
    }
}

void COverviewContent::draw_all_nodes(paintcore::IPainter* painter) {
    const Watch watch(this);
    FillBackground(painter);
    const graph_ptr2<Graph> graph = shown_graph();
    if (!graph) return;
    SetCoordSystem(painter);
    const DrawNode draw_node{painter, overview_scale_};
    const auto draw = [&](const Node& node) {
        if (watch) draw_node(node);
    };
    ForEachNodeIn(graph->GetRoot(), draw, false, true);
    if (watch) draw_view(painter, view_rect_);
}

void COverviewContent::draw_picture(paintcore::IPainter* painter) {
    const Watch watch(this);
    FillBackground(painter);
    const graph_ptr2<Graph> graph = shown_graph();
    if (!graph) return;
    // The viewer may not have painted since the last change.
    MarkDrawnIn(graph);
    SetCoordSystem(painter);
    const rectangle<int> r = GetContentRect();
    NodePicture picture(painter, {r.right, r.bottom}, stretch(), overview_scale_);
    int count = 0;
    const auto draw = [&](const Node& node) {
        if (!watch) return;
        ++count;
        if (IsRoot(node) || IsFlagSet(node, NodeDrawn)) picture.Add(node);
    };
    ForEachNodeIn(graph->GetRoot(), draw, false, true);
    if (!watch) return;
    painted_nodes_ = count;
    painter->SetCoordSystem(paintcore::MapMode::Identity, nullptr);
    picture.DrawSketch();
    painter->ResetClip();
}

void COverviewContent::draw_view(paintcore::IPainter* painter, const rectangle<double>& view) {
    painter->SetPen(kViewPen);
    painter->SetBrush({_color(0, 0, 0), 0});
    painter->Rectangle(view);
    painter->ResetClip();
}

// A view that reaches beyond the graph has its edges along those of the overview: single lines
// would not be taken for a frame.
void COverviewContent::DrawOverlay(paintcore::IPainter* painter) {
    if (!view_overlay_ || viewer_ == nullptr) return;
    const size<double> all = graph_extent();
    const size<double> factor = stretch();
    const size<double> edge{kViewPen.width / factor.cx, kViewPen.width / factor.cy};
    const rectangle<double> seen{std::max(view_rect_.left, edge.cx),
                                 std::max(view_rect_.top, edge.cy),
                                 std::min(view_rect_.right, all.cx - edge.cx),
                                 std::min(view_rect_.bottom, all.cy - edge.cy)};
    if (!(seen.left < seen.right && seen.top < seen.bottom)) return;
    SetCoordSystem(painter);
    draw_view(painter, seen);
}

// ---------------------------------------------------------------------------------------------
// The overlay

void COverviewContent::SetViewOverlay(bool on) {
    if (on == view_overlay_) return;
    view_overlay_ = on;
    Invalidate();
}

bool COverviewContent::is_picture_of(Graph& graph) const {
    return painted_store_.get() == graph.GetRoot().store().get() &&
           painted_revision_ == graph.GetRevision();
}

// Whether the picture is an old one of this graph that is to stay.
bool COverviewContent::is_held(Graph& graph) const {
    const bool may_stay = view_overlay_ && !nodes_are_due_ && nodes_held_above_ >= 0 &&
                          painted_nodes_ > nodes_held_above_;
    return may_stay && painted_store_.get() == graph.GetRoot().store().get() &&
           painted_revision_ != graph.GetRevision();
}

void COverviewContent::RenewNodes() {
    nodes_are_due_ = true;
    OnChange(this, viewkit::UpdateType::Content);
}

}  // namespace nodeline
