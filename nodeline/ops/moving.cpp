#include <nodeline/ops/graph_ops.h>

#include <nodeline/model/break_nodes.h>
#include <nodeline/model/internal/record_access.h>
#include <nodeline/ops/internal/absolute.h>
#include <nodeline/ops/internal/owner_edges.h>

#include <vector>

namespace nodeline {

namespace {

// The nodes of a subtree that own others, owners first; the root of the subtree comes first.
std::vector<graph_ptr<INodeImpl>> owners_in(const graph_ptr<INodeImpl>& top) {
    std::vector<graph_ptr<INodeImpl>> owners;
    if (internal::owned_of(*top).size() > 0) owners.push_back(top);
    for (std::size_t i = 0; i < owners.size(); ++i) {
        const graph_ptr<INodeImpl> owner = owners[i];
        const auto owned = internal::owned_of(*owner);
        for (int k = 0; k < owned.size(); ++k) {
            if (owned[k].get() != owner.get() && internal::owned_of(*owned[k]).size() > 0) {
                owners.push_back(owned[k]);
            }
        }
    }
    return owners;
}

void shift_run(IGraphVis& store, const internal::OwnerEdges& edges, internal::OwnerEdges::Run run,
               int owner_id, const point<double>& delta) {
    for (const auto& entry : run) {
        IEdgeImpl* edge = edges.edges[static_cast<std::size_t>(entry.edge)];
        const graph_ptr<IEdgeVis> vis = store.get_edge_vis(graph_ptr<IEdgeImpl>(edge));
        auto* stock = dynamic_cast<DefaultEdgeVis*>(vis.get());
        if (stock == nullptr) continue;
        if (BreakChain* chain = stock->AskChain(owner_id)) chain->Shift(delta);
    }
}

void shift_owned(const Node& owner, const point<double>& delta) {
    const auto owned = internal::owned_of(*owner.record());
    for (int i = 0; i < owned.size(); ++i) _shift(Node(owner.store(), owned[i]), delta);
}

// Moves all that an owner owns, with the bends of their edges inside the owner, by one `delta`.
// The neighbourhoods of the nodes are collected together, not node by node.
void shift_contents(const Node& owner, const point<double>& delta) {
    using internal::OwnerEdges;
    shift_owned(owner, delta);
    const graph_ptr<IGraphVis>& store = owner.store();
    OwnerEdges edges;
    edges.Collect(*owner.record(), false);
    for (std::int32_t i = 0; i < edges.node_count(); ++i) {
        for (const auto kind :
             {OwnerEdges::kChildren, OwnerEdges::kEdgesOut, OwnerEdges::kEdgesIn}) {
            shift_run(*store, edges, edges.Of(kind, i), owner.GetID(), delta);
        }
    }
}

bool is_zero(const point<double>& p) { return p == point<double>{0.0, 0.0}; }

// Owners first: each node is moved by the position that its owner has in the picture.
template <class ShiftContents>
void shift_down(const Node& node, const point<double>& delta, ShiftContents shift) {
    _shift(node, delta);
    for (const auto& record : owners_in(node.record())) {
        const Node owner(node.store(), record);
        shift(owner, delta + owner.GetPosition());
    }
}

// Contents first: every node is moved while its owner is still where the picture has it.
template <class ShiftContents>
void unshift_up(const Node& node, ShiftContents shift) {
    const auto owners = owners_in(node.record());
    for (auto it = owners.rbegin(); it != owners.rend(); ++it) {
        const Node owner(node.store(), *it);
        shift(owner, -owner.GetPosition());
    }
}

void shift_contents_unless_zero(const Node& owner, const point<double>& delta) {
    is_zero(delta) ? shift_owned(owner, delta) : shift_contents(owner, delta);
}

}  // namespace

namespace internal {

void make_absolute(const Node& node) {
    if (node) shift_down(node, {0.0, 0.0}, shift_contents_unless_zero);
}

void make_relative(const Node& node) {
    if (node) unshift_up(node, shift_contents_unless_zero);
}

}  // namespace internal

void _shift(Node node, const point<double>& delta) { node.SetPosition(node.GetPosition() + delta); }

void _break_nodes_shift(graph_ptr2<IGraphSet<NodeEdgePair>> pairs, const point<double>& delta,
                        Node owner) {
    if (!pairs) return;
    for (const NodeEdgePair& pair : *pairs) {
        for (const Node& bend : pair.edge.GetBreakNodesIn(owner)) _shift(bend, delta);
    }
}

void ShiftWithEdges(Node node, point<double> delta) {
    _shift(node, delta);
    const Node owner = node.GetOwner();
    if (!owner) return;
    _break_nodes_shift(GetChildrenEx(node), delta, owner);
    _break_nodes_shift(GetEdgesOutEx(node), delta, owner);
    _break_nodes_shift(GetEdgesInEx(node), delta, owner);
}

void _shift_position(Node node, point<double> delta) {
    const Node owner = node.GetOwner();
    ShiftWithEdges(node, owner ? delta + owner.GetPosition() : delta);
}

void ShiftPosition(Node node, point<double> delta) {
    if (node) shift_down(node, delta, shift_contents);
}

void ShiftPosition(Node node, double dx, double dy) { ShiftPosition(node, point<double>{dx, dy}); }

void UnshiftWithEdges(Node node) {
    if (const Node owner = node.GetOwner()) ShiftWithEdges(node, -owner.GetPosition());
}

void UnshiftPosition(Node node) {
    if (node) unshift_up(node, shift_contents);
}

void MoveNode(Node node, double x, double y) {
    node.SetPosition(x, y);
    const size<double> size = node.GetSize();
    for (const Edge& edge : node.GetEdgesOut()) {
        const NodeSet bends = edge.GetBreakNodes();
        if (bends.GetCount() == 0) continue;
        Node(bends.GetItem(0)).SetPosition(x + size.cx, y + size.cy * 0.5);
    }
    for (const Edge& edge : node.GetEdgesIn()) {
        const NodeSet bends = edge.GetBreakNodes();
        if (bends.GetCount() == 0) continue;
        Node(bends.GetItem(bends.GetCount() - 1)).SetPosition(x, y + size.cy * 0.5);
    }
}

}  // namespace nodeline
