// Builds a small graph, lays it out and writes it as a picture: first-graph.svg.

#include <backends/cairo/measuring_painter.h>
#include <backends/cairo/picture.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/layout/inc_layout.h>
#include <nodeline/model/graph.h>
#include <nodeline/ops/graph_ops.h>
#include <nodeline/viewer/draw_functions.h>

#include <iostream>
#include <string>

using nodeline::Graph;
using nodeline::graph_ptr2;
using nodeline::Node;

namespace {

Node AddNode(Node owner, const std::string& caption) {
    Node node = owner.AddNode();
    node.SetCaption(caption);
    return node;
}

}  // namespace

int main() {
    // Nodes are made inside the node that owns them, the topmost ones inside the root. Edges run
    // between any two nodes, also backwards.
    const graph_ptr2<Graph> graph(new Graph, true);
    const Node root = graph->GetRoot();
    Node read = AddNode(root, "read");
    Node compiler = AddNode(root, "compiler");
    Node write = AddNode(root, "write");
    Node parse = AddNode(compiler, "parse");
    Node check = AddNode(compiler, "check");
    Node emit = AddNode(compiler, "emit");
    read.LinkTo(parse);
    parse.LinkTo(check);
    parse.LinkTo(emit);
    check.LinkTo(emit);
    emit.LinkTo(write);
    check.LinkTo(read);

    // The handler decides how nodes look. It needs a painter to measure the captions with.
    nodeline::cairo::MeasuringPainter measure;
    const graph_ptr2<nodeline::SimpleNodeHandler> boxes(new nodeline::SimpleNodeHandler, true);
    boxes->SetIPainter(&measure);
    graph->SetDefaultNodeHandler(boxes);

    // A new graph has asked for a layout of its root already; this carries it out.
    graph->SetDefaultLayout(nodeline::IncLayout::Create());
    graph->RecalculateLayout(&measure);

    // Only what is marked as drawn is painted: nothing is hidden here, so all of it.
    nodeline::MarkDrawnIn(graph);
    constexpr double kScale = 1.0;
    std::string error;
    const auto picture = nodeline::cairo::MakePicture(nodeline::cairo::PictureFormat::kSvg,
                                                      root.GetSize(), kScale, &error);
    if (picture != nullptr) {
        picture->Draw([&](paintcore::IPainter& painter) { DrawGraph(graph, &painter, kScale); });
    }
    if (picture == nullptr || !picture->Save("first-graph.svg", &error)) {
        std::cerr << error << '\n';
        return 1;
    }
    std::cout << "first-graph.svg shows " << parse.GetCaption() << " at " << parse.GetPosition().x
              << ", " << parse.GetPosition().y << '\n';
}
