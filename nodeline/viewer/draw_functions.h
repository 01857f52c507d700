// Draw functions: what a paint applies to every node and every edge that it has chosen.
//
//   ForEachNodeIn(node, DrawNode{painter, scale}, false, true);
#pragma once

#include <corvex/export.h>
#include <nodeline/model/graph.h>

#include <vector>

namespace nodeline {

// Draws a node, without what it owns. The handler is told the scale, in pixels to the unit, before
// each node, for it may serve viewers of different scales.
struct NODELINE_API DrawNode {
    IPainter* painter = nullptr;
    double zoom = 1.0;

    void operator()(Node node) const;
};

// Draws an edge, in the same way.
struct NODELINE_API DrawEdge {
    IPainter* painter = nullptr;
    double zoom = 1.0;

    void operator()(Edge edge) const;
};

// Gathers the edges that meet the rectangle of a node; one that meets two nodes stands twice.
struct NODELINE_API CollectEdgesInNodes {
    std::vector<Edge> edges;
    graph_ptr2<Graph> graph;

    void operator()(Node node);
};

}  // namespace nodeline
