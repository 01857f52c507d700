#include <apps/viewer/view_edits.h>

#include <unordered_set>
#include <vector>

namespace nodeline::app {

namespace {

NodeSet Neighbours(const Node& node, FoldDirection side) {
    return side == FoldChildren ? node.GetChildren() : node.GetParents();
}

bool IsHidden(const Node& node) { return IsFlagSet(node, NodeHidden); }

bool HasNeighbour(const Node& node, FoldDirection side, bool is_hidden) {
    for (const Node& neighbour : Neighbours(node, side)) {
        if (IsHidden(neighbour) == is_hidden) return true;
    }
    return false;
}

void MarkAllOld(const graph_ptr2<Graph>& graph) {
    ForEachNodeIn(graph->GetRoot(), MarkOld, true, false);
}

}  // namespace

void HideNode(Node node) {
    if (!node || node.IsDummy()) return;
    Hide(node);
    node.GetOwner().UpdateLayout();
}

void ShowAll(const graph_ptr2<Graph>& graph) {
    MarkAllOld(graph);
    ForEachNodeIn(graph->GetRoot(), Show, true, false);
    graph->GetRoot().UpdateLayout();
}

void ShowOnly(const Node& node) {
    if (!node || node.IsDummy()) return;
    std::vector<Node> kept{node};
    const auto take_neighbours = [&kept](const Node& inner) {
        for (const Node& other : inner.GetParents()) kept.push_back(other);
        for (const Node& other : inner.GetChildren()) kept.push_back(other);
    };
    ForEachNodeIn(node, take_neighbours, false, true);
    std::unordered_set<int> whole;  // shown with all that they own
    std::unordered_set<int> open;   // shown for what they own
    for (const Node& one : kept) {
        whole.insert(one.GetID());
        for (Node owner = one.GetOwner(); owner && !IsRoot(owner); owner = owner.GetOwner()) {
            if (!open.insert(owner.GetID()).second) break;
        }
    }
    std::vector<Node> pending{GetRoot(node)};
    while (!pending.empty()) {
        const Node owner = pending.back();
        pending.pop_back();
        for (Node inner : owner.GetOwned()) {
            const bool is_open = open.count(inner.GetID()) != 0;
            if (whole.count(inner.GetID()) != 0) {
                ForEachNodeIn(inner, Show, true, true);
            } else if (is_open) {
                Show(inner);
                pending.push_back(inner);
            } else {
                Hide(inner);
            }
        }
    }
    GetRoot(node).UpdateLayout();
}

bool IsOutOfSight(const Node& node) {
    for (Node shown = node; shown && !IsRoot(shown); shown = shown.GetOwner()) {
        if (IsHidden(shown)) return true;
    }
    return false;
}

bool CanFold(const Node& node, FoldDirection side) { return HasNeighbour(node, side, false); }

bool CanUnfold(const Node& node, FoldDirection side) { return HasNeighbour(node, side, true); }

}  // namespace nodeline::app
