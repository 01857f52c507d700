#include <backends/headless/recording_painter.h>
#include <gtest/gtest.h>
#include <nodeline/handlers/drawers.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace nodeline::test {
namespace {

using headless::RecordingPainter;
using paintcore::_color;
using paintcore::font;
using Lines = std::vector<std::string>;

std::string Repeat(const std::string& character, int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += character;
    return text;
}

// Measures whatever it is asked to with a width of its own per byte.
class UnevenPainter : public RecordingPainter {
public:
    using WidthOf = double (*)(char character);

    explicit UnevenPainter(WidthOf width_of) : width_of_(width_of) {}

    [[nodiscard]] size<double> GetTextSize(const std::string& text, const font* /*f*/,
                                           int /*length*/, bool /*leading*/,
                                           bool /*trailing*/) override {
        double width = 0.0;
        for (const char character : text) width += width_of_(character);
        return {width, kLineHeight};
    }

private:
    WidthOf width_of_;
};

class DrawInfo : public testing::Test {
protected:
    DrawInfo() { info.painter = &painter; }

    size<double> SizeOf(const std::string& caption) {
        node.SetCaption(caption);
        return info.GetSizeByCaption(node);
    }
    std::string Shown(const std::string& caption) {
        node.SetCaption(caption);
        return info.GetTruncatedCaption(node);
    }

