// What backends need to put logical shapes on a grid of pixels that cannot hold every number.
#pragma once

#include <corvex/export.h>
#include <paintcore/geometry.h>

#include <optional>
#include <utility>

namespace paintcore {

// A coordinate this close below a whole pixel stands on it: rounding on the way there put it below.
inline constexpr double kPixelSlack = 1.0e-6;

// The whole pixel at or before `v`, and the one at or behind it.
[[nodiscard]] NODELINE_API double FloorToPixel(double v);
[[nodiscard]] NODELINE_API double CeilToPixel(double v);

// The part of the segment from `a` to `b` that lies in `reach`, if any. An end that lies in it is
// the very same point.
[[nodiscard]] NODELINE_API std::optional<std::pair<point<double>, point<double>>> CutSegment(
    const point<double>& a, const point<double>& b, const rectangle<double>& reach);

}  // namespace paintcore
