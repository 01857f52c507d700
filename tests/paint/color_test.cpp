#include <gtest/gtest.h>

#include <paintcore/color.h>

#include <cmath>
#include <limits>

namespace {

using paintcore::_color;

struct Hls {
    double lightness = -1.0;
    double saturation = -1.0;
    double hue = -1.0;
};

Hls HlsOf(const _color& color) {
    Hls hls;
    color.GetHLS(hls.lightness, hls.saturation, hls.hue);
    return hls;
}

_color FromHls(double lightness, double saturation, double hue) {
    _color color(0, 0, 0);
    color.SetHLS(lightness, saturation, hue);
    return color;
}

}  // namespace

TEST(Color, AFreshColorIsNotSet) {
    const _color color;
    EXPECT_EQ(color.red, 0);
    EXPECT_EQ(color.green, 0);
    EXPECT_EQ(color.blue, 0);
    EXPECT_EQ(color.alpha, 0);
    EXPECT_EQ(color.flag, 1);
}

TEST(Color, AColorOfThreeValuesIsOpaqueAndSet) {
    const _color color(1, 2, 3);
    EXPECT_EQ(color.red, 1);
    EXPECT_EQ(color.green, 2);
    EXPECT_EQ(color.blue, 3);
    EXPECT_EQ(color.alpha, 255);
    EXPECT_EQ(color.flag, 0);
    EXPECT_EQ(_color(1, 2, 3, 4).alpha, 4);
}

TEST(Color, EqualityLooksAtTheFlagToo) {
    EXPECT_FALSE(_color() == _color(0, 0, 0, 0));
    EXPECT_TRUE(_color(5, 6, 7) == _color(5, 6, 7, 255));
    EXPECT_FALSE(_color(5, 6, 7) == _color(5, 6, 7, 254));
}

TEST(Color, GreysHaveNoSaturationAndNoHue) {
    for (int v = 0; v < 256; ++v) {
        const Hls hls = HlsOf(_color(v, v, v));
        EXPECT_EQ(hls.lightness, v / 255.0);
        EXPECT_EQ(hls.saturation, 0.0);
        EXPECT_EQ(hls.hue, 0.0);
    }
}

TEST(Color, PureColorsStandOnTheirPlacesOfTheCircle) {
    const struct {
        _color color;
        double hue;
    } cases[] = {{_color(255, 0, 0), 0.0},   {_color(255, 255, 0), 60.0},
                 {_color(0, 255, 0), 120.0}, {_color(0, 255, 255), 180.0},
                 {_color(0, 0, 255), 240.0}, {_color(255, 0, 255), 300.0}};
    for (const auto& c : cases) {
        const Hls hls = HlsOf(c.color);
        EXPECT_EQ(hls.hue, c.hue);
        EXPECT_EQ(hls.lightness, 0.5);
        EXPECT_EQ(hls.saturation, 1.0);
    }
}

TEST(Color, SaturationHasOneFormulaForEachHalfOfTheLightness) {
    // Dark: (200 - 40) / (200 + 40). Light: (250 - 150) / (510 - 250 - 150).
    EXPECT_EQ(HlsOf(_color(200, 40, 100)).saturation, 160.0 / 240.0);
    EXPECT_EQ(HlsOf(_color(250, 150, 200)).saturation, 100.0 / 110.0);
    EXPECT_EQ(HlsOf(_color(200, 40, 100)).lightness, 240.0 / 510.0);
}

TEST(Color, HueIsNotTruncatedToWholeDegrees) {
    // Red at its highest: (4 - 0) * 60 / 7 + 360 - 360.
    EXPECT_NEAR(HlsOf(_color(7, 4, 0)).hue, 240.0 / 7.0, 1e-12);
    // Blue above green with red at its highest goes round the end of the circle.
    EXPECT_NEAR(HlsOf(_color(7, 0, 4)).hue, 360.0 - 240.0 / 7.0, 1e-12);
}

TEST(Color, LightnessOutsideItsRangeIsHeldAtItsEnds) {
    EXPECT_EQ(FromHls(2.0, 0.0, 0.0), _color(255, 255, 255));
    EXPECT_EQ(FromHls(-1.0, 0.0, 0.0), _color(0, 0, 0));
    EXPECT_EQ(FromHls(std::numeric_limits<double>::quiet_NaN(), 0.0, 0.0), _color(0, 0, 0));
    EXPECT_EQ(FromHls(0.5, 1.0, std::numeric_limits<double>::infinity()), _color(0, 0, 0));
}

TEST(Color, HuesAreTakenRoundTheCircle) {
    EXPECT_EQ(FromHls(0.5, 1.0, 480.0), FromHls(0.5, 1.0, 120.0));
    EXPECT_EQ(FromHls(0.5, 1.0, -240.0), FromHls(0.5, 1.0, 120.0));
    EXPECT_EQ(FromHls(0.5, 1.0, 360.0), _color(255, 0, 0));
}

TEST(Color, SettingTruncatesAndKeepsAlphaAndFlag) {
    _color color(9, 9, 9, 77);
    color.flag = 1;
    color.SetHLS(0.45, 1.0, 0.0);
    // 0.9 * 255 is 229.5.
    EXPECT_EQ(color.red, 229);
    EXPECT_EQ(color.green, 0);
    EXPECT_EQ(color.blue, 0);
    EXPECT_EQ(color.alpha, 77);
    EXPECT_EQ(color.flag, 1);
}

TEST(Color, ColorsCutInLightnessComeOutAsKnown) {
    _color red(255, 0, 0);
    Hls hls = HlsOf(red);
    red.SetHLS(hls.lightness - hls.lightness * 10 / 100, hls.saturation, hls.hue);
    EXPECT_EQ(red, _color(229, 0, 0));

    _color green(0, 255, 0);
    hls = HlsOf(green);
    green.SetHLS(hls.lightness - hls.lightness * 30 / 100, hls.saturation, hls.hue);
    EXPECT_EQ(green, _color(0, 178, 0));
}

TEST(Color, EveryColorSurvivesReadingAndSettingButForTheTruncation) {
    for (int r = 0; r < 256; r += 15) {
        for (int g = 0; g < 256; g += 15) {
            for (int b = 0; b < 256; b += 15) {
                const Hls hls = HlsOf(_color(r, g, b));
                const _color back = FromHls(hls.lightness, hls.saturation, hls.hue);
                EXPECT_LE(std::abs(back.red - r), 1);
                EXPECT_LE(std::abs(back.green - g), 1);
                EXPECT_LE(std::abs(back.blue - b), 1);
                EXPECT_GE(hls.hue, 0.0);
                EXPECT_LT(hls.hue, 360.0);
            }
        }
    }
}

TEST(Color, LighteningTakesThreeTenthsOfTheWayToWhite) {
    EXPECT_EQ(_color(0, 0, 0).Lightened(), _color(76, 76, 76));
    EXPECT_EQ(_color(255, 0, 0).Lightened(), _color(254, 76, 76));
    EXPECT_EQ(_color(255, 255, 255).Lightened(), _color(255, 255, 255));
}

TEST(Color, LighteningKeepsAlpha) {
    EXPECT_EQ(_color(0, 0, 0, 12).Lightened(), _color(76, 76, 76, 12));
}
