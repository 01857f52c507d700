// The real graphs of the test data, as their table lists them.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

namespace test_support {

struct RealGraph {
    std::string name;
    // Those of the text, without the clusters; -1 where the table holds no number.
    long nodes = -1;
    long edges = -1;
    long clusters = -1;
    // Nodes and clusters that own others.
    long owners = -1;
    // 1 if nothing is nested.
    long max_depth = -1;
    // Paths; that of the DOT version is empty if there is none.
    std::string text;
    std::string dot;
    std::string provenance;
    std::string licence;

    // All that the library takes as nodes.
    [[nodiscard]] long CountAll() const { return nodes + clusters; }
};

// For messages of failed tests.
inline void PrintTo(const RealGraph& graph, std::ostream* out) { *out << graph.name; }

inline long ToCount(const std::string& field) {
    char* end = nullptr;
    const long number = std::strtol(field.c_str(), &end, 10);
    return field.empty() || *end != '\0' ? -1 : number;
}

inline RealGraph ToRealGraph(const std::string& line) {
    const std::string root = NODELINE_TEST_DATA "/../../";
    std::vector<std::string> fields;
    std::istringstream rest(line);
    for (std::string field; std::getline(rest, field, '\t');) fields.push_back(field);
    fields.resize(10);
    return {fields[0],          ToCount(fields[1]),
            ToCount(fields[2]), ToCount(fields[3]),
            ToCount(fields[4]), ToCount(fields[5]),
            root + fields[6],   fields[7] == "-" ? "" : root + fields[7],
            fields[8],          fields[9]};
}

// The rows of the table; none if it cannot be read.
inline std::vector<RealGraph> ReadRealGraphs() {
    std::ifstream table(NODELINE_TEST_DATA "/graphs/graphs.tsv");
    std::vector<RealGraph> graphs;
    std::string line;
    std::getline(table, line);
    while (std::getline(table, line)) graphs.push_back(ToRealGraph(line));
    return graphs;
}

inline std::vector<RealGraph> ReadRealGraphsInDot() {
    std::vector<RealGraph> graphs = ReadRealGraphs();
    graphs.erase(std::remove_if(graphs.begin(), graphs.end(),
                                [](const RealGraph& graph) { return graph.dot.empty(); }),
                 graphs.end());
    return graphs;
}

// Names of tests are made of letters, digits and underscores.
inline std::string NameOfTest(const testing::TestParamInfo<RealGraph>& graph) {
    std::string name = graph.param.name;
    for (char& c : name) c = c == '-' || c == '.' ? '_' : c;
    return name;
}

// The tests that are made of the table are no tests if it is missing.
inline void ExpectAllRealGraphs() {
    const auto exists = [](const std::string& path) { return std::ifstream(path).good(); };
    const std::vector<RealGraph> graphs = ReadRealGraphs();
    EXPECT_GE(graphs.size(), 30U);
    EXPECT_GE(ReadRealGraphsInDot().size(), 13U);
    for (const RealGraph& graph : graphs) {
        EXPECT_GE(std::min({graph.nodes, graph.edges, graph.clusters, graph.owners}), 0)
            << graph.name;
        EXPECT_GE(graph.max_depth, 1) << graph.name;
        EXPECT_TRUE(exists(graph.text)) << graph.text;
        EXPECT_TRUE(graph.dot.empty() || exists(graph.dot)) << graph.dot;
        EXPECT_FALSE(graph.provenance.empty()) << graph.name;
        EXPECT_FALSE(graph.licence.empty()) << graph.name;
    }
}

}  // namespace test_support
