// Changes a graph while it is shown: a field finds a node by its caption and brings it into view, a
// button adds a node behind what is selected. Where there is no screen (QT_QPA_PLATFORM=offscreen),
// does both by itself and writes what would be seen to qt-changes.png.

#include <backends/qt/graph_widget.h>
#include <nodeline/ops/graph_ops.h>

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QString>
#include <QVBoxLayout>
#include <QWidget>
#include <string>
#include <vector>

using nodeline::Graph;
using nodeline::graph_ptr2;
using nodeline::Node;
using nodeline::qt::GraphWidget;

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
    Node lower = AddNode(graph->GetRoot(), "lower");
    Node report = AddNode(graph->GetRoot(), "report");
    parse.LinkTo(check);
    check.LinkTo(lower);
    check.LinkTo(report);
    // What reports is folded away at first.
    nodeline::Hide(report);
    return graph;
}

Node FindNode(const graph_ptr2<Graph>& graph, const std::string& caption) {
    Node found;
    const auto look = [&](const Node& node) {
        if (node.GetCaption() == caption) found = node;
    };
    nodeline::ForEachNodeIn(graph->GetRoot(), look, false, false);
    return found;
}

// Selects the node of a caption and brings it into view. Answers whether there is one.
bool Find(GraphWidget& widget, const std::string& caption) {
    const Node found = FindNode(widget.viewer()->GetGraph(), caption);
    if (!found) return false;
    for (const Node& node : widget.selectedNodes()) nodeline::Unselect(node);
    nodeline::Select(found);
    widget.noteSelection();
    widget.reveal(found);
    return true;
}

// Adds a node behind the one that is selected, which stays where it is in the window.
void AddBehindSelected(GraphWidget& widget) {
    const std::vector<Node> selected = widget.selectedNodes();
    if (selected.empty()) return;
    Node source = selected.front();
    const auto add = [&] {
        Node node = AddNode(source.GetOwner(), "new");
        source.LinkTo(node);
        nodeline::SetFlag(node, nodeline::NodeNew, true);
        source.GetOwner().UpdateLayout();
    };
    widget.change(add, source);
}

}  // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);

    QWidget window;
    auto* const graph = new GraphWidget(MakeGraph());
    auto* const field = new QLineEdit;
    auto* const button = new QPushButton("Add");
    auto* const label = new QLabel;
    auto* const bar = new QHBoxLayout;
    auto* const column = new QVBoxLayout(&window);
    bar->addWidget(field);
    bar->addWidget(button);
    bar->addWidget(label, 1);
    column->addLayout(bar);
    column->addWidget(graph, 1);
    field->setPlaceholderText("Find");
    window.resize(640, 360);
    graph->setGlideTime(150);
    graph->fitToWindow();
    window.show();

    QObject::connect(field, &QLineEdit::returnPressed,
                     [=] { Find(*graph, field->text().toStdString()); });
    QObject::connect(button, &QPushButton::clicked, [=] { AddBehindSelected(*graph); });
    QObject::connect(graph, &GraphWidget::selectionChanged, [=] {
        label->setText(QString("%1 selected").arg(graph->selectedNodes().size()));
    });

    if (QApplication::platformName() == "offscreen") {
        if (!Find(*graph, "report")) return 1;
        AddBehindSelected(*graph);
        graph->finishGlide();
        return graph->exportPicture("qt-changes.png", true) ? 0 : 1;
    }
    return QApplication::exec();
}
