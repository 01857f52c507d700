// A program of somebody else: builds a graph, lays it out, and tells where the nodes stand.
#include <backends/headless/recording_painter.h>
#include <nodeline/model/graph.h>

#include <iostream>

int main() {
    using nodeline::Graph;
    using nodeline::graph_ptr2;
    using nodeline::Node;

    graph_ptr2<Graph> graph(new Graph(), true);
    Node parse = graph->GetRoot().AddNode();
    Node check = graph->GetRoot().AddNode();
    parse.SetCaption("parse");
    check.SetCaption("check");
    parse.LinkTo(check);

    nodeline::headless::RecordingPainter painter;
    const bool changed = graph->RecalculateLayout(&painter);
    const bool left_to_right = parse.GetPosition().x < check.GetPosition().x;
    std::cout << parse.GetChildren().GetItem(0).GetCaption() << (changed ? " moved" : " stayed")
              << (left_to_right ? " right" : " wrong") << '\n';
}
