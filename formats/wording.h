// Words that files and messages are made of.
#pragma once

#include <cstddef>
#include <string>

namespace nodeline::formats {

// "1 node", "2 nodes".
[[nodiscard]] inline std::string Counted(std::size_t count, const std::string& thing) {
    return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

}  // namespace nodeline::formats
