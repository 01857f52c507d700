// The commands of the program.
#pragma once

#include <apps/cli/failure.h>
#include <apps/cli/laid_out_graph.h>

#include <string>
#include <string_view>

namespace nodeline::cli {

struct RenderOptions {
    GraphOptions graph;
    // Empty: beside the input, or standard output for standard input. "-" is standard output.
    std::string output;
    // "svg", "pdf" or "png"; empty: what the output's name says, else "svg".
    std::string format;
    double scale = 1.0;
};

struct ConvertOptions {
    std::string input;
    // "-" is standard output.
    std::string output;
    // "text", "dot", "graphml" or "json"; empty: what the output's name says.
    std::string format;
};

struct ViewOptions {
    std::string input;
    // "stable" or "inc".
    std::string layout = "stable";
};

// Each carries the command out, or throws a `Failure`.

// Draws a graph into a file, and tells in one line what it wrote.
void RunRender(const RenderOptions& options);
// Prints the coordinates of a graph as JSON.
void RunLayout(const GraphOptions& options);
// Writes a graph in another format, and tells in one line what it wrote.
void RunConvert(const ConvertOptions& options);
// Carries out a replay script.
void RunReplayScript(const std::string& path);
// Shows a graph in a window: becomes the program `nodeline-viewer`, and so comes back only to fail.
void RunView(const ViewOptions& options);

// Makes `bytes` the content of a file, in one step, or of standard output under the name "-".
void WriteOutput(const std::string& path, std::string_view bytes);
// Fails if standard output did not take all that was written to it.
void FinishOutput();

}  // namespace nodeline::cli
