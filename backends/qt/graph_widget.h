// Graph widget: a widget of Qt that shows a graph, to be panned, zoomed, folded and clicked.
//
//   QApplication application(argc, argv);
//   GraphWidget widget(graph);
//   widget.show();
//   return application.exec();
#pragma once

#include <backends/qt/qt_window.h>
#include <corvex/export.h>
#include <nodeline/viewer/graph_viewer.h>

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QImage>
#include <QString>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace nodeline::qt {

class Glide;
struct Places;

// Gives a graph what a `GraphWidget` gives it: see there.
NODELINE_API void GiveLookAndLayout(const graph_ptr2<Graph>& graph);

// A window whose one element is a `CGraphViewer`, with all options of its surface switched on.
//
// A graph that comes with the stock layout of the process, the one it has if nobody has called
// `Graph::SetDefaultLayout` or set one on its root, gets a `StableLayout` of its own, which keeps
// room for the captions of boxes. One that comes with the stock node handler of the process gets a
// `PortNodeHandler` of its own, which measures captions as this backend draws them; whoever has
// called `Graph::SetDefaultNodeHandler` before keeps his handler. Both stay with the graph when the
// widget goes.
//
// A press and a release with less than four pixels between them are a click, not a drag.
//
// A slot of its signals may destroy the widget.
class NODELINE_API GraphWidget : public QtWindow {
    Q_OBJECT

public:
    // Shows an empty graph.
    explicit GraphWidget(QWidget* parent = nullptr);
    explicit GraphWidget(graph_ptr2<Graph> graph, QWidget* parent = nullptr);
    ~GraphWidget() override;

    // Lays a graph out and shows it in the middle; null shows an empty one.
    void setGraph(graph_ptr2<Graph> graph);
    // Shows a graph as it has been laid out, say on another thread, and leaves its look alone.
    void showGraph(graph_ptr2<Graph> graph);
    // Null once the application has destroyed it.
    [[nodiscard]] CGraphViewer* viewer() const { return viewer_.get(); }
    // Those that carry `NodeSelected`, owners first; linear in the graph where that has changed
    // since the last call.
    [[nodiscard]] std::vector<Node> selectedNodes() const;

    // For whoever has set or cleared `NodeSelected`: paints it, and tells by `selectionChanged`.
    void noteSelection();

    // Shows all of the graph, as large as it fits. Before the widget is shown for the first time
    // this is done then, when its size is known.
    void fitToWindow();
    // Zooms about the middle of the view, to a scale in pixels to the unit. It is held between
    // `viewkit::kMinWheelScale` and `kMaxWheelScale`; one of 0 or less is ignored.
    void zoomTo(double scale);
    // Shows a node of this graph and every hidden node that owns it, brings the layout up to date
    // and moves the view so that the node stands in its middle. An empty handle, the root and nodes
    // of other graphs are ignored.
    void reveal(const nodeline::Node& node);

    // Carries out a change of the graph: calls `edit`, brings the layout up to date and emits
    // `graphChanged`. `kept`, unless it is empty or removed, stays at its pixel.
    void change(const std::function<void()>& edit, const nodeline::Node& kept = {});

    // How long what a click or `change` has moved takes to glide to its new place, in milliseconds;
    // 0, as at first, for no time. While it glides, positions and sizes in the graph are those on
    // the way. Presses, keys, the wheel and the functions of this class put everything in its place
    // first; whoever lays the graph out by other means calls `finishGlide` before.
    void setGlideTime(int milliseconds);
    [[nodiscard]] int glideTime() const { return glide_time_; }
    void finishGlide();
    [[nodiscard]] bool isGliding() const;

    // A picture as `exportPicture` would write it as PNG; null if it is too large for an image.
    [[nodiscard]] QImage picture(bool visible_part_only);
    // Writes a picture: of the whole graph at one pixel to the unit, or of what is visible, at the
    // scale of the view. The ending of the name says in which format: PNG always, SVG and PDF where
    // the library was built with Cairo. A file is replaced in one step. On failure answers false
    // and says why in `error`, which may be null.
    bool exportPicture(const QString& path, bool visible_part_only, QString* error = nullptr);

Q_SIGNALS:
    // The left button went down and up on a node that is not the root, without a drag between. What
    // the node's handler does to a click has been done, and the layout as well.
    void nodeClicked(const nodeline::Node& node);
    // The left button went down on such a node for the second time; a `nodeClicked` came before it,
    // and when the button comes up, another one follows.
    void nodeDoubleClicked(const nodeline::Node& node);
    // Since the last release of a button, other nodes than before carry `NodeSelected`.
    void selectionChanged();
    // A click or `change` may have hidden, shown or moved nodes, and the layout is up to date. A
    // slot may still move nodes. `at` is the node that was clicked, or the one that was kept.
    void graphChanged(const nodeline::Node& at);
    // Such a node was dragged to another place, away from `from`.
    void nodeMoved(const nodeline::Node& node, const QPointF& from);
    // A context menu is wanted at a point of the screen, for a node or, with an empty handle, for
    // what lies behind them all.
    void menuRequested(const nodeline::Node& node, const QPoint& at);
    // The view has moved, or may have: see `IViewer::OnChangeView`.
    void viewChanged();

protected:
    bool event(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    class Listener;

    // The point of the graph in the middle of the view.
    [[nodiscard]] point<double> middle() const;
    void show_middle(const point<double>& p);
    // True if other nodes than before are selected.
    bool renew_selection();
    void take_graph(graph_ptr2<Graph> graph, bool is_laid_out);
    // What glides once a change is over; null where nothing is to.
    [[nodiscard]] std::unique_ptr<Places> places_before();
    void start_glide(std::unique_ptr<Places> before);
    void tell_change(const nodeline::Node& at, std::unique_ptr<Places> before);

    viewkit::Watch<CGraphViewer> viewer_;
    std::unique_ptr<Listener> listener_;
    std::vector<int> selected_ids_;
    // What `selectedNodes` has found, and in what.
    mutable std::vector<Node> selected_;
    mutable graph_ptr<IGraphVis> selected_store_;
    mutable std::uint64_t selected_revision_ = 0;
    std::unique_ptr<Glide> glide_;
    QBasicTimer glide_timer_;
    QElapsedTimer glide_clock_;
    int glide_time_ = 0;
    // The point of a press until the pointer has left its surroundings, or the button is up.
    std::optional<QPoint> pressed_at_;
    bool was_shown_ = false;
    bool fits_when_shown_ = false;
};

}  // namespace nodeline::qt
