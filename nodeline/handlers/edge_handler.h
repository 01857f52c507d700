// The edge handler: the look of edges, and their reaction to the pointer.
//
// One handler serves all edges of a graph; it may serve any number of graphs and viewers.
#pragma once

#include <corvex/export.h>
#include <nodeline/functor/signal.h>
#include <nodeline/handlers/handler_values.h>
#include <nodeline/model/graph.h>
#include <paintcore/painter.h>

namespace nodeline {

using paintcore::MouseButton;

// An interface whose reactions have bodies; all is as in `INodeHandler`.
class NODELINE_API IEdgeHandler : public Countable {
public:
    IEdgeHandler() = default;
    ~IEdgeHandler() override;

    IEdgeHandler(const IEdgeHandler&) = delete;
    IEdgeHandler& operator=(const IEdgeHandler&) = delete;

    // Draws the edge along its route. The painter maps the coordinates of the graph.
    virtual void Draw(Edge edge, IPainter* painter) = 0;

    // Tells the scale of the viewer, in pixels per logical unit, before each `Draw`. A handler that
    // scales by itself keeps it; a factor of 0 or less is ignored. Does nothing here.
    virtual void SetZoomFactor(double factor);

    // The width of the lane that the edge takes where it runs backwards, in logical units. The
    // layout asks.
    [[nodiscard]] virtual double GetWidth(Edge edge) const = 0;

    // Each raises its signal, except that a click raises `OnDoubleClick` as well, and answers
    // `HandlerIgnored`. The viewers of the library tell of hovering and tooltips alone; a click on
    // an edge is one on the node behind it.
    virtual int HandleMouseMove(Edge edge, double x, double y, int keys, MouseButton button);
    virtual int HandleButtonDown(Edge edge, double x, double y, int keys, MouseButton button);
    virtual int HandleButtonUp(Edge edge, double x, double y, int keys, MouseButton button);
    virtual int HandleClick(Edge edge, double x, double y, int keys, MouseButton button);
    virtual int HandleDoubleClick(Edge edge, double x, double y, int keys, MouseButton button);
    virtual int HandleMouseHover(Edge edge);
    virtual int HandleMouseLeave(Edge edge);
    virtual int HandleOnTooltip(Edge edge, CGraphTooltipEvent* event);
    virtual int HandleOnTooltipTrack(Edge edge, CGraphTooltipEvent* event);

    // A slot gets the handler's own copy of the edge: what it assigns is seen by the slots after it
    // and by nobody else.
    signal_t<Edge&, double, double, int, MouseButton> OnButtonDown;
    signal_t<Edge&, double, double, int, MouseButton> OnButtonUp;
    signal_t<Edge&, double, double, int, MouseButton> OnMouseMove;
    // Raised by no handler of the library; for handlers that tell clicks from double clicks.
    signal_t<Edge&, double, double, int, MouseButton> OnClick;
    // Raised for clicks and double clicks alike.
    signal_t<Edge&, double, double, int, MouseButton> OnDoubleClick;
    // Raised by the reactions of the same name.
    signal_t<Edge&> OnMouseHover;
    signal_t<Edge&> OnMouseLeave;
    signal_t<Edge&, CGraphTooltipEvent*> OnTooltip;
    signal_t<Edge&, CGraphTooltipEvent*> OnTooltipTrack;
};

}  // namespace nodeline
