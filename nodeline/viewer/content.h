// Viewing surface: the element that shows a graph, draws what is visible of it, and takes clicks,
// drags and keys.
//
// It does not scroll by itself: whoever makes one gives it the scroll models that it is to go
// through, which may be its own (it is one for either axis). `CGraphViewer` does so, and is what
// applications place in their windows.
#pragma once

#include <corvex/export.h>
#include <nodeline/ops/graph_ops.h>
#include <nodeline/viewer/rubber_rect.h>
#include <nodeline/viewer/scroll_model.h>
#include <nodeline/viewer/viewer.h>
#include <viewkit/central_part.h>

#include <utility>
#include <vector>

namespace nodeline {

using paintcore::CTooltipEvent;
using viewkit::CVisualElement;
// The tracker of a drag that pans or moves a node; it shows nothing.
using DragTracker = viewkit::CRubberRect<viewkit::DummyDrawer>;
// The outline that the user draws around what to zoom to or to select.
using ZoomRect = viewkit::CRubberRectEx<viewkit::FocusRectDrawer>;

// What a finished rubber rectangle does.
enum RubberMode { RubberZoom = 0, RubberSelect = 1 };

// An element that shows one graph: a viewer of it, and a scroll model for either axis.
class NODELINE_API CContent : public IViewer,
                              public viewkit::CCentralPart,
                              public IVertSimpleScrollModel,
                              public IHorzSimpleScrollModel {
public:
    // `graph` may be null: then the surface shows an empty graph. With `needCoordSystem` a paint
    // maps the coordinates of the graph by itself; without, it draws as the painter stands.
    CContent(CVisualElement* parent, graph_ptr2<Graph> graph, bool needCoordSystem);
    ~CContent() override;

    // As a viewer. `SetStartX` and `SetStartY` go through the scroll models, and do nothing
    // without.
    void SetStartX(double x) override;
    void SetStartY(double y) override;
    void SetScale(double s) override;
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
    // The same with a painter to measure by; null takes that of the window, if there is one.
    bool RecalculateLayout(paintcore::IPainter* painter);

    // As `SetGraph`, but the graph stays as it has been laid out; only what it has asked for since
    // is done. For graphs that were laid out ahead, say on another thread.
    void ShowGraph(graph_ptr2<Graph> graph);

    // As a scroll model. The range is the extent of the root, widened so far that the view lies in
    // it. `SetHorzStart` and `SetVertStart` tell nobody; follow them with `RenewView`.
    [[nodiscard]] double GetHorzFrom() const override;
    [[nodiscard]] double GetHorzTo() const override;
    void SetHorzStart(double start) override;
    [[nodiscard]] double GetHorzStart() const override;
    [[nodiscard]] int GetHorzStepInPixels() const override;
    void SetHorzMeasure(std::pair<double, int> measure) override;
    [[nodiscard]] std::pair<double, int> GetHorzMeasure() const override;
    [[nodiscard]] double GetVertFrom() const override;
    [[nodiscard]] double GetVertTo() const override;
    void SetVertStart(double start) override;
    [[nodiscard]] double GetVertStart() const override;
    [[nodiscard]] int GetVertStepInPixels() const override;
    void SetVertMeasure(std::pair<double, int> measure) override;
    [[nodiscard]] std::pair<double, int> GetVertMeasure() const override;

    // As the last argument of the constructor, from the next paint on.
    virtual void SetNeedCoordSystem(bool need);
    // The rubber rectangle scrolls the same models.
    void SetHorzScroll(viewkit::IScrollModel* model) override;
    void SetVertScroll(viewkit::IScrollModel* model) override;

    // As an element.
    void DrawContent(paintcore::IPainter* painter) override;
    void DrawPicture(paintcore::IPainter* painter) override;
    void SetPos(const rectangle<int>& bounds, bool repaint) override;
    bool HandleMouseMove(int x, int y, int keys, MouseButton button) override;
    bool HandleButtonDown(int x, int y, int keys, MouseButton button) override;
    bool HandleButtonUp(int x, int y, int keys, MouseButton button) override;
    bool HandleDoubleClick(int x, int y, int keys, MouseButton button) override;
    void HandleMouseHover(CVisualElement* element) override;
    void HandleMouseLeave(CVisualElement* element) override;
    bool HandleKeyDown(int keys, int code) override;
    bool HandleKeyUp(int keys, int code) override;
    bool HandleChar(char c) override;
    bool HandleOnTooltip(CTooltipEvent* event) override;
    bool HandleOnTooltipTrack(CTooltipEvent* event) override;
    bool HandleContextMenu(int x, int y) override;
    bool HandleDragOver(int x, int y) override;
    bool HandleDragDrop(int x, int y) override;
    void HandleCaptureLost() override;
    void DP2LP(point<double>* p) override;
    void LP2DP(point<double>* p) override;

    // Pixels of the element to coordinates of the graph, without rounding, and back to whole
    // pixels; a twentieth of a pixel is added before the fraction is cut off.
    [[nodiscard]] point<double> ConvertP2L(point<int> p) const;
    [[nodiscard]] point<int> ConvertL2P(point<double> p) const;
    // What meets a rectangle of pixels; edges are widened by a pixel, so that thin ones are hit.
    [[nodiscard]] NodeSet HitNodeTest(int x1, int y1, int x2, int y2) const;
    [[nodiscard]] EdgeSet HitEdgeTest(int x1, int y1, int x2, int y2) const;
    // The node that an event at a pixel is for; the root where there is no other. It is the first
    // one that is hit, or what `SetPickDrawn` says.
    [[nodiscard]] Node GetNodeAt(point<int> pixel) const;
    // The edge that it is for where no node takes it, found in the same way; may be empty.
    [[nodiscard]] Edge GetEdgeAt(point<int> pixel) const;

    // A `RubberMode`; any value but 0 selects. The rectangle is off at first: see `GetZoomRect`.
    void SetRubberMode(int mode) { rubber_mode_ = mode; }
    [[nodiscard]] int GetRubberMode() const { return rubber_mode_; }
    // Whether dragging a node that owns nothing moves it, instead of panning.
    void SetMoveNodes(bool move) { move_nodes_ = move; }
    [[nodiscard]] bool GetMoveNodes() const { return move_nodes_; }
    // Whether the window's former cursor is restored when the next drag or rubber rectangle ends.
    void SetCursorPending(bool pending) { cursor_pending_ = pending; }
    [[nodiscard]] bool GetCursorPending() const { return cursor_pending_; }
    // The tracker that pans and moves nodes, on at first, and the rubber rectangle, off at first.
    // They are children of the surface and live as long as it does.
    [[nodiscard]] DragTracker* GetDragTracker() const { return drag_tracker_; }
    [[nodiscard]] ZoomRect* GetZoomRect() const { return zoom_rect_; }

    // ----- Options for surfaces that a person works with. All are off at first; the visible rubber
    // rectangle has one of its own (`GetZoomRect()->SetUnbounded`).

    // Whether events are for what the user sees. Then nodes and edges that are not drawn, because
    // they or their ends are hidden, take no clicks, drags, menus, tooltips or hovers, and the node
    // at a pixel is the innermost drawn one; of nodes that overlap without owning one another, the
    // one that is painted last. So is the edge.
    void SetPickDrawn(bool on) { pick_drawn_ = on; }
    [[nodiscard]] bool GetPickDrawn() const { return pick_drawn_; }
    // Whether a rubber rectangle of more than four pixels on one side leaves no click behind, if it
    // ends in the node that it began in.
    void SetRubberEndsPress(bool on) { rubber_ends_press_ = on; }
    [[nodiscard]] bool GetRubberEndsPress() const { return rubber_ends_press_; }
    // Whether the rectangle of `RubberSelect` selects, by their `NodeSelected`, the drawn nodes
    // that own nothing and that it touches: these instead of all others, or with shift besides. No
    // handler hears of it. A rectangle then counts, in either mode, if it is larger than four
    // pixels, instead of twenty units; one that selects need be so on one side only.
    void SetSelectTouched(bool on) { select_touched_ = on; }
    [[nodiscard]] bool GetSelectTouched() const { return select_touched_; }
    // Whether `OnChangeView` is emitted also while a rubber rectangle scrolls the view.
    void SetTellRubberScroll(bool on) { tell_rubber_scroll_ = on; }
    [[nodiscard]] bool GetTellRubberScroll() const { return tell_rubber_scroll_; }
    // Whether there is one press at a time. A new one takes the place of one that has not ended,
    // only the button that began it ends it, the mouse is captured for it, so that the surface
    // hears of the end wherever that is, and outside of the surface it is no click. Losing the
    // mouse and showing another graph end it without a trace.
    void SetSinglePress(bool on);
    [[nodiscard]] bool GetSinglePress() const { return single_press_; }
    // Whether the handlers of nodes and edges are told of the pointer (`HandleMouseHover`,
    // `HandleMouseLeave`), of at most one node or edge at a time: the node at a pixel, unless it is
    // the root; where that or an owner is, an edge goes first. What is not drawn is never told of.
    // It ends when the pointer leaves the surface, when a drag begins or is cancelled, with another
    // graph, and when the node or edge is hidden or removed (a removed one is told nothing). While
    // a button is down nothing new begins. The answers are obeyed without `OnChangeView` where a
    // repaint is enough. Up to eight nodes are repainted alone instead of two, each with all that
    // is in its place instead of over it, so that passing it leaves no trace.
    void SetTellHover(bool on);
    [[nodiscard]] bool GetTellHover() const { return tell_hover_; }

    // Emitted where one of the options has ended a press that is to be no click: a rubber rectangle
    // has come of it, it was lost, or it ends outside of the surface. The `OnButtonUp` that may
    // follow is of no press.
    signal_t<CVisualElement*> OnPressDropped;

    // The handler of `node` or `edge` is told when the pointer leaves the surface, once. For
    // applications that follow the pointer themselves.
    void NoteHover(const Node& node) { hover_nodes_.push_back(node); }
    void NoteHover(const Edge& edge) { hover_edges_.push_back(edge); }
    // The next paint paints it over alone, as after an answer of `HandlerRepaint`; see `RenewView`
    // for asking for one. It forgets these, and paints everything if there are three nodes or more.
    void NoteRepaint(const Node& node) { redraw_nodes_.push_back(node); }
    void NoteRepaint(const Edge& edge) { redraw_edges_.push_back(edge); }

protected:
    point<double> GetViewScale() const override;
    point<double> GetViewStart() const override;

private:
    // Of the view, in logical units.
    [[nodiscard]] size<double> view_extent() const;
    void emit_view();
    void handle_epilogue(int result);
    void note_result(const Node& node, int result);
    // The handler's answer to a release, joined with that to the click that it may be.
    int release(int x, int y, int keys, MouseButton button);
    // Whether the surface or one of its rubber rectangles has the mouse.
    [[nodiscard]] bool has_mouse() const;
    [[nodiscard]] bool is_in_view(const point<int>& pixel) const;
    void forget_press();
    void drop_press();
    void lose_press();
    // What is under the pointer takes the place of what was.
    void hover_at(point<int> pixel);
    void end_hover();
    void end_stale_hover();
    // The handler's answer. The hover has ended before it is asked.
    int leave_hovered();
    int enter(const Node& node, const Edge& edge);
    void obey_hover(int result);
    void restore_cursor();
    bool handle_tooltip(CTooltipEvent* event, bool track);
    // Asks the handler of a node or an edge.
    template <class Item>
    int ask(const Item& item, CTooltipEvent* event, bool track);
    void convert_tooltip(const CTooltipEvent& from, CGraphTooltipEvent& to) const;
    void convert_tooltip(const CGraphTooltipEvent& from, CTooltipEvent& to) const;
    void draw_requested(paintcore::IPainter* painter);
    void draw_around_requested(paintcore::IPainter* painter);
    void draw_over_requested(paintcore::IPainter* painter);
    [[nodiscard]] rectangle<double> whole_pixels_around(const rectangle<double>& r) const;
    void draw_area(paintcore::IPainter* painter, const rectangle<double>& area);
    void select_in(const point<double>& a, const point<double>& b);
    void select_touched_in(const point<double>& a, const point<double>& b, bool adds);
    // Whether a rubber rectangle of this extent is large enough to do anything.
    [[nodiscard]] bool is_gesture(const size<double>& extent) const;
    void zoom_to(const point<double>& a, const point<double>& b);

    // How far the range of an axis reaches beyond the root.
    struct Beyond {
        double before = 0.0;
        double after = 0.0;

        void Follow(double start, double root, double extent, double view);
    };

    // Slots of the rubber rectangles.
    void ShiftProcessing(DragTracker* rubber, point<double> start, point<double> cur,
                         point<double> prev);
    void EndShiftProcessing(DragTracker* rubber, point<double> start, point<double> end);
    void ChangeScrollModel(ZoomRect* rect, point<double> a, point<double> b);
    void FollowRubber(ZoomRect* rect, point<double> start, point<double> cur, point<double> prev);
    void HandleDragCancel(DragTracker* tracker);
    void HandleRubberCancel(ZoomRect* rect);

    double scale_ = 1.0;
    Beyond horz_beyond_;
    Beyond vert_beyond_;
    double horz_start_ = 0.0;
    double vert_start_ = 0.0;
    DragTracker* drag_tracker_ = nullptr;
    ZoomRect* zoom_rect_ = nullptr;
    int rubber_mode_ = RubberZoom;
    std::vector<Node> pressed_nodes_;  // since the last release; the first one counts
    point<double> grab_offset_;        // from the position of that node to the press
    graph_ptr2<Graph> graph_;
    std::vector<Node> hover_nodes_;
    std::vector<Node> redraw_nodes_;
    std::vector<Edge> hover_edges_;
    std::vector<Edge> redraw_edges_;
    MouseButton press_button_ = MouseButton::None;  // of the single press
    point<double> told_start_;                      // of the last `OnChangeView`
    Node hovered_node_;                             // either may be empty
    Edge hovered_edge_;
    bool pick_drawn_ = false;
    bool rubber_ends_press_ = false;
    bool select_touched_ = false;
    bool tell_rubber_scroll_ = false;
    bool single_press_ = false;
    bool tell_hover_ = false;
    bool move_nodes_ = false;
    bool cursor_pending_ = false;
    bool need_coord_system_;
};

}  // namespace nodeline
