#include <backends/headless/headless_window.h>
#include <gtest/gtest.h>
#include <viewkit/scroll_bar.h>
#include <viewkit/scroll_box.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "test_surface.h"

namespace viewkit {
namespace {

using nodeline::headless::HeadlessWindow;
using paintcore::KeyControl;
using paintcore::KeyShift;

// Counts the scrolls of the user.
class Listener : public subscriber_base_t {
public:
    void Scrolled() { ++scrolls; }
    int scrolls = 0;
};

// A window of 200 by 100 on a plane of 1,000 by 1,000 units, so both bars are needed: the pane has
// 186 by 86 pixels.
class ScrollBox : public ::testing::Test {
protected:
    ScrollBox() {
        box->SetVertModel(&surface->vert);
        box->SetHorzModel(&surface->horz);
        surface->SetVertScroll(box->GetWrappedVertScroll());
        surface->SetHorzScroll(box->GetWrappedHorzScroll());
        box->SetCentralPane(surface);
        box->OnScroll.connect(&listener, &Listener::Scrolled);
        window.PaintPending();
    }

    Listener listener;
    HeadlessWindow window{{200, 100}};
    CScrollBox* box = new CScrollBox(window.GetRoot(), {1, 1}, Alignment::Client);
    TestSurface* surface = new TestSurface(box);
};

TEST_F(ScrollBox, ShowsABarForEachAxisThatIsLongerThanTheView) {
    EXPECT_TRUE(box->GetVertBar()->IsVisible());
    EXPECT_TRUE(box->GetHorzBar()->IsVisible());
    EXPECT_EQ(surface->GetBounds(), (rectangle<int>{0, 0, 186, 86}));
    EXPECT_EQ(box->GetVertBar()->GetBounds(), (rectangle<int>{186, 0, 200, 86}));
    EXPECT_EQ(box->GetHorzBar()->GetBounds(), (rectangle<int>{0, 86, 186, 100}));
}

TEST(ScrollBarColors, GoWithTheBackgroundOfTheProcess) {
    const paintcore::SysPalette before = paintcore::GetSysPalette();
    EXPECT_EQ(CScrollBar::GetTroughColor(), paintcore::_color(240, 240, 240));
    paintcore::SysPalette dark = before;
    dark.Set(paintcore::SysPalette::kBackground, paintcore::_color(24, 27, 31));
    paintcore::SetSysPalette(dark);
    EXPECT_LT(CScrollBar::GetTroughColor().red, 64);
    paintcore::SetSysPalette(before);
}

TEST_F(ScrollBox, HidesABarWhenItsRangeFits) {
    surface->horz.to = 186.0;
    surface->OnChange(surface, UpdateType::Content);
    window.PaintPending();
    EXPECT_FALSE(box->GetHorzBar()->IsVisible());
    EXPECT_EQ(surface->GetBounds(), (rectangle<int>{0, 0, 186, 100}));
}

TEST_F(ScrollBox, ABarMayMakeTheOtherOneNecessary) {
    surface->horz.to = 190.0;
    surface->OnChange(surface, UpdateType::Content);
    window.PaintPending();
    EXPECT_TRUE(box->GetHorzBar()->IsVisible());
    surface->vert.to = 50.0;
    surface->OnChange(surface, UpdateType::Content);
    window.PaintPending();
    EXPECT_FALSE(box->GetHorzBar()->IsVisible());
    EXPECT_FALSE(box->GetVertBar()->IsVisible());
    EXPECT_EQ(surface->GetBounds(), (rectangle<int>{0, 0, 200, 100}));
}

TEST_F(ScrollBox, ShowsNoBarInTheModeNever) {
    box->SetVertBarMode(ScrollBarNever);
    box->SetHorzBarMode(ScrollBarNever);
    EXPECT_EQ(surface->GetBounds(), (rectangle<int>{0, 0, 200, 100}));
    box->SetHorzBarMode(ScrollBarAsNeeded);
    EXPECT_EQ(surface->GetBounds(), (rectangle<int>{0, 0, 200, 86}));
}

TEST_F(ScrollBox, TheWrappedModelsForwardToTheGivenOnes) {
    IScrollModel* const vert = box->GetWrappedVertScroll();
    vert->SetStart(30.0);
    EXPECT_EQ(surface->vert.start, 30.0);
    EXPECT_EQ(vert->GetStart(), 30.0);
    EXPECT_EQ(vert->GetFrom(), 0.0);
    EXPECT_EQ(vert->GetTo(), 1000.0);
    EXPECT_EQ(vert->GetMinScrollDistance(), 4);
    vert->SetMeasure({1.0, 2});
    EXPECT_EQ(surface->vert.measure, (std::pair<double, int>{1.0, 2}));
    EXPECT_TRUE(window.GetControl().IsPaintPending());
}

TEST_F(ScrollBox, TheWrappedModelsStandOnTheirOwnWithoutAModel) {
    box->SetVertModel(nullptr);
    IScrollModel* const vert = box->GetWrappedVertScroll();
    vert->SetStart(30.0);
    EXPECT_EQ(vert->GetStart(), 0.0);
    EXPECT_EQ(vert->GetMeasure(), (std::pair<double, int>{1.0, 1}));
    EXPECT_EQ(surface->vert.start, 0.0);
}

TEST_F(ScrollBox, TheThumbIsDragged) {
    // The trough has 58 pixels, and a thumb of the least length, 16, which starts at 14.
    EXPECT_EQ(box->GetVertBar()->GetThumb(), (CScrollBar::Thumb{14, 30}));
    window.Press(190, 20);
    window.Move(190, 41);
    EXPECT_EQ(box->GetVertBar()->GetThumb(), (CScrollBar::Thumb{35, 51}));
    EXPECT_EQ(surface->vert.start, 457.0);  // half of 1,000 less the view
    window.Move(190, 500);
    EXPECT_EQ(surface->vert.start, 914.0);
    window.Release(190, 500);
    window.Move(190, 20);
    EXPECT_EQ(surface->vert.start, 914.0);
    EXPECT_EQ(listener.scrolls, 2);
}

TEST_F(ScrollBox, TheTroughPagesAndRepeatsUntilTheThumbIsThere) {
    window.Press(190, 60);
    EXPECT_DOUBLE_EQ(surface->vert.start, 0.9 * 86);
    EXPECT_EQ(window.GetRepeatTimer(), 400);
    window.GetControl().Timer();
    EXPECT_DOUBLE_EQ(surface->vert.start, 2 * 0.9 * 86);
    EXPECT_EQ(window.GetRepeatTimer(), 50);
    for (int i = 0; i < 100; ++i) window.GetControl().Timer();
    const CScrollBar::Thumb thumb = box->GetVertBar()->GetThumb();
    EXPECT_LE(thumb.from, 60);
    EXPECT_GT(thumb.to, 60);
    window.Release(190, 60);
    EXPECT_EQ(window.GetRepeatTimer(), 0);
    const double reached = surface->vert.start;
    window.Click(190, 15);
    EXPECT_DOUBLE_EQ(surface->vert.start, reached - 0.9 * 86);
}

TEST_F(ScrollBox, TheArrowsStep) {
    window.Click(190, 80);
    EXPECT_EQ(surface->vert.start, 4.0);
    window.Click(175, 95);
    EXPECT_EQ(surface->horz.start, 4.0);
    window.Click(190, 5);
    window.Click(190, 5);
    EXPECT_EQ(surface->vert.start, 0.0);
    EXPECT_EQ(listener.scrolls, 3);
}

TEST_F(ScrollBox, ALostCaptureEndsADrag) {
    window.Press(190, 20);
    window.GetControl().LoseCapture();
    window.Move(190, 41);
    EXPECT_EQ(surface->vert.start, 0.0);
}

TEST_F(ScrollBox, TheWheelScrollsVerticallyAndWithShiftHorizontally) {
    CControl& control = window.GetControl();
    control.MouseWheel(50, 50, 0, -2.0, false);
    EXPECT_EQ(surface->vert.start, 96.0);
    control.MouseWheel(50, 50, KeyShift, -1.0, false);
    EXPECT_EQ(surface->horz.start, 48.0);
    control.MouseWheel(50, 50, 0, 1.0, true);
    EXPECT_EQ(surface->horz.start, 96.0);
    control.MouseWheel(50, 50, 0, 100.0, false);
    EXPECT_EQ(surface->vert.start, 0.0);
    control.MouseWheel(50, 50, 0, -1000.0, false);
    EXPECT_EQ(surface->vert.start, 914.0);
    EXPECT_EQ(listener.scrolls, 5);
}

TEST_F(ScrollBox, TheWheelWithControlZoomsAboutThePointer) {
    surface->ScrollTo(100.0, 200.0);
    CControl& control = window.GetControl();
    point<double> before{50.0, 40.0};
    surface->DP2LP(&before);
    for (const double notches : {1.0, 1.0, -3.0, 0.5, 4.0}) {
        control.MouseWheel(50, 40, KeyControl, notches, false);
        point<double> after{50.0, 40.0};
        surface->DP2LP(&after);
        EXPECT_NEAR(after.x, before.x, 1e-9);
        EXPECT_NEAR(after.y, before.y, 1e-9);
    }
    EXPECT_NEAR(1.0 / surface->horz.measure.first, std::pow(1.25, 3.5), 1e-12);
    EXPECT_EQ(listener.scrolls, 5);
}

TEST_F(ScrollBox, TheWheelKeepsTheScaleBetweenAHundredthAnd32) {
    CControl& control = window.GetControl();
    control.MouseWheel(50, 40, KeyControl, 1000.0, false);
    EXPECT_EQ(1.0 / surface->horz.measure.first, 32.0);
    control.MouseWheel(50, 40, KeyControl, -1000.0, false);
    EXPECT_EQ(1.0 / surface->horz.measure.first, 0.01);
}

TEST_F(ScrollBox, ARangeThatChangesInThePaintIsShownByTheBarsAtOnce) {
    class Grower : public subscriber_base_t {
    public:
        TestSurface* surface = nullptr;
        void Grow(CVisualElement*, IPainter*) { surface->vert.to = 100.0; }
    } grower;
    grower.surface = surface;
    const CScrollBar::Thumb before = box->GetVertBar()->GetThumb();
    surface->OnDraw.connect(&grower, &Grower::Grow);
    surface->Invalidate();
    window.PaintPending();
    const CScrollBar::Thumb after = box->GetVertBar()->GetThumb();
    EXPECT_NE(before, after);
    const std::vector<std::string>& lines = window.GetRecorder().GetLines();
    EXPECT_EQ(
        std::count(lines.begin(), lines.end(),
                   "FillRect 2 " + std::to_string(after.from) + " 12 " + std::to_string(after.to)),
        1);
}

TEST_F(ScrollBox, ARangeThatChangesInThePaintMayBringOrTakeABar) {
    class Shrinker : public subscriber_base_t {
    public:
        TestSurface* surface = nullptr;
        void Shrink(CVisualElement*, IPainter*) { surface->vert.to = 50.0; }
    } shrinker;
    shrinker.surface = surface;
    surface->OnDraw.connect(&shrinker, &Shrinker::Shrink);
    surface->Invalidate();
    window.PaintPending();
    EXPECT_FALSE(box->GetVertBar()->IsVisible());
    EXPECT_TRUE(window.PaintPending());
    EXPECT_FALSE(window.PaintPending());
}

TEST_F(ScrollBox, FillsTheCornerBetweenTheBars) {
    const std::vector<std::string>& lines = window.GetRecorder().GetLines();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "FillRect 186 86 200 100"), 1);
}

TEST_F(ScrollBox, APaneThatDiesLeavesTheBars) {
    box->SetVertModel(nullptr);
    box->SetHorzModel(nullptr);
    delete surface;
    box->Invalidate();
    EXPECT_TRUE(window.PaintPending());
    EXPECT_EQ(box->GetCentralPane(), nullptr);
    EXPECT_TRUE(window.GetControl().MouseWheel(50, 40, KeyControl, 1.0, false));
}

}  // namespace
}  // namespace viewkit
