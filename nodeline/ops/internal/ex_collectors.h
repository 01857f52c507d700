// The function objects behind `GetParentsEx` and its kin.
#pragma once

#include <nodeline/model/graph.h>

namespace nodeline {

// Collects the edges of a subtree that lead to siblings of `limit`, with those siblings.
struct GetNodeEdgeEx {
    graph_ptr2<GraphSet<NodeEdgePair>> result;
    Node limit;
    Node (Edge::*end)() const;       // the far end
    EdgeSet (Node::*edges)() const;  // the edges of a node to look at

    void operator()(const Node& n);
};

// Adds one edge to `result` if its far end lies outside `owner` or is `owner` itself.
struct CheckEdge {
    Node (Edge::*end)() const;
    Node owner;
    graph_ptr2<GraphSet<NodeEdgePair>> result;

    void operator()(const Edge& e);
};

// Collects the edges of a subtree that cross the border of the owner of `limit`.
struct GetInOutEx {
    graph_ptr2<GraphSet<NodeEdgePair>> result;
    Node limit;
    Node (Edge::*end)() const;
    EdgeSet (Node::*edges)() const;

    void operator()(const Node& n);
};

}  // namespace nodeline
