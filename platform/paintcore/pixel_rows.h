// Pixels of an image in memory, row by row.
#pragma once

#include <corvex/export.h>
#include <paintcore/geometry.h>

#include <cstddef>

namespace paintcore {

// An image of `extent` pixels of four bytes each, whose rows are `stride` bytes apart.
struct PixelRows {
    unsigned char* first = nullptr;
    std::ptrdiff_t stride = 0;
    size<int> extent;
};

// Moves the pixels of `area` by (`dx`, `dy`), as `viewkit::IWindow::MovePixels` has it: what leaves
// the area is lost, and what it uncovers stays as it was. The area may reach beyond the image; what
// would come from there is uncovered as well. Linear in the pixels that are moved.
NODELINE_API void MovePixels(const PixelRows& image, const rectangle<int>& area, int dx, int dy);

}  // namespace paintcore
