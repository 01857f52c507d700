// Reads graphs in the text format, tells what is wrong with them, and prints them as outlines.

#include <nodeline/model/graph.h>
#include <nodeline/ops/graph_ops.h>
#include <nodeline/ops/load.h>

#include <iostream>
#include <map>
#include <sstream>
#include <string>

using nodeline::Edge;
using nodeline::Graph;
using nodeline::graph_ptr2;
using nodeline::Node;

namespace {

// The first line is a title. A node has an id, a caption, a number that is not used and the id of
// its owner, or 0; an edge has its source, its target and a caption.
const char* const kShop =
    "a shop\n"
    "[nodes]\n"
    "1 \"front\" 0 0\n"
    "2 \"cart\" 0 1\n"
    "3 \"search\" 0 1\n"
    "4 \"orders\" 0 0\n"
    "5 \"payment\" 0 4\n"
    "[edges]\n"
    "2 5 \"check out\"\n"
    "3 2 \"add\"\n"
    "5 4 \"\"\n";

// Node 2 stands there twice: the second one goes under the root, and nothing can refer to it.
const char* const kTwice =
    "two of a kind\n"
    "[nodes]\n"
    "1 \"front\" 0 0\n"
    "2 \"cart\" 0 1\n"
    "2 \"basket\" 0 1\n"
    "[edges]\n"
    "1 2 \"\"\n";

// The edge comes before one of its nodes.
const char* const kEarly =
    "an edge too early\n"
    "[nodes]\n"
    "1 \"front\" 0 0\n"
    "[edges]\n"
    "1 2 \"\"\n"
    "[nodes]\n"
    "2 \"cart\" 0 1\n";

// How many owners there are between a node and the root.
int DepthOf(Node node) {
    int depth = 0;
    for (node = node.GetOwner(); !nodeline::IsRoot(node); node = node.GetOwner()) ++depth;
    return depth;
}

void PrintOutline(const graph_ptr2<Graph>& graph) {
    // Each node comes ahead of what it owns. The root is the graph itself, and has no caption.
    const auto print = [](const Node& node) {
        std::cout << std::string(static_cast<std::size_t>(2 * DepthOf(node)), ' ')
                  << node.GetCaption();
        for (const Edge& edge : node.GetEdgesOut()) {
            std::cout << " -> " << edge.To().GetCaption();
            if (!edge.GetCaption().empty()) std::cout << " (" << edge.GetCaption() << ')';
        }
        std::cout << '\n';
    };
    nodeline::ForEachNodeIn(graph->GetRoot(), print, false, false);
}

// True if there is a graph. There may have been a warning all the same.
bool LoadFrom(const std::string& name, const std::string& text, const graph_ptr2<Graph>& graph) {
    std::istringstream in(text);
    nodeline::LoadError error;
    if (!nodeline::Load(graph, in, &error)) {
        std::cout << name << ':' << error.line << ": " << error.reason << '\n';
        return false;
    }
    if (!error.reason.empty()) {
        std::cout << name << ':' << error.line << ": warning: " << error.reason << '\n';
    }
    return true;
}

}  // namespace

int main() {
    const graph_ptr2<Graph> graph(new Graph, true);
    if (!LoadFrom("shop", kShop, graph)) return 1;
    PrintOutline(graph);

    // A load replaces what the graph held. What is odd, but no mistake, is told as a warning.
    if (!LoadFrom("twice", kTwice, graph)) return 1;
    PrintOutline(graph);

    // One that fails leaves the graph empty.
    if (LoadFrom("early", kEarly, graph)) return 1;
    std::cout << "nodes left: " << graph->GetRoot().GetOwned().GetCount() << '\n';

    // The nodes of the graph get ids of their own. Whoever wants to find them by those of the file
    // takes them down as they come.
    std::map<int, Node> nodes;
    std::istringstream in(kShop);
    nodeline::LoadError error;
    const auto note = [&nodes](const Node& node, int id) { nodes[id] = node; };
    if (!nodeline::Load(graph, in, &error, note)) return 1;
    std::cout << "5 in the file is " << nodes.at(5).GetCaption() << '\n';
}
