// How a command fails.
#pragma once

#include <stdexcept>
#include <string>

namespace nodeline::cli {

enum ExitStatus { kDone = 0, kBadInput = 1, kWrongUsage = 2 };

// Ends a command: the text is the one line that the user sees.
class Failure : public std::runtime_error {
public:
    Failure(ExitStatus status, const std::string& line)
        : std::runtime_error(line), status_(status) {}

    [[nodiscard]] ExitStatus status() const { return status_; }

private:
    ExitStatus status_;
};

}  // namespace nodeline::cli
