#include <gtest/gtest.h>

#include "logging_element.h"

namespace viewkit {
namespace {

using nodeline::headless::HeadlessWindow;

// An outer element at (10, 10) with an inner one at (20, 20) in it, in a window of 200 by 100.
class Dispatch : public ::testing::Test {
protected:
    Dispatch() { Take(log); }

    CControl& control() { return window.GetControl(); }
    void Down(int x, int y) { control().ButtonDown(x, y, 0, MouseButton::Left); }
    void Up(int x, int y) { control().ButtonUp(x, y, 0, MouseButton::Left); }
    void Move(int x, int y) { control().MouseMove(x, y, 0, MouseButton::None); }

    Log log;
    HeadlessWindow window{{200, 100}};
    LoggingElement* outer = new LoggingElement(window.GetRoot(), "outer", &log, {10, 10, 110, 90});
    LoggingElement* inner = new LoggingElement(outer, "inner", &log, {20, 20, 60, 60});
};

TEST_F(Dispatch, AMoveGoesToTheDeepestElementInItsOwnPixels) {
    inner->answer = true;
    Move(35, 40);
    EXPECT_EQ(Take(log), (Log{"inner hover", "inner move 5 10"}));
}

TEST_F(Dispatch, AMoveThatIsNotUsedIsOfferedToTheParentInItsPixels) {
    Move(35, 40);
    EXPECT_EQ(Take(log), (Log{"inner hover", "inner move 5 10", "outer move 25 30"}));
}

TEST_F(Dispatch, WithTheMouseCapturedMovesAndReleasesGoToTheCapturer) {
    inner->answer = true;
    inner->CaptureMouse();
    Move(150, 5);
    Up(150, 5);
    EXPECT_EQ(Take(log), (Log{"inner move 120 -25", "inner up 120 -25"}));
}

TEST_F(Dispatch, APressGoesToTheElementUnderThePointerAlsoWhileAnotherHasTheMouse) {
    inner->CaptureMouse();
    Down(15, 15);
    EXPECT_EQ(Take(log), (Log{"outer focus", "outer down 5 5"}));
}

TEST_F(Dispatch, APressThatIsNotUsedIsEmitted) {
    outer->OnButtonDown.connect(outer, &LoggingElement::Slot);
    Down(15, 15);
    EXPECT_EQ(Take(log), (Log{"outer hover", "outer focus", "outer down 5 5", "outer slot 5 5"}));
}

TEST_F(Dispatch, APressThatIsUsedIsNotEmitted) {
    outer->answer = true;
    outer->OnButtonDown.connect(outer, &LoggingElement::Slot);
    Down(15, 15);
    EXPECT_EQ(Take(log), (Log{"outer hover", "outer focus", "outer down 5 5"}));
}

TEST_F(Dispatch, APressIsNotOfferedToTheParent) {
    Down(35, 40);
    EXPECT_EQ(Take(log), (Log{"inner hover", "inner focus", "inner down 5 10"}));
}

TEST_F(Dispatch, AReleaseThatIsNotUsedGoesUpInThePixelsOfEachParent) {
    Move(35, 40);
    Take(log);
    Up(35, 40);
    EXPECT_EQ(Take(log), (Log{"inner up 5 10", "outer up 25 30"}));
}

TEST_F(Dispatch, AReleaseThatIsUsedEndsThere) {
    inner->answer = true;
    Move(35, 40);
    Take(log);
    Up(35, 40);
    EXPECT_EQ(Take(log), (Log{"inner up 5 10"}));
}

TEST_F(Dispatch, EnteringAndLeavingAreToldOnceEach) {
    inner->answer = outer->answer = true;
    Move(35, 40);
    Move(36, 40);
    Move(15, 15);
    EXPECT_EQ(Take(log), (Log{"inner hover", "inner move 5 10", "inner move 6 10", "inner leave",
                              "outer hover", "outer move 5 5"}));
    control().MouseLeave();
    control().MouseLeave();
    EXPECT_EQ(Take(log), (Log{"outer leave"}));
}

TEST_F(Dispatch, AMouseThatIsCapturedEntersAndLeavesNothing) {
    inner->CaptureMouse();
    Move(15, 15);
    EXPECT_EQ(Take(log), (Log{"inner move -15 -15", "outer move 5 5"}));
}

TEST_F(Dispatch, NothingHasTheFocusBeforeTheFirstPress) {
    EXPECT_FALSE(control().KeyDown(0, 37));
    EXPECT_TRUE(Take(log).empty());
    EXPECT_EQ(control().GetFocused(), nullptr);
}

TEST_F(Dispatch, APressGivesTheFocusAndKeysGoThere) {
    inner->answer = outer->answer = true;
    Down(35, 40);
    Down(15, 15);
    Take(log);
    EXPECT_TRUE(control().KeyDown(0, 37));
    EXPECT_EQ(Take(log), (Log{"outer key 37 0"}));
    EXPECT_TRUE(outer->HasFocus());
    control().LoseFocus();
    EXPECT_EQ(Take(log), (Log{"outer unfocus"}));
}

TEST_F(Dispatch, AKeyThatIsNotUsedIsNotOfferedToTheParent) {
    Down(35, 40);
    Take(log);
    EXPECT_FALSE(control().KeyDown(0, 65));
    EXPECT_EQ(Take(log), (Log{"inner key 65 0"}));
}

TEST_F(Dispatch, AnElementForCaptureAloneIsNeverUnderThePointer) {
    auto* tracker = new LoggingElement(inner, "tracker", &log, {0, 0, 40, 40});
    tracker->MakeCaptureOnly();
    Down(35, 40);
    EXPECT_EQ(Take(log), (Log{"inner hover", "inner focus", "inner down 5 10"}));
    tracker->CaptureMouse();
    Move(35, 40);
    EXPECT_EQ(Take(log), (Log{"tracker move 5 10", "inner move 5 10", "outer move 25 30"}));
}

TEST_F(Dispatch, AHiddenElementIsNotUnderThePointer) {
    inner->SetVisible(false);
    Down(35, 40);
    EXPECT_EQ(Take(log), (Log{"outer hover", "outer focus", "outer down 25 30"}));
}

TEST_F(Dispatch, TheTopmostOfTwoIsMeant) {
    auto* top = new LoggingElement(outer, "top", &log, {20, 20, 60, 60});
    EXPECT_EQ(control().GetElementAt(35, 40), top);
}

TEST_F(Dispatch, OutsideOfTheWindowThereIsNothing) {
    EXPECT_EQ(control().GetElementAt(-1, 5), nullptr);
    EXPECT_EQ(control().GetElementAt(200, 5), nullptr);
    EXPECT_EQ(control().GetElementAt(5, 100), nullptr);
    EXPECT_EQ(control().GetElementAt(0, 0), window.GetRoot());
}

TEST_F(Dispatch, AnotherCapturerTakesTheMouseAway) {
    inner->CaptureMouse();
    outer->CaptureMouse();
    EXPECT_EQ(Take(log), (Log{"inner capture-lost"}));
    inner->ReleaseMouse();
    EXPECT_TRUE(outer->HasCapture());
    outer->ReleaseMouse();
    EXPECT_EQ(control().GetCaptured(), nullptr);
}

TEST_F(Dispatch, TheWindowSystemMayTakeTheMouseAway) {
    inner->CaptureMouse();
    control().LoseCapture();
    EXPECT_EQ(Take(log), (Log{"inner capture-lost"}));
    EXPECT_FALSE(inner->HasCapture());
}

TEST_F(Dispatch, TheTimerStrikesWhereTheMouseIsHeld) {
    control().Timer();
    EXPECT_TRUE(Take(log).empty());
    inner->CaptureMouse();
    control().Timer();
    EXPECT_EQ(Take(log), (Log{"inner timer"}));
}

TEST_F(Dispatch, TheWheelGoesUpUntilItIsUsed) {
    outer->answer = true;
    EXPECT_TRUE(control().MouseWheel(35, 40, 0, 1.0, false));
    EXPECT_EQ(Take(log), (Log{"inner wheel 5 10", "outer wheel 25 30"}));
}

TEST_F(Dispatch, ATooltipIsAskedForInPixelsOfTheElementAndAnsweredInThoseOfTheWindow) {
    inner->answer = true;
    CTooltipEvent event;
    event.pos = {35, 40};
    EXPECT_TRUE(control().Tooltip(&event));
    EXPECT_EQ(Take(log), (Log{"inner tooltip 5 10"}));
    EXPECT_EQ(event.pos, (point<int>{35, 40}));
    EXPECT_EQ(event.tipRect, (rectangle<int>{35, 40, 40, 45}));
    EXPECT_EQ(event.trackRect, (rectangle<int>{}));
}

// Every event may destroy the element, its parent or the window.
class Destruction : public ::testing::TestWithParam<std::string> {
protected:
    Log log;
    std::unique_ptr<HeadlessWindow> window = std::make_unique<HeadlessWindow>(size<int>{200, 100});
    LoggingElement* outer = new LoggingElement(window->GetRoot(), "outer", &log, {10, 10, 110, 90});
    LoggingElement* inner = new LoggingElement(outer, "inner", &log, {20, 20, 60, 60});

