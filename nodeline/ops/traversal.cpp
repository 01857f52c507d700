#include <nodeline/ops/graph_ops.h>

#include <nodeline/ops/internal/ex_collectors.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace nodeline {

namespace {

using Pairs = graph_ptr2<GraphSet<NodeEdgePair>>;
using EdgeEnd = Node (Edge::*)() const;
using NodeEdges = EdgeSet (Node::*)() const;

template <class Collector>
graph_ptr2<IGraphSet<NodeEdgePair>> collect_ex(const Node& node, EdgeEnd end, NodeEdges edges) {
    Pairs result(new GraphSet<NodeEdgePair>, true);
    if (node && !node.IsDummy()) {
        ForEachNodeIn(node, Collector{result, node, end, edges}, true, true);
        result->Sort();
    }
    return checked_upcast<IGraphSet<NodeEdgePair>>(result);
}

}  // namespace

graph_ptr2<IGraphSet<NodeEdgePair>> GetParentsEx(Node node) {
    return collect_ex<GetNodeEdgeEx>(node, &Edge::From, &Node::GetEdgesIn);
}

graph_ptr2<IGraphSet<NodeEdgePair>> GetChildrenEx(Node node) {
    return collect_ex<GetNodeEdgeEx>(node, &Edge::To, &Node::GetEdgesOut);
}

graph_ptr2<IGraphSet<NodeEdgePair>> GetEdgesInEx(Node node) {
    return collect_ex<GetInOutEx>(node, &Edge::From, &Node::GetEdgesIn);
}

graph_ptr2<IGraphSet<NodeEdgePair>> GetEdgesOutEx(Node node) {
    return collect_ex<GetInOutEx>(node, &Edge::To, &Node::GetEdgesOut);
}

int CalcDegreeEx(graph_ptr2<IGraphSet<NodeEdgePair>> set) {
    if (!set || set->GetCount() == 0) return 0;
    int count = 1;
    int current = set->GetItem(0).node.GetID();
    for (int i = 1; i < set->GetCount(); ++i) {
        const int id = set->GetItem(i).node.GetID();
        if (id == current) continue;
        ++count;
        current = id;
    }
    return count;
}

int InDegree(Node node) { return node.GetParents().GetCount(); }
int OutDegree(Node node) { return node.GetChildren().GetCount(); }

bool NodeOnEdge(Node node, Edge edge) {
    if (!node.IsDummy()) return edge.From() == node || edge.To() == node;
    const EdgeSet edges = node.GetEdgesOut();
    return edges.GetCount() > 0 && edges.GetItem(0) == edge;
}

bool ExistEdgeBetweenNodes(Node a, Node b) {
    for (const Edge& edge : a.GetEdgesOut()) {
        if (edge.To() == b) return true;
    }
    return false;
}

bool IsRoot(Node node) { return node.GetID() == 0; }

Node GetRoot(Node node) {
    if (node && !IsRoot(node) && node.IsDummy()) {
        const EdgeSet edges = node.GetEdgesOut();
        if (edges.GetCount() > 0) {
            if (const Node from = edges.GetItem(0).From(); from && from != node) node = from;
        }
    }
    while (node && !IsRoot(node)) {
        const Node owner = node.GetOwner();
        // A node that was removed, or owns itself, has no root.
        if (!owner || owner == node) return Node();
        node = owner;
    }
    return node;
}

bool NodeByOwnershipComparator(Node a, Node b) {
    const bool a_is_dummy = a.IsDummy();
    const bool b_is_dummy = b.IsDummy();
    if (a_is_dummy && b_is_dummy) return a.GetID() < b.GetID();
    if (a_is_dummy || b_is_dummy) return b_is_dummy;
    const auto owns = [](const Node& owner, const Node& node) {
        for (Node p = node.GetOwner(); p; p = p.GetOwner()) {
            if (p == owner) return true;
            if (IsRoot(p) || p.GetOwner() == p) return false;
        }
        return false;
    };
    if (owns(a, b)) return true;
    if (owns(b, a)) return false;
    return a.GetID() < b.GetID();
}

void SortByOwnership(std::vector<Node>& nodes) {
    const auto by_id = [](const Node& a, const Node& b) {
        if (a.IsDummy() != b.IsDummy()) return b.IsDummy();
        return a.GetID() < b.GetID();
    };
    std::stable_sort(nodes.begin(), nodes.end(), by_id);
    std::vector<Node> sorted;
    sorted.reserve(nodes.size());
    std::vector<bool> is_placed(nodes.size(), false);
    std::vector<std::size_t> waiting;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        if (is_placed[i]) continue;
        waiting.assign(1, i);
        Node below = nodes[i];
        for (Node p = below.GetOwner(); p && !p.IsDummy() && p != below; p = p.GetOwner()) {
            below = p;
            const auto [first, last] = std::equal_range(nodes.begin(), nodes.end(), p, by_id);
            for (auto it = first; it != last; ++it) {
                waiting.push_back(static_cast<std::size_t>(it - nodes.begin()));
            }
        }
        for (; !waiting.empty(); waiting.pop_back()) {
            if (is_placed[waiting.back()]) continue;
            is_placed[waiting.back()] = true;
            sorted.push_back(nodes[waiting.back()]);
        }
    }
    nodes = std::move(sorted);
}

rectangle<double> MakeDRect(point<double> p, size<double> s) {
    return {p.x, p.y, s.cx + p.x, s.cy + p.y};
}

}  // namespace nodeline
