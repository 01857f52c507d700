// The node handler: the look of nodes, and their reaction to the pointer.
//
//   class Inspector : public subscriber_base_t {
//   public:
//       void Show(Node& node, double x, double y, int keys, MouseButton button);
//   };
//
//   graph->GetDefaultNodeHandler()->OnDoubleClick.connect(&inspector, &Inspector::Show);
//
// One handler may serve any number of nodes, graphs and viewers.
#pragma once

#include <corvex/export.h>
#include <nodeline/functor/signal.h>
#include <nodeline/handlers/handler_values.h>
#include <nodeline/model/graph.h>
#include <paintcore/painter.h>

namespace nodeline {

using paintcore::MouseButton;

// An interface whose reactions have bodies: each passes its event on through the signal of the same
// name, so that an application can listen to a stock handler without deriving from it.
//
// Pointer events have the position of the pointer in the coordinates of the graph, the word of
// `paintcore::KeyState` bits and the button. Reactions answer with a `HandlerResult`.
class NODELINE_API INodeHandler : public Countable {
public:
    INodeHandler() = default;
    ~INodeHandler() override;

    INodeHandler(const INodeHandler&) = delete;
    INodeHandler& operator=(const INodeHandler&) = delete;

    // Whether the contents of the node take part in what is done with it. For applications; the
    // library never asks. Answers true.
    virtual bool IsRecursiveProcessingNeeded();

    // Draws the node itself, without what it owns. The painter maps the coordinates of the graph.
    virtual void Draw(Node node, IPainter* painter) = 0;

    // The size of the node without regard to what it owns, in logical units. The layout asks.
    virtual size<double> GetSize(Node node) = 0;
    // The same for a node that owns a graph which has been laid out and is `inner` large. For
    // layouts of applications; those of the library make owners as large as their options say.
    virtual NodeFrame GetSize(Node node, size<double> inner) = 0;

    // Each raises its signal, except that a click raises `OnDoubleClick` as well, and answers
    // `HandlerIgnored`. The viewers of the library tell of everything but mere moves.
    virtual int HandleMouseMove(Node node, double x, double y, int keys, MouseButton button);
    virtual int HandleButtonDown(Node node, double x, double y, int keys, MouseButton button);
    virtual int HandleButtonUp(Node node, double x, double y, int keys, MouseButton button);
    virtual int HandleClick(Node node, double x, double y, int keys, MouseButton button);
    virtual int HandleDoubleClick(Node node, double x, double y, int keys, MouseButton button);
    virtual int HandleMouseHover(Node node);
    virtual int HandleMouseLeave(Node node);
    virtual int HandleOnTooltip(Node node, CGraphTooltipEvent* event);
    virtual int HandleOnTooltipTrack(Node node, CGraphTooltipEvent* event);
    // The node is among what the user selects with the rectangle `rect`.
    virtual int HandleOnSelectRect(Node node, rectangle<double> rect);
    // A context menu is wanted at the point.
    virtual int HandleContextMenu(Node node, double x, double y);

    // Tells the scale of the viewer, in pixels per logical unit, before each `Draw`. A handler that
    // scales by itself keeps it; a factor of 0 or less is ignored. Does nothing here.
    virtual void SetZoomFactor(double factor);

    // A slot gets the handler's own copy of the node: what it assigns is seen by the slots after it
    // and by nobody else.
    signal_t<Node&, double, double, int, MouseButton> OnButtonDown;
    signal_t<Node&, double, double, int, MouseButton> OnButtonUp;
    signal_t<Node&, double, double, int, MouseButton> OnMouseMove;
    // Raised only by handlers that tell clicks from double clicks.
    signal_t<Node&, double, double, int, MouseButton> OnClick;
    // Raised for double clicks and, unless the handler raises `OnClick`, for each click.
    signal_t<Node&, double, double, int, MouseButton> OnDoubleClick;
    // Raised by the reactions of the same name.
    signal_t<Node&> OnMouseHover;
    signal_t<Node&> OnMouseLeave;
    signal_t<Node&, CGraphTooltipEvent*> OnTooltip;
    signal_t<Node&, CGraphTooltipEvent*> OnTooltipTrack;
    signal_t<Node&, rectangle<double>> OnSelectRect;
    signal_t<Node&, double, double> OnContextMenu;
};

}  // namespace nodeline
