#include <cli/drawn_graph.h>
#include <cli/program.h>
#include <support/fonts/test_fonts.h>
#include <support/real_graphs.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <map>

namespace {

using nlohmann::json;
using test_support::DrawnGraph;
using test_support::DrawnNode;
using test_support::ProgramResult;
using test_support::RealGraph;

// The places of pictures are rounded to thousandths.
constexpr double kRounding = 0.0011;
// How far the boxes of leaves are from the ends of their nodes, to leave room for ports, in
// heights.
constexpr double kRoomForPort = 1.1;

std::string Counted(long count, const std::string& name) {
    return std::to_string(count) + " " + name + (count == 1 ? "" : "s");
}

// A caption stands on one line. If it is too long for its node, it is its beginning and three dots.
bool IsShown(std::string caption, const std::string& shown) {
    std::replace(caption.begin(), caption.end(), '\n', ' ');
    if (shown == caption) return true;
    const std::size_t kept = shown.size() - std::min<std::size_t>(shown.size(), 3);
    return shown.size() > 3 && shown.substr(kept) == "..." &&
           caption.compare(0, kept, shown, 0, kept) == 0;
}

// Nodes are drawn ahead of what they own, and otherwise in the order of the file.
std::vector<const json*> InDrawingOrder(const json& nodes) {
    std::map<int, std::vector<const json*>> owned;
    for (const json& node : nodes) owned[node["owner"]].push_back(&node);
    std::vector<const json*> order;
    std::vector<const json*> waiting = owned[0];
    std::reverse(waiting.begin(), waiting.end());
    while (!waiting.empty()) {
        order.push_back(waiting.back());
        waiting.pop_back();
        const std::vector<const json*>& inner = owned[(*order.back())["id"]];
        waiting.insert(waiting.end(), inner.rbegin(), inner.rend());
    }
    return order;
}

int CountMisplacedNodes(const DrawnGraph& picture, const json& layout) {
    const std::vector<const json*> nodes = InDrawingOrder(layout["nodes"]);
    std::map<int, int> owned;
    for (const json* node : nodes) ++owned[(*node)["owner"]];
    int wrong = 0;
    for (std::size_t i = 0; i < nodes.size() && i < picture.nodes.size(); ++i) {
        const json& node = *nodes[i];
        const DrawnNode& drawn = picture.nodes[i];
        const double height = node["size"][1];
        const double room = owned[node["id"]] == 0 ? kRoomForPort * height : 0.0;
        const double off =
            std::max({std::abs(drawn.left - room - node["position"][0].get<double>()),
                      std::abs(drawn.top - node["position"][1].get<double>()),
                      std::abs(drawn.width + 2.0 * room - node["size"][0].get<double>()),
                      std::abs(drawn.height - height)});
        const bool is_right = off < kRounding && IsShown(node["caption"], drawn.caption);
        if (!is_right && ++wrong == 1) ADD_FAILURE() << node << ": " << drawn.caption;
    }
    return wrong;
}

int CountMisplacedEdges(const DrawnGraph& picture, const json& edges) {
    int wrong = 0;
    for (std::size_t i = 0; i < edges.size() && i < picture.edges.size(); ++i) {
        const json& route = edges[i]["route"];
        const test_support::DrawnRoute& drawn = picture.edges[i];
        bool is_right = drawn.size() == route.size();
        for (std::size_t k = 0; is_right && k < drawn.size(); ++k) {
            is_right = std::abs(drawn[k].first - route[k][0].get<double>()) < kRounding &&
                       std::abs(drawn[k].second - route[k][1].get<double>()) < kRounding;
        }
        if (!is_right && ++wrong == 1) ADD_FAILURE() << edges[i];
    }
    return wrong;
}

class RealPictures : public test_support::ProgramTest,
                     public testing::WithParamInterface<RealGraph> {
protected:
    // Renders a file, and gives the picture.
    [[nodiscard]] std::string Render(const std::string& path, bool may_warn) const {
        const ProgramResult result = RunProgram("render '" + path + "' -o x.svg --all");
        EXPECT_EQ(result.status, 0) << path;
        EXPECT_TRUE(may_warn || result.err.empty()) << result.err;
        const std::string counts = "wrote x.svg: " + Counted(GetParam().CountAll(), "node") + ", " +
                                   Counted(GetParam().edges, "edge") + ", ";
        EXPECT_EQ(result.out.substr(0, counts.size()), counts);
        return Read("x.svg");
    }

    [[nodiscard]] std::string LayOut(const std::string& path) const {
        const ProgramResult result = RunProgram("layout '" + path + "' --handler port --all");
        EXPECT_EQ(result.status, 0) << path;
        return result.out;
    }

    // The picture has all nodes and edges where the layout has them.
    void ExpectAllDrawn(const std::string& svg, const std::string& layout_text) const {
        const json layout = json::parse(layout_text);
        const DrawnGraph picture = test_support::ReadDrawnGraph(svg);
        EXPECT_EQ(static_cast<long>(picture.nodes.size()), GetParam().CountAll());
        EXPECT_EQ(static_cast<long>(picture.edges.size()), GetParam().edges);
        EXPECT_EQ(picture.arrowheads, GetParam().edges);
        EXPECT_EQ(picture.strays, 0);
        EXPECT_EQ(static_cast<long>(layout["nodes"].size()), GetParam().CountAll());
        EXPECT_EQ(static_cast<long>(layout["edges"].size()), GetParam().edges);
        EXPECT_EQ(CountMisplacedNodes(picture, layout), 0);
        EXPECT_EQ(CountMisplacedEdges(picture, layout["edges"]), 0);
    }

    // Converted to other formats, the graph has the very same picture.
    void ExpectTheSamePicture(const std::string& path, const std::string& svg) const {
        for (const char* name : {"x.graphml", "x.json"}) {
            const ProgramResult converted =
                RunProgram("convert '" + path + "' " + std::string(name));
            EXPECT_EQ(converted.status, 0) << name << ": " << converted.err;
            EXPECT_TRUE(Render(name, false) == svg) << name;
        }
    }
};

class RealPicturesOfDot : public RealPictures {};

TEST(RealPictureTable, IsWhole) { test_support::ExpectAllRealGraphs(); }

TEST_P(RealPictures, ShowAllNodesAndEdges) {
    const std::string svg = Render(GetParam().text, false);
    const std::string layout = LayOut(GetParam().text);
    ExpectAllDrawn(svg, layout);
    ExpectTheSamePicture(GetParam().text, svg);
    EXPECT_TRUE(Render(Write("layout.json", layout), false) == svg);
}

TEST_P(RealPicturesOfDot, ShowAllNodesAndEdges) {
    const std::string svg = Render(GetParam().dot, true);
    ExpectAllDrawn(svg, LayOut(GetParam().dot));
    ExpectTheSamePicture(GetParam().dot, svg);
}

INSTANTIATE_TEST_SUITE_P(Table, RealPictures, testing::ValuesIn(test_support::ReadRealGraphs()),
                         test_support::NameOfTest);
INSTANTIATE_TEST_SUITE_P(Table, RealPicturesOfDot,
                         testing::ValuesIn(test_support::ReadRealGraphsInDot()),
                         test_support::NameOfTest);

}  // namespace
