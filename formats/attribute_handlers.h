// Handlers that show what a file says about the look of its nodes and edges.
//
//   const formats::ReadReport report = formats::ReadGraph(graph, name, text, {});
//   graph_ptr2<PortNodeHandler> nodes = formats::MakePortNodeHandler(report.looks);
//   nodes->SetIPainter(painter);
//   graph->SetDefaultNodeHandler(nodes);
//   if (auto edges = formats::MakeEdgeHandler(report.looks)) graph->SetDefaultEdgeHandler(edges);
#pragma once

#include <formats/looks.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/model/graph.h>

#include <unordered_map>

namespace nodeline::formats {

// Gives a drawer what the look of a node says; what it says nothing of stays. The fill does not
// show where a state of the node has one of its own, and then the text is not chosen to go with it.
void ApplyLook(const NodeLook& look, const Node& node, CPortNodeDrawInfo& info);
// As wide as a pen of so many pixels is drawn.
[[nodiscard]] int PixelsOf(double pen_width);

// Draws nodes as `PortNodeHandler` does, but with the colours and pens of their looks. On a fill
// that says nothing of its text, that is black or white. Selected and new nodes keep the fill that
// shows them as such. Measures and reacts as `PortNodeHandler` does. Serves the one graph whose
// ids the looks go by; the look of `GetDrawInfo` holds for what has none of its own.
class AttributeNodeHandler : public PortNodeHandler {
public:
    explicit AttributeNodeHandler(std::unordered_map<int, NodeLook> looks);

    void Draw(Node node, IPainter* painter) override;

private:
    std::unordered_map<int, NodeLook> looks_;
};

// The same for edges, which are drawn as by `DummyEdgeHandler`. A marked edge keeps the colour that
// shows it as such.
class AttributeEdgeHandler : public DummyEdgeHandler {
public:
    explicit AttributeEdgeHandler(std::unordered_map<int, EdgeLook> looks);

    void Draw(Edge edge, IPainter* painter) override;

private:
    std::unordered_map<int, EdgeLook> looks_;
};

// A handler of interactive nodes for a graph with these looks: a plain `PortNodeHandler` where no
// node has one.
[[nodiscard]] graph_ptr2<PortNodeHandler> MakePortNodeHandler(const GraphLooks& looks);

// A handler for the edges of a graph with these looks: an empty handle, so that the graph keeps the
// handler that it has, where no edge has one.
[[nodiscard]] graph_ptr2<IEdgeHandler> MakeEdgeHandler(const GraphLooks& looks);

}  // namespace nodeline::formats
