#include <formats/read_file.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/layout/inc_layout.h>

#include <gtest/gtest.h>

#include <array>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace nodeline::formats {
namespace {

// The same three nodes and two edges in every format.
const std::array<std::string, 4> kFiles = {
    "title\n[nodes]\n1 \"a\" 0 0\n2 \"b\" 0 0\n3 \"c\" 0 2\n[edges]\n1 3 \"e\"\n3 1 \"\"\n",
    "digraph { 1 [label=a]; subgraph cluster2 { label=b; 3 [label=c] } 1 -> 3 [label=e]; 3 -> 1 }",
    "<graphml><graph><node id=\"1\"><data key=\"label\">a</data></node>"
    "<node id=\"2\"><data key=\"label\">b</data><graph><node id=\"3\"><data key=\"label\">c</data>"
    "</node></graph></node><edge source=\"1\" target=\"3\"><data key=\"label\">e</data></edge>"
    "<edge source=\"3\" target=\"1\"/></graph></graphml>",
    "{\"graph\": {\"nodes\": {\"1\": {\"label\": \"a\"}, \"2\": {\"label\": \"b\"}, \"3\": "
    "{\"label\": \"c\", \"metadata\": {\"owner\": 2}}}, \"edges\": [{\"source\": 1, \"target\": 3, "
    "\"label\": \"e\"}, {\"source\": 3, \"target\": 1}]}}"};

TEST(ReadGraph, MakesTheSameGraphOfTheSameFileInEachFormat) {
    std::set<Format> formats;
    for (const std::string& text : kFiles) {
        const ReadFile file(text);
        ASSERT_TRUE(file.is_read) << file.error;
        formats.insert(file.report.format);
        EXPECT_EQ(Tree(file), "a b{c}");
        EXPECT_EQ(Outline(file.graph, file.report.looks),
                  "1 \"a\" in 0 ----\n2 \"b\" in 0 ----\n3 \"c\" in 2 ----\n1 > 3 \"e\" --\n"
                  "3 > 1 \"\" --\n");
        EXPECT_TRUE(file.report.warnings.empty());
        EXPECT_TRUE(file.report.looks.IsEmpty());
    }
    EXPECT_EQ(formats.size(), kFiles.size());
}

TEST(ReadGraph, ReplacesWhatTheGraphHeld) {
    for (const std::string& text : kFiles) {
        const ReadFile file("t\n[nodes]\n7 \"old\" 0 0\n8 \"older\" 0 7\n[edges]\n7 8 \"\"\n");
        ReadGraph(file.graph, "g", text, {});
        EXPECT_EQ(Tree(file), "a b{c}");
    }
}

TEST(ReadGraph, CallsTheCheckForEachNode) {
    for (const std::string& text : kFiles) {
        int calls = 0;
        ReadOptions options;
        options.check = [&calls] { ++calls; };
        EXPECT_TRUE(ReadFile(text, "g", options).is_read);
        EXPECT_EQ(calls, 3);
    }
}

TEST(ReadGraph, WhatTheCheckThrowsPassesThrough) {
    for (const std::string& text : kFiles) {
        ReadOptions options;
        options.check = [] { throw 7; };
        const graph_ptr2<Graph> graph(new Graph, true);
        EXPECT_THROW(ReadGraph(graph, "g", text, options), int);
        EXPECT_TRUE(ReadFile(text).is_read) << "and the next reading is not hindered";
    }
}

TEST(ReadGraph, TakesTheFormatThatIsChosen) {
    for (const std::string& text : kFiles) {
        const ReadFile dot(text, "g", {.format = Format::kDot});
        EXPECT_EQ(dot.is_read, text.rfind("digraph", 0) == 0);
    }
    EXPECT_EQ(ReadFile("", "g", {.format = Format::kJson}).error, "g:1: the file is empty");
}

TEST(ReadGraph, PassesOverAByteOrderMark) {
    for (const std::string& text : kFiles) {
        EXPECT_EQ(Tree(ReadFile("\xEF\xBB\xBF" + text)), "a b{c}");
    }
}

// A graph of its own for a thread shares no layout and no handler with others.
graph_ptr2<Graph> MakeGraphForThread() {
    graph_ptr2<Graph> graph(new Graph, true);
    graph->SetDefaultLayout(IncLayout::Create());
    graph->SetDefaultNodeHandler({new DummyNodeHandler, true});
    graph->SetDefaultEdgeHandler({new DummyEdgeHandler, true});
    return graph;
}

TEST(ReadGraph, ReadsOnSeveralThreads) {
    constexpr std::size_t kThreads = 4;
    std::vector<graph_ptr2<Graph>> graphs;
    for (std::size_t i = 0; i < kThreads; ++i) graphs.push_back(MakeGraphForThread());
    std::vector<std::string> trees(kThreads);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < kThreads; ++i) {
        threads.emplace_back([&, i] {
            for (int round = 0; round < 50; ++round) {
                EXPECT_THROW(ReadGraph(graphs[i], "g", "digraph { a -> ", {}), ReadError);
                ReadGraph(graphs[i], "g", kFiles.at(1 + i % 3), {});
                trees[i] = Tree(graphs[i]->GetRoot());
                if (trees[i] != "a b{c}") return;
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    for (const std::string& tree : trees) EXPECT_EQ(tree, "a b{c}");
}

}  // namespace
}  // namespace nodeline::formats
