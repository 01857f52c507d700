#include <gtest/gtest.h>

#include <vector>

#include "viewer/stage.h"

// Presses that do not end as they should.

namespace nodeline::test {
namespace {

constexpr point<int> kOutside{-20, 500};

class SinglePress : public testing::Test {
protected:
    void Down(point<int> p, MouseButton button) { control.ButtonDown(p.x, p.y, 0, button); }
    void Up(point<int> p, MouseButton button) { control.ButtonUp(p.x, p.y, 0, button); }
    void Move(point<int> p, MouseButton button) { control.MouseMove(p.x, p.y, 0, button); }
    [[nodiscard]] point<double> start() const {
        return {stage.viewer->GetStartX(), stage.viewer->GetStartY()};
    }

    Stage stage;
    point<int> on_a = stage.PixelOf(stage.a);
    point<int> on_b = stage.PixelOf(stage.b);
    viewkit::CControl& control = stage.window.GetControl();
    DragTracker* tracker = stage.content->GetDragTracker();
};

TEST_F(SinglePress, IsOffAtFirstAndHoldsForTheRubberRectangles) {
    EXPECT_FALSE(stage.content->GetSinglePress());
    EXPECT_FALSE(tracker->GetOwnButtonEnds());
    stage.content->SetSinglePress(true);
    EXPECT_TRUE(stage.content->GetSinglePress());
    EXPECT_TRUE(tracker->GetOwnButtonEnds());
    EXPECT_TRUE(stage.content->GetZoomRect()->GetOwnButtonEnds());
    stage.content->SetSinglePress(false);
    EXPECT_FALSE(tracker->GetOwnButtonEnds());
}

TEST_F(SinglePress, ClicksAndDragsAsWithout) {
    for (const bool on : {false, true}) {
        stage.content->SetSinglePress(on);
        stage.window.Click(on_a.x, on_a.y);
        EXPECT_EQ(stage.Take(), Log({"down a", "up a", "click a"}));
        const point<double> before = start();
        stage.window.Drag({200, 290}, {210, 280});
        EXPECT_EQ(start(), (point<double>{before.x - 10.0, before.y + 10.0}));
        stage.window.Drag({210, 280}, {200, 290});
        EXPECT_EQ(stage.Take(), Log({"down root", "up root", "down root", "up root"}));
        EXPECT_EQ(control.GetCaptured(), nullptr);
    }
}

TEST_F(SinglePress, AReleaseOutsideLeavesNothingForTheNextDrag) {
    stage.content->SetMoveNodes(true);
    const auto wander_off_and_drag = [&] {
        Down(on_a, MouseButton::Right);
        Up(kOutside, MouseButton::Right);
        const point<double> before = stage.a.GetPosition();
        Down({200, 290}, MouseButton::Left);
        Move({210, 290}, MouseButton::Left);
        Up({210, 290}, MouseButton::Left);
        return stage.a.GetPosition() != before;
    };
    EXPECT_TRUE(wander_off_and_drag());
    stage.content->HandleButtonUp(3, 3, 0, MouseButton::Right);
    stage.content->SetSinglePress(true);
    EXPECT_FALSE(wander_off_and_drag());
}

TEST_F(SinglePress, TheSurfaceHearsOfAReleaseOutsideWhichIsNoClick) {
    Down(on_a, MouseButton::Right);
    Up(kOutside, MouseButton::Right);
    EXPECT_EQ(stage.Take(), Log({"down a"}));
    Up(on_a, MouseButton::Right);
    stage.Take();

    stage.content->SetSinglePress(true);
    Down({3, 3}, MouseButton::Right);
    EXPECT_EQ(control.GetCaptured(), stage.content);
    Up(kOutside, MouseButton::Right);
    EXPECT_EQ(stage.Take(), Log({"down root", "up root"}));
    EXPECT_EQ(control.GetCaptured(), nullptr);
}

TEST_F(SinglePress, AUsedUpPressHoldsTheMouseToo) {
    stage.script.answers["down"] = HandlerDone;
    stage.content->SetSinglePress(true);
    Down(on_a, MouseButton::Left);
    EXPECT_EQ(control.GetCaptured(), stage.content);
    Move({3, 3}, MouseButton::Left);
    Up(on_a, MouseButton::Left);
    EXPECT_EQ(stage.Take(), Log({"down a", "up a", "click a"}));
}

TEST_F(SinglePress, OnlyTheButtonThatBeganAPressEndsIt) {
    Down(on_a, MouseButton::Left);
    Up(on_a, MouseButton::Right);
    EXPECT_EQ(stage.Take(), Log({"down a", "up a", "click a"}));
    Up(on_a, MouseButton::Left);
    stage.Take();

    stage.content->SetSinglePress(true);
    Down(on_a, MouseButton::Left);
    Up(on_a, MouseButton::Right);
    EXPECT_EQ(stage.Take(), Log({"down a", "up a"}));
    EXPECT_TRUE(tracker->IsPressed());
    Up(on_a, MouseButton::Left);
    EXPECT_EQ(stage.Take(), Log({"up a", "click a"}));
}

TEST_F(SinglePress, AnotherButtonDoesNotEndADrag) {
    for (const bool on : {false, true}) {
        stage.content->SetSinglePress(on);
        Down({200, 290}, MouseButton::Left);
        Move({210, 290}, MouseButton::Left);
        Up({210, 290}, MouseButton::Right);
        EXPECT_EQ(tracker->IsActive(), on);
        const point<double> before = start();
        Move({220, 290}, MouseButton::Left);
        EXPECT_EQ(start().x, before.x - (on ? 10.0 : 0.0));
        Up({220, 290}, MouseButton::Left);
        EXPECT_FALSE(tracker->IsActive());
    }
}

TEST_F(SinglePress, ANewPressTakesThePlaceOfAnOldOne) {
    stage.content->SetSinglePress(true);
    Down(on_a, MouseButton::Right);
    Down(on_b, MouseButton::Left);
    Up(on_a, MouseButton::Right);
    Up(on_b, MouseButton::Left);
    EXPECT_EQ(stage.Take(), Log({"down a", "down b", "up a", "up b", "click b"}));

    stage.content->SetSinglePress(false);
    Down(on_a, MouseButton::Right);
    Down(on_b, MouseButton::Left);
    Up(on_b, MouseButton::Left);
    EXPECT_EQ(stage.Take(), Log({"down a", "down b", "up b"}));
}

TEST_F(SinglePress, LosingTheMouseForgetsThePress) {
    const auto lose_and_release = [&] {
        Down(on_a, MouseButton::Left);
        control.LoseCapture();
        Up(on_a, MouseButton::Left);
        return stage.Take();
    };
    EXPECT_EQ(lose_and_release(), Log({"down a", "up a", "click a"}));
    stage.content->SetSinglePress(true);
    EXPECT_EQ(lose_and_release(), Log({"down a", "up a"}));
    // The surface itself has the mouse after a press that was used up.
    stage.script.answers["down"] = HandlerDone;
    EXPECT_EQ(lose_and_release(), Log({"down a", "up a"}));
    stage.script.answers.clear();
    tracker->Enable(false);
    stage.content->GetZoomRect()->Enable(true);
    EXPECT_EQ(lose_and_release(), Log({"down a", "up a"}));
}

TEST_F(SinglePress, OneRubberRectangleTakesTheMouseFromTheOtherAndKeepsThePress) {
    stage.content->GetZoomRect()->Enable(true);
    stage.content->SetSinglePress(true);
    Down(on_a, MouseButton::Left);
    EXPECT_EQ(control.GetCaptured(), tracker);
    Up(on_a, MouseButton::Left);
    EXPECT_EQ(stage.Take(), Log({"down a", "up a", "click a"}));
}

TEST_F(SinglePress, AnotherGraphForgetsThePress) {
    const graph_ptr2<Graph> other(new Graph, true);
    other->SetDefaultNodeHandler(graph_ptr2<INodeHandler>(stage.actor, false));
    stage.content->SetSinglePress(true);
    Down({3, 3}, MouseButton::Left);
    stage.content->SetGraph(other);
    EXPECT_EQ(control.GetCaptured(), nullptr);
    Up({3, 3}, MouseButton::Left);
    EXPECT_EQ(stage.Take(), Log({"down root", "up root"}));
    stage.content->SetGraph(stage.graph);
}

TEST_F(SinglePress, ARemovedNodeIsNotDragged) {
    stage.content->SetSinglePress(true);
    stage.content->SetMoveNodes(true);
    Down(on_a, MouseButton::Left);
    stage.ab.Remove();
    stage.a.Remove();
    const point<double> before = start();
    Move({on_a.x + 20, on_a.y}, MouseButton::Left);
    EXPECT_EQ(start(), before);
    Up({on_a.x + 20, on_a.y}, MouseButton::Left);
    EXPECT_EQ(control.GetCaptured(), nullptr);
}

TEST_F(SinglePress, TellsOfPressesThatAreToBeNoClicks) {
    struct Ear : subscriber_base_t {
        explicit Ear(CContent* content) { content->OnPressDropped.connect(this, &Ear::Hear); }
        void Hear(CVisualElement* /*element*/) { ++count; }
        int count = 0;
    } ear(stage.content);
    for (const bool on : {false, true}) {
        stage.content->SetSinglePress(on);
        ear.count = 0;
        stage.window.Click(on_a.x, on_a.y);
        EXPECT_EQ(ear.count, 0);
        Down(on_a, MouseButton::Left);
        control.LoseCapture();
        EXPECT_EQ(ear.count, on ? 1 : 0);
        control.LoseCapture();
        EXPECT_EQ(ear.count, on ? 1 : 0) << "once for each press";
        Down(on_a, MouseButton::Left);
        Up(kOutside, MouseButton::Left);
        EXPECT_EQ(ear.count, on ? 2 : 0);
        Down(on_a, MouseButton::Left);
        stage.viewer->SetGraph(stage.graph);
        EXPECT_EQ(ear.count, on ? 3 : 0);
        control.LoseCapture();
    }
}

TEST_F(SinglePress, ADoubleClickIsNoFurtherClick) {
    stage.content->SetSinglePress(true);
    stage.window.Click(on_a.x, on_a.y);
    control.DoubleClick(on_a.x, on_a.y, 0, MouseButton::Left);
    Up(on_a, MouseButton::Left);
    EXPECT_EQ(stage.Take(), Log({"down a", "up a", "click a", "double a", "up a"}));
}

TEST_F(SinglePress, AHandlerMayDestroyTheViewerInAPress) {
    for (const char* event : {"down", "up", "click"}) {
        Stage other;
        other.content->SetSinglePress(true);
        const point<int> p = other.PixelOf(other.a);
        other.script.on_event = [&other, event](const std::string& heard) {
            if (heard == event && other.viewer != nullptr) {
                delete std::exchange(other.viewer, nullptr);
            }
        };
        other.window.Click(p.x, p.y);
        EXPECT_EQ(other.viewer, nullptr) << event;
        EXPECT_EQ(other.window.GetControl().GetCaptured(), nullptr) << event;
    }
}

}  // namespace
}  // namespace nodeline::test
