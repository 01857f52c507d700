#include <paintcore/number_text.h>

#include <array>
#include <charconv>

namespace paintcore {

void AppendNumber(std::string& out, double value) {
    // The longest shortest form is "-2.2250738585072014e-308".
    std::array<char, 32> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    out.append(digits.data(), end);
}

std::string NumberText(double value) {
    std::string text;
    AppendNumber(text, value);
    return text;
}

}  // namespace paintcore
