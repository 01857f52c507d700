#include <apps/cli/graph_file.h>

#include <apps/cli/input.h>
#include <nodeline/ops/graph_ops.h>
#include <nodeline/ops/load.h>

#include <algorithm>
#include <array>
#include <iostream>
#include <sstream>
#include <string_view>
#include <utility>

namespace nodeline::cli {

namespace {

constexpr std::array<std::string_view, 4> kKeywords = {"[nodes]", "[clusters]", "[edges]",
                                                       "[types]"};

bool is_keyword(std::string_view line) {
    return std::find(kKeywords.begin(), kKeywords.end(), line) != kKeywords.end();
}

std::string_view without_blanks_at_end(std::string_view line) {
    const std::size_t last = line.find_last_not_of(" \t\r");
    return line.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

// What is wrong with a line that was meant to begin a section; nothing for any other line.
std::string spoilt_keyword(std::string_view line) {
    const std::string_view keyword = without_blanks_at_end(line);
    if (keyword.size() == line.size() || !is_keyword(keyword)) return {};
    const char* end = line.back() == '\r' ? "carriage return" : "blank";
    return "the line ends with a " + std::string(end) + ", so " + std::string(keyword) +
           " is not recognised";
}

constexpr const char* kTitleHint = "the first line is a title, so the keyword in it does not count";

bool begins_with_keyword(std::string_view text) {
    return is_keyword(without_blanks_at_end(text.substr(0, text.find('\n'))));
}

}  // namespace

void CheckSections(const std::string& path, const std::string& text) {
    if (text.empty()) throw Failure(kBadInput, Message(path, 1, "the file is empty"));
    const std::string_view rest = text;
    bool has_section = false;
    int number = 1;
    for (std::size_t at = rest.find('\n'); at != std::string_view::npos;) {
        const std::size_t next = rest.find('\n', at + 1);
        ++number;
        const std::string_view line = rest.substr(at + 1, next - at - 1);
        if (!line.empty() && line.front() == '[') {
            const std::string reason = spoilt_keyword(line);
            if (!reason.empty()) throw Failure(kBadInput, Message(path, number, reason));
            has_section = has_section || is_keyword(line);
        }
        at = next;
    }
    if (has_section) return;
    throw Failure(kBadInput, Message(path, 1,
                                     begins_with_keyword(rest)
                                         ? kTitleHint
                                         : "no line is a section keyword like [nodes], so this "
                                           "is no graph file"));
}

graph_ptr2<Graph> ReadGraph(const std::string& path, bool show_all) {
    std::string text = ReadInput(path);
    CheckSections(path, text);
    const bool has_keyword_as_title = begins_with_keyword(text);
    std::istringstream in(std::move(text));
    graph_ptr2<Graph> graph(new Graph, true);
    LoadError error;
    const auto set_tag = [](const Node& node, int id) { Node(node).SetTag(id); };
    if (!Load(graph, in, &error, set_tag)) {
        const std::string hint = has_keyword_as_title ? std::string("; ") + kTitleHint : "";
        throw Failure(kBadInput, Message(path, error.line, error.reason + hint));
    }
    if (has_keyword_as_title) {
        std::cerr << Message(path, 1, std::string("warning: ") + kTitleHint) << '\n';
    }
    if (!error.reason.empty()) {
        std::cerr << Message(path, error.line, "warning: " + error.reason) << '\n';
    }
    if (show_all) {
        const auto show = [](const Node& node) {
            Show(node);
            MarkOld(node);
        };
        ForEachNodeIn(graph->GetRoot(), show, true, false);
    }
    return graph;
}

}  // namespace nodeline::cli
