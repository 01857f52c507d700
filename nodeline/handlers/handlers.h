// Handlers: the objects that give nodes and edges their look and their reaction to the pointer.
//
//   graph_ptr2<SimpleNodeHandler> boxes(new SimpleNodeHandler, true);
//   boxes->SetIPainter(painter);
//   boxes->GetDrawInfo().fill_bottom = paintcore::_color(160, 190, 230);
//   graph->SetDefaultNodeHandler(boxes);
//
// Every node and edge that has no handler of its own falls back on the default of its graph, and
// that on the default of the process.
#pragma once

#include <corvex/export.h>
#include <nodeline/handlers/drawers.h>
#include <nodeline/handlers/edge_handler.h>
#include <nodeline/handlers/handler_values.h>
#include <nodeline/handlers/node_handler.h>
#include <nodeline/handlers/port_node_handler.h>
#include <nodeline/model/graph.h>
#include <paintcore/color.h>

namespace nodeline {

// The plain node handler: boxes with a caption, as `CRectNodeDrawer` draws and measures them.
class NODELINE_API SimpleNodeHandler : public INodeHandler {
public:
    void Draw(Node node, IPainter* painter) override;
    size<double> GetSize(Node node) override;
    NodeFrame GetSize(Node node, size<double> inner) override;
    void SetZoomFactor(double factor) override;

    // The painter to measure captions with while the layout runs. Not owned; without one, all nodes
    // have the size zero.
    void SetIPainter(IPainter* painter);
    [[nodiscard]] IPainter* GetIPainter() const;

    // The look, to be read and changed.
    [[nodiscard]] CNodeDrawInfo& GetDrawInfo() { return drawer_.GetDrawInfo(); }
    [[nodiscard]] const CNodeDrawInfo& GetDrawInfo() const { return drawer_.GetDrawInfo(); }

private:
    CRectNodeDrawer drawer_;
};

// The node handler that needs nothing: every node is a bare rectangle of 10 by 10, or as large as
// what it owns.
class NODELINE_API DummyNodeHandler : public INodeHandler {
public:
    // Draws the rectangle with the pen and brush that stand, whatever the flags of the node. Its
    // coordinates are those of the node times the zoom factor.
    void Draw(Node node, IPainter* painter) override;
    size<double> GetSize(Node node) override;
    NodeFrame GetSize(Node node, size<double> inner) override;
    void SetZoomFactor(double factor) override;

private:
    double zoom_factor_ = 1.0;
};

// The stock edge handler: a polyline through the break nodes, with an arrowhead at the end, which
// lights up under the pointer. Its tooltip is the caption of the edge.
class NODELINE_API DummyEdgeHandler : public IEdgeHandler {
public:
    // Edges without `EdgeDrawn` and edges without a route are not painted.
    void Draw(Edge edge, IPainter* painter) override;
    void SetZoomFactor(double factor) override;
    // Always 1.0.
    [[nodiscard]] double GetWidth(Edge edge) const override;
    // Set and clear `EdgeHovered`, and answer `HandlerRepaint`. Neither raises its signal.
    int HandleMouseHover(Edge edge) override;
    int HandleMouseLeave(Edge edge) override;
    // Fills in the caption and a tracking rectangle that the pointer soon leaves, raises the signal
    // and answers `HandlerDone`.
    int HandleOnTooltip(Edge edge, CGraphTooltipEvent* event) override;

    // The colour of edges with `EdgeMarked`, and of all others.
    paintcore::_color marked_color{255, 0, 0};
    paintcore::_color color{0, 0, 0};
    // In pixels.
    int pen_width = 1;

private:
    double zoom_factor_ = 1.0;
};

// The handlers of every graph that names no others: the one `DummyNodeHandler` and the one
// `DummyEdgeHandler` of the process, made at the first call. All graphs share them, with their
// signals and their look. A graph that outlives them, being a static object itself, keeps them
// alive.
[[nodiscard]] NODELINE_API graph_ptr2<INodeHandler> GetDefaultNodeHandler();
[[nodiscard]] NODELINE_API graph_ptr2<IEdgeHandler> GetDefaultEdgeHandler();

}  // namespace nodeline
