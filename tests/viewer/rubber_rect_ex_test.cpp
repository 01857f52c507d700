#include "rubber_rect_ex.h"

namespace nodeline::test {
namespace {

TEST_F(RubberRectEx, IsIdleAndOffAtFirst) {
    auto* other = new Rect(surface);
    EXPECT_FALSE(other->IsEnabled());
    EXPECT_FALSE(other->IsPressed());
    EXPECT_FALSE(other->IsActive());
    EXPECT_EQ(other->GetReleaseKeys(), 0);
}

TEST_F(RubberRectEx, IsOnePixelThatIsNeverUnderThePointer) {
    EXPECT_EQ(rect->GetBounds(), (paintcore::rectangle<int>{0, 0, 1, 1}));
    EXPECT_EQ(rect->GetAlignment(), viewkit::Alignment::None);
    EXPECT_EQ(window.GetControl().GetElementAt(20, 10), surface);
}

TEST_F(RubberRectEx, DoesNothingWhileItIsOff) {
    rect->Enable(false);
    Press(10, 20);
    ExpectIdle();
    EXPECT_EQ(log.lines, Lines{});
}

TEST_F(RubberRectEx, IgnoresAllButTheLeftButton) {
    for (const MouseButton button : {MouseButton::None, MouseButton::Right, MouseButton::Middle}) {
        Press(10, 20, button);
        ExpectIdle();
    }
    EXPECT_EQ(log.lines, Lines{});
}

TEST_F(RubberRectEx, APressArmsIt) {
    bool was_pressed = false;
    log.on_start = [&] { was_pressed = rect->IsPressed() && Captured() == rect; };
    Press(10, 20);
    EXPECT_TRUE(was_pressed);
    EXPECT_TRUE(rect->IsPressed());
    EXPECT_FALSE(rect->IsActive());
    EXPECT_EQ(log.lines, Lines{"OnStart 105,60 105,60"});
}

TEST_F(RubberRectEx, TheFirstMoveMakesItActive) {
    Press(10, 20);
    Move(14, 22);
    EXPECT_TRUE(rect->IsPressed());
    EXPECT_TRUE(rect->IsActive());
    EXPECT_EQ(Captured(), rect);
}

TEST_F(RubberRectEx, EachMoveTellsStartPointerAndThePointerBefore) {
    Press(10, 20);
    log.TakeLines();
    Move(14, 22);
    Move(20, 30);
    EXPECT_EQ(log.lines, (Lines{"OnShift 105,60 107,61 105,60", "OnShift 105,60 110,65 107,61"}));
}

TEST_F(RubberRectEx, AReleaseTellsTheCornersAsTheyWerePaintedLast) {
    Press(10, 20);
    Move(14, 22);
    MoveOnly(40, 40);
    log.TakeLines();
    bool was_pressed = false;
    log.on_end = [&] { was_pressed = rect->IsPressed() && Captured() == rect; };
    Release(40, 40);
    EXPECT_EQ(log.lines, Lines{"OnEnd 105,60 107,61"});
    EXPECT_TRUE(was_pressed);
    ExpectIdle();
}

TEST_F(RubberRectEx, AReleaseWithoutAMoveTellsThePressPointTwice) {
    Press(10, 20);
    Release(12, 22);
    EXPECT_EQ(log.lines, (Lines{"OnStart 105,60 105,60", "OnEnd 105,60 105,60"}));
    ExpectIdle();
}

TEST_F(RubberRectEx, KeepsTheKeysOfTheLastRelease) {
    int keys_at_end = 0;
    log.on_end = [&] { keys_at_end = rect->GetReleaseKeys(); };
    Press(10, 20);
    Release(10, 20, 3);
    EXPECT_EQ(keys_at_end, 3);
    log.TakeLines();
    // Also of one that ends nothing.
    EXPECT_FALSE(rect->HandleButtonUp(10, 20, 2, MouseButton::Left));
    EXPECT_EQ(rect->GetReleaseKeys(), 2);
    EXPECT_EQ(log.lines, Lines{});
}

TEST_F(RubberRectEx, ResetLeadsBackWithoutASignal) {
    Press(10, 20);
    rect->Reset();
    ExpectIdle();
    Press(10, 20);
    Move(14, 22);
    log.TakeLines();
    rect->Reset();
    ExpectIdle();
    Move(20, 20);
    Release(20, 20);
    EXPECT_EQ(log.lines, Lines{});
}

TEST_F(RubberRectEx, SwitchingItLeavesARunningDragAlone) {
    Press(10, 20);
    rect->Enable(false);
    Move(14, 22);
    Release(14, 22);
    EXPECT_EQ(log.lines.size(), 3u);
    Press(10, 20);
    EXPECT_EQ(log.lines.size(), 3u);
}

TEST_F(RubberRectEx, LetsTheParentHearOfMovesAndReleases) {
    ReleaseCounter counter(surface);
    EXPECT_FALSE(rect->HandleMouseMove(14, 22, 0, MouseButton::Left));
    EXPECT_FALSE(rect->IsActive());
    Press(10, 20);
    EXPECT_FALSE(rect->HandleMouseMove(14, 22, 0, MouseButton::Left));
    Release(14, 22);
    EXPECT_EQ(counter.places, (std::vector<point<int>>{{14, 22}}));
}

TEST_F(RubberRectEx, APressOnItselfCountsAsWell) {
    rect->OnButtonDown(rect, 10, 20, 0, MouseButton::Left);
    EXPECT_EQ(log.lines, Lines{"OnStart 105,60 105,60"});
}

TEST_F(RubberRectEx, AnXBandGoesFromTopToBottom) {
    rect->SetPosConverter(std::make_unique<CXPosConverter>());
    Press(10, 20);
    Move(20, 4);
    Move(20, 30);
    EXPECT_EQ(log.lines, (Lines{"OnStart 105,50 105,50", "OnShift 105,50 110,75 105,50",
                                "OnShift 105,50 110,75 110,75"}));
}

TEST_F(RubberRectEx, AYBandGoesFromLeftToRight) {
    rect->SetPosConverter(std::make_unique<CYPosConverter>());
    Press(10, 20);
    Move(20, 4);
    EXPECT_EQ(log.lines, (Lines{"OnStart 100,60 100,60", "OnShift 100,60 150,52 100,60"}));
    rect->SetPosConverter(nullptr);
    Move(20, 4);
    EXPECT_EQ(log.lines.back(), "OnShift 100,60 110,52 150,52");
}

TEST_F(RubberRectEx, ABandFollowsTheEdgesOfTheParent) {
    rect->SetPosConverter(std::make_unique<CXPosConverter>());
    Press(10, 20);
    Move(20, 20);
    surface->vert.start = 40.0;
    rect->TakeDrawn();
    Move(30, 20);
    EXPECT_EQ(log.lines.back(), "OnShift 105,50 115,65 110,75");
    Move(30, 20);
    // The start corner has moved along, and is told as it was painted last.
    EXPECT_EQ(log.lines.back(), "OnShift 105,40 115,65 115,65");
    EXPECT_EQ(rect->drawn, (Lines{"DrawSelection 105 50 105 50 110 75 115 65 active",
                                  "DrawSelection 105 40 105 40 115 65 115 65 active"}));
}

TEST_F(RubberRectEx, AFreeStartStaysWhereItIsInTheDrawing) {
    LetScroll();
    Press(10, 20);
    Move(14, 22);
    surface->vert.start = 40.0;
    Move(14, 22);
    Move(14, 22);
    EXPECT_EQ(log.lines.back(), "OnShift 105,60 107,51 107,51");
}

TEST_F(RubberRectEx, ListensToTheParentThatItHas) {
    auto* other = new Surface(window.GetRoot());
    rect->SetParent(other);
    rect->SetHorzScroll(&other->horz);
    surface->OnButtonDown(surface, 10, 20, 0, MouseButton::Left);
    ExpectIdle();
    other->OnButtonDown(other, 10, 20, 0, MouseButton::Left);
    EXPECT_EQ(log.lines, Lines{"OnStart 105,60 105,60"});
    // The slot of the draw signal: it looks for a move that has scrolled, before the next paint.
    std::size_t from_old = 0;
    std::size_t from_new = 0;
    headless::RecordingPainter painter;
    log.on_shift = [&] {
        surface->OnDraw(surface, &painter);
        from_old = rect->TakeDrawn().size();
        other->OnDraw(other, &painter);
        from_new = rect->TakeDrawn().size();
    };
    rect->HandleMouseMove(110, 20, 0, MouseButton::Left);
    EXPECT_EQ(from_old, 0u);
    EXPECT_EQ(from_new, 1u);
}

TEST_F(RubberRectEx, OneWithoutAParentDoesNothing) {
    Press(10, 20);
    Move(14, 22);
    rect->SetParent(nullptr);
    log.TakeLines();
    rect->TakeDrawn();
    headless::RecordingPainter painter;
    rect->OnButtonDown(rect, 10, 20, 0, MouseButton::Left);
    EXPECT_FALSE(rect->HandleMouseMove(14, 22, 0, MouseButton::Left));
    EXPECT_FALSE(rect->HandleButtonUp(14, 22, 0, MouseButton::Left));
    rect->DrawContent(&painter);
    rect->DrawOverlay(&painter);
    surface->OnDraw(surface, &painter);
    EXPECT_EQ(log.lines, Lines{});
    EXPECT_EQ(rect->drawn, Lines{});
    rect->SetParent(surface);
    Press(10, 20);
    EXPECT_EQ(log.lines, Lines{"OnStart 105,60 105,60"});
}

TEST_F(RubberRectEx, WorksOutsideOfAWindow) {
    Surface free(nullptr);
    auto* inner = new Rect(&free);
    RubberLog<Rect> inner_log(inner);
    inner->Enable(true);
    inner->SetHorzScroll(&free.horz);
    free.OnButtonDown(&free, 10, 20, 0, MouseButton::Left);
    inner->HandleMouseMove(110, 20, 0, MouseButton::Left);
    inner->HandleButtonUp(110, 20, 0, MouseButton::Left);
    EXPECT_EQ(inner_log.lines, (Lines{"OnStart 105,60 105,60", "OnShift 105,60 160,60 105,60",
                                      "OnEnd 105,60 105,60"}));
}

TEST_F(RubberRectEx, ADragEndsSilentlyWhenTheMouseIsLost) {
    Press(10, 20);
    Move(14, 22);
    log.TakeLines();
    window.GetControl().LoseCapture();
    ExpectIdle();
    EXPECT_EQ(log.lines, Lines{});
}

TEST_F(RubberRectEx, OfTwoRectanglesTheLastToTakeTheMouseHasTheDrag) {
    auto* later = new Rect(surface);
    later->Enable(true);
    Press(10, 20);
    EXPECT_EQ(Captured(), later);
    EXPECT_TRUE(later->IsPressed());
    EXPECT_FALSE(rect->IsPressed());
}

// Who dies in which signal.
class RubberRectExDeath : public DeathOf<RubberRectEx> {
protected:
    RubberRectExDeath() { LetScroll(); }
};

TEST_P(RubberRectExDeath, InOnStart) {
    log.on_start = Kill();
    Press(10, 20);
    ExpectDeath(1);
}

TEST_P(RubberRectExDeath, InOnShift) {
    log.on_shift = Kill();
    Press(10, 20);
    Move(110, 60);
    ExpectDeath(2);
}

TEST_P(RubberRectExDeath, InOnEnd) {
    log.on_end = Kill();
    Press(10, 20);
    Move(14, 22);
    Release(14, 22);
    ExpectDeath(3);
}

TEST_P(RubberRectExDeath, WhileAModelIsScrolled) {
    // A model of somebody else's, which outlives the surface.
    Axis vert = surface->vert;
    vert.then = Kill();
    rect->SetVertScroll(&vert);
    Press(10, 20);
    Move(110, 60);
    ExpectDeath(1);
}

INSTANTIATE_TEST_SUITE_P(OfRectangleOrParent, RubberRectExDeath, testing::Bool(),
                         [](const auto& death) { return death.param ? "Parent" : "Rectangle"; });

TEST_F(RubberRectEx, AModelMayTakeItOutOfItsParent) {
    LetScroll();
    surface->horz.then = [&] { rect->SetParent(nullptr); };
    Press(10, 20);
    Move(110, 20);
    EXPECT_EQ(log.lines, Lines{"OnStart 105,60 105,60"});
    EXPECT_FALSE(rect->IsPressed());
    delete rect;
}

}  // namespace
}  // namespace nodeline::test
