// Graphs in DOT.
#pragma once

#include <formats/file_graph.h>
#include <formats/losses.h>

#include <string>
#include <string_view>

namespace nodeline::formats {

// Clusters become owners, nested as they are; all other subgraphs mean nothing. Several graphs
// become an owner each. Nodes come in the order of the file, and the clusters behind them. Throws
// `ReadError`, also where braces are nested more than 1000 deep, and in builds without a DOT
// parser.
[[nodiscard]] FileGraph ReadDot(const std::string& name, std::string_view text, Losses& losses);

}  // namespace nodeline::formats
