#include <viewkit/window_base.h>

namespace viewkit {

WindowBase::WindowBase(const size<int>& extent) : extent_(extent) {
    control_ = std::make_unique<CControl>(this);
}

WindowBase::~WindowBase() { Close(); }

void WindowBase::Close() { control_.reset(); }

bool WindowBase::PaintPending() {
    if (!control_ || !control_->IsPaintPending()) return false;
    paint();
    return true;
}

void WindowBase::paint() {
    if (!control_->IsPainting()) PaintBegins();
    if (control_->Paint(GetPainter())) Painted();
}

void WindowBase::PaintBegins() {}

void WindowBase::Painted() {}

void WindowBase::Resize(const size<int>& extent) {
    extent_ = extent;
    control_->Resize(extent);
}

rectangle<int> WindowBase::GetRect() const { return {0, 0, extent_.cx, extent_.cy}; }

void WindowBase::Repaint(const rectangle<int>& /*area*/) {
    if (control_) paint();
}

void WindowBase::RequestPaint(const rectangle<int>& /*area*/) {}

void WindowBase::SetCursor(Cursor cursor) {
    former_cursor_ = cursor_;
    cursor_ = cursor;
}

void WindowBase::RestoreCursor() { cursor_ = former_cursor_; }

void WindowBase::SetRepeatTimer(int milliseconds) { timer_ = milliseconds; }

}  // namespace viewkit
