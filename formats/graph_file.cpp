#include <formats/dot_reader.h>
#include <formats/file_graph.h>
#include <formats/graph_file.h>
#include <formats/graphml_reader.h>
#include <formats/json_reader.h>
#include <formats/text_reader.h>

#include <string_view>
#include <utility>

namespace nodeline::formats {

namespace {

FileGraph read(Format format, const std::string& name, std::string_view text, Losses& losses) {
    if (format == Format::kDot) return ReadDot(name, text, losses);
    if (format == Format::kGraphml) return ReadGraphml(name, text, losses);
    return ReadJson(name, text, losses);
}

}  // namespace

ReadReport ReadGraph(const graph_ptr2<Graph>& graph, const std::string& name, std::string text,
                     const ReadOptions& options) {
    ReadReport report;
    report.format = options.format.value_or(GetFormatOf(name, text));
    if (report.format == Format::kText) {
        ReadText(graph, name, std::move(text), options, report);
        return report;
    }
    std::string_view content = text;
    if (content.rfind("\xEF\xBB\xBF", 0) == 0) content.remove_prefix(3);
    if (content.empty()) throw ReadError(name, 1, "the file is empty");
    Losses losses;
    FillGraph(graph, read(report.format, name, content, losses), options, report);
    const std::string lost = losses.Describe();
    if (!lost.empty()) report.warnings.push_back(Message(name, 0, "warning: " + lost));
    return report;
}

}  // namespace nodeline::formats
