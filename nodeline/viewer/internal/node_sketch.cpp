#include <nodeline/viewer/internal/node_sketch.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace nodeline::internal {

using paintcore::_color;

namespace {

// `weight` counts for `a` what 1 does for `b`.
_color Mixed(const _color& a, const _color& b, int weight) {
    const auto mix = [weight](unsigned char x, unsigned char y) {
        return static_cast<unsigned char>((weight * x + y) / (weight + 1));
    };
    _color mixed(mix(a.red, b.red), mix(a.green, b.green), mix(a.blue, b.blue));
    mixed.alpha = mix(a.alpha, b.alpha);
    return mixed;
}

int HeldPixel(double at, int extent) {
    // Not a number becomes 0.
    return at > 0.0 ? static_cast<int>(std::min(at, static_cast<double>(extent))) : 0;
}

}  // namespace

std::optional<_color> ColorFinder::Take() {
    area_ = -1.0;
    const std::optional<_color> outlined = std::exchange(outlined_, std::nullopt);
    const std::optional<_color> filled = std::exchange(filled_, std::nullopt);
    if (filled && outlined) return Mixed(*filled, *outlined, 2);
    return filled ? filled : outlined;
}

void ColorFinder::fill(const rectangle<double>& r, const _color& color) {
    const double area = std::abs((r.right - r.left) * (r.bottom - r.top));
    if (!(area > area_)) return;
    area_ = area;
    filled_ = color;
}

void ColorFinder::MoveTo(double /*x*/, double /*y*/) {}

void ColorFinder::LineTo(double /*x*/, double /*y*/) {
    if (!outlined_) outlined_ = GetPen().color;
}

void ColorFinder::BeginPlot(int /*type*/) {}

void ColorFinder::Vertex(double /*x*/, double /*y*/) {}

void ColorFinder::EndPlot() {}

void ColorFinder::Rectangle(double left, double top, double right, double bottom) {
    if (GetBrush().style != 0) fill({left, top, right, bottom}, GetBrush().color);
    if (!outlined_) outlined_ = GetPen().color;
}

void ColorFinder::RoundRect(double left, double top, double right, double bottom, double /*rx*/,
                            double /*ry*/) {
    Rectangle(left, top, right, bottom);
}

void ColorFinder::FillRect(double left, double top, double right, double bottom) {
    fill({left, top, right, bottom}, GetBrush().color);
}

void ColorFinder::GradientFill(const rectangle<double>& r, const _color& from, const _color& to,
                               int percent, int direction) {
    fill(r, Mixed(from, to, 1));
    StatePainter::GradientFill(r, from, to, percent, direction);
}

void ColorFinder::DrawString(const rectangle<double>& /*r*/, const std::string& /*text*/,
                             int /*format*/, int /*length*/) {}

size<double> ColorFinder::GetTextSize(const std::string& /*text*/, const paintcore::font* /*f*/,
                                      int /*length*/, bool /*leading*/, bool /*trailing*/) {
    return {0.0, 0.0};
}

PixelSketch::PixelSketch(const size<int>& extent)
    : extent_{std::max(0, extent.cx), std::max(0, extent.cy)},
      colors_(static_cast<std::size_t>(extent_.cx) * static_cast<std::size_t>(extent_.cy)) {}

std::size_t PixelSketch::index(int x, int y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(extent_.cx) +
           static_cast<std::size_t>(x);
}

rectangle<int> PixelSketch::cells(const rectangle<double>& r) const {
    const double left = std::floor(r.left);
    const double top = std::floor(r.top);
    return {HeldPixel(left, extent_.cx), HeldPixel(top, extent_.cy),
            HeldPixel(std::max(left + 1.0, std::round(r.right)), extent_.cx),
            HeldPixel(std::max(top + 1.0, std::round(r.bottom)), extent_.cy)};
}

bool PixelSketch::HasRoom(const rectangle<double>& r) const {
    const rectangle<int> c = cells(r);
    for (int y = c.top; y < c.bottom; ++y) {
        for (int x = c.left; x < c.right; ++x) {
            if (!colors_[index(x, y)]) return true;
        }
    }
    return false;
}

void PixelSketch::Fill(const rectangle<double>& r, const _color& color, bool replaces) {
    const rectangle<int> c = cells(r);
    for (int y = c.top; y < c.bottom; ++y) {
        for (int x = c.left; x < c.right; ++x) {
            std::optional<_color>& pixel = colors_[index(x, y)];
            if (replaces || !pixel) pixel = color;
        }
    }
}

void PixelSketch::Draw(paintcore::IPainter* painter) const {
    for (int y = 0; y < extent_.cy; ++y) {
        for (int x = 0; x < extent_.cx;) {
            const std::optional<_color>& color = colors_[index(x, y)];
            int end = x + 1;
            while (end < extent_.cx && colors_[index(end, y)] == color) ++end;
            if (color) {
                painter->SetBrush({*color, 1});
                painter->FillRect(x, y, end, y + 1.0);
            }
            x = end;
        }
    }
}

}  // namespace nodeline::internal
