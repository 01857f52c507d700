// Shows a graph in a window: drag to pan, turn the wheel with Ctrl to zoom, click a port to fold
// what lies behind it, click a node to select it. Where there is no screen
// (QT_QPA_PLATFORM=offscreen), writes what would be seen to qt-widget.png.

#include <backends/qt/graph_widget.h>

#include <QApplication>

using nodeline::Graph;
using nodeline::graph_ptr2;
using nodeline::Node;
using nodeline::qt::GraphWidget;

namespace {

graph_ptr2<Graph> MakeGraph() {
    graph_ptr2<Graph> graph(new Graph, true);
    Node parse = graph->GetRoot().AddNode();
    Node check = graph->GetRoot().AddNode();
    parse.SetCaption("parse");
    check.SetCaption("check");
    parse.LinkTo(check);
    return graph;
}

}  // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);

    // This much is a graph in a window.
    GraphWidget graph(MakeGraph());
    graph.fitToWindow();
    graph.show();

    if (QApplication::platformName() == "offscreen") {
        return graph.exportPicture("qt-widget.png", true) ? 0 : 1;
    }
    return QApplication::exec();
}
