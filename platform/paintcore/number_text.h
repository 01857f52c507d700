// Numbers as text: the one way in which this project writes a double.
#pragma once

#include <corvex/export.h>

#include <string>

namespace paintcore {

// Appends the shortest decimal text that reads back as the same double: "12" for 12, "0.1" for a
// tenth, "-0" for a negative zero. Never depends on the locale.
NODELINE_API void AppendNumber(std::string& out, double value);

// The same as a text of its own.
[[nodiscard]] NODELINE_API std::string NumberText(double value);

}  // namespace paintcore
