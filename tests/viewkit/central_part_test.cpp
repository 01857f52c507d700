#include <backends/headless/headless_window.h>
#include <gtest/gtest.h>

#include <limits>

#include "test_surface.h"

namespace viewkit {
namespace {

using Parts = std::vector<rectangle<double>>;

// Counts what is moved.
class MovingWindow : public nodeline::headless::HeadlessWindow {
public:
    using HeadlessWindow::HeadlessWindow;
    bool MovePixels(const rectangle<int>& area, int dx, int dy) override {
        moved_area = area;
        moves.push_back({dx, dy});
        return can_move;
    }
    rectangle<int> moved_area;
    std::vector<point<int>> moves;
    bool can_move = true;
};

class CentralPart : public ::testing::Test {
protected:
    CentralPart() { window.PaintPending(); }

    MovingWindow window{{200, 100}};
    TestSurface* surface = new TestSurface(window.GetRoot());
};

TEST_F(CentralPart, MapsPixelsByItsModels) {
    surface->horz.measure = {0.5, 1};
    surface->vert.measure = {4.0, 2};
    surface->horz.start = 10.0;
    surface->vert.start = -3.0;
    point<double> p{20.0, 8.0};
    surface->DP2LP(&p);
    EXPECT_EQ(p, (point<double>{20.0, 13.0}));
    surface->LP2DP(&p);
    EXPECT_EQ(p, (point<double>{20.0, 8.0}));
    CoordInfo info;
    surface->FillCoordInfo(&info);
    EXPECT_EQ(info, (CoordInfo{{10.0, -3.0}, {100.0, 200.0}, {0, 0}, {200, 100}}));
}

TEST_F(CentralPart, WithoutModelsLogicalUnitsArePixels) {
    surface->SetHorzScroll(nullptr);
    surface->SetVertScroll(nullptr);
    point<double> p{20.0, 8.0};
    surface->DP2LP(&p);
    EXPECT_EQ(p, (point<double>{20.0, 8.0}));
}

TEST_F(CentralPart, TheDrawRectIsLogicalWithAPainterAndInPixelsWithout) {
    surface->horz.measure = {0.5, 1};
    surface->horz.start = 10.0;
    EXPECT_EQ(surface->GetDrawRect(window.GetPainter()),
              (rectangle<double>{10.0, 0.0, 110.0, 100.0}));
    EXPECT_EQ(surface->GetDrawRect(nullptr), (rectangle<double>{0.0, 0.0, 200.0, 100.0}));
}

TEST_F(CentralPart, TheFirstPaintDrawsAllAndTheNextNothing) {
    EXPECT_EQ(surface->parts, (Parts{{0.0, 0.0, 200.0, 100.0}}));
    surface->OnChange(surface, UpdateType::Content);
    window.PaintPending();
    EXPECT_TRUE(surface->parts.empty());
}

TEST_F(CentralPart, AScrollMovesThePixelsAndDrawsTheStripsItUncovers) {
    surface->ScrollTo(16.0, 0.0);
    window.PaintPending();
    EXPECT_EQ(window.moves, (std::vector<point<int>>{{-16, 0}}));
    EXPECT_EQ(window.moved_area, (rectangle<int>{0, 0, 200, 100}));
    EXPECT_EQ(surface->parts, (Parts{{200.0, 0.0, 216.0, 100.0}}));
    surface->ScrollTo(11.0, -7.0);
    window.PaintPending();
    EXPECT_EQ(surface->parts, (Parts{{11.0, -7.0, 211.0, 0.0}, {11.0, 0.0, 16.0, 93.0}}));
}

TEST_F(CentralPart, AScrollByPartsOfPixelsDrawsAll) {
    surface->ScrollTo(16.5, 0.0);
    window.PaintPending();
    EXPECT_TRUE(window.moves.empty());
    EXPECT_EQ(surface->parts, (Parts{{16.5, 0.0, 216.5, 100.0}}));
}

TEST_F(CentralPart, RoundingDoesNotAddUpOverManyMoves) {
    // At a scale of 3 a pixel is a third of a unit, which no double holds.
    surface->horz.measure = {1.0, 3};
    surface->Invalidate();
    window.PaintPending();
    for (int i = 1; i <= 3000; ++i) {
        surface->ScrollTo(surface->horz.start + 1.0 / 3.0, 0.0);
        window.PaintPending();
    }
    EXPECT_EQ(window.moves.size(), 3000U);
    ASSERT_EQ(surface->parts.size(), 1U);
    EXPECT_NEAR(surface->parts[0].left, 1000.0 + 199.0 / 3.0, 1e-6);
}

TEST_F(CentralPart, AScrollBeyondTheViewDrawsAll) {
    surface->ScrollTo(200.0, 0.0);
    window.PaintPending();
    EXPECT_TRUE(window.moves.empty());
    EXPECT_EQ(surface->parts.size(), 1U);
}

TEST_F(CentralPart, AStartThatIsNoNumberDrawsAll) {
    surface->ScrollTo(std::numeric_limits<double>::quiet_NaN(), 0.0);
    window.PaintPending();
    EXPECT_TRUE(window.moves.empty());
}

TEST_F(CentralPart, AnotherScaleDrawsAll) {
    surface->horz.measure = {0.5, 1};
    surface->ScrollTo(8.0, 0.0);
    window.PaintPending();
    EXPECT_TRUE(window.moves.empty());
    EXPECT_EQ(surface->parts, (Parts{{8.0, 0.0, 108.0, 100.0}}));
}

TEST_F(CentralPart, AnotherSizeDrawsAll) {
    window.Resize({220, 100});
    window.PaintPending();
    EXPECT_EQ(surface->parts, (Parts{{0.0, 0.0, 220.0, 100.0}}));
}

TEST_F(CentralPart, AfterInvalidateNothingIsValid) {
    surface->ScrollTo(16.0, 0.0);
    surface->Invalidate();
    window.PaintPending();
    EXPECT_EQ(surface->parts, (Parts{{16.0, 0.0, 216.0, 100.0}}));
}

TEST_F(CentralPart, AWindowThatCannotMovePixelsDrawsAll) {
    window.can_move = false;
    surface->ScrollTo(16.0, 0.0);
    window.PaintPending();
    EXPECT_EQ(surface->parts, (Parts{{16.0, 0.0, 216.0, 100.0}}));
}

TEST_F(CentralPart, PixelsUnderAnotherElementAreNotMoved) {
    new CVisualElement(surface, {20, 20}, Alignment::None);
    surface->ScrollTo(16.0, 0.0);
    window.PaintPending();
    EXPECT_TRUE(window.moves.empty());
    EXPECT_EQ(surface->parts, (Parts{{16.0, 0.0, 216.0, 100.0}}));
}

TEST_F(CentralPart, PixelsOfASurfaceThatReachesOutOfTheWindowAreNotMoved) {
    surface->SetAlignment(Alignment::None);
    surface->SetPos({0, 0, 400, 300}, true);
    window.PaintPending();
    surface->ScrollTo(16.0, 0.0);
    surface->parts.clear();
    window.PaintPending();
    EXPECT_TRUE(window.moves.empty());
    EXPECT_EQ(surface->parts, (Parts{{16.0, 0.0, 416.0, 300.0}}));
}

TEST_F(CentralPart, AViewThatMovesWithinThePaintDrawsAll) {
    class Scroller : public subscriber_base_t {
    public:
        TestSurface* surface = nullptr;
        void Scroll(CVisualElement*, IPainter*) { surface->horz.start += 10.0; }
    } scroller;
    scroller.surface = surface;
    surface->OnDraw.connect(&scroller, &Scroller::Scroll);
    surface->OnChange(surface, UpdateType::Content);
    window.PaintPending();
    EXPECT_EQ(surface->parts, (Parts{{10.0, 0.0, 210.0, 100.0}}));
}

TEST(InvalidRegion, OfNothingValidIsTheWhole) {
    const CInvalidRegion region({1.0, 2.0, 11.0, 12.0}, {});
    ASSERT_EQ(region.GetCount(), 1);
    EXPECT_EQ(region[0], (rectangle<double>{1.0, 2.0, 11.0, 12.0}));
}

TEST(InvalidRegion, OfAllValidIsEmpty) {
    const rectangle<double> r{1.0, 2.0, 11.0, 12.0};
    EXPECT_EQ(CInvalidRegion(r, r).GetCount(), 0);
    EXPECT_EQ(CInvalidRegion(r, {0.0, 0.0, 20.0, 20.0}).GetCount(), 0);
}

TEST(InvalidRegion, OfAValidMiddleIsTopBottomLeftAndRight) {
    const CInvalidRegion region({0.0, 0.0, 10.0, 10.0}, {2.0, 3.0, 6.0, 7.0});
    ASSERT_EQ(region.GetCount(), 4);
    EXPECT_EQ(region[0], (rectangle<double>{0.0, 0.0, 10.0, 3.0}));
    EXPECT_EQ(region[1], (rectangle<double>{0.0, 7.0, 10.0, 10.0}));
    EXPECT_EQ(region[2], (rectangle<double>{0.0, 3.0, 2.0, 7.0}));
    EXPECT_EQ(region[3], (rectangle<double>{6.0, 3.0, 10.0, 7.0}));
}

TEST(InvalidRegion, OfAValidPartOutsideIsTheWhole) {
    EXPECT_EQ(CInvalidRegion({0.0, 0.0, 10.0, 10.0}, {20.0, 0.0, 30.0, 10.0}).GetCount(), 1);
}

TEST(InvalidRegion, OfAnEmptyAreaIsEmpty) {
    EXPECT_EQ(CInvalidRegion({5.0, 5.0, 5.0, 10.0}, {}).GetCount(), 0);
}

}  // namespace
}  // namespace viewkit
