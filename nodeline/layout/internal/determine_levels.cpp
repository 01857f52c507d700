#include <nodeline/layout/internal/steps.h>

#include <algorithm>
#include <climits>
#include <cstdint>

namespace nodeline::internal {

namespace {

// Whether an entry is the first of a run of parallel edges, which alone counts for a degree, and
// leads to another node that takes part.
class FirstOfParallel {
public:
    FirstOfParallel(const LayoutRun& run, Vertex self) : run_(run), self_(self) {}

    bool operator()(const OwnerEdges::Entry& entry) {
        const bool first = entry.node != previous_;
        previous_ = entry.node;
        return first && entry.node != self_ && !run_.skips(entry.node);
    }

private:
    const LayoutRun& run_;
    Vertex self_;
    Vertex previous_ = kNoVertex;
};

// The number of parents in the graph as it stands after reversal.
int in_degree(const LayoutRun& run, Vertex v) {
    int degree = 0;
    FirstOfParallel counts_parent(run, v);
    for (const auto& entry : run.neighbours(OwnerEdges::kParents, v)) {
        if (counts_parent(entry) && !at(run.directions, entry.edge).reversed) ++degree;
    }
    FirstOfParallel counts_child(run, v);
    for (const auto& entry : run.neighbours(OwnerEdges::kChildren, v)) {
        if (counts_child(entry) && at(run.directions, entry.edge).reversed) ++degree;
    }
    return degree;
}

// Calls `f` for every node that follows `v` in the acyclic direction.
template <class F>
void for_each_successor(const LayoutRun& run, Vertex v, F f) {
    for (const auto& entry : run.neighbours(OwnerEdges::kChildren, v)) {
        if (entry.node == v || run.skips(entry.node)) continue;
        if (!at(run.directions, entry.edge).reversed) f(entry.node);
    }
    for (const auto& entry : run.neighbours(OwnerEdges::kParents, v)) {
        if (entry.node == v || run.skips(entry.node)) continue;
        if (at(run.directions, entry.edge).reversed) f(entry.node);
    }
}

// Nodes by rising number: every direction leads from a smaller to a greater one.
std::vector<Vertex> by_number(const LayoutRun& run, const std::vector<Vertex>& nodes) {
    std::vector<Vertex> starts(nodes.size() + 2, 0);
    const auto slot = [&](Vertex v) {
        const int number = std::max(0, at(run.number, v));
        return std::min(static_cast<std::size_t>(number), nodes.size());
    };
    for (const Vertex v : nodes) ++starts[slot(v) + 1];
    for (std::size_t i = 1; i < starts.size(); ++i) starts[i] += starts[i - 1];
    std::vector<Vertex> sorted(nodes.size());
    for (const Vertex v : nodes) sorted[static_cast<std::size_t>(starts[slot(v)]++)] = v;
    return sorted;
}

// Pulls start nodes towards their successors, so that a source with a short edge does not hang far
// to the left. Only successors bound a start node, so nothing else moves.
void tighten_start_nodes(LayoutRun& run, const std::vector<Vertex>& starts) {
    for (const Vertex s : starts) {
        int nearest = INT_MAX;
        for_each_successor(
            run, s, [&](Vertex next) { nearest = std::min(nearest, at(run.infos, next).level); });
        if (nearest != INT_MAX && nearest > 2) at(run.infos, s).level = nearest - 1;
    }
}

}  // namespace

std::vector<Vertex> all_nodes(const LayoutRun& run) {
    std::vector<Vertex> nodes(static_cast<std::size_t>(run.node_count()));
    for (std::size_t i = 0; i < nodes.size(); ++i) nodes[i] = static_cast<Vertex>(i);
    return nodes;
}

std::vector<std::vector<Vertex>> find_connectivity_components(LayoutRun& run,
                                                              const std::vector<Vertex>& nodes) {
    struct Frame {
        Vertex node;
        std::size_t next;
    };
    std::vector<char> visited(static_cast<std::size_t>(run.node_count()), 0);
    std::vector<std::vector<Vertex>> components;
    std::vector<Frame> path;
    const auto enter = [&](Vertex v) {
        at(visited, v) = 1;
        components.back().push_back(v);
        path.push_back({v, 0});
    };
    for (const Vertex start : nodes) {
        if (run.skips(start) || at(visited, start) != 0) continue;
        components.emplace_back();
        enter(start);
        while (!path.empty()) {
            Frame& frame = path.back();
            const auto children = run.neighbours(OwnerEdges::kChildren, frame.node);
            const auto parents = run.neighbours(OwnerEdges::kParents, frame.node);
            if (frame.next == children.size() + parents.size()) {
                path.pop_back();
                continue;
            }
            const std::size_t i = frame.next++;
            const Vertex next = i < children.size() ? children.first[i].node
                                                    : parents.first[i - children.size()].node;
            if (!run.skips(next) && at(visited, next) == 0) enter(next);
        }
    }
    return components;
}

void mark_reversed_edges(LayoutRun& run, const std::vector<Vertex>& nodes, bool by_number) {
    const auto place = [&](Vertex v) {
        return by_number ? at(run.number, v) : at(run.infos, v).level;
    };
    for (const Vertex u : nodes) {
        if (run.skips(u)) continue;
        for (const auto& entry : run.neighbours(OwnerEdges::kChildren, u)) {
            if (run.skips(entry.node)) continue;
            EdgeDirection& way = at(run.directions, entry.edge);
            way.reversed = place(u) > place(entry.node);
            way.flat = place(u) == place(entry.node);
        }
    }
}

// The longest path to a node goes over its predecessors, all of which come before it by number. A
// node that had a level already passes on only what reaches that level.
void mark_levels(LayoutRun& run, const std::vector<Vertex>& nodes) {
    std::vector<Vertex> starts;
    for (const Vertex u : nodes) {
        if (run.skips(u) || in_degree(run, u) != 0) continue;
        starts.push_back(u);
        at(run.infos, u).level = 1;
        at(run.arrived, u) = 1;
    }
    for (const Vertex u : by_number(run, nodes)) {
        const int level = at(run.arrived, u);
        if (level == INT_MIN || level < at(run.infos, u).level) continue;
        at(run.infos, u).level = level;
        for_each_successor(run, u, [&](Vertex next) {
            at(run.arrived, next) = std::max(at(run.arrived, next), level + 1);
        });
    }
    for (const Vertex u : nodes) at(run.arrived, u) = INT_MIN;
    if (starts.size() > 1) tighten_start_nodes(run, starts);
}

void determine_levels(LayoutRun& run) {
    const std::vector<Vertex> nodes = all_nodes(run);
    for (const auto& component : find_connectivity_components(run, nodes)) {
        enumerate_connectivity_component(run, component);
    }
    mark_reversed_edges(run, nodes, true);
    mark_levels(run, nodes);
    mark_reversed_edges(run, nodes, false);
}

}  // namespace nodeline::internal
