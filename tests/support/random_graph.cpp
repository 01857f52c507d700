#include <support/random_graph.h>

#include <algorithm>

namespace nodeline::test {

namespace {

// A node and its owners up to the root, itself first.
std::vector<Node> with_owners(Node node) {
    std::vector<Node> path;
    for (; node; node = node.GetOwner()) path.push_back(node);
    return path;
}

}  // namespace

RandomGraph::RandomGraph(std::uint64_t seed, const RandomGraphPlan& plan)
    : graph(new Graph(), true), root(graph->GetRoot()) {
    Random random(seed);
    for (int i = 0; i < plan.nodes; ++i) {
        Node owner = nodes.empty() || random.OneIn(3) ? root : random.Of(nodes);
        while (depth_of(owner) >= plan.depth) owner = owner.GetOwner();
        nodes.push_back(owner.AddNode());
    }
    for (int i = 0; i < plan.edges && !nodes.empty(); ++i) {
        Node from = random.Of(nodes);
        edges.push_back(from.LinkTo(far_end(random, from)));
    }
    for (int i = 0; i < plan.moves && !nodes.empty(); ++i) {
        Node node = random.Of(nodes);
        const Node owner = random.OneIn(4) ? root : random.Of(nodes);
        if (owner != node) node.SetOwner(owner);
    }
    for (int i = 0; i < plan.removals && !nodes.empty(); ++i) remove_one(random);
}

int RandomGraph::depth_of(Node node) const {
    return static_cast<int>(with_owners(node).size()) - 1;
}

Node RandomGraph::far_end(Random& random, const Node& from) const {
    if (random.OneIn(8)) return from;
    if (!edges.empty() && random.OneIn(6)) return edges.back().To();
    if (random.OneIn(5)) {
        std::vector<Node> owners = with_owners(from);
        owners.pop_back();
        return random.Of(owners);
    }
    return random.Of(nodes);
}

// Half of the nodes go properly, after the edges that leave them; the others leave edges behind
// that start at a node that is gone.
void RandomGraph::remove_one(Random& random) {
    Node node = random.Of(nodes);
    if (random.OneIn(2)) {
        for (Edge edge : edges) {
            const std::vector<Node> owners = with_owners(edge.From());
            if (std::find(owners.begin(), owners.end(), node) != owners.end()) edge.Remove();
        }
        forget_removed();
    }
    node.Remove();
    forget_removed();
}

void RandomGraph::forget_removed() {
    nodes.erase(std::remove_if(nodes.begin(), nodes.end(), [](Node& n) { return n.IsDummy(); }),
                nodes.end());
    edges.erase(std::remove_if(edges.begin(), edges.end(), [](const Edge& e) { return !e.From(); }),
                edges.end());
}

std::vector<Node> RandomGraph::AllNodes() const {
    std::vector<Node> all = nodes;
    all.push_back(root);
    return all;
}

void RandomGraph::Place(Random& random) {
    for (Node node : AllNodes()) {
        node.SetPosition(random.Real(-500.0, 500.0), random.Real(-500.0, 500.0));
        node.SetSize({random.Real(0.0, 300.0), random.Real(0.0, 200.0)});
    }
    for (Edge edge : edges) {
        for (const Node& end : {edge.From(), edge.To()}) {
            for (const Node& owner : with_owners(end.GetOwner())) {
                if (random.OneIn(3)) continue;
                edge.AddBreakNodesIn(owner, random.Between(1, 12));
            }
        }
        const NodeSet bends = edge.GetBreakNodes();
        for (Node bend : bends) {
            bend.SetPosition(random.Real(-500.0, 500.0), random.Real(-500.0, 500.0));
        }
    }
}

}  // namespace nodeline::test
