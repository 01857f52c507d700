// Handlers that measure by the tag: sizes and widths that a test chooses, node by node.
#pragma once

#include <nodeline/handlers/handlers.h>

namespace nodeline::test {

// Tags of nodes: width and height in tenths.
inline int SizeTag(int width, int height) { return width * 10000 + height; }

// A node is as large as its tag says. For an owner that is the room of its caption.
class TagSizes : public INodeHandler {
public:
    void Draw(Node, IPainter*) override {}
    size<double> GetSize(Node node) override {
        return {0.1 * (node.GetTag() / 10000), 0.1 * (node.GetTag() % 10000)};
    }
    NodeFrame GetSize(Node, size<double> inner) override { return {inner, {0.0, 0.0}}; }
};

// An edge is as wide as its tag says, in quarters, and one more.
class TagWidths : public IEdgeHandler {
public:
    void Draw(Edge, IPainter*) override {}
    [[nodiscard]] double GetWidth(Edge edge) const override { return 1.0 + 0.25 * edge.GetTag(); }
};

// Both as the defaults of a graph.
inline void MeasureByTags(const graph_ptr2<Graph>& graph) {
    graph->SetDefaultNodeHandler(graph_ptr2<INodeHandler>(new TagSizes, true));
    graph->SetDefaultEdgeHandler(graph_ptr2<IEdgeHandler>(new TagWidths, true));
}

}  // namespace nodeline::test
