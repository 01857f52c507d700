// Graphs from texts, and what a graph holds as texts that can be compared.
#pragma once

#include <apps/viewer/theme.h>
#include <apps/viewer/viewer_node_handler.h>
#include <formats/graph_file.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/layout/stable_layout.h>
#include <nodeline/ops/graph_ops.h>

#include <algorithm>
#include <string>
#include <vector>

namespace nodeline::app::test {

// The text is that of a graph file.
inline graph_ptr2<Graph> Read(const std::string& text) {
    graph_ptr2<Graph> graph(new Graph(), true);
    formats::ReadGraph(graph, "text", text, {});
    return graph;
}

// Makes a picture as the desktop program does.
inline void LayOut(const graph_ptr2<Graph>& graph,
                   graph_ptr2<ILayout> layout = checked_upcast<ILayout>(StableLayout::Create())) {
    const graph_ptr2<ViewerNodeHandler> nodes(new ViewerNodeHandler, true);
    const graph_ptr2<DummyEdgeHandler> edges(new DummyEdgeHandler, true);
    ApplyLook(false, *nodes, *edges);
    graph->SetDefaultNodeHandler(checked_upcast<INodeHandler>(nodes));
    graph->SetDefaultEdgeHandler(checked_upcast<IEdgeHandler>(edges));
    graph->SetDefaultLayout(layout);
    graph->GetRoot().MakeLayout();
    graph->RecalculateLayout(nullptr);
}

inline graph_ptr2<Graph> ReadAndLayOut(const std::string& text) {
    graph_ptr2<Graph> graph = Read(text);
    LayOut(graph);
    return graph;
}

inline std::vector<Node> AllNodes(const graph_ptr2<Graph>& graph) {
    std::vector<Node> nodes;
    ForEachNodeIn(
        graph->GetRoot(), [&nodes](const Node& node) { nodes.push_back(node); }, false, false);
    return nodes;
}

// The first node of a caption; empty if there is none.
inline Node Find(const graph_ptr2<Graph>& graph, const std::string& caption) {
    for (const Node& node : AllNodes(graph)) {
        if (node.GetCaption() == caption) return node;
    }
    return {};
}

// The captions of the owners and of the node itself: "box/leaf".
inline std::string PathOf(const Node& node) {
    std::string path = node.GetCaption();
    for (Node owner = node.GetOwner(); owner && !IsRoot(owner); owner = owner.GetOwner()) {
        path = owner.GetCaption() + "/" + path;
    }
    return path;
}

// A line for each node and each edge, sorted.
inline std::vector<std::string> Contents(const graph_ptr2<Graph>& graph) {
    std::vector<std::string> lines;
    for (const Node& node : AllNodes(graph)) {
        lines.push_back(PathOf(node));
        for (const Edge& edge : node.GetEdgesOut()) {
            lines.push_back(PathOf(node) + " > " + PathOf(edge.To()) + " " + edge.GetCaption());
        }
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

// The captions of the nodes that are in the picture, sorted.
inline std::vector<std::string> ShownCaptions(const graph_ptr2<Graph>& graph) {
    MarkDrawnIn(graph);
    std::vector<std::string> captions;
    for (const Node& node : AllNodes(graph)) {
        if (IsFlagSet(node, NodeDrawn)) captions.push_back(node.GetCaption());
    }
    std::sort(captions.begin(), captions.end());
    return captions;
}

}  // namespace nodeline::app::test
