// Graph files as programs read them: with a word about everything that would leave the picture
// other than the file's author meant it.
//
//   const formats::ReadReport report = formats::ReadGraph(graph, "calls.txt", text, {});
//   for (const std::string& warning : report.warnings) std::cerr << warning << '\n';
#pragma once

#include <nodeline/model/graph.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace nodeline::formats {

// "FILE:LINE: reason", or "FILE: reason" for line 0.
[[nodiscard]] std::string Message(const std::string& name, int line, const std::string& reason);

// What is wrong with a file, as a line for its author.
class ReadError : public std::runtime_error {
public:
    ReadError(const std::string& name, int line, const std::string& reason)
        : std::runtime_error(Message(name, line, reason)) {}
};

struct ReadOptions {
    // Hide nothing, also where captions that hold "Thread" narrow the view.
    bool show_all = false;
    // Called for each node; what it throws ends the reading and passes through.
    std::function<void()> check = {};
};

// What was passed over in a file, as lines for its author.
struct ReadReport {
    std::vector<std::string> warnings;
};

// Replaces the contents of `graph` by those of a file, given by its text; `name` is the file's name
// in messages. Each node has its id in the file as its tag. Lays nothing out. Throws `ReadError` if
// the text is no graph; then the graph is empty or unfinished.
ReadReport ReadGraph(const graph_ptr2<Graph>& graph, const std::string& name, std::string text,
                     const ReadOptions& options);

}  // namespace nodeline::formats
