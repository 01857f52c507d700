#include <formats/colors.h>

#include <gtest/gtest.h>

namespace nodeline::formats {
namespace {

using paintcore::_color;

TEST(Colors, AreReadAsHexDigits) {
    EXPECT_EQ(ParseColor("#0aF0ff"), _color(10, 240, 255));
    EXPECT_EQ(ParseColor("#0af0ff80"), _color(10, 240, 255, 128));
    EXPECT_EQ(ParseColor("#fa0"), _color(255, 170, 0));
    for (const char* text : {"#", "#12", "#12345", "#1234567", "#gggggg", "#-1-1-1", "#+1+1+1"}) {
        EXPECT_FALSE(ParseColor(text).has_value()) << text;
    }
}

TEST(Colors, AreReadAsHueSaturationAndValue) {
    EXPECT_EQ(ParseColor("0.0 1.0 1.0"), _color(255, 0, 0));
    EXPECT_EQ(ParseColor("0.3333333,1,1"), _color(0, 255, 0));
    EXPECT_EQ(ParseColor(".6666667 1 .5"), _color(0, 0, 128));
    EXPECT_EQ(ParseColor("1 0 2"), _color(255, 255, 255));
    EXPECT_FALSE(ParseColor("0.5 0.5").has_value());
    EXPECT_FALSE(ParseColor("0.5 0.5 0.5 x").has_value());
}

TEST(Colors, AreReadByName) {
    EXPECT_EQ(ParseColor("red"), _color(255, 0, 0));
    EXPECT_EQ(ParseColor("Light Goldenrod"), _color(0xee, 0xdd, 0x82));
    EXPECT_EQ(ParseColor("/x11/green"), _color(0, 255, 0));
    EXPECT_EQ(ParseColor("yellowgreen"), _color(0x9a, 0xcd, 0x32));
    EXPECT_EQ(ParseColor("aliceblue"), _color(0xf0, 0xf8, 0xff));
    EXPECT_EQ(ParseColor("transparent")->alpha, 0);
    EXPECT_FALSE(ParseColor("mauve").has_value());
    EXPECT_FALSE(ParseColor("").has_value());
}

TEST(Colors, ComeInNumberedShades) {
    EXPECT_EQ(ParseColor("red3"), _color(205, 0, 0));
    EXPECT_EQ(ParseColor("dodgerblue2"), _color(28, 134, 238));
    EXPECT_EQ(ParseColor("grey0"), _color(0, 0, 0));
    EXPECT_EQ(ParseColor("gray80"), _color(204, 204, 204));
    EXPECT_EQ(ParseColor("grey100"), _color(255, 255, 255));
    for (const char* text : {"red0", "red5", "grey101", "grey-1", "linen2", "red3x"}) {
        EXPECT_FALSE(ParseColor(text).has_value()) << text;
    }
}

TEST(Colors, OfAListTheFirstCounts) {
    EXPECT_EQ(ParseColor("red:blue"), _color(255, 0, 0));
    EXPECT_EQ(ParseColor(" blue;0.5:red"), _color(0, 0, 255));
}

TEST(Colors, AreWrittenAsTheyAreRead) {
    for (const _color& color : {_color(0, 0, 0), _color(1, 128, 255), _color(9, 8, 7, 6)}) {
        EXPECT_EQ(ParseColor(FormatColor(color)), color);
    }
    EXPECT_EQ(FormatColor(_color(1, 128, 255)), "#0180ff");
}

TEST(Colors, TextStandsOutFromItsFill) {
    const _color black(0, 0, 0);
    const _color white(255, 255, 255);
    EXPECT_EQ(ReadableOn(white), black);
    EXPECT_EQ(ReadableOn(black), white);
    EXPECT_EQ(ReadableOn(_color(255, 255, 0)), black);
    EXPECT_EQ(ReadableOn(_color(0, 0, 255)), white);
    EXPECT_EQ(ReadableOn(_color(0, 0, 0, 10)), black) << "white shines through";
}

TEST(Colors, PensHaveWidths) {
    EXPECT_EQ(ParsePenWidth("2.5"), 2.5);
    EXPECT_EQ(ParsePenWidth(" 0 "), 0.0);
    for (const char* text : {"", "x", "-1", "1e9", "nan", "inf", "2px"}) {
        EXPECT_FALSE(ParsePenWidth(text).has_value()) << text;
    }
    EXPECT_EQ(FormatNumber(2.5), "2.5");
    EXPECT_EQ(FormatNumber(-0.0), "0");
}

}  // namespace
}  // namespace nodeline::formats
