// Graphs whose pictures are to be watched while they change: generated ones, and real ones.
//
//   std::vector<bench::WatchedGraph> graphs = bench::GeneratedGraphs();
//   std::string trouble = bench::AddRealGraphs("examples/graphs", graphs);
#pragma once

#include <bench/families.h>

#include <string>
#include <vector>

namespace nodeline::bench {

struct WatchedGraph {
    // "flat", "nested" or "real": graphs of one set are reported together.
    std::string set;
    std::string name;
    GraphPlan plan;
    // For every node; boxes go by it.
    std::vector<int> caption_lengths;
    // Two graphs of one plan go through different changes if their seeds differ.
    unsigned seed = 0;
};

// Flat graphs, then nested ones, of 50 to 1,000 nodes; the same on every machine.
std::vector<WatchedGraph> GeneratedGraphs();

// Appends the graphs of a folder of text files, the small ones several times, each time with
// another seed. Answers what is wrong with a file, or nothing.
std::string AddRealGraphs(const std::string& folder, std::vector<WatchedGraph>& graphs);

}  // namespace nodeline::bench
