#include <nodeline/model/internal/segment_index.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace nodeline::internal {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// How far beyond its exact bounds a bundle still counts, as a part of the numbers in play: many
// times what the exact test behind this index can lose by rounding.
constexpr double kSlack = 1e-9;

// Bits of one coordinate in the key that segments are sorted by.
constexpr int kKeyBits = 21;

struct Ends {
    const point<double>* left;
    const point<double>* right;
};

Ends ends_of(const RouteSegment& segment) {
    const point<double>* const a = segment.ends;
    const point<double>* const b = segment.ends + 1;
    const bool is_turned = b->x < a->x || (b->x == a->x && b->y < a->y);
    return is_turned ? Ends{b, a} : Ends{a, b};
}

// The extent of the finite coordinates along one axis, cut into as many steps as a key tells apart.
class Steps {
public:
    void Add(double value) {
        if (!std::isfinite(value)) return;
        low_ = std::min(low_, value);
        high_ = std::max(high_, value);
    }
    // Keys only steer the packing, so any will do for what is not finite.
    [[nodiscard]] std::uint64_t Of(double value) const {
        const double part = (value - low_) / (high_ - low_);
        if (!(part > 0.0)) return 0;
        return static_cast<std::uint64_t>(std::min(part, 1.0) * kLast);
    }

private:
    static constexpr double kLast = (1 << kKeyBits) - 1;

    double low_ = kInfinity;
    double high_ = -kInfinity;
};

// Puts two zeros before every bit.
std::uint64_t spread(std::uint64_t bits) {
    bits = (bits | bits << 32) & 0x001f00000000ffffu;
    bits = (bits | bits << 16) & 0x001f0000ff0000ffu;
    bits = (bits | bits << 8) & 0x100f00f00f00f00fu;
    bits = (bits | bits << 4) & 0x10c30c30c30c30c3u;
    return (bits | bits << 2) & 0x1249249249249249u;
}

struct Keyed {
    std::uint64_t key;
    RouteSegment segment;
};

// Brings together segments whose left ends are near each other and whose right ends are at about
// the same height, as far as one order can: the bits of the three coordinates take turns in the
// key. Where the right ends lie in x follows, for segments run from one level to the next.
void sort_for_packing(std::vector<RouteSegment>& segments) {
    Steps x;
    Steps y;
    for (const RouteSegment& segment : segments) {
        const Ends ends = ends_of(segment);
        x.Add(ends.left->x);
        y.Add(ends.left->y);
        y.Add(ends.right->y);
    }
    std::vector<Keyed> keys;
    keys.reserve(segments.size());
    for (const RouteSegment& segment : segments) {
        const Ends ends = ends_of(segment);
        const std::uint64_t key = spread(x.Of(ends.left->x)) << 2 |
                                  spread(y.Of(ends.left->y)) << 1 | spread(y.Of(ends.right->y));
        keys.push_back({key, segment});
    }
    std::sort(keys.begin(), keys.end(),
              [](const Keyed& a, const Keyed& b) { return a.key < b.key; });
    std::transform(keys.begin(), keys.end(), segments.begin(),
                   [](const Keyed& keyed) { return keyed.segment; });
}

struct Interval {
    double low;
    double high;
};

// What a box covers along an axis. Infinite bounds may make it no number.
template <class Box>
Interval shadow_of(const Box& box, const point<double>& axis) {
    const double left = axis.x * box.left;
    const double right = axis.x * box.right;
    const double top = axis.y * box.top;
    const double bottom = axis.y * box.bottom;
    return {(axis.x > 0.0 ? left : right) + (axis.y > 0.0 ? top : bottom),
            (axis.x > 0.0 ? right : left) + (axis.y > 0.0 ? bottom : top)};
}

template <class Box>
double greatest_x(const Box& box) {
    return std::max(std::abs(box.left), std::abs(box.right));
}

template <class Box>
double greatest_y(const Box& box) {
    return std::max(std::abs(box.top), std::abs(box.bottom));
}

}  // namespace

// A segment with a coordinate that is no number can be hit at its other end alone. So it does not
// matter that a box may lose such a coordinate, or become wider than all comparisons tell.
SegmentIndex::Bundle SegmentIndex::bundle_of(const RouteSegment& segment) {
    const Ends ends = ends_of(segment);
    const auto box_of = [](const point<double>& p) { return Box{p.x, p.y, p.x, p.y}; };
    return {box_of(*ends.left), box_of(*ends.right)};
}

