#include "rubber_rect_ex.h"

namespace nodeline::test {
namespace {

// When the outline is drawn, where, and what takes it away.
class RubberOutline : public RubberRectEx {};

TEST_F(RubberOutline, PaintsAtOnceWhenItHasScrolled) {
    LetScroll();
    Press(10, 20);
    const int before = window.GetPaintCount();
    int at_shift = 0;
    log.on_shift = [&] { at_shift = window.GetPaintCount(); };
    MoveOnly(14, 22);
    EXPECT_EQ(window.GetPaintCount(), before);
    EXPECT_TRUE(window.GetControl().IsPaintPending());
    MoveOnly(110, 20);
    EXPECT_EQ(at_shift, before);
    EXPECT_EQ(window.GetPaintCount(), before + 1);
}

TEST_F(RubberOutline, APaintAfterAMoveReplacesTheOutline) {
    Press(10, 20);
    EXPECT_EQ(rect->drawn, Lines{});
    Move(14, 22);
    Move(20, 30);
    EXPECT_EQ(rect->drawn, (Lines{"DrawSelection 105 60 105 60 105 60 107 61 active erased",
                                  "DrawSelection 105 60 105 60 107 61 110 65 active"}));
    Release(20, 30);
    EXPECT_EQ(rect->drawn.size(), 2u);
}

TEST_F(RubberOutline, APaintAfterScrollingTakesTheOldOutlineAwayAndDrawsTheNew) {
    LetScroll();
    Press(10, 20);
    Move(14, 22);
    rect->TakeDrawn();
    Move(110, 20);
    EXPECT_EQ(rect->TakeDrawn(), (Lines{"DrawRect 105 60 107 61", "DrawRect 105 60 160 60"}));
    // The next move does not scroll and goes the usual way again.
    Move(90, 20);
    EXPECT_EQ(rect->drawn, Lines{"DrawSelection 105 60 105 60 160 60 150 60 active"});
}

TEST_F(RubberOutline, WithTheOutlineOffAPaintAfterScrollingHasNoneToTakeAway) {
    LetScroll();
    rect->SetOutlineOn(false);
    Press(10, 20);
    Move(14, 22);
    rect->TakeDrawn();
    Move(110, 20);
    EXPECT_EQ(rect->drawn, Lines{"DrawSelection 105 60 105 60 107 61 160 60 active erased"});
}

TEST_F(RubberOutline, SwitchingTheOutlineCountsItAsGone) {
    for (const bool on : {false, true}) {
        Press(10, 20);
        Move(14, 22);
        rect->SetOutlineOn(on);
        rect->TakeDrawn();
        Move(14, 22);
        EXPECT_EQ(rect->drawn, Lines{"DrawSelection 105 60 105 60 107 61 107 61 active erased"});
        Release(14, 22);
    }
}

TEST_F(RubberOutline, ScrollingWithTheOutlineOnCountsItAsStanding) {
    Surface free(nullptr);
    auto* inner = new Rect(&free);
    inner->Enable(true);
    inner->SetHorzScroll(&free.horz);
    free.OnButtonDown(&free, 10, 20, 0, MouseButton::Left);
    inner->HandleMouseMove(110, 20, 0, MouseButton::Left);
    inner->HandleMouseMove(90, 20, 0, MouseButton::Left);
    headless::RecordingPainter painter;
    inner->DrawContent(&painter);
    EXPECT_EQ(inner->drawn, Lines{"DrawSelection 105 60 105 60 105 60 150 60 active"});
}

TEST_F(RubberOutline, DrawsInItsOwnCoordinatesInsideTheParent) {
    LetScroll();
    headless::RecordingPainter painter;
    rect->DrawContent(&painter);
    Press(10, 20);
    rect->DrawContent(&painter);
    EXPECT_EQ(painter.GetLines(), Lines{});
    Move(14, 22);
    rect->DrawContent(&painter);
    const Lines lines = painter.TakeLines();
    rect->SetCoordSystem(&painter);
    EXPECT_EQ(lines, (Lines{"SetClipRect 0 0 100 50 0", painter.GetLines().front(), "ResetClip"}));
}

TEST_F(RubberOutline, TakesTheOldOutlineAwayWhereTheParentDraws) {
    Surface free(nullptr);
    auto* inner = new Rect(&free);
    inner->Enable(true);
    inner->SetHorzScroll(&free.horz);
    headless::RecordingPainter painter;
    free.OnButtonDown(&free, 10, 20, 0, MouseButton::Left);
    inner->HandleMouseMove(14, 22, 0, MouseButton::Left);
    free.OnDraw(&free, &painter);
    EXPECT_EQ(painter.GetLines(), Lines{});
    inner->HandleMouseMove(110, 20, 0, MouseButton::Left);
    free.OnDraw(&free, &painter);
    EXPECT_EQ(painter.TakeLines(), (Lines{"SetClipRect 105 50 155 75 0", "ResetClip"}));
    EXPECT_EQ(inner->TakeDrawn(), Lines{"DrawRect 105 60 105 60"});
    inner->SetOutlineOn(false);
    free.OnDraw(&free, &painter);
    inner->SetOutlineOn(true);
    inner->Reset();
    free.OnDraw(&free, &painter);
    EXPECT_EQ(painter.GetLines(), Lines{});
    EXPECT_EQ(inner->drawn, Lines{});
}

TEST_F(RubberOutline, ShowsItsOutlineOverThePictureWhileItHasTheMouse) {
    headless::RecordingPainter painter;
    rect->DrawOverlay(&painter);
    Press(10, 20);
    rect->DrawOverlay(&painter);
    EXPECT_EQ(painter.GetLines(), Lines{});
    Move(14, 22);
    rect->TakeDrawn();
    rect->DrawOverlay(&painter);
    EXPECT_EQ(rect->drawn, Lines{"PaintOutline"});
    // The coordinates are the parent's.
    const Lines lines = painter.TakeLines();
    surface->SetCoordSystem(&painter);
    EXPECT_EQ(lines, (Lines{"SetClipRect 0 0 100 50 0", painter.TakeLines().front(), "ResetClip"}));
    Release(14, 22);
    rect->DrawOverlay(&painter);
    EXPECT_EQ(painter.GetLines(), Lines{});
}

TEST_F(RubberOutline, TheOutlineThatIsShownFollowsThePointer) {
    auto* visible = new viewkit::CRubberRectEx<viewkit::FocusRectDrawer>(surface);
    rect->Enable(false);
    visible->Enable(true);
    visible->SetHorzScroll(&surface->horz);
    const auto shown = [this] {
        headless::RecordingPainter painter;
        window.GetControl().DrawOverlays(&painter);
        Lines outlines;
        for (const std::string& line : painter.GetLines()) {
            if (line.find("Rectangle") == 0 && (outlines.empty() || outlines.back() != line)) {
                outlines.push_back(line);
            }
        }
        return outlines;
    };
    Press(10, 20);
    EXPECT_EQ(shown(), Lines{});
    Move(14, 22);
    EXPECT_EQ(shown(), Lines{"Rectangle 105 60 107 61"});
    Move(110, 30);
    EXPECT_EQ(shown(), Lines{"Rectangle 105 60 160 65"});
    Release(110, 30);
    EXPECT_EQ(shown(), Lines{});
}

}  // namespace
}  // namespace nodeline::test
