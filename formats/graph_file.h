// Graph files as programs read them: with a word about everything that would leave the picture
// other than the file's author meant it.
//
//   const formats::ReadReport report = formats::ReadGraph(graph, "calls.dot", text, {});
//   for (const std::string& warning : report.warnings) std::cerr << warning << '\n';
#pragma once

#include <formats/format.h>
#include <formats/looks.h>
#include <formats/read_error.h>
#include <nodeline/model/graph.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace nodeline::formats {

struct ReadOptions {
    // Hide nothing, also where captions that hold "Thread" narrow the view.
    bool show_all = false;
    // Called for each node; what it throws ends the reading and passes through.
    std::function<void()> check = {};
    // What the file is; without it, its content and its name tell.
    std::optional<Format> format = std::nullopt;
};

// What a file held besides its graph.
struct ReadReport {
    Format format = Format::kText;
    // What was passed over in the file, as lines for its author.
    std::vector<std::string> warnings;
    // The colours and widths that the file gives; see `attribute_handlers.h`.
    GraphLooks looks;
    // Whether the file gave every position, size and route. Then the graph has them, and asks for
    // no layout.
    bool has_layout = false;
};

// Replaces the contents of `graph` by those of a file in any of the formats, given by its text;
// `name` is the file's name in messages. Each node has its id in the file as its tag; where the ids
// of a file are not all different integers other than 0 and -1, its nodes count from 1. Lays
// nothing out. Throws `ReadError` if the text is no graph; then the graph is empty or unfinished.
// May be called on several threads at once, for graphs that may be on several threads.
ReadReport ReadGraph(const graph_ptr2<Graph>& graph, const std::string& name, std::string text,
                     const ReadOptions& options);

}  // namespace nodeline::formats
