#include <nodeline/model/internal/attachment.h>
#include <nodeline/model/internal/revision.h>
#include <nodeline/ops/graph_ops.h>

#include <cstdint>
#include <typeinfo>
#include <vector>

namespace nodeline {

namespace {

// What the drawn bits of a graph were computed from. It stays with the graph's store.
class DrawnMarks : public Countable {
public:
    std::uint64_t revision = 0;
};

// Null for a store that is not the library's own.
DrawnMarks* marks_of(const Node& root) {
    static const graph_ptr<Countable> token(new DrawnMarks);
    return internal::attached_to<DrawnMarks>(root.store(), token);
}

// The first sweep: marks the edges that leave a node. Records of an application's own count no
// changes, so what was computed from them is never known to be right.
struct MarkEdgesOut {
    bool* stock;

    void operator()(const Node& node) const {
        const INodeImpl& record = *node.record();
        if (typeid(record) != typeid(DefaultNodeImpl)) *stock = false;
        for (const Edge& edge : node.GetEdgesOut()) {
            const IEdgeImpl& edge_record = *edge.record();
            if (typeid(edge_record) != typeid(DefaultEdgeImpl)) *stock = false;
            _mark_edge_drawn(edge);
        }
    }
};

}  // namespace

void SetFlag(Node node, int flag, bool on) {
    const int condition = node.GetCondition();
    node.SetCondition(on ? condition | flag : condition & ~flag);
}

void SetFlag(Edge edge, int flag, bool on) {
    const int condition = edge.GetCondition();
    edge.SetCondition(on ? condition | flag : condition & ~flag);
}

bool IsFlagSet(Node node, int flag) { return (flag & node.GetCondition()) != 0; }
bool IsFlagSet(Edge edge, int flag) { return (flag & edge.GetCondition()) != 0; }

void Select(Node node) { SetFlag(node, NodeSelected, true); }
void Unselect(Node node) { SetFlag(node, NodeSelected, false); }
void MarkOld(Node node) { SetFlag(node, NodeNew, false); }

void Hide(Node node) { SetFlag(node, NodeHidden, true); }

void Show(Node node) {
    if (IsFlagSet(node, NodeHidden)) SetFlag(node, NodeNew, true);
    SetFlag(node, NodeHidden, false);
}

void _mark_edge_drawn(Edge edge) { SetFlag(edge, EdgeDrawn, true); }
void _mark_edge_nondrawn(Edge edge) { SetFlag(edge, EdgeDrawn, false); }

void _mark_node_drawn(Node node, bool visible) {
    struct Open {
        Node node;
        bool visible;
    };
    std::vector<Open> open{{node, visible}};
    while (!open.empty()) {
        Open next = open.back();
        open.pop_back();
        const bool drawn = next.visible && !IsFlagSet(next.node, NodeHidden);
        SetFlag(next.node, NodeDrawn, drawn);
        if (!drawn) {
            for (const Edge& edge : next.node.GetEdgesIn()) _mark_edge_nondrawn(edge);
            for (const Edge& edge : next.node.GetEdgesOut()) _mark_edge_nondrawn(edge);
        }
        const NodeSet owned = next.node.GetOwned();
        for (int i = owned.GetCount() - 1; i >= 0; --i) {
            Node child = owned.GetItem(i);
            if (child.record().get() != next.node.record().get()) open.push_back({child, drawn});
        }
    }
}

void MarkDrawnIn(graph_ptr2<Graph> graph) {
    if (!graph) return;
    const Node root = graph->GetRoot();
    DrawnMarks* const marks = marks_of(root);
    const std::uint64_t revision = internal::drawn_revision;
    if (marks != nullptr && marks->revision == revision) return;
    const INodeImpl& record = *root.record();
    bool stock = typeid(record) == typeid(DefaultRootNodeImpl);
    ForEachNodeIn(root, MarkEdgesOut{&stock}, false, false);
    _mark_node_drawn(root, true);
    if (marks != nullptr) marks->revision = stock ? internal::drawn_revision.load() : 0;
}

}  // namespace nodeline
