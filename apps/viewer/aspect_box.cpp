#include <apps/viewer/aspect_box.h>

#include <algorithm>
#include <cmath>

namespace nodeline::app {

namespace {

constexpr double kWidest = 4.0;
constexpr double kTallest = 0.4;

}  // namespace

AspectBox::AspectBox(QWidget* child, QWidget* parent) : QWidget(parent), child_(child) {
    child_->setParent(this);
}

void AspectBox::setAspect(double aspect) {
    if (!std::isfinite(aspect) || aspect <= 0.0) return;
    aspect_ = std::clamp(aspect, kTallest, kWidest);
    arrange();
}

void AspectBox::resizeEvent(QResizeEvent* /*event*/) { arrange(); }

void AspectBox::arrange() {
    const int width = std::min(QWidget::width(), static_cast<int>(height() * aspect_));
    const int height = std::min(QWidget::height(), static_cast<int>(QWidget::width() / aspect_));
    child_->setGeometry((QWidget::width() - width) / 2, 0, width, height);
}

}  // namespace nodeline::app
