// Rubber rectangles: children of an element that turn a press, moves and a release on it into
// signals with logical coordinates.
//
//   auto* tracker = new viewkit::CRubberRect<viewkit::DummyDrawer>(surface);
//   tracker->Enable(true);
//   tracker->OnShift.connect(surface, &Surface::Shift);
//
// They live in the namespace of the element toolkit, whose surfaces they serve.
#pragma once

#include <corvex/export.h>
#include <nodeline/viewer/scroll_model.h>
#include <viewkit/central_part.h>
#include <viewkit/focus_rect_drawer.h>

#include <memory>

namespace viewkit {

// A drag tracker: a press with the left button on the parent captures the mouse until the release.
//
// It shows nothing itself; what the drag does is up to the slots. A drag ends without a signal when
// the mouse is lost, when the tracker changes its parent, and when somebody calls `Reset`.
template <class D>
class NODELINE_API CRubberRect : public CVisualElement, public D {
public:
    // A child of `parent`, which may be null and owns it.
    explicit CRubberRect(CVisualElement* parent);

    // The press point, twice.
    signal_t<CRubberRect<D>*, point<double>, point<double>> OnStart;
    // At each move: the press point, the pointer, and the pointer at the move before.
    signal_t<CRubberRect<D>*, point<double>, point<double>, point<double>> OnShift;
    // At a release after a move: the press point and the pointer.
    signal_t<CRubberRect<D>*, point<double>, point<double>> OnEnd;
    // Instead of `OnEnd`, where the mouse is lost after a press.
    signal_t<CRubberRect<D>*> OnCancel;

    // Off at first. A running drag is left alone.
    void Enable(bool on) { enabled_ = on; }
    [[nodiscard]] bool IsEnabled() const { return enabled_; }
    // Whether a drag is running, and whether the pointer has moved in it.
    [[nodiscard]] bool IsPressed() const { return pressed_; }
    [[nodiscard]] bool IsActive() const { return active_; }
    // Restricts the axes; null stands for no restriction.
    void SetPosConverter(std::unique_ptr<nodeline::IPosConverter> converter);
    // Whether the pointer is held in the content rectangle of the parent, as it is at first.
    void SetClampToParent(bool clamp) { clamp_to_parent_ = clamp; }
    // Whether only the left button, which begins a drag, ends it. Off at first: any release does.
    void SetOwnButtonEnds(bool on) { own_button_ends_ = on; }
    [[nodiscard]] bool GetOwnButtonEnds() const { return own_button_ends_; }
    // Ends a drag without a signal: gives the mouse back, nothing is pressed.
    void Reset();

    void DrawContent(IPainter* painter) override;
    bool HandleMouseMove(int x, int y, int keys, MouseButton button) override;
    bool HandleButtonUp(int x, int y, int keys, MouseButton button) override;
    void HandleCaptureLost() override;

    // The slot of `OnButtonDown`, that of the parent and its own.
    void StartDragging(CVisualElement* element, int x, int y, int keys, MouseButton button);

protected:
    void ChangeParent(CVisualElement* old) override;

private:
    void listen_to(CVisualElement* parent);

    bool enabled_ = false;
    bool active_ = false;
    bool pressed_ = false;
    point<int> start_pos_;
    point<int> cur_pos_;
    point<int> prev_pos_;
    std::unique_ptr<nodeline::IPosConverter> pos_converter_;
    bool clamp_to_parent_ = true;
    bool own_button_ends_ = false;
};

// A visible rectangle, which scrolls the models that its parent has handed on when the pointer
// leaves the parent. Its corners are kept in logical coordinates, so it grows while it scrolls.
//
// `D` keeps the outline: it has the operations of `FocusRectDrawer`.
template <class D>
class NODELINE_API CRubberRectEx : public CCentralPart, public D {
public:
    // As above.
    explicit CRubberRectEx(CVisualElement* parent);

    // The press point, twice.
    signal_t<CRubberRectEx<D>*, point<double>, point<double>> OnStart;
    // At each move: the start corner as it was last painted, the pointer, and the pointer at the
    // move before.
    signal_t<CRubberRectEx<D>*, point<double>, point<double>, point<double>> OnShift;
    // At each release, also without a move: both corners as they were last painted.
    signal_t<CRubberRectEx<D>*, point<double>, point<double>> OnEnd;
    // As above.
    signal_t<CRubberRectEx<D>*> OnCancel;

    // As above.
    void Enable(bool on) { enabled_ = on; }
    [[nodiscard]] bool IsEnabled() const { return enabled_; }
    [[nodiscard]] bool IsPressed() const { return pressed_; }
    [[nodiscard]] bool IsActive() const { return active_; }
    void SetPosConverter(std::unique_ptr<nodeline::IPosConverter> converter);
    void SetOwnButtonEnds(bool on) { own_button_ends_ = on; }
    [[nodiscard]] bool GetOwnButtonEnds() const { return own_button_ends_; }
    void Reset();
    // Whether the pointer may reach a logical x of 0 or below. Off at first: it is held right of
    // it. There is no such limit in y.
    void SetUnbounded(bool on) { unbounded_ = on; }
    [[nodiscard]] bool GetUnbounded() const { return unbounded_; }
    // The corners of the last press and move, whether they have been painted or not, in logical
    // coordinates.
    [[nodiscard]] point<double> GetStartCorner() const { return cur_start_; }
    [[nodiscard]] point<double> GetEndCorner() const { return cur_end_; }
    // Whether the outline may be kept from one paint to the next. Either way, the outline counts as
    // gone after the call, so there is nothing to take away at the next paint.
    void SetOutlineOn(bool on);
    // The key state of the last release; 0 before.
    [[nodiscard]] int GetReleaseKeys() const { return release_keys_; }

    void DrawContent(IPainter* painter) override;
    void DrawOverlay(IPainter* painter) override;
    bool HandleMouseMove(int x, int y, int keys, MouseButton button) override;
    bool HandleButtonUp(int x, int y, int keys, MouseButton button) override;
    void HandleCaptureLost() override;

    // The slots of `OnButtonDown`, that of the parent and its own, and of the parent's `OnDraw`.
    void StartDragging(CVisualElement* element, int x, int y, int keys, MouseButton button);
    void BeforeDrawProcess(CVisualElement* element, IPainter* painter);

protected:
    void ChangeParent(CVisualElement* old) override;

private:
    void listen_to(CVisualElement* parent);
    // The pixel `x` of the pointer, held within the limits in logical x.
    [[nodiscard]] int limited_x(int x, int y) const;
    // Moves the start corner along with the edges of the parent, on a restricted axis.
    void follow_edges();
    // Scrolls until `pointer` lies in the parent, as far as the models go; holds it there on an
    // axis without a model. False if a model has taken this rectangle out of its parent.
    bool scroll(point<int>* pointer);

    bool enabled_ = false;
    bool active_ = false;
    bool pressed_ = false;
    bool erased_ = true;
    point<double> drawn_start_;
    point<double> cur_start_;
    point<double> drawn_end_;
    point<double> cur_end_;
    point<double> prev_end_;
    std::unique_ptr<nodeline::IPosConverter> pos_converter_;
    bool outline_on_ = true;
    bool scrolled_ = false;
    point<int> start_pix_;
    int release_keys_ = 0;
    bool own_button_ends_ = false;
    bool unbounded_ = false;
};

extern template class CRubberRect<DummyDrawer>;
extern template class CRubberRectEx<FocusRectDrawer>;

}  // namespace viewkit
