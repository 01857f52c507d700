#include <backends/headless/recording_painter.h>
#include <gtest/gtest.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/ops/graph_ops.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace nodeline::test {
namespace {

using headless::RecordingPainter;
using Lines = std::vector<std::string>;

class RectNodeDrawer : public testing::Test {
protected:
    RectNodeDrawer() {
        node.SetCaption("parse");
        node.SetPosition(10.0, 20.5);
        node.SetSize({42.0, 15.0});
        SetFlag(node, NodeDrawn, true);
    }

    Lines Draw() {
        drawer.Draw(node, &painter);
        return painter.TakeLines();
    }

    graph_ptr2<Graph> graph{new Graph(), true};
    Node node = graph->GetRoot().AddNode();
    RecordingPainter painter;
    CRectNodeDrawer drawer;
};

TEST_F(RectNodeDrawer, DrawsALeafWithItsCaptionInTheMiddle) {
    EXPECT_EQ(Draw(),
              (Lines{"SetPen #000000 1 1 0 0", "SetTextColor #000000",
                     "GetTextSize \"parse  \" null -1 1 1", "GetTextSize \"parse\" null -1 1 1",
                     "GradientFill 10 20.5 52 35.5 #ffffff #7f7f7f 100 0", "SetPen #000000 1 1 0 0",
                     "Rectangle 10 20.5 52 35.5", "DrawString 10 20.5 52 35.5 \"parse\" 36 -1"}));
}

TEST_F(RectNodeDrawer, DrawsTheCaptionOfAnOwnerAtTheTopLeft) {
    node.AddNode();
    EXPECT_EQ(Draw().back(), "DrawString 10 20.5 52 35.5 \"parse\" 9 -1");
}

TEST_F(RectNodeDrawer, SetsTheFontBeforeThePenAndForEachMeasuring) {
    drawer.SetZoomFactor(0.5);
    EXPECT_EQ(Draw(),
              (Lines{"SetFont \"\" 4 4 0 0 1", "SetPen #000000 1 1 0 0", "SetTextColor #000000",
                     "SetFont \"\" 4 4 0 0 1", "GetTextSize \"parse  \" null -1 1 1",
                     "GetTextSize \"parse\" null -1 1 1",
                     "GradientFill 10 20.5 52 35.5 #ffffff #7f7f7f 100 0", "SetPen #000000 1 1 0 0",
                     "Rectangle 10 20.5 52 35.5", "DrawString 10 20.5 52 35.5 \"parse\" 36 -1"}));
}

TEST_F(RectNodeDrawer, DrawsWithTheLookThatItWasGiven) {
    CNodeDrawInfo& look = drawer.GetDrawInfo();
    look.pen_width = 3;
    look.text_color = paintcore::_color(1, 2, 3);
    look.border_color = paintcore::_color(4, 5, 6);
    look.fill_top = paintcore::_color(7, 8, 9);
    look.fill_bottom = paintcore::_color(10, 11, 12);
    EXPECT_EQ(Draw(),
              (Lines{"SetPen #040506 3 1 0 0", "SetTextColor #010203",
                     "GetTextSize \"parse  \" null -1 1 1", "GetTextSize \"parse\" null -1 1 1",
                     "GradientFill 10 20.5 52 35.5 #070809 #0a0b0c 100 0", "SetPen #040506 3 1 0 0",
                     "Rectangle 10 20.5 52 35.5", "DrawString 10 20.5 52 35.5 \"parse\" 36 -1"}));
}

TEST_F(RectNodeDrawer, DrawsAMarkedNodeLighter) {
    drawer.GetDrawInfo().fill_top = paintcore::_color(255, 0, 0);
    drawer.GetDrawInfo().fill_bottom = paintcore::_color(0, 0, 0);
    SetFlag(node, NodeMarked, true);
    EXPECT_EQ(Draw()[4], "GradientFill 10 20.5 52 35.5 #fe4c4c #4c4c4c 100 0");
    EXPECT_EQ(drawer.GetDrawInfo().fill_top, paintcore::_color(255, 0, 0));
}

TEST_F(RectNodeDrawer, LooksTheSameSelectedNewOrHovered) {
    const Lines plain = Draw();
    SetFlag(node, NodeSelected | NodeNew | NodeHovered, true);
    EXPECT_EQ(Draw(), plain);
}

TEST_F(RectNodeDrawer, DrawsAnEmptyCaptionAsAnEmptyText) {
    node.SetCaption("");
    EXPECT_EQ(Draw().back(), "DrawString 10 20.5 52 35.5 \"\" 36 -1");
}

TEST_F(RectNodeDrawer, DrawsALongCaptionShortened) {
    node.SetCaption("a caption of thirty characters");
    EXPECT_EQ(Draw().back(), "DrawString 10 20.5 52 35.5 \"a caption of thirty ch...\" 36 -1");
}

TEST_F(RectNodeDrawer, DrawsNoNodeWithoutTheDrawnFlag) {
    SetFlag(node, NodeDrawn, false);
    SetFlag(node, NodeMarked | NodeSelected, true);
    EXPECT_EQ(Draw(), Lines());
    drawer.Draw(graph->GetRoot(), &painter);
    EXPECT_EQ(painter.TakeLines(), Lines());
}

TEST_F(RectNodeDrawer, DrawsNothingWithoutAPainter) {
    drawer.SetIPainter(&painter);
    drawer.Draw(node, nullptr);
    EXPECT_EQ(painter.TakeLines(), Lines());
}

TEST_F(RectNodeDrawer, KeepsItsPainterWhileItDrawsWithAnother) {
    RecordingPainter own;
    drawer.SetIPainter(&own);
    EXPECT_FALSE(Draw().empty());
    EXPECT_EQ(own.TakeLines(), Lines());
    EXPECT_EQ(drawer.GetIPainter(), &own);
    EXPECT_EQ(drawer.GetDrawInfo().painter, &own);
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

TEST_F(RectNodeDrawer, KeepsPainterAndZoomWhenAPainterThrows) {
    FailingPainter failing;
    drawer.SetZoomFactor(0.5);
    EXPECT_THROW(drawer.Draw(node, &failing), std::runtime_error);
    EXPECT_EQ(drawer.GetIPainter(), nullptr);
    drawer.SetIPainter(&failing);
    EXPECT_THROW(static_cast<void>(drawer.GetSize(node)), std::runtime_error);
    EXPECT_EQ(drawer.GetDrawInfo().zoom_factor, 0.5);
}

TEST_F(RectNodeDrawer, MeasuresAtZoomOneAndPutsTheFactorBack) {
    drawer.SetIPainter(&painter);
    for (const double zoom : {0.25, 1.0, 3.0}) {
        drawer.SetZoomFactor(zoom);
        EXPECT_EQ(drawer.GetSize(node), (size<double>{42.0, 15.0}));
        EXPECT_EQ(painter.TakeLines(), (Lines{"GetTextSize \"parse  \" null -1 1 1"}));
        EXPECT_EQ(drawer.GetDrawInfo().zoom_factor, zoom);
    }
}

TEST_F(RectNodeDrawer, HasNoSizeWithoutAPainter) {
    EXPECT_EQ(drawer.GetSize(node), (size<double>{0.0, 0.0}));
}

TEST_F(RectNodeDrawer, PutsTheInnerGraphUnderTheCaption) {
    drawer.SetIPainter(&painter);
    EXPECT_EQ(drawer.GetSize(node, {100.0, 50.0}), (NodeFrame{{100.0, 65.0}, {10.0, 35.5}}));
    EXPECT_EQ(drawer.GetSize(node, {30.0, 50.0}), (NodeFrame{{42.0, 65.0}, {10.0, 35.5}}));
}

TEST_F(RectNodeDrawer, MakesTheRootAsLargeAsItsContents) {
    drawer.SetIPainter(&painter);
    Node root = graph->GetRoot();
    root.SetPosition(5.0, 5.0);
    EXPECT_EQ(drawer.GetSize(root, {100.0, 50.0}), (NodeFrame{{100.0, 50.0}, {0.0, 0.0}}));
    EXPECT_EQ(painter.TakeLines(), Lines());
}

TEST_F(RectNodeDrawer, MeasuresTheCaptionStripAsDerivedDrawersDo) {
    class TallDrawer : public CRectNodeDrawer {
    public:
        using CRectNodeDrawer::GetSize;
        size<double> GetSize(Node /*node*/) override { return {60.0, 40.0}; }
    };
    TallDrawer tall;
    EXPECT_EQ(tall.GetSize(node, {50.0, 50.0}), (NodeFrame{{60.0, 90.0}, {10.0, 60.5}}));
}

TEST_F(RectNodeDrawer, IgnoresAZoomThatIsNotPositive) {
    drawer.SetZoomFactor(2.5);
    for (const double zoom : {0.0, -1.0, -0.0}) {
        drawer.SetZoomFactor(zoom);
        EXPECT_EQ(drawer.GetDrawInfo().zoom_factor, 2.5);
    }
}

TEST_F(RectNodeDrawer, DoesTheWorkOfASimpleNodeHandler) {
    SimpleNodeHandler handler;
    EXPECT_EQ(handler.GetIPainter(), nullptr);
    EXPECT_EQ(handler.GetSize(node), (size<double>{0.0, 0.0}));
    handler.SetIPainter(&painter);
    EXPECT_EQ(handler.GetIPainter(), &painter);
    EXPECT_EQ(handler.GetSize(node), (size<double>{42.0, 15.0}));
    EXPECT_EQ(handler.GetSize(node, {30.0, 50.0}), (NodeFrame{{42.0, 65.0}, {10.0, 35.5}}));

    handler.SetZoomFactor(0.5);
    handler.SetZoomFactor(0.0);
    handler.GetDrawInfo().pen_width = 2;
    drawer.SetZoomFactor(0.5);
    drawer.GetDrawInfo().pen_width = 2;
    painter.TakeLines();
    handler.Draw(node, &painter);
    const Lines lines = painter.TakeLines();
    EXPECT_EQ(lines, Draw());
    EXPECT_EQ(lines.size(), 10U);
}

}  // namespace
}  // namespace nodeline::test
