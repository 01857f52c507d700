// Glide: what a change has moved, on its way from where it was to where it is.
//
//   const Places before = PlacesIn(viewer);
//   ...                                   // a change, and its layout
//   Glide glide = Glide::From(before, viewer);
//   glide.Show(0.5);                      // half way
//   glide.Show(1.0);                      // in place, to the last bit
#pragma once

#include <nodeline/viewer/graph_viewer.h>

#include <unordered_map>
#include <vector>

namespace nodeline::qt {

// Where things are on the screen, in coordinates of the graph from the top left of the view.
struct Places {
    struct Box {
        point<double> position;
        nodeline::size<double> size;
    };

    double scale = 1.0;
    std::unordered_map<int, Box> nodes;
    std::unordered_map<int, std::vector<point<double>>> routes;
    // There was more than a glide can show smoothly; the maps are empty then.
    bool is_too_much = false;
};

// What is drawn of the graph in the view and around it, as far again in each direction.
[[nodiscard]] Places PlacesIn(const CGraphViewer& viewer);

// Only positions and sizes glide. What has come into the picture stands in its place from the
// start.
class Glide {
public:
    Glide() = default;
    // Empty if nothing that can be seen has moved, and if the scale is not what it was.
    [[nodiscard]] static Glide From(const Places& before, const CGraphViewer& viewer);

    [[nodiscard]] bool IsEmpty() const { return boxes_.empty() && bends_.empty(); }
    // Puts everything where it is at a part of the way, from 0 to 1.
    void Show(double part);

private:
    struct Box {
        Node node;
        Places::Box from;
        Places::Box to;
    };
    struct Bend {
        Node node;
        point<double> from;
        point<double> to;
    };

    void take_node(const Node& node, const Places::Box& from);
    void take_route(const Edge& edge, const std::vector<point<double>>& from);

    std::vector<Box> boxes_;
    std::vector<Bend> bends_;
};

}  // namespace nodeline::qt
