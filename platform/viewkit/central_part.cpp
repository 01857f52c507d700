#include <viewkit/central_part.h>
#include <viewkit/control.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace viewkit {

namespace {

// How far a move may be from whole pixels and still leave the same picture.
constexpr double kPixelTolerance = 1e-6;

}  // namespace

CCentralPart::CCentralPart(CVisualElement* parent, const size<int>& initial, Alignment alignment)
    : CVisualElement(parent, initial, alignment) {}

void CCentralPart::SetHorzScroll(IScrollModel* model) { horz_scroll_ = model; }

void CCentralPart::SetVertScroll(IScrollModel* model) { vert_scroll_ = model; }

point<double> CCentralPart::GetViewScale() const {
    const auto scale_of = [](const IScrollModel* model) {
        if (model == nullptr) return 1.0;
        const std::pair<double, int> measure = model->GetMeasure();
        return measure.second / measure.first;
    };
    return {scale_of(horz_scroll_), scale_of(vert_scroll_)};
}

point<double> CCentralPart::GetViewStart() const {
    return {horz_scroll_ != nullptr ? horz_scroll_->GetStart() : 0.0,
            vert_scroll_ != nullptr ? vert_scroll_->GetStart() : 0.0};
}

void CCentralPart::FillCoordInfo(CoordInfo* info) {
    const rectangle<int> r = GetContentRect();
    const point<double> scale = GetViewScale();
    info->logical_origin = GetViewStart();
    info->logical_extent = {r.right / scale.x, r.bottom / scale.y};
    info->device_origin = {0, 0};
    info->device_extent = {r.right, r.bottom};
}

void CCentralPart::SetCoordSystem(IPainter* painter) {
    CoordInfo info;
    FillCoordInfo(&info);
    painter->SetCoordSystem(paintcore::MapMode::Rectangle, &info);
}

void CCentralPart::DP2LP(point<double>* p) {
    const point<double> scale = GetViewScale();
    const point<double> start = GetViewStart();
    *p = {p->x / scale.x + start.x, p->y / scale.y + start.y};
}

void CCentralPart::LP2DP(point<double>* p) {
    const point<double> scale = GetViewScale();
    const point<double> start = GetViewStart();
    *p = {(p->x - start.x) * scale.x, (p->y - start.y) * scale.y};
}

rectangle<double> CCentralPart::to_logical(const rectangle<double>& pixels) {
    point<double> from{pixels.left, pixels.top};
    point<double> to{pixels.right, pixels.bottom};
    DP2LP(&from);
    DP2LP(&to);
    return {from.x, from.y, to.x, to.y};
}

rectangle<double> CCentralPart::GetDrawRect(IPainter* painter) {
    const rectangle<double> pixels = CVisualElement::GetDrawRect(painter);
    return painter != nullptr ? to_logical(pixels) : pixels;
}

rectangle<double> CCentralPart::GetDrawValidRect(IPainter* painter) {
    const rectangle<double> whole = CVisualElement::GetDrawValidRect(painter);
    // The view has moved since the paint began, and so the pixels are not where they should be.
    if (whole == rectangle<double>{} || !(present_view() == begun_)) return {};
    const rectangle<double> pixels{
        static_cast<double>(valid_pixels_.left), static_cast<double>(valid_pixels_.top),
        static_cast<double>(valid_pixels_.right), static_cast<double>(valid_pixels_.bottom)};
    return painter != nullptr ? to_logical(pixels) : pixels;
}

CCentralPart::View CCentralPart::present_view() const {
    const rectangle<int> r = GetContentRect();
    return {GetViewStart(), GetViewScale(), {r.right, r.bottom}};
}

void CCentralPart::BeginDraw() {
    CVisualElement::BeginDraw();
    begun_ = present_view();
    valid_pixels_ = {};
    const bool is_kept = HasValidPixels() && painted_ && painted_->scale == begun_.scale &&
                         painted_->extent == begun_.extent;
    if (!is_kept) {
        painted_.reset();
    } else if (painted_->start == begun_.start) {
        valid_pixels_ = GetContentRect();
    } else if (IsCovered() || IsCutOff()) {
        // What lies on top would be moved along, and there are no pixels of what was cut off.
        painted_.reset();
    } else {
        move_pixels(begun_);
    }
}

void CCentralPart::move_pixels(const View& now) {
    const point<double> exact{(painted_->start.x - now.start.x) * now.scale.x,
                              (painted_->start.y - now.start.y) * now.scale.y};
    const point<double> whole{std::round(exact.x), std::round(exact.y)};
    const rectangle<int> r = GetContentRect();
    // Not a number fails these comparisons as well.
    const bool is_whole = std::abs(exact.x - whole.x) <= kPixelTolerance &&
                          std::abs(exact.y - whole.y) <= kPixelTolerance;
    const bool stays_in_view = std::abs(whole.x) < r.right && std::abs(whole.y) < r.bottom;
    if (!is_whole || !stays_in_view) {
        painted_.reset();
        return;
    }
    const int dx = static_cast<int>(whole.x);
    const int dy = static_cast<int>(whole.y);
    CControl* const control = GetControl();
    IWindow* const window = control != nullptr ? control->GetWindow() : nullptr;
    const point<int> origin = GetWindowOrigin();
    const rectangle<int> area{origin.x, origin.y, origin.x + r.right, origin.y + r.bottom};
    if (dx != 0 || dy != 0) {
        if (window == nullptr || !window->MovePixels(area, dx, dy)) {
            painted_.reset();
            return;
        }
    }
    painted_->start -= point<double>{dx / now.scale.x, dy / now.scale.y};
    valid_pixels_ = {std::max(0, dx), std::max(0, dy), std::min(r.right, r.right + dx),
                     std::min(r.bottom, r.bottom + dy)};
}

void CCentralPart::EndDraw() {
    CVisualElement::EndDraw();
    const View now = present_view();
    // What was painted in full shows the view as it is now; what was moved keeps its own start.
    if (!painted_ || !(now == begun_)) painted_ = now;
}

}  // namespace viewkit
