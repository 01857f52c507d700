// Overview: all of a viewer's graph in a small element, and a rectangle for what the viewer shows.
#pragma once

#include <corvex/export.h>
#include <nodeline/viewer/rubber_rect.h>
#include <nodeline/viewer/viewer.h>
#include <viewkit/central_part.h>
#include <viewkit/window.h>

#include <cstdint>
#include <optional>

namespace nodeline {

using paintcore::MouseButton;
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

    // The viewer whose graph and view are shown; not owned.
    virtual void SetViewer(IViewer* viewer) = 0;
    [[nodiscard]] virtual IViewer* GetViewer() const = 0;
    // Forward to the viewer.
    virtual void SetStartX(double x) = 0;
    virtual void SetStartY(double y) = 0;
    virtual void SetViewWidth(double width) = 0;
    virtual void SetViewHeight(double height) = 0;
};

// The stock overview. Dragging the rectangle moves the view, dragging one of its edges sets the
// viewer's scale. The arrow keys move the view by ten units. The options make more of both, and are
// off at first.
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
    void DrawOverlay(paintcore::IPainter* painter) override;
    void DrawPicture(paintcore::IPainter* painter) override;
    void SetPos(const rectangle<int>& bounds, bool repaint) override;
    void SetCoordSystem(paintcore::IPainter* painter) override;
    bool HandleMouseMove(int x, int y, int keys, MouseButton button) override;
    void HandleMouseLeave(CVisualElement* element) override;
    bool HandleKeyDown(int keys, int code) override;
    void DP2LP(point<double>* p) override;
    void LP2DP(point<double>* p) override;

    // Pixels to the unit, the smaller of both axes; infinite for an empty graph.
    [[nodiscard]] double GetOverviewScale() const { return overview_scale_; }
    // The visible rectangle of the viewer.
    [[nodiscard]] const rectangle<double>& GetViewRect() const { return view_rect_; }
    // What takes the drags: a child of the overview, which is on at first.
    [[nodiscard]] viewkit::CRubberRect<viewkit::DummyDrawer>* GetTracker() const {
        return tracker_;
    }

    // Whether every press takes hold of something: of an edge or a corner of the rectangle within
    // three pixels on either side, and otherwise of the whole, whose middle jumps to a press
    // outside. In the middle third of a small rectangle it is the whole, too. An edge follows the
    // pointer while the opposite one stays; the rectangle keeps its shape, growing evenly across.
    // A corner follows on the axis that makes the rectangle larger, and the opposite one stays. The
    // scale keeps to `viewkit::kMinWheelScale` and `kMaxWheelScale`. The cursor of the window tells
    // what a press would do.
    void SetGrabAnywhere(bool on);
    [[nodiscard]] bool GetGrabAnywhere() const { return grab_anywhere_; }
    // Whether the rectangle is drawn over the picture, as far as the graph reaches, so that the
    // nodes are painted again only when the picture of the graph has changed
    // (`Graph::GetRevision`), another graph or another size is shown, or the pixels are lost. Then
    // hidden nodes are left out. Of leaves that are less than two pixels high or wide only the
    // colour is painted, that of their largest area mixed with the outline's, and where such leaves
    // cover one another, that of the first, or of those that are selected, marked or new.
    void SetViewOverlay(bool on);
    [[nodiscard]] bool GetViewOverlay() const { return view_overlay_; }
    // With the overlay, and if the last picture has more nodes than this, it stays although the
    // graph has changed, until `RenewNodes`. Below 0, as at first, it never does.
    void SetNodesHeldAbove(int count) { nodes_held_above_ = count; }
    [[nodiscard]] int GetNodesHeldAbove() const { return nodes_held_above_; }
    // Emitted with each change of the view, and after each paint, while the picture is held back.
    signal_t<> OnNodesHeld;
    // Has the nodes painted with the next paint, and asks for one, if they are not up to date.
    void RenewNodes();

private:
    using Tracker = viewkit::CRubberRect<viewkit::DummyDrawer>;
    // What a drag does to the view.
    enum class DragMode { kMoveEdge, kMoveAll, kResize };
    // What a press takes hold of: 0 for neither edge of an axis, below 0 for the left or the top
    // one, above for the other. With 0 and 0 it is the whole.
    struct Grip {
        int horz = 0;
        int vert = 0;
        bool is_outside = false;
    };

    // Slots of the viewer and of the tracker.
    void HandleOnChangeView(point<double> a, point<double> b);
    void StartShiftProcessing(Tracker* rubber, point<double> p, point<double> q);
    void ShiftProcessing(Tracker* rubber, point<double> start, point<double> cur,
                         point<double> prev);

    // Null where there is no viewer.
    [[nodiscard]] graph_ptr2<Graph> shown_graph() const;
    [[nodiscard]] size<double> graph_extent() const;
    // Pixels to the unit on each axis, as the overview is drawn.
    [[nodiscard]] size<double> stretch() const;
    void compute_scale();
    void shift_all(const point<double>& cur, const point<double>& prev);
    void shift_edges(const point<double>& start, const point<double>& step);
    [[nodiscard]] Grip grip_at(const point<double>& p);
    void start_grip(const point<double>& p);
    void resize_view(const point<double>& way);
    void show_cursor(std::optional<viewkit::Cursor> cursor);
    void draw_all_nodes(paintcore::IPainter* painter);
    void draw_view(paintcore::IPainter* painter, const rectangle<double>& view);
    void draw_picture(paintcore::IPainter* painter);
    [[nodiscard]] bool is_picture_of(Graph& graph) const;
    [[nodiscard]] bool is_held(Graph& graph) const;

    Tracker* tracker_ = nullptr;
    IViewer* viewer_;
    rectangle<double> view_rect_;
    double overview_scale_ = 0.0;
    DragMode drag_mode_ = DragMode::kMoveEdge;
    rectangle<double> saved_rect_;  // the view when the drag of an edge began
    double saved_scale_ = 0.0;
    Grip grip_;
    bool grab_anywhere_ = false;
    bool view_overlay_ = false;
    bool nodes_are_due_ = false;
    int nodes_held_above_ = -1;
    // What the last paint of the nodes has shown. The store is kept, so no other takes its address.
    graph_ptr<IGraphVis> painted_store_;
    std::uint64_t painted_revision_ = 0;
    int painted_nodes_ = 0;
    std::optional<viewkit::Cursor> cursor_;  // if it is not the usual one
};

}  // namespace nodeline
