// The steps of a layout run, in the order in which the pipelines call them.
//
// A step takes the run and nothing else; what one leaves in the columns of the run is what the next
// one finds there. The pipelines in `layout_engine.cpp` say which steps run.
#pragma once

#include <nodeline/layout/internal/layout_run.h>

#include <vector>

namespace nodeline::internal {

// Before: nothing. After: every node has a level of at least 1, and every edge a direction state.
void determine_levels(LayoutRun& run);

// Before: the store knows the levels; old nodes stand in the table. After: new nodes stand there
// too, edges that span levels are broken by dummy nodes, neighbours on levels are linked, and no
// real node stands on level 0 or on the last one.
void place_nodes_on_levels(LayoutRun& run);

// Before: linked levels. After: the order within every inner level is final.
void barycentric_adjust(LayoutRun& run);

// Before: ordered levels. After: every inner level is stacked from the top without gaps.
void calculate_initial_y_coords(LayoutRun& run);

// Before: stacked levels. After: nodes have moved towards their neighbours; order is kept, and no
// gap has shrunk.
void force_adjust(LayoutRun& run);

// Before: y is final up to one common offset. After: all nodes and bends have their places, and the
// run its extent.
void calculate_x_coords(LayoutRun& run);

// Before: what the last run left. After: the old visible nodes and bends stand in the table, in
// their order.
void restore_old_levels(LayoutRun& run);

// Before: the old table. After: no node overlaps the one above it; all levels opened alike.
void make_y_shifts(LayoutRun& run);

// Before: the old table. After: new nodes have levels, and every edge a direction state.
void determine_new_nodes_levels(LayoutRun& run);

// Before: new nodes stand behind the old ones of their level. After: each has a place in the gap
// nearest to its neighbours.
void calculate_new_nodes_y_coords(LayoutRun& run);

// Record what the next run may treat as old.
void make_epilogue(LayoutRun& run);
void update_epilogue(LayoutRun& run);
void resize_epilogue(LayoutRun& run);

// --- Parts of steps that several steps share

// The connected components of `nodes`, each in the order of a walk that goes to children first.
std::vector<std::vector<Vertex>> find_connectivity_components(LayoutRun& run,
                                                              const std::vector<Vertex>& nodes);
// Numbers a component so that few edges run against the numbers.
void enumerate_connectivity_component(LayoutRun& run, const std::vector<Vertex>& component);
// Sets the direction state of the edges that leave `nodes`, by the numbers or by the levels.
void mark_reversed_edges(LayoutRun& run, const std::vector<Vertex>& nodes, bool by_number);
// Gives each of `nodes` its longest-path level over the numbered directions.
void mark_levels(LayoutRun& run, const std::vector<Vertex>& nodes);
// Chooses levels for the new nodes of a component between those of its old ones.
void mark_new_nodes_levels(LayoutRun& run, const std::vector<Vertex>& component);
// All real nodes, in the owner's order.
std::vector<Vertex> all_nodes(const LayoutRun& run);

// Order the inner levels by the mean place of the neighbours on the left, from left to right, or
// by those on the right, from right to left. The y of a vertex is its place in its level.
void forward_barycentric_adjust(LayoutRun& run);
void backward_barycentric_adjust(LayoutRun& run);

// Places the vertices of a border level at `border_x`, level with what they lead to.
void adjust_ports(LayoutRun& run, const std::vector<Vertex>& level, double border_x, Order side);

}  // namespace nodeline::internal
