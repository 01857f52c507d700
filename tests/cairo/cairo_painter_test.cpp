#include <gtest/gtest.h>

#include <backends/cairo/cairo_painter.h>
#include <support/fonts/test_fonts.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>

using nodeline::cairo::CairoPainter;
using nodeline::cairo::EdgeMode;
using paintcore::CoordInfo;
using paintcore::font;
using paintcore::IPainter;
using paintcore::MapMode;

namespace {

using paintcore::_color;

constexpr std::uint32_t kWhite = 0xFFFFFF;
constexpr std::uint32_t kBlack = 0x000000;
constexpr std::uint32_t kRed = 0xFF0000;

// A white image and a painter on it, with a pen and a brush in red.
class CairoImage : public testing::Test {
public:
    CairoImage()
        : surface_(cairo_image_surface_create(CAIRO_FORMAT_RGB24, kWidth, kHeight)),
          context_(cairo_create(surface_)),
          painter_(context_, EdgeMode::kAligned) {
        cairo_set_source_rgb(context_, 1.0, 1.0, 1.0);
        cairo_paint(context_);
        painter_.SetPen({_color(255, 0, 0), 1, 1, 0, 0});
        painter_.SetBrush({_color(255, 0, 0), 1});
    }

    ~CairoImage() override {
        cairo_destroy(context_);
        cairo_surface_destroy(surface_);
    }

protected:
    std::uint32_t Pixel(int x, int y) const {
        cairo_surface_flush(surface_);
        std::uint32_t pixel = 0;
        std::memcpy(&pixel,
                    cairo_image_surface_get_data(surface_) +
                        static_cast<std::ptrdiff_t>(y) * cairo_image_surface_get_stride(surface_) +
                        static_cast<std::ptrdiff_t>(x) * 4,
                    sizeof pixel);
        return pixel & 0xFFFFFF;
    }

    // The number of pixels in a part of the image that are not white.
    int CountInk(int left, int top, int right, int bottom) const {
        int count = 0;
        for (int y = top; y < bottom; ++y) {
            for (int x = left; x < right; ++x) count += Pixel(x, y) != kWhite ? 1 : 0;
        }
        return count;
    }

    int CountInk() const { return CountInk(0, 0, kWidth, kHeight); }

    void SetFontSize(int points) {
        font f;
        f.size = points;
        painter_.SetFont(f);
    }

    static constexpr int kWidth = 100;
    static constexpr int kHeight = 60;
    cairo_surface_t* surface_;
    cairo_t* context_;
    CairoPainter painter_;
};

}  // namespace

TEST_F(CairoImage, ALineOfOnePixelIsOnePixelWide) {
    for (const double y : {10.0, 10.25, 10.5, 10.999}) {
        painter_.MoveTo(5.0, y);
        painter_.LineTo(15.0, y);
    }
    painter_.EndPaint();
    EXPECT_EQ(Pixel(10, 10), kRed);
    EXPECT_EQ(CountInk(8, 0, 12, kHeight), 4);
}

TEST_F(CairoImage, ARoundingErrorBelowAWholePixelDoesNotMoveALine) {
    painter_.MoveTo(5.0, 10.0 - 1e-9);
    painter_.LineTo(15.0, 10.0 - 1e-9);
    painter_.EndPaint();
    EXPECT_EQ(Pixel(10, 10), kRed);
    EXPECT_EQ(Pixel(10, 9), kWhite);
}

TEST_F(CairoImage, AnOutlineCoversTheEdgePixelsOfItsGradient) {
    painter_.GradientFill({10.0, 10.0, 30.0, 20.0}, _color(0, 0, 0), _color(0, 0, 0), 100, 0);
    painter_.Rectangle(10.0, 10.0, 30.0, 20.0);
    EXPECT_EQ(Pixel(10, 15), kRed);
    EXPECT_EQ(Pixel(30, 15), kRed);
    EXPECT_EQ(Pixel(20, 10), kRed);
    EXPECT_EQ(Pixel(20, 20), kRed);
    EXPECT_EQ(Pixel(11, 11), kBlack);
    EXPECT_EQ(Pixel(29, 19), kBlack);
    EXPECT_EQ(CountInk(), 21 * 11);
}

TEST_F(CairoImage, AGradientRunsFromTopToBottom) {
    painter_.GradientFill({0.0, 0.0, 10.0, 50.0}, _color(0, 0, 0), _color(250, 250, 250), 100, 0);
    EXPECT_LT(Pixel(5, 1) & 0xFF, 0x10U);
    EXPECT_NEAR(static_cast<double>(Pixel(5, 25) & 0xFF), 127.0, 4.0);
    EXPECT_GT(Pixel(5, 48) & 0xFF, 0xE8U);
    EXPECT_EQ(Pixel(1, 25), Pixel(8, 25));
}

