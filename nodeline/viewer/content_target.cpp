#include <nodeline/viewer/content.h>

#include <vector>

namespace nodeline {
namespace {

bool Holds(const Node& node, const point<double>& p) {
    const rectangle<double> r = MakeDRect(node.GetPosition(), node.GetSize());
    return r.left <= p.x && p.x <= r.right && r.top <= p.y && p.y <= r.bottom;
}

// A node or the innermost drawn one of its owners; empty where that is the root.
Node DrawnOwnerOf(Node node) {
    while (!node.IsDummy() && !IsFlagSet(node, NodeDrawn)) {
        const Node owner = node.GetOwner();
        if (owner == node) return {};
        node = owner;
    }
    return node.IsDummy() ? Node() : node;
}

}  // namespace

// A hit test leaves out the owners of what it finds, also where that is not drawn.
Node CContent::GetNodeAt(point<int> pixel) const {
    const NodeSet met = HitNodeTest(pixel.x, pixel.y, pixel.x, pixel.y);
    if (!pick_drawn_) return met.GetCount() > 0 ? met.GetItem(0) : graph_->GetRoot();
    MarkDrawnIn(graph_);
    const point<double> p = ConvertP2L(pixel);
    std::vector<Node> seen;
    for (const Node& node : met) {
        const Node drawn = DrawnOwnerOf(node);
        if (drawn && Holds(drawn, p)) seen.push_back(drawn);
    }
    SortByOwnership(seen);
    return seen.empty() ? graph_->GetRoot() : seen.back();
}

Edge CContent::GetEdgeAt(point<int> pixel) const {
    const EdgeSet met = HitEdgeTest(pixel.x, pixel.y, pixel.x, pixel.y);
    if (!pick_drawn_) return met.GetCount() > 0 ? met.GetItem(0) : Edge();
    MarkDrawnIn(graph_);
    for (int i = met.GetCount() - 1; i >= 0; --i) {
        if (IsFlagSet(met.GetItem(i), EdgeDrawn)) return met.GetItem(i);
    }
    return {};
}

}  // namespace nodeline
