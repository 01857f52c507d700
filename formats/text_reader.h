// The library's own text format, read for the programs.
#pragma once

#include <formats/graph_file.h>

#include <string>
#include <string_view>

namespace nodeline::formats {

// Whether a line but the first begins a section, or would if its end were not spoilt.
[[nodiscard]] bool HasSectionKeyword(std::string_view text);

// As `ReadGraph`, for this format.
void ReadText(const graph_ptr2<Graph>& graph, const std::string& name, std::string text,
              const ReadOptions& options, ReadReport& report);

}  // namespace nodeline::formats
