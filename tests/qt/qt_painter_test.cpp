#include <backends/qt/internal/text_metrics.h>
#include <backends/qt/qt_painter.h>
#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <limits>
#include <string>

namespace nodeline::qt {
namespace {

using paintcore::_color;
using paintcore::CoordInfo;
using paintcore::font;
using paintcore::IPainter;
using paintcore::MapMode;
using paintcore::size;

constexpr QRgb kWhite = 0xffffffff;
constexpr QRgb kBlack = 0xff000000;
constexpr QRgb kRed = 0xffc80000;
constexpr QRgb kBlue = 0xff0000c8;

constexpr _color kRedColor{200, 0, 0};
constexpr _color kBlueColor{0, 0, 200};

QImage WhiteImage(int ratio) {
    QImage image(100 * ratio, 60 * ratio, QImage::Format_RGB32);
    image.fill(Qt::white);
    image.setDevicePixelRatio(ratio);
    return image;
}

// A surface of 100 by 60 pixels, in a bracket.
class QtPainterTest : public testing::Test {
protected:
    void SetUp() override { painter.BeginPaint(IPainter::StdSettings::All); }

    [[nodiscard]] QRgb At(int x, int y) const { return image.pixel(x, y); }
    // The pixels of a column or of all that are not white.
    [[nodiscard]] int CountInked() const {
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) count += At(x, y) != kWhite ? 1 : 0;
        }
        return count;
    }

    QImage image = WhiteImage(1);
    QtPainter painter{&image};
};

TEST_F(QtPainterTest, ABoxIsFilledInsideAndOutlinedOnWholePixels) {
    painter.SetPen({kRedColor, 1});
    painter.SetBrush({kBlueColor, 1});
    painter.Rectangle(10.0, 10.0, 30.0, 20.0);
    EXPECT_EQ(At(10, 10), kRed);
    EXPECT_EQ(At(30, 20), kRed);
    EXPECT_EQ(At(20, 15), kBlue);
    EXPECT_EQ(At(11, 11), kBlue);
    EXPECT_EQ(At(9, 15), kWhite);
    EXPECT_EQ(At(31, 15), kWhite);
}

TEST_F(QtPainterTest, FillingCoversWholePixelsWithoutAnOutline) {
    painter.SetPen({kRedColor, 3});
    painter.SetBrush({kBlueColor, 1});
    painter.FillRect(10.4, 10.4, 19.6, 19.6);
    EXPECT_EQ(At(10, 10), kBlue);
    EXPECT_EQ(At(19, 19), kBlue);
    EXPECT_EQ(At(9, 15), kWhite);
    EXPECT_EQ(At(20, 15), kWhite);
}

TEST_F(QtPainterTest, RoundCornersAreLeftOut) {
    painter.SetPen({kRedColor, 1, 0});
    painter.SetBrush({kBlueColor, 1});
    painter.RoundRect(10.0, 10.0, 50.0, 50.0, 15.0, 15.0);
    EXPECT_EQ(At(11, 11), kWhite);
    EXPECT_EQ(At(30, 11), kBlue);
    EXPECT_EQ(At(30, 30), kBlue);
}

TEST_F(QtPainterTest, APolylineRunsThroughItsPoints) {
    painter.SetPen({kRedColor, 1});
    painter.MoveTo(5.0, 5.0);
    painter.LineTo(40.0, 5.0);
    painter.LineTo(40.0, 50.0);
    painter.EndPaint();
    EXPECT_EQ(At(20, 5), kRed);
    EXPECT_EQ(At(40, 30), kRed);
    EXPECT_EQ(At(20, 4), kWhite);
    EXPECT_EQ(At(20, 6), kWhite);
    EXPECT_EQ(At(41, 30), kWhite);
}

TEST_F(QtPainterTest, PenStyle0DrawsNothing) {
    painter.SetPen({kRedColor, 5, 0});
    painter.MoveTo(5.0, 5.0);
    painter.LineTo(90.0, 50.0);
    painter.EndPaint();
    EXPECT_EQ(CountInked(), 0);
}

TEST_F(QtPainterTest, AnArrowheadIsFilledBehindItsTip) {
    painter.SetPen({kRedColor, 1});
    painter.SetArrowSize(20, 16);
    painter.BeginPlot(paintcore::PlotArrowhead);
    painter.Vertex(5.0, 30.0);
    painter.Vertex(60.0, 30.0);
    painter.EndPlot();
    EXPECT_EQ(At(50, 30), kRed);
    EXPECT_EQ(At(42, 35), kRed);
    EXPECT_EQ(At(38, 30), kWhite);
    EXPECT_EQ(At(62, 30), kWhite);
}

