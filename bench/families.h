// Families of generated graphs, for measuring: the same graph for a family and a size on every
// machine.
//
//   const bench::Family* calls = bench::FindFamily("calls");
//   const bench::GraphPlan plan = calls->plan(10000);
#pragma once

#include <string_view>
#include <vector>

namespace nodeline::bench {

// The owner of a node that lies in no other.
constexpr int kInRoot = -1;

// An edge between nodes, which are numbered from 0.
struct PlannedEdge {
    int from;
    int to;
};

// A graph before it is built: nothing but numbers, to be handed to any program that draws graphs.
struct GraphPlan {
    // For every node the one that owns it, whose number is lower.
    std::vector<int> owners;
    std::vector<PlannedEdge> edges;

    [[nodiscard]] int node_count() const { return static_cast<int>(owners.size()); }
};

struct Family {
    // One word, for command lines.
    std::string_view name;
    // For people.
    std::string_view title;
    // Makes the graph of so many nodes; at least 10.
    GraphPlan (*plan)(int nodes);
    // The most nodes to measure with: beyond it there are more than 20 million break nodes, or more
    // nodes than the time is worth.
    int largest;
};

const std::vector<Family>& Families();
// Null if there is no such family.
const Family* FindFamily(std::string_view name);

// The sizes to measure a family with, the smallest first: 100, then the steps from 1,000 on, and
// the largest.
std::vector<int> SizesOf(const Family& family);

}  // namespace nodeline::bench
