#include <backends/qt/graph_widget.h>
#include <backends/qt/internal/glide.h>
#include <backends/qt/qt_painter.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/layout/inc_layout.h>
#include <nodeline/layout/stable_layout.h>

#include <QApplication>
#include <QMouseEvent>
#include <QPointer>
#include <algorithm>
#include <optional>
#include <utility>

namespace nodeline::qt {

namespace {

constexpr nodeline::size<int> kInitialSize{100, 100};
// In pixels; a hand is not quite still while it clicks.
constexpr int kLeastDrag = 4;

// Measures with a painter of its own, for it may outlive the widget with its graph.
class WidgetNodeHandler : public PortNodeHandler {
public:
    WidgetNodeHandler() { SetIPainter(&painter_); }

private:
    QtPainter painter_;
};

std::vector<int> IdsOf(const std::vector<Node>& nodes) {
    std::vector<int> ids;
    ids.reserve(nodes.size());
    for (const Node& node : nodes) ids.push_back(node.GetID());
    std::sort(ids.begin(), ids.end());
    return ids;
}

int Distance(const QPoint& a, const QPoint& b) { return (a - b).manhattanLength(); }

void SetOptions(CContent& content) {
    content.SetPickDrawn(true);
    content.SetRubberEndsPress(true);
    content.SetSelectTouched(true);
    content.SetTellRubberScroll(true);
    content.SetSinglePress(true);
    content.SetTellHover(true);
    content.GetZoomRect()->SetUnbounded(true);
}

}  // namespace

void GiveLookAndLayout(const graph_ptr2<Graph>& graph) {
    if (graph->GetRoot().GetLayout().get() == GetDefaultLayout().get()) {
        graph->SetDefaultLayout(checked_upcast<ILayout>(
            StableLayout::Create({.caption_room = StableLayout::Options::kCaptionRoom})));
    }
    if (graph->GetDefaultNodeHandler().get() == GetDefaultNodeHandler().get()) {
        graph->SetDefaultNodeHandler(graph_ptr2<INodeHandler>(new WidgetNodeHandler, true));
    }
}

// Hears what the viewer does. A widget cannot be a subscriber: it would hear until its last part is
// gone.
class GraphWidget::Listener : public subscriber_base_t {
public:
    Listener(GraphWidget* widget, CGraphViewer* viewer) : widget_(widget) {
        viewer->OnChangeView.connect(this, &Listener::HandleOnChangeView);
        CContent* const content = viewer->GetContent();
        content->OnButtonDown.connect(this, &Listener::HandleOnButtonDown);
        content->OnButtonUp.connect(this, &Listener::HandleOnButtonUp);
        content->OnDoubleClick.connect(this, &Listener::HandleOnDoubleClick);
        content->OnPressDropped.connect(this, &Listener::HandleOnPressDropped);
    }

    // What has been clicked, or dragged somewhere, since the last call.
    [[nodiscard]] Node TakeClicked() { return std::exchange(clicked_, {}); }
    [[nodiscard]] Node TakeDoubleClicked() { return std::exchange(double_clicked_, {}); }

    struct Move {
        Node node;
        point<double> from;
    };
    [[nodiscard]] Move TakeMoved() { return std::exchange(moved_, {}); }

    // The node at a pixel of the surface; empty where there is only the root.
    [[nodiscard]] Node NodeAt(int x, int y) const {
        const CGraphViewer* const viewer = widget_->viewer();
        if (viewer == nullptr) return {};
        const Node node = viewer->GetContent()->GetNodeAt({x, y});
        return IsRoot(node) ? Node() : node;
    }

private:
    struct Press {
        Node node;
        QPoint at;
        point<double> position;  // of the node
    };

    void note_move(const Press& press) {
        if (press.node.GetPosition() != press.position) moved_ = {press.node, press.position};
    }

    void HandleOnChangeView(point<double> /*a*/, point<double> /*b*/) {
        Q_EMIT widget_->viewChanged();
    }

    void HandleOnButtonDown(CVisualElement* /*element*/, int x, int y, int /*keys*/,
                            MouseButton button) {
        press_.reset();
        if (button != MouseButton::Left) return;
        const Node node = NodeAt(x, y);
        press_ = Press{node, QPoint(x, y), node ? node.GetPosition() : point<double>{}};
    }

