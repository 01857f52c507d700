// A file that was read from a text, and short ways to look at its graph.
#pragma once

#include <formats/colors.h>
#include <formats/graph_file.h>
#include <formats/graph_listing.h>
#include <formats/writer.h>
#include <nodeline/ops/graph_ops.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace nodeline::formats {

struct ReadFile {
    explicit ReadFile(const std::string& text, const std::string& name = "g",
                      const ReadOptions& options = {})
        : graph(new Graph, true) {
        try {
            report = ReadGraph(graph, name, text, options);
            is_read = true;
        } catch (const ReadError& thrown) {
            error = thrown.what();
        }
    }

    [[nodiscard]] std::vector<Node> Nodes() const {
        std::vector<Node> nodes;
        ForEachNodeIn(
            graph->GetRoot(), [&](const Node& node) { nodes.push_back(node); }, false, false);
        return nodes;
    }

    // The first node with the caption, owners ahead of what they own; an empty handle if there is
    // none.
    [[nodiscard]] Node Find(const std::string& caption) const {
        for (const Node& node : Nodes()) {
            if (node.GetCaption() == caption) return node;
        }
        return {};
    }

    [[nodiscard]] NodeLook LookOf(const std::string& caption) const {
        const auto look = report.looks.nodes.find(Find(caption).GetID());
        return look != report.looks.nodes.end() ? look->second : NodeLook();
    }

    graph_ptr2<Graph> graph;
    ReadReport report;
    bool is_read = false;
    std::string error;
};

// The captions of all nodes, owners ahead of what they own, with the captions of these in braces
// behind them: "a{b c} d".
inline std::string Tree(const Node& owner) {
    std::string text;
    for (const Node& node : owner.GetOwned()) {
        text += (text.empty() ? "" : " ") + node.GetCaption();
        if (node.GetOwned().GetCount() > 0) text += "{" + Tree(node) + "}";
    }
    return text;
}
inline std::string Tree(const ReadFile& file) { return Tree(file.graph->GetRoot()); }

// All edges in their order, as "a>b" or "a>b:caption".
inline std::string Edges(const ReadFile& file) {
    std::map<int, std::string> edges;
    for (const Node& node : file.Nodes()) {
        for (const Edge& edge : node.GetEdgesOut()) {
            edges[edge.GetID()] = edge.From().GetCaption() + ">" + edge.To().GetCaption() +
                                  (edge.GetCaption().empty() ? "" : ":" + edge.GetCaption());
        }
    }
    std::string text;
    for (const auto& [id, edge] : edges) text += (text.empty() ? "" : " ") + edge;
    return text;
}

inline std::string Describe(const std::optional<paintcore::_color>& color) {
    return color ? FormatColor(*color) : "-";
}
inline std::string Describe(const std::optional<double>& number) {
    return number ? FormatNumber(*number) : "-";
}

// All that a file keeps of a graph: nodes by their tags, and edges in their order.
inline std::string Outline(const graph_ptr2<Graph>& graph, const GraphLooks& looks) {
    const GraphListing listing(graph, looks);
    std::map<int, std::string> nodes;
    for (const Node& node : listing.nodes()) {
        const NodeLook& look = listing.LookOf(node);
        nodes[node.GetTag()] = " \"" + node.GetCaption() + "\" in " +
                               std::to_string(node.GetOwner().GetTag()) + " " +
                               Describe(look.fill) + Describe(look.border) + Describe(look.text) +
                               Describe(look.pen_width);
    }
    std::string text;
    for (const auto& [tag, line] : nodes) text += std::to_string(tag) + line + "\n";
    for (const Edge& edge : listing.edges()) {
        const EdgeLook& look = listing.LookOf(edge);
        text += std::to_string(edge.From().GetTag()) + " > " + std::to_string(edge.To().GetTag()) +
                " \"" + edge.GetCaption() + "\" " + Describe(look.line) + Describe(look.pen_width) +
                "\n";
    }
    return text;
}

}  // namespace nodeline::formats
