#include <bench/stability_graphs.h>

#include <nodeline/ops/graph_ops.h>
#include <nodeline/ops/load.h>

#include <algorithm>
#include <fstream>
#include <map>

namespace nodeline::bench {

namespace {

// Most graphs are small, for the other programs take their time over large ones, and a picture is
// taken after every change.
const std::vector<int> kFlatSizes = {50, 60, 75, 90, 100, 120, 150, 180, 200, 240, 300};
const std::vector<int> kNestedSizes = {50,  55,  60,  65,  70,  75,  80,  85,  90,  95,
                                       100, 110, 120, 130, 140, 150, 160, 170, 180, 190,
                                       200, 210, 220, 230, 240, 250, 260, 270, 280, 290,
                                       300, 310, 320, 330, 340, 350, 360, 400, 500, 1000};

struct RealGraph {
    const char* name;
    int times;
};
const std::vector<RealGraph> kRealGraphs = {{"http-parser", 3},      {"zlib-calls", 3},
                                            {"systemd-units", 2},    {"inflate-blocks", 2},
                                            {"texlive-packages", 1}, {"lua-calls", 1}};

// From 4 to 16, in no order that the families know of.
int made_up_length(int node) { return 4 + node * 7 % 13; }

void add_generated(const char* set, const char* family, int nodes,
                   std::vector<WatchedGraph>& graphs) {
    WatchedGraph graph;
    graph.set = set;
    graph.name = std::string(family) + " " + std::to_string(nodes);
    graph.plan = FindFamily(family)->plan(nodes);
    for (int node = 0; node < graph.plan.node_count(); ++node) {
        graph.caption_lengths.push_back(made_up_length(node));
    }
    graph.seed = static_cast<unsigned>(graphs.size() + 1);
    graphs.push_back(graph);
}

// Numbers the nodes so that owners come first.
WatchedGraph plan_of(Graph& graph) {
    WatchedGraph watched;
    std::map<int, int> numbers = {{0, kInRoot}};
    std::vector<Edge> edges;
    const auto collect = [&](const Node& node) {
        numbers.emplace(node.GetID(), watched.plan.node_count());
        watched.plan.owners.push_back(numbers.at(node.GetOwner().GetID()));
        watched.caption_lengths.push_back(static_cast<int>(node.GetCaption().size()));
        for (const Edge& edge : node.GetEdgesOut()) edges.push_back(edge);
    };
    ForEachNodeIn(graph.GetRoot(), collect, false, false);
    std::sort(edges.begin(), edges.end(),
              [](const Edge& a, const Edge& b) { return a.GetID() < b.GetID(); });
    for (const Edge& edge : edges) {
        watched.plan.edges.push_back(
            {numbers.at(edge.From().GetID()), numbers.at(edge.To().GetID())});
    }
    return watched;
}

}  // namespace

std::vector<WatchedGraph> GeneratedGraphs() {
    std::vector<WatchedGraph> graphs;
    for (const char* family : {"calls", "calls-back", "layered", "tree"}) {
        for (const int nodes : kFlatSizes) add_generated("flat", family, nodes, graphs);
    }
    // Those with the longest edges would take the other programs minutes at the largest size.
    for (const char* family : {"calls", "tree"}) add_generated("flat", family, 1000, graphs);
    for (const char* family : {"calls-back", "layered"}) add_generated("flat", family, 400, graphs);
    for (const int nodes : kNestedSizes) add_generated("nested", "nested", nodes, graphs);
    return graphs;
}

std::string AddRealGraphs(const std::string& folder, std::vector<WatchedGraph>& graphs) {
    for (const RealGraph& real : kRealGraphs) {
        const std::string file = folder + "/" + real.name + ".txt";
        std::ifstream in(file);
        const graph_ptr2<Graph> graph(new Graph, true);
        LoadError error;
        if (!Load(graph, in, &error)) {
            return file + ":" + std::to_string(error.line) + ": " + error.reason;
        }
        WatchedGraph watched = plan_of(*graph);
        watched.set = "real";
        for (int i = 0; i < real.times; ++i) {
            watched.name = std::string(real.name) + " " + std::to_string(i + 1);
            watched.seed = static_cast<unsigned>(graphs.size() + 1);
            graphs.push_back(watched);
        }
    }
    return {};
}

}  // namespace nodeline::bench
