// The conversion of a double to an int, for pixels and sizes of fonts.
#pragma once

#include <algorithm>
#include <limits>

namespace nodeline::internal {

// Cuts towards 0, and takes what no int can hold as the nearest that one can.
inline int Truncate(double value) {
    constexpr double kLimit = std::numeric_limits<int>::max();
    return static_cast<int>(std::max(-kLimit, std::min(kLimit, value)));
}

}  // namespace nodeline::internal
