#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "viewer/stage.h"

// Visible rubber rectangles as a user expects them.

namespace nodeline::test {
namespace {

class RubberOptions : public testing::Test {
protected:
    RubberOptions() {
        stage.content->GetDragTracker()->Enable(false);
        rubber->Enable(true);
        stage.window.PaintPending();
    }
    void Drag(point<int> from, point<int> to, int keys = 0) {
        stage.window.Press(from.x, from.y, MouseButton::Left, keys);
        stage.window.Move(to.x, to.y, keys);
        stage.window.Release(to.x, to.y, MouseButton::Left, keys);
    }
    // Around a node, `rim` units from it.
    void DragAround(const Node& node, double rim, int keys = 0) {
        const rectangle<double> r = MakeDRect(node.GetPosition(), node.GetSize());
        Drag(stage.content->ConvertL2P({r.left - rim, r.top - rim}),
             stage.content->ConvertL2P({r.right + rim, r.bottom + rim}), keys);
    }
    [[nodiscard]] std::string Selected() const {
        std::string names;
        const auto collect = [&names](const Node& node) {
            if (IsFlagSet(node, NodeSelected)) names += node.GetCaption();
        };
        ForEachNodeIn(stage.graph->GetRoot(), collect, false, false);
        return names;
    }

    Stage stage;
    ZoomRect* rubber = stage.content->GetZoomRect();
    viewkit::CControl& control = stage.window.GetControl();
};

TEST_F(RubberOptions, AreOffAtFirst) {
    EXPECT_FALSE(stage.content->GetRubberEndsPress());
    EXPECT_FALSE(stage.content->GetSelectTouched());
    EXPECT_FALSE(stage.content->GetTellRubberScroll());
    EXPECT_FALSE(rubber->GetUnbounded());
}

// ---------------------------------------------------------------------------------------------
// Clicks

TEST_F(RubberOptions, ARectangleInsideANodeClicksItOnlyWithoutTheOption) {
    stage.viewer->SetScale(8.0);
    stage.viewer->Centre(stage.a);
    const point<int> p = stage.PixelOf(stage.a);
    stage.content->SetRubberMode(RubberSelect);
    Drag(p, {p.x + 40, p.y + 5});
    EXPECT_EQ(stage.Take(), Log({"down a", "up a", "click a"}));
    stage.content->SetRubberEndsPress(true);
    Drag(p, {p.x + 40, p.y + 5});
    EXPECT_EQ(stage.Take(), Log({"down a", "up a"}));
    Drag(p, {p.x + 1, p.y - 40});
    EXPECT_EQ(stage.Take(), Log({"down a", "up a"}));
}

TEST_F(RubberOptions, AnUnsteadyHandStillClicks) {
    const point<int> p = stage.PixelOf(stage.a);
    stage.content->SetRubberEndsPress(true);
    Drag(p, {p.x + 4, p.y - 4});
    EXPECT_EQ(stage.Take(), Log({"down a", "up a", "click a"}));
    Drag(p, p);
    EXPECT_EQ(stage.Take(), Log({"down a", "up a", "click a"}));
}

TEST_F(RubberOptions, AMoveThatWasNotPaintedEndsThePressToo) {
    const point<int> p = stage.PixelOf(stage.a);
    stage.content->SetRubberEndsPress(true);
    control.ButtonDown(p.x, p.y, 0, MouseButton::Left);
    control.MouseMove(p.x + 10, p.y, 0, MouseButton::Left);
    control.ButtonUp(p.x + 10, p.y, 0, MouseButton::Left);
    EXPECT_EQ(stage.Take(), Log({"down a", "up a"}));
}

// ---------------------------------------------------------------------------------------------
// Selecting

class SelectTouched : public RubberOptions {
protected:
    SelectTouched() {
        stage.content->SetRubberMode(RubberSelect);
        stage.content->SetSelectTouched(true);
    }
};

TEST_F(SelectTouched, WithoutItHandlersAreToldByPixelsAndNothingIsSelected) {
    stage.content->SetSelectTouched(false);
    DragAround(stage.a, 5.0);
    EXPECT_EQ(Selected(), "");
    DragAround(stage.graph->GetRoot(), 1.0);
    const Log log = stage.Take();
    EXPECT_TRUE(std::any_of(log.begin(), log.end(),
                            [](const std::string& line) { return line.rfind("select", 0) == 0; }));
}

TEST_F(SelectTouched, SelectsWhatItTouchesAtAnyScaleAndStart) {
    for (const double scale : {0.5, 1.0, 3.0}) {
        for (const double shift : {-37.0, 0.0, 20.0}) {
            stage.viewer->SetScale(scale);
            const point<double> p = stage.b.GetPosition();
            stage.viewer->SetStartX(p.x - 30.0 + shift / scale);
            stage.viewer->SetStartY(p.y - 30.0 + shift / scale);
            stage.window.PaintPending();
            stage.Take();
            DragAround(stage.b, 4.0);
            EXPECT_EQ(Selected(), "b") << scale << " " << shift;
            const Log log = stage.Take();
            for (const std::string& line : log) EXPECT_NE(line.rfind("select", 0), 0u) << line;
        }
    }
}

TEST_F(SelectTouched, TouchingACornerIsEnough) {
    const point<int> p = stage.content->ConvertL2P(stage.a.GetPosition());
    Drag({p.x - 10, p.y - 10}, {p.x + 2, p.y + 2});
    EXPECT_EQ(Selected(), "a");
    // Drawn from any corner.
    Drag({p.x + 2, p.y - 10}, {p.x - 10, p.y + 2});
    EXPECT_EQ(Selected(), "a");
}

TEST_F(SelectTouched, ReplacesTheSelectionAndAddsToItWithShift) {
    Select(stage.c);
    DragAround(stage.a, 3.0);
    EXPECT_EQ(Selected(), "a");
    DragAround(stage.b, 3.0, paintcore::KeyShift);
    EXPECT_EQ(Selected(), "ab");
    DragAround(stage.a, 3.0, paintcore::KeyShift);
    EXPECT_EQ(Selected(), "ab");
    Drag({3, 3}, {15, 15});
    EXPECT_EQ(Selected(), "") << "a rectangle around nothing";
}

TEST_F(SelectTouched, LeavesOwnersAndHiddenNodesAlone) {
    DragAround(stage.c, 2.0);
    EXPECT_EQ(Selected(), "d");
    DragAround(stage.d, -2.0);
    EXPECT_EQ(Selected(), "d");
    Hide(stage.d);
    DragAround(stage.c, 2.0);
    EXPECT_EQ(Selected(), "");
    Show(stage.d);
    Hide(stage.c);
    DragAround(stage.c, 2.0);
    EXPECT_EQ(Selected(), "");
}

TEST_F(SelectTouched, PaintsEverythingOnce) {
    const point<int> p = stage.PixelOf(stage.a);
    stage.window.Press(p.x - 40, p.y - 30);
    stage.window.Move(p.x + 5, p.y);
    stage.TakePaint();
    const int before = stage.window.GetPaintCount();
    stage.window.Release(p.x + 5, p.y);
    EXPECT_EQ(stage.window.GetPaintCount(), before + 1);
    const Log painted = Stage::CaptionsIn(stage.window.GetRecorder().TakeLines());
    EXPECT_EQ(std::count(painted.begin(), painted.end(), "a"), 1);
    EXPECT_EQ(std::count(painted.begin(), painted.end(), "fill"), 1);
    EXPECT_EQ(Selected(), "a");
}

TEST_F(SelectTouched, CountsFromFourPixelsOn) {
    const rectangle<double> r = MakeDRect(stage.a.GetPosition(), stage.a.GetSize());
    for (const double scale : {0.5, 4.0}) {
        stage.viewer->SetScale(scale);
        stage.viewer->Centre(stage.a);
        stage.window.PaintPending();
        Unselect(stage.a);
        const point<int> p = stage.content->ConvertL2P({r.left, r.top});
        Drag({p.x - 3, p.y}, {p.x + 1, p.y});
        EXPECT_EQ(Selected(), "") << scale;
        // One side is enough: a line touches as well.
        Drag({p.x - 3, p.y + 1}, {p.x + 2, p.y + 1});
        EXPECT_EQ(Selected(), "a") << scale;
    }
}

TEST_F(SelectTouched, TakesThePointerWhereThatWasNotPainted) {
    const point<int> p = stage.PixelOf(stage.a);
    control.ButtonDown(3, 3, 0, MouseButton::Left);
    control.MouseMove(p.x, p.y, 0, MouseButton::Left);
    control.ButtonUp(p.x, p.y, 0, MouseButton::Left);
    EXPECT_NE(Selected().find('a'), std::string::npos);
}

TEST_F(SelectTouched, AZoomCountsFromFourPixelsOnBothSides) {
    rubber->SetUnbounded(true);  // the view begins left of zero
    stage.content->SetRubberMode(RubberZoom);
    const auto zooms = [&](point<int> by) {
        stage.viewer->SetScale(1.0);
        stage.window.PaintPending();
        Drag({10, 10}, {10 + by.x, 10 + by.y});
        return stage.viewer->GetScale() != 1.0;
    };
    EXPECT_FALSE(zooms({4, 30}));
    EXPECT_FALSE(zooms({30, 4}));
    EXPECT_TRUE(zooms({15, 15}));
    stage.content->SetSelectTouched(false);
    EXPECT_FALSE(zooms({15, 15}));
    EXPECT_TRUE(zooms({21, 21}));
}

// ---------------------------------------------------------------------------------------------
// Left of zero

TEST_F(RubberOptions, OnlyAnUnboundedRectangleReachesLeftOfZero) {
    stage.content->SetRubberMode(RubberSelect);
    stage.content->SetSelectTouched(true);
    MoveNode(stage.a, -100.0, -80.0);
    stage.viewer->SetStartX(-150.0);
    stage.viewer->SetStartY(-120.0);
    stage.window.PaintPending();
    const point<int> from = stage.content->ConvertL2P({5.0, -20.0});
    const point<int> to = stage.content->ConvertL2P({-90.0, -75.0});
    Drag(from, to);
    EXPECT_EQ(rubber->GetEndCorner().x, 0.0);
    EXPECT_EQ(rubber->GetEndCorner().y, -75.0);
    EXPECT_EQ(Selected(), "");
    rubber->SetUnbounded(true);
    Drag(from, to);
    EXPECT_EQ(rubber->GetEndCorner(), (point<double>{-90.0, -75.0}));
    EXPECT_EQ(rubber->GetStartCorner(), (point<double>{5.0, -20.0}));
    EXPECT_EQ(Selected(), "a");
}

// ---------------------------------------------------------------------------------------------
// Scrolling

TEST_F(RubberOptions, TheViewIsToldWhileARectangleScrollsItOnlyWithTheOption) {
    for (const bool on : {false, true}) {
        stage.viewer->SetScale(8.0);
        stage.viewer->SetStartX(0.0);
        stage.viewer->SetStartY(0.0);
        stage.content->SetTellRubberScroll(on);
        stage.window.Press(390, 100);
        stage.window.Move(395, 100);
        ViewListener view(*stage.viewer);
        stage.window.Move(396, 100);
        EXPECT_EQ(view.count, 0) << "nothing scrolls";
        const double before = stage.viewer->GetStartX();
        control.MouseMove(440, 100, 0, MouseButton::Left);
        ASSERT_GT(stage.viewer->GetStartX(), before);
        EXPECT_EQ(view.count, on ? 1 : 0);
        EXPECT_EQ(view.from.x == stage.viewer->GetStartX(), on);
        control.LoseCapture();
    }
}

TEST_F(RubberOptions, ASlotMayDestroyTheViewerWhileARectangleScrollsIt) {
    stage.viewer->SetScale(8.0);
    stage.viewer->SetStartX(0.0);
    stage.content->SetTellRubberScroll(true);
    stage.window.Press(390, 100);
    stage.window.Move(395, 100);
    const ViewListener view(*stage.viewer, [&] { delete std::exchange(stage.viewer, nullptr); });
    control.MouseMove(440, 100, 0, MouseButton::Left);
    EXPECT_EQ(stage.viewer, nullptr);
    EXPECT_EQ(control.GetCaptured(), nullptr);
}

}  // namespace
}  // namespace nodeline::test
