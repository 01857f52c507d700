// Points, sizes and rectangles: the plain values in which positions and extents are told.
//
// All three are aggregates over any arithmetic type. The library uses `double` for logical
// coordinates and `int` for pixels; y grows downwards.
#pragma once

namespace paintcore {

// A position, or the difference of two.
template <class T>
struct point {
    T x{};
    T y{};

    // Coordinate by coordinate.
    friend constexpr bool operator==(const point&, const point&) = default;
    friend constexpr point operator+(const point& a, const point& b) {
        return {static_cast<T>(a.x + b.x), static_cast<T>(a.y + b.y)};
    }
    friend constexpr point operator-(const point& a, const point& b) {
        return {static_cast<T>(a.x - b.x), static_cast<T>(a.y - b.y)};
    }
    friend constexpr point operator-(const point& a) {
        return {static_cast<T>(-a.x), static_cast<T>(-a.y)};
    }
    constexpr point& operator+=(const point& other) { return *this = *this + other; }
    constexpr point& operator-=(const point& other) { return *this = *this - other; }
};

// A width and a height.
template <class T>
struct size {
    T cx{};
    T cy{};

    // Member by member.
    friend constexpr bool operator==(const size&, const size&) = default;
};

// The area between two corners. Nothing sorts the corners: a rectangle whose `right` is less than
// its `left` stays as it was written.
template <class T>
struct rectangle {
    T left{};
    T top{};
    T right{};
    T bottom{};

    // As they were written: the same area with other corners is not equal.
    friend constexpr bool operator==(const rectangle&, const rectangle&) = default;
};

}  // namespace paintcore
