// A graph as a file gives it, before it becomes a `Graph`.
#pragma once

#include <formats/graph_file.h>
#include <formats/looks.h>
#include <formats/losses.h>
#include <nodeline/model/geometry.h>

#include <optional>
#include <string>
#include <vector>

namespace nodeline::formats {

// Where something is, counted from the root.
struct Place {
    point<double> position;
    size<double> extent;
};

struct FileNode {
    // What the file calls the node. It becomes the tag if all names are different integers.
    std::string name;
    std::string caption;
    // The place of the owner among the nodes, or `kRoot`. Owners may stand behind what they own.
    int owner = -1;
    NodeLook look = {};
    // Only in files that give the place of every node, and of the root.
    std::optional<Place> place = std::nullopt;
    bool is_hidden = false;
};

struct FileEdge {
    // Places among the nodes.
    int from = 0;
    int to = 0;
    std::string caption;
    EdgeLook look;
    std::vector<point<double>> route;
};

struct FileGraph {
    static constexpr int kRoot = -1;

    std::vector<FileNode> nodes;
    std::vector<FileEdge> edges;
    // Of the root; then every node has one, too.
    std::optional<Place> place;
    // Else owners go ahead of the first node that they own, wherever they stand among the nodes.
    bool owners_have_places = true;

    [[nodiscard]] int CountNodes() const { return static_cast<int>(nodes.size()); }
    // Answers the place of the new node among the nodes.
    int AddNode(FileNode node);
};

// Replaces the contents of `graph`. Owners get lower ids than what they own, and siblings keep the
// order of `file`, as edges do. No owner may own itself, however indirectly. Adds looks and
// layout to `report`.
void FillGraph(const graph_ptr2<Graph>& graph, const FileGraph& file, const ReadOptions& options,
               ReadReport& report);

}  // namespace nodeline::formats
