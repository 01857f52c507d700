#include <backends/headless/recording_painter.h>
#include <gtest/gtest.h>
#include <nodeline/viewer/internal/node_sketch.h>

#include <limits>
#include <string>
#include <vector>

namespace nodeline::test {
namespace {

using internal::ColorFinder;
using internal::PixelSketch;
using paintcore::_color;
using Lines = std::vector<std::string>;

constexpr _color kRed(240, 0, 0);
constexpr _color kBlue(0, 0, 240);

// The fills of a sketch of four by three pixels.
Lines Drawn(const PixelSketch& sketch) {
    headless::RecordingPainter painter;
    sketch.Draw(&painter);
    Lines fills;
    for (const std::string& line : painter.TakeLines()) {
        if (line.rfind("FillRect", 0) == 0) fills.push_back(line.substr(9));
    }
    return fills;
}

TEST(ColorFinder, FindsNothingWhereNothingIsDrawn) {
    ColorFinder finder;
    finder.DrawString({0.0, 0.0, 9.0, 9.0}, "text", 0, -1);
    EXPECT_EQ(finder.GetTextSize("text", nullptr, -1, true, true), (size<double>{0.0, 0.0}));
    EXPECT_FALSE(finder.Take());
}

TEST(ColorFinder, TakesTheLargestAreaThatIsFilled) {
    ColorFinder finder;
    finder.SetBrush({kRed, 1});
    finder.FillRect({0.0, 0.0, 3.0, 3.0});
    finder.SetBrush({kBlue, 1});
    finder.FillRect({0.0, 0.0, 2.0, 2.0});
    EXPECT_EQ(finder.Take(), kRed);
    EXPECT_FALSE(finder.Take()) << "and forgets it";
    finder.GradientFill({0.0, 0.0, 1.0, 1.0}, kRed, kBlue, 100, 0);
    EXPECT_EQ(finder.Take(), _color(120, 0, 120));
}

TEST(ColorFinder, MixesTheOutlineInOrTakesItAlone) {
    ColorFinder finder;
    finder.SetBrush({kRed, 1});
    finder.SetPen({kBlue, 1, 1, 0, 0});
    finder.Rectangle({0.0, 0.0, 3.0, 3.0});
    EXPECT_EQ(finder.Take(), _color(160, 0, 80));
    finder.SetBrush({kRed, 0});
    finder.RoundRect(0.0, 0.0, 3.0, 3.0, 1.0, 1.0);
    EXPECT_EQ(finder.Take(), kBlue);
    finder.MoveTo(0.0, 0.0);
    finder.LineTo(1.0, 0.0);
    EXPECT_EQ(finder.Take(), kBlue);
}

TEST(PixelSketch, DrawsRunsOfOneColour) {
    PixelSketch sketch({4, 3});
    EXPECT_EQ(Drawn(sketch), Lines());
    sketch.Fill({0.2, 0.1, 1.9, 0.9}, kRed, false);
    sketch.Fill({2.0, 0.0, 3.0, 1.0}, kRed, false);
    sketch.Fill({3.0, 0.0, 4.0, 2.0}, kBlue, false);
    EXPECT_EQ(Drawn(sketch), Lines({"0 0 3 1", "3 0 4 1", "3 1 4 2"}));
}

TEST(PixelSketch, WhatIsThinHasOnePixelAtLeast) {
    PixelSketch sketch({4, 3});
    sketch.Fill({1.2, 1.1, 1.3, 1.1}, kRed, false);
    EXPECT_EQ(Drawn(sketch), Lines({"1 1 2 2"}));
    EXPECT_FALSE(sketch.HasRoom({1.0, 1.0, 1.4, 1.4}));
    EXPECT_TRUE(sketch.HasRoom({1.0, 1.0, 3.0, 1.4}));
}

TEST(PixelSketch, TheFirstColourStaysUnlessItIsReplaced) {
    PixelSketch sketch({1, 1});
    sketch.Fill({0.0, 0.0, 1.0, 1.0}, kRed, false);
    const Lines red = [&] {
        headless::RecordingPainter painter;
        sketch.Draw(&painter);
        return painter.TakeLines();
    }();
    sketch.Fill({0.0, 0.0, 1.0, 1.0}, kBlue, false);
    headless::RecordingPainter painter;
    sketch.Draw(&painter);
    EXPECT_EQ(painter.TakeLines(), red);
    sketch.Fill({0.0, 0.0, 1.0, 1.0}, kBlue, true);
    sketch.Draw(&painter);
    EXPECT_NE(painter.TakeLines(), red);
}

TEST(PixelSketch, WhatLiesBesideTheGridOrNowhereIsLeftOut) {
    constexpr double kNowhere = std::numeric_limits<double>::quiet_NaN();
    constexpr double kFar = std::numeric_limits<double>::infinity();
    PixelSketch sketch({4, 3});
    for (const rectangle<double>& r :
         {rectangle<double>{-9.0, 0.0, -8.0, 1.0}, rectangle<double>{7.0, 0.0, 8.0, 1.0},
          rectangle<double>{0.0, 3.0, 1.0, 9.0}, rectangle<double>{kFar, kFar, kFar, kFar}}) {
        EXPECT_FALSE(sketch.HasRoom(r)) << r.left;
        sketch.Fill(r, kRed, true);
    }
    EXPECT_EQ(Drawn(sketch), Lines());
    sketch.Fill({-kFar, -kFar, kFar, kFar}, kRed, true);
    sketch.Fill({kNowhere, kNowhere, kNowhere, kNowhere}, kRed, true);
    EXPECT_EQ(Drawn(sketch), Lines({"0 0 4 1", "0 1 4 2", "0 2 4 3"}));
    EXPECT_EQ(Drawn(PixelSketch({-1, 5})), Lines());
}

}  // namespace
}  // namespace nodeline::test
