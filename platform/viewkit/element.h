// Element: a rectangle of a window that draws itself and answers the pointer and the keyboard.
//
//   class Clock : public CVisualElement {
//   public:
//       explicit Clock(CVisualElement* parent);
//       void DrawContent(IPainter* painter) override;
//   };
//
//   Clock::Clock(CVisualElement* parent) : CVisualElement(parent, {80, 20}, Alignment::Top) {}
//
//   new Clock(window.GetRoot());  // owned by its parent
//
// Elements form a tree. A parent owns its children, places them by their alignment and deletes them
// with itself. All of it happens on the thread of the window.
#pragma once

#include <corvex/export.h>
#include <nodeline/functor/signal.h>
#include <paintcore/geometry.h>
#include <paintcore/painter.h>
#include <paintcore/tooltip.h>
#include <viewkit/watch.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace viewkit {

using corvex::_internal::signal_t;
using corvex::_internal::subscriber_base_t;
using paintcore::CoordInfo;
using paintcore::CTooltipEvent;
using paintcore::IPainter;
using paintcore::MouseButton;
using paintcore::point;
using paintcore::rectangle;
using paintcore::size;

class CControl;

// How a parent places a child.
enum class Alignment {
    // Where it was put.
    None = 0,
    // Docked: a strip of the child's own height or width along that side, of what the children
    // before it have left.
    Top = 1,
    Bottom = 2,
    Left = 3,
    Right = 4,
    // All that the docked children have left.
    Client = 5
};

// What an element wants to be brought up to date.
enum class UpdateType {
    // What depends on its state: pixels that scrolling uncovered, requested repaints, scroll bars.
    Content = 2
};

// The base of all that a window shows. Pixels of an event are those of the element, from
// (0, 0) at its top left corner; they may lie outside while the element has captured the mouse.
// `keys` is a word of `paintcore::KeyState` bits.
//
// An element may be destroyed from within any of its events, and so may its parent or its window.
// Whoever calls out and goes on afterwards keeps a `Watch`.
class NODELINE_API CVisualElement : public subscriber_base_t {
public:
    // An element of the given size at (0, 0), before its parent places it. The parent, which may be
    // null, takes ownership.
    CVisualElement(CVisualElement* parent, const size<int>& initial, Alignment alignment);
    // Deletes the children.
    ~CVisualElement() override;
    CVisualElement(const CVisualElement&) = delete;
    CVisualElement& operator=(const CVisualElement&) = delete;

    // Null for the root of a window and for an element outside of the tree.
    [[nodiscard]] CVisualElement* GetParent() const { return parent_; }
    // In order of drawing, the topmost last.
    [[nodiscard]] const std::vector<CVisualElement*>& GetChildren() const { return children_; }
    // Moves the element into another parent, or out of the tree with null; the caller owns it then.
    // Does nothing if `parent` is the element itself or lies in it.
    void SetParent(CVisualElement* parent);
    // The dispatcher of the window that the element is in; null outside of windows.
    [[nodiscard]] CControl* GetControl() const;

    // Setting it has the parent place its children anew.
    [[nodiscard]] Alignment GetAlignment() const { return alignment_; }
    void SetAlignment(Alignment alignment);
    // The outer rectangle, in pixels of the parent.
    [[nodiscard]] const rectangle<int>& GetBounds() const { return bounds_; }
    // The drawing area, in pixels of its own, from (0, 0).
    [[nodiscard]] rectangle<int> GetContentRect() const;
    // Moves and sizes the element and places its children; with `repaint` it is invalidated.
    virtual void SetPos(const rectangle<int>& bounds, bool repaint);
    // A hidden element, and what it owns, is not drawn and takes no part in events and placing.
    void SetVisible(bool visible);
    [[nodiscard]] bool IsVisible() const { return visible_; }
    // Where the top left corner stands in the window.
    [[nodiscard]] point<int> GetWindowOrigin() const;
    // Whether the element is there for capture alone, and never under the pointer.
    [[nodiscard]] bool IsCaptureOnly() const { return capture_only_; }
    // Whether an element that is drawn later, one of its own or another, shares pixels with it.
    [[nodiscard]] bool IsCovered() const;
    // Whether a part of it lies outside of an element that owns it, and so has no pixels.
    [[nodiscard]] bool IsCutOff() const;
    // Whether the element or one that owns it is `other`.
    [[nodiscard]] bool IsIn(const CVisualElement* other) const;

    // The element holds no valid pixels any more.
    void Invalidate();
    // Asks the window to bring `element` up to date at the next idle.
    void OnChange(CVisualElement* element, UpdateType type);
    // Draws the element, without its children. The painter is in a bracket, at the standard
    // settings, with the pixels of the element as its units.
    virtual void DrawContent(IPainter* painter);
    // Draws what is only shown over the picture and never part of it, such as an outline that
    // follows the pointer. Nothing here.
    virtual void DrawOverlay(IPainter* painter);
    // Draws the element for a picture in a file: all of it, and without bringing anything up to
    // date first. Calls `DrawContent` here.
    virtual void DrawPicture(IPainter* painter);
    // The moment to place children by what has changed: before each paint, and after it, since what
    // an element shows may have been laid out in it. Nothing here.
    virtual void PreparePaint() {}

