#include <apps/cli/replay/dump.h>

#include <nodeline/ops/graph_ops.h>
#include <paintcore/number_text.h>

#include <algorithm>
#include <unordered_map>
#include <vector>

namespace nodeline::replay {

namespace {

// How deep nodes stand. A node that owns itself is a top of its own, as the root is.
class Depths {
public:
    explicit Depths(const std::vector<Node>& nodes) {
        for (const Node& node : nodes) {
            if (IsRoot(node) || node.GetOwner() == node) measure(node);
        }
    }

    [[nodiscard]] int Of(const Node& node) const { return depths_.at(node.GetID()); }

private:
    void measure(const Node& top) {
        depths_[top.GetID()] = 0;
        const auto set_depth = [this](const Node& node) {
            depths_[node.GetID()] = depths_.at(node.GetOwner().GetID()) + 1;
        };
        ForEachNodeIn(top, set_depth, false, false);
    }

    std::unordered_map<int, int> depths_;
};

// The owners that an edge may run through: up from the owner of its source to the lowest node that
// owns both ends, then down to the owner of its target.
std::vector<Node> owners_along(const Edge& edge, const Depths& depths) {
    std::vector<Node> up;
    std::vector<Node> down;
    Node from = edge.From().GetOwner();
    Node to = edge.To().GetOwner();
    while (from != to) {
        const int from_depth = depths.Of(from);
        const int to_depth = depths.Of(to);
        // Ends that no node owns both: one of them hangs under a top of its own.
        if (from_depth == 0 && to_depth == 0) {
            down.push_back(to);
            break;
        }
        if (from_depth >= to_depth) {
            up.push_back(from);
            from = from.GetOwner();
        } else {
            down.push_back(to);
            to = to.GetOwner();
        }
    }
    up.push_back(from);
    up.insert(up.end(), down.rbegin(), down.rend());
    return up;
}

void append_node(std::string& out, std::int64_t number, const Node& node) {
    const point<double> position = node.GetPosition();
    const nodeline::size<double> size = node.GetSize();
    out += "node " + std::to_string(number);
    for (const double value : {position.x, position.y, size.cx, size.cy}) AppendValue(out, value);
    out += " " + std::to_string(node.GetCondition()) + "\n";
}

void append_bends(std::string& out, const NodeSet& bends) {
    for (const Node& bend : bends) {
        const point<double> position = bend.GetPosition();
        AppendValue(out, position.x);
        AppendValue(out, position.y);
    }
    out += '\n';
}

}  // namespace

void AppendValue(std::string& out, double value) {
    out += ' ';
    paintcore::AppendNumber(out, value == 0.0 ? 0.0 : value);
}

std::string Dump(const ScriptGraph& script) {
    std::string out;
    const std::vector<Node> nodes = script.ListNodes();
    for (const Node& node : nodes) append_node(out, script.NumberOf(node), node);
    const Depths depths(nodes);
    for (const Edge& edge : script.ListEdges()) {
        const std::string number = std::to_string(script.NumberOf(edge));
        for (const Node& owner : owners_along(edge, depths)) {
            const NodeSet bends = edge.GetBreakNodesIn(owner);
            if (bends.GetCount() == 0) continue;
            out += "chain " + number + " " + std::to_string(script.NumberOf(owner));
            append_bends(out, bends);
        }
        out += "route " + number;
        append_bends(out, edge.GetBreakNodes());
    }
    out += "end\n";
    return out;
}

}  // namespace nodeline::replay
