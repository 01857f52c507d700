// What is wrong with a graph file.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace nodeline::formats {

// "FILE:LINE: reason", or "FILE: reason" for line 0.
[[nodiscard]] std::string Message(const std::string& name, int line, const std::string& reason);

// What is wrong with a file, as a line for its author.
class ReadError : public std::runtime_error {
public:
    ReadError(const std::string& name, int line, const std::string& reason)
        : std::runtime_error(Message(name, line, reason)) {}
};

// The line that a byte of a text stands in, counted from 1. A place beyond the end is in the last
// line.
[[nodiscard]] int LineAt(std::string_view text, std::size_t offset);

// A piece of a file as it may stand in a message: on one line, without control characters, and cut
// off where it gets long.
[[nodiscard]] std::string Quote(std::string_view text);

}  // namespace nodeline::formats
