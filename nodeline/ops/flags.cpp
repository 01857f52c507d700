#include <nodeline/ops/graph_ops.h>

#include <vector>

namespace nodeline {

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
    ForEachNodeIn(root, ProcessOutgoingEdges{_mark_edge_drawn}, false, false);
    _mark_node_drawn(root, true);
}

}  // namespace nodeline
