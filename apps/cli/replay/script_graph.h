// The graph of a replay, with the numbers that the script gives to nodes and edges.
#pragma once

#include <nodeline/handlers/handlers.h>
#include <nodeline/model/graph.h>

#include <cstdint>
#include <map>
#include <vector>

namespace nodeline::replay {

// A node of the script. Its place in the list of all is the tag of its node.
struct ScriptNode {
    std::int64_t number;
    Node node;
    // What the measuring handler answers.
    nodeline::size<double> size;
};

// The same for an edge.
struct ScriptEdge {
    std::int64_t number;
    Edge edge;
    double width;
};

// At first, all nodes share a handler that answers the sizes of the script and draws nothing, and
// all edges one that answers the widths. A number that is unknown or taken is a `ScriptFault`, and
// changes nothing.
class ScriptGraph {
public:
    ScriptGraph();
    ~ScriptGraph();
    ScriptGraph(const ScriptGraph&) = delete;
    ScriptGraph& operator=(const ScriptGraph&) = delete;

    [[nodiscard]] const graph_ptr2<Graph>& graph() const { return graph_; }

    // Makes the measuring handlers the defaults of the graph, as they are at first.
    void UseMeasuringHandlers();

    void AddNode(std::int64_t number, std::int64_t owner, nodeline::size<double> size);
    void AddEdge(std::int64_t number, std::int64_t from, std::int64_t to, double width);
    void RemoveEdge(std::int64_t number);
    // Removes the edges of the node and of all that it owns first, by rising number.
    void RemoveNode(std::int64_t number);

    [[nodiscard]] ScriptNode& GetNode(std::int64_t number);
    [[nodiscard]] ScriptEdge& GetEdge(std::int64_t number);
    // The number that a node or edge of the graph has in the script.
    [[nodiscard]] std::int64_t NumberOf(const Node& node) const;
    [[nodiscard]] std::int64_t NumberOf(const Edge& edge) const;

    // All that exists, by rising number; the root has the number 0.
    [[nodiscard]] std::vector<Node> ListNodes() const;
    [[nodiscard]] std::vector<Edge> ListEdges() const;

private:
    class MeasuringNodeHandler;
    class MeasuringEdgeHandler;

    void forget_edge(std::int64_t number);
    void take_apart_detached();

    std::vector<ScriptNode> nodes_;
    std::vector<ScriptEdge> edges_;
    std::map<std::int64_t, int> node_places_;
    std::map<std::int64_t, int> edge_places_;
    graph_ptr2<INodeHandler> measuring_nodes_;
    graph_ptr2<IEdgeHandler> measuring_edges_;
    graph_ptr2<Graph> graph_;
};

}  // namespace nodeline::replay
