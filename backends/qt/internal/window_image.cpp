#include <backends/qt/internal/window_image.h>
#include <paintcore/pixel_rows.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <optional>

namespace nodeline::qt {

using paintcore::rectangle;
using paintcore::size;

namespace {

// What a QImage can hold.
constexpr int kMaxSide = 32767;

int ToDots(int extent, double ratio) {
    return static_cast<int>(std::clamp(std::ceil(extent * ratio), 1.0, double{kMaxSide}));
}

std::uint32_t Background() {
    const auto& c = paintcore::GetSysPalette()[paintcore::SysPalette::kBackground];
    return qRgb(c.red, c.green, c.blue);
}

// A coordinate in device pixels, if it is a whole one.
std::optional<int> WholeDots(int v, double ratio) {
    const double dots = v * ratio;
    if (dots != std::round(dots)) return std::nullopt;
    return static_cast<int>(dots);
}

}  // namespace

WindowImage::WindowImage(const size<int>& extent, double ratio)
    : width_(ToDots(extent.cx, ratio)),
      height_(ToDots(extent.cy, ratio)),
      ratio_(ratio),
      pixels_(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_), Background()),
      image_(reinterpret_cast<uchar*>(pixels_.data()), width_, height_,
             static_cast<qsizetype>(width_) * static_cast<qsizetype>(sizeof(std::uint32_t)),
             QImage::Format_RGB32),
      painter_(&image_) {
    image_.setDevicePixelRatio(ratio);
    painter_.SetDevicePaintRect(
        {0.0, 0.0, static_cast<double>(extent.cx), static_cast<double>(extent.cy)});
}

void WindowImage::Take(const WindowImage& other) {
    if (other.ratio_ != ratio_) return;
    const auto bytes =
        static_cast<std::size_t>(std::min(width_, other.width_)) * sizeof(std::uint32_t);
    for (int y = 0; y < std::min(height_, other.height_); ++y) {
        std::memcpy(
            &pixels_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_)],
            &other.pixels_[static_cast<std::size_t>(y) * static_cast<std::size_t>(other.width_)],
            bytes);
    }
}

bool WindowImage::Move(const rectangle<int>& area, int dx, int dy) {
    const auto x = WholeDots(dx, ratio_);
    const auto y = WholeDots(dy, ratio_);
    const auto from_x = WholeDots(area.left, ratio_);
    const auto from_y = WholeDots(area.top, ratio_);
    const auto to_x = WholeDots(area.right, ratio_);
    const auto to_y = WholeDots(area.bottom, ratio_);
    if (!x || !y || !from_x || !from_y || !to_x || !to_y) return false;
    const auto stride =
        static_cast<std::ptrdiff_t>(width_) * static_cast<std::ptrdiff_t>(sizeof(std::uint32_t));
    paintcore::MovePixels(
        {reinterpret_cast<unsigned char*>(pixels_.data()), stride, {width_, height_}},
        {*from_x, *from_y, *to_x, *to_y}, *x, *y);
    return true;
}

}  // namespace nodeline::qt
