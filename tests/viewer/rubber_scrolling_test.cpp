#include <limits>

#include "rubber_rect_ex.h"

namespace nodeline::test {
namespace {

// Where a rectangle that leaves its parent takes the view.
class RubberScrolling : public RubberRectEx {};

TEST_F(RubberScrolling, HoldsThePointerInTheParentOnAxesWithoutAModel) {
    Press(10, 20);
    log.TakeLines();
    Move(-5, -7);
    Move(110, 60);
    EXPECT_EQ(log.lines, (Lines{"OnShift 105,60 100,50 105,60", "OnShift 105,60 150,75 100,50"}));
    EXPECT_EQ(surface->horz.moves, std::vector<double>{});
}

TEST_F(RubberScrolling, ScrollsByTheWayThatThePointerIsOutside) {
    LetScroll();
    Press(10, 20);
    log.TakeLines();
    Move(110, 20);
    EXPECT_EQ(surface->horz.moves, std::vector{105.0});
    // The pixel of the pointer, after scrolling.
    EXPECT_EQ(log.TakeLines(), Lines{"OnShift 105,60 160,60 105,60"});
    Move(-6, 20);
    EXPECT_EQ(surface->horz.moves, (std::vector{105.0, 102.0}));
    Move(50, 58);
    EXPECT_EQ(surface->vert.moves, std::vector{54.0});
    Move(50, -4);
    EXPECT_EQ(surface->vert.moves, (std::vector{54.0, 52.0}));
    EXPECT_EQ(surface->horz.moves.size(), 2u);
}

TEST_F(RubberScrolling, ScrollsBothAxesInOneMove) {
    LetScroll();
    Press(10, 20);
    Move(110, 60);
    EXPECT_EQ(surface->horz.moves, std::vector{105.0});
    EXPECT_EQ(surface->vert.moves, std::vector{55.0});
}

TEST_F(RubberScrolling, DoesNotScrollAtTheVeryEdges) {
    LetScroll();
    Press(10, 20);
    Move(100, 50);
    Move(0, 0);
    EXPECT_EQ(surface->horz.moves, std::vector<double>{});
    EXPECT_EQ(surface->vert.moves, std::vector<double>{});
}

TEST_F(RubberScrolling, StopsWhereTheViewEndsWithTheRange) {
    LetScroll();
    surface->horz.to = 152.0;
    surface->vert.to = 76.0;
    Press(10, 20);
    Move(200, 200);
    Move(200, 200);
    EXPECT_EQ(surface->horz.moves, std::vector{102.0});
    EXPECT_EQ(surface->vert.moves, std::vector{51.0});
}

TEST_F(RubberScrolling, StopsAtTheBeginningOfTheRange) {
    LetScroll();
    surface->horz.from = 98.0;
    surface->vert.from = 49.0;
    Press(10, 20);
    Move(-100, -100);
    Move(-100, -100);
    EXPECT_EQ(surface->horz.moves, std::vector{98.0});
    EXPECT_EQ(surface->vert.moves, std::vector{49.0});
}

TEST_F(RubberScrolling, ARangeNarrowerThanTheViewStaysAtItsBeginning) {
    LetScroll();
    surface->horz.from = surface->horz.start;
    surface->horz.to = surface->horz.start + 30.0;
    Press(10, 20);
    Move(120, 20);
    EXPECT_EQ(surface->horz.moves, std::vector<double>{});
    surface->horz.start = 110.0;
    Move(50, 20);
    EXPECT_EQ(surface->horz.moves, std::vector{100.0});
}

TEST_F(RubberScrolling, AViewOutsideOfTheRangeIsTakenBackByAnyMove) {
    LetScroll();
    surface->horz.to = 140.0;
    Press(10, 20);
    Move(50, 20);
    EXPECT_EQ(surface->horz.moves, std::vector{90.0});
}

TEST_F(RubberScrolling, NeverReachesALogicalXOfZeroOrBelow) {
    surface->horz.start = -10.3;
    Press(60, 20);
    log.TakeLines();
    Move(20, 20);
    // 0 is at 20.6 pixels, of which the fraction is cut off again.
    EXPECT_EQ(log.TakeLines(), Lines{"OnShift 19.7,60 -0.3000000000000007,60 19.7,60"});
    Move(4, 20);
    EXPECT_EQ(log.TakeLines(),
              Lines{"OnShift 19.7,60 -0.3000000000000007,60 -0.3000000000000007,60"});
    Move(21, 20);
    EXPECT_EQ(log.lines, Lines{"OnShift 19.7,60 0.1999999999999993,60 -0.3000000000000007,60"});
}

TEST_F(RubberScrolling, ZeroItselfCountsAsBelow) {
    surface->horz.start = 0.0;
    LetScroll();
    Press(10, 20);
    log.TakeLines();
    Move(-10, 20);
    // The pointer is taken back to the pixel 0 and so does not scroll.
    EXPECT_EQ(log.lines, Lines{"OnShift 5,60 0,60 5,60"});
    EXPECT_EQ(surface->horz.moves, std::vector<double>{});
}

TEST_F(RubberScrolling, CoordinatesBeyondAllPixelsDoNoHarm) {
    Press(10, 20);
    log.TakeLines();
    for (const double start : {std::numeric_limits<double>::infinity(),
                               -std::numeric_limits<double>::infinity(), -1e300, 1e300}) {
        surface->horz.start = start;
        Move(30, 20);
        surface->horz.start = 100.0;
        Move(30, 20);
        EXPECT_EQ(log.lines.back().find("OnShift 105,60 115,60 "), 0u) << start;
    }
    EXPECT_EQ(log.lines.size(), 8u);
}

}  // namespace
}  // namespace nodeline::test