    graph_ptr2<Graph> graph{new Graph(), true};
    Node node = graph->GetRoot().AddNode();
    RecordingPainter painter;
    CNodeDrawInfo info;
};

TEST(NewDrawInfo, IsBlackOnAGradientFromWhiteToGrey) {
    const CNodeDrawInfo info;
    EXPECT_EQ(info.pen_width, 1);
    EXPECT_EQ(info.font, (font{"", 4, 8, 0, 0, 1.0}));
    EXPECT_EQ(info.text_color, _color(0, 0, 0));
    EXPECT_EQ(info.border_color, _color(0, 0, 0));
    for (const _color& top : {info.fill_top, info.selected_fill_top, info.new_fill_top}) {
        EXPECT_EQ(top, _color(255, 255, 255));
    }
    for (const _color& bottom :
         {info.fill_bottom, info.selected_fill_bottom, info.new_fill_bottom}) {
        EXPECT_EQ(bottom, _color(127, 127, 127));
    }
    EXPECT_EQ(info.selected_border_color, _color(255, 0, 0));
    EXPECT_EQ(info.max_caption_length, 24);
    EXPECT_FALSE(info.fixed_width);
    EXPECT_EQ(info.zoom_factor, 1.0);
    EXPECT_EQ(info.painter, nullptr);
}

TEST_F(DrawInfo, ScalesItsFontByTheZoomExceptNearOne) {
    struct Case {
        double zoom;
        Lines lines;
    };
    const std::vector<Case> cases{
        {0.01, {"SetFont \"\" 4 0 0 0 1"}},
        {0.5, {"SetFont \"\" 4 4 0 0 1"}},
        {0.89, {"SetFont \"\" 4 7 0 0 1"}},
        {0.9, {}},
        {0.95, {}},
        {1.0, {}},
        {1.1, {}},
        {1.11, {"SetFont \"\" 4 8 0 0 1"}},
        {1.2, {"SetFont \"\" 4 9 0 0 1"}},
        {2.0, {"SetFont \"\" 4 16 0 0 1"}},
        {1e300, {"SetFont \"\" 4 2147483647 0 0 1"}},
    };
    for (const Case& c : cases) {
        info.zoom_factor = c.zoom;
        info.SetScaledFont();
        EXPECT_EQ(painter.TakeLines(), c.lines) << c.zoom;
    }
    EXPECT_EQ(info.font.size, 8);
}

TEST_F(DrawInfo, ScalesTheFontThatItWasGiven) {
    info.font = font{"Arial", 1, 7, 0, 0, 1.0};
    info.zoom_factor = 1.5;
    info.SetScaledFont();
    EXPECT_EQ(painter.TakeLines(), (Lines{"SetFont \"Arial\" 1 10 0 0 1"}));
}

TEST_F(DrawInfo, MeasuresACaptionWithTwoBlanksMore) {
    EXPECT_EQ(SizeOf("parse"), (size<double>{42.0, 15.0}));
    EXPECT_EQ(painter.TakeLines(), (Lines{"GetTextSize \"parse  \" null -1 1 1"}));
}

TEST_F(DrawInfo, MeasuresAnEmptyCaptionAsSevenBlanks) {
    EXPECT_EQ(SizeOf(""), (size<double>{42.0, 15.0}));
    EXPECT_EQ(painter.TakeLines(), (Lines{"GetTextSize \"       \" null -1 1 1"}));
}

TEST_F(DrawInfo, CountsAtMostTwoCharactersBeyondTheLimit) {
    struct Case {
        int length;
        int measured;
    };
    for (const Case& c : {Case{1, 3}, {23, 25}, {24, 26}, {25, 27}, {26, 28}, {27, 26}, {30, 26}}) {
        EXPECT_EQ(SizeOf(Repeat("c", c.length)).cx, 6.0 * c.measured) << c.length;
    }
}

TEST_F(DrawInfo, CountsCodePointsNotBytes) {
    EXPECT_EQ(SizeOf(Repeat("\u00e4", 24)).cx, 6.0 * 26);
    painter.TakeLines();
    EXPECT_EQ(SizeOf(Repeat("\U0001f600", 30)).cx, 6.0 * 26);
    EXPECT_EQ(painter.TakeLines(),
              (Lines{"GetTextSize \"" + Repeat("\U0001f600", 26) + "\" null -1 1 1"}));
}

TEST_F(DrawInfo, CutsAnythingToASmallLimit) {
    info.max_caption_length = 1;
    EXPECT_EQ(SizeOf("").cx, 6.0 * 3);
    info.fixed_width = true;
    EXPECT_EQ(SizeOf("").cx, 6.0 * 3);
    for (const bool fixed : {false, true}) {
        info.fixed_width = fixed;
        for (const int none : {-2, -3, std::numeric_limits<int>::min()}) {
            info.max_caption_length = none;
            EXPECT_EQ(SizeOf("caption").cx, 0.0) << none;
        }
    }
}

TEST_F(DrawInfo, MeasuresAnyCaptionWithoutALimit) {
    info.max_caption_length = std::numeric_limits<int>::max();
    EXPECT_EQ(SizeOf(Repeat("c", 1000)).cx, 6.0 * 1002);
}

TEST_F(DrawInfo, WithFixedWidthMeasuresOnlyBlanks) {
    info.fixed_width = true;
    for (const std::string& caption : {std::string(), std::string("parse"), Repeat("c", 99)}) {
        EXPECT_EQ(SizeOf(caption), (size<double>{156.0, 15.0}));
        EXPECT_EQ(painter.TakeLines(),
                  (Lines{"GetTextSize \"" + Repeat(" ", 26) + "\" null -1 1 1"}));
    }
}

TEST_F(DrawInfo, MeasuresAtTheZoomThatStands) {
    info.zoom_factor = 0.5;
    EXPECT_EQ(SizeOf("f").cx, 18.0);
    EXPECT_EQ(painter.TakeLines(),
              (Lines{"SetFont \"\" 4 4 0 0 1", "GetTextSize \"f  \" null -1 1 1"}));
}

TEST_F(DrawInfo, WithoutAPainterHasNoSizeAndNoCaption) {
    info.painter = nullptr;
    info.zoom_factor = 2.0;
    info.SetScaledFont();
    EXPECT_EQ(SizeOf("parse"), (size<double>{0.0, 0.0}));
    EXPECT_EQ(Shown("parse"), "");
}

TEST_F(DrawInfo, ShowsACaptionUpToTheLimitInFull) {
    for (int length = 0; length <= 26; ++length) {
        const std::string caption = Repeat("c", length);
        EXPECT_EQ(Shown(caption), caption);
    }
}

TEST_F(DrawInfo, MeasuresForTheNodeAndThenTheCaption) {
    info.zoom_factor = 2.0;
    Shown("");
    EXPECT_EQ(painter.TakeLines(),
              (Lines{"SetFont \"\" 4 16 0 0 1", "GetTextSize \"       \" null -1 1 1",
                     "GetTextSize \"\" null -1 1 1"}));
}

TEST_F(DrawInfo, EndsALongCaptionInThreeDots) {
    EXPECT_EQ(Shown("a caption of thirty characters"), "a caption of thirty ch...");
    EXPECT_EQ(Shown(Repeat("c", 27)), Repeat("c", 22) + "...");
    EXPECT_EQ(Shown(Repeat("c", 100000)), Repeat("c", 22) + "...");
}

TEST_F(DrawInfo, NeverCutsInsideACodePoint) {
    EXPECT_EQ(Shown(Repeat("\u00e4", 30)), Repeat("\u00e4", 22) + "...");
    EXPECT_EQ(Shown("x" + Repeat("\U0001f600", 30)), "x" + Repeat("\U0001f600", 21) + "...");
}

TEST_F(DrawInfo, CutsBrokenTextAfterWholeSequences) {
    const std::string broken = Repeat("\xe2\x82", 30);
    EXPECT_EQ(SizeOf(broken).cx, 6.0 * 26);
    EXPECT_EQ(Shown(broken), Repeat("\xe2\x82", 22) + "...");
}

TEST_F(DrawInfo, ShowsDotsAloneWhereNothingElseFits) {
    struct Case {
        int limit;
        const char* shown;
    };
    info.fixed_width = true;
    for (const Case& c : {Case{4, "ca..."},
                          {3, "c..."},
                          {2, "..."},
                          {1, ".."},
                          {0, "."},
                          {-1, ""},
                          {-2, ""},
                          {-9, ""}}) {
        info.max_caption_length = c.limit;
        EXPECT_EQ(Shown("caption of a node"), c.shown) << c.limit;
    }
}

TEST_F(DrawInfo, NeverShowsMoreThanFits) {
    info.fixed_width = true;
    for (info.max_caption_length = -2; info.max_caption_length < 30; ++info.max_caption_length) {
        for (int length = 1; length < 40; ++length) {
            const std::string caption = Repeat("c", length);
            const std::string shown = Shown(caption);
            const int room = info.max_caption_length + 2;
            if (length <= room) {
                EXPECT_EQ(shown, caption);
            } else {
                EXPECT_EQ(static_cast<int>(shown.size()), std::max(0, room - 1));
            }
        }
    }
}

TEST_F(DrawInfo, TakesAllCharactersAsEquallyWide) {
    // 26 of them are narrow and fit, the four behind are wide. At 4.4 each, 11 fit and 10 are left.
    UnevenPainter uneven([](char character) { return character == 'W' ? 20.0 : 2.0; });
    info.painter = &uneven;
    EXPECT_EQ(Shown(Repeat("i", 26) + "WWWW"), "iiiiiii...");
}

TEST_F(DrawInfo, MeetsWidthsThatAreNoNumbersWithAnEmptyCaption) {
    info.fixed_width = true;
    UnevenPainter boundless([](char character) {
        return character == ' ' ? 1.0 : std::numeric_limits<double>::infinity();
    });
    info.painter = &boundless;
    EXPECT_EQ(Shown("parse"), "");
    UnevenPainter negative([](char character) { return character == ' ' ? -1e300 : -1e-300; });
    info.painter = &negative;
    EXPECT_EQ(Shown("parse"), "");
    UnevenPainter undefined([](char) { return std::nan(""); });
    info.painter = &undefined;
    EXPECT_EQ(Shown("parse"), "parse");
}

}  // namespace
}  // namespace nodeline::test
