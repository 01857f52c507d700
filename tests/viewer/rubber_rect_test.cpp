#include "rubber_surface.h"

namespace nodeline::test {
namespace {

using Tracker = viewkit::CRubberRect<viewkit::DummyDrawer>;

class RubberRect : public OnSurface<Tracker> {
protected:
    Tracker* tracker = rubber;
};

TEST_F(RubberRect, IsIdleAndOffAtFirst) {
    auto* other = new Tracker(surface);
    EXPECT_FALSE(other->IsEnabled());
    EXPECT_FALSE(other->IsPressed());
    EXPECT_FALSE(other->IsActive());
}

TEST_F(RubberRect, IsOnePixelThatIsNeverUnderThePointer) {
    EXPECT_EQ(tracker->GetBounds(), (paintcore::rectangle<int>{0, 0, 1, 1}));
    EXPECT_EQ(tracker->GetAlignment(), viewkit::Alignment::None);
    EXPECT_EQ(window.GetControl().GetElementAt(20, 10), surface);
}

TEST_F(RubberRect, DoesNothingWhileItIsOff) {
    tracker->Enable(false);
    Press(10, 20);
    ExpectIdle();
    Move(12, 20);
    Release(12, 20);
    EXPECT_EQ(log.lines, Lines{});
}

TEST_F(RubberRect, IgnoresAllButTheLeftButton) {
    for (const MouseButton button : {MouseButton::None, MouseButton::Right, MouseButton::Middle}) {
        Press(10, 20, button);
        ExpectIdle();
    }
    EXPECT_EQ(log.lines, Lines{});
}

TEST_F(RubberRect, APressArmsIt) {
    Press(10, 20);
    EXPECT_TRUE(tracker->IsPressed());
    EXPECT_FALSE(tracker->IsActive());
    EXPECT_EQ(Captured(), tracker);
    EXPECT_EQ(log.lines, Lines{"OnStart 105,60 105,60"});
}

TEST_F(RubberRect, HasTheMouseWhenItTellsOfThePress) {
    bool was_pressed = false;
    log.on_start = [&] { was_pressed = tracker->IsPressed() && Captured() == tracker; };
    Press(10, 20);
    EXPECT_TRUE(was_pressed);
}

TEST_F(RubberRect, APressAndAReleaseEmitOnStartOnly) {
    Press(10, 20);
    Release(10, 20);
    ExpectIdle();
    EXPECT_EQ(log.lines, Lines{"OnStart 105,60 105,60"});
}

TEST_F(RubberRect, TheFirstMoveMakesItActive) {
    Press(10, 20);
    Move(14, 22);
    EXPECT_TRUE(tracker->IsPressed());
    EXPECT_TRUE(tracker->IsActive());
    EXPECT_EQ(Captured(), tracker);
}

TEST_F(RubberRect, EachMoveTellsStartPointerAndThePointerBefore) {
    Press(10, 20);
    log.TakeLines();
    Move(14, 22);
    Move(20, 30);
    EXPECT_EQ(log.lines, (Lines{"OnShift 105,60 107,61 105,60", "OnShift 105,60 110,65 107,61"}));
}

TEST_F(RubberRect, AReleaseAfterAMoveEmitsOnEnd) {
    Press(10, 20);
    Move(14, 22);
    log.TakeLines();
    bool was_pressed = false;
    log.on_end = [&] { was_pressed = tracker->IsPressed() && Captured() == tracker; };
    Release(40, 40);
    // Where the pointer has moved to; the place of the release itself does not count.
    EXPECT_EQ(log.lines, Lines{"OnEnd 105,60 107,61"});
    EXPECT_TRUE(was_pressed);
    ExpectIdle();
}

TEST_F(RubberRect, ResetLeadsBackWithoutASignal) {
    Press(10, 20);
    tracker->Reset();
    ExpectIdle();
    Press(10, 20);
    Move(14, 22);
    log.TakeLines();
    tracker->Reset();
    ExpectIdle();
    Move(20, 20);
    Release(20, 20);
    EXPECT_EQ(log.lines, Lines{});
}

TEST_F(RubberRect, ASlotMayReset) {
    log.on_end = [&] { tracker->Reset(); };
    Press(10, 20);
    Move(14, 22);
    Release(14, 22);
    ExpectIdle();
    Press(0, 0);
    Release(0, 0);
    EXPECT_EQ(log.lines.back(), "OnStart 100,50 100,50");
}

TEST_F(RubberRect, SwitchingItLeavesARunningDragAlone) {
    Press(10, 20);
    tracker->Enable(false);
    Move(14, 22);
    Release(14, 22);
    EXPECT_EQ(log.lines.size(), 3u);
    Press(10, 20);
    EXPECT_EQ(log.lines.size(), 3u);
}

TEST_F(RubberRect, MovesWithoutAPressAreNotItsOwn) {
    EXPECT_FALSE(tracker->HandleMouseMove(5, 5, 0, MouseButton::Left));
    EXPECT_FALSE(tracker->IsActive());
    EXPECT_EQ(log.lines, Lines{});
}

TEST_F(RubberRect, LetsTheParentHearOfMovesAndReleases) {
    ReleaseCounter counter(surface);
    Press(10, 20);
    EXPECT_FALSE(tracker->HandleMouseMove(14, 22, 0, MouseButton::Left));
    Release(14, 22);
    EXPECT_EQ(counter.places, (std::vector<point<int>>{{14, 22}}));
    EXPECT_FALSE(tracker->HandleButtonUp(14, 22, 0, MouseButton::Left));
}

TEST_F(RubberRect, APressOnItselfCountsAsWell) {
    tracker->OnButtonDown(tracker, 10, 20, 0, MouseButton::Left);
    EXPECT_TRUE(tracker->IsPressed());
    EXPECT_EQ(log.lines, Lines{"OnStart 105,60 105,60"});
}

TEST_F(RubberRect, HoldsThePointerInTheParent) {
    Press(10, 20);
    log.TakeLines();
    Move(-5, -7);
    Move(101, 51);
    Move(100, 50);
    EXPECT_EQ(log.lines, (Lines{"OnShift 105,60 100,50 105,60", "OnShift 105,60 150,75 100,50",
                                "OnShift 105,60 150,75 150,75"}));
}

TEST_F(RubberRect, LetsThePointerLeaveTheParentIfToldSo) {
    tracker->SetClampToParent(false);
    Press(10, 20);
    log.TakeLines();
    Move(-10, 60);
    EXPECT_EQ(log.lines, Lines{"OnShift 105,60 95,80 105,60"});
}

TEST_F(RubberRect, AnXBandGoesFromTopToBottom) {
    tracker->SetPosConverter(std::make_unique<CXPosConverter>());
    Press(10, 20);
    Move(20, 5);
    Release(20, 5);
    EXPECT_EQ(log.lines, (Lines{"OnStart 105,50 105,50", "OnShift 105,50 110,75 105,50",
                                "OnEnd 105,50 110,75"}));
}

TEST_F(RubberRect, AYBandGoesFromLeftToRight) {
    tracker->SetPosConverter(std::make_unique<CYPosConverter>());
    Press(10, 20);
    Move(20, 4);
    Release(20, 4);
    EXPECT_EQ(log.lines, (Lines{"OnStart 100,60 100,60", "OnShift 100,60 150,52 100,60",
                                "OnEnd 100,60 150,52"}));
}

TEST_F(RubberRect, NoConverterIsNoRestriction) {
    tracker->SetPosConverter(std::make_unique<CXPosConverter>());
    tracker->SetPosConverter(nullptr);
    Press(10, 20);
    EXPECT_EQ(log.lines, Lines{"OnStart 105,60 105,60"});
}

TEST_F(RubberRect, ScrollingInASlotLeavesTheStepsOfThePointerTrue) {
    log.on_shift = [&] { surface->horz.start -= 10.0; };
    Press(10, 20);
    log.TakeLines();
    Move(14, 20);
    Move(20, 20);
    // All three points in the mapping from before the emission: 4 pixels, then 6.
    EXPECT_EQ(log.lines, (Lines{"OnShift 105,60 107,60 105,60", "OnShift 95,60 100,60 97,60"}));
}

TEST_F(RubberRect, TellsTheEndInTheMappingOfTheRelease) {
    Press(10, 20);
    Move(14, 20);
    log.TakeLines();
    surface->vert.start = 0.0;
    Release(14, 20);
    EXPECT_EQ(log.lines, Lines{"OnEnd 105,10 107,10"});
}

TEST_F(RubberRect, AsksForAPaintAfterTheSignal) {
    Press(10, 20);
    window.PaintPending();
    bool was_pending = true;
    log.on_shift = [&] { was_pending = window.GetControl().IsPaintPending(); };
    MoveOnly(14, 22);
    EXPECT_FALSE(was_pending);
    EXPECT_TRUE(window.GetControl().IsPaintPending());
    window.PaintPending();
    window.GetControl().ButtonUp(34, 32, 0, MouseButton::Left);
    EXPECT_TRUE(window.GetControl().IsPaintPending());
}

TEST_F(RubberRect, DrawsNothingInsideTheParent) {
    headless::RecordingPainter painter;
    tracker->DrawContent(&painter);
    Press(10, 20);
    tracker->DrawContent(&painter);
    EXPECT_EQ(painter.TakeLines(), Lines{});
    Move(14, 22);
    tracker->DrawContent(&painter);
    EXPECT_EQ(painter.TakeLines(), (Lines{"SetClipRect 0 0 100 50 0", "ResetClip"}));
}

TEST_F(RubberRect, ListensToTheParentThatItHas) {
    auto* other = new Surface(window.GetRoot());
    tracker->SetParent(other);
    surface->OnButtonDown(surface, 10, 20, 0, MouseButton::Left);
    ExpectIdle();
    other->horz.start = 0.0;
    other->OnButtonDown(other, 10, 20, 0, MouseButton::Left);
    EXPECT_EQ(log.TakeLines(), Lines{"OnStart 5,60 5,60"});
    tracker->HandleButtonUp(10, 20, 0, MouseButton::Left);
    tracker->SetParent(surface);
    surface->OnButtonDown(surface, 10, 20, 0, MouseButton::Left);
    EXPECT_EQ(log.lines, Lines{"OnStart 105,60 105,60"});
}

TEST_F(RubberRect, OneWithoutAParentDoesNothing) {
    tracker->SetParent(nullptr);
    headless::RecordingPainter painter;
    tracker->OnButtonDown(tracker, 10, 20, 0, MouseButton::Left);
    EXPECT_FALSE(tracker->HandleMouseMove(14, 22, 0, MouseButton::Left));
    EXPECT_FALSE(tracker->HandleButtonUp(14, 22, 0, MouseButton::Left));
    tracker->DrawContent(&painter);
    EXPECT_EQ(log.lines, Lines{});
    EXPECT_EQ(painter.GetLines(), Lines{});
    tracker->SetParent(surface);
    Press(10, 20);
    EXPECT_EQ(log.lines, Lines{"OnStart 105,60 105,60"});
}

TEST_F(RubberRect, OneThatWasMadeWithoutAParentConnectsLater) {
    auto* orphan = new Tracker(nullptr);
    orphan->Enable(true);
    RubberLog<Tracker> orphan_log(orphan);
    orphan->SetParent(surface);
    Press(10, 20);
    EXPECT_EQ(orphan_log.lines, Lines{"OnStart 105,60 105,60"});
}

TEST_F(RubberRect, WorksOutsideOfAWindow) {
    Surface free(nullptr);
    auto* inner = new Tracker(&free);
    RubberLog<Tracker> inner_log(inner);
    inner->Enable(true);
    free.OnButtonDown(&free, 10, 20, 0, MouseButton::Left);
    inner->HandleMouseMove(14, 22, 0, MouseButton::Left);
    inner->HandleButtonUp(14, 22, 0, MouseButton::Left);
    EXPECT_EQ(inner_log.lines, (Lines{"OnStart 105,60 105,60", "OnShift 105,60 107,61 105,60",
                                      "OnEnd 105,60 107,61"}));
}

TEST_F(RubberRect, ADragEndsSilentlyWhenTheMouseIsLost) {
    Press(10, 20);
    Move(14, 22);
    log.TakeLines();
    window.GetControl().LoseCapture();
    ExpectIdle();
    Press(10, 20);
    surface->CaptureMouse();
    EXPECT_FALSE(tracker->IsPressed());
    EXPECT_EQ(Captured(), surface);
    EXPECT_EQ(log.lines, Lines{"OnStart 105,60 105,60"});
}

TEST_F(RubberRect, ADragEndsSilentlyWhenTheParentChanges) {
    Press(10, 20);
    Move(14, 22);
    log.TakeLines();
    tracker->SetParent(new Surface(window.GetRoot()));
    ExpectIdle();
    EXPECT_EQ(log.lines, Lines{});
}

// Who dies in which signal.
using RubberRectDeath = DeathOf<RubberRect>;

TEST_P(RubberRectDeath, InOnStart) {
    log.on_start = Kill();
    Press(10, 20);
    ExpectDeath(1);
}

TEST_P(RubberRectDeath, InOnShift) {
    log.on_shift = Kill();
    Press(10, 20);
    Move(14, 22);
    ExpectDeath(2);
}

TEST_P(RubberRectDeath, InOnEnd) {
    log.on_end = Kill();
    Press(10, 20);
    Move(14, 22);
    Release(14, 22);
    ExpectDeath(3);
}

TEST_P(RubberRectDeath, WhenItTakesTheMouseFromAnother) {
    // The one that loses the mouse takes the winner along.
    class Loser : public CVisualElement {
    public:
        explicit Loser(CVisualElement* parent)
            : CVisualElement(parent, {1, 1}, viewkit::Alignment::None) {}
        void HandleCaptureLost() override { lost(); }
        std::function<void()> lost;
    };
    auto* loser = new Loser(window.GetRoot());
    loser->lost = Kill();
    loser->CaptureMouse();
    Press(10, 20);
    ExpectDeath(0);
}

INSTANTIATE_TEST_SUITE_P(OfTrackerOrParent, RubberRectDeath, testing::Bool(),
                         [](const auto& death) { return death.param ? "Parent" : "Tracker"; });

}  // namespace
}  // namespace nodeline::test
