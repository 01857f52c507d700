// What every fuzz target does with its bytes.
#pragma once

#include <formats/graph_file.h>
#include <formats/graph_listing.h>
#include <formats/writer.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <set>
#include <string>

namespace nodeline::fuzz {

struct Contents {
    std::size_t nodes = 0;
    std::size_t edges = 0;
    std::multiset<std::string> captions;
};

inline Contents ContentsOf(const graph_ptr2<Graph>& graph) {
    const formats::GraphLooks looks;
    const formats::GraphListing listing(graph, looks);
    Contents contents{listing.nodes().size(), listing.edges().size(), {}};
    for (const Node& node : listing.nodes()) contents.captions.insert(node.GetCaption());
    for (const Edge& edge : listing.edges()) contents.captions.insert(edge.GetCaption());
    return contents;
}

inline void Require(bool condition, const char* what) {
    if (condition) return;
    std::cerr << what << '\n';
    std::abort();
}

inline std::string Rewrite(const std::string& text, formats::Format format, Contents& contents) {
    const graph_ptr2<Graph> graph(new Graph, true);
    const auto report = formats::ReadGraph(graph, "f", text, {.show_all = true, .format = format});
    contents = ContentsOf(graph);
    return formats::WriteGraph(graph, "f", format, report.looks).text;
}

// Bytes are either refused or make a graph, which a file of the same format keeps. What a format
// cannot hold is replaced the first time, so captions are compared from then on.
inline int ReadAndWrite(formats::Format format, const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    Contents first;
    std::string written;
    try {
        written = Rewrite(text, format, first);
    } catch (const formats::ReadError&) {
        return 0;
    }
    try {
        Contents second;
        Contents third;
        Rewrite(Rewrite(written, format, second), format, third);
        Require(first.nodes == second.nodes, "a node was lost");
        Require(first.edges == second.edges, "an edge was lost");
        Require(second.captions == third.captions, "a caption has changed");
    } catch (const formats::ReadError& error) {
        std::cerr << error.what() << "\n" << written;
        Require(false, "what was written cannot be read");
    }
    return 0;
}

}  // namespace nodeline::fuzz
