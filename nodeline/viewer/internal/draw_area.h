// The order in which a part of a graph is drawn.
#pragma once

#include <nodeline/ops/graph_ops.h>

#include <vector>

namespace nodeline::internal {

// Calls `draw` with every node that meets `area`, owners first, and then with every edge.
template <class Draw>
void draw_in_area(Graph& graph, const rectangle<double>& area, const Draw& draw) {
    std::vector<Node> nodes;
    for (const Node& node : graph.HitNodeTest(area.left, area.top, area.right, area.bottom)) {
        nodes.push_back(node);
    }
    SortByOwnership(nodes);
    for (const Node& node : nodes) draw(node);
    for (const Edge& edge : graph.HitEdgeTest(area.left, area.top, area.right, area.bottom)) {
        draw(edge);
    }
}

}  // namespace nodeline::internal
