// The input of a command: a file, or standard input under the name "-".
#pragma once

#include <apps/cli/failure.h>
#include <formats/graph_file.h>
#include <nodeline/model/graph.h>

#include <string>

namespace nodeline::cli {

// Names of inputs as they stand in messages.
[[nodiscard]] std::string DisplayName(const std::string& path);

// "FILE:LINE: reason", or "FILE: reason" for line 0.
[[nodiscard]] std::string Message(const std::string& path, int line, const std::string& reason);

// All bytes of an input; one that cannot be read is a `Failure`.
[[nodiscard]] std::string ReadInput(const std::string& path);

// Reads an input of any format into a graph, and prints what was passed over. One that is no graph
// is a `Failure`.
formats::ReadReport ReadGraph(const graph_ptr2<Graph>& graph, const std::string& path,
                              const formats::ReadOptions& options);

}  // namespace nodeline::cli