    void HandleOnButtonUp(CVisualElement* /*element*/, int x, int y, int /*keys*/,
                          MouseButton button) {
        if (button != MouseButton::Left) return;
        const std::optional<Press> press = std::exchange(press_, std::nullopt);
        if (!press || !press->node) return;
        if (Distance({x, y}, press->at) >= kLeastDrag) return note_move(*press);
        const Node node = NodeAt(x, y);
        if (node && node == press->node) clicked_ = node;
    }

    // A node may have been dragged out of the view.
    void HandleOnPressDropped(CVisualElement* /*element*/) {
        const std::optional<Press> press = std::exchange(press_, std::nullopt);
        if (press && press->node) note_move(*press);
    }

    void HandleOnDoubleClick(CVisualElement* /*element*/, int x, int y, int /*keys*/,
                             MouseButton button) {
        if (button == MouseButton::Left) double_clicked_ = NodeAt(x, y);
    }

    GraphWidget* widget_;
    std::optional<Press> press_;
    Node clicked_;
    Move moved_;
    Node double_clicked_;
};

GraphWidget::GraphWidget(QWidget* parent) : GraphWidget(graph_ptr2<Graph>(), parent) {}

GraphWidget::GraphWidget(graph_ptr2<Graph> graph, QWidget* parent) : QtWindow(parent) {
    auto* made = new CGraphViewer(GetRoot(), kInitialSize, viewkit::Alignment::Client);
    viewer_ = viewkit::Watch<CGraphViewer>(made);
    SetOptions(*made->GetContent());
    listener_ = std::make_unique<Listener>(this, made);
    setGraph(graph);
}

GraphWidget::~GraphWidget() {
    listener_.reset();
    Close();
}

void GraphWidget::setGraph(graph_ptr2<Graph> graph) { take_graph(graph, false); }

void GraphWidget::showGraph(graph_ptr2<Graph> graph) { take_graph(graph, true); }

void GraphWidget::take_graph(graph_ptr2<Graph> graph, bool is_laid_out) {
    finishGlide();
    if (viewer() == nullptr) return;
    if (!graph) graph = graph_ptr2<Graph>(new Graph(), true);
    const QPointer<GraphWidget> self(this);
    if (is_laid_out) {
        viewer()->ShowGraph(graph);
    } else {
        GiveLookAndLayout(graph);
        viewer()->SetGraph(graph);
    }
    if (self) selected_ids_ = IdsOf(selectedNodes());
}

std::vector<Node> GraphWidget::selectedNodes() const {
    if (viewer() == nullptr) return {};
    const graph_ptr2<Graph> graph = viewer()->GetGraph();
    const Node root = graph->GetRoot();
    const std::uint64_t revision = graph->GetRevision();
    if (selected_store_.get() == root.store().get() && selected_revision_ == revision) {
        return selected_;
    }
    selected_.clear();
    selected_store_ = root.store();
    selected_revision_ = revision;
    const auto collect = [this](const Node& node) {
        if (IsFlagSet(node, NodeSelected)) selected_.push_back(node);
    };
    ForEachNodeIn(root, collect, false, false);
    return selected_;
}

bool GraphWidget::renew_selection() {
    const std::vector<int> selected = IdsOf(selectedNodes());
    return selected != std::exchange(selected_ids_, selected);
}

void GraphWidget::noteSelection() {
    if (viewer() == nullptr || !renew_selection()) return;
    const QPointer<GraphWidget> self(this);
    viewer()->RenewView(true);
    if (self) Q_EMIT selectionChanged();
}

// ---------------------------------------------------------------------------------------------
// The view

point<double> GraphWidget::middle() const {
    const CGraphViewer* const v = viewer();
    const rectangle<int> r = v->GetContent()->GetContentRect();
    return {v->GetStartX() + r.right * 0.5 / v->GetScale(),
            v->GetStartY() + r.bottom * 0.5 / v->GetScale()};
}

void GraphWidget::show_middle(const point<double>& p) {
    CGraphViewer* const v = viewer();
    const rectangle<int> r = v->GetContent()->GetContentRect();
    const double scale = v->GetScale();
    v->SetStartX(p.x - r.right * 0.5 / scale);
    if (viewer_) v->SetStartY(p.y - r.bottom * 0.5 / scale);
}

void GraphWidget::fitToWindow() {
    finishGlide();
    if (!was_shown_) fits_when_shown_ = true;
    if (viewer() != nullptr) viewer()->FitToWindow();
}

void GraphWidget::zoomTo(double scale) {
    finishGlide();
    if (!(scale > 0.0) || viewer() == nullptr) return;
    fits_when_shown_ = false;
    const QPointer<GraphWidget> self(this);
    const point<double> kept = middle();
    viewer()->SetScale(std::clamp(scale, viewkit::kMinWheelScale, viewkit::kMaxWheelScale));
    if (self && viewer() != nullptr) show_middle(kept);
}

void GraphWidget::reveal(const Node& node) {
    if (!node || node.IsDummy() || viewer() == nullptr) return;
    if (node.store().get() != viewer()->GetGraph()->GetRoot().store().get()) return;
    fits_when_shown_ = false;
    const QPointer<GraphWidget> self(this);
    // A handle of its own: the layout may run code that destroys the caller's.
    const Node revealed(node.store(), node.record());
    if (IsOutOfSight(revealed)) change([&revealed] { ShowWithOwners(revealed); });
    if (!self || viewer() == nullptr) return;
    finishGlide();
    viewer()->Centre(revealed);
}

// ---------------------------------------------------------------------------------------------
// Events

// The size of a widget is not known before it is shown; what was in the middle until then stays.
void GraphWidget::resizeEvent(QResizeEvent* event) {
    const QPointer<GraphWidget> self(this);
    if (was_shown_ || viewer() == nullptr) return QtWindow::resizeEvent(event);
    const point<double> kept = middle();
    QtWindow::resizeEvent(event);
    if (self && viewer() != nullptr) show_middle(kept);
}

void GraphWidget::showEvent(QShowEvent* event) {
    QtWindow::showEvent(event);
    was_shown_ = true;
    if (std::exchange(fits_when_shown_, false)) fitToWindow();
}

void GraphWidget::focusInEvent(QFocusEvent* event) {
    const QPointer<GraphWidget> self(this);
    QtWindow::focusInEvent(event);
    if (!self || viewer() == nullptr || GetControl().GetFocused() != nullptr) return;
    viewer()->GetContent()->SetFocus();
}

// What a user does next finds everything in its place.
bool GraphWidget::event(QEvent* event) {
    switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::Wheel:
        case QEvent::KeyPress:
        case QEvent::ContextMenu:
            finishGlide();
            break;
        default:
            break;
    }
    return QtWindow::event(event);
}

