#include <backends/headless/recording_painter.h>
#include <gtest/gtest.h>
#include <handlers/event_log.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/ops/graph_ops.h>

#include <string>
#include <vector>

namespace nodeline::test {
namespace {

using headless::RecordingPainter;
using Lines = std::vector<std::string>;

class DummyEdges : public testing::Test {
protected:
    DummyEdges() {
        edge.SetCaption("calls");
        SetFlag(edge, EdgeDrawn, true);
    }

    void Route(const std::vector<point<double>>& points) {
        edge.RemoveBreakNodes();
        edge.AddBreakNodesIn(graph->GetRoot(), static_cast<int>(points.size()));
        const NodeSet nodes = edge.GetBreakNodes();
        for (int i = 0; i < nodes.GetCount(); ++i) {
            nodes.GetItem(i).SetPosition(points[static_cast<std::size_t>(i)]);
        }
    }
    Lines Draw() {
        handler.Draw(edge, &painter);
        return painter.TakeLines();
    }
    // The pen of a drawing, which is what the flags of an edge change.
    std::string Pen() {
        Route({{0.0, 0.0}, {1.0, 1.0}});
        return Draw().front();
    }

    graph_ptr2<Graph> graph{new Graph(), true};
    Node from = graph->GetRoot().AddNode();
    Node to = graph->GetRoot().AddNode();
    Edge edge = from.LinkTo(to);
    RecordingPainter painter;
    DummyEdgeHandler handler;
};

TEST_F(DummyEdges, AreDrawnAsAPolylineWithAnArrowhead) {
    Route({{1.0, 2.0}, {30.5, 2.0}, {40.0, -7.0}, {50.0, -7.0}});
    EXPECT_EQ(Draw(), (Lines{"SetPen #000000 1 1 0 0", "MoveTo 1 2", "LineTo 30.5 2",
                             "LineTo 40 -7", "LineTo 50 -7", "SetArrowSize 7 5", "BeginPlot 6",
                             "Vertex 40 -7", "Vertex 50 -7", "EndPlot"}));
}

TEST_F(DummyEdges, WithTwoBreakNodesAreOneLineUnderTheArrowhead) {
    Route({{1.0, 2.0}, {30.5, 4.0}});
    EXPECT_EQ(Draw(),
              (Lines{"SetPen #000000 1 1 0 0", "MoveTo 1 2", "LineTo 30.5 4", "SetArrowSize 7 5",
                     "BeginPlot 6", "Vertex 1 2", "Vertex 30.5 4", "EndPlot"}));
}

TEST_F(DummyEdges, WithoutARouteAreNotDrawn) {
    EXPECT_EQ(Draw(), Lines());
    Route({{1.0, 2.0}});
    EXPECT_EQ(Draw(), Lines());
}

TEST_F(DummyEdges, WithoutTheDrawnFlagAreNotDrawn) {
    Route({{1.0, 2.0}, {30.5, 4.0}});
    SetFlag(edge, EdgeDrawn, false);
    SetFlag(edge, EdgeMarked | EdgeHovered, true);
    EXPECT_EQ(Draw(), Lines());
}

TEST_F(DummyEdges, AreNotDrawnWithoutAPainter) {
    Route({{1.0, 2.0}, {30.5, 4.0}});
    handler.Draw(edge, nullptr);
    EXPECT_EQ(painter.TakeLines(), Lines());
}

TEST_F(DummyEdges, StayWhereTheyAreAtAnyZoom) {
    Route({{1.0, 2.0}, {30.5, 4.0}});
    const Lines lines = Draw();
    handler.SetZoomFactor(3.0);
    EXPECT_EQ(Draw(), lines);
}

TEST_F(DummyEdges, TakeTheirColourFromTheirFlags) {
    EXPECT_EQ(Pen(), "SetPen #000000 1 1 0 0");
    SetFlag(edge, EdgeHovered, true);
    EXPECT_EQ(Pen(), "SetPen #4c4c4c 1 1 0 0");
    SetFlag(edge, EdgeMarked, true);
    EXPECT_EQ(Pen(), "SetPen #fe4c4c 1 1 0 0");
    SetFlag(edge, EdgeHovered, false);
    EXPECT_EQ(Pen(), "SetPen #ff0000 1 1 0 0");
}

TEST_F(DummyEdges, AreDrawnInTheLookOfTheirHandler) {
    handler.color = paintcore::_color(1, 2, 3);
    handler.marked_color = paintcore::_color(4, 5, 6);
    handler.pen_width = 4;
    EXPECT_EQ(Pen(), "SetPen #010203 4 1 0 0");
    SetFlag(edge, EdgeMarked, true);
    EXPECT_EQ(Pen(), "SetPen #040506 4 1 0 0");
}

TEST_F(DummyEdges, AreOneUnitWideWhateverThePen) {
    handler.pen_width = 9;
    handler.SetZoomFactor(4.0);
    EXPECT_EQ(handler.GetWidth(edge), 1.0);
}

TEST_F(DummyEdges, LightUpUnderThePointerWithoutASignal) {
    EventLog<Edge> log(handler);
    EXPECT_EQ(handler.HandleMouseHover(edge), HandlerRepaint);
    EXPECT_EQ(edge.GetCondition(), EdgeDrawn | EdgeHovered);
    EXPECT_EQ(handler.HandleMouseLeave(edge), HandlerRepaint);
    EXPECT_EQ(edge.GetCondition(), EdgeDrawn);
    EXPECT_EQ(log.Take(), Log());
}

TEST_F(DummyEdges, AnswerATooltipWithTheirCaption) {
    EventLog<Edge> log(handler);
    CGraphTooltipEvent event;
    event.pos = {10.0, 20.0};
    EXPECT_EQ(handler.HandleOnTooltip(edge, &event), HandlerDone);
    EXPECT_EQ(event.text, "calls");
    EXPECT_EQ(event.pos, (point<double>{10.0, 20.0}));
    EXPECT_EQ(event.tipRect, rectangle<double>());
    EXPECT_EQ(log.Take(), (Log{"OnTooltip calls \"calls\""}));
}

using DummyEdgesDeathTest = DummyEdges;

TEST_F(DummyEdgesDeathTest, TakeATooltipWithoutAnEventForAMistake) {
    EventLog<Edge> log(handler);
    int result = HandlerIgnored;
    EXPECT_DEBUG_DEATH(result = handler.HandleOnTooltip(edge, nullptr), "event");
    EXPECT_EQ(result, HandlerIgnored);
    EXPECT_EQ(log.Take(), Log());
}

TEST_F(DummyEdges, TrackATooltipInASmallSquareThatGrowsWithTheZoom) {
    struct Case {
        double zoom;
        double half;
    };
    for (const Case& c : {Case{0.2, 1.01}, {1.0, 1.01}, {1.5, 1.51}, {3.0, 3.01}}) {
        handler.SetZoomFactor(c.zoom);
        CGraphTooltipEvent event;
        event.pos = {10.0, 20.0};
        handler.HandleOnTooltip(edge, &event);
        EXPECT_EQ(event.trackRect,
                  (rectangle<double>{10.0 - c.half, 20.0 - c.half, 10.0 + c.half, 20.0 + c.half}))
            << c.zoom;
    }
}

TEST_F(DummyEdges, IgnoreAZoomThatIsNotPositive) {
    handler.SetZoomFactor(3.0);
    handler.SetZoomFactor(0.0);
    handler.SetZoomFactor(-1.0);
    CGraphTooltipEvent event;
    handler.HandleOnTooltip(edge, &event);
    EXPECT_EQ(event.trackRect, (rectangle<double>{-3.01, -3.01, 3.01, 3.01}));
}

TEST_F(DummyEdges, PassTheOtherEventsOn) {
    EventLog<Edge> log(handler);
    CGraphTooltipEvent event;
    EXPECT_EQ(handler.HandleMouseMove(edge, 1.0, 2.0, 0, MouseButton::None), 0);
    EXPECT_EQ(handler.HandleButtonDown(edge, 1.0, 2.0, 0, MouseButton::Left), 0);
    EXPECT_EQ(handler.HandleButtonUp(edge, 1.0, 2.0, 0, MouseButton::Left), 0);
    EXPECT_EQ(handler.HandleClick(edge, 1.0, 2.0, 0, MouseButton::Left), 0);
    EXPECT_EQ(handler.HandleDoubleClick(edge, 1.0, 2.0, 0, MouseButton::Left), 0);
    EXPECT_EQ(handler.HandleOnTooltipTrack(edge, &event), 0);
    EXPECT_EQ(log.Take(), (Log{"OnMouseMove calls 1 2 0 0", "OnButtonDown calls 1 2 0 1",
                               "OnButtonUp calls 1 2 0 1", "OnDoubleClick calls 1 2 0 1",
                               "OnDoubleClick calls 1 2 0 1", "OnTooltipTrack calls \"\""}));
    EXPECT_EQ(event.trackRect, rectangle<double>());
}

}  // namespace
}  // namespace nodeline::test
