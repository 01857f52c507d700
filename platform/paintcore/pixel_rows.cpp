#include <paintcore/pixel_rows.h>

#include <algorithm>
#include <cstring>

namespace paintcore {

namespace {

constexpr int kPixelBytes = 4;

}  // namespace

void MovePixels(const PixelRows& image, const rectangle<int>& area, int dx, int dy) {
    const int left = std::max(0, area.left) + std::max(0, dx);
    const int right = std::min(image.extent.cx, area.right) + std::min(0, dx);
    const int top = std::max(0, area.top) + std::max(0, dy);
    const int bottom = std::min(image.extent.cy, area.bottom) + std::min(0, dy);
    if (left >= right || top >= bottom) return;
    const auto pixel = [&image](int x, int y) {
        return image.first + y * image.stride + std::ptrdiff_t{x} * kPixelBytes;
    };
    const std::size_t bytes = static_cast<std::size_t>(right - left) * kPixelBytes;
    // A row must not be overwritten before it has been read.
    for (int i = 0; i < bottom - top; ++i) {
        const int y = dy > 0 ? bottom - 1 - i : top + i;
        std::memmove(pixel(left, y), pixel(left - dx, y - dy), bytes);
    }
}

}  // namespace paintcore
