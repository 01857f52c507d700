// The input of a command: a file, or standard input under the name "-".
#pragma once

#include <apps/cli/failure.h>

#include <string>

namespace nodeline::cli {

// Names of inputs as they stand in messages.
[[nodiscard]] std::string DisplayName(const std::string& path);

// "FILE:LINE: reason", or "FILE: reason" for line 0.
[[nodiscard]] std::string Message(const std::string& path, int line, const std::string& reason);

// All bytes of an input; one that cannot be read is a `Failure`.
[[nodiscard]] std::string ReadInput(const std::string& path);

}  // namespace nodeline::cli