void GraphWidget::mousePressEvent(QMouseEvent* event) {
    pressed_at_.reset();
    if (event->button() == Qt::LeftButton) pressed_at_ = event->position().toPoint();
    QtWindow::mousePressEvent(event);
}

void GraphWidget::mouseMoveEvent(QMouseEvent* event) {
    if (pressed_at_ && (event->buttons() & Qt::LeftButton) != 0) {
        if (Distance(event->position().toPoint(), *pressed_at_) < kLeastDrag) return;
        pressed_at_.reset();
    }
    QtWindow::mouseMoveEvent(event);
}

void GraphWidget::mouseReleaseEvent(QMouseEvent* event) {
    const QPointer<GraphWidget> self(this);
    pressed_at_.reset();
    std::unique_ptr<Places> before = places_before();
    QtWindow::mouseReleaseEvent(event);
    if (!self) return;
    const bool has_changed = renew_selection();
    const Node clicked = listener_->TakeClicked();
    const Listener::Move moved = listener_->TakeMoved();
    if (clicked) tell_change(clicked, std::move(before));
    if (self && moved.node) Q_EMIT nodeMoved(moved.node, QPointF(moved.from.x, moved.from.y));
    if (self && clicked) Q_EMIT nodeClicked(clicked);
    if (self && has_changed) Q_EMIT selectionChanged();
}

void GraphWidget::contextMenuEvent(QContextMenuEvent* event) {
    const QPointer<GraphWidget> self(this);
    QtWindow::contextMenuEvent(event);
    if (!self || viewer() == nullptr) return;
    Q_EMIT menuRequested(listener_->NodeAt(event->pos().x(), event->pos().y()), event->globalPos());
}

// The second of two fast clicks is a click as well: who clicks a port twice folds and unfolds.
void GraphWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    const QPointer<GraphWidget> self(this);
    QtWindow::mouseDoubleClickEvent(event);
    if (!self) return;
    const Node clicked = listener_->TakeDoubleClicked();
    mousePressEvent(event);
    if (self && clicked) Q_EMIT nodeDoubleClicked(clicked);
}

}  // namespace nodeline::qt