TEST_F(CairoImage, FillingTouchesEveryPixelOfTheAreaAndNoOther) {
    painter_.FillRect(10.0, 10.0, 20.0, 15.0);
    EXPECT_EQ(CountInk(), 50);
    EXPECT_EQ(Pixel(10, 10), kRed);
    EXPECT_EQ(Pixel(19, 14), kRed);
    painter_.FillRect(40.3, 10.3, 41.7, 11.7);
    EXPECT_EQ(CountInk(40, 10, 42, 12), 4);
    EXPECT_EQ(Pixel(41, 11), kRed);
}

TEST_F(CairoImage, RoundCornersAreLeftOut) {
    painter_.SetPen({_color(0, 0, 0), 1, 0, 0, 0});
    painter_.RoundRect(10.0, 10.0, 40.0, 40.0, 12.0, 12.0);
    EXPECT_EQ(Pixel(11, 11), kWhite);
    EXPECT_EQ(Pixel(38, 38), kWhite);
    EXPECT_EQ(Pixel(25, 11), kRed);
    EXPECT_EQ(Pixel(11, 25), kRed);
    EXPECT_EQ(Pixel(25, 25), kRed);
}

TEST_F(CairoImage, AClipConfinesWhatIsDrawnUntilItIsReset) {
    painter_.SetClipRect(20.0, 20.0, 30.0, 25.0, false);
    painter_.FillRect(0.0, 0.0, 100.0, 60.0);
    EXPECT_EQ(CountInk(), 50);
    painter_.SetClipRect(50.0, 20.0, 60.0, 25.0, false);
    painter_.FillRect(0.0, 0.0, 100.0, 60.0);
    EXPECT_EQ(CountInk(), 100);
    painter_.ResetClip();
    painter_.FillRect(0.0, 0.0, 100.0, 60.0);
    EXPECT_EQ(CountInk(), kWidth * kHeight);
}

TEST_F(CairoImage, TextIsDrawnInsideOfItsRectangleOnly) {
    SetFontSize(20);
    painter_.DrawString({20.0, 20.0, 40.0, 30.0}, "MMMMMM", 0x24, -1);
    EXPECT_GT(CountInk(20, 20, 40, 30), 50);
    EXPECT_EQ(CountInk(), CountInk(20, 20, 40, 30));
    painter_.FillRect(90.0, 50.0, 91.0, 51.0);
    EXPECT_EQ(Pixel(90, 50), kRed);
}

TEST_F(CairoImage, CentredTextHasEvenMargins) {
    SetFontSize(12);
    painter_.DrawString({0.0, 0.0, 100.0, 60.0}, "HHH", 0x24, -1);
    int left = 0;
    while (left < kWidth && CountInk(left, 0, left + 1, kHeight) == 0) ++left;
    int right = 0;
    while (right < kWidth && CountInk(kWidth - right - 1, 0, kWidth - right, kHeight) == 0) ++right;
    EXPECT_GT(left, 20);
    EXPECT_NEAR(left, right, 1);
}

TEST_F(CairoImage, TextOfFormat9StandsAtTheTopLeft) {
    SetFontSize(10);
    painter_.DrawString({10.0, 10.0, 90.0, 55.0}, "H", 9, -1);
    EXPECT_GT(CountInk(11, 11, 30, 30), 10);
    EXPECT_EQ(CountInk(), CountInk(11, 11, 30, 30));
}

TEST_F(CairoImage, TextColorAndTransparencyAreThoseThatAreSet) {
    SetFontSize(40);
    painter_.SetTextColor(_color(0, 0, 255));
    painter_.DrawString({0.0, 0.0, 100.0, 60.0}, "I", 0x24, -1);
    bool found = false;
    for (int x = 0; x < kWidth; ++x) found = found || Pixel(x, 30) == 0x0000FF;
    EXPECT_TRUE(found);

    painter_.SetBrush({_color(0, 0, 0, 0), 1});
    painter_.FillRect(0.0, 0.0, 10.0, 10.0);
    EXPECT_EQ(CountInk(0, 0, 10, 10), 0);
}

TEST_F(CairoImage, TextIsAsHighOnTheDeviceWhateverTheScale) {
    SetFontSize(20);
    const CoordInfo info{{0.0, 0.0}, {10.0, 6.0}, {0, 0}, {100, 60}};
    painter_.DrawString({0.0, 0.0, 100.0, 60.0}, "H", 0x24, -1);
    const int plain = CountInk();
    painter_.FillRect(0.0, 0.0, 0.0, 0.0);
    painter_.SetBrush({_color(255, 255, 255), 1});
    painter_.FillRect(0.0, 0.0, 100.0, 60.0);
    ASSERT_EQ(CountInk(), 0);
    painter_.SetCoordSystem(MapMode::Rectangle, &info);
    painter_.DrawString({0.0, 0.0, 10.0, 6.0}, "H", 0x24, -1);
    EXPECT_EQ(CountInk(), plain);
}

