// Viewer: what shows a graph, as overviews and applications see it.
#pragma once

#include <corvex/export.h>
#include <nodeline/functor/signal.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/model/graph.h>

namespace nodeline {

// An interface over one graph and the part of it that is visible, a rectangle in the coordinates of
// the graph. There is no limit to where the view may stand.
class NODELINE_API IViewer {
public:
    IViewer() = default;
    virtual ~IViewer() = default;
    IViewer(const IViewer&) = delete;
    IViewer& operator=(const IViewer&) = delete;

    // The view has changed, or may have: its top left and its bottom right corner.
    signal_t<point<double>, point<double>> OnChangeView;

    // Moves the left or the top edge of the view.
    virtual void SetStartX(double x) = 0;
    virtual void SetStartY(double y) = 0;
    // Sets the scale, in pixels to the unit; one of 0 or less is ignored. The top left corner
    // stays.
    virtual void SetScale(double scale) = 0;
    // Sets the scale so that the view gets this width or height; 0 or less is ignored.
    virtual void SetViewWidth(double width) = 0;
    virtual void SetViewHeight(double height) = 0;
    // Shows a graph, laid out anew, in the middle of the view; null shows an empty one.
    virtual void SetGraph(graph_ptr2<Graph> graph) = 0;
    // The handler of all nodes of the graph that have none of their own.
    virtual void SetDefaultNodeHandler(graph_ptr2<INodeHandler> handler) = 0;
    // In pixels to the unit; above 0.
    [[nodiscard]] virtual double GetScale() const = 0;
    // Never null.
    [[nodiscard]] virtual graph_ptr2<Graph> GetGraph() const = 0;
    // The left and the top edge of the view.
    [[nodiscard]] virtual double GetStartX() const = 0;
    [[nodiscard]] virtual double GetStartY() const = 0;
    // Emits `OnChangeView`, and asks for what has changed to be painted, or with `invalidate` for
    // everything.
    virtual void RenewView(bool invalidate) = 0;
    // Carries out the layouts that the graph has asked for. True if there were any.
    virtual bool RecalculateLayout() = 0;
};

}  // namespace nodeline
