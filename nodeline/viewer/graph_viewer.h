// Graph viewer: the element that an application places in its window to show a graph.
//
//   auto* viewer = new CGraphViewer(window.GetRoot(), {100, 100}, Alignment::Client);
//   viewer->SetGraph(graph);
//   viewer->FitToWindow();
#pragma once

#include <corvex/export.h>
#include <nodeline/viewer/content.h>
#include <viewkit/scroll_box.h>

namespace nodeline {

// A `CContent` in a scroll box. It keeps its default node handler from one graph to the next.
class NODELINE_API CGraphViewer : public IViewer, public CVisualElement {
public:
    // Fills what `parent` has left. The other arguments are those of the surface.
    CGraphViewer(CVisualElement* parent, graph_ptr2<Graph> graph, bool needCoordSystem);
    // Shows an empty graph.
    CGraphViewer(CVisualElement* parent, size<int> initial, viewkit::Alignment alignment);
    ~CGraphViewer() override;

    // As a viewer: see `CContent`.
    void SetStartX(double x) override;
    void SetStartY(double y) override;
    void SetScale(double scale) override;
    void SetViewWidth(double width) override;
    void SetViewHeight(double height) override;
    void SetGraph(graph_ptr2<Graph> graph) override;
    void SetDefaultNodeHandler(graph_ptr2<INodeHandler> handler) override;
    [[nodiscard]] double GetScale() const override;
    [[nodiscard]] graph_ptr2<Graph> GetGraph() const override;
    [[nodiscard]] double GetStartX() const override;
    [[nodiscard]] double GetStartY() const override;
    void RenewView(bool invalidate) override;
    bool RecalculateLayout() override;
    // As `SetGraph`, but the graph stays as it has been laid out, and keeps its node handler.
    void ShowGraph(graph_ptr2<Graph> graph);
    // As the last argument of the first constructor, from the next paint on.
    virtual void SetNeedCoordSystem(bool need);

    // Bars as needed, or never. Without them the view still scrolls by keys and drags.
    void ScrollbarsEnable(bool on);

    // Zooms by a factor so that the point of the graph at a pixel of the surface stays there. The
    // scale is held between `viewkit::kMinWheelScale` and `kMaxWheelScale`; a factor of 0 or less
    // is ignored.
    void ZoomAbout(point<int> pixel, double factor);
    // Brings the layout up to date and shows all of the graph in the middle of the view, as large
    // as it fits, within the same limits. A graph without an extent keeps the scale.
    void FitToWindow();
    // Brings the layout up to date and moves the view so that `node` stands in its middle.
    void Centre(const Node& node);

    // Those of the surface.
    void SetRubberMode(int mode) { content_->SetRubberMode(mode); }
    [[nodiscard]] int GetRubberMode() const { return content_->GetRubberMode(); }
    void SetMoveNodes(bool move) { content_->SetMoveNodes(move); }
    [[nodiscard]] bool GetMoveNodes() const { return content_->GetMoveNodes(); }
    void SetCursorPending(bool pending) { content_->SetCursorPending(pending); }
    [[nodiscard]] bool GetCursorPending() const { return content_->GetCursorPending(); }
    [[nodiscard]] DragTracker* GetDragTracker() const { return content_->GetDragTracker(); }
    [[nodiscard]] ZoomRect* GetZoomRect() const { return content_->GetZoomRect(); }

    // Both live as long as the viewer.
    [[nodiscard]] CContent* GetContent() const { return content_; }
    [[nodiscard]] viewkit::CScrollBox* GetScrollBox() const { return scroll_box_; }

private:
    void Init(graph_ptr2<Graph> graph, bool needCoordSystem);
    void centre_on(const point<double>& p);

    // Slots.
    void HandleOnChangeView(point<double> a, point<double> b);
    void HandleOnScroll();

    CContent* content_ = nullptr;
    viewkit::CScrollBox* scroll_box_ = nullptr;
    graph_ptr2<INodeHandler> default_handler_;
};

}  // namespace nodeline
