#include <checkfence/assert.h>
#include <nodeline/handlers/internal/truncate.h>
#include <nodeline/viewer/internal/arrow_keys.h>
#include <nodeline/viewer/overview.h>
#include <viewkit/control.h>

#include <algorithm>
#include <cmath>

namespace nodeline {
namespace {

using Watch = viewkit::Watch<CVisualElement>;

constexpr size<int> kInitialSize{40, 40};
constexpr double kKeyStep = 10.0;
// How far from an edge, in pixels, a press takes hold of it, and then how far from the press an
// edge is dragged.
constexpr double kGrabDistance = 2.0;
constexpr double kDragDistance = 1.0;

bool IsBetween(double v, double low, double high) { return low < v && v < high; }

// The factor of a painter that stretches `logical` over `device`.
double Stretch(int device, double logical) {
    const double factor = device / logical;
    return factor != 0.0 && std::isfinite(factor) ? factor : 1.0;
}

}  // namespace

COverviewContent::COverviewContent(CVisualElement* parent, IViewer* viewer)
    : CCentralPart(parent, kInitialSize, viewkit::Alignment::Client),
      tracker_(new Tracker(this)),
      viewer_(viewer) {
    tracker_->Enable(true);
    tracker_->OnStart.connect(this, &COverviewContent::StartShiftProcessing);
    tracker_->OnShift.connect(this, &COverviewContent::ShiftProcessing);
    CHECKFENCE_ASSERT(viewer_ != nullptr, "COverviewContent: there is no viewer");
    if (viewer_ == nullptr) return;
    viewer_->OnChangeView.connect(this, &COverviewContent::HandleOnChangeView);
    viewer_->RenewView(false);
}

COverviewContent::~COverviewContent() = default;

void COverviewContent::SetViewer(IViewer* viewer) {
    if (viewer == viewer_ || viewer == nullptr) return;
    if (viewer_ != nullptr) {
        viewer_->OnChangeView.disconnect(this, &COverviewContent::HandleOnChangeView);
    }
    viewer_ = viewer;
    viewer_->OnChangeView.connect(this, &COverviewContent::HandleOnChangeView);
    viewer_->RenewView(false);
}

IViewer* COverviewContent::GetViewer() const { return viewer_; }

void COverviewContent::SetStartX(double x) {
    if (viewer_ != nullptr) viewer_->SetStartX(x);
}

void COverviewContent::SetStartY(double y) {
    if (viewer_ != nullptr) viewer_->SetStartY(y);
}

void COverviewContent::SetViewWidth(double width) {
    if (viewer_ != nullptr) viewer_->SetViewWidth(width);
}

void COverviewContent::SetViewHeight(double height) {
    if (viewer_ != nullptr) viewer_->SetViewHeight(height);
}

// ---------------------------------------------------------------------------------------------
// The picture

graph_ptr2<Graph> COverviewContent::shown_graph() const {
    return viewer_ != nullptr ? viewer_->GetGraph() : graph_ptr2<Graph>();
}

size<double> COverviewContent::graph_extent() const {
    const graph_ptr2<Graph> graph = shown_graph();
    return graph ? graph->GetRoot().GetSize() : size<double>{};
}

void COverviewContent::compute_scale() {
    const rectangle<int> r = GetContentRect();
    const size<double> s = graph_extent();
    overview_scale_ = std::min((r.right - r.left) / s.cx, (r.bottom - r.top) / s.cy);
}

void COverviewContent::HandleOnChangeView(point<double> a, point<double> b) {
    view_rect_ = {a.x, a.y, b.x, b.y};
    compute_scale();
    OnChange(this, viewkit::UpdateType::Content);
    if (!view_overlay_) return;
    const graph_ptr2<Graph> graph = viewer_->GetGraph();
    if (graph && is_held(*graph)) OnNodesHeld();
}

void COverviewContent::SetPos(const rectangle<int>& bounds, bool repaint) {
    const Watch watch(this);
    CCentralPart::SetPos(bounds, repaint);
    if (!watch) return;
    compute_scale();
    OnChange(this, viewkit::UpdateType::Content);
}

void COverviewContent::SetCoordSystem(paintcore::IPainter* painter) {
    paintcore::MapMode mode = paintcore::MapMode::Identity;
    paintcore::CoordInfo info;
    painter->GetCoordSystem(mode, &info);
    const rectangle<double> r = GetDrawRect(nullptr);
    const point<int> corner{internal::Truncate(r.left), internal::Truncate(r.top)};
    info.logical_origin = {0.0, 0.0};
    info.logical_extent = graph_extent();
    info.device_origin = corner;
    info.device_extent = {internal::Truncate(r.right) - corner.x,
                          internal::Truncate(r.bottom) - corner.y};
    painter->SetCoordSystem(paintcore::MapMode::Rectangle, &info);
}

size<double> COverviewContent::stretch() const {
    const rectangle<int> r = GetContentRect();
    const size<double> s = graph_extent();
    return {Stretch(r.right - r.left, s.cx), Stretch(r.bottom - r.top, s.cy)};
}

void COverviewContent::DP2LP(point<double>* p) {
    const size<double> factor = stretch();
    *p = {p->x / factor.cx, p->y / factor.cy};
}

void COverviewContent::LP2DP(point<double>* p) {
    const size<double> factor = stretch();
    *p = {p->x * factor.cx, p->y * factor.cy};
}

// ---------------------------------------------------------------------------------------------
// The pointer and the keyboard

void COverviewContent::StartShiftProcessing(Tracker* /*rubber*/, point<double> p,
                                            point<double> /*q*/) {
    if (grab_anywhere_ && viewer_ != nullptr) {
        start_grip(p);
        return;
    }
    const double d = kGrabDistance / overview_scale_;
    const rectangle<double>& r = view_rect_;
    if (p.x < r.left - d || p.x > r.right + d || p.y < r.top - d || p.y > r.bottom + d) {
        tracker_->Reset();
    } else if (IsBetween(p.x, r.left + d, r.right - d) && IsBetween(p.y, r.top + d, r.bottom - d)) {
        drag_mode_ = DragMode::kMoveAll;
    } else {
        drag_mode_ = DragMode::kMoveEdge;
        saved_rect_ = view_rect_;
    }
}

void COverviewContent::ShiftProcessing(Tracker* /*rubber*/, point<double> start, point<double> cur,
                                       point<double> prev) {
    const Watch watch(this);
    if (drag_mode_ == DragMode::kMoveAll) {
        shift_all(cur, prev);
    } else if (drag_mode_ == DragMode::kResize) {
        resize_view(cur - start);
    } else {
        shift_edges(start, cur - prev);
    }
    if (!watch || GetControl() == nullptr) return;
    // At once, so that the rectangle keeps up with the pointer.
    viewkit::IWindow* window = GetControl()->GetWindow();
    window->Repaint(window->GetRect());
}

void COverviewContent::shift_all(const point<double>& cur, const point<double>& prev) {
    const Watch watch(this);
    viewer_->SetStartX(view_rect_.left - prev.x + cur.x);
    if (watch) viewer_->SetStartY(view_rect_.top - prev.y + cur.y);
}

// The edges that the press took hold of. Only the width goes to the viewer: its height follows from
// the scale. Each call of the viewer brings `view_rect_` back to what it shows.
void COverviewContent::shift_edges(const point<double>& start, const point<double>& step) {
    const Watch watch(this);
    const double d = kDragDistance / overview_scale_;
    const rectangle<double>& saved = saved_rect_;
    if (IsBetween(saved.left, start.x - d, start.x + d)) view_rect_.left += step.x;
    if (IsBetween(saved.right, start.x - d, start.x + d)) view_rect_.right += step.x;
    if (IsBetween(saved.top, start.y - d, start.y + d)) view_rect_.top += step.y;
    if (IsBetween(saved.bottom, start.y - d, start.y + d)) view_rect_.bottom += step.y;
    if (view_rect_.left != saved.left || view_rect_.top != saved.top) {
        viewer_->SetStartX(view_rect_.left);
        if (watch) viewer_->SetStartY(view_rect_.top);
    }
    if (watch) SetViewWidth(view_rect_.right - view_rect_.left);
}

bool COverviewContent::HandleKeyDown(int /*keys*/, int code) {
    const std::optional<internal::ArrowKey> arrow = internal::ToArrowKey(code);
    if (!arrow) return false;
    const double step = arrow->sign * kKeyStep;
    if (arrow->is_horz) {
        SetStartX(view_rect_.left + step);
    } else {
        SetStartY(view_rect_.top + step);
    }
    return true;
}

}  // namespace nodeline
