// Explores a nested graph step by step: folds a side of a node, brings it back and adds a node,
// with a picture after each step. What was drawn before stays in its place as far as it can.
// The pictures, explore-1.png and so on, go to the folder given as argument, or to this one.

#include <backends/cairo/measuring_painter.h>
#include <backends/cairo/picture.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/layout/stable_layout.h>
#include <nodeline/model/graph.h>
#include <nodeline/ops/graph_ops.h>
#include <nodeline/viewer/draw_functions.h>

#include <iostream>
#include <string>
#include <utility>

using nodeline::Graph;
using nodeline::graph_ptr2;
using nodeline::Node;

namespace {

Node AddNode(Node owner, const std::string& caption) {
    Node node = owner.AddNode();
    node.SetCaption(caption);
    return node;
}

// Writes the pictures, numbered in their order.
class Album {
public:
    Album(const graph_ptr2<Graph>& graph, std::string folder)
        : graph_(graph), folder_(std::move(folder)) {}

    // Carries out the layout work that was asked for since the last picture, and draws.
    bool Add(paintcore::IPainter& measure, const std::string& title) {
        graph_->RecalculateLayout(&measure);
        // What is hidden, what it owns and its edges are not in the picture.
        nodeline::MarkDrawnIn(graph_);
        constexpr double kScale = 1.0;
        const std::string name = "explore-" + std::to_string(++count_) + ".png";
        std::string error;
        const auto picture = nodeline::cairo::MakePicture(
            nodeline::cairo::PictureFormat::kPng, graph_->GetRoot().GetSize(), kScale, &error);
        if (picture != nullptr) {
            picture->Draw(
                [&](paintcore::IPainter& painter) { DrawGraph(graph_, &painter, kScale); });
        }
        if (picture == nullptr || !picture->Save(folder_ + "/" + name, &error)) {
            std::cerr << error << '\n';
            return false;
        }
        std::cout << name << ": " << title << '\n';
        return true;
    }

private:
    graph_ptr2<Graph> graph_;
    std::string folder_;
    int count_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
    // Who calls whom in a small compiler: functions in their files, and the files from outside.
    const graph_ptr2<Graph> graph(new Graph, true);
    Node root = graph->GetRoot();
    Node main = AddNode(root, "main");
    const Node source = AddNode(root, "source.c");
    AddNode(source, "open");
    AddNode(source, "read");
    Node parse = AddNode(root, "parse");
    Node check = AddNode(root, "check");
    Node resolve = AddNode(root, "resolve");
    const Node heap = AddNode(root, "heap.c");
    AddNode(heap, "allocate");
    AddNode(heap, "release");
    Node reduce = AddNode(root, "reduce");
    const Node emit = AddNode(root, "emit");
    const Node report = AddNode(root, "report");
    main.LinkTo(source);
    main.LinkTo(parse);
    main.LinkTo(report);
    parse.LinkTo(check);
    parse.LinkTo(resolve);
    check.LinkTo(resolve);
    check.LinkTo(heap);
    check.LinkTo(reduce);
    resolve.LinkTo(emit);
    reduce.LinkTo(emit);

    // In an application, clicks on the ports of this handler's nodes fold and unfold. All of its
    // nodes have room for a caption of so many letters.
    nodeline::cairo::MeasuringPainter measure;
    const graph_ptr2<nodeline::PortNodeHandler> ports(new nodeline::PortNodeHandler, true);
    ports->SetIPainter(&measure);
    ports->GetDrawInfo().max_caption_length = 16;
    graph->SetDefaultNodeHandler(ports);
    graph->SetDefaultLayout(nodeline::StableLayout::Create());

    Album album(graph, argc > 1 ? argv[1] : ".");
    if (!album.Add(measure, "the whole graph")) return 1;

    // Each of these asks for an update of the owner of the node, which keeps the picture.
    nodeline::Fold(check, nodeline::FoldChildren);
    if (!album.Add(measure, "without what check calls")) return 1;
    nodeline::Unfold(check, nodeline::FoldChildren);
    if (!album.Add(measure, "with it again, as new")) return 1;

    // Whoever changes the graph itself asks for the update.
    Node inlining = AddNode(root, "inline");
    check.LinkTo(inlining);
    inlining.LinkTo(emit);
    nodeline::ForEachNodeIn(root, nodeline::MarkOld, false, false);
    nodeline::SetFlag(inlining, nodeline::NodeNew, true);
    root.UpdateLayout();
    return album.Add(measure, "with a function more") ? 0 : 1;
}
