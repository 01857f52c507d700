#include <formats/format.h>
#include <formats/text_reader.h>

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace nodeline::formats {

namespace {

constexpr std::array<std::pair<Format, const char*>, 4> kNames = {{{Format::kText, "text"},
                                                                   {Format::kDot, "dot"},
                                                                   {Format::kGraphml, "graphml"},
                                                                   {Format::kJson, "json"}}};

constexpr std::array<std::pair<std::string_view, Format>, 6> kEndings = {
    {{".txt", Format::kText},
     {".dot", Format::kDot},
     {".gv", Format::kDot},
     {".graphml", Format::kGraphml},
     {".xml", Format::kGraphml},
     {".json", Format::kJson}}};

constexpr std::string_view kBlanks = " \t\r\n\f\v";

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// Whether `text` begins with a word, which is given in small letters.
bool begins_with(std::string_view text, std::string_view word) {
    return text.size() >= word.size() && std::equal(word.begin(), word.end(), text.begin(),
                                                    [](char a, char b) { return a == lower(b); });
}

std::string_view behind_blanks(std::string_view text) {
    const std::size_t at = text.find_first_not_of(kBlanks);
    return at == std::string_view::npos ? std::string_view() : text.substr(at);
}

std::string_view behind(std::string_view text, std::string_view end) {
    const std::size_t at = text.find(end);
    return at == std::string_view::npos ? std::string_view() : text.substr(at + end.size());
}

// What follows the blanks and comments at the start of a DOT file.
std::string_view behind_dot_comments(std::string_view text) {
    for (;;) {
        text = behind_blanks(text);
        if (begins_with(text, "/*")) {
            text = behind(text.substr(2), "*/");
        } else if (begins_with(text, "//") || begins_with(text, "#")) {
            text = behind(text, "\n");
        } else {
            return text;
        }
    }
}

// Takes a word off the text, if it stands there as a whole.
bool take_word(std::string_view& text, std::string_view word) {
    if (!begins_with(text, word)) return false;
    const std::string_view rest = text.substr(word.size());
    const bool is_whole = rest.empty() || kBlanks.find(rest.front()) != std::string_view::npos ||
                          std::string_view("{\"</#").find(rest.front()) != std::string_view::npos;
    if (is_whole) text = rest;
    return is_whole;
}

bool looks_like_dot(std::string_view text) {
    text = behind_dot_comments(text);
    if (take_word(text, "strict")) text = behind_dot_comments(text);
    return take_word(text, "digraph") || take_word(text, "graph");
}

bool looks_like_graphml(std::string_view text) {
    text = behind_blanks(text);
    return begins_with(text, "<") && text.find("graphml") != std::string_view::npos;
}

bool looks_like_json(std::string_view text) {
    text = behind_blanks(text);
    if (!begins_with(text, "{")) return false;
    text = behind_blanks(text.substr(1));
    return !text.empty() && (text.front() == '"' || text.front() == '}');
}

}  // namespace

const char* NameOf(Format format) {
    for (const auto& [value, name] : kNames) {
        if (value == format) return name;
    }
    return "";
}

std::optional<Format> FindFormat(std::string_view name) {
    for (const auto& [value, known] : kNames) {
        if (name == known) return value;
    }
    return std::nullopt;
}

std::optional<Format> GetFormatByEnding(std::string_view path) {
    for (const auto& [ending, format] : kEndings) {
        if (path.size() > ending.size() &&
            begins_with(path.substr(path.size() - ending.size()), ending)) {
            return format;
        }
    }
    return std::nullopt;
}

Format GetFormatOf(const std::string& name, std::string_view content) {
    if (begins_with(content, "\xEF\xBB\xBF")) content.remove_prefix(3);
    std::vector<Format> fitting;
    if (HasSectionKeyword(content)) fitting.push_back(Format::kText);
    if (looks_like_dot(content)) fitting.push_back(Format::kDot);
    if (looks_like_graphml(content)) fitting.push_back(Format::kGraphml);
    if (looks_like_json(content)) fitting.push_back(Format::kJson);
    if (fitting.size() == 1) return fitting.front();

    const std::optional<Format> ending = GetFormatByEnding(name);
    if (fitting.empty()) return ending.value_or(Format::kText);
    const bool fits = ending && std::count(fitting.begin(), fitting.end(), *ending) > 0;
    return fits ? *ending : fitting.front();
}

}  // namespace nodeline::formats
