// Graph files as the commands read them: with a word about everything that would leave the picture
// other than the file's author meant it.
#pragma once

#include <nodeline/model/graph.h>

#include <string>

namespace nodeline::cli {

// Checks that the sections of a graph file can be told, which is not so where lines end with more
// than a line feed. A file without any section is a `Failure`, too.
void CheckSections(const std::string& path, const std::string& text);

// Reads the graph in the file `path`. Each node has its id in the file as its tag. With `show_all`
// no node is hidden. A file that cannot be loaded is a `Failure`; what was passed over in one that
// can is a warning on standard error.
[[nodiscard]] graph_ptr2<Graph> ReadGraph(const std::string& path, bool show_all);

}  // namespace nodeline::cli
