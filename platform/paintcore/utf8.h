// UTF-8: code points out of bytes that nobody has checked, and back.
//
//   std::string_view rest = caption;
//   while (!rest.empty()) Show(TakeCodePoint(rest));
#pragma once

#include <corvex/export.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace paintcore {

// What stands for bytes that are no UTF-8.
inline constexpr char32_t kReplacementCharacter = 0xFFFD;

// Takes the first code point off `text`, which is not empty. Bytes that are no UTF-8 come out as
// `kReplacementCharacter`: one for each byte that cannot begin a sequence, one for each sequence
// that breaks off or turns out to be overlong, a surrogate or beyond the last code point.
[[nodiscard]] NODELINE_API char32_t TakeCodePoint(std::string_view& text);

// The number of code points that `TakeCodePoint` would give. Linear.
[[nodiscard]] NODELINE_API std::size_t CountCodePoints(std::string_view text);

// Appends a code point; one that has no encoding is appended as `kReplacementCharacter`.
NODELINE_API void AppendCodePoint(std::string& out, char32_t code_point);

// The first `length` bytes of `text`, all of it if `length` is negative or too long.
[[nodiscard]] inline std::string_view FirstBytes(std::string_view text, int length) {
    return length < 0 ? text : text.substr(0, static_cast<std::size_t>(length));
}

}  // namespace paintcore
