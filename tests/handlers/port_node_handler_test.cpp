#include <backends/headless/recording_painter.h>
#include <gtest/gtest.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/ops/graph_ops.h>

#include <memory>
#include <string>
#include <vector>

namespace nodeline::test {
namespace {

using headless::RecordingPainter;
using paintcore::_color;
using Lines = std::vector<std::string>;

TEST(NewPortNodeHandler, HasALookOfItsOwn) {
    const PortNodeHandler handler;
    const CPortNodeDrawInfo& look = handler.GetDrawInfo();
    EXPECT_EQ(look.pen_width, 1);
    EXPECT_EQ(look.font, (paintcore::font{"Arial", 1, 7, 0, 0, 1.0}));
    EXPECT_EQ(look.text_color, _color(120, 10, 10));
    EXPECT_EQ(look.border_color, _color(0, 0, 0));
    EXPECT_EQ(look.fill_top, _color(205, 200, 200));
    EXPECT_EQ(look.fill_bottom, _color(150, 130, 130));
    EXPECT_EQ(look.selected_fill_top, _color(255, 165, 0));
    EXPECT_EQ(look.selected_fill_bottom, _color(205, 175, 0));
    EXPECT_EQ(look.new_fill_top, _color(160, 160, 250));
    EXPECT_EQ(look.new_fill_bottom, _color(100, 100, 160));
    EXPECT_EQ(look.selected_border_color, _color(255, 0, 0));
    EXPECT_EQ(look.max_caption_length, 24);
    EXPECT_TRUE(look.fixed_width);
    EXPECT_EQ(look.zoom_factor, 1.0);
    EXPECT_EQ(look.painter, nullptr);
    EXPECT_EQ(look.port_hidden_color, _color(229, 0, 0));
    EXPECT_EQ(look.port_visible_color, _color(0, 178, 0));
    EXPECT_EQ(look.port_partial_color, _color(255, 204, 51));
}

// A node 100 wide and 10 high with three parents and three children.
class PortNodes : public testing::Test {
protected:
    PortNodes() {
        node.SetCaption("parse");
        node.SetSize({100.0, 10.0});
        SetFlag(node, NodeDrawn, true);
        for (int i = 0; i < 3; ++i) {
            parents.push_back(graph->GetRoot().AddNode());
            parents.back().LinkTo(node);
            children.push_back(graph->GetRoot().AddNode());
            node.LinkTo(children.back());
        }
    }

    static void HideFirst(const std::vector<Node>& nodes, int count) {
        int left = count;
        for (const Node& neighbour : nodes) SetFlag(neighbour, NodeHidden, left-- > 0);
    }
    Lines Draw(Node drawn) {
        handler.Draw(drawn, &painter);
        return painter.TakeLines();
    }
    // Marks of the ports with their brushes, from left to right.
    Lines Ports() {
        Lines ports;
        const Lines lines = Draw(node);
        for (std::size_t i = 1; i + 1 < lines.size(); ++i) {
            if (lines[i].rfind("RoundRect ", 0) != 0) continue;
            const std::size_t mark = lines[i + 1].find('"');
            ports.push_back(lines[i + 1].substr(mark + 1, 1) + " " + lines[i - 1]);
        }
        return ports;
    }
    void Press(double x) { handler.HandleButtonDown(node, x, 5.0, 0, MouseButton::Left); }

    static constexpr double kLeft = 5.0;
    static constexpr double kMiddle = 50.0;
    static constexpr double kRight = 95.0;

