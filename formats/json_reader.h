// Graphs in JSON: the JSON Graph Format, and what the program prints of a layout.
#pragma once

#include <formats/file_graph.h>
#include <formats/losses.h>

#include <string>
#include <string_view>

namespace nodeline::formats {

// Takes nodes as a list or by their ids, one graph or several, which get an owner each then, and
// owners from the "owner" or "parent" in the metadata of a node. A layout gives places as well.
// Throws `ReadError`.
[[nodiscard]] FileGraph ReadJson(const std::string& name, std::string_view text, Losses& losses);

}  // namespace nodeline::formats
