#include <backends/headless/recording_painter.h>
#include <gtest/gtest.h>
#include <nodeline/handlers/drawers.h>
#include <nodeline/ops/graph_ops.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace nodeline::test {
namespace {

using headless::RecordingPainter;
using paintcore::_color;
using Lines = std::vector<std::string>;

// A box 60 wide and 10 high: its ports are 10 wide, and the caption is left with 11 to 49.
class PortNodeDrawer : public testing::Test {
protected:
    PortNodeDrawer() {
        node.SetCaption("parse");
        node.SetPosition(100.0, 20.0);
        node.SetSize({60.0, 10.0});
        SetFlag(node, NodeDrawn, true);
        CPortNodeDrawInfo& look = drawer.GetDrawInfo();
        look.fill_top = _color(10, 10, 10);
        look.fill_bottom = _color(20, 20, 20);
        look.selected_fill_top = _color(30, 30, 30);
        look.selected_fill_bottom = _color(40, 40, 40);
        look.new_fill_top = _color(50, 50, 50);
        look.new_fill_bottom = _color(60, 60, 60);
    }

    Lines Draw() {
        drawer.Draw(node, &painter);
        return painter.TakeLines();
    }
    // What is drawn after the caption.
    Lines DrawWithPorts(int left, int right) {
        drawer.SetLeftPortState(left);
        drawer.SetRightPortState(right);
        const Lines lines = Draw();
        constexpr int kBoxLines = 9;
        return lines.size() < kBoxLines ? Lines() : Lines(lines.begin() + kBoxLines, lines.end());
    }

