#include <gtest/gtest.h>

#include <backends/cairo/measuring_painter.h>
#include <backends/cairo/text_engine.h>
#include <support/fonts/test_fonts.h>

#include <cmath>
#include <string>

using nodeline::cairo::MeasuringPainter;
using nodeline::cairo::PixelSize;
using nodeline::cairo::PrintableText;
using nodeline::cairo::TextEngine;
using nodeline::cairo::TextExtent;
using paintcore::CoordInfo;
using paintcore::font;
using paintcore::IPainter;
using paintcore::MapMode;
using paintcore::size;

namespace {

font FontOf(int points, const std::string& face = {}, int style = 4) {
    font f;
    f.face = face;
    f.style = style;
    f.size = points;
    return f;
}

}  // namespace

TEST(TextEngine, MeasuresWithTheFontOfTheTests) {
    ASSERT_TRUE(test_support::kUsesTestFonts);
    TextEngine engine;
    EXPECT_EQ(engine.GetFamily(FontOf(8)), test_support::kTestFamily);
    EXPECT_EQ(engine.GetFamily(FontOf(8, "Arial")), test_support::kTestFamily);
    EXPECT_EQ(engine.GetFamily(FontOf(8, "No such face, at all")), test_support::kTestFamily);
    EXPECT_EQ(engine.GetFamily(FontOf(8, "DejaVu Serif")), "DejaVu Serif");
}

TEST(TextEngine, PointsAreCountedAt96PixelsToTheInch) {
    EXPECT_EQ(PixelSize(FontOf(72)), 96.0);
    EXPECT_EQ(PixelSize(FontOf(0)), 0.0);
    EXPECT_EQ(PixelSize(FontOf(-5)), 0.0);
    font half = FontOf(72);
    half.scale = 0.5;
    EXPECT_EQ(PixelSize(half), 48.0);
    half.scale = std::nan("");
    EXPECT_EQ(PixelSize(half), 0.0);
    EXPECT_EQ(PixelSize(FontOf(2000000000)), 16384.0);
}

TEST(TextEngine, WidthsGrowWithTheSizeAndNothingElse) {
    TextEngine engine;
    const TextExtent small = engine.Measure(FontOf(6), "inflate_table (int)");
    for (const int factor : {2, 3, 5, 10, 50}) {
        const TextExtent large = engine.Measure(FontOf(6 * factor), "inflate_table (int)");
        // Each of the glyphs may be off by half of the unit of Pango.
        EXPECT_NEAR(large.width, small.width * factor, 19.0 / 2048.0 * (factor + 1)) << factor;
        EXPECT_NEAR(large.height, small.height * factor, 0.01 * factor) << factor;
    }
}

TEST(TextEngine, KnownWidthOfTheTestFont) {
    TextEngine engine;
    // At 1536 pixels the advance of "m" in units of the em, 1995 of 2048.
    const TextExtent extent = engine.Measure(FontOf(1536), "m");
    EXPECT_NEAR(extent.width, 2048.0 * 1995.0 / 2048.0, 1.0);
    EXPECT_GT(extent.baseline, extent.height * 0.7);
    EXPECT_LT(extent.baseline, extent.height);
}

TEST(TextEngine, BlanksCountAtBothEnds) {
    TextEngine engine;
    const double word = engine.Measure(FontOf(8), "main").width;
    const double blanks = engine.Measure(FontOf(8), "  ").width;
    EXPECT_GT(blanks, 0.0);
    EXPECT_NEAR(engine.Measure(FontOf(8), "  main").width, word + blanks, 0.01);
    EXPECT_NEAR(engine.Measure(FontOf(8), "main  ").width, word + blanks, 0.01);
}

TEST(TextEngine, AnEmptyTextIsAsHighAsALine) {
    TextEngine engine;
    EXPECT_EQ(engine.Measure(FontOf(8), "").width, 0.0);
    EXPECT_NEAR(engine.Measure(FontOf(8), "").height, engine.Measure(FontOf(8), "x").height, 1e-9);
}

TEST(TextEngine, AFontOfSizeZeroMeasuresNothing) {
    TextEngine engine;
    EXPECT_EQ(engine.Measure(FontOf(0), "main"), TextExtent());
}

TEST(TextEngine, BoldIsWider) {
    TextEngine engine;
    EXPECT_GT(engine.Measure(FontOf(8, "", 2), "main").width,
              engine.Measure(FontOf(8, "", 1), "main").width * 1.05);
}

TEST(TextEngine, FormatCharactersOfMarkupAreTextLikeAnyOther) {
    TextEngine engine;
    EXPECT_GT(engine.Measure(FontOf(8), "<b>x</b>").width,
              engine.Measure(FontOf(8), "x").width * 5.0);
}

