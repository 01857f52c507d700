// Nested graphs with edges of every kind, made from a seed.
#pragma once

#include <nodeline/model/graph.h>
#include <support/random.h>

#include <vector>

namespace nodeline::test {

struct RandomGraphPlan {
    int nodes = 40;
    int edges = 60;
    // How many nodes get another owner, and how many are taken out, afterwards.
    int moves = 8;
    int removals = 4;
    // A node lies at most so deep under the root.
    int depth = 5;
};

// A graph of one plan and one seed is always the same but for the ids, which rise in the order in
// which nodes and edges are made. Among the edges are loops, parallel ones, ones to the owner of
// their source or to one of its owners, and ones between any two nodes.
class RandomGraph {
public:
    explicit RandomGraph(std::uint64_t seed, const RandomGraphPlan& plan = {});

    graph_ptr2<Graph> graph;
    Node root;
    // What is still in the graph, in the order of making.
    std::vector<Node> nodes;
    std::vector<Edge> edges;

    // The nodes and the root.
    [[nodiscard]] std::vector<Node> AllNodes() const;

    // Gives every node a position and a size, and every edge bends in some owners around it.
    void Place(Random& random);

private:
    [[nodiscard]] int depth_of(Node node) const;
    Node far_end(Random& random, const Node& from) const;
    void remove_one(Random& random);
    void forget_removed();
};

}  // namespace nodeline::test
