// Overview widget: all of the graph of a graph widget in small, and a rectangle for what that
// shows.
#pragma once

#include <backends/qt/graph_widget.h>
#include <corvex/export.h>
#include <nodeline/viewer/overview.h>

#include <QTimer>
#include <memory>

namespace nodeline::qt {

// An overview as a widget. Dragging the rectangle moves the view of the graph widget, dragging one
// of its edges or corners zooms it, and a press beside it moves it there. After a change of the
// graph that has more than 2,000 nodes, the nodes are painted again when the view has been still
// for a tenth of a second.
//
// Either widget may be destroyed first. Without a graph widget this one shows an empty graph.
class NODELINE_API OverviewWidget : public QtWindow {
    Q_OBJECT

public:
    // `shown` is not owned and may be null.
    explicit OverviewWidget(GraphWidget* shown, QWidget* parent = nullptr);
    ~OverviewWidget() override;

    // Follows another graph widget; null for none.
    void setGraphWidget(GraphWidget* shown);
    // Null once it is gone.
    [[nodiscard]] GraphWidget* graphWidget() const;

    [[nodiscard]] QSize sizeHint() const override;

private:
    class Link;
    class Listener;

    void renew_nodes();

    std::unique_ptr<Link> link_;
    viewkit::Watch<COverviewContent> content_;
    std::unique_ptr<Listener> listener_;
    QTimer nodes_timer_;
};

}  // namespace nodeline::qt