TEST_F(QtPainterTest, AGradientRunsDownwardsAndEmptiesTheBrush) {
    painter.SetBrush({kBlueColor, 1});
    painter.GradientFill({10.0, 10.0, 50.0, 50.0}, {0, 0, 0}, {250, 250, 250}, 100, 0);
    EXPECT_LT(qRed(At(30, 11)), 20);
    EXPECT_NEAR(qRed(At(30, 30)), 125, 10);
    EXPECT_GT(qRed(At(30, 48)), 230);
    painter.SetPen({kRedColor, 1});
    painter.Rectangle(10.0, 10.0, 50.0, 50.0);
    EXPECT_NEAR(qRed(At(30, 30)), 125, 10);
    EXPECT_EQ(At(10, 30), kRed);
}

TEST_F(QtPainterTest, NothingIsDrawnOutsideOfTheClipUntilItIsReset) {
    painter.SetBrush({kBlueColor, 1});
    painter.SetClipRect(20.0, 20.0, 40.0, 40.0, false);
    painter.FillRect(0.0, 0.0, 100.0, 60.0);
    EXPECT_EQ(At(20, 20), kBlue);
    EXPECT_EQ(At(39, 39), kBlue);
    EXPECT_EQ(At(19, 30), kWhite);
    EXPECT_EQ(At(40, 30), kWhite);
    painter.ResetClip();
    painter.FillRect(0.0, 0.0, 10.0, 10.0);
    EXPECT_EQ(At(5, 5), kBlue);
}

TEST_F(QtPainterTest, ATextStandsInItsRectangleInTheTextColour) {
    painter.SetTextColor(kRedColor);
    painter.SetFont({"", paintcore::FontHostDefault, 20});
    painter.DrawString({10.0, 10.0, 40.0, 50.0}, "MMMMMM", paintcore::TextCentred, -1);
    int inside = 0;
    for (int y = 0; y < 60; ++y) {
        for (int x = 0; x < 100; ++x) {
            if (At(x, y) == kWhite) continue;
            EXPECT_TRUE(x >= 10 && x < 40 && y >= 10 && y < 50) << x << ", " << y;
            ++inside;
        }
    }
    EXPECT_GT(inside, 20);
}

TEST_F(QtPainterTest, CoordinatesAreMappedToPixels) {
    CoordInfo info;
    info.logical_origin = {100.0, 200.0};
    info.logical_extent = {50.0, 30.0};
    info.device_extent = {100, 60};
    painter.SetCoordSystem(MapMode::Rectangle, &info);
    painter.SetBrush({kBlueColor, 1});
    painter.FillRect(110.0, 210.0, 120.0, 220.0);
    EXPECT_EQ(At(20, 20), kBlue);
    EXPECT_EQ(At(39, 39), kBlue);
    EXPECT_EQ(At(19, 20), kWhite);
    EXPECT_EQ(At(40, 20), kWhite);
}

TEST_F(QtPainterTest, WhatIsFarAwayOrNoNumberDoesNoHarm) {
    painter.SetPen({kRedColor, 1});
    painter.SetBrush({kBlueColor, 1});
    painter.Rectangle(-1.0e300, 20.0, 1.0e300, 40.0);
    EXPECT_EQ(At(50, 30), kBlue);
    EXPECT_EQ(At(50, 20), kRed);
    painter.MoveTo(-1.0e12, 10.0);
    painter.LineTo(1.0e12, 10.0);
    painter.EndPaint();
    EXPECT_EQ(At(50, 10), kRed);
    painter.BeginPaint(IPainter::StdSettings::All);
    painter.SetBrush({kBlueColor, 1});
    painter.FillRect(std::numeric_limits<double>::quiet_NaN(), 0.0, 100.0, 60.0);
    EXPECT_EQ(At(50, 55), kWhite);
}

TEST_F(QtPainterTest, OutsideOfABracketNothingIsDrawn) {
    painter.EndPaint();
    painter.SetBrush({kBlueColor, 1});
    painter.FillRect(0.0, 0.0, 100.0, 60.0);
    EXPECT_EQ(CountInked(), 0);
}

TEST(QtPainterRatio, OnTwoDevicePixelsToOneLinesAndEdgesStandOnDevicePixels) {
    QImage image = WhiteImage(2);
    QtPainter painter(&image);
    painter.BeginPaint(IPainter::StdSettings::All);
    painter.SetPen({{0, 0, 0}, 1});
    painter.MoveTo(10.0, 10.0);
    painter.LineTo(50.0, 10.0);
    painter.SetBrush({kBlueColor, 1});
    painter.FillRect(20.5, 20.5, 30.0, 30.0);
    painter.EndPaint();
    // One pixel is two lines of device pixels, without a shade beside them.
    EXPECT_EQ(image.pixel(60, 19), kBlack);
    EXPECT_EQ(image.pixel(60, 20), kBlack);
    EXPECT_EQ(image.pixel(60, 18), kWhite);
    EXPECT_EQ(image.pixel(60, 21), kWhite);
    EXPECT_EQ(image.pixel(41, 41), kBlue);
    EXPECT_EQ(image.pixel(40, 41), kWhite);
    EXPECT_EQ(image.pixel(59, 59), kBlue);
    EXPECT_EQ(image.pixel(60, 59), kWhite);
}

