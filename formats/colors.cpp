#include <formats/color_names.h>
#include <formats/colors.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>

namespace nodeline::formats {

namespace {

using paintcore::_color;

constexpr std::string_view kBlanks = " \t\r\n";

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// One or two digits to the part: #rgb, #rrggbb or #rrggbbaa.
std::optional<_color> parse_hex(std::string_view digits) {
    const bool is_short = digits.size() == 3;
    if (!is_short && digits.size() != 6 && digits.size() != 8) return std::nullopt;
    std::array<int, 4> parts = {0, 0, 0, 255};
    const std::size_t width = is_short ? 1 : 2;
    for (std::size_t i = 0; i * width < digits.size(); ++i) {
        const char* first = digits.data() + i * width;
        const char* last = first + width;
        const std::from_chars_result result = std::from_chars(first, last, parts.at(i), 16);
        if (result.ec != std::errc() || result.ptr != last || *first == '-') return std::nullopt;
        if (is_short) parts.at(i) *= 17;
    }
    return _color(parts[0], parts[1], parts[2], parts[3]);
}

int byte_of(double part) { return static_cast<int>(std::lround(part * 255.0)); }

_color from_hsv(double hue, double saturation, double value) {
    const double sector = std::fmod(hue, 1.0) * 6.0;
    const double fraction = sector - std::floor(sector);
    const int low = byte_of(value * (1.0 - saturation));
    const int falling = byte_of(value * (1.0 - saturation * fraction));
    const int rising = byte_of(value * (1.0 - saturation * (1.0 - fraction)));
    const int high = byte_of(value);
    switch (static_cast<int>(sector)) {
        case 0:
            return {high, rising, low};
        case 1:
            return {falling, high, low};
        case 2:
            return {low, high, rising};
        case 3:
            return {low, falling, high};
        case 4:
            return {rising, low, high};
        default:
            return {high, low, falling};
    }
}

std::optional<double> take_number(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t,"), text.size()));
    double value = 0.0;
    const std::from_chars_result result =
        std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || !std::isfinite(value)) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(result.ptr - text.data()));
    return value;
}

std::optional<_color> parse_hsv(std::string_view text) {
    std::array<double, 3> parts = {};
    for (double& part : parts) {
        const std::optional<double> value = take_number(text);
        if (!value) return std::nullopt;
        part = std::clamp(*value, 0.0, 1.0);
    }
    if (!trimmed(text).empty()) return std::nullopt;
    return from_hsv(parts[0], parts[1], parts[2]);
}

// In small letters and without blanks; a scheme of names in front is dropped.
std::string canonical(std::string_view text) {
    std::string name;
    for (const char c : text) {
        if (c == ' ') continue;
        name += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    for (const char* scheme : {"/x11/", "/svg/", "//", "/"}) {
        if (name.rfind(scheme, 0) == 0) return name.substr(std::string_view(scheme).size());
    }
    return name;
}

// The square is close enough to the curve of a screen.
double linear(int part) {
    const double value = part / 255.0;
    return value * value;
}

}  // namespace

std::optional<_color> ParseColor(std::string_view text) {
    text = trimmed(text.substr(0, text.find_first_of(":;")));
    if (text.empty()) return std::nullopt;
    if (text.front() == '#') return parse_hex(text.substr(1));
    if (text.front() == '.' || (text.front() >= '0' && text.front() <= '9')) {
        return parse_hsv(text);
    }
    return FindColorName(canonical(text));
}

std::string FormatColor(const _color& color) {
    constexpr const char* kDigits = "0123456789abcdef";
    std::string text = "#";
    const auto append = [&](unsigned char part) {
        text += kDigits[part >> 4];
        text += kDigits[part & 15];
    };
    append(color.red);
    append(color.green);
    append(color.blue);
    if (color.alpha != 255) append(color.alpha);
    return text;
}

// The luminance at which black and white have the same contrast ratio is 0.179. What shines through
// is taken as white.
_color ReadableOn(const _color& fill) {
    const auto on_white = [&](int part) { return 255 - (255 - part) * fill.alpha / 255; };
    const double luminance = 0.2126 * linear(on_white(fill.red)) +
                             0.7152 * linear(on_white(fill.green)) +
                             0.0722 * linear(on_white(fill.blue));
    return luminance > 0.179 ? _color(0, 0, 0) : _color(255, 255, 255);
}

std::optional<double> ParsePenWidth(std::string_view text) {
    text = trimmed(text);
    double value = 0.0;
    const char* end = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), end, value);
    if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
    if (!(value >= 0.0 && value <= 1000.0)) return std::nullopt;
    return value;
}

std::string FormatNumber(double value) {
    std::array<char, 32> text = {};
    const std::to_chars_result result =
        std::to_chars(text.data(), text.data() + text.size(), value + 0.0);
    return {text.data(), result.ptr};
}

}  // namespace nodeline::formats
