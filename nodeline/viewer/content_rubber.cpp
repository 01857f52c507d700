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

}  // namespace

// Whatever owns nodes cannot be moved; dragging on it pans.
void CContent::ShiftProcessing(DragTracker* /*rubber*/, point<double> /*start*/, point<double> cur,
                               point<double> prev) {
    if (pressed_nodes_.empty()) return;
    const Node node = pressed_nodes_.front();
    if (move_nodes_ && node.GetOwned().GetCount() == 0) {
        MoveNode(node, cur.x - grab_offset_.x, cur.y - grab_offset_.y);
        RenewView(true);
        return;
    }
    const Watch watch(this);
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
    if (std::abs(b.x - a.x) > kLeastExtent && std::abs(b.y - a.y) > kLeastExtent) {
        if (rubber_mode_ == RubberZoom) {
            zoom_to(a, b);
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

void CContent::restore_cursor() {
    if (!cursor_pending_) return;
    cursor_pending_ = false;
    if (GetControl() != nullptr) GetControl()->GetWindow()->RestoreCursor();
}

}  // namespace nodeline
