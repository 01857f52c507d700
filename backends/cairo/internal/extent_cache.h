// The measures of the texts of one font, as far as they were asked for lately.
#pragma once

#include <backends/cairo/text_engine.h>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace nodeline::cairo {

// Bounded by ageing in two generations: when the younger one is full, it becomes the older one and
// the former older one is forgotten. What is used stays, since a hit among the old is renewed.
class ExtentCache {
public:
    // The most that one generation holds.
    static constexpr std::size_t kMaxTexts = 131072;
    static constexpr std::size_t kMaxBytes = std::size_t{1} << 22;

    // Null if the text is not known. Good until the next call.
    [[nodiscard]] const TextExtent* Find(std::string_view text);

    // The text is not known so far. A text too large for a generation is not kept.
    void Insert(std::string_view text, const TextExtent& extent);

    [[nodiscard]] std::size_t CountTexts() const { return young_.size() + old_.size(); }
    [[nodiscard]] std::size_t CountBytes() const { return young_bytes_ + old_bytes_; }

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const {
            return std::hash<std::string_view>()(text);
        }
    };
    using Generation = std::unordered_map<std::string, TextExtent, Hash, std::equal_to<>>;

    Generation young_;
    Generation old_;
    std::size_t young_bytes_ = 0;
    std::size_t old_bytes_ = 0;
};

}  // namespace nodeline::cairo
