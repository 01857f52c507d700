#include <bench/stability_subject.h>

#include <nodeline/handlers/handlers.h>
#include <nodeline/layout/inc_layout.h>
#include <nodeline/layout/stable_layout.h>
#include <nodeline/ops/graph_ops.h>

#include <algorithm>
#include <array>

namespace nodeline::bench {

namespace {

// Long captions take more than one line.
nodeline::size<double> box_for(int caption_length) {
    constexpr int kLine = 12;
    const int columns = std::min(caption_length, kLine);
    const int lines = 1 + caption_length / kLine;
    return {12.0 + 7.0 * columns, 8.0 + 14.0 * lines};
}

// Nodes know their number by their tag.
class BoxHandler : public INodeHandler {
public:
    // The sizes are not owned.
    BoxHandler(const std::vector<nodeline::size<double>>& sizes, bool headers)
        : sizes_(sizes), headers_(headers) {}

    void Draw(Node, IPainter*) override {}
    nodeline::size<double> GetSize(Node node) override {
        const int number = Subject::NumberOf(node);
        nodeline::size<double> box =
            number == kInRoot ? box_for(0) : sizes_[static_cast<std::size_t>(number)];
        if (!headers_ && node.GetOwned().GetCount() > 0) box.cy = 0.0;
        return box;
    }
    NodeFrame GetSize(Node, nodeline::size<double> inner) override { return {inner, {0.0, 0.0}}; }

private:
    const std::vector<nodeline::size<double>>& sizes_;
    bool headers_;
};

}  // namespace

const std::vector<Keeper>& Keepers() {
    static const auto new_inc_layout = [] { return graph_ptr2<ILayout>(IncLayout::Create()); };
    static const auto new_stable_layout = [] {
        return graph_ptr2<ILayout>(StableLayout::Create());
    };
    static const std::vector<Keeper> keepers = {{"stable", new_stable_layout, false, true},
                                                {"update", new_inc_layout, false, true},
                                                {"update, no header", new_inc_layout, false, false},
                                                {"make", new_inc_layout, true, true}};
    return keepers;
}

std::string_view NameOf(ChangeKind kind) {
    constexpr std::array<std::string_view, 5> kNames = {"fold", "unfold", "leaf", "edge", "grow"};
    return kNames[static_cast<std::size_t>(kind)];
}

Subject::Subject(const WatchedGraph& watched, const Keeper& keeper)
    : keeper_(keeper), graph_(new Graph, true) {
    graph_->SetDefaultLayout(keeper.new_layout());
    graph_->SetDefaultNodeHandler(
        graph_ptr2<INodeHandler>(new BoxHandler(own_sizes_, keeper.headers), true));
    const std::vector<int>& owners = watched.plan.owners;
    for (std::size_t i = 0; i < owners.size(); ++i) {
        add_node(owners[i] == kInRoot ? graph_->GetRoot() : NodeAt(owners[i]),
                 watched.caption_lengths[i]);
    }
    for (const PlannedEdge& edge : watched.plan.edges) {
        Node from = NodeAt(edge.from);
        from.LinkTo(NodeAt(edge.to));
    }
    graph_->RecalculateLayout(nullptr);
}

void Subject::Apply(const Change& change) {
    Node node = NodeAt(change.node);
    switch (change.kind) {
        case ChangeKind::kFold:
        case ChangeKind::kUnfold:
            fold(node, change.kind == ChangeKind::kUnfold);
            break;
        case ChangeKind::kAddLeaf: {
            Node leaf = add_node(node.GetOwner(), change.caption_length);
            if (change.to_leaf) {
                node.LinkTo(leaf);
            } else {
                leaf.LinkTo(node);
            }
            ask_for_update(node, leaf);
            break;
        }
        case ChangeKind::kAddEdge:
            node.LinkTo(NodeAt(change.other));
            ask_for_update(node, NodeAt(change.other));
            break;
        case ChangeKind::kGrow: {
            nodeline::size<double>& box = own_sizes_[static_cast<std::size_t>(change.node)];
            box = {box.cx + change.growth.cx, box.cy + change.growth.cy};
            node.ResizeSelf();
            break;
        }
    }
    if (keeper_.afresh) {
        Node root = graph_->GetRoot();
        root.store()->clear_update_list();
        root.store()->clear_resize_list();
        root.MakeLayout();
    }
    graph_->RecalculateLayout(nullptr);
}

int Subject::NumberOf(const Node& node) { return node.GetID() == 0 ? kInRoot : node.GetTag(); }

bool Subject::IsVisible(int number) const {
    for (Node node = NodeAt(number); node.GetID() != 0; node = node.GetOwner()) {
        if (IsFlagSet(node, NodeHidden)) return false;
    }
    return true;
}

rectangle<double> Subject::BoxOf(int number) const {
    return MakeDRect(NodeAt(number).GetPosition(), NodeAt(number).GetSize());
}

Node Subject::add_node(Node owner, int caption_length) {
    Node node = owner.AddNode();
    node.SetTag(node_count());
    nodes_.push_back(node);
    own_sizes_.push_back(box_for(caption_length));
    return node;
}

// A fold asks for an update of the owner alone. Children that stand elsewhere are in the update too
// if the root is asked for first, which then stands for all others.
void Subject::fold(Node node, bool unfold) {
    for (const Node& child : node.GetChildren()) {
        if (child.GetOwner() != node.GetOwner()) ask_for_update(node, child);
    }
    if (unfold) {
        Unfold(node, FoldChildren);
    } else {
        Fold(node, FoldChildren);
    }
}

void Subject::ask_for_update(const Node& a, const Node& b) {
    Node owner = a.GetOwner();
    if (b.GetOwner() != owner) owner = graph_->GetRoot();
    owner.UpdateLayout();
}

}  // namespace nodeline::bench
