// One line of a replay script, cut into words.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace nodeline::replay {

// A line of a script that cannot be carried out. The text says why.
class ScriptFault : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// A word as it stands in a message: in quotes, on one line, and not too long.
[[nodiscard]] std::string Quoted(std::string_view word);

// The words point into the line, which outlives them.
class Words {
public:
    // Words are parted by blanks and tabs. A line that starts with "#" has none.
    explicit Words(std::string_view line);

    [[nodiscard]] std::size_t count() const { return words_.size(); }
    [[nodiscard]] std::string_view operator[](std::size_t index) const { return words_[index]; }

    // The word as a whole number, or as a finite one; a word that is none is a fault.
    [[nodiscard]] std::int64_t Integer(std::size_t index) const;
    [[nodiscard]] double Number(std::size_t index) const;
    // The word as an `int`; one that is none, or below `least`, is a fault.
    [[nodiscard]] int Int(std::size_t index, int least = std::numeric_limits<int>::min()) const;

    // The line from a word on to its end, blanks and all; empty if there is no such word.
    [[nodiscard]] std::string_view From(std::size_t index) const;

    // Whether the word is the first or the second of two; any other word is a fault.
    [[nodiscard]] bool IsFirstOf(std::size_t index, std::string_view first,
                                 std::string_view second) const;

private:
    std::string_view line_;
    std::vector<std::string_view> words_;
};

}  // namespace nodeline::replay
