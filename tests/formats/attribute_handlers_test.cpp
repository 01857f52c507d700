#include <backends/headless/recording_painter.h>
#include <formats/attribute_handlers.h>
#include <formats/read_file.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace nodeline::formats {
namespace {

using headless::RecordingPainter;
using paintcore::_color;

// Nodes and edges that are drawn one by one, 100 wide and 20 high.
class AttributeHandlers : public testing::Test {
protected:
    Node Add(const NodeLook& look) {
        Node node = graph->GetRoot().AddNode();
        node.SetCaption("caption");
        node.SetSize({100.0, 20.0});
        SetFlag(node, NodeDrawn, true);
        if (!look.IsPlain()) looks.nodes[node.GetID()] = look;
        return node;
    }

    std::vector<std::string> Draw(const Node& node) {
        const graph_ptr2<PortNodeHandler> handler = MakePortNodeHandler(looks);
        handler->Draw(node, &painter);
        return painter.TakeLines();
    }

    static std::vector<std::string> DrawPlainly(const Node& node) {
        RecordingPainter plain_painter;
        PortNodeHandler handler;
        handler.Draw(node, &plain_painter);
        return plain_painter.TakeLines();
    }

    static bool Has(const std::vector<std::string>& lines, const std::string& start) {
        return std::any_of(lines.begin(), lines.end(),
                           [&](const std::string& line) { return line.rfind(start, 0) == 0; });
    }

    graph_ptr2<Graph> graph{new Graph, true};
    GraphLooks looks;
    RecordingPainter painter;
};

TEST_F(AttributeHandlers, DrawPlainNodesAsPortNodes) {
    Add({_color(1, 2, 3)});
    const Node plain = Add({});
    EXPECT_EQ(Draw(plain), DrawPlainly(plain));
}

TEST_F(AttributeHandlers, DrawNodesWithTheirColoursAndPens) {
    const Node node = Add({_color(255, 255, 0), _color(1, 2, 3), _color(4, 5, 6), 2.6});
    const std::vector<std::string> lines = Draw(node);
    EXPECT_TRUE(Has(lines, "SetPen #010203 3"));
    EXPECT_TRUE(Has(lines, "SetTextColor #040506"));
    EXPECT_TRUE(std::any_of(lines.begin(), lines.end(), [](const std::string& line) {
        return line.rfind("GradientFill", 0) == 0 &&
               line.find("#ffff00 #ffff00") != std::string::npos;
    }));
    EXPECT_EQ(lines.size(), DrawPlainly(node).size());
}

TEST_F(AttributeHandlers, LeaveTheLookOfTheHandlerAsItIs) {
    const Node node = Add({_color(255, 255, 0), _color(1, 2, 3), _color(4, 5, 6), 2.6});
    const Node plain = Add({});
    const graph_ptr2<PortNodeHandler> handler = MakePortNodeHandler(looks);
    handler->Draw(node, &painter);
    painter.TakeLines();
    handler->Draw(plain, &painter);
    RecordingPainter fresh;
    PortNodeHandler().Draw(plain, &fresh);
    const auto without_font = [](std::vector<std::string> lines) {
        return std::count_if(lines.begin(), lines.end(), [](const std::string& line) {
            return line.rfind("SetTextColor #780a0a", 0) == 0;
        });
    };
    EXPECT_EQ(without_font(painter.TakeLines()), without_font(fresh.TakeLines()));
    EXPECT_EQ(handler->GetDrawInfo().text_color, _color(120, 10, 10));
    EXPECT_EQ(handler->GetDrawInfo().pen_width, 1);
}

TEST_F(AttributeHandlers, PutReadableTextOnAFill) {
    EXPECT_TRUE(Has(Draw(Add({_color(0, 0, 128)})), "SetTextColor #ffffff"));
    EXPECT_TRUE(Has(Draw(Add({_color(255, 255, 128)})), "SetTextColor #000000"));
    EXPECT_TRUE(Has(Draw(Add({std::nullopt, _color(1, 1, 1)})), "SetTextColor #780a0a"));
}

TEST_F(AttributeHandlers, SelectedAndNewNodesShowThatTheyAre) {
    const Node node = Add({_color(0, 0, 128)});
    for (const int flag : {NodeSelected, NodeNew}) {
        SetFlag(node, flag, true);
        EXPECT_EQ(Draw(node), DrawPlainly(node));
        SetFlag(node, flag, false);
        EXPECT_NE(Draw(node), DrawPlainly(node));
    }
}

TEST_F(AttributeHandlers, MeasureAsPortNodesDo) {
    const Node node = Add({_color(0, 0, 128), std::nullopt, std::nullopt, 50.0});
    const graph_ptr2<PortNodeHandler> handler = MakePortNodeHandler(looks);
    PortNodeHandler plain;
    handler->SetIPainter(&painter);
    plain.SetIPainter(&painter);
    EXPECT_EQ(handler->GetSize(node), plain.GetSize(node));
    EXPECT_GT(plain.GetSize(node).cx, 0.0);
}

TEST_F(AttributeHandlers, AreMadeOnlyWhereTheyAreNeeded) {
    EXPECT_EQ(dynamic_cast<AttributeNodeHandler*>(MakePortNodeHandler(looks).get()), nullptr);
    EXPECT_FALSE(MakeEdgeHandler(looks));
    Add({_color(1, 2, 3)});
    looks.edges[0].pen_width = 2.0;
    EXPECT_NE(dynamic_cast<AttributeNodeHandler*>(MakePortNodeHandler(looks).get()), nullptr);
    EXPECT_TRUE(MakeEdgeHandler(looks));
}

TEST_F(AttributeHandlers, DrawEdgesWithTheirColoursAndPens) {
    Node from = Add({});
    std::vector<Edge> edges = {from.LinkTo(Add({})), from.LinkTo(Add({}))};
    for (Edge& edge : edges) {
        SetFlag(edge, EdgeDrawn, true);
        edge.AddBreakNodesIn(graph->GetRoot(), 2);
    }
    looks.edges[edges[0].GetID()] = {_color(1, 2, 3), 4.0};
    const graph_ptr2<IEdgeHandler> handler = MakeEdgeHandler(looks);
    handler->Draw(edges[0], &painter);
    EXPECT_TRUE(Has(painter.TakeLines(), "SetPen #010203 4"));
    handler->Draw(edges[1], &painter);
    EXPECT_TRUE(Has(painter.TakeLines(), "SetPen #000000 1"));
    SetFlag(edges[0], EdgeMarked, true);
    handler->Draw(edges[0], &painter);
    EXPECT_TRUE(Has(painter.TakeLines(), "SetPen #ff0000 4"));
}

}  // namespace
}  // namespace nodeline::formats
