#include <nodeline/viewer/content.h>

// The single press: how it is kept, and how it ends without a release.

namespace nodeline {
namespace {

using Watch = viewkit::Watch<CVisualElement>;

}  // namespace

void CContent::SetSinglePress(bool on) {
    single_press_ = on;
    drag_tracker_->SetOwnButtonEnds(on);
    zoom_rect_->SetOwnButtonEnds(on);
}

bool CContent::has_mouse() const {
    return HasCapture() || drag_tracker_->HasCapture() || zoom_rect_->HasCapture();
}

void CContent::forget_press() {
    pressed_nodes_.clear();
    press_button_ = MouseButton::None;
    drag_tracker_->Reset();
    zoom_rect_->Reset();
    ReleaseMouse();
}

void CContent::drop_press() {
    const bool was_pressed = press_button_ != MouseButton::None;
    forget_press();
    if (was_pressed) OnPressDropped(this);
}

// One of the rubber rectangles may have taken the mouse, and goes on with the press.
void CContent::lose_press() {
    if (!single_press_ || has_mouse()) return;
    const Watch watch(this);
    drop_press();
    // This lets the ports go that the press has held down.
    if (watch) end_hover();
}

void CContent::HandleCaptureLost() { lose_press(); }

void CContent::HandleDragCancel(DragTracker* /*tracker*/) { lose_press(); }

void CContent::HandleRubberCancel(ZoomRect* /*rect*/) { lose_press(); }

}  // namespace nodeline
