// How the nodes and edges of a file look, where the file has a say in it.
#pragma once

#include <paintcore/color.h>

#include <optional>
#include <unordered_map>

namespace nodeline::formats {

// What is not set is left to whoever draws.
struct NodeLook {
    std::optional<paintcore::_color> fill = std::nullopt;
    std::optional<paintcore::_color> border = std::nullopt;
    std::optional<paintcore::_color> text = std::nullopt;
    // In pixels, 0 or more.
    std::optional<double> pen_width = std::nullopt;

    [[nodiscard]] bool IsPlain() const { return *this == NodeLook(); }
    friend bool operator==(const NodeLook&, const NodeLook&) = default;
};

struct EdgeLook {
    std::optional<paintcore::_color> line = std::nullopt;
    // In pixels, 0 or more.
    std::optional<double> pen_width = std::nullopt;

    [[nodiscard]] bool IsPlain() const { return *this == EdgeLook(); }
    friend bool operator==(const EdgeLook&, const EdgeLook&) = default;
};

// The looks of a graph that are not plain, by the ids of its nodes and of its edges.
struct GraphLooks {
    std::unordered_map<int, NodeLook> nodes;
    std::unordered_map<int, EdgeLook> edges;

    [[nodiscard]] bool IsEmpty() const { return nodes.empty() && edges.empty(); }
};

}  // namespace nodeline::formats
