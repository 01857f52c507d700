// Merging: brings a graph up to date with a newer reading of its file.
#pragma once

#include <nodeline/model/graph.h>

namespace nodeline::app {

struct MergeResult {
    int added = 0;                   // nodes
    int removed = 0;                 // nodes
    bool has_other_changes = false;  // of captions and edges

    [[nodiscard]] bool IsEmpty() const { return added == 0 && removed == 0 && !has_other_changes; }
};

// Makes `shown` hold the nodes and edges of `fresh`, and asks for an update of the layout if that
// takes a change. What stays keeps its flags, its place and its handles.
//
// A node is the same in both if its owner is and it has the same caption; of several with one
// caption, those with the same tag, and then the first and the first. Or else it is the same if its
// owner is and it has the same tag.
// Edges are the same if their ends and captions are. Linear in both graphs but for sorting.
MergeResult Merge(const graph_ptr2<Graph>& shown, const graph_ptr2<Graph>& fresh);

}  // namespace nodeline::app
