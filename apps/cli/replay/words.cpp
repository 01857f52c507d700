#include <apps/cli/replay/words.h>

#include <charconv>
#include <cmath>
#include <system_error>

namespace nodeline::replay {

namespace {

constexpr std::string_view kBlanks = " \t";

// The whole word as a value; false if it is none, or too large for one.
template <class T>
bool parse(std::string_view word, T& value) {
    const char* end = word.data() + word.size();
    const auto result = std::from_chars(word.data(), end, value);
    return result.ec == std::errc() && result.ptr == end;
}

}  // namespace

std::string Quoted(std::string_view word) {
    constexpr std::size_t kMost = 40;
    std::string text = "\"";
    for (const char c : word.substr(0, kMost)) {
        const bool is_control = static_cast<unsigned char>(c) < 0x20 || c == 0x7f;
        text += is_control ? '?' : c;
    }
    return text + (word.size() > kMost ? "...\"" : "\"");
}

Words::Words(std::string_view line) : line_(line) {
    if (!line.empty() && line.front() == '#') return;
    for (std::size_t at = line.find_first_not_of(kBlanks); at != std::string_view::npos;) {
        const std::size_t end = line.find_first_of(kBlanks, at);
        words_.push_back(line.substr(at, end - at));
        at = line.find_first_not_of(kBlanks, end);
    }
}

std::int64_t Words::Integer(std::size_t index) const {
    std::int64_t value = 0;
    if (!parse(words_[index], value)) {
        throw ScriptFault(Quoted(words_[index]) + " is not a whole number");
    }
    return value;
}

double Words::Number(std::size_t index) const {
    double value = 0.0;
    if (!parse(words_[index], value) || !std::isfinite(value)) {
        throw ScriptFault(Quoted(words_[index]) + " is not a number");
    }
    return value;
}

int Words::Int(std::size_t index, int least) const {
    const std::int64_t value = Integer(index);
    if (value < least) throw ScriptFault(Quoted(words_[index]) + " is too small");
    if (value > std::numeric_limits<int>::max()) {
        throw ScriptFault(Quoted(words_[index]) + " is too large");
    }
    return static_cast<int>(value);
}

std::string_view Words::From(std::size_t index) const {
    if (index >= words_.size()) return {};
    return line_.substr(static_cast<std::size_t>(words_[index].data() - line_.data()));
}

bool Words::IsFirstOf(std::size_t index, std::string_view first, std::string_view second) const {
    if (words_[index] == first) return true;
    if (words_[index] == second) return false;
    throw ScriptFault(Quoted(words_[index]) + " is neither " + Quoted(first) + " nor " +
                      Quoted(second));
}

}  // namespace nodeline::replay
