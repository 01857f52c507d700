#include <nodeline/ops/graph_ops.h>

namespace nodeline {

namespace {

NodeSet neighbours_of(const Node& node, FoldDirection direction) {
    return direction == FoldChildren ? node.GetChildren() : node.GetParents();
}

void mark_all_old(const Node& node) { ForEachNodeIn(GetRoot(node), MarkOld, true, true); }

}  // namespace

void Fold(Node node, FoldDirection direction) {
    if (!node || node.IsDummy()) return;
    mark_all_old(node);
    for (const Node& neighbour : neighbours_of(node, direction)) Hide(neighbour);
    node.GetOwner().UpdateLayout();
}

void Unfold(Node node, FoldDirection direction) {
    if (!node || node.IsDummy()) return;
    const NodeSet neighbours = neighbours_of(node, direction);
    if (neighbours.GetCount() == 0) return;
    mark_all_old(node);
    for (const Node& neighbour : neighbours) Show(neighbour);
    node.GetOwner().UpdateLayout();
}

bool IsOutOfSight(const Node& node) {
    for (Node shown = node; shown && !IsRoot(shown);) {
        if (IsFlagSet(shown, NodeHidden)) return true;
        const Node owner = shown.GetOwner();
        if (!owner || owner == shown) break;
        shown = owner;
    }
    return false;
}

void ShowWithOwners(const Node& node) {
    if (!node || node.IsDummy()) return;
    for (Node shown = node; shown && !IsRoot(shown);) {
        Node owner = shown.GetOwner();
        if (IsFlagSet(shown, NodeHidden)) {
            Show(shown);
            owner.UpdateLayout();
        }
        if (owner == shown) break;
        shown = owner;
    }
}

}  // namespace nodeline
