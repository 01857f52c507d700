// A graph from a file with its layout, as the commands show it.
#pragma once

#include <apps/cli/view_change.h>
#include <formats/looks.h>
#include <nodeline/model/graph.h>
#include <paintcore/painter.h>

#include <memory>
#include <string>
#include <vector>

namespace nodeline::cli {

// What the commands that lay a graph out have in common.
struct GraphOptions {
    std::string input;
    bool show_all = false;
    // "simple": boxes with captions; "port": boxes with captions and ports, all equally wide, and
    // nodes and edges with the colours and pens of the file;
    // "default": the bare rectangles of the library's own default.
    std::string handler = "simple";
    // "stable": pictures keep every rule and wear well; "inc": the incremental layout as it is.
    std::string layout = "stable";
    // What is done after the first layout, one after the other.
    std::vector<ViewChange> changes;
};

class LaidOutGraph {
public:
    // Reads, measures and lays out, unless the file has a layout, and fits each change into the
    // picture. On a terminal, a layout that takes long shows that it goes on.
    explicit LaidOutGraph(const GraphOptions& options);

    [[nodiscard]] const graph_ptr2<Graph>& graph() const { return graph_; }

    // All nodes but the root, and all edges, in the order of the file.
    [[nodiscard]] const std::vector<Node>& nodes() const { return nodes_; }
    [[nodiscard]] const std::vector<Edge>& edges() const { return edges_; }

    // "151 nodes, 207 edges, 11 levels"; where something is hidden, how much of it shows.
    [[nodiscard]] std::string Summary() const;

    // Whether nodes are hidden in a view that captions with "Thread" have narrowed.
    [[nodiscard]] bool IsNarrowed() const;

    // The size of a picture, in logical units: that of the root, or larger where routes run below
    // all nodes, for which the root leaves no room.
    [[nodiscard]] paintcore::size<double> PictureSize() const;

    // Draws every node ahead of what it owns, and over them the edges, at `scale` pixels to the
    // unit.
    void Draw(paintcore::IPainter& painter, double scale) const;

private:
    void choose_handlers(const std::string& handler);
    void choose_layout(const std::string& layout);
    void collect();
    void lay_out(const GraphOptions& options);
    [[nodiscard]] bool hides_nodes() const;
    [[nodiscard]] int count_levels() const;

    // Measures texts while the layout runs. The handler refers to it, so it goes last.
    std::unique_ptr<paintcore::IPainter> measure_;
    graph_ptr2<Graph> graph_;
    formats::GraphLooks looks_;
    std::vector<Node> nodes_;
    std::vector<Edge> edges_;
    bool was_narrowed_ = false;
};

}  // namespace nodeline::cli
