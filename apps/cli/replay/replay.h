// Replay scripts: sessions with the library as text, one command per line.
//
//   node 1 0 100 20
//   node 2 0 60 20
//   edge 1 1 2
//   recalc
//   dump
//
// The script gives numbers of its own to nodes and edges; 0 is the root. What the reading commands
// print is the language of the regression cases.
#pragma once

#include <iosfwd>
#include <string>

namespace nodeline::replay {

// The line of a script that ended its run, counted from 1, and why. Line 0 is for the whole script.
struct ReplayError {
    int line = 0;
    std::string reason;
};

// Carries out a script on a new graph, and prints on `out` what it asks for. Returns false at the
// first line that cannot be carried out; that line prints nothing, and what was printed before it
// stays.
bool RunReplay(std::istream& script, std::ostream& out, ReplayError& error);

}  // namespace nodeline::replay
