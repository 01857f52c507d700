#include <backends/headless/headless_window.h>

#include <utility>

namespace nodeline::headless {

using paintcore::MouseButton;

HeadlessWindow::HeadlessWindow(const paintcore::size<int>& extent, paintcore::IPainter* target)
    : WindowBase(extent), painter_(target), has_target_(target != nullptr) {
    painter_.SetDevicePaintRect(
        {0.0, 0.0, static_cast<double>(extent.cx), static_cast<double>(extent.cy)});
}

HeadlessWindow::~HeadlessWindow() { Close(); }

void HeadlessWindow::Press(int x, int y, MouseButton button, int keys) {
    const viewkit::Watch<WindowBase> life(this);
    GetControl().ButtonDown(x, y, keys, button);
    if (life) PaintPending();
}

void HeadlessWindow::Release(int x, int y, MouseButton button, int keys) {
    const viewkit::Watch<WindowBase> life(this);
    GetControl().ButtonUp(x, y, keys, button);
    if (life) PaintPending();
}

void HeadlessWindow::Move(int x, int y, int keys) {
    const viewkit::Watch<WindowBase> life(this);
    GetControl().MouseMove(x, y, keys, MouseButton::None);
    if (life) PaintPending();
}

void HeadlessWindow::Click(int x, int y) {
    const viewkit::Watch<WindowBase> life(this);
    Press(x, y);
    if (life) Release(x, y);
}

void HeadlessWindow::Drag(const paintcore::point<int>& from, const paintcore::point<int>& to,
                          int steps) {
    const viewkit::Watch<WindowBase> life(this);
    Press(from.x, from.y);
    for (int i = 1; i <= steps && life; ++i) {
        Move(from.x + (to.x - from.x) * i / steps, from.y + (to.y - from.y) * i / steps);
    }
    if (life) Release(to.x, to.y);
}

void HeadlessWindow::SetPaintListener(PaintListener listener) { listener_ = std::move(listener); }

void HeadlessWindow::Resize(const paintcore::size<int>& extent) {
    painter_.SetDevicePaintRect(
        {0.0, 0.0, static_cast<double>(extent.cx), static_cast<double>(extent.cy)});
    WindowBase::Resize(extent);
}

bool HeadlessWindow::MovePixels(const paintcore::rectangle<int>& /*area*/, int /*dx*/, int /*dy*/) {
    return !has_target_;
}

// What was measured since the last paint is no part of the next.
void HeadlessWindow::PaintBegins() {
    if (listener_) painter_.TakeLines();
}

void HeadlessWindow::Painted() {
    ++paint_count_;
    if (listener_) listener_(painter_.TakeLines());
}

}  // namespace nodeline::headless
