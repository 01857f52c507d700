// What an SVG shows of a graph that was drawn with ports: nodes and edges, counted from the
// picture.
#pragma once

#include <support/xml.h>

#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

namespace test_support {

struct DrawnNode {
    double left = 0.0;
    double top = 0.0;
    double width = 0.0;
    double height = 0.0;
    std::string caption;
    // The marks in its ports: "-", "+", "<" or ">".
    std::vector<std::string> ports;
};

using DrawnRoute = std::vector<std::pair<double, double>>;

struct DrawnGraph {
    // In the order in which they were drawn.
    std::vector<DrawnNode> nodes;
    std::vector<DrawnRoute> edges;
    int arrowheads = 0;
    // Texts and ports that belong to no node.
    int strays = 0;
};

// The points of a path: "M1 2L3 4".
inline DrawnRoute ReadRoute(const std::string& path) {
    DrawnRoute route;
    const char* at = path.c_str();
    while (*at == 'M' || *at == 'L') {
        char* end = nullptr;
        const double x = std::strtod(at + 1, &end);
        const double y = std::strtod(end, &end);
        route.emplace_back(x, y);
        at = end;
    }
    return route;
}

// A node is an outline with sharp corners, then its caption if it has any; a port has round corners
// and a mark. The fill of a node is a box of its own, and so is the background.
inline void AddBox(DrawnGraph& graph, const XmlElement& box) {
    if (!box.Get("rx").empty()) {
        if (graph.nodes.empty()) {
            ++graph.strays;
        } else {
            graph.nodes.back().ports.emplace_back();
        }
    } else if (!box.Get("stroke").empty()) {
        const auto number = [&box](const char* name) { return std::stod(box.Get(name)); };
        graph.nodes.push_back(
            {number("x"), number("y"), number("width"), number("height"), {}, {}});
    }
}

inline void AddText(DrawnGraph& graph, const XmlElement& text) {
    if (graph.nodes.empty()) {
        ++graph.strays;
        return;
    }
    DrawnNode& node = graph.nodes.back();
    std::string& place = node.ports.empty() ? node.caption : node.ports.back();
    if (!place.empty()) ++graph.strays;
    place = text.text;
}

// Throws if the document is not well-formed.
inline DrawnGraph ReadDrawnGraph(const std::string& svg) {
    DrawnGraph graph;
    for (const XmlElement& element : XmlReader::Read(svg).children) {
        if (element.name == "rect") {
            AddBox(graph, element);
        } else if (element.name == "text") {
            AddText(graph, element);
        } else if (element.name == "path") {
            graph.edges.push_back(ReadRoute(element.Get("d")));
        } else if (element.name == "polygon") {
            ++graph.arrowheads;
        } else if (element.name != "defs") {
            ++graph.strays;
        }
    }
    return graph;
}

}  // namespace test_support
