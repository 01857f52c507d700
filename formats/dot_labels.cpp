#include <formats/dot_labels.h>
#include <paintcore/utf8.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <optional>
#include <utility>

namespace nodeline::formats {

namespace {

constexpr std::string_view kBlanks = " \t\r\n\f\v";

constexpr std::array<std::pair<std::string_view, char32_t>, 47> kEntities = {
    {{"amp", U'&'},     {"lt", U'<'},       {"gt", U'>'},      {"quot", U'"'},    {"apos", U'\''},
     {"nbsp", 0xA0},    {"copy", 0xA9},     {"reg", 0xAE},     {"deg", 0xB0},     {"plusmn", 0xB1},
     {"micro", 0xB5},   {"para", 0xB6},     {"middot", 0xB7},  {"sect", 0xA7},    {"laquo", 0xAB},
     {"raquo", 0xBB},   {"times", 0xD7},    {"divide", 0xF7},  {"Auml", 0xC4},    {"Ouml", 0xD6},
     {"Uuml", 0xDC},    {"szlig", 0xDF},    {"auml", 0xE4},    {"ouml", 0xF6},    {"uuml", 0xFC},
     {"agrave", 0xE0},  {"ccedil", 0xE7},   {"egrave", 0xE8},  {"eacute", 0xE9},  {"ntilde", 0xF1},
     {"alpha", 0x3B1},  {"beta", 0x3B2},    {"lambda", 0x3BB}, {"mu", 0x3BC},     {"ndash", 0x2013},
     {"mdash", 0x2014}, {"lsquo", 0x2018},  {"rsquo", 0x2019}, {"ldquo", 0x201C}, {"rdquo", 0x201D},
     {"bull", 0x2022},  {"hellip", 0x2026}, {"euro", 0x20AC},  {"larr", 0x2190},  {"rarr", 0x2192},
     {"le", 0x2264},    {"ge", 0x2265}}};

// What the text between "&#" and ";" stands for.
std::optional<char32_t> numbered(std::string_view digits) {
    int base = 10;
    if (!digits.empty() && (digits.front() == 'x' || digits.front() == 'X')) {
        digits.remove_prefix(1);
        base = 16;
    }
    unsigned int value = 0;
    const char* end = digits.data() + digits.size();
    const std::from_chars_result result = std::from_chars(digits.data(), end, value, base);
    if (result.ec != std::errc() || result.ptr != end || value == 0) return std::nullopt;
    return static_cast<char32_t>(value);
}

std::optional<char32_t> entity(std::string_view name) {
    if (!name.empty() && name.front() == '#') return numbered(name.substr(1));
    for (const auto& [known, code_point] : kEntities) {
        if (known == name) return code_point;
    }
    return std::nullopt;
}

std::string with_single_blanks(std::string_view text) {
    std::string result;
    for (;;) {
        const std::size_t first = text.find_first_not_of(kBlanks);
        if (first == std::string_view::npos) return result;
        text.remove_prefix(first);
        const std::string_view word = text.substr(0, text.find_first_of(kBlanks));
        if (!result.empty()) result += ' ';
        result += word;
        text.remove_prefix(word.size());
    }
}

const std::string* name_of(char escape, const LabelNames& names) {
    switch (escape) {
        case 'G':
            return &names.graph;
        case 'N':
            return &names.node;
        case 'E':
            return &names.edge;
        case 'T':
            return &names.tail;
        case 'H':
            return &names.head;
        default:
            return nullptr;
    }
}

std::string replace_escapes(std::string_view label, const LabelNames& names) {
    std::string text;
    bool is_behind_line = false;
    for (std::size_t i = 0; i < label.size(); ++i) {
        is_behind_line = false;
        if (label[i] != '\\' || i + 1 == label.size()) {
            text += label[i];
            continue;
        }
        const char escape = label[++i];
        if (const std::string* name = name_of(escape, names)) {
            text += *name;
        } else if (escape == 'n' || escape == 'l' || escape == 'r') {
            text += '\n';
            is_behind_line = escape != 'n';
        } else {
            text += escape;
        }
    }
    if (is_behind_line) text.pop_back();
    return text;
}

// Tags that stand inside a word.
bool is_inline(std::string_view tag) {
    if (!tag.empty() && tag.front() == '/') tag.remove_prefix(1);
    std::string name(tag.substr(0, tag.find_first_of(" \t\r\n/")));
    for (char& c : name) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    constexpr std::array<std::string_view, 8> kInline = {"B", "I",    "U",   "O",
                                                         "S", "FONT", "SUB", "SUP"};
    return std::find(kInline.begin(), kInline.end(), name) != kInline.end();
}

}  // namespace

std::string ReplaceEntities(std::string_view text) {
    constexpr std::size_t kLongest = 10;
    std::string result;
    for (;;) {
        const std::size_t start = std::min(text.find('&'), text.size());
        result += text.substr(0, start);
        text.remove_prefix(start);
        if (text.empty()) return result;
        text.remove_prefix(1);
        const std::size_t end = text.substr(0, kLongest).find(';');
        const auto code_point =
            end == std::string_view::npos ? std::nullopt : entity(text.substr(0, end));
        if (code_point) {
            paintcore::AppendCodePoint(result, *code_point);
            text.remove_prefix(end + 1);
        } else {
            result += '&';
        }
    }
}

std::string PlainLabel(std::string_view label, const LabelNames& names) {
    return ReplaceEntities(replace_escapes(label, names));
}

std::string PlainRecord(std::string_view label, const LabelNames& names) {
    std::string text;
    std::string field;
    const auto end_field = [&] {
        const std::string plain = with_single_blanks(PlainLabel(field, names));
        if (!plain.empty()) text += (text.empty() ? "" : " | ") + plain;
        field.clear();
    };
    for (std::size_t i = 0; i < label.size(); ++i) {
        const char c = label[i];
        if (c == '\\' && i + 1 < label.size()) {
            const char escaped = label[++i];
            if (std::string_view("{}|<> ").find(escaped) == std::string_view::npos) field += c;
            field += escaped;
        } else if (c == '<') {
            i = std::min(label.find('>', i), label.size());
        } else if (c == '{' || c == '}' || c == '|') {
            end_field();
        } else {
            field += c;
        }
    }
    end_field();
    return text;
}

std::string PlainHtml(std::string_view html) {
    std::string text;
    while (!html.empty()) {
        const std::size_t start = std::min(html.find('<'), html.size());
        text += html.substr(0, start);
        html.remove_prefix(start);
        if (html.empty()) break;
        const bool is_comment = html.substr(0, 4) == "<!--";
        const std::string_view end = is_comment ? "-->" : ">";
        const std::size_t at = html.find(end);
        const std::string_view tag = html.substr(1, at == std::string_view::npos ? at : at - 1);
        if (!is_comment && !is_inline(tag)) text += ' ';
        html.remove_prefix(at == std::string_view::npos ? html.size() : at + end.size());
    }
    return ReplaceEntities(with_single_blanks(text));
}

std::string FromLatin1(std::string_view text) {
    std::string result;
    for (const char c : text) {
        paintcore::AppendCodePoint(result, static_cast<unsigned char>(c));
    }
    return result;
}

}  // namespace nodeline::formats
