// Control: the dispatcher between a window and its tree of elements.
//
// A backend calls it with what the user does, in pixels of the window, and lets it paint. It
// decides which element is meant, keeps capture, focus and hover, and knows what is pending.
#pragma once

#include <corvex/export.h>
#include <viewkit/element.h>
#include <viewkit/window.h>

#include <cstdint>
#include <memory>

namespace viewkit {

// Hands on what happens in one window to the elements that it is for.
class NODELINE_API CControl {
public:
    // `window` is not owned and outlives the control. The root covers the window.
    explicit CControl(IWindow* window);
    ~CControl();
    CControl(const CControl&) = delete;
    CControl& operator=(const CControl&) = delete;

    // Null while the control is being destroyed.
    [[nodiscard]] IWindow* GetWindow() const { return window_; }
    // Owned by the control.
    [[nodiscard]] CVisualElement* GetRoot() const { return root_.get(); }

    // What the user does. The answers tell whether an element has used the event up. The control,
    // its window and any element may be destroyed from within.
    bool ButtonDown(int x, int y, int keys, MouseButton button);
    bool ButtonUp(int x, int y, int keys, MouseButton button);
    bool DoubleClick(int x, int y, int keys, MouseButton button);
    bool MouseMove(int x, int y, int keys, MouseButton button);
    // The pointer has left the window.
    void MouseLeave();
    // Wheel and menu go to the element at the pixel, keys and characters to the one with the focus.
    bool MouseWheel(int x, int y, int keys, double notches, bool horizontal);
    bool ContextMenu(int x, int y);
    bool KeyDown(int keys, int code);
    bool KeyUp(int keys, int code);
    bool Char(char c);
    // `event->pos` is in pixels of the window; on return it and the rectangles are so again.
    bool Tooltip(CTooltipEvent* event);
    bool TooltipTrack(CTooltipEvent* event);
    // Whether what is being dragged may be dropped at the pixel; then, that it was dropped there.
    bool DragOver(int x, int y);
    bool DragDrop(int x, int y);
    // The window has lost the focus.
    void LoseFocus();
    // The window system has taken the pointer away.
    void LoseCapture();
    // The repeat timer of the window has struck.
    void Timer();
    // The window has another size, in pixels.
    void Resize(const size<int>& extent);

    // Who holds the mouse, and who has the focus; null for nobody.
    [[nodiscard]] CVisualElement* GetCaptured() const { return captured_; }
    [[nodiscard]] CVisualElement* GetFocused() const { return focused_; }
    // The deepest visible element at a pixel of the window; null outside of the window.
    [[nodiscard]] CVisualElement* GetElementAt(int x, int y) const;

    // Whether anything has asked for a paint since the last one.
    [[nodiscard]] bool IsPaintPending() const { return pending_; }
    // Whether `Paint` is running.
    [[nodiscard]] bool IsPainting() const { return painting_; }
    // Brings the tree up to date: opens a bracket on `painter`, has every visible element draw
    // what is not valid any more, parents before children, and closes the bracket. Pixels of the
    // painter are those of the window. False if it has not come to its end: within a paint it only
    // asks for another one, and the control may be destroyed from within.
    bool Paint(IPainter* painter);
    // Draws what is shown over the picture, in a bracket of its own.
    void DrawOverlays(IPainter* painter);
    // Draws everything, overlays as well, as it stands after the last paint, and leaves the state
    // of the window alone.
    void DrawPicture(IPainter* painter);
    // The picture of the window has been lost.
    void InvalidateAll();

    // For a `Watch`.
    [[nodiscard]] std::weak_ptr<const void> GetLife() const { return life_.Get(); }

private:
    friend class CVisualElement;

    using Draw = void (CVisualElement::*)(IPainter*);

    void capture(CVisualElement* element);
    void release(const CVisualElement* element);
    void focus(CVisualElement* element);
    // Whatever lies in `element` is leaving the tree.
    void forget(const CVisualElement* element);
    void request_paint(CVisualElement* element);
    void enter(CVisualElement* element);
    // Hands an event to the element under a pixel of the window.
    template <class Handle>
    bool aim(int x, int y, Handle handle);
    // Hands an event to an element and, until one uses it up, to those that own it, each with the
    // pixel (`x`, `y`) of the window in its own pixels.
    template <class Handle>
    bool offer(CVisualElement* first, int x, int y, Handle handle);
    void prepare(CVisualElement* element);
    void paint(CVisualElement* element, IPainter* painter, bool repaint);
    void draw_all(CVisualElement* element, IPainter* painter, Draw draw);
    bool ask_tooltip(CTooltipEvent* event, bool (CVisualElement::*ask)(CTooltipEvent*));

    IWindow* window_;
    CVisualElement* captured_ = nullptr;
    CVisualElement* focused_ = nullptr;
    CVisualElement* hovered_ = nullptr;
    MouseButton pressed_ = MouseButton::None;
    bool pending_ = true;
    bool painting_ = false;
    std::uint64_t paint_number_ = 0;
    LifeMark life_;
    std::unique_ptr<CVisualElement> root_;  // dies first
};

}  // namespace viewkit
