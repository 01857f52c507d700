#include <bench/families.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <utility>

namespace nodeline::bench {

namespace {

// Splitmix64. The distributions of the standard library differ from one to the next.
class Random {
public:
    // From 0 to `count` - 1; `count` is positive.
    int Below(int count) { return static_cast<int>(next() % static_cast<std::uint64_t>(count)); }
    int Between(int low, int high) { return low + Below(high - low + 1); }
    bool Percent(int chance) { return Below(100) < chance; }

private:
    std::uint64_t next() {
        state_ += 0x9e3779b97f4a7c15u;
        std::uint64_t z = state_;
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9u;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebu;
        return z ^ (z >> 31);
    }

    std::uint64_t state_ = 9;
};

GraphPlan flat_plan(int nodes) {
    GraphPlan plan;
    plan.owners.assign(static_cast<std::size_t>(nodes), kInRoot);
    return plan;
}

// Every node but the first is called by two that come before it, each as likely as the other. So
// levels are wide and few, and an edge spans three or four of them.
GraphPlan plan_calls(int nodes, int back_percent) {
    GraphPlan plan = flat_plan(nodes);
    Random random;
    for (int callee = 1; callee < nodes; ++callee) {
        for (int i = 0; i < 2; ++i) {
            const int caller = random.Below(callee);
            const bool back = random.Percent(back_percent);
            plan.edges.push_back(back ? PlannedEdge{callee, caller} : PlannedEdge{caller, callee});
        }
    }
    return plan;
}

GraphPlan plan_calls_forward(int nodes) { return plan_calls(nodes, 0); }
GraphPlan plan_calls_with_back_edges(int nodes) { return plan_calls(nodes, 3); }

// As many layers as nodes in a layer. A node goes on to one of the next layer, and to one of any
// layer after its own, so the bends grow faster than the nodes.
GraphPlan plan_layered(int nodes) {
    GraphPlan plan = flat_plan(nodes);
    Random random;
    const int width = std::max(2, static_cast<int>(std::sqrt(static_cast<double>(nodes))));
    for (int node = 0; node + width < nodes; ++node) {
        const int next_layer = (node / width + 1) * width;
        const int end_of_next = std::min(next_layer + width, nodes);
        plan.edges.push_back({node, random.Between(next_layer, end_of_next - 1)});
        plan.edges.push_back({node, random.Between(next_layer, nodes - 1)});
    }
    return plan;
}

GraphPlan plan_tree(int nodes) {
    GraphPlan plan = flat_plan(nodes);
    Random random;
    for (int node = 1; node < nodes; ++node) plan.edges.push_back({random.Below(node), node});
    return plan;
}

GraphPlan plan_chain(int nodes) {
    GraphPlan plan = flat_plan(nodes);
    for (int node = 1; node < nodes; ++node) plan.edges.push_back({node - 1, node});
    return plan;
}

// A ring through all nodes, whose neighbours come in no order, and as many edges across it.
GraphPlan plan_knot(int nodes) {
    GraphPlan plan = flat_plan(nodes);
    Random random;
    std::vector<int> ring(static_cast<std::size_t>(nodes));
    std::iota(ring.begin(), ring.end(), 0);
    for (int i = nodes - 1; i > 0; --i) {
        std::swap(ring[static_cast<std::size_t>(i)],
                  ring[static_cast<std::size_t>(random.Below(i + 1))]);
    }
    int previous = ring.back();
    for (const int node : ring) {
        plan.edges.push_back({previous, node});
        plan.edges.push_back({node, (node + random.Between(1, nodes - 1)) % nodes});
        previous = node;
    }
    return plan;
}

// Boxes of ten in boxes of ten. An edge starts at a node without contents and mostly ends in the
// same box; one in five leaves it, and one in five of these the box around it, and so on.
GraphPlan plan_nested(int nodes) {
    constexpr int kFanOut = 10;
    GraphPlan plan;
    for (int node = 0; node < nodes; ++node) {
        plan.owners.push_back(node < kFanOut ? kInRoot : node / kFanOut - 1);
    }
    const auto first_inside = [](int node) { return (node + 1) * kFanOut; };
    Random random;
    for (int node = 0; node < nodes; ++node) {
        if (first_inside(node) < nodes) continue;
        for (int i = 0; i < 2; ++i) {
            int box = plan.owners[static_cast<std::size_t>(node)];
            while (box != kInRoot && random.Percent(20)) {
                box = plan.owners[static_cast<std::size_t>(box)];
            }
            int other = box;
            do {
                const int first = first_inside(other);
                other = random.Between(first, std::min(first + kFanOut, nodes) - 1);
            } while (first_inside(other) < nodes);
            if (other == node) continue;
            plan.edges.push_back({std::min(node, other), std::max(node, other)});
        }
    }
    return plan;
}

// The call graph in boxes: four boxes in each of four boxes in each of four boxes hold the nodes
// that call. A call mostly comes from the same box; one in five leaves it, and one in five of these
// the box around it, and so on.
GraphPlan plan_calls_in_boxes(int nodes) {
    constexpr int kFanOut = 4;
    constexpr int kDepth = 3;
    GraphPlan plan;
    int first_box = kInRoot;
    for (int depth = 0, boxes = kFanOut; depth < kDepth; ++depth, boxes *= kFanOut) {
        const int first_inside = plan.node_count();
        for (int box = 0; box < boxes; ++box) {
            plan.owners.push_back(depth == 0 ? kInRoot : first_box + box / kFanOut);
        }
        first_box = first_inside;
    }
    const int first_leaf = plan.node_count();
    const int boxes = first_leaf - first_box;
    const int in_box = std::max(1, (nodes - first_leaf) / boxes);
    for (int leaf = 0; leaf < boxes * in_box; ++leaf) {
        plan.owners.push_back(first_box + leaf / in_box);
    }
    Random random;
    for (int callee = 1; callee < boxes * in_box; ++callee) {
        for (int i = 0; i < 2; ++i) {
            int around = in_box;
            while (callee % around == 0 || (around < boxes * in_box && random.Percent(20))) {
                around *= kFanOut;
            }
            const int caller = callee - 1 - random.Below(callee % around);
            plan.edges.push_back({first_leaf + caller, first_leaf + callee});
        }
    }
    return plan;
}

// Diamonds in a row, the end of one being the start of the next: there are as many shortest ways
// through as there are numbers of so many binary digits.
GraphPlan plan_ladder(int nodes) {
    const int diamonds = (nodes - 1) / 3;
    GraphPlan plan = flat_plan(3 * diamonds + 1);
    for (int i = 0; i < diamonds; ++i) {
        const int start = 3 * i;
        for (const int side : {start + 1, start + 2}) {
            plan.edges.push_back({start, side});
            plan.edges.push_back({side, start + 3});
        }
    }
    return plan;
}

GraphPlan plan_star(int nodes) {
    GraphPlan plan = flat_plan(nodes);
    for (int leaf = 1; leaf < nodes; ++leaf) plan.edges.push_back({0, leaf});
    return plan;
}

}  // namespace

const std::vector<Family>& Families() {
    static const std::vector<Family> families = {
        {"calls", "call graph", plan_calls_forward, 100000},
        {"calls-back", "call graph, 3 % back edges", plan_calls_with_back_edges, 100000},
        {"layered", "layered, long edges", plan_layered, 90000},
        {"tree", "tree", plan_tree, 100000},
        {"chain", "chain", plan_chain, 100000},
        {"knot", "one strongly connected component", plan_knot, 100000},
        {"nested", "nested clusters", plan_nested, 100000},
        {"boxes", "call graph in boxes, three deep", plan_calls_in_boxes, 100000},
        {"ladder", "ladder of diamonds", plan_ladder, 100000},
        {"star", "star", plan_star, 100000}};
    return families;
}

const Family* FindFamily(std::string_view name) {
    const std::vector<Family>& all = Families();
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const Family& f) { return f.name == name; });
    return found == all.end() ? nullptr : &*found;
}

std::vector<int> SizesOf(const Family& family) {
    std::vector<int> sizes;
    for (const int size : {100, 1000, 3000, 10000, 30000, 100000}) {
        if (size < family.largest) sizes.push_back(size);
    }
    sizes.push_back(family.largest);
    return sizes;
}

}  // namespace nodeline::bench