    graph_ptr2<Graph> graph{new Graph(), true};
    Node node = graph->GetRoot().AddNode();
    std::vector<Node> parents;
    std::vector<Node> children;
    RecordingPainter painter;
    PortNodeHandler handler;
};

TEST_F(PortNodes, AreDrawnWithTheirPortsToTheLetter) {
    EXPECT_EQ(
        Draw(node),
        (Lines{"SetPen #000000 1 1 0 0", "SetTextColor #780a0a", "SetBrush #ffffff 0",
               "GetTextSize \"                          \" null -1 1 1",
               "GetTextSize \"parse\" null -1 1 1", "GradientFill 11 0 89 10 #cdc8c8 #968282 100 0",
               "SetPen #000000 1 1 0 0", "Rectangle 11 0 89 10",
               "DrawString 11 0 89 10 \"parse\" 36 -1", "SetBrush #00b200 1",
               "RoundRect 0 0 10 10 4 4", "DrawString 0 0 10 10 \"-\" 36 -1", "SetBrush #00b200 1",
               "RoundRect 90 0 100 10 4 4", "DrawString 90 0 100 10 \"-\" 36 -1"}));
}

TEST_F(PortNodes, TellByTheirPortsHowMuchOfEachSideIsInView) {
    struct Case {
        int hidden;
        const char* left;
        const char* right;
    };
    for (const Case& c : {Case{0, "- SetBrush #00b200 1", "- SetBrush #00b200 1"},
                          {1, "< SetBrush #ffcc33 1", "> SetBrush #ffcc33 1"},
                          {2, "< SetBrush #ffcc33 1", "> SetBrush #ffcc33 1"},
                          {3, "+ SetBrush #e50000 1", "+ SetBrush #e50000 1"}}) {
        HideFirst(parents, c.hidden);
        EXPECT_EQ(Ports(), (Lines{c.left, "- SetBrush #00b200 1"})) << c.hidden;
        HideFirst(parents, 0);
        HideFirst(children, c.hidden);
        EXPECT_EQ(Ports(), (Lines{"- SetBrush #00b200 1", c.right})) << c.hidden;
        HideFirst(children, 0);
    }
}

TEST_F(PortNodes, WithoutNeighboursHaveNoPorts) {
    Node alone = graph->GetRoot().AddNode();
    SetFlag(alone, NodeDrawn, true);
    EXPECT_EQ(Draw(alone).size(), 9U);
    EXPECT_EQ(Draw(alone).back().rfind("DrawString ", 0), 0U);
}

TEST_F(PortNodes, ThatOwnOthersHaveNoPortsWhateverTheirNeighbours) {
    node.AddNode();
    EXPECT_EQ(Ports(), Lines());
    EXPECT_EQ(Draw(node).back(), "DrawString 0 0 100 10 \"parse\" 9 -1");
}

TEST_F(PortNodes, LightAPortUpWhileItIsHeldDown) {
    const Lines at_rest = Ports();
    Press(kLeft);
    EXPECT_EQ(Ports(), (Lines{"- SetBrush #16ff16 1", "- SetBrush #00b200 1"}));
    handler.HandleButtonUp(node, kLeft, 5.0, 0, MouseButton::Left);
    EXPECT_EQ(Ports(), at_rest);
    Press(kRight);
    EXPECT_EQ(Ports(), (Lines{"- SetBrush #00b200 1", "- SetBrush #16ff16 1"}));
    handler.HandleMouseLeave(node);
    EXPECT_EQ(Ports(), at_rest);
    Press(kMiddle);
    EXPECT_EQ(Ports(), at_rest);
}

TEST_F(PortNodes, HoldAPortDownWhileAnotherButtonComesDownElsewhere) {
    Press(kLeft);
    Press(kRight);
    EXPECT_EQ(Ports(), (Lines{"- SetBrush #16ff16 1", "- SetBrush #16ff16 1"}));
}

TEST_F(PortNodes, LightUpOnlyThePortsOfTheNodeThatWasPressedFirst) {
    Node other = children.front();
    other.SetSize({100.0, 10.0});
    SetFlag(other, NodeDrawn, true);
    Press(kMiddle);
    handler.HandleButtonDown(other, kLeft, 5.0, 0, MouseButton::Right);
    EXPECT_EQ(Ports(), (Lines{"- SetBrush #16ff16 1", "- SetBrush #00b200 1"}));
    EXPECT_EQ(Draw(other)[9], "SetBrush #00b200 1");
}

TEST_F(PortNodes, LightBothPortsUpWhereTheyOverlap) {
    node.SetSize({15.0, 10.0});
    Press(7.0);
    EXPECT_EQ(Ports(), (Lines{"- SetBrush #16ff16 1", "- SetBrush #16ff16 1"}));
}

TEST_F(PortNodes, CountTheirNeighboursOnceEach) {
    node.LinkTo(children.front());
    node.LinkTo(node);
    HideFirst(children, 1);
    HideFirst(parents, 2);
    EXPECT_EQ(handler.CountAllChildren(node), 4);
    EXPECT_EQ(handler.CountVisibleChildren(node), 3);
    EXPECT_EQ(handler.CountAllParents(node), 4);
    EXPECT_EQ(handler.CountVisibleParents(node), 2);
}

TEST_F(PortNodes, AreDrawnByTheCountsOfDerivedHandlers) {
    // Knows of children that the graph does not hold yet.
    class LazyHandler : public PortNodeHandler {
    public:
        [[nodiscard]] int CountAllChildren(Node /*node*/) override { return 7; }
    };
    LazyHandler lazy;
    lazy.Draw(node, &painter);
    EXPECT_EQ(painter.TakeLines().back(), "DrawString 90 0 100 10 \">\" 36 -1");
}

TEST_F(PortNodes, AreAllEquallyWide) {
    EXPECT_EQ(handler.GetIPainter(), nullptr);
    EXPECT_EQ(handler.GetSize(node), (size<double>{0.0, 0.0}));
    handler.SetIPainter(&painter);
    EXPECT_EQ(handler.GetIPainter(), &painter);
    EXPECT_EQ(handler.GetSize(node), (size<double>{189.0, 15.0}));
    EXPECT_EQ(handler.GetSize(children.front()), (size<double>{189.0, 15.0}));
    EXPECT_EQ(handler.GetSize(node, {30.0, 50.0}), (NodeFrame{{189.0, 65.0}, {0.0, 15.0}}));
}

TEST_F(PortNodes, DoNotGrowWithTheZoom) {
    handler.SetIPainter(&painter);
    handler.SetZoomFactor(2.0);
    handler.SetZoomFactor(0.0);
    EXPECT_EQ(handler.GetSize(node), (size<double>{189.0, 15.0}));
    painter.TakeLines();
    EXPECT_EQ(Draw(node).front(), "SetFont \"Arial\" 1 14 0 0 1");
}

TEST_F(PortNodes, NeedRecursiveProcessing) { EXPECT_TRUE(handler.IsRecursiveProcessingNeeded()); }

TEST(PortNodeHandler, LeavesItsGraphAloneAfterEvents) {
    // Tells when it dies.
    class MortalHandler : public PortNodeHandler {
    public:
        explicit MortalHandler(bool& gone) : gone_(gone) {}
        ~MortalHandler() override { gone_ = true; }

    private:
        bool& gone_;
    };
    bool gone = false;
    {
        const graph_ptr2<Graph> graph(new Graph(), true);
        graph->SetDefaultNodeHandler(graph_ptr2<INodeHandler>(new MortalHandler(gone), true));
        const Node node = graph->GetRoot().AddNode();
        CGraphTooltipEvent event;
        node.GetHandler()->HandleOnTooltip(node, &event);
        node.GetHandler()->HandleButtonDown(node, 0.0, 0.0, 0, MouseButton::Left);
        EXPECT_FALSE(gone);
    }
    EXPECT_TRUE(gone);
}

}  // namespace
}  // namespace nodeline::test
