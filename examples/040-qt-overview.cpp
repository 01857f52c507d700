// Shows a graph in a window, and all of it in small beside it: the small one follows, and can be
// dragged. A slot prints which node was clicked. Where there is no screen
// (QT_QPA_PLATFORM=offscreen), writes what would be seen to qt-overview.png.

#include <backends/qt/overview_widget.h>

#include <QApplication>
#include <QDebug>
#include <QHBoxLayout>
#include <QString>
#include <QWidget>
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

    QWidget window;
    auto* const graph = new GraphWidget(MakeGraph());
    auto* const overview = new OverviewWidget(graph);
    auto* const row = new QHBoxLayout(&window);
    row->addWidget(graph, 3);
    row->addWidget(overview, 1);
    window.setWindowTitle("Graph");
    window.resize(800, 400);
    graph->fitToWindow();
    window.show();

    QObject::connect(graph, &GraphWidget::nodeClicked, [](const Node& node) {
        qInfo() << "clicked:" << QString::fromStdString(node.GetCaption());
    });

    if (QApplication::platformName() == "offscreen") {
        QString error;
        if (graph->exportPicture("qt-overview.png", true, &error)) return 0;
        qCritical() << error;
        return 1;
    }
    return QApplication::exec();
}
