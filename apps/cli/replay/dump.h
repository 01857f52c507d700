// The state of a replayed graph as text.
#pragma once

#include <apps/cli/replay/script_graph.h>

#include <string>

namespace nodeline::replay {

// Appends a blank and a number as replays print it: the shortest text that reads back as the same
// double, and "0" for a negative zero.
void AppendValue(std::string& out, double value);

// A line "node" for every node with its position, size and condition word; for every edge a line
// "chain" for each owner in which it has bends, and a line "route"; then "end".
[[nodiscard]] std::string Dump(const ScriptGraph& script);

}  // namespace nodeline::replay
