#include <nodeline/viewer/overview.h>
#include <viewkit/control.h>
#include <viewkit/scroll_box.h>

#include <algorithm>
#include <cmath>

// How the rectangle of an overview is taken hold of anywhere.

namespace nodeline {
namespace {

using Watch = viewkit::Watch<CVisualElement>;

// How far from an edge a press takes hold of it: three pixels, wherever in a pixel the edge lies.
constexpr double kReach = 3.5;

// Which of two edges `at` has hold of, if either. Inside of the rectangle an edge reaches a third
// of the way to the other at most, which leaves something to move a small rectangle by.
int EdgeAt(double at, double low, double high) {
    const double inside = std::min(kReach, (high - low) / 3.0);
    if (at >= low - kReach && at <= low + inside) return -1;
    if (at >= high - inside && at <= high + kReach) return 1;
    return 0;
}

bool IsWithinReach(double at, double low, double high) {
    return at >= low - kReach && at <= high + kReach;
}

}  // namespace

void COverviewContent::SetGrabAnywhere(bool on) {
    grab_anywhere_ = on;
    if (!on) show_cursor(std::nullopt);
}

COverviewContent::Grip COverviewContent::grip_at(const point<double>& p) {
    point<double> at = p;
    point<double> low{view_rect_.left, view_rect_.top};
    point<double> high{view_rect_.right, view_rect_.bottom};
    LP2DP(&at);
    LP2DP(&low);
    LP2DP(&high);
    const bool is_near = IsWithinReach(at.x, low.x, high.x) && IsWithinReach(at.y, low.y, high.y);
    if (!is_near) return {0, 0, true};
    return {EdgeAt(at.x, low.x, high.x), EdgeAt(at.y, low.y, high.y), false};
}

void COverviewContent::start_grip(const point<double>& p) {
    grip_ = grip_at(p);
    saved_rect_ = view_rect_;
    saved_scale_ = viewer_->GetScale();
    const bool is_edge = grip_.horz != 0 || grip_.vert != 0;
    drag_mode_ = is_edge ? DragMode::kResize : DragMode::kMoveAll;
    if (!grip_.is_outside) return;
    const Watch watch(this);
    viewer_->SetStartX(p.x - (view_rect_.right - view_rect_.left) * 0.5);
    if (watch) viewer_->SetStartY(p.y - (view_rect_.bottom - view_rect_.top) * 0.5);
}

// `way` is how far the pointer has come since the press. What the drag does is computed from where
// it began, so nothing adds up.
void COverviewContent::resize_view(const point<double>& way) {
    const rectangle<double>& saved = saved_rect_;
    const size<double> old{saved.right - saved.left, saved.bottom - saved.top};
    if (!(old.cx > 0.0) || !(old.cy > 0.0)) return;
    const double horz = grip_.horz != 0 ? (old.cx + grip_.horz * way.x) / old.cx : 0.0;
    const double vert = grip_.vert != 0 ? (old.cy + grip_.vert * way.y) / old.cy : 0.0;
    const double factor = std::clamp(std::max(horz, vert), saved_scale_ / viewkit::kMaxWheelScale,
                                     saved_scale_ / viewkit::kMinWheelScale);
    if (!std::isfinite(factor)) return;
    // The edge that stays, or the middle of an axis on which no edge was taken.
    const auto start = [factor](int grip, double low, double high) {
        const double extent = (high - low) * factor;
        if (grip == 0) return (low + high - extent) * 0.5;
        return grip > 0 ? low : high - extent;
    };
    const point<double> to{start(grip_.horz, saved.left, saved.right),
                           start(grip_.vert, saved.top, saved.bottom)};
    const Watch watch(this);
    viewer_->SetScale(saved_scale_ / factor);
    if (watch) viewer_->SetStartX(to.x);
    if (watch) viewer_->SetStartY(to.y);
}

// ---------------------------------------------------------------------------------------------
// The cursor

bool COverviewContent::HandleMouseMove(int x, int y, int /*keys*/, MouseButton /*button*/) {
    if (!grab_anywhere_ || viewer_ == nullptr || tracker_->IsPressed()) return false;
    point<double> p{static_cast<double>(x), static_cast<double>(y)};
    DP2LP(&p);
    const Grip grip = grip_at(p);
    if (grip.is_outside) {
        show_cursor(std::nullopt);
    } else if (grip.horz == 0 && grip.vert == 0) {
        show_cursor(viewkit::Cursor::Move);
    } else if (grip.vert == 0) {
        show_cursor(viewkit::Cursor::SizeHorz);
    } else if (grip.horz == 0) {
        show_cursor(viewkit::Cursor::SizeVert);
    } else {
        show_cursor(grip.horz == grip.vert ? viewkit::Cursor::SizeFalling
                                           : viewkit::Cursor::SizeRising);
    }
    return false;
}

void COverviewContent::HandleMouseLeave(CVisualElement* element) {
    const Watch watch(this);
    CCentralPart::HandleMouseLeave(element);
    if (watch) show_cursor(std::nullopt);
}

void COverviewContent::show_cursor(std::optional<viewkit::Cursor> cursor) {
    if (cursor == cursor_ || GetControl() == nullptr) return;
    cursor_ = cursor;
    GetControl()->GetWindow()->SetCursor(cursor.value_or(viewkit::Cursor::Arrow));
}

}  // namespace nodeline
