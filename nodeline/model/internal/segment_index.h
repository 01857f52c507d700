// A packed spatial index over segments, for hit tests in drawings whose edges are long and steep.
#pragma once

#include <nodeline/model/geometry.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace nodeline::internal {

// A query rectangle; closed, and taken as it is also where right lies left of left.
struct HitQuery {
    double x1, y1, x2, y2;
};

// Two points in a row, which are not owned, and what the segment between them belongs to.
struct RouteSegment {
    const point<double>* ends;
    std::int32_t item;
};

// The segments as a static tree. Boxes around steep segments cover mostly what the segments do not,
// so the tree bundles segments whose left ends are near each other and whose right ends are too,
// and keeps a box around either: all of them run in the hull of the two boxes, which is as narrow
// as the bundle. Built in n log n. A query costs what it meets, plus the bundles along its border,
// of which n segments that cross the same gap between levels have about the root of n.
class SegmentIndex {
public:
    // The points stay where they are and as they are while there are queries.
    void Build(std::vector<RouteSegment> segments);

    // A few segments in a row.
    struct Run {
        const RouteSegment* begin;
        const RouteSegment* end;
    };
    // Appends all segments that a query cannot be told apart from, in no particular order. They
    // stand until the next call of `Build`.
    void Query(const HitQuery& q, std::vector<Run>& runs) const;

private:
    static constexpr std::size_t kFanOut = 16;

    struct Box {
        double left, top, right, bottom;
    };
    struct Bundle {
        Box from;  // around the left ends
        Box to;    // around the right ends
    };

    [[nodiscard]] static Bundle bundle_of(const RouteSegment& segment);
    static void widen(Bundle& bundle, const Bundle& other);
    [[nodiscard]] static bool is_apart(const Bundle& bundle, const HitQuery& q, bool is_finite);
    [[nodiscard]] static bool is_beside(const Bundle& bundle, const HitQuery& q);

    std::vector<RouteSegment> segments_;
    // A bundle of level 0 holds `kFanOut` segments, one above as many bundles of the level below.
    std::vector<std::vector<Bundle>> levels_;
};

}  // namespace nodeline::internal