    // Leads to the event of the parameter, and to others before.
    void Provoke() {
        CControl& control = window->GetControl();
        const Watch<CControl> life(&control);
        const auto alive = [&life] { return static_cast<bool>(life); };
        window->PaintPending();
        if (alive()) control.MouseMove(35, 40, 0, MouseButton::None);
        if (alive()) control.ButtonDown(35, 40, 0, MouseButton::Left);
        if (alive()) control.KeyDown(0, 37);
        if (alive()) control.ButtonUp(35, 40, 0, MouseButton::Left);
        if (alive()) control.DoubleClick(35, 40, 0, MouseButton::Left);
        if (alive()) control.ContextMenu(35, 40);
        if (alive()) control.MouseWheel(35, 40, 0, 1.0, false);
        CTooltipEvent event;
        event.pos = {35, 40};
        if (alive()) control.Tooltip(&event);
        if (alive() && control.GetElementAt(35, 40) == inner) inner->CaptureMouse();
        if (alive()) control.Timer();
        if (alive()) control.LoseCapture();
        if (alive()) control.LoseFocus();
        if (alive()) control.MouseLeave();
    }
};

TEST_P(Destruction, OfTheElementItself) {
    int events = 0;
    inner->on_event = [&](const std::string& event) {
        if (event != GetParam()) return;
        ++events;
        delete inner;
    };
    Provoke();
    EXPECT_EQ(events, 1);
    EXPECT_TRUE(outer->GetChildren().empty());
}

TEST_P(Destruction, OfTheParent) {
    int events = 0;
    inner->on_event = [&](const std::string& event) {
        if (event != GetParam()) return;
        ++events;
        delete outer;
    };
    Provoke();
    EXPECT_EQ(events, 1);
    EXPECT_TRUE(window->GetRoot()->GetChildren().empty());
}

TEST_P(Destruction, OfTheWindow) {
    int events = 0;
    inner->on_event = [&](const std::string& event) {
        if (event != GetParam()) return;
        ++events;
        window.reset();
    };
    Provoke();
    EXPECT_EQ(events, 1);
    EXPECT_EQ(window, nullptr);
}

INSTANTIATE_TEST_SUITE_P(InEachEvent, Destruction,
                         ::testing::Values("draw", "hover", "move", "focus", "down", "key", "up",
                                           "double", "context", "wheel", "tooltip", "timer",
                                           "capture-lost", "unfocus", "leave"),
                         [](const auto& test) {
                             std::string name = test.param;
                             for (char& c : name) {
                                 if (c == '-') c = '_';
                             }
                             return name;
                         });

}  // namespace
}  // namespace viewkit
