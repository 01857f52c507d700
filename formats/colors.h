// Colours as texts.
#pragma once

#include <paintcore/color.h>

#include <optional>
#include <string>
#include <string_view>

namespace nodeline::formats {

// Reads "#rrggbb", "#rrggbbaa", "#rgb", a hue, saturation and value from 0 to 1 as in
// "0.65 0.2 1.0" or "0.65,0.2,1.0", or a name of X11 in letters of either case, also as
// "/x11/NAME" or "/svg/NAME" and with a number behind it, as in "red3" or "grey80". Of a list like
// "red;0.5:blue" the first colour counts. Answers nothing for any other text.
[[nodiscard]] std::optional<paintcore::_color> ParseColor(std::string_view text);

// "#rrggbb", or "#rrggbbaa" for a colour that is not opaque.
[[nodiscard]] std::string FormatColor(const paintcore::_color& color);

// Black or white, whichever is easier to read on `fill`.
[[nodiscard]] paintcore::_color ReadableOn(const paintcore::_color& fill);

// The width of a pen in pixels: a number from 0 to 1000.
[[nodiscard]] std::optional<double> ParsePenWidth(std::string_view text);
// The shortest text that reads back as the same number.
[[nodiscard]] std::string FormatNumber(double value);

}  // namespace nodeline::formats
