#include <backends/qt/internal/window_image.h>
#include <backends/qt/qt_window.h>

#include <QPainter>
#include <QPointer>
#include <QTimer>
#include <cmath>
#include <utility>

// What the window draws and keeps; what it is told is in qt_window_events.cpp.

namespace nodeline::qt {

using paintcore::rectangle;
// `size` is a function of the widget.
using Extent = paintcore::size<int>;

namespace {

constexpr QSize kSizeHint{640, 480};

}  // namespace

// The size of a widget that nobody has sized yet.
QtWindow::QtWindow(QWidget* parent)
    : QWidget(parent), WindowBase({QWidget::width(), QWidget::height()}) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    make_image();
}

QtWindow::~QtWindow() { Close(); }

QSize QtWindow::sizeHint() const { return kSizeHint; }

QImage QtWindow::GetImage() const { return image_->GetImage().copy(); }

void QtWindow::make_image() {
    auto made = std::make_unique<WindowImage>(Extent{width(), height()}, devicePixelRatioF());
    if (image_ != nullptr) {
        // Until the next paint the user sees what there was.
        made->Take(*image_);
        retired_.push_back(std::move(image_));
    }
    image_ = std::move(made);
}

void QtWindow::follow_pixel_ratio() {
    if (devicePixelRatioF() == image_->GetRatio()) return;
    make_image();
    GetControl().InvalidateAll();
    paint_at_idle();
}

// A hidden widget hears of its size only when it is shown.
void QtWindow::Resize(const Extent& extent) {
    const QPointer<QtWindow> self(this);
    resize(extent.cx, extent.cy);
    if (self) take_extent();
}

void QtWindow::take_extent() {
    const rectangle<int> r = GetRect();
    if (r.right == width() && r.bottom == height()) return;
    make_image();
    paint_at_idle();
    const viewkit::Watch<WindowBase> watch(this);
    WindowBase::Resize({width(), height()});
    if (watch) GetControl().InvalidateAll();
}

paintcore::IPainter* QtWindow::GetPainter() { return &image_->GetPainter(); }

bool QtWindow::MovePixels(const rectangle<int>& area, int dx, int dy) {
    return image_->Move(area, dx, dy);
}

void QtWindow::RequestPaint(const rectangle<int>& /*area*/) { paint_at_idle(); }

void QtWindow::paint_at_idle() {
    if (paint_is_due_) return;
    paint_is_due_ = true;
    QTimer::singleShot(0, this, [this] {
        paint_is_due_ = false;
        // What is pending is painted when the widget is shown.
        if (isVisible()) PaintPending();
    });
}

void QtWindow::Painted() {
    ++paint_count_;
    retired_.clear();
    update();
}

void QtWindow::paintEvent(QPaintEvent* /*event*/) {
    follow_pixel_ratio();
    QPainter painter(this);
    painter.drawImage(QPointF(0.0, 0.0), image_->GetImage());
    QtPainter overlay(&painter);
    overlay.SetDevicePaintRect(
        {0.0, 0.0, static_cast<double>(width()), static_cast<double>(height())});
    GetControl().DrawOverlays(&overlay);
}

void QtWindow::resizeEvent(QResizeEvent* /*event*/) { take_extent(); }

void QtWindow::showEvent(QShowEvent* /*event*/) { paint_at_idle(); }

}  // namespace nodeline::qt
