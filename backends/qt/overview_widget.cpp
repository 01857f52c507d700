#include <backends/qt/overview_widget.h>
#include <nodeline/viewer/overview.h>

namespace nodeline::qt {

namespace {

constexpr QSize kSizeHint{200, 150};
// What can be painted between two presses of a hurried user is not put off.
constexpr int kMostNodesAtOnce = 2000;
constexpr int kRestInMilliseconds = 100;

}  // namespace

// A viewer that lives as long as the overview and stands for one that may not.
class OverviewWidget::Link : public IViewer, public subscriber_base_t {
public:
    void Follow(GraphWidget* shown) {
        if (target_) target_.get()->OnChangeView.disconnect(this, &Link::HandleOnChangeView);
        shown_ = viewkit::Watch<GraphWidget>(shown);
        target_ = viewkit::Watch<CGraphViewer>(shown != nullptr ? shown->viewer() : nullptr);
        if (target_) target_.get()->OnChangeView.connect(this, &Link::HandleOnChangeView);
        RenewView(true);
    }

    [[nodiscard]] GraphWidget* GetShown() const { return shown_.get(); }

    void SetStartX(double x) override {
        if (target_) target_.get()->SetStartX(x);
    }
    void SetStartY(double y) override {
        if (target_) target_.get()->SetStartY(y);
    }
    void SetScale(double scale) override {
        if (target_) target_.get()->SetScale(scale);
    }
    void SetViewWidth(double width) override {
        if (target_) target_.get()->SetViewWidth(width);
    }
    void SetViewHeight(double height) override {
        if (target_) target_.get()->SetViewHeight(height);
    }
    void SetGraph(graph_ptr2<Graph> graph) override {
        if (target_) target_.get()->SetGraph(graph);
    }
    void SetDefaultNodeHandler(graph_ptr2<INodeHandler> handler) override {
        if (target_) target_.get()->SetDefaultNodeHandler(handler);
    }
    [[nodiscard]] double GetScale() const override {
        return target_ ? target_.get()->GetScale() : 1.0;
    }
    [[nodiscard]] graph_ptr2<Graph> GetGraph() const override {
        return target_ ? target_.get()->GetGraph() : nothing_;
    }
    [[nodiscard]] double GetStartX() const override {
        return target_ ? target_.get()->GetStartX() : 0.0;
    }
    [[nodiscard]] double GetStartY() const override {
        return target_ ? target_.get()->GetStartY() : 0.0;
    }
    void RenewView(bool invalidate) override {
        if (target_) {
            target_.get()->RenewView(invalidate);
        } else {
            OnChangeView(point<double>{0.0, 0.0}, point<double>{0.0, 0.0});
        }
    }
    bool RecalculateLayout() override { return target_ && target_.get()->RecalculateLayout(); }

private:
    void HandleOnChangeView(point<double> a, point<double> b) { OnChangeView(a, b); }

    viewkit::Watch<GraphWidget> shown_;
    viewkit::Watch<CGraphViewer> target_;
    graph_ptr2<Graph> nothing_{new Graph(), true};
};

// Hears that the picture of the nodes is an old one.
class OverviewWidget::Listener : public subscriber_base_t {
public:
    Listener(COverviewContent* content, QTimer* timer) : timer_(timer) {
        content->OnNodesHeld.connect(this, &Listener::HandleOnNodesHeld);
    }

private:
    // Begins anew with each change, so a user who keeps moving the view is not held up.
    void HandleOnNodesHeld() { timer_->start(); }

    QTimer* timer_;
};

OverviewWidget::OverviewWidget(GraphWidget* shown, QWidget* parent)
    : QtWindow(parent), link_(std::make_unique<Link>()) {
    setGraphWidget(shown);
    auto* made = new COverviewContent(GetRoot(), link_.get());
    content_ = viewkit::Watch<COverviewContent>(made);
    made->SetGrabAnywhere(true);
    made->SetViewOverlay(true);
    made->SetNodesHeldAbove(kMostNodesAtOnce);
    nodes_timer_.setSingleShot(true);
    nodes_timer_.setInterval(kRestInMilliseconds);
    connect(&nodes_timer_, &QTimer::timeout, this, &OverviewWidget::renew_nodes);
    listener_ = std::make_unique<Listener>(made, &nodes_timer_);
}

// The elements go before the link that they hold.
OverviewWidget::~OverviewWidget() {
    listener_.reset();
    Close();
}

void OverviewWidget::renew_nodes() {
    if (content_) content_.get()->RenewNodes();
}

void OverviewWidget::setGraphWidget(GraphWidget* shown) {
    if (graphWidget() != nullptr) graphWidget()->disconnect(this);
    if (shown != nullptr) {
        connect(shown, &QObject::destroyed, this, [this] { setGraphWidget(nullptr); });
    }
    link_->Follow(shown);
    GetControl().InvalidateAll();
}

GraphWidget* OverviewWidget::graphWidget() const { return link_->GetShown(); }

QSize OverviewWidget::sizeHint() const { return kSizeHint; }

}  // namespace nodeline::qt
