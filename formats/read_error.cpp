#include <formats/read_error.h>
#include <paintcore/utf8.h>

#include <algorithm>

namespace nodeline::formats {

namespace {

constexpr std::size_t kLongestQuote = 60;

bool is_control(char32_t c) { return c < 0x20 || (c >= 0x7f && c < 0xa0); }

}  // namespace

std::string Message(const std::string& name, int line, const std::string& reason) {
    const std::string place = line > 0 ? ":" + std::to_string(line) : std::string();
    return name + place + ": " + reason;
}

int LineAt(std::string_view text, std::size_t offset) {
    const std::string_view before = text.substr(0, std::min(offset, text.size()));
    return static_cast<int>(std::count(before.begin(), before.end(), '\n')) + 1;
}

std::string Quote(std::string_view text) {
    std::string quote;
    for (std::size_t count = 0; !text.empty(); ++count) {
        if (count == kLongestQuote) return quote + "...";
        const char32_t c = paintcore::TakeCodePoint(text);
        paintcore::AppendCodePoint(quote, is_control(c) ? U' ' : c);
    }
    return quote;
}

}  // namespace nodeline::formats
