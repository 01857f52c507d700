// Writes a generated graph as JSON, for programs that know nothing of this library: the size of a
// node, the owner of every node (-1 for none) and the two ends of every edge, by node number.
#include <bench/built_graph.h>

#include <charconv>
#include <cstdio>
#include <string_view>
#include <vector>

namespace nodeline::bench {

namespace {

void write(const GraphPlan& plan) {
    std::printf("{\"width\": %g, \"height\": %g,\n\"owners\": [", kNodeSize.cx, kNodeSize.cy);
    const char* separator = "";
    for (const int owner : plan.owners) {
        std::printf("%s%d", separator, owner);
        separator = ",";
    }
    std::printf("],\n\"edges\": [");
    separator = "";
    for (const PlannedEdge& edge : plan.edges) {
        std::printf("%s[%d,%d]", separator, edge.from, edge.to);
        separator = ",";
    }
    std::printf("]}\n");
}

int answer(const std::vector<std::string_view>& words) {
    int nodes = 0;
    const Family* family = nullptr;
    if (words.size() == 2) {
        family = FindFamily(words[0]);
        std::from_chars(words[1].data(), words[1].data() + words[1].size(), nodes);
    }
    if (family == nullptr || nodes < 10) {
        std::fprintf(stderr, "usage: bench-export FAMILY NODES\n");
        return 2;
    }
    write(family->plan(nodes));
    return std::fflush(stdout) == 0 ? 0 : 1;
}

}  // namespace

}  // namespace nodeline::bench

int main(int argc, char** argv) { return nodeline::bench::answer({argv + 1, argv + argc}); }
