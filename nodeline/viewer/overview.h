// Overview: all of a viewer's graph in a small element, and a rectangle for what the viewer shows.
#pragma once

#include <corvex/export.h>
#include <nodeline/viewer/rubber_rect.h>
#include <nodeline/viewer/viewer.h>
#include <viewkit/central_part.h>

namespace nodeline {

using viewkit::CVisualElement;

// An overview of one viewer at a time.
class NODELINE_API IOverview {
public:
    IOverview() = default;
    virtual ~IOverview() = default;
    IOverview(const IOverview&) = delete;
    IOverview& operator=(const IOverview&) = delete;

    // For overviews of applications; those of the library never emit it.
    signal_t<> OnChangeOverview;

    virtual void SetViewer(IViewer* viewer) = 0;
    [[nodiscard]] virtual IViewer* GetViewer() const = 0;
    // Forward to the viewer.
    virtual void SetStartX(double x) = 0;
    virtual void SetStartY(double y) = 0;
    virtual void SetViewWidth(double width) = 0;
    virtual void SetViewHeight(double height) = 0;
};

// Dragging the rectangle moves the view, dragging one of its edges sets the viewer's scale. The
// arrow keys move the view by ten units.
class NODELINE_API COverviewContent : public IOverview, public viewkit::CCentralPart {
public:
    // The viewer is not owned and must not be null. It outlives the overview, or another one is set
    // before it dies.
    COverviewContent(CVisualElement* parent, IViewer* viewer);
    ~COverviewContent() override;

    // Null is ignored.
    void SetViewer(IViewer* viewer) override;
    [[nodiscard]] IViewer* GetViewer() const override;
    void SetStartX(double x) override;
    void SetStartY(double y) override;
    void SetViewWidth(double width) override;
    void SetViewHeight(double height) override;

    void DrawContent(paintcore::IPainter* painter) override;
    void SetPos(const rectangle<int>& bounds, bool repaint) override;
    void SetCoordSystem(paintcore::IPainter* painter) override;
    bool HandleKeyDown(int keys, int code) override;
    void DP2LP(point<double>* p) override;
    void LP2DP(point<double>* p) override;

    // Pixels to the unit, the smaller of both axes; infinite for an empty graph.
    [[nodiscard]] double GetOverviewScale() const { return overview_scale_; }
    // The visible rectangle of the viewer.
    [[nodiscard]] const rectangle<double>& GetViewRect() const { return view_rect_; }
    [[nodiscard]] viewkit::CRubberRect<viewkit::DummyDrawer>* GetTracker() const {
        return tracker_;
    }

private:
    using Tracker = viewkit::CRubberRect<viewkit::DummyDrawer>;
    // What a drag does to the view.
    enum class DragMode { kMoveEdge, kMoveAll };

    // Slots of the viewer and of the tracker.
    void HandleOnChangeView(point<double> a, point<double> b);
    void StartShiftProcessing(Tracker* rubber, point<double> p, point<double> q);
    void ShiftProcessing(Tracker* rubber, point<double> start, point<double> cur,
                         point<double> prev);

    [[nodiscard]] size<double> graph_extent() const;
    // Pixels to the unit on each axis, as the overview is drawn.
    [[nodiscard]] size<double> stretch() const;
    void compute_scale();
    void shift_all(const point<double>& cur, const point<double>& prev);
    void shift_edges(const point<double>& start, const point<double>& step);

    Tracker* tracker_ = nullptr;
    IViewer* viewer_;
    rectangle<double> view_rect_;
    double overview_scale_ = 0.0;
    DragMode drag_mode_ = DragMode::kMoveEdge;
    rectangle<double> saved_rect_;  // the view when the drag of an edge began
};

}  // namespace nodeline
