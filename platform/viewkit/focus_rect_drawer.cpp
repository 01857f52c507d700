#include <viewkit/focus_rect_drawer.h>

namespace viewkit {

using paintcore::rectangle;

void FocusRectDrawer::DrawRect(paintcore::IPainter* /*painter*/, double x1, double y1, double x2,
                               double y2) {
    const rectangle<double> r{x1, y1, x2, y2};
    if (outline_ == r) {
        outline_.reset();
    } else {
        outline_ = r;
    }
}

void FocusRectDrawer::DrawSelection(paintcore::IPainter* /*painter*/, double /*oldX1*/,
                                    double /*oldY1*/, double newX1, double newY1, double /*oldX2*/,
                                    double /*oldY2*/, double newX2, double newY2, bool active,
                                    bool /*erased*/) {
    outline_.reset();
    if (active) outline_ = rectangle<double>{newX1, newY1, newX2, newY2};
}

void FocusRectDrawer::PaintOutline(paintcore::IPainter* painter) const {
    if (!outline_) return;
    // A light line under a dark one is seen on any ground.
    const paintcore::brush no_fill{{}, 0};
    painter->SetBrush(no_fill);
    painter->SetPen({paintcore::_color(255, 255, 255), halo_width_, 1, 0, 0});
    painter->Rectangle(*outline_);
    painter->SetPen({paintcore::_color(60, 60, 60), 1, 1, 0, 0});
    painter->Rectangle(*outline_);
}

}  // namespace viewkit
