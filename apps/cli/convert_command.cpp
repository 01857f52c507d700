#include <apps/cli/commands.h>
#include <apps/cli/input.h>
#include <formats/wording.h>
#include <formats/writer.h>
#include <nodeline/ops/graph_ops.h>

#include <filesystem>
#include <iostream>
#include <optional>
#include <system_error>

namespace nodeline::cli {

namespace {

formats::Format format_of(const ConvertOptions& options) {
    if (const auto format = formats::FindFormat(options.format)) return *format;
    if (const auto format = formats::GetFormatByEnding(options.output)) return *format;
    if (options.output == "-") {
        throw Failure(kWrongUsage, "standard output has no ending; --to chooses the format");
    }
    throw Failure(kWrongUsage, options.output +
                                   ": the name ends in none of .txt, .dot, .gv, .graphml, .xml and "
                                   ".json; --to chooses the format");
}

void check_output(const ConvertOptions& options) {
    std::error_code ignored;
    if (std::filesystem::equivalent(options.output, options.input, ignored)) {
        throw Failure(kWrongUsage,
                      options.output + ": the output would take the place of the graph");
    }
}

std::string summary_of(const graph_ptr2<Graph>& graph) {
    std::size_t nodes = 0;
    std::size_t edges = 0;
    const auto count = [&](const Node& node) {
        ++nodes;
        edges += static_cast<std::size_t>(node.GetEdgesOut().GetCount());
    };
    ForEachNodeIn(graph->GetRoot(), count, false, false);
    return formats::Counted(nodes, "node") + ", " + formats::Counted(edges, "edge");
}

}  // namespace

void RunConvert(const ConvertOptions& options) {
    const formats::Format format = format_of(options);
    check_output(options);
    const graph_ptr2<Graph> graph(new Graph, true);
    const formats::ReadReport report = ReadGraph(graph, options.input, {});
    const bool is_file = options.output != "-";
    const std::string name = is_file ? options.output : "standard output";
    const formats::WrittenGraph written = formats::WriteGraph(graph, name, format, report.looks);
    for (const std::string& warning : written.warnings) std::cerr << warning << '\n';
    if (report.has_layout) {
        std::cerr << formats::Message(name, 0, "warning: without the layout of the input") << '\n';
    }
    WriteOutput(options.output, written.text);
    (is_file ? std::cout : std::cerr) << "wrote " << name << ": " << summary_of(graph) << '\n';
    FinishOutput();
}

}  // namespace nodeline::cli