void SegmentIndex::widen(Bundle& bundle, const Bundle& other) {
    const auto join = [](Box& box, const Box& more) {
        box.left = std::min(box.left, more.left);
        box.top = std::min(box.top, more.top);
        box.right = std::max(box.right, more.right);
        box.bottom = std::max(box.bottom, more.bottom);
    };
    join(bundle.from, other.from);
    join(bundle.to, other.to);
}

void SegmentIndex::Build(std::vector<RouteSegment> segments) {
    segments_ = std::move(segments);
    levels_.clear();
    if (segments_.empty()) return;
    sort_for_packing(segments_);

    const auto pack = [](std::size_t count, auto bundle_at) {
        std::vector<Bundle> level;
        level.reserve(count / kFanOut + 1);
        for (std::size_t i = 0; i < count; ++i) {
            if (i % kFanOut == 0) {
                level.push_back(bundle_at(i));
            } else {
                widen(level.back(), bundle_at(i));
            }
        }
        return level;
    };
    levels_.push_back(
        pack(segments_.size(), [this](std::size_t i) { return bundle_of(segments_[i]); }));
    while (levels_.back().size() > kFanOut) {
        const std::vector<Bundle>& below = levels_.back();
        levels_.push_back(pack(below.size(), [&below](std::size_t i) { return below[i]; }));
    }
}

// Whether the query lies to one side of the bundle: beyond the hull along the axis that is upright
// on the way from one box to the other. Wherever a number is not finite, no comparison holds.
bool SegmentIndex::is_beside(const Bundle& bundle, const HitQuery& q) {
    const Box& from = bundle.from;
    const Box& to = bundle.to;
    const double dx = (to.left + to.right) - (from.left + from.right);
    const double dy = (to.top + to.bottom) - (from.top + from.bottom);
    const double length = std::abs(dx) + std::abs(dy);
    const point<double> axis{-dy / length, dx / length};
    const Box rect{std::min(q.x1, q.x2), std::min(q.y1, q.y2), std::max(q.x1, q.x2),
                   std::max(q.y1, q.y2)};
    const Interval one = shadow_of(from, axis);
    const Interval other = shadow_of(to, axis);
    const Interval asked = shadow_of(rect, axis);
    const double x = std::max({greatest_x(from), greatest_x(to), greatest_x(rect)});
    const double y = std::max({greatest_y(from), greatest_y(to), greatest_y(rect)});
    const double slack = kSlack * (1.0 + std::abs(axis.x) * x + std::abs(axis.y) * y);
    return (asked.low > one.high + slack && asked.low > other.high + slack) ||
           (asked.high < one.low - slack && asked.high < other.low - slack);
}

bool SegmentIndex::is_apart(const Bundle& bundle, const HitQuery& q, bool is_finite) {
    const Box& from = bundle.from;
    const Box& to = bundle.to;
    if ((q.x1 > from.right && q.x1 > to.right) || (from.left > q.x2 && to.left > q.x2) ||
        (q.y1 > from.bottom && q.y1 > to.bottom) || (from.top > q.y2 && to.top > q.y2)) {
        return true;
    }
    return is_finite && is_beside(bundle, q);
}

void SegmentIndex::Query(const HitQuery& q, std::vector<Run>& runs) const {
    if (levels_.empty()) return;
    const bool is_finite =
        std::isfinite(q.x1) && std::isfinite(q.y1) && std::isfinite(q.x2) && std::isfinite(q.y2);
    // Pairs of a level and the place of its first bundle to look at, up to a multiple of the
    // fan-out.
    std::vector<std::pair<std::size_t, std::size_t>> open{{levels_.size() - 1, 0}};
    while (!open.empty()) {
        const auto [depth, begin] = open.back();
        open.pop_back();
        const std::vector<Bundle>& level = levels_[depth];
        for (std::size_t i = begin; i < std::min(level.size(), begin + kFanOut); ++i) {
            if (is_apart(level[i], q, is_finite)) continue;
            if (depth > 0) {
                open.push_back({depth - 1, i * kFanOut});
                continue;
            }
            const RouteSegment* const first = segments_.data();
            const std::size_t end = std::min(segments_.size(), (i + 1) * kFanOut);
            runs.push_back({first + i * kFanOut, first + end});
        }
    }
}

}  // namespace nodeline::internal
