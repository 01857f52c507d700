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

#include <QString>
#include <memory>
#include <vector>

namespace nodeline::qt {

// A window whose one element is a `CGraphViewer`.
//
// A graph that comes with the stock layout of the process, the one it has if nobody has called
// `Graph::SetDefaultLayout` or set one on its root, gets a `StableLayout` of its own. One that
// comes with the stock node handler of the process gets a `PortNodeHandler` of its own, which
// measures captions as this backend draws them; whoever has called `Graph::SetDefaultNodeHandler`
// before keeps his handler. Both stay with the graph when the widget goes.
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
    // Null once the application has destroyed it.
    [[nodiscard]] CGraphViewer* viewer() const { return viewer_.get(); }
    // Those that carry `NodeSelected`, owners first; linear in the graph.
    [[nodiscard]] std::vector<Node> selectedNodes() const;

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

    // Writes a picture: of the whole graph at one pixel to the unit, or of what is visible, at the
    // scale of the view. The ending of the name says in which format: PNG always, SVG and PDF where
    // the library was built with Cairo. A file is replaced in one step. On failure answers false
    // and says why in `error`, which may be null.
    bool exportPicture(const QString& path, bool visible_part_only, QString* error = nullptr);

Q_SIGNALS:
    // The left button went down and up on a node that is not the root, without a drag between. What
    // the node's handler does to a click has been done, and the layout as well.
    void nodeClicked(const nodeline::Node& node);
    // The left button went down on such a node for the second time; a `nodeClicked` came before it.
    void nodeDoubleClicked(const nodeline::Node& node);
    // Since the last release of a button, other nodes than before carry `NodeSelected`.
    void selectionChanged();
    // The view has moved, or may have: see `IViewer::OnChangeView`.
    void viewChanged();

protected:
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

    viewkit::Watch<CGraphViewer> viewer_;
    std::unique_ptr<Listener> listener_;
    std::vector<int> selected_ids_;
    bool was_shown_ = false;
    bool fits_when_shown_ = false;
};

}  // namespace nodeline::qt
