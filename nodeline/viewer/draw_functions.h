// Draw functions: what draws nodes and edges, one by one, in a part of a graph or in all of it.
//
//   MarkDrawnIn(graph);
//   picture->Draw([&](IPainter& painter) { DrawGraph(graph, &painter, scale); });
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

    // `painter` must be set, and `node` must not be empty.
    void operator()(Node node) const;
};

// Draws an edge, in the same way.
struct NODELINE_API DrawEdge {
    IPainter* painter = nullptr;
    double zoom = 1.0;

    // `painter` must be set, and `edge` must not be empty.
    void operator()(Edge edge) const;
};

// Draws all of a graph: each node ahead of what it owns, and the edges over them, by their ids.
// What is not marked as drawn is left out (see `MarkDrawnIn`), and so is the root.
NODELINE_API void DrawGraph(const graph_ptr2<Graph>& graph, IPainter* painter, double zoom);
// The same with what meets a rectangle, in coordinates of the graph; handlers see to the marks.
NODELINE_API void DrawGraphIn(const graph_ptr2<Graph>& graph, const rectangle<double>& area,
                              IPainter* painter, double zoom);

// Gathers the edges that meet the rectangle of a node; one that meets two nodes stands twice.
struct NODELINE_API CollectEdgesInNodes {
    std::vector<Edge> edges;
    graph_ptr2<Graph> graph;

    // Appends to `edges`. `graph` must be set, to that of the node.
    void operator()(Node node);
};

}  // namespace nodeline
