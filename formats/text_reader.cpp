#include <formats/file_ids.h>
#include <formats/text_reader.h>
#include <nodeline/ops/graph_ops.h>
#include <nodeline/ops/load.h>

#include <algorithm>
#include <array>
#include <optional>
#include <sstream>
#include <string_view>
#include <utility>
#include <vector>

namespace nodeline::formats {

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

// Throws if the sections cannot be told, which is so where lines end with more than a line feed,
// and where there is none.
void check_sections(const std::string& name, std::string_view text) {
    if (text.empty()) throw ReadError(name, 1, "the file is empty");
    bool has_section = false;
    int number = 1;
    for (std::size_t at = text.find('\n'); at != std::string_view::npos;) {
        const std::size_t next = text.find('\n', at + 1);
        ++number;
        const std::string_view line = text.substr(at + 1, next - at - 1);
        if (!line.empty() && line.front() == '[') {
            const std::string reason = spoilt_keyword(line);
            if (!reason.empty()) throw ReadError(name, number, reason);
            has_section = has_section || is_keyword(line);
        }
        at = next;
    }
    if (has_section) return;
    throw ReadError(name, 1,
                    begins_with_keyword(text)
                        ? kTitleHint
                        : "no line is a section keyword like [nodes], so this is no graph file");
}

void show_everything(const Graph& graph) {
    const auto show = [](const Node& node) {
        Show(node);
        MarkOld(node);
    };
    ForEachNodeIn(graph.GetRoot(), show, true, false);
}

}  // namespace

bool HasSectionKeyword(std::string_view text) {
    for (std::size_t at = text.find("\n["); at != std::string_view::npos;) {
        const std::size_t next = text.find('\n', at + 1);
        if (is_keyword(without_blanks_at_end(text.substr(at + 1, next - at - 1)))) return true;
        at = next == std::string_view::npos ? next : text.find("\n[", next);
    }
    return false;
}

void ReadText(const graph_ptr2<Graph>& graph, const std::string& name, std::string text,
              const ReadOptions& options, ReadReport& report) {
    check_sections(name, text);
    const bool has_keyword_as_title = begins_with_keyword(text);
    std::istringstream in(std::move(text));
    LoadError error;
    std::vector<Node> nodes;
    std::vector<std::optional<int>> ids;
    const auto visit = [&](const Node& node, int id) {
        if (options.check) options.check();
        nodes.push_back(node);
        ids.push_back(id);
    };
    if (!Load(graph, in, &error, visit)) {
        const std::string hint = has_keyword_as_title ? std::string("; ") + kTitleHint : "";
        throw ReadError(name, error.line, error.reason + hint);
    }
    if (has_keyword_as_title) {
        report.warnings.push_back(Message(name, 1, std::string("warning: ") + kTitleHint));
    }
    if (!error.reason.empty()) {
        report.warnings.push_back(Message(name, error.line, "warning: " + error.reason));
    }
    const std::vector<int> chosen = ChooseIds(ids);
    for (std::size_t i = 0; i < nodes.size(); ++i) nodes[i].SetTag(chosen[i]);
    if (!std::equal(chosen.begin(), chosen.end(), ids.begin())) {
        report.warnings.push_back(
            name + ": warning: nodes count from 1: their ids are not all different, or one is 0");
    }
    if (options.show_all) show_everything(*graph);
}

}  // namespace nodeline::formats
