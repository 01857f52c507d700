// The colours that have names, as X11 gives them.
#pragma once

#include <paintcore/color.h>

#include <optional>
#include <string_view>

namespace nodeline::formats {

// The colour of a name in small letters without blanks; "transparent" leaves no trace.
[[nodiscard]] std::optional<paintcore::_color> FindColorName(std::string_view name);

}  // namespace nodeline::formats
