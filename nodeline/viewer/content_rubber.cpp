#include <nodeline/handlers/internal/truncate.h>
#include <nodeline/viewer/content.h>
#include <viewkit/control.h>

#include <algorithm>
#include <cmath>

namespace nodeline {
namespace {

using Watch = viewkit::Watch<CVisualElement>;

// A rectangle that is no larger, in logical units, is no gesture.
constexpr double kLeastExtent = 20.0;
// The same in pixels: four may be a hand that only clicks. The half is for rounding.
constexpr double kLeastPixels = 4.5;

}  // namespace

// Whatever owns nodes cannot be moved; dragging on it pans.
void CContent::ShiftProcessing(DragTracker* /*rubber*/, point<double> /*start*/, point<double> cur,
                               point<double> prev) {
    if (pressed_nodes_.empty()) return;
    const Watch watch(this);
    end_hover();
    if (!watch || pressed_nodes_.empty()) return;
    const Node node = pressed_nodes_.front();
    // It was removed while it was pressed.
    if (single_press_ && node.IsDummy() && !IsRoot(node)) return;
    if (move_nodes_ && node.GetOwned().GetCount() == 0) {
        MoveNode(node, cur.x - grab_offset_.x, cur.y - grab_offset_.y);
        RenewView(true);
        return;
    }
    SetStartX(GetHorzStart() - (cur.x - prev.x));
    if (watch) SetStartY(GetVertStart() - (cur.y - prev.y));
}

void CContent::EndShiftProcessing(DragTracker* /*rubber*/, point<double> /*start*/,
                                  point<double> /*end*/) {
    restore_cursor();
    pressed_nodes_.clear();
}

void CContent::ChangeScrollModel(ZoomRect* rect, point<double> a, point<double> b) {
    const Watch watch(this);
    const point<double> from = rect->GetStartCorner();
    const point<double> to = rect->GetEndCorner();
    const bool is_drag =
        std::max(std::abs(to.x - from.x), std::abs(to.y - from.y)) * scale_ > kLeastPixels;
    if (rubber_ends_press_ && is_drag) {
        pressed_nodes_.clear();
        OnPressDropped(this);
        if (!watch) return;
    }
    // The pointer may have gone further than what has been painted.
    if (select_touched_) {
        a = from;
        b = to;
    }
    if (is_gesture({std::abs(b.x - a.x), std::abs(b.y - a.y)})) {
        if (rubber_mode_ == RubberZoom) {
            zoom_to(a, b);
        } else if (select_touched_) {
            select_touched_in(a, b, (rect->GetReleaseKeys() & paintcore::KeyShift) != 0);
        } else {
            select_in(a, b);
        }
    }
    if (watch) RenewView(false);
    if (!watch) return;
    rect->Reset();
    rect->OnChange(rect, viewkit::UpdateType::Content);
    if (watch) restore_cursor();
}

bool CContent::is_gesture(const size<double>& extent) const {
    if (!select_touched_) return extent.cx > kLeastExtent && extent.cy > kLeastExtent;
    const double longer = std::max(extent.cx, extent.cy) * scale_;
    const double shorter = std::min(extent.cx, extent.cy) * scale_;
    return (rubber_mode_ == RubberZoom ? shorter : longer) > kLeastPixels;
}

void CContent::select_touched_in(const point<double>& a, const point<double>& b, bool adds) {
    MarkDrawnIn(graph_);
    if (!adds) {
        const auto unselect = [](const Node& node) {
            if (IsFlagSet(node, NodeSelected)) Unselect(node);
        };
        ForEachNodeIn(graph_->GetRoot(), unselect, false, false);
    }
    const NodeSet met = graph_->HitNodeTest(std::min(a.x, b.x), std::min(a.y, b.y),
                                            std::max(a.x, b.x), std::max(a.y, b.y));
    for (const Node& node : met) {
        if (node.GetOwned().GetCount() == 0 && IsFlagSet(node, NodeDrawn)) Select(node);
    }
    Invalidate();
}

// The rectangle is logical, and is looked up as if it were in pixels.
void CContent::select_in(const point<double>& a, const point<double>& b) {
    const Watch watch(this);
    const rectangle<double> r{std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x),
                              std::max(a.y, b.y)};
    const NodeSet met = HitNodeTest(internal::Truncate(r.left), internal::Truncate(r.top),
                                    internal::Truncate(r.right), internal::Truncate(r.bottom));
    for (int i = 0; i < met.GetCount() && watch; ++i) {
        const Node node = met.GetItem(i);
        node.GetHandler()->HandleOnSelectRect(node, r);
    }
}

void CContent::zoom_to(const point<double>& a, const point<double>& b) {
    const Watch watch(this);
    const rectangle<int> r = GetContentRect();
    SetScale(std::min((r.right - r.left) / std::abs(b.x - a.x),
                      (r.bottom - r.top) / std::abs(b.y - a.y)));
    if (watch) SetStartX(std::min(a.x, b.x));
    if (watch) SetStartY(std::min(a.y, b.y));
}

void CContent::FollowRubber(ZoomRect* /*rect*/, point<double> /*start*/, point<double> /*cur*/,
                            point<double> /*prev*/) {
    const Watch watch(this);
    end_hover();
    if (!watch || !tell_rubber_scroll_) return;
    if (told_start_ != point<double>{horz_start_, vert_start_}) emit_view();
}

void CContent::restore_cursor() {
    if (!cursor_pending_) return;
    cursor_pending_ = false;
    if (GetControl() != nullptr) GetControl()->GetWindow()->RestoreCursor();
}

}  // namespace nodeline
