#include <gtest/gtest.h>
#include <nodeline/viewer/overview.h>
#include <viewkit/scroll_box.h>

#include <algorithm>
#include <functional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "viewer/stage.h"

namespace nodeline::test {
namespace {

using viewkit::Cursor;

// An overview of 600 by 400 pixels, in which the view is a rectangle of 200 by 150 at (100, 100).
class OverviewOptions : public testing::Test {
protected:
    OverviewOptions() {
        const size<double> s = stage.graph->GetRoot().GetSize();
        unit = {600.0 / s.cx, 400.0 / s.cy};
        // The rectangle has the shape of the viewer's window on the screen only if the overview is
        // stretched alike; so the viewer gets a window that fits.
        const double width = 200.0 / unit.cx;
        const double height = 150.0 / unit.cy;
        scale = 400.0 / width;
        stage.window.Resize({400, static_cast<int>(height * scale)});
        Reset();
        window.PaintPending();
        window.GetRecorder().TakeLines();
    }
    void Reset() {
        stage.viewer->SetScale(scale);
        stage.viewer->SetStartX(100.0 / unit.cx);
        stage.viewer->SetStartY(100.0 / unit.cy);
    }
    // The rectangle in pixels of the overview.
    [[nodiscard]] rectangle<double> View() const {
        const rectangle<double>& r = overview->GetViewRect();
        return {r.left * unit.cx, r.top * unit.cy, r.right * unit.cx, r.bottom * unit.cy};
    }
    void ExpectView(double left, double top, double right, double bottom) {
        const rectangle<double> r = View();
        constexpr double kClose = 1.5;  // the viewer's window has whole pixels
        EXPECT_NEAR(r.left, left, kClose);
        EXPECT_NEAR(r.top, top, kClose);
        EXPECT_NEAR(r.right, right, kClose);
        EXPECT_NEAR(r.bottom, bottom, kClose);
    }
    void Drag(point<int> from, point<int> to) {
        Reset();
        window.Drag(from, to, 4);
    }
    [[nodiscard]] Cursor CursorAt(int x, int y) {
        window.Move(x, y);
        return window.GetCursor();
    }
    Log TakePaint() {
        window.PaintPending();
        return Stage::CaptionsIn(window.GetRecorder().TakeLines());
    }
    // The rectangles that lie over the picture.
    Log TakeOverlay() {
        Log log;
        window.GetControl().DrawOverlays(&window.GetRecorder());
        for (const std::string& line : window.GetRecorder().TakeLines()) {
            if (line.rfind("Rectangle", 0) == 0) log.push_back(line);
        }
        return log;
    }

