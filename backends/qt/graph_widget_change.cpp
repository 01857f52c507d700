#include <backends/qt/graph_widget.h>
#include <backends/qt/internal/glide.h>
#include <nodeline/viewer/coords_keeper.h>

#include <QPointer>
#include <QTimerEvent>
#include <algorithm>
#include <utility>

// Changes of the graph, and how their results glide into place.

namespace nodeline::qt {

namespace {

constexpr int kFrameTime = 16;  // in milliseconds

}  // namespace

void GraphWidget::change(const std::function<void()>& edit, const Node& kept) {
    finishGlide();
    if (viewer() == nullptr) return;
    // A handle of its own: the layout may run code that destroys the caller's.
    const Node node(kept.store(), kept.record());
    const QPointer<GraphWidget> self(this);
    std::unique_ptr<Places> before = places_before();
    CGraphViewer* const shown = viewer();
    if (node && !node.IsDummy()) {
        const CoordsKeeper keeper(shown, node, shown->GetLife());
        edit();
    } else {
        edit();
        if (self && viewer() != nullptr) viewer()->RecalculateLayout();
    }
    if (!self) return;
    if (viewer() != nullptr) viewer()->RenewView(true);
    if (self) tell_change(node, std::move(before));
}

void GraphWidget::tell_change(const Node& at, std::unique_ptr<Places> before) {
    const QPointer<GraphWidget> self(this);
    Q_EMIT graphChanged(at);
    if (self && viewer() != nullptr) start_glide(std::move(before));
}

// ---------------------------------------------------------------------------------------------
// Glides

void GraphWidget::setGlideTime(int milliseconds) {
    finishGlide();
    glide_time_ = std::max(0, milliseconds);
}

bool GraphWidget::isGliding() const { return glide_ != nullptr; }

std::unique_ptr<Places> GraphWidget::places_before() {
    if (glide_time_ == 0 || viewer() == nullptr || !isVisible()) return nullptr;
    return std::make_unique<Places>(PlacesIn(*viewer()));
}

void GraphWidget::start_glide(std::unique_ptr<Places> before) {
    if (before == nullptr) return;
    auto glide = std::make_unique<Glide>(Glide::From(*before, *viewer()));
    if (glide->IsEmpty()) return;
    glide_ = std::move(glide);
    glide_->Show(0.0);
    glide_clock_.start();
    glide_timer_.start(kFrameTime, this);
    viewer()->RenewView(true);
}

void GraphWidget::timerEvent(QTimerEvent* event) {
    if (event->timerId() != glide_timer_.timerId()) return QtWindow::timerEvent(event);
    const qint64 passed = glide_clock_.elapsed();
    if (glide_ == nullptr || passed >= glide_time_) return finishGlide();
    glide_->Show(static_cast<double>(passed) / glide_time_);
    if (viewer() != nullptr) viewer()->RenewView(true);
}

void GraphWidget::finishGlide() {
    glide_timer_.stop();
    const std::unique_ptr<Glide> glide = std::exchange(glide_, nullptr);
    if (glide == nullptr) return;
    glide->Show(1.0);
    if (viewer() != nullptr) viewer()->RenewView(true);
}

}  // namespace nodeline::qt