    graph_ptr2<Graph> graph{new Graph(), true};
    Node node = graph->GetRoot().AddNode();
    RecordingPainter painter;
    CRectPortNodeDrawer drawer;
};

TEST(NewPortDrawInfo, HasThePlainLookAndColoursForPorts) {
    const CPortNodeDrawInfo info;
    EXPECT_EQ(info.port_hidden_color, _color(229, 0, 0));
    EXPECT_EQ(info.port_visible_color, _color(0, 178, 0));
    EXPECT_EQ(info.port_partial_color, _color(255, 204, 51));
    EXPECT_EQ(info.font, CNodeDrawInfo().font);
    EXPECT_EQ(info.fill_bottom, CNodeDrawInfo().fill_bottom);
    EXPECT_FALSE(info.fixed_width);
}

TEST_F(PortNodeDrawer, DrawsALeafBetweenTheRoomForItsPorts) {
    EXPECT_EQ(Draw(),
              (Lines{"SetPen #000000 1 1 0 0", "SetTextColor #000000", "SetBrush #ffffff 0",
                     "GetTextSize \"parse  \" null -1 1 1", "GetTextSize \"parse\" null -1 1 1",
                     "GradientFill 111 20 149 30 #0a0a0a #141414 100 0", "SetPen #000000 1 1 0 0",
                     "Rectangle 111 20 149 30", "DrawString 111 20 149 30 \"parse\" 36 -1"}));
}

TEST_F(PortNodeDrawer, DrawsAnOwnerOverItsWholeRectangleAndWithoutPorts) {
    node.AddNode();
    drawer.SetLeftPortState(PortVisible);
    drawer.SetRightPortState(PortHidden | PortPressed);
    EXPECT_EQ(Draw(),
              (Lines{"SetPen #000000 1 1 0 0", "SetTextColor #000000", "SetBrush #ffffff 0",
                     "GetTextSize \"parse  \" null -1 1 1", "GetTextSize \"parse\" null -1 1 1",
                     "GradientFill 100 20 160 30 #0a0a0a #141414 100 0", "SetPen #000000 1 1 0 0",
                     "Rectangle 100 20 160 30", "DrawString 100 20 160 30 \"parse\" 9 -1"}));
}

TEST_F(PortNodeDrawer, SetsTheFontFirstAndForEachMeasuring) {
    drawer.SetZoomFactor(0.5);
    const Lines lines = Draw();
    EXPECT_EQ(Lines(lines.begin(), lines.begin() + 7),
              (Lines{"SetFont \"\" 4 4 0 0 1", "SetPen #000000 1 1 0 0", "SetTextColor #000000",
                     "SetBrush #ffffff 0", "SetFont \"\" 4 4 0 0 1",
                     "GetTextSize \"parse  \" null -1 1 1", "GetTextSize \"parse\" null -1 1 1"}));
    EXPECT_EQ(lines.size(), 11U);
}

TEST_F(PortNodeDrawer, DrawsWithTheLookThatItWasGiven) {
    CPortNodeDrawInfo& look = drawer.GetDrawInfo();
    look.pen_width = 3;
    look.text_color = _color(17, 18, 19);
    look.border_color = _color(20, 21, 22);
    look.port_visible_color = _color(23, 24, 25);
    drawer.SetLeftPortState(PortVisible);
    const Lines lines = Draw();
    EXPECT_EQ(lines[0], "SetPen #141516 3 1 0 0");
    EXPECT_EQ(lines[1], "SetTextColor #111213");
    EXPECT_EQ(lines[6], "SetPen #141516 3 1 0 0");
    EXPECT_EQ(lines[9], "SetBrush #171819 1");
}

// Puts the palette of the process back.
class PaletteKeeper {
public:
    PaletteKeeper() = default;
    ~PaletteKeeper() { paintcore::SetSysPalette(old_); }
    PaletteKeeper(const PaletteKeeper&) = delete;
    PaletteKeeper& operator=(const PaletteKeeper&) = delete;

private:
    paintcore::SysPalette old_ = paintcore::GetSysPalette();
};

TEST_F(PortNodeDrawer, TakesTheBackgroundOfThePaletteThatStands) {
    const PaletteKeeper keeper;
    paintcore::SysPalette dark;
    dark.Set(paintcore::SysPalette::kBackground, _color(16, 32, 48));
    paintcore::SetSysPalette(dark);
    EXPECT_EQ(Draw()[2], "SetBrush #102030 0");
}

TEST_F(PortNodeDrawer, ChoosesTheGradientByTheFlagsOfTheNode) {
    struct Case {
        int flags;
        const char* colors;
    };
    for (const Case& c : {Case{0, "#0a0a0a #141414"},
                          {NodeSelected, "#1e1e1e #282828"},
                          {NodeNew, "#323232 #3c3c3c"},
                          {NodeSelected | NodeNew, "#1e1e1e #282828"},
                          {NodeMarked, "#0a0a0a #141414"},
                          {NodeHovered, "#535353 #5a5a5a"},
                          {NodeSelected | NodeHovered, "#616161 #686868"},
                          {NodeNew | NodeHovered, "#6f6f6f #767676"}}) {
        node.SetCondition(NodeDrawn | c.flags);
        EXPECT_EQ(Draw()[5], std::string("GradientFill 111 20 149 30 ") + c.colors + " 100 0")
            << c.flags;
    }
    EXPECT_EQ(drawer.GetDrawInfo().fill_top, _color(10, 10, 10));
}

TEST_F(PortNodeDrawer, DrawsEachStateOfThePorts) {
    struct Case {
        int state;
        const char* brush;
        const char* left_mark;
        const char* right_mark;
    };
    for (const Case& c : {Case{1, "#00b200 1", "-", "-"},
                          {2, "#e50000 1", "+", "+"},
                          {4, "#ffcc33 1", "<", ">"},
                          {9, "#16ff16 1", "-", "-"},
                          {10, "#fe3a3a 1", "+", "+"},
                          {12, "#ffdb70 1", "<", ">"},
                          {6, "#ffcc33 1", "<", ">"},
                          {7, "#ffcc33 1", "<", ">"}}) {
        const std::string brush = std::string("SetBrush ") + c.brush;
        const std::string left = c.left_mark;
        const std::string right = c.right_mark;
        EXPECT_EQ(DrawWithPorts(c.state, 0),
                  (Lines{brush, "RoundRect 100 20 110 30 4 4",
                         "DrawString 100 20 110 30 \"" + left + "\" 36 -1"}))
            << c.state;
        EXPECT_EQ(DrawWithPorts(0, c.state),
                  (Lines{brush, "RoundRect 150 20 160 30 4 4",
                         "DrawString 150 20 160 30 \"" + right + "\" 36 -1"}))
            << c.state;
    }
}

TEST_F(PortNodeDrawer, DrawsNoPortWithoutNeighbours) {
    EXPECT_EQ(DrawWithPorts(0, 0), Lines());
    EXPECT_EQ(DrawWithPorts(PortPressed, PortPressed), Lines());
}

TEST_F(PortNodeDrawer, DrawsTheLeftPortBeforeTheRightOne) {
    EXPECT_EQ(DrawWithPorts(PortVisible, PortPartial),
              (Lines{"SetBrush #00b200 1", "RoundRect 100 20 110 30 4 4",
                     "DrawString 100 20 110 30 \"-\" 36 -1", "SetBrush #ffcc33 1",
                     "RoundRect 150 20 160 30 4 4", "DrawString 150 20 160 30 \">\" 36 -1"}));
}

TEST_F(PortNodeDrawer, KeepsItsPortsInsideTheRectangleOfTheNode) {
    node.SetPosition(-3.25, 7.5);
    node.SetSize({111.5, 15.0});
    const Lines lines = DrawWithPorts(PortVisible, PortVisible);
    ASSERT_EQ(lines.size(), 6U);
    EXPECT_EQ(lines[1], "RoundRect -3.25 7.5 11.75 22.5 6 6");
    EXPECT_EQ(lines[4], "RoundRect 93.25 7.5 108.25 22.5 6 6");
}

TEST_F(PortNodeDrawer, FramesAMarkedNodeWithThePortsThatItHas) {
    struct Case {
        int left;
        int right;
        const char* frame;
    };
    SetFlag(node, NodeMarked, true);
    for (const Case& c : {Case{0, 0, "Rectangle 111 19 149 31"},
                          {PortVisible, 0, "Rectangle 99 19 149 31"},
                          {0, PortHidden, "Rectangle 111 19 161 31"},
                          {PortPartial, PortVisible, "Rectangle 99 19 161 31"}}) {
        const Lines lines = DrawWithPorts(c.left, c.right);
        ASSERT_GE(lines.size(), 3U);
        EXPECT_EQ(Lines(lines.end() - 3, lines.end()),
                  (Lines{"SetBrush #000000 0", "SetPen #ff0000 1 1 0 0", c.frame}));
    }
}

TEST_F(PortNodeDrawer, FramesAMarkedOwnerAboveAndBelow) {
    node.AddNode();
    SetFlag(node, NodeMarked, true);
    drawer.GetDrawInfo().selected_border_color = _color(1, 2, 3);
    drawer.GetDrawInfo().pen_width = 4;
    EXPECT_EQ(DrawWithPorts(PortVisible, PortVisible),
              (Lines{"SetBrush #000000 0", "SetPen #010203 1 1 0 0", "Rectangle 100 19 160 31"}));
}

TEST_F(PortNodeDrawer, KeepsTheFrameAwayByTheZoomFactor) {
    SetFlag(node, NodeMarked, true);
    drawer.SetZoomFactor(2.5);
    drawer.SetLeftPortState(PortVisible);
    drawer.SetRightPortState(PortVisible);
    EXPECT_EQ(Draw().back(), "Rectangle 97.5 17.5 162.5 32.5");
}

TEST_F(PortNodeDrawer, DrawsNoNodeWithoutTheDrawnFlag) {
    SetFlag(node, NodeDrawn, false);
    SetFlag(node, NodeMarked | NodeSelected, true);
    EXPECT_EQ(Draw(), Lines());
    drawer.Draw(graph->GetRoot(), &painter);
    EXPECT_EQ(painter.TakeLines(), Lines());
}

TEST_F(PortNodeDrawer, DrawsNothingWithoutAPainter) {
    drawer.SetIPainter(&painter);
    drawer.Draw(node, nullptr);
    EXPECT_EQ(painter.TakeLines(), Lines());
}

TEST_F(PortNodeDrawer, KeepsItsPainterWhileItDrawsWithAnother) {
    RecordingPainter own;
    drawer.SetIPainter(&own);
    EXPECT_FALSE(Draw().empty());
    EXPECT_EQ(own.TakeLines(), Lines());
    EXPECT_EQ(drawer.GetIPainter(), &own);
}

// Fails as soon as it is asked to measure.
class FailingPainter : public RecordingPainter {
public:
    [[nodiscard]] size<double> GetTextSize(const std::string& /*text*/,
                                           const paintcore::font* /*f*/, int /*length*/,
                                           bool /*leading*/, bool /*trailing*/) override {
        throw std::runtime_error("no text engine");
    }
};

TEST_F(PortNodeDrawer, KeepsPainterAndZoomWhenAPainterThrows) {
    FailingPainter failing;
    drawer.SetZoomFactor(0.5);
    EXPECT_THROW(drawer.Draw(node, &failing), std::runtime_error);
    EXPECT_EQ(drawer.GetIPainter(), nullptr);
    drawer.SetIPainter(&failing);
    EXPECT_THROW(static_cast<void>(drawer.GetSize(node)), std::runtime_error);
    EXPECT_EQ(drawer.GetDrawInfo().zoom_factor, 0.5);
}

// Measures every text as 80 wide and 10 high.
class WidePainter : public RecordingPainter {
public:
    [[nodiscard]] size<double> GetTextSize(const std::string& /*text*/,
                                           const paintcore::font* /*f*/, int /*length*/,
                                           bool /*leading*/, bool /*trailing*/) override {
        return {80.0, 10.0};
    }
};

TEST_F(PortNodeDrawer, AddsTheRoomOfTwoPortsToTheSizeOfTheCaption) {
    WidePainter wide;
    drawer.SetIPainter(&wide);
    EXPECT_EQ(drawer.GetSize(node), (size<double>{113.0, 15.0}));
}

TEST_F(PortNodeDrawer, MeasuresAtZoomOneAndPutsTheFactorBack) {
    drawer.SetIPainter(&painter);
    for (const double zoom : {0.25, 1.0, 3.0}) {
        drawer.SetZoomFactor(zoom);
        EXPECT_EQ(drawer.GetSize(node), (size<double>{75.0, 15.0}));
        EXPECT_EQ(painter.TakeLines(), (Lines{"GetTextSize \"parse  \" null -1 1 1"}));
        EXPECT_EQ(drawer.GetDrawInfo().zoom_factor, zoom);
    }
}

TEST_F(PortNodeDrawer, HasNoSizeWithoutAPainter) {
    EXPECT_EQ(drawer.GetSize(node), (size<double>{0.0, 0.0}));
}

TEST_F(PortNodeDrawer, PutsTheInnerGraphUnderTheCaption) {
    drawer.SetIPainter(&painter);
    EXPECT_EQ(drawer.GetSize(node, {100.0, 50.0}), (NodeFrame{{100.0, 65.0}, {100.0, 35.0}}));
    EXPECT_EQ(drawer.GetSize(node, {30.0, 50.0}), (NodeFrame{{75.0, 65.0}, {100.0, 35.0}}));
}

TEST_F(PortNodeDrawer, MakesTheRootAsLargeAsItsContents) {
    drawer.SetIPainter(&painter);
    EXPECT_EQ(drawer.GetSize(graph->GetRoot(), {100.0, 50.0}),
              (NodeFrame{{100.0, 50.0}, {0.0, 0.0}}));
}

TEST_F(PortNodeDrawer, MeasuresTheCaptionStripAsDerivedDrawersDo) {
    class TallDrawer : public CRectPortNodeDrawer {
    public:
        using CRectPortNodeDrawer::GetSize;
        size<double> GetSize(Node /*node*/) override { return {60.0, 40.0}; }
    };
    TallDrawer tall;
    EXPECT_EQ(tall.GetSize(node, {50.0, 50.0}), (NodeFrame{{60.0, 90.0}, {100.0, 60.0}}));
}

TEST_F(PortNodeDrawer, IgnoresAZoomThatIsNotPositive) {
    drawer.SetZoomFactor(2.5);
    for (const double zoom : {0.0, -1.0, -0.0}) {
        drawer.SetZoomFactor(zoom);
        EXPECT_EQ(drawer.GetDrawInfo().zoom_factor, 2.5);
    }
}

TEST_F(PortNodeDrawer, CountsTheBorderOfAPortAsInIt) {
    struct Case {
        double x;
        double y;
        bool left;
        bool right;
    };
    for (const Case& c : {Case{100.0, 20.0, true, false},
                          {110.0, 30.0, true, false},
                          {105.0, 25.0, true, false},
                          {99.5, 25.0, false, false},
                          {110.5, 25.0, false, false},
                          {105.0, 19.5, false, false},
                          {105.0, 30.5, false, false},
                          {130.0, 25.0, false, false},
                          {149.5, 25.0, false, false},
                          {150.0, 20.0, false, true},
                          {160.0, 30.0, false, true},
                          {160.5, 25.0, false, false},
                          {155.0, 19.5, false, false},
                          {155.0, 30.5, false, false}}) {
        EXPECT_EQ(drawer.IsLeftPortClicked(node, c.x, c.y), c.left) << c.x << ' ' << c.y;
        EXPECT_EQ(drawer.IsRightPortClicked(node, c.x, c.y), c.right) << c.x << ' ' << c.y;
    }
}

TEST_F(PortNodeDrawer, HasOverlappingPortsWhereItIsNarrow) {
    node.SetSize({15.0, 10.0});
    EXPECT_TRUE(drawer.IsLeftPortClicked(node, 107.0, 25.0));
    EXPECT_TRUE(drawer.IsRightPortClicked(node, 107.0, 25.0));
}

TEST_F(PortNodeDrawer, HasNoPortsWithoutAHeight) {
    node.SetSize({60.0, 0.0});
    EXPECT_FALSE(drawer.IsLeftPortClicked(node, 100.0, 20.0));
    EXPECT_FALSE(drawer.IsRightPortClicked(node, 160.0, 20.0));
}

}  // namespace
}  // namespace nodeline::test