    // Makes the painter map the logical coordinates of the element. They are its pixels here.
    virtual void SetCoordSystem(IPainter* painter);
    // Pixels to logical coordinates and back, in place; nothing is rounded.
    virtual void DP2LP(point<double>* p);
    virtual void LP2DP(point<double>* p);
    // What a paint covers, in logical coordinates; with a null painter in pixels.
    virtual rectangle<double> GetDrawRect(IPainter* painter);
    // The part of it that still holds valid pixels; all zero if there is none.
    virtual rectangle<double> GetDrawValidRect(IPainter* painter);

    // Until `ReleaseMouse`, moves and releases go to this element, wherever the pointer is. Another
    // element that captures the mouse takes it away.
    void CaptureMouse();
    void ReleaseMouse();
    [[nodiscard]] bool HasCapture() const;
    // Keys go to this element.
    void SetFocus();
    [[nodiscard]] bool HasFocus() const;

    // Whether the event was used up. One that answers false may be offered to others: a move or a
    // release to the parent, a press to the slots of `OnButtonDown`.
    virtual bool HandleMouseMove(int x, int y, int keys, MouseButton button);
    virtual bool HandleButtonDown(int x, int y, int keys, MouseButton button);
    virtual bool HandleButtonUp(int x, int y, int keys, MouseButton button);
    virtual bool HandleDoubleClick(int x, int y, int keys, MouseButton button);
    // The pointer has entered, or left.
    virtual void HandleMouseHover(CVisualElement* element);
    virtual void HandleMouseLeave(CVisualElement* element);
    // `notches` are clicks of the wheel, above 0 away from the user, or to the right; fractions
    // come from touch pads.
    virtual bool HandleMouseWheel(int x, int y, int keys, double notches, bool horizontal);
    // The second argument is the code of the key: 37 left, 38 up, 39 right, 40 down.
    virtual bool HandleKeyDown(int keys, int code);
    virtual bool HandleKeyUp(int keys, int code);
    // A printable character of ASCII was typed.
    virtual bool HandleChar(char c);
    // Fill in the tooltip for where the pointer rests, and anew while one is shown.
    virtual bool HandleOnTooltip(CTooltipEvent* event);
    virtual bool HandleOnTooltipTrack(CTooltipEvent* event);
    // A context menu is wanted.
    virtual bool HandleContextMenu(int x, int y);
    // Whether what is being dragged may be dropped at the pixel; then, that it was dropped there.
    virtual bool HandleDragOver(int x, int y);
    virtual bool HandleDragDrop(int x, int y);
    // The element has got the focus, or lost it.
    virtual void HandleGetFocus();
    virtual void HandleLostFocus();
    // Another element, or another program, has taken the mouse.
    virtual void HandleCaptureLost();
    // The repeat timer of the window has struck while this element holds the mouse.
    virtual void HandleTimer();

    // For a `Watch`.
    [[nodiscard]] std::weak_ptr<const void> GetLife() const { return life_.Get(); }

    // Emitted by the window after a press that was not used up.
    signal_t<CVisualElement*, int, int, int, MouseButton> OnButtonDown;
    // Emitted by `HandleButtonUp` and the handlers below, as far as a class does not replace them.
    signal_t<CVisualElement*, int, int, int, MouseButton> OnButtonUp;
    signal_t<CVisualElement*, int, int, int, MouseButton> OnDoubleClick;
    signal_t<CVisualElement*, int, int> OnContextMenu;
    signal_t<CVisualElement*> OnMouseLeave;
    signal_t<CVisualElement*, CTooltipEvent*> OnTooltip;
    signal_t<CVisualElement*, CTooltipEvent*> OnTooltipTrack;
    // Emitted by `DrawContent`.
    signal_t<CVisualElement*, IPainter*> OnDraw;

protected:
    // The parent has changed; `old` may be null. Nothing here.
    virtual void ChangeParent(CVisualElement* old);
    // Places the children.
    virtual void AlignChildren();
    // Draws a child before its siblings from now on.
    void PutToBack(CVisualElement* child);
    // Makes the element one that is never under the pointer; see `IsCaptureOnly`.
    void SetCaptureOnly() { capture_only_ = true; }
    // Whether all pixels were right when this paint began and nothing has been invalidated since.
    [[nodiscard]] bool HasValidPixels() const { return valid_; }

    // Bracket `DrawContent` in a paint of the window.
    virtual void BeginDraw();
    virtual void EndDraw();

private:
    friend class CControl;

    void detach();
    // In pixels of the window.
    [[nodiscard]] rectangle<int> window_area() const;

    CVisualElement* parent_ = nullptr;
    std::vector<CVisualElement*> children_;
    CControl* control_ = nullptr;  // of a root alone
    Alignment alignment_;
    rectangle<int> bounds_;
    bool visible_ = true;
    bool capture_only_ = false;
    bool valid_ = false;
    bool valid_was_asked_ = false;  // in the paint under way
    bool invalid_since_asked_ = false;
    std::uint64_t painted_in_ = 0;  // the number of the last paint that has drawn this element
    LifeMark life_;
};

}  // namespace viewkit
