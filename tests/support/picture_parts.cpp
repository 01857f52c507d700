#include <nodeline/ops/graph_ops.h>
#include <support/picture_parts.h>

#include <algorithm>

namespace nodeline::test {

Box BoxOf(const Node& node) {
    const point<double> p = node.GetPosition();
    const size<double> s = node.GetSize();
    return {p.x, p.y, p.x + s.cx, p.y + s.cy};
}

std::vector<Node> PathOf(Node node) {
    std::vector<Node> path;
    while (node) {
        path.push_back(node);
        const Node owner = node.GetOwner();
        if (owner && owner == node) break;
        node = owner;
    }
    return path;
}

bool IsHidden(const Node& node) { return IsFlagSet(node, NodeHidden); }

bool IsShown(const Node& node) {
    const std::vector<Node> path = PathOf(node);
    return IsRoot(path.back()) && std::none_of(path.begin(), path.end(), IsHidden);
}

std::vector<Node> ShownIn(const Node& owner) {
    std::vector<Node> shown;
    for (const Node& child : owner.GetOwned()) {
        if (child != owner && !IsHidden(child)) shown.push_back(child);
    }
    return shown;
}

bool Holds(const std::vector<Node>& nodes, const Node& node) {
    return std::find(nodes.begin(), nodes.end(), node) != nodes.end();
}

PictureParts::PictureParts(const graph_ptr2<Graph>& graph) {
    std::vector<Node> open{graph->GetRoot()};
    while (!open.empty()) {
        const Node owner = open.back();
        open.pop_back();
        const std::vector<Node> shown = ShownIn(owner);
        if (!shown.empty()) owners.push_back(owner);
        nodes.insert(nodes.end(), shown.begin(), shown.end());
        open.insert(open.end(), shown.begin(), shown.end());
    }
    for (const Node& node : nodes) {
        for (const Edge& edge : node.GetEdgesOut()) {
            if (IsShown(edge.To())) edges.push_back(edge);
        }
    }
}

}  // namespace nodeline::test