TEST(TextEngine, ALineEndDoesNotBeginALine) {
    TextEngine engine;
    EXPECT_EQ(engine.Measure(FontOf(8), "a\nb"), engine.Measure(FontOf(8), "a b"));
    EXPECT_EQ(engine.Measure(FontOf(8),
                             "a\xE2\x80\xA8"
                             "b"),
              engine.Measure(FontOf(8), "a b"));
}

TEST(TextEngine, AVeryLongTextIsMeasuredInFull) {
    TextEngine engine;
    const double one = engine.Measure(FontOf(72), "m").width;
    const double all = engine.Measure(FontOf(72), std::string(100000, 'm')).width;
    EXPECT_NEAR(all / one, 100000.0, 1.0);
}

TEST(TextEngine, PrintableTextIsWellFormedAndOnOneLine) {
    EXPECT_EQ(PrintableText("na\xC3\xAFve"), "na\xC3\xAFve");
    EXPECT_EQ(PrintableText("a\tb\r\nc"), "a b  c");
    EXPECT_EQ(PrintableText(std::string_view("a\0\x1B\x7F", 4)),
              "a\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(PrintableText("\xFFz\xE2\x82"), "\xEF\xBF\xBDz\xEF\xBF\xBD");
    EXPECT_EQ(PrintableText("\xEF\xBF\xBE\xEF\xBF\xBF\xC2\x9B"),
              "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(PrintableText("\xF0\x9F\xBF\xBF"), "\xEF\xBF\xBD");
}

TEST(TextEngine, WhatWasMeasuredIsRemembered) {
    TextEngine engine;
    const TextExtent first = engine.Measure(FontOf(8), "main");
    EXPECT_EQ(engine.GetStatistics().misses, 1U);
    EXPECT_EQ(engine.GetStatistics().hits, 0U);
    EXPECT_EQ(engine.Measure(FontOf(8), "main"), first);
    EXPECT_EQ(engine.GetStatistics().misses, 1U);
    EXPECT_EQ(engine.GetStatistics().hits, 1U);
    EXPECT_EQ(engine.GetStatistics().texts, 1U);
    EXPECT_EQ(engine.GetStatistics().bytes, 4U);
}

TEST(TextEngine, FontsDoNotShareWhatTheyRemember) {
    TextEngine engine;
    const TextExtent plain = engine.Measure(FontOf(8, "", 1), "main");
    EXPECT_FALSE(engine.Measure(FontOf(8, "", 2), "main") == plain);
    EXPECT_FALSE(engine.Measure(FontOf(9, "", 1), "main") == plain);
    EXPECT_FALSE(engine.Measure(FontOf(8, "DejaVu Serif", 1), "main") == plain);
    EXPECT_EQ(engine.Measure(FontOf(8, "", 1), "main"), plain);
    EXPECT_EQ(engine.GetStatistics().misses, 4U);
}

TEST(TextEngine, RemembersFewFonts) {
    TextEngine engine;
    for (int points = 1; points <= 100; ++points) {
        static_cast<void>(engine.Measure(FontOf(points), "a"));
    }
    EXPECT_EQ(engine.GetStatistics().texts, 32U);
    static_cast<void>(engine.Measure(FontOf(100), "a"));
    EXPECT_EQ(engine.GetStatistics().hits, 1U);
}

TEST(MeasuringPainter, MeasuresTheSameAtEveryScaleForTheSameLookOnTheDevice) {
    MeasuringPainter painter;
    painter.SetFont(FontOf(7, "Arial", 1));
    const size<double> plain = painter.GetTextSize("inflate_table");
    EXPECT_GT(plain.cx, 40.0);
    EXPECT_LT(plain.cx, 120.0);
    const CoordInfo info{{0.0, 0.0}, {10.0, 10.0}, {0, 0}, {20, 20}};
    painter.SetCoordSystem(MapMode::Rectangle, &info);
    EXPECT_EQ(painter.GetTextSize("inflate_table"), (size<double>{plain.cx / 2.0, plain.cy / 2.0}));
    painter.SetFont(FontOf(14, "Arial", 1));
    EXPECT_NEAR(painter.GetTextSize("inflate_table").cx, plain.cx, 0.02);
}

TEST(MeasuringPainter, IsABracketForLayoutsAndDrawsNowhere) {
    MeasuringPainter painter;
    painter.SetFont(FontOf(30));
    painter.BeginPaint(IPainter::StdSettings::All);
    EXPECT_TRUE(painter.IsPainting());
    const size<double> standard = painter.GetTextSize("main");
    const font eight = FontOf(8);
    EXPECT_EQ(painter.GetTextSize("main", &eight, -1, true, true), standard);
    painter.Rectangle(0.0, 0.0, 5.0, 5.0);
    painter.DrawString({0.0, 0.0, 50.0, 50.0}, "main", 9, -1);
    painter.EndPaint();
    EXPECT_FALSE(painter.IsPainting());
}