    Stage stage;
    size<double> unit;  // pixels to the unit
    double scale = 0.0;
    headless::HeadlessWindow window{{600, 400}};
    COverviewContent* overview = new COverviewContent(window.GetRoot(), stage.viewer);
};

const Log kAllNodes{"fill", "root", "a", "b", "c", "d"};

// ---------------------------------------------------------------------------------------------
// Taking hold

class GrabAnywhere : public OverviewOptions {
protected:
    GrabAnywhere() { overview->SetGrabAnywhere(true); }
};

TEST_F(GrabAnywhere, IsOffAtFirst) {
    const COverviewContent fresh(nullptr, stage.viewer);
    EXPECT_FALSE(fresh.GetGrabAnywhere());
    EXPECT_TRUE(overview->GetGrabAnywhere());
    ExpectView(100.0, 100.0, 300.0, 250.0);
}

TEST_F(GrabAnywhere, AnEdgeFollowsThePointerAndTheOppositeOneStays) {
    // The other axis grows by as much, evenly about its middle.
    Drag({300, 175}, {340, 175});
    ExpectView(100.0, 85.0, 340.0, 265.0);
    Drag({100, 175}, {60, 180});
    ExpectView(60.0, 85.0, 300.0, 265.0);
    Drag({200, 250}, {200, 220});
    ExpectView(120.0, 100.0, 280.0, 220.0);
    Drag({200, 100}, {210, 85});
    ExpectView(90.0, 85.0, 310.0, 250.0);
}

TEST_F(GrabAnywhere, ACornerFollowsOnTheAxisThatMakesItLargerAndTheOppositeOneStays) {
    Drag({300, 250}, {340, 250});
    ExpectView(100.0, 100.0, 340.0, 280.0);
    Drag({300, 250}, {300, 280});
    ExpectView(100.0, 100.0, 340.0, 280.0);
    Drag({100, 100}, {60, 130});
    ExpectView(60.0, 70.0, 300.0, 250.0);
    Drag({300, 100}, {260, 130});
    ExpectView(100.0, 130.0, 260.0, 250.0);
    Drag({100, 250}, {140, 220});
    ExpectView(140.0, 100.0, 300.0, 220.0);
}

TEST_F(GrabAnywhere, EdgesAreTakenThreePixelsOnEitherSide) {
    for (const int off : {-3, 3}) {
        Drag({300 + off, 175}, {340 + off, 175});
        ExpectView(100.0, 85.0, 340.0, 265.0);
        Drag({100 + off, 175}, {60 + off, 175});
        ExpectView(60.0, 85.0, 300.0, 265.0);
        Drag({200, 250 + off}, {200, 280 + off});
        ExpectView(80.0, 100.0, 320.0, 280.0);
        Drag({200, 100 + off}, {200, 70 + off});
        ExpectView(80.0, 70.0, 320.0, 250.0);
    }
}

TEST_F(GrabAnywhere, WithoutItThreePixelsAwayIsNothing) {
    overview->SetGrabAnywhere(false);
    // One pixel to the unit of the axis that has less of them is the measure then.
    Drag({310, 175}, {340, 175});
    ExpectView(100.0, 100.0, 300.0, 250.0);
    Drag({20, 20}, {30, 20});
    ExpectView(100.0, 100.0, 300.0, 250.0);
}

TEST_F(GrabAnywhere, InTheMiddleTheWholeMoves) {
    Drag({200, 175}, {230, 165});
    ExpectView(130.0, 90.0, 330.0, 240.0);
    Drag({105, 175}, {115, 175});
    ExpectView(110.0, 100.0, 310.0, 250.0);
    EXPECT_NEAR(stage.viewer->GetScale(), scale, 1e-9);
}

TEST_F(GrabAnywhere, APressOutsideMovesTheMiddleThereAndGoesOnAsADrag) {
    Reset();
    window.Press(400, 300);
    ExpectView(300.0, 225.0, 500.0, 375.0);
    window.Move(420, 290);
    ExpectView(320.0, 215.0, 520.0, 365.0);
    window.Release(420, 290);
    window.Move(500, 290);
    ExpectView(320.0, 215.0, 520.0, 365.0);
}

TEST_F(GrabAnywhere, ASmallRectangleIsMovedByItsMiddleThird) {
    // Six by four and a half pixels.
    scale *= 200.0 / 6.0;
    scale = std::min(scale, viewkit::kMaxWheelScale);
    Reset();
    const rectangle<double> before = View();
    const point<int> middle{static_cast<int>((before.left + before.right) * 0.5),
                            static_cast<int>((before.top + before.bottom) * 0.5)};
    window.Drag(middle, {middle.x + 50, middle.y + 20});
    EXPECT_NEAR(View().left, before.left + 50.0, 1.0);
    EXPECT_NEAR(stage.viewer->GetScale(), scale, 1e-9);
}

TEST_F(GrabAnywhere, TheScaleKeepsToItsLimits) {
    Drag({300, 175}, {90, 175});
    EXPECT_NEAR(stage.viewer->GetScale(), viewkit::kMaxWheelScale, 1e-9);
    EXPECT_NEAR(View().left, 100.0, 1.0);
    Drag({100, 100}, {600, 400});
    EXPECT_NEAR(stage.viewer->GetScale(), viewkit::kMaxWheelScale, 1e-9);
    EXPECT_NEAR(View().right, 300.0, 1.0);
    EXPECT_NEAR(View().bottom, 250.0, 1.0);
}

TEST_F(GrabAnywhere, TheCursorTellsWhatAPressWouldDo) {
    EXPECT_EQ(CursorAt(300, 175), Cursor::SizeHorz);
    EXPECT_EQ(CursorAt(98, 175), Cursor::SizeHorz);
    EXPECT_EQ(CursorAt(200, 101), Cursor::SizeVert);
    EXPECT_EQ(CursorAt(101, 99), Cursor::SizeFalling);
    EXPECT_EQ(CursorAt(300, 250), Cursor::SizeFalling);
    EXPECT_EQ(CursorAt(300, 100), Cursor::SizeRising);
    EXPECT_EQ(CursorAt(100, 250), Cursor::SizeRising);
    EXPECT_EQ(CursorAt(200, 175), Cursor::Move);
    EXPECT_EQ(CursorAt(20, 20), Cursor::Arrow);
    window.Move(200, 175);
    window.GetControl().MouseLeave();
    EXPECT_EQ(window.GetCursor(), Cursor::Arrow);
    window.Move(200, 175);
    overview->SetGrabAnywhere(false);
    EXPECT_EQ(window.GetCursor(), Cursor::Arrow);
    EXPECT_EQ(CursorAt(300, 175), Cursor::Arrow);
}

TEST_F(GrabAnywhere, TheCursorStaysThroughADrag) {
    window.Move(300, 175);
    window.Press(300, 175);
    window.Move(320, 20);
    EXPECT_EQ(window.GetCursor(), Cursor::SizeHorz);
    window.Release(320, 20);
}

TEST_F(GrabAnywhere, AnEmptyGraphIsNoHarm) {
    stage.viewer->SetGraph({});
    window.PaintPending();
    window.Drag({300, 200}, {320, 210}, 3);
    window.Drag({0, 0}, {20, 10}, 3);
    EXPECT_EQ(window.GetControl().GetCaptured(), nullptr);
    EXPECT_GT(stage.viewer->GetScale(), 0.0);
}

// ---------------------------------------------------------------------------------------------
// The overlay

class ViewOverlay : public OverviewOptions {
protected:
    ViewOverlay() {
        overview->SetViewOverlay(true);
        TakePaint();
    }
    // Asks as a viewer does after a change.
    Log PaintAfter(const std::function<void()>& change) {
        change();
        stage.viewer->RenewView(false);
        return TakePaint();
    }
};

TEST_F(ViewOverlay, IsOffAtFirstAndThenEachChangeOfTheViewPaintsTheNodes) {
    const COverviewContent fresh(nullptr, stage.viewer);
    EXPECT_FALSE(fresh.GetViewOverlay());
    EXPECT_EQ(fresh.GetNodesHeldAbove(), -1);
    overview->SetViewOverlay(false);
    EXPECT_EQ(TakePaint(), kAllNodes);
    stage.viewer->SetStartX(3.0);
    EXPECT_EQ(TakePaint(), kAllNodes);
    EXPECT_EQ(TakeOverlay(), Log());
}

TEST_F(ViewOverlay, AChangeOfTheViewPaintsNoNode) {
    stage.viewer->SetStartX(3.0);
    stage.viewer->SetStartY(5.0);
    stage.viewer->SetScale(4.0);
    EXPECT_TRUE(window.GetControl().IsPaintPending()) << "the overlay is to be shown anew";
    EXPECT_EQ(TakePaint(), Log());
    const rectangle<double> r = overview->GetViewRect();
    EXPECT_EQ(r.left, 3.0);
    const Log overlay = TakeOverlay();
    ASSERT_EQ(overlay.size(), 1u);
    EXPECT_EQ(overlay.front().rfind("Rectangle 3 5 ", 0), 0u) << overlay.front();
}

TEST_F(ViewOverlay, AViewBeyondTheGraphHasAFrameAlongTheEdges) {
    stage.viewer->SetStartX(-1000.0);
    stage.viewer->SetStartY(-1000.0);
    stage.viewer->SetViewWidth(5000.0);
    const Log overlay = TakeOverlay();
    ASSERT_EQ(overlay.size(), 1u);
    std::istringstream numbers(overlay.front().substr(std::string("Rectangle").size()));
    rectangle<double> r;
    numbers >> r.left >> r.top >> r.right >> r.bottom;
    const size<double> all = stage.viewer->GetGraph()->GetRoot().GetSize();
    EXPECT_NEAR(r.left * unit.cx, 2.0, 0.01);
    EXPECT_NEAR(r.top * unit.cy, 2.0, 0.01);
    EXPECT_NEAR((all.cx - r.right) * unit.cx, 2.0, 0.01);
    EXPECT_NEAR((all.cy - r.bottom) * unit.cy, 2.0, 0.01);
}

TEST_F(ViewOverlay, AViewBesideTheGraphHasNoFrame) {
    stage.viewer->SetStartX(100000.0);
    EXPECT_EQ(TakeOverlay(), Log());
}

TEST_F(ViewOverlay, AChangeOfTheGraphPaintsTheNodes) {
    EXPECT_EQ(PaintAfter([&] { Select(stage.a); }), kAllNodes);
    EXPECT_EQ(PaintAfter([&] { Node(stage.b).SetCaption("B"); })[3], "B");
    EXPECT_EQ(PaintAfter([&] { MoveNode(stage.d, 9.0, 9.0); }).size(), kAllNodes.size());
    EXPECT_EQ(PaintAfter([&] { Hide(stage.c); }), Log({"fill", "root", "a", "B"}));
    EXPECT_EQ(PaintAfter([] {}), Log());
}

TEST_F(ViewOverlay, WhatIsUnderThePointerPaintsNoNode) {
    EXPECT_EQ(PaintAfter([&] { SetFlag(stage.a, NodeHovered, true); }), Log());
    stage.window.PaintPending();
    EXPECT_EQ(PaintAfter([] {}), Log()) << "nor does a paint of the viewer";
}

TEST_F(ViewOverlay, HiddenNodesAreLeftOutBeforeTheViewerHasPainted) {
    Hide(stage.a);
    EXPECT_TRUE(IsFlagSet(stage.a, NodeDrawn));
    EXPECT_EQ(PaintAfter([] {}), Log({"fill", "root", "b", "c", "d"}));
    overview->SetViewOverlay(false);
    EXPECT_EQ(TakePaint(), kAllNodes);
}

TEST_F(ViewOverlay, AnotherGraphAnotherSizeAndLostPixelsPaintTheNodes) {
    window.Resize({500, 300});
    EXPECT_EQ(TakePaint(), kAllNodes);
    overview->Invalidate();
    EXPECT_EQ(TakePaint(), kAllNodes);
    window.GetControl().InvalidateAll();
    EXPECT_EQ(TakePaint(), kAllNodes);
    const graph_ptr2<Graph> other(new Graph, true);
    other->SetDefaultNodeHandler(graph_ptr2<INodeHandler>(stage.actor, false));
    stage.viewer->SetGraph(other);
    EXPECT_EQ(TakePaint(), Log({"fill", "root"}));
    stage.viewer->SetGraph(stage.graph);
    EXPECT_EQ(TakePaint(), kAllNodes);
}

TEST_F(ViewOverlay, APictureForAFileHasNodesAndRectangle) {
    window.GetControl().DrawPicture(&window.GetRecorder());
    const Log lines = window.GetRecorder().TakeLines();
    EXPECT_EQ(Stage::CaptionsIn(lines), kAllNodes);
    EXPECT_TRUE(std::any_of(lines.begin(), lines.end(), [](const std::string& line) {
        return line.rfind("Rectangle", 0) == 0;
    }));
    EXPECT_EQ(PaintAfter([] {}), Log());
}

TEST_F(ViewOverlay, ManyNodesAreHeldBackUntilTheyAreRenewed) {
    int held = 0;
    struct Ear : subscriber_base_t {
        explicit Ear(int* count) : count_(count) {}
        void Hear() { ++*count_; }
        int* count_;
    } ear(&held);
    overview->OnNodesHeld.connect(&ear, &Ear::Hear);

    overview->SetNodesHeldAbove(5);
    EXPECT_EQ(PaintAfter([&] { Select(stage.a); }), kAllNodes) << "five are not more than five";
    EXPECT_EQ(held, 0);
    overview->SetNodesHeldAbove(4);
    EXPECT_EQ(PaintAfter([&] { Select(stage.b); }), Log());
    EXPECT_GT(held, 0);
    held = 0;
    EXPECT_EQ(PaintAfter([] {}), Log());
    EXPECT_GT(held, 0) << "each change of the view puts it off";
    overview->RenewNodes();
    EXPECT_EQ(TakePaint(), kAllNodes);
    held = 0;
    EXPECT_EQ(PaintAfter([] {}), Log());
    EXPECT_EQ(held, 0);
    overview->RenewNodes();
    EXPECT_EQ(TakePaint(), Log()) << "they are up to date";
    EXPECT_EQ(PaintAfter([&] { Unselect(stage.b); }), Log()) << "and are held back again";
    window.Resize({500, 300});
    EXPECT_EQ(TakePaint(), kAllNodes) << "but not where the pixels are lost";
}

TEST_F(ViewOverlay, AHandlerMayDestroyTheOverviewInAPaint) {
    stage.script.on_event = [&](const std::string& event) {
        if (event == "draw") delete std::exchange(overview, nullptr);
    };
    Select(stage.a);
    stage.viewer->RenewView(false);
    window.PaintPending();
    EXPECT_EQ(overview, nullptr);
}

// ---------------------------------------------------------------------------------------------
// Small nodes

TEST_F(ViewOverlay, LeavesThatAreTooSmallAreOnlyTheirColour) {
    const graph_ptr2<INodeHandler> boxes(new SimpleNodeHandler, true);
    stage.graph->SetDefaultNodeHandler(boxes);
    for (Node node : {stage.a, stage.b, stage.d}) node.SetSize({20.0, 10.0});
    stage.c.SetSize({60.0, 60.0});
    const auto count = [&](const char* call) {
        window.PaintPending();
        const Log lines = window.GetRecorder().TakeLines();
        return std::count_if(lines.begin(), lines.end(),
                             [call](const std::string& line) { return line.rfind(call, 0) == 0; });
    };
    EXPECT_EQ(count("GradientFill"), 0) << "nothing was asked for";
    stage.viewer->RenewView(false);
    EXPECT_EQ(count("GradientFill"), 4);
    // Less than two pixels high, and the owner as it is.
    window.Resize({600, static_cast<int>(1.9 * stage.graph->GetRoot().GetSize().cy / 10.0)});
    EXPECT_EQ(count("GradientFill"), 1);
    overview->Invalidate();
    EXPECT_GE(count("FillRect"), 3) << "the background and the leaves";
}

}  // namespace
}  // namespace nodeline::test