TEST(QtPainterOnPainter, DrawsWithAPainterThatIsGiven) {
    QImage image = WhiteImage(1);
    QPainter host(&image);
    QtPainter painter(&host);
    painter.BeginPaint(IPainter::StdSettings::All);
    painter.SetBrush({kBlueColor, 1});
    painter.FillRect(1.0, 1.0, 3.0, 3.0);
    painter.EndPaint();
    EXPECT_TRUE(host.isActive());
    EXPECT_EQ(image.pixel(1, 1), kBlue);
}

TEST(QtPainterText, MeasuresGrowWithTextSizeAndWeightAndShrinkWithTheScale) {
    QtPainter painter;
    const font plain{"", paintcore::FontHostDefault, 10};
    const font large{"", paintcore::FontHostDefault, 20};
    const font bold{"", paintcore::FontBold, 10};
    const auto measure = [&painter](const font& f, const std::string& text) {
        return painter.GetTextSize(text, &f, -1, true, true);
    };
    const size<double> one = measure(plain, "m");
    EXPECT_GT(one.cx, 0.0);
    EXPECT_GT(one.cy, one.cx / 2.0);
    EXPECT_NEAR(measure(plain, "mmmmmmmm").cx, 8.0 * one.cx, 1e-9);
    EXPECT_NEAR(measure(large, "mmmmmmmm").cx, 16.0 * one.cx, 1e-9);
    EXPECT_GT(measure(bold, "mmmm").cx, measure(plain, "mmmm").cx);
    EXPECT_EQ(measure({}, "m"), (size<double>{0.0, 0.0}));
    EXPECT_EQ(measure(plain, "").cx, 0.0);
    CoordInfo info;
    info.device_extent = {4, 4};
    painter.SetCoordSystem(MapMode::Rectangle, &info);
    EXPECT_EQ(measure(plain, "m").cx, one.cx / 4.0);
}

TEST(QtPainterText, ATextOfTenPointsIsAsHighOnAnyDevice) {
    const font f{"", paintcore::FontHostDefault, 10};
    EXPECT_NEAR(PixelSize(f), 13.333, 0.001);
    QImage coarse = WhiteImage(1);
    QImage fine = WhiteImage(2);
    QtPainter on_coarse(&coarse);
    QtPainter on_fine(&fine);
    EXPECT_EQ(on_coarse.GetTextSize("caption", &f, -1, true, true),
              on_fine.GetTextSize("caption", &f, -1, true, true));
}

TEST(QtPainterText, AMeasureIsTakenOnceForAllPainters) {
    QtPainter first;
    QtPainter second;
    const font f{"", paintcore::FontHostDefault, 11};
    const auto metrics = TextMetrics::Shared();
    static_cast<void>(first.GetTextSize("measured once", &f, -1, true, true));
    const auto before = metrics->GetStatistics();
    static_cast<void>(second.GetTextSize("measured once", &f, -1, true, true));
    EXPECT_EQ(metrics->GetStatistics().misses, before.misses);
    EXPECT_EQ(metrics->GetStatistics().hits, before.hits + 1);
}

TEST(QtPainterText, WhatWasMeasuredLongAgoIsForgotten) {
    QtPainter painter;
    const font f{"", paintcore::FontHostDefault, 9};
    const auto metrics = TextMetrics::Shared();
    const std::string first(100000, 'a');
    static_cast<void>(painter.GetTextSize(first, &f, -1, true, true));
    for (char c = 'b'; c < 'b' + TextMetrics::kMaxBytes / 300000 + 1; ++c) {
        static_cast<void>(painter.GetTextSize(std::string(300000, c), &f, -1, true, true));
    }
    const int before = metrics->GetStatistics().misses;
    static_cast<void>(painter.GetTextSize(first, &f, -1, true, true));
    EXPECT_EQ(metrics->GetStatistics().misses, before + 1);
}

TEST(QtPainterText, TextsThatAreNoTextsAreMadeHarmless) {
    EXPECT_EQ(PrintableText("a\tb\nc"), QString("a b c"));
    EXPECT_EQ(PrintableText(std::string("a\0b", 3)), QString::fromUtf16(u"a\uFFFDb"));
    EXPECT_EQ(PrintableText("\xff"), QString::fromUtf16(u"\uFFFD"));
    EXPECT_EQ(PrintableText("caf\xc3\xa9"), QString::fromUtf16(u"caf\u00e9"));
}

TEST(QtPainterText, PiecesOfALongTextMakeItAllAndSplitNoCharacter) {
    QString text(1023, u'x');
    text += QString::fromUcs4(U"\U0001F600", 1) + QString(5, u'y');
    const std::vector<QString> pieces = CutText(text);
    ASSERT_EQ(pieces.size(), 2U);
    EXPECT_EQ(pieces[0].size(), 1023);
    EXPECT_TRUE(pieces[1].startsWith(QString::fromUcs4(U"\U0001F600", 1)));
    EXPECT_EQ(pieces[0] + pieces[1], text);
}

}  // namespace
}  // namespace nodeline::qt
