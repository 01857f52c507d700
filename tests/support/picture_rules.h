// What must be true of every picture of a layout that promises it.
#pragma once

#include <nodeline/model/graph.h>

#include <string>
#include <vector>

namespace nodeline::test {

// Lengths are in logical units, and those of a layout's options.
struct PictureRules {
    double node_spacing = 12.0;
    double level_spacing = 30.0;
    double backedge_spacing = 5.0;
    // Nothing is in the picture but what its owners hold now: no band is kept for what was there.
    bool is_made = false;
};

// The faults of the picture of a graph, a line each: nodes of one owner that overlap or stand too
// close, nodes and bends outside their owner or in its margin, owners that are larger than what
// they hold, routes that are missing, broken, or do not join their ends, and routes that run
// through a node.
//
// Costs edges times nodes: for small graphs.
[[nodiscard]] std::vector<std::string> FindFaults(const graph_ptr2<Graph>& graph,
                                                  const PictureRules& rules = {});

// The faults as one text, empty if there are none.
[[nodiscard]] std::string Faults(const graph_ptr2<Graph>& graph, const PictureRules& rules = {});

}  // namespace nodeline::test
