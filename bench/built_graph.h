// A planned graph as the library has it, ready to be laid out and measured.
#pragma once

#include <bench/families.h>
#include <nodeline/layout/inc_layout.h>
#include <nodeline/model/graph.h>

namespace nodeline::bench {

// What every node without contents takes, in logical units.
constexpr nodeline::size<double> kNodeSize{80.0, 20.0};

struct BuiltGraph {
    graph_ptr2<IncLayout> layout;
    graph_ptr2<Graph> graph;
};

// Builds the graph with a layout of its own. Nodes have a fixed size, and a node with contents has
// that of its contents, so that no time goes into measuring text.
BuiltGraph Build(const GraphPlan& plan);

// What the cost of a layout goes by.
struct Elements {
    long long nodes = 0;
    long long edges = 0;
    long long breaks = 0;

    [[nodiscard]] long long sum() const { return nodes + edges + breaks; }
};

// Counts what is in a graph. Break nodes are counted where they are, without making handles.
Elements CountElements(const BuiltGraph& built);

}  // namespace nodeline::bench
