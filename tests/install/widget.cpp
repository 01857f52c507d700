// Shows a graph of one node in a widget, and says how many nodes there are.
#include <backends/qt/overview_widget.h>

#include <QApplication>
#include <iostream>

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    nodeline::graph_ptr2<nodeline::Graph> graph(new nodeline::Graph, true);
    graph->GetRoot().AddNode().SetCaption("check");
    nodeline::qt::GraphWidget widget(graph);
    const nodeline::qt::OverviewWidget overview(&widget);
    bool has_moved = false;
    QObject::connect(&widget, &nodeline::qt::GraphWidget::viewChanged,
                     [&has_moved] { has_moved = true; });
    widget.fitToWindow();
    const auto count = widget.viewer()->GetGraph()->GetRoot().GetOwned().GetCount();
    std::cout << count << (has_moved ? " node shown" : " node, not shown") << '\n';
}
