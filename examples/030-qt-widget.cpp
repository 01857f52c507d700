// Shows a graph in a window: drag to pan, turn the wheel with Ctrl to zoom, click a port to fold
// what lies behind it, click a node to select it. A small overview beside it follows, and can be
// dragged. Where there is no screen (QT_QPA_PLATFORM=offscreen), writes what would be seen to
// qt-widget.png.

#include <backends/qt/overview_widget.h>

#include <QApplication>
#include <QDebug>
#include <QString>
#include <string>

using nodeline::Graph;
using nodeline::graph_ptr2;
using nodeline::Node;
using nodeline::qt::GraphWidget;
using nodeline::qt::OverviewWidget;

namespace {

Node AddNode(Node owner, const std::string& caption) {
    Node node = owner.AddNode();
    node.SetCaption(caption);
    return node;
}

graph_ptr2<Graph> MakeGraph() {
    graph_ptr2<Graph> graph(new Graph, true);
    Node parse = AddNode(graph->GetRoot(), "parse");
    Node check = AddNode(graph->GetRoot(), "check");
    Node back = AddNode(graph->GetRoot(), "back end");
    Node lower = AddNode(back, "lower");
    Node print = AddNode(back, "print");
    parse.LinkTo(check);
    check.LinkTo(lower);
    lower.LinkTo(print);
    parse.LinkTo(AddNode(graph->GetRoot(), "report"));
    return graph;
}

}  // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);

    // This much is a graph in a window.
    GraphWidget graph(MakeGraph());
    graph.fitToWindow();
    graph.show();

    graph.setWindowTitle("Graph");
    OverviewWidget overview(&graph);
    overview.setWindowTitle("Overview");
    overview.show();
    QObject::connect(&graph, &GraphWidget::nodeClicked, [](const Node& node) {
        qInfo() << "clicked:" << QString::fromStdString(node.GetCaption());
    });

    if (QApplication::platformName() == "offscreen") {
        QString error;
        if (graph.exportPicture("qt-widget.png", true, &error)) return 0;
        qCritical() << error;
        return 1;
    }
    return QApplication::exec();
}
