#include <backends/qt/graph_widget.h>
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

void GiveLookAndLayout(const graph_ptr2<Graph>& graph) {
    if (graph->GetRoot().GetLayout().get() == GetDefaultLayout().get()) {
        graph->SetDefaultLayout(checked_upcast<ILayout>(StableLayout::Create()));
    }
    if (graph->GetDefaultNodeHandler().get() == GetDefaultNodeHandler().get()) {
        graph->SetDefaultNodeHandler(graph_ptr2<INodeHandler>(new WidgetNodeHandler, true));
    }
}

}  // namespace

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
    }

    // What has been clicked since the last call.
    [[nodiscard]] Node TakeClicked() { return std::exchange(clicked_, {}); }
    [[nodiscard]] Node TakeDoubleClicked() { return std::exchange(double_clicked_, {}); }

private:
    struct Press {
        Node node;
        QPoint at;
    };

    // The node at a pixel of the surface; empty where there is only the root.
    [[nodiscard]] Node node_at(int x, int y) const {
        const CGraphViewer* const viewer = widget_->viewer();
        if (viewer == nullptr) return {};
        const NodeSet met = viewer->GetContent()->HitNodeTest(x, y, x, y);
        const Node node = met.GetCount() > 0 ? met.GetItem(0) : Node();
        return node && !IsRoot(node) ? node : Node();
    }

    void HandleOnChangeView(point<double> /*a*/, point<double> /*b*/) {
        Q_EMIT widget_->viewChanged();
    }

    void HandleOnButtonDown(CVisualElement* /*element*/, int x, int y, int /*keys*/,
                            MouseButton button) {
        press_.reset();
        if (button == MouseButton::Left) press_ = Press{node_at(x, y), QPoint(x, y)};
    }

    void HandleOnButtonUp(CVisualElement* /*element*/, int x, int y, int /*keys*/,
                          MouseButton button) {
        const std::optional<Press> press = std::exchange(press_, std::nullopt);
        if (!press || !press->node || button != MouseButton::Left) return;
        const int way = (QPoint(x, y) - press->at).manhattanLength();
        if (way >= QApplication::startDragDistance()) return;
        const Node node = node_at(x, y);
        if (node && node == press->node) clicked_ = node;
    }

    void HandleOnDoubleClick(CVisualElement* /*element*/, int x, int y, int /*keys*/,
                             MouseButton button) {
        if (button == MouseButton::Left) double_clicked_ = node_at(x, y);
    }

    GraphWidget* widget_;
    std::optional<Press> press_;
    Node clicked_;
    Node double_clicked_;
};

GraphWidget::GraphWidget(QWidget* parent) : GraphWidget(graph_ptr2<Graph>(), parent) {}

GraphWidget::GraphWidget(graph_ptr2<Graph> graph, QWidget* parent) : QtWindow(parent) {
    auto* made = new CGraphViewer(GetRoot(), kInitialSize, viewkit::Alignment::Client);
    viewer_ = viewkit::Watch<CGraphViewer>(made);
    listener_ = std::make_unique<Listener>(this, made);
    setGraph(graph);
}

GraphWidget::~GraphWidget() {
    listener_.reset();
    Close();
}

void GraphWidget::setGraph(graph_ptr2<Graph> graph) {
    if (viewer() == nullptr) return;
    if (!graph) graph = graph_ptr2<Graph>(new Graph(), true);
    GiveLookAndLayout(graph);
    const QPointer<GraphWidget> self(this);
    viewer()->SetGraph(graph);
    if (self) selected_ids_ = IdsOf(selectedNodes());
}

std::vector<Node> GraphWidget::selectedNodes() const {
    std::vector<Node> nodes;
    if (viewer() == nullptr) return nodes;
    const auto collect = [&nodes](const Node& node) {
        if (IsFlagSet(node, NodeSelected)) nodes.push_back(node);
    };
    ForEachNodeIn(viewer()->GetGraph()->GetRoot(), collect, false, false);
    return nodes;
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
    if (!was_shown_) fits_when_shown_ = true;
    if (viewer() != nullptr) viewer()->FitToWindow();
}

void GraphWidget::zoomTo(double scale) {
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
    // A handle of its own: the layout may run code that destroys the caller's.
    const Node revealed(node.store(), node.record());
    for (Node shown = revealed; shown && !IsRoot(shown);) {
        Node owner = shown.GetOwner();
        if (IsFlagSet(shown, NodeHidden)) {
            Show(shown);
            owner.UpdateLayout();
        }
        if (owner == shown) break;
        shown = owner;
    }
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

void GraphWidget::mouseReleaseEvent(QMouseEvent* event) {
    const QPointer<GraphWidget> self(this);
    QtWindow::mouseReleaseEvent(event);
    if (!self) return;
    const std::vector<int> selected = IdsOf(selectedNodes());
    const bool has_changed = selected != std::exchange(selected_ids_, selected);
    const Node clicked = listener_->TakeClicked();
    if (clicked) Q_EMIT nodeClicked(clicked);
    if (self && has_changed) Q_EMIT selectionChanged();
}

void GraphWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    const QPointer<GraphWidget> self(this);
    QtWindow::mouseDoubleClickEvent(event);
    if (!self) return;
    const Node clicked = listener_->TakeDoubleClicked();
    if (clicked) Q_EMIT nodeDoubleClicked(clicked);
}

}  // namespace nodeline::qt
