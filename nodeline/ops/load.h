// The loader: fills a graph from a line-oriented text file.
//
//   std::ifstream in("calls.txt");
//   LoadError error;
//   if (!Load(graph, in, &error)) std::cerr << "calls.txt:" << error.line << ": " << error.reason;
//
// The first line is a title. Then come sections, each begun by a line of its own: "[nodes]" and
// "[clusters]", whose lines are alike, "[edges]", and "[types]", which is skipped:
//
//   a small graph
//   [nodes]
//   1 "parser" 0 0         id, caption, type (not used), id of the owner or 0
//   2 "scanner" 0 1
//   3 "main" 0 0
//   [edges]
//   3 2 "next token"       source, target, caption
//
// Owners may be declared later than what they own; edges name nodes declared above them. Ids are
// keys of the file alone: the nodes of the graph get ids of their own. If captions hold "Thread",
// such nodes are starting points, and only they and the way down from them through nodes captioned
// "main" are shown; everything else is hidden.
#pragma once

#include <corvex/export.h>
#include <nodeline/model/graph.h>

#include <functional>
#include <istream>
#include <string>

namespace nodeline {

// Where a file is not as it should be. Lines count from 1; line 0 is for the whole of the input.
struct LoadError {
    int line = 0;
    std::string reason;
};

// Replaces the contents of `graph` by what `in` holds, read to its end. Returns false and leaves
// the graph empty if a line names a node that does not exist, or if the input cannot be read. Lays
// nothing out. Linear in the input, and in memory too.
//
// A node that names itself as its owner belongs to no picture: it is taken out at the end, with all
// that it owns. Of owners that own each other in a circle, the node with the greatest id in the
// file stays under the root.
NODELINE_API bool Load(graph_ptr2<Graph> graph, std::istream& in);

// The same, and tells in `error`, unless that is null, what was wrong. After a load that succeeded,
// the reason is empty, or it tells the first thing in the file that had no effect or another one
// than it seems to ask for: an id declared twice or too large, an owner that could not be set.
NODELINE_API bool Load(graph_ptr2<Graph> graph, std::istream& in, LoadError* error);

// Is called for each node of a file, in their order there, with the id that the file gives it. The
// node has its caption by then; its owner and its edges follow.
using LoadVisitor = std::function<void(const Node& node, int id)>;

// The same for applications that want to know the nodes by their ids in the file: to refer to them
// in messages, or to join further data. The visitor must not change who owns what.
NODELINE_API bool Load(graph_ptr2<Graph> graph, std::istream& in, LoadError* error,
                       const LoadVisitor& visit);

}  // namespace nodeline
