// A graph that was loaded from a text, and short ways to look at it.
#pragma once

#include <nodeline/model/graph.h>
#include <nodeline/ops/graph_ops.h>
#include <nodeline/ops/load.h>

#include <sstream>
#include <string>
#include <vector>

namespace nodeline {

struct LoadedGraph {
    explicit LoadedGraph(const std::string& text) : graph(new Graph, true) {
        std::istringstream in(text);
        is_loaded = Load(graph, in, &error);
    }

    [[nodiscard]] Node Root() const { return graph->GetRoot(); }

    // The first node with the caption, owners ahead of what they own; an empty handle if there is
    // none.
    [[nodiscard]] Node Find(const std::string& caption) const {
        Node result;
        ForEachNodeIn(
            Root(),
            [&](const Node& node) {
                if (!result && node.GetCaption() == caption) result = node;
            },
            false, false);
        return result;
    }

    // The captions of all nodes that show, owners ahead of what they own.
    [[nodiscard]] std::vector<std::string> Visible() const {
        std::vector<std::string> captions;
        ForEachNodeIn(
            Root(),
            [&](const Node& node) {
                if (!IsFlagSet(node, NodeHidden)) captions.push_back(node.GetCaption());
            },
            false, false);
        return captions;
    }

    graph_ptr2<Graph> graph;
    LoadError error;
    bool is_loaded = false;
};

// The captions of a set, in its order.
inline std::vector<std::string> Captions(const NodeSet& nodes) {
    std::vector<std::string> captions;
    for (const Node& node : nodes) captions.push_back(node.GetCaption());
    return captions;
}

}  // namespace nodeline
