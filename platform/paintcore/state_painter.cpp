#include <paintcore/state_painter.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace paintcore {
namespace {

constexpr int kStandardFontSize = 8;
constexpr size<int> kStandardArrowSize{7, 5};

bool Includes(IPainter::StdSettings settings, IPainter::StdSettings part) {
    return (static_cast<int>(settings) & static_cast<int>(part)) != 0;
}

double Factor(int device, double logical) {
    const double factor = device / logical;
    return factor != 0.0 && std::isfinite(factor) ? factor : 1.0;
}

// An edge of a clip beyond any device clips nothing, and need not be infinite to do so.
double WithinReach(double v) {
    constexpr double kBeyondAnyDevice = 1.0e9;
    return std::isnan(v) ? 0.0 : std::clamp(v, -kBeyondAnyDevice, kBeyondAnyDevice);
}

}  // namespace

StatePainter::StatePainter() {
    font_.size = kStandardFontSize;
    text_color_ = _color(0, 0, 0);
    arrow_size_ = kStandardArrowSize;
}

void StatePainter::BeginPaint(StdSettings settings) {
    painting_ = true;
    if (Includes(settings, StdSettings::Styles)) {
        pen_ = pen();
        brush_ = brush();
        font_ = font();
        font_.size = kStandardFontSize;
        text_color_ = _color(0, 0, 0);
        arrow_size_ = kStandardArrowSize;
    }
    if (Includes(settings, StdSettings::Coords)) {
        clip_.reset();
        StatePainter::SetCoordSystem(MapMode::Identity, nullptr);
    }
}

void StatePainter::EndPaint() { painting_ = false; }

void StatePainter::SetPen(const pen& p) { pen_ = p; }

void StatePainter::SetBrush(const brush& b) { brush_ = b; }

void StatePainter::SetFont(const font& f) { font_ = f; }

void StatePainter::SetArrowSize(int length, int width) { arrow_size_ = {length, width}; }

void StatePainter::SetTextColor(const _color& color) { text_color_ = color; }

bool StatePainter::IsPainting() const { return painting_; }

void StatePainter::SetClipRect(double left, double top, double right, double bottom,
                               bool /*combine*/) {
    const rectangle<double> r = ToDevice(rectangle<double>{left, top, right, bottom});
    clip_ = {WithinReach(r.left), WithinReach(r.top), WithinReach(r.right), WithinReach(r.bottom)};
}

void StatePainter::ResetClip() { clip_.reset(); }

void StatePainter::GetCoordSystem(MapMode& mode, CoordInfo* info) const {
    mode = mode_;
    if (info != nullptr) *info = info_;
}

void StatePainter::SetCoordSystem(MapMode mode, const CoordInfo* info) {
    mode_ = mode;
    info_ = info != nullptr ? *info : CoordInfo();
    scale_ = {1.0, 1.0};
    if (mode_ == MapMode::Rectangle) {
        scale_ = {Factor(info_.device_extent.cx, info_.logical_extent.cx),
                  Factor(info_.device_extent.cy, info_.logical_extent.cy)};
    }
}

rectangle<double> StatePainter::GetPaintRect() const {
    const point<double> a = ToLogical(paint_rect_.left, paint_rect_.top);
    const point<double> b = ToLogical(paint_rect_.right, paint_rect_.bottom);
    return {a.x, a.y, b.x, b.y};
}

void StatePainter::GradientFill(const rectangle<double>& /*r*/, const _color& /*from*/,
                                const _color& /*to*/, int /*percent*/, int /*direction*/) {
    brush_.style = 0;
}

void StatePainter::SetDevicePaintRect(const rectangle<double>& pixels) { paint_rect_ = pixels; }

point<double> StatePainter::ToDevice(double x, double y) const {
    if (mode_ != MapMode::Rectangle) return {x, y};
    return {info_.device_origin.x + (x - info_.logical_origin.x) * scale_.cx,
            info_.device_origin.y + (y - info_.logical_origin.y) * scale_.cy};
}

rectangle<double> StatePainter::ToDevice(const rectangle<double>& r) const {
    point<double> a = ToDevice(r.left, r.top);
    point<double> b = ToDevice(r.right, r.bottom);
    if (a.x > b.x) std::swap(a.x, b.x);
    if (a.y > b.y) std::swap(a.y, b.y);
    return {a.x, a.y, b.x, b.y};
}

point<double> StatePainter::ToLogical(double x, double y) const {
    if (mode_ != MapMode::Rectangle) return {x, y};
    return {info_.logical_origin.x + (x - info_.device_origin.x) / scale_.cx,
            info_.logical_origin.y + (y - info_.device_origin.y) / scale_.cy};
}

}  // namespace paintcore
