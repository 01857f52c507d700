// Graphs as files.
//
//   const formats::WrittenGraph written = formats::WriteGraph(graph, "calls.dot", Format::kDot,
//   {}); for (const std::string& warning : written.warnings) std::cerr << warning << '\n';
#pragma once

#include <formats/format.h>
#include <formats/looks.h>
#include <nodeline/model/graph.h>

#include <string>
#include <vector>

namespace nodeline::formats {

struct WrittenGraph {
    // The bytes of the file.
    std::string text;
    // What the format cannot hold, as lines for the user.
    std::vector<std::string> warnings;
};

// Writes nodes, owners, captions, edges and looks, with hidden nodes like all others; `name` is the
// file's name in warnings. The ids in the file are the tags of the nodes, or count from 1 if these
// are not all different integers other than 0 and -1. `ReadGraph` makes the same graph of it: the
// same ids, captions, owners and looks, and edges in the same order. Nodes may come in another
// order, with owners ahead of what they own.
[[nodiscard]] WrittenGraph WriteGraph(const graph_ptr2<Graph>& graph, const std::string& name,
                                      Format format, const GraphLooks& looks);

}  // namespace nodeline::formats
