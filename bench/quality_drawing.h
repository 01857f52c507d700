// A drawing of a graph by any program, as numbers: what the quality of layouts is measured on.
//
// As text it is a line each for
//
//   t MS                                how long the layout took, in milliseconds
//   n NODE OWNER X Y WIDTH HEIGHT       a node, OWNER being -1 if it lies in no other
//   r EDGE FROM TO X Y X Y ...          an edge and its route, from the source to the target
//   b EDGE BENDS                        the bends of a route that was a curve before it was sampled
//
// Nodes and edges are numbered from 0, in the order of their lines. All positions count from one
// point, and those of nodes are left top corners.
#pragma once

#include <nodeline/model/geometry.h>

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace nodeline::bench {

struct DrawnNode {
    int owner;
    rectangle<double> box;
};

struct DrawnEdge {
    int from;
    int to;
    // Empty if the program has left the edge out.
    std::vector<point<double>> route;
    // Only where the corners of the route do not tell.
    std::optional<int> bends;
};

struct Drawing {
    double milliseconds = 0.0;
    std::vector<DrawnNode> nodes;
    std::vector<DrawnEdge> edges;
};

// Throws std::runtime_error, which names the line, if the text is no drawing.
Drawing ReadDrawing(std::istream& in);
void WriteDrawing(std::ostream& out, const Drawing& drawing);

}  // namespace nodeline::bench
