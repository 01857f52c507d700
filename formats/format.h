// The formats of graph files.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace nodeline::formats {

enum class Format { kText, kDot, kGraphml, kJson };

// "text", "dot", "graphml" or "json": names for messages and command lines.
[[nodiscard]] const char* NameOf(Format format);
// The format of such a name.
[[nodiscard]] std::optional<Format> FindFormat(std::string_view name);

// The format that the ending of a file name asks for, in letters of either case: .txt, .dot, .gv,
// .graphml, .xml or .json.
[[nodiscard]] std::optional<Format> GetFormatByEnding(std::string_view path);

// The format of a file, which its content tells. Where that speaks for several formats, or for
// none, the ending of the name decides, and at last the text format is taken.
[[nodiscard]] Format GetFormatOf(const std::string& name, std::string_view content);

}  // namespace nodeline::formats
