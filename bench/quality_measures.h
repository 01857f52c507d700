// The measures of a drawing: how well a layout has done, in numbers that mean the same for any
// program.
#pragma once

#include <bench/quality_drawing.h>

namespace nodeline::bench {

// Lengths are in the units of the drawing.
struct Measures {
    // Edges that are drawn.
    long long edges = 0;
    // Pairs of edges whose routes change sides of each other somewhere, be it once or more often.
    // Routes that touch, or that run on top of each other for a while, do not cross there; nor do
    // edges with an end in common where they come together: at that end, or at a corner of both,
    // for some programs lead such edges through one point.
    long long crossings = 0;
    // Corners of routes that turn by more than a degree.
    long long bends = 0;
    // The length of all routes together.
    double length = 0.0;
    // The size of the box around all nodes and routes.
    double width = 0.0;
    double height = 0.0;
    // Pairs of an edge and a node it runs over that is neither an end of it nor owns one.
    long long runs_over = 0;
};

// Takes time and memory in proportion to the pieces of the routes, to the pairs of pieces that are
// near to each other, and to the pieces that nodes have near to or inside of them.
Measures Measure(const Drawing& drawing);

}  // namespace nodeline::bench
