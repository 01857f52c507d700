// Graphs in GraphML.
#pragma once

#include <formats/file_graph.h>
#include <formats/losses.h>

#include <string>
#include <string_view>

namespace nodeline::formats {

// Nodes that hold a graph become its owners; of several graphs in a row each gets an owner. Nodes
// come in the order of the file, owners ahead of what they own. Throws `ReadError`, also in builds
// without an XML parser.
[[nodiscard]] FileGraph ReadGraphml(const std::string& name, std::string_view text, Losses& losses);

}  // namespace nodeline::formats
