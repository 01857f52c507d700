// The small change of an SVG document: numbers, colours and texts inside of attributes.
#pragma once

#include <paintcore/color.h>

#include <string>
#include <string_view>

namespace nodeline::cairo {

// A coordinate, to a thousandth of a pixel.
void AppendCoordinate(std::string& out, double value);

// ` name="value"`.
void AppendAttribute(std::string& out, std::string_view name, double value);
void AppendAttribute(std::string& out, std::string_view name, std::string_view value);

// ` name="#rrggbb"`, and ` name-opacity` unless the colour is opaque. For a stop of a gradient the
// two are `stop-color` and `stop-opacity`.
void AppendColor(std::string& out, std::string_view name, const paintcore::_color& color);
void AppendStopColor(std::string& out, const paintcore::_color& color);

// Text that was untrusted, for use between tags or quotes.
void AppendEscaped(std::string& out, std::string_view text);

// The value of a `font-family`: the names in their order, each quoted, then any sans-serif face. An
// empty name, and one that repeats the former, is left out. Not escaped.
[[nodiscard]] std::string FamilyList(std::string_view first, std::string_view second);

}  // namespace nodeline::cairo
