// How a picture differs from the one before it, for layouts that keep what was there.
#pragma once

#include <nodeline/model/graph.h>

#include <functional>
#include <string>
#include <vector>

namespace nodeline::test {

// Where a visible node stands in its owner.
struct PlacedNode {
    int id;
    int owner_id;
    double y;
    double centre;  // the x of its middle, which is that of its level
    double width;
    bool is_exact;  // y is not rounded: the owner begins at the origin
};

// The visible nodes, by rising id.
[[nodiscard]] std::vector<PlacedNode> PlacesOf(const graph_ptr2<Graph>& graph);

// What is wrong with how the nodes that two pictures share have moved, a line each. In an owner,
// the distance along y must be a function of the old y that never falls and is never negative,
// which keeps order too; along x, levels stay levels, keep their order, and never move to the
// left. Nodes that changed their owner are new, and so is all that lies directly in an owner for
// which `is_fresh` holds.
[[nodiscard]] std::vector<std::string> FindWrongMoves(const std::vector<PlacedNode>& before,
                                                      const std::vector<PlacedNode>& after,
                                                      const std::function<bool(int)>& is_fresh);

}  // namespace nodeline::test
