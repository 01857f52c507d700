// The steps of the stable layout that it does not share with the incremental one.
#pragma once

#include <nodeline/layout/internal/stable_run.h>

namespace nodeline::internal {

// Before: nothing. After: the levels and places of what the last run left are back.
void recall(StableRun& run);

// Before: every node has a level. After: the least level is at least 1.
void lift_levels(StableRun& run);

// Before: every node has a level of at least 1. After: everything to be seen stands in the table,
// long edges on each level that they cross.
void lay_courses(StableRun& run);

// Before: courses. After: edges have bends on their way alone, and none if they are not to be seen.
void drop_stale_stretches(StableRun& run);

// Tells the boxes of an owner whose levels are ordered what pulls at their borders.
void find_anchors(const StableRun& run, Anchors& anchors);

// Gives the dummy nodes the numbers of their order in the table: what stands side by side on a
// level lies side by side in memory. After: the links of neighbours can be read.
void number_by_level(StableRun& run);

// Before: courses. After: the order with the fewest crossings that sweeps found; y is the place.
// The run that comes next takes over what was found ahead of it, and only that one.
void order_levels_ahead(StableRun& run);
void order_levels(StableRun& run);

// Before: levels that keep their spacing. After: the same order, and edges that bend less.
void straighten(StableRun& run);

// Before: all vertices have places in order. After: the highest one is at the margin.
void move_to_margin(StableRun& run);

// Before: what stays has its place. After: what is new has one as well, in a gap or where the
// drawing has to open; levels are in the order of y.
void fit_in(StableRun& run);

// Before: levels in order. After: neighbours of a level keep their spacing; what lies at the same
// height has moved by the same distance, on all levels and also where it is hidden.
void open_drawing(StableRun& run);

// Before: y is final. After: all nodes and bends have their places, and the run its extent.
void draw_routes(StableRun& run);

// Before: the drawing is final. After: the memory of the owner holds it.
void remember(StableRun& run);

}  // namespace nodeline::internal
