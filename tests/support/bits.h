// Numbers compared bit by bit.
#pragma once

#include <paintcore/geometry.h>

#include <cstdint>
#include <cstring>

namespace nodeline::test {

inline bool SameBits(double a, double b) {
    std::uint64_t x = 0;
    std::uint64_t y = 0;
    std::memcpy(&x, &a, sizeof a);
    std::memcpy(&y, &b, sizeof b);
    return x == y;
}

inline bool SameBits(const paintcore::point<double>& a, const paintcore::point<double>& b) {
    return SameBits(a.x, b.x) && SameBits(a.y, b.y);
}

}  // namespace nodeline::test
