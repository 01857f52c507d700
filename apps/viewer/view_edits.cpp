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

// Hides or shows nodes, owners before what they own, and in the end asks the owners of those that
// have changed for a layout, in that order.
class Edit {
public:
    void Set(Node node, bool is_hidden) {
        if (IsHidden(node) == is_hidden) return;
        is_hidden ? Hide(node) : Show(node);
        const Node owner = node.GetOwner();
        if (known_.insert(owner.GetID()).second) owners_.push_back(owner);
    }
    void AskForLayout() {
        for (Node& owner : owners_) owner.UpdateLayout();
    }

private:
    std::vector<Node> owners_;
    std::unordered_set<int> known_;
};

void MarkAllOld(const Node& root) { ForEachNodeIn(root, MarkOld, true, false); }

}  // namespace

void HideNode(Node node) {
    if (!node || node.IsDummy()) return;
    Hide(node);
    node.GetOwner().UpdateLayout();
}

void ShowAll(const graph_ptr2<Graph>& graph) {
    MarkAllOld(graph->GetRoot());
    Edit edit;
    ForEachNodeIn(
        graph->GetRoot(), [&edit](const Node& node) { edit.Set(node, false); }, false, false);
    edit.AskForLayout();
}

void ShowOnly(const Node& node) {
    if (!node || node.IsDummy()) return;
    MarkAllOld(GetRoot(node));
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
    Edit edit;
    const auto show = [&edit](const Node& inner) { edit.Set(inner, false); };
    std::vector<Node> pending{GetRoot(node)};
    while (!pending.empty()) {
        const Node owner = pending.back();
        pending.pop_back();
        for (const Node& inner : owner.GetOwned()) {
            const bool is_open = open.count(inner.GetID()) != 0;
            if (whole.count(inner.GetID()) != 0) {
                ForEachNodeIn(inner, show, false, true);
            } else if (is_open) {
                show(inner);
                pending.push_back(inner);
            } else {
                edit.Set(inner, true);
            }
        }
    }
    edit.AskForLayout();
}

bool CanFold(const Node& node, FoldDirection side) { return HasNeighbour(node, side, false); }

bool CanUnfold(const Node& node, FoldDirection side) { return HasNeighbour(node, side, true); }

}  // namespace nodeline::app
