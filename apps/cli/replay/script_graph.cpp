#include <apps/cli/replay/script_graph.h>

#include <apps/cli/replay/words.h>
#include <nodeline/layout/inc_layout.h>
#include <nodeline/ops/graph_ops.h>

#include <set>
#include <string>

namespace nodeline::replay {

namespace {

constexpr nodeline::size<double> kRootSize{10.0, 10.0};

template <class Item>
Item& item_at(std::vector<Item>& items, int place) {
    return items[static_cast<std::size_t>(place)];
}

// Enters a new number, and gives the place that its item will have.
int enter(std::map<std::int64_t, int>& places, std::size_t place, const char* kind,
          std::int64_t number) {
    if (number < 1 || !places.emplace(number, static_cast<int>(place)).second) {
        const std::string name = kind + std::to_string(number);
        throw ScriptFault(number < 1 ? name + " cannot be given" : name + " exists already");
    }
    return static_cast<int>(place);
}

int find(const std::map<std::int64_t, int>& places, const char* kind, std::int64_t number) {
    const auto found = places.find(number);
    if (found == places.end()) {
        throw ScriptFault(kind + std::to_string(number) + " does not exist");
    }
    return found->second;
}

}  // namespace

class ScriptGraph::MeasuringNodeHandler : public INodeHandler {
public:
    explicit MeasuringNodeHandler(ScriptGraph& script) : script_(script) {}

    void Draw(Node, IPainter*) override {}
    nodeline::size<double> GetSize(Node node) override {
        return item_at(script_.nodes_, node.GetTag()).size;
    }
    NodeFrame GetSize(Node, nodeline::size<double> inner) override { return {inner, {0.0, 0.0}}; }

private:
    ScriptGraph& script_;
};

class ScriptGraph::MeasuringEdgeHandler : public IEdgeHandler {
public:
    explicit MeasuringEdgeHandler(ScriptGraph& script) : script_(script) {}

    void Draw(Edge, IPainter*) override {}
    [[nodiscard]] double GetWidth(Edge edge) const override {
        return item_at(script_.edges_, edge.GetTag()).width;
    }

private:
    ScriptGraph& script_;
};

ScriptGraph::ScriptGraph()
    : measuring_nodes_(new MeasuringNodeHandler(*this), true),
      measuring_edges_(new MeasuringEdgeHandler(*this), true),
      graph_(new Graph, true) {
    nodes_.push_back({0, graph_->GetRoot(), kRootSize});
    node_places_.emplace(0, 0);
    UseMeasuringHandlers();
    graph_->SetDefaultLayout(IncLayout::Create());
}

ScriptGraph::~ScriptGraph() { take_apart_detached(); }

void ScriptGraph::UseMeasuringHandlers() {
    graph_->SetDefaultNodeHandler(measuring_nodes_);
    graph_->SetDefaultEdgeHandler(measuring_edges_);
}

void ScriptGraph::AddNode(std::int64_t number, std::int64_t owner, nodeline::size<double> size) {
    Node& above = GetNode(owner).node;
    const int place = enter(node_places_, nodes_.size(), "node ", number);
    Node node = above.AddNode();
    node.SetTag(place);
    nodes_.push_back({number, node, size});
}

void ScriptGraph::AddEdge(std::int64_t number, std::int64_t from, std::int64_t to, double width) {
    Node& source = GetNode(from).node;
    Node& target = GetNode(to).node;
    if (from == 0 || to == 0) throw ScriptFault("the root has no edges");
    const int place = enter(edge_places_, edges_.size(), "edge ", number);
    Edge edge = source.LinkTo(target);
    edge.SetTag(place);
    edges_.push_back({number, edge, width});
}

void ScriptGraph::RemoveEdge(std::int64_t number) {
    GetEdge(number).edge.Remove();
    forget_edge(number);
}

void ScriptGraph::RemoveNode(std::int64_t number) {
    if (number == 0) throw ScriptFault("the root cannot be removed");
    Node top = GetNode(number).node;
    std::vector<std::int64_t> nodes;
    std::set<std::int64_t> edges;
    const auto collect = [&](const Node& node) {
        nodes.push_back(NumberOf(node));
        for (const Edge& edge : node.GetEdgesOut()) edges.insert(NumberOf(edge));
        for (const Edge& edge : node.GetEdgesIn()) edges.insert(NumberOf(edge));
    };
    ForEachNodeIn(top, collect, false, true);
    for (const std::int64_t edge : edges) RemoveEdge(edge);
    top.Remove();
    for (const std::int64_t node : nodes) {
        const auto place = node_places_.find(node);
        item_at(nodes_, place->second).node = Node();
        node_places_.erase(place);
    }
}

void ScriptGraph::forget_edge(std::int64_t number) {
    const auto place = edge_places_.find(number);
    item_at(edges_, place->second).edge = Edge();
    edge_places_.erase(place);
}

// What owns itself hangs under no root, so the graph does not take it apart.
void ScriptGraph::take_apart_detached() {
    for (const Node& node : ListNodes()) {
        if (node && node.GetOwner() && node.GetOwner() == node) RemoveNode(NumberOf(node));
    }
}

ScriptNode& ScriptGraph::GetNode(std::int64_t number) {
    return item_at(nodes_, find(node_places_, "node ", number));
}

ScriptEdge& ScriptGraph::GetEdge(std::int64_t number) {
    return item_at(edges_, find(edge_places_, "edge ", number));
}

std::int64_t ScriptGraph::NumberOf(const Node& node) const {
    return nodes_[static_cast<std::size_t>(node.GetTag())].number;
}

std::int64_t ScriptGraph::NumberOf(const Edge& edge) const {
    return edges_[static_cast<std::size_t>(edge.GetTag())].number;
}

std::vector<Node> ScriptGraph::ListNodes() const {
    std::vector<Node> nodes;
    nodes.reserve(node_places_.size());
    for (const auto& [number, place] : node_places_) {
        nodes.push_back(nodes_[static_cast<std::size_t>(place)].node);
    }
    return nodes;
}

std::vector<Edge> ScriptGraph::ListEdges() const {
    std::vector<Edge> edges;
    edges.reserve(edge_places_.size());
    for (const auto& [number, place] : edge_places_) {
        edges.push_back(edges_[static_cast<std::size_t>(place)].edge);
    }
    return edges;
}

}  // namespace nodeline::replay
