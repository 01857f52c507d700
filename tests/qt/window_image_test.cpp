#include <backends/qt/internal/window_image.h>
#include <gtest/gtest.h>

namespace nodeline::qt {
namespace {

using paintcore::IPainter;

// Fills a square of two units in red.
void PaintSquare(WindowImage& image) {
    auto& painter = image.GetPainter();
    painter.BeginPaint(IPainter::StdSettings::All);
    painter.SetBrush({{200, 0, 0}, 1});
    painter.FillRect(5.0, 5.0, 7.0, 7.0);
    painter.EndPaint();
}

TEST(WindowImagePixels, MovesPixelsWithinAnAreaAndTellsWhatItCannot) {
    WindowImage image({20, 10}, 1.0);
    auto& painter = image.GetPainter();
    painter.BeginPaint(IPainter::StdSettings::All);
    painter.SetBrush({{200, 0, 0}, 1});
    painter.FillRect(5.0, 5.0, 7.0, 7.0);
    EXPECT_TRUE(image.Move({0, 0, 10, 10}, 3, -2));
    painter.EndPaint();
    EXPECT_EQ(image.GetImage().pixel(8, 3), qRgb(200, 0, 0));
    EXPECT_EQ(image.GetImage().pixel(9, 4), qRgb(200, 0, 0));
    EXPECT_EQ(image.GetImage().pixel(10, 3), qRgb(255, 255, 255));
    EXPECT_EQ(image.GetImage().pixel(7, 3), qRgb(255, 255, 255));
    EXPECT_TRUE(image.Move({0, 0, 10, 10}, 100, 0));
    EXPECT_EQ(image.GetImage().pixel(8, 3), qRgb(200, 0, 0));
}

TEST(WindowImagePixels, AnAreaMayReachBeyondTheImage) {
    WindowImage image({20, 10}, 1.0);
    PaintSquare(image);
    EXPECT_TRUE(image.Move({-30, -30, 60, 60}, 3, -2));
    EXPECT_EQ(image.GetImage().pixel(8, 3), qRgb(200, 0, 0));
    // Nothing is left to be moved.
    EXPECT_TRUE(image.Move({-30, -30, 60, 60}, -40, 0));
    EXPECT_TRUE(image.Move({-30, -30, 60, 60}, 0, 12));
    EXPECT_EQ(image.GetImage().pixel(8, 3), qRgb(200, 0, 0));
}

TEST(WindowImagePixels, OnDevicePixelsAMoveIsAsManyTimesAsFar) {
    WindowImage fine({20, 10}, 2.0);
    EXPECT_EQ(fine.GetImage().size(), QSize(40, 20));
    PaintSquare(fine);
    EXPECT_EQ(fine.GetImage().pixel(10, 10), qRgb(200, 0, 0));
    EXPECT_TRUE(fine.Move({0, 0, 20, 10}, 3, -2));
    EXPECT_EQ(fine.GetImage().pixel(16, 6), qRgb(200, 0, 0));
    EXPECT_EQ(fine.GetImage().pixel(15, 6), qRgb(255, 255, 255));
    WindowImage odd({20, 10}, 1.5);
    EXPECT_EQ(odd.GetImage().size(), QSize(30, 15));
    EXPECT_FALSE(odd.Move({0, 0, 20, 10}, 1, 0));
    EXPECT_TRUE(odd.Move({0, 0, 20, 10}, 2, -4));
}

}  // namespace
}  // namespace nodeline::qt
