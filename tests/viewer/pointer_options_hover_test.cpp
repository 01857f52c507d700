#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "viewer/stage.h"

// What handlers are told of a pointer that moves.

namespace nodeline::test {
namespace {

class Hover : public testing::Test {
protected:
    Hover() { stage.content->SetTellHover(true); }
    // What a move is told to, without a paint.
    Log MovedTo(point<int> p) {
        control.MouseMove(p.x, p.y, 0, MouseButton::None);
        return stage.Take();
    }
    void LookNewWhenHovered() {
        stage.script.answers["hover"] = HandlerRepaint;
        stage.script.answers["leave"] = HandlerRepaint;
    }
    static bool HasFill(const Log& painted) {
        return std::find(painted.begin(), painted.end(), "fill") != painted.end();
    }

    Stage stage;
    point<int> on_a = stage.PixelOf(stage.a);
    point<int> on_b = stage.PixelOf(stage.b);
    point<int> on_edge = stage.PixelOfEdge();
    viewkit::CControl& control = stage.window.GetControl();
};

TEST_F(Hover, IsNotToldWithoutTheOption) {
    Stage plain;
    EXPECT_FALSE(plain.content->GetTellHover());
    for (const point<int> p : {on_a, on_edge, on_b, point<int>{3, 3}}) plain.window.Move(p.x, p.y);
    plain.window.GetControl().MouseLeave();
    EXPECT_EQ(plain.Take(), Log());
}

TEST_F(Hover, FollowsThePointerFromOneNodeToTheNext) {
    EXPECT_EQ(MovedTo(on_a), Log({"hover a"}));
    EXPECT_EQ(MovedTo({on_a.x + 2, on_a.y}), Log());
    EXPECT_EQ(MovedTo(on_b), Log({"leave a", "hover b"}));
    EXPECT_EQ(MovedTo({3, 3}), Log({"leave b"}));
    EXPECT_EQ(MovedTo({4, 3}), Log()) << "the root is never told";
}

TEST_F(Hover, TakesEdgesBetweenNodes) {
    EXPECT_EQ(MovedTo(on_edge), Log({"hover ab"}));
    EXPECT_EQ(MovedTo({on_edge.x + 1, on_edge.y}), Log());
    EXPECT_EQ(MovedTo(on_a), Log({"leave ab", "hover a"}));
    EXPECT_EQ(MovedTo(on_edge), Log({"leave a", "hover ab"}));
}

TEST_F(Hover, AnEdgeGoesBeforeAnOwnerAndALeafBeforeAnEdge) {
    const point<double> a = stage.a.GetPosition();
    MoveNode(stage.c, a.x + 10.0, a.y - 30.0);
    stage.c.SetSize({100.0, 100.0});
    EXPECT_EQ(MovedTo(on_edge), Log({"hover ab"}));
    EXPECT_EQ(MovedTo({on_edge.x, on_edge.y + 20}), Log({"leave ab", "hover c"}));
    stage.content->SetPickDrawn(true);
    MoveNode(stage.d, a.x + 20.0, a.y);
    EXPECT_EQ(MovedTo(stage.PixelOf(stage.d)), Log({"leave c", "hover d"}));
}

TEST_F(Hover, EndsWhenThePointerLeavesTheSurface) {
    MovedTo(on_a);
    stage.TakePaint();
    control.MouseLeave();
    EXPECT_EQ(stage.Take(), Log({"leave a"}));
    EXPECT_EQ(stage.TakePaint(), Log()) << "nothing has changed its look";
    control.MouseLeave();
    EXPECT_EQ(stage.Take(), Log());
}

TEST_F(Hover, WhatTheApplicationHasNotedIsToldBesides) {
    MovedTo(on_a);
    stage.content->NoteHover(stage.b);
    control.MouseLeave();
    EXPECT_EQ(stage.Take(), Log({"leave a", "leave b"}));
    EXPECT_TRUE(HasFill(stage.TakePaint()));
}

TEST_F(Hover, RepaintsJustWhatHasChanged) {
    LookNewWhenHovered();
    ViewListener view(*stage.viewer);
    MovedTo(on_a);
    EXPECT_EQ(stage.TakePaint(), Log({"fill", "a", "root", "ab"}));
    MovedTo(on_b);
    EXPECT_EQ(stage.TakePaint(), Log({"fill", "a", "root", "ab", "fill", "b", "root", "ab"}));
    MovedTo(on_edge);
    EXPECT_EQ(stage.TakePaint(), Log({"fill", "b", "root", "ab", "fill", "a", "b", "root", "ab"}));
    control.MouseLeave();
    EXPECT_EQ(stage.TakePaint(), Log({"fill", "a", "b", "root", "ab"}));
    EXPECT_EQ(view.count, 0);
}

TEST_F(Hover, SeveralNodesBetweenTwoPaintsAreRepaintedAlone) {
    LookNewWhenHovered();
    for (const point<int> p : {on_a, on_b, on_a, stage.PixelOf(stage.d), on_b}) MovedTo(p);
    const Log painted = stage.TakePaint();
    EXPECT_EQ(std::count(painted.begin(), painted.end(), "fill"), 3);
    EXPECT_EQ(std::count(painted.begin(), painted.end(), "a"), 1);
    EXPECT_EQ(std::count(painted.begin(), painted.end(), "b"), 1);
    EXPECT_EQ(std::count(painted.begin(), painted.end(), "d"), 1);
}

TEST_F(Hover, TheAnswerThatTheGraphHasChangedPaintsEverything) {
    stage.script.answers["hover"] = HandlerRecalculate;
    MovedTo(on_a);
    EXPECT_TRUE(HasFill(stage.TakePaint()));
    stage.script.answers["hover"] = HandlerDone;
    MovedTo(on_b);
    EXPECT_FALSE(stage.window.PaintPending());
}

TEST_F(Hover, NothingNewBeginsWhileAButtonIsDown) {
    MovedTo(on_a);
    stage.script.answers["down"] = HandlerDone;
    stage.window.Press(on_a.x, on_a.y);
    stage.window.Move(on_b.x, on_b.y);
    stage.window.Release(on_a.x, on_a.y);
    EXPECT_EQ(stage.Take(), Log({"down a", "up a", "click a"}));
    EXPECT_EQ(MovedTo(on_b), Log({"leave a", "hover b"}));
}

TEST_F(Hover, ADragEndsIt) {
    MovedTo(on_a);
    stage.window.Press(on_a.x, on_a.y);
    EXPECT_EQ(stage.Take(), Log({"down a"}));
    stage.window.Move(on_a.x + 5, on_a.y);
    EXPECT_EQ(stage.Take(), Log({"leave a"}));
    stage.window.Move(on_a.x + 9, on_a.y);
    stage.window.Release(on_a.x + 9, on_a.y);
    EXPECT_EQ(stage.Take(), Log({"up a"}));
    EXPECT_EQ(MovedTo(stage.PixelOf(stage.a)), Log({"hover a"}));
}

TEST_F(Hover, ARubberRectangleEndsIt) {
    stage.content->GetDragTracker()->Enable(false);
    stage.content->GetZoomRect()->Enable(true);
    MovedTo(on_a);
    stage.window.Press(on_a.x, on_a.y);
    stage.window.Move(on_a.x + 5, on_a.y);
    EXPECT_EQ(stage.Take(), Log({"down a", "leave a"}));
}

TEST_F(Hover, ALostPressEndsItSoThatPortsAreLetGo) {
    stage.content->SetSinglePress(true);
    MovedTo(on_a);
    stage.window.Press(on_a.x, on_a.y);
    control.LoseCapture();
    EXPECT_EQ(stage.Take(), Log({"down a", "leave a"}));
}

TEST_F(Hover, AHiddenNodeIsLeftAtTheNextPaint) {
    LookNewWhenHovered();
    MovedTo(on_a);
    stage.TakePaint();
    Hide(stage.a);
    stage.content->RenewView(true);
    stage.TakePaint();
    EXPECT_EQ(stage.Take(), Log({"leave a"}));
    EXPECT_EQ(MovedTo({on_a.x + 1, on_a.y}), Log());
    EXPECT_FALSE(stage.window.PaintPending());
}

TEST_F(Hover, AnEdgeWithAHiddenEndIsLeftToo) {
    MovedTo(on_edge);
    Hide(stage.b);
    stage.content->RenewView(true);
    stage.TakePaint();
    EXPECT_EQ(stage.Take(), Log({"leave ab"}));
    EXPECT_EQ(MovedTo({on_edge.x + 1, on_edge.y}), Log());
}

TEST_F(Hover, ARemovedNodeIsToldNothing) {
    MovedTo(on_a);
    stage.ab.Remove();
    stage.a.Remove();
    EXPECT_EQ(MovedTo({on_a.x + 1, on_a.y}), Log());
    EXPECT_EQ(MovedTo(on_b), Log({"hover b"}));
}

TEST_F(Hover, ARemovedEdgeIsToldNothing) {
    MovedTo(on_edge);
    stage.ab.Remove();
    EXPECT_EQ(MovedTo({on_edge.x + 1, on_edge.y}), Log());
}

TEST_F(Hover, AnotherGraphEndsIt) {
    MovedTo(on_a);
    stage.viewer->SetGraph({});
    EXPECT_EQ(stage.Take(), Log({"leave a"}));
    EXPECT_EQ(MovedTo({on_a.x + 1, on_a.y}), Log());
}

TEST_F(Hover, SwitchingItOffEndsIt) {
    MovedTo(on_a);
    stage.content->SetTellHover(false);
    EXPECT_EQ(stage.Take(), Log({"leave a"}));
    EXPECT_EQ(MovedTo(on_b), Log());
}

TEST_F(Hover, AHandlerThatShowsAnotherGraphIsNotFollowedByTheOldOne) {
    MovedTo(on_a);
    stage.script.on_event = [&](const std::string& event) {
        if (event == "leave") stage.viewer->SetGraph({});
    };
    EXPECT_EQ(MovedTo(on_b), Log({"leave a"}));
}

TEST_F(Hover, AHandlerMayDestroyTheViewer) {
    for (const char* event : {"hover", "leave"}) {
        Stage other;
        other.content->SetTellHover(true);
        other.script.on_event = [&other, event](const std::string& heard) {
            if (heard == event && other.viewer != nullptr) {
                delete std::exchange(other.viewer, nullptr);
            }
        };
        other.window.Move(on_a.x, on_a.y);
        other.window.Move(on_b.x, on_b.y);
        EXPECT_EQ(other.viewer, nullptr) << event;
    }
}

// ---------------------------------------------------------------------------------------------
// With ports

TEST(HoverOnPorts, APortIsClickedByAnUnsteadyHandAndLightsUp) {
    graph_ptr2<Graph> graph(new Graph, true);
    Node from = graph->GetRoot().AddNode();
    Node to = graph->GetRoot().AddNode();
    from.LinkTo(to);
    headless::HeadlessWindow window({400, 300});
    graph_ptr2<PortNodeHandler> handler(new PortNodeHandler, true);
    handler->SetIPainter(window.GetPainter());
    graph->SetDefaultNodeHandler(handler);
    auto* viewer = new CGraphViewer(window.GetRoot(), {100, 100}, viewkit::Alignment::Client);
    viewer->GetContent()->SetTellHover(true);
    viewer->SetGraph(graph);
    window.PaintPending();
    const rectangle<double> r = MakeDRect(from.GetPosition(), from.GetSize());
    const point<int> port =
        viewer->GetContent()->ConvertL2P({r.right - 4.0, (r.top + r.bottom) * 0.5});
    window.Move(port.x, port.y);
    EXPECT_TRUE(IsFlagSet(from, NodeHovered));
    EXPECT_FALSE(IsFlagSet(to, NodeHovered));
    window.Press(port.x, port.y);
    window.Move(port.x + 1, port.y);
    window.Release(port.x + 1, port.y);
    EXPECT_TRUE(IsFlagSet(to, NodeHidden));
    window.Move(3, 3);
    EXPECT_FALSE(IsFlagSet(from, NodeHovered));
}

}  // namespace
}  // namespace nodeline::test
