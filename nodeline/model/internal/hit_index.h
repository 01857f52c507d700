// A packed spatial index over boxes, for hit tests that meet few of many.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace nodeline::internal {

// A box that may touch a query unless one of four comparisons sets them apart. Bounds that are no
// numbers never set anything apart, just as in the exact tests behind this index.
struct HitBox {
    double left;
    double top;
    double right;
    double bottom;
    // What the box belongs to.
    std::int32_t item;
};

// The boxes as a static tree, packed by tiles. Built in n log n, queried in the size of the answer
// plus a few nodes for each level of the tree.
class HitIndex {
public:
    void Build(std::vector<HitBox> boxes);
    void Clear();

    // Appends the items of all boxes that a query cannot be told apart from, in no particular
    // order.
    void Query(double x1, double y1, double x2, double y2, std::vector<std::int32_t>& items) const;

private:
    static constexpr std::size_t kFanOut = 16;

    // Level 0 holds the boxes; `item` of a box on a higher level is the place of its first child.
    std::vector<std::vector<HitBox>> levels_;
};

}  // namespace nodeline::internal
