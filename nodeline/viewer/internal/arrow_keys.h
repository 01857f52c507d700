// The keys that move a view.
#pragma once

#include <optional>

namespace nodeline::internal {

// An arrow moves the picture, not the view: the left one raises the start of its axis.
struct ArrowKey {
    bool is_horz;
    double sign;  // of the step that the start makes
};

[[nodiscard]] inline std::optional<ArrowKey> ToArrowKey(int code) {
    switch (code) {
        case 37:
            return ArrowKey{true, 1.0};
        case 38:
            return ArrowKey{false, 1.0};
        case 39:
            return ArrowKey{true, -1.0};
        case 40:
            return ArrowKey{false, -1.0};
        default:
            return std::nullopt;
    }
}

}  // namespace nodeline::internal
