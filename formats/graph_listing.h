// A graph laid open for the writers.
#pragma once

#include <formats/looks.h>
#include <nodeline/model/graph.h>

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace nodeline::formats {

class GraphListing {
public:
    GraphListing(const graph_ptr2<Graph>& graph, const GraphLooks& looks);

    // All nodes but the root, and all edges, in the order in which they were made.
    [[nodiscard]] const std::vector<Node>& nodes() const { return nodes_; }
    [[nodiscard]] const std::vector<Edge>& edges() const { return edges_; }

    // What the file calls a node; 0 for the root.
    [[nodiscard]] std::string IdOf(const Node& node) const;

    [[nodiscard]] const NodeLook& LookOf(const Node& node) const;
    [[nodiscard]] const EdgeLook& LookOf(const Edge& edge) const;
    [[nodiscard]] const GraphLooks& looks() const { return looks_; }

    // Calls `open` for each node, owners ahead of what they own, and `close` for each owner behind
    // it.
    void Walk(const std::function<void(const Node&)>& open,
              const std::function<void(const Node&)>& close) const;

private:
    void number_nodes();

    Node root_;
    const GraphLooks& looks_;
    std::vector<Node> nodes_;
    std::vector<Edge> edges_;
    std::unordered_map<int, int> ids_;
};

[[nodiscard]] bool IsOwner(const Node& node);

// Text with U+FFFD in the place of bytes that are no UTF-8, and of what `is_held` refuses; adds to
// `count` if there was any.
[[nodiscard]] std::string Replaced(std::string_view text, bool (*is_held)(char32_t), int& count);

}  // namespace nodeline::formats
