// What a person does to the view of a graph: which nodes are hidden. Each asks for the layout that
// it needs.
#pragma once

#include <nodeline/ops/graph_ops.h>

namespace nodeline::app {

// Hides a node with what it owns.
void HideNode(Node node);
// Shows every node of a graph.
void ShowAll(const graph_ptr2<Graph>& graph);
// Hides all but a node, its neighbours, and what these own and are owned by. Of an owner, the
// neighbours of its contents count too.
void ShowOnly(const Node& node);

// Whether a fold of one side would hide something, and an unfold would show something.
[[nodiscard]] bool CanFold(const Node& node, FoldDirection side);
[[nodiscard]] bool CanUnfold(const Node& node, FoldDirection side);

}  // namespace nodeline::app