TEST_F(CairoImage, AnArrowheadIsFilledUpToItsTip) {
    painter_.SetArrowSize(20, 10);
    painter_.BeginPlot(6);
    painter_.Vertex(0.0, 30.0);
    painter_.Vertex(60.0, 30.0);
    painter_.EndPlot();
    EXPECT_EQ(Pixel(45, 30), kRed);
    EXPECT_EQ(CountInk(61, 0, kWidth, kHeight), 0);
    EXPECT_EQ(CountInk(0, 0, 40, kHeight), 0);
    EXPECT_GT(CountInk(), 90);
}

TEST_F(CairoImage, CoordinatesFarAwayDoNotComeBackIntoTheImage) {
    painter_.SetBrush({_color(0, 0, 0), 0});
    painter_.Rectangle(-1.0e12, -1.0e12, 1.0e12, 1.0e12);
    painter_.Rectangle(1.0e9, 1.0e9, 2.0e9, 2.0e9);
    painter_.MoveTo(-1.0e10, -1.0e10);
    painter_.LineTo(1.0e10, -1.0e10);
    painter_.EndPaint();
    painter_.BeginPlot(6);
    painter_.Vertex(0.0, 0.0);
    painter_.Vertex(1.0e10, 30.0);
    painter_.EndPlot();
    EXPECT_EQ(CountInk(), 0);
    EXPECT_EQ(cairo_status(context_), CAIRO_STATUS_SUCCESS);
}

TEST_F(CairoImage, ALongLineGoesThroughTheImageWhereItShould) {
    painter_.MoveTo(-1.0e10, 30.0);
    painter_.LineTo(1.0e10, 30.0);
    painter_.EndPaint();
    EXPECT_EQ(CountInk(0, 30, kWidth, 31), kWidth);
    EXPECT_EQ(CountInk(), kWidth);
}

TEST_F(CairoImage, NothingThatCanBeDrawnBreaksTheContext) {
    const double values[] = {0.0,     -0.0,   1e-300,
                             1e300,   -1e300, std::numeric_limits<double>::infinity(),
                             5e6,     -5e6,   std::numeric_limits<double>::quiet_NaN(),
                             1.0e-12, 8.0e6,  50.0};
    SetFontSize(10);
    for (const double a : values) {
        for (const double b : values) {
            painter_.Rectangle(a, 1.0, b, 20.0);
            painter_.RoundRect(1.0, a, 20.0, b, b, a);
            painter_.FillRect(a, a, b, b);
            painter_.GradientFill({a, b, b, a}, _color(1, 1, 1), _color(2, 2, 2), 100, 0);
            painter_.DrawString({a, a, b, b}, "main", 0x24, -1);
            painter_.DrawString({a, b, 100.0, 100.0}, "main", 9, -1);
            painter_.MoveTo(a, b);
            painter_.LineTo(b, a);
            painter_.BeginPlot(6);
            painter_.Vertex(a, b);
            painter_.Vertex(b, b);
            painter_.EndPlot();
            painter_.SetClipRect(a, b, b, 10.0, false);
            ASSERT_EQ(cairo_status(context_), CAIRO_STATUS_SUCCESS) << a << " " << b;
        }
    }
    painter_.BeginPaint(IPainter::StdSettings::All);
    painter_.SetBrush({_color(0, 0, 255), 1});
    painter_.FillRect(0.0, 0.0, 100.0, 60.0);
    EXPECT_EQ(Pixel(50, 30), 0x0000FFU);
}

TEST_F(CairoImage, HugeFontsAndLongTextsDoNotBreakTheContext) {
    SetFontSize(1000000);
    painter_.DrawString({0.0, 0.0, 100.0, 60.0}, "main", 0x24, -1);
    EXPECT_EQ(cairo_status(context_), CAIRO_STATUS_SUCCESS);
    SetFontSize(20);
    const std::string longest(300000, 'H');
    painter_.DrawString({0.0, 0.0, 100.0, 60.0}, longest, 0x24, -1);
    EXPECT_EQ(cairo_status(context_), CAIRO_STATUS_SUCCESS);
    // The middle of the text is where the image is.
    EXPECT_GT(CountInk(), 200);
}

TEST_F(CairoImage, ThePainterKeepsItsContext) {
    cairo_t* context = cairo_create(surface_);
    CairoPainter painter(context, EdgeMode::kAligned);
    cairo_destroy(context);
    painter.SetBrush({_color(0, 0, 0), 1});
    painter.FillRect(0.0, 0.0, 5.0, 5.0);
    EXPECT_EQ(CountInk(), 25);
}
