#include <gtest/gtest.h>

#include <backends/cairo/svg_painter.h>
#include <backends/cairo/text_engine.h>
#include <support/fonts/test_fonts.h>
#include <support/xml.h>

#include <limits>
#include <string>
#include <vector>

using nodeline::cairo::SvgPainter;
using paintcore::CoordInfo;
using paintcore::font;
using paintcore::MapMode;
using paintcore::rectangle;
using test_support::XmlElement;
using test_support::XmlReader;

namespace {

using paintcore::_color;

font FontOf(const std::string& face, int style, int points) {
    font f;
    f.face = face;
    f.style = style;
    f.size = points;
    return f;
}

XmlElement Read(const SvgPainter& painter) { return XmlReader::Read(painter.GetDocument()); }

// The text of the only caption of a document in which nothing but `text` was drawn.
std::string DrawnText(const std::string& text) {
    SvgPainter painter({100.0, 50.0});
    painter.DrawString({0.0, 0.0, 100.0, 50.0}, text, 0x24, -1);
    const XmlElement root = Read(painter);
    const auto texts = root.FindAll("text");
    return texts.size() == 1 ? texts[0]->text : "not one text";
}

}  // namespace

TEST(SvgPainter, AnEmptyPictureIsADocumentOfItsSize) {
    const XmlElement root = Read(SvgPainter({120.0, 80.5}));
    EXPECT_EQ(root.name, "svg");
    EXPECT_EQ(root.Get("xmlns"), "http://www.w3.org/2000/svg");
    EXPECT_EQ(root.Get("width"), "120");
    EXPECT_EQ(root.Get("height"), "80.5");
    EXPECT_EQ(root.Get("viewBox"), "0 0 120 80.5");
    EXPECT_TRUE(root.children.empty());
}

TEST(SvgPainter, CaptionsComeOutAsTheyWentIn) {
    EXPECT_EQ(DrawnText("main"), "main");
    EXPECT_EQ(DrawnText("<b>&amp;\"it's\"</b>"), "<b>&amp;\"it's\"</b>");
    EXPECT_EQ(DrawnText("]]></text></svg>"), "]]></text></svg>");
    EXPECT_EQ(DrawnText("na\xC3\xAFve \xE2\x82\xAC \xF0\x9F\x98\x80"),
              "na\xC3\xAFve \xE2\x82\xAC \xF0\x9F\x98\x80");
}

TEST(SvgPainter, EveryByteMakesAWellFormedDocument) {
    for (int byte = 0; byte < 256; ++byte) {
        const std::string text = {'a', static_cast<char>(byte), 'b'};
        const std::string drawn = DrawnText(text);
        EXPECT_EQ(drawn, nodeline::cairo::PrintableText(text)) << byte;
        EXPECT_EQ(drawn.front(), 'a') << byte;
        EXPECT_EQ(drawn.back(), 'b') << byte;
    }
}

TEST(SvgPainter, BytesThatAreNoTextAreReplaced) {
    EXPECT_EQ(DrawnText("a\xFF\xC3z"), "a\xEF\xBF\xBD\xEF\xBF\xBDz");
    EXPECT_EQ(DrawnText("a\x01z"), "a\xEF\xBF\xBDz");
    EXPECT_EQ(DrawnText(std::string("a\0z", 3)), "a\xEF\xBF\xBDz");
    EXPECT_EQ(DrawnText("a\nz"), "a z");
    EXPECT_EQ(DrawnText("\xEF\xBF\xBF"), "\xEF\xBF\xBD");
}

TEST(SvgPainter, ATextCutInTheMiddleOfALetterIsReplacedThere) {
    SvgPainter painter({100.0, 50.0});
    painter.DrawString({0.0, 0.0, 100.0, 50.0}, "ab\xC3\xA9", 0x24, 3);
    EXPECT_EQ(Read(painter).FindAll("text").at(0)->text, "ab\xEF\xBF\xBD");
}

TEST(SvgPainter, NamesOfFacesCannotBreakOutOfTheirAttribute) {
    SvgPainter painter({100.0, 50.0});
    painter.SetFont(
        FontOf("A\"'\\<&\x01"
               "B",
               1, 8));
    painter.DrawString({0.0, 0.0, 100.0, 50.0}, "x", 0x24, -1);
    EXPECT_EQ(Read(painter).FindAll("text").at(0)->Get("font-family"),
              "'DejaVu Sans', 'A\"\\'\\\\<&\xEF\xBF\xBD"
              "B', sans-serif");
}

TEST(SvgPainter, TextNamesTheFamilyThatItWasMeasuredWithFirst) {
    SvgPainter painter({100.0, 50.0});
    painter.SetTextColor(_color(120, 10, 10));
    painter.SetFont(FontOf("Arial", 2, 9));
    painter.DrawString({0.0, 0.0, 100.0, 50.0}, "x", 0x24, -1);
    painter.SetFont(FontOf("", 4, 9));
    painter.DrawString({0.0, 0.0, 100.0, 50.0}, "x", 0x24, -1);
    const XmlElement root = Read(painter);
    const auto texts = root.FindAll("text");
    ASSERT_EQ(texts.size(), 2U);
    EXPECT_EQ(texts[0]->Get("font-family"), "'DejaVu Sans', 'Arial', sans-serif");
    EXPECT_EQ(texts[0]->Get("font-weight"), "bold");
    EXPECT_EQ(texts[0]->Get("font-size"), "12");
    EXPECT_EQ(texts[0]->Get("fill"), "#780a0a");
    EXPECT_EQ(texts[1]->Get("font-family"), "'DejaVu Sans', sans-serif");
    EXPECT_EQ(texts[1]->Get("font-weight"), "");
}

TEST(SvgPainter, CentredTextIsAnchoredInTheMiddle) {
    SvgPainter painter({200.0, 100.0});
    painter.SetFont(FontOf("", 1, 12));
    painter.DrawString({20.0, 10.0, 120.0, 50.0}, "x", 0x24, -1);
    painter.DrawString({20.0, 10.0, 120.0, 50.0}, "x", 9, -1);
    const XmlElement root = Read(painter);
    const auto texts = root.FindAll("text");
    ASSERT_EQ(texts.size(), 2U);
    EXPECT_EQ(texts[0]->Get("text-anchor"), "middle");
    EXPECT_EQ(texts[0]->Get("x"), "70");
    // The baseline of a line in the middle lies a little below the middle.
    EXPECT_GT(std::stod(texts[0]->Get("y")), 33.0);
    EXPECT_LT(std::stod(texts[0]->Get("y")), 37.0);
    EXPECT_EQ(texts[1]->Get("text-anchor"), "");
    EXPECT_GT(std::stod(texts[1]->Get("x")), 20.0);
    EXPECT_LT(std::stod(texts[1]->Get("x")), 30.0);
}

TEST(SvgPainter, ALineBeginsAtTheRightIfItsFirstLetterSaysSo) {
    const char* shalom = "\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D";
    const char* arabic = "\xD8\xB9\xD8\xB1\xD8\xA8\xD9\x8A";
    SvgPainter painter({200.0, 100.0});
    const auto draw = [&painter](const std::string& text) {
        painter.DrawString({20.0, 10.0, 120.0, 50.0}, text, 0x24, -1);
        painter.DrawString({20.0, 10.0, 120.0, 50.0}, text, 9, -1);
    };
    for (const char* name : {shalom, arabic}) draw(std::string("12 ") + name + "...");
    for (const std::string text : {"abc", "12...", "\xF0\x9F\x98\x80"}) draw(text);
    draw(std::string("abc ") + shalom);
    const XmlElement root = Read(painter);
    const auto texts = root.FindAll("text");
    ASSERT_EQ(texts.size(), 12U);
    for (std::size_t n = 0; n < texts.size(); ++n) {
        const bool is_centred = n % 2 == 0;
        const bool is_right_to_left = n < 4;
        EXPECT_EQ(texts[n]->Get("direction"), is_right_to_left ? "rtl" : "") << n;
        const std::string of_left = is_right_to_left ? "end" : "";
        EXPECT_EQ(texts[n]->Get("text-anchor"), is_centred ? "middle" : of_left) << n;
        // The middle or the left of the text is where that of any other text is.
        const std::size_t like = is_centred ? 10 : 11;
        EXPECT_EQ(texts[n]->Get("x"), texts[like]->Get("x")) << n;
    }
}

TEST(SvgPainter, LooseBlanksArePreserved) {
    SvgPainter painter({200.0, 100.0});
    for (const char* text : {"a b", "a  b", " a", "a "}) {
        painter.DrawString({0.0, 0.0, 100.0, 50.0}, text, 0x24, -1);
    }
    const XmlElement root = Read(painter);
    const auto texts = root.FindAll("text");
    ASSERT_EQ(texts.size(), 4U);
    EXPECT_EQ(texts[0]->Get("xml:space"), "");
    for (std::size_t n = 1; n < 4; ++n) EXPECT_EQ(texts[n]->Get("xml:space"), "preserve") << n;
    EXPECT_EQ(texts[1]->text, "a  b");
}

TEST(SvgPainter, AFontOfSizeZeroWritesNoText) {
    SvgPainter painter({200.0, 100.0});
    painter.SetFont(FontOf("", 1, 0));
    painter.DrawString({0.0, 0.0, 100.0, 50.0}, "main", 0x24, -1);
    EXPECT_TRUE(Read(painter).children.empty());
}

TEST(SvgPainter, EachTextIsClippedToItsRectangle) {
    SvgPainter painter({200.0, 100.0});
    const rectangle<double> first{1.0, 2.0, 30.0, 20.0};
    const rectangle<double> second{1.0, 32.0, 30.0, 50.0};
    painter.DrawString(first, "a", 0x24, -1);
    painter.DrawString(first, "b", 9, -1);
    painter.DrawString(second, "c", 9, -1);
    const XmlElement root = Read(painter);
    const auto texts = root.FindAll("text");
    const auto clips = root.FindAll("clipPath");
    ASSERT_EQ(texts.size(), 3U);
    ASSERT_EQ(clips.size(), 2U);
    EXPECT_EQ(texts[0]->Get("clip-path"), "url(#" + clips[0]->Get("id") + ")");
    EXPECT_EQ(texts[1]->Get("clip-path"), texts[0]->Get("clip-path"));
    EXPECT_EQ(texts[2]->Get("clip-path"), "url(#" + clips[1]->Get("id") + ")");
    const XmlElement& box = clips[1]->children.at(0);
    EXPECT_EQ(box.name, "rect");
    EXPECT_EQ(box.Get("x"), "1");
    EXPECT_EQ(box.Get("y"), "32");
    EXPECT_EQ(box.Get("width"), "29");
    EXPECT_EQ(box.Get("height"), "18");
}

TEST(SvgPainter, AClipIsAGroupAroundWhatIsDrawnInIt) {
    SvgPainter painter({200.0, 100.0});
    painter.Rectangle(0.0, 0.0, 1.0, 1.0);
    painter.SetClipRect(10.0, 10.0, 20.0, 20.0, false);
    painter.Rectangle(0.0, 0.0, 2.0, 2.0);
    painter.Rectangle(0.0, 0.0, 3.0, 3.0);
    painter.ResetClip();
    painter.Rectangle(0.0, 0.0, 4.0, 4.0);
    const XmlElement root = Read(painter);
    ASSERT_EQ(root.children.size(), 4U);
    EXPECT_EQ(root.children[0].name, "defs");
    EXPECT_EQ(root.children[1].Get("width"), "1");
    EXPECT_EQ(root.children[2].name, "g");
    EXPECT_EQ(root.children[2].Get("clip-path"), "url(#c0)");
    EXPECT_EQ(root.children[2].children.size(), 2U);
    EXPECT_EQ(root.children[3].Get("width"), "4");
}

TEST(SvgPainter, AClipAroundNothingLeavesNoTrace) {
    SvgPainter painter({200.0, 100.0});
    painter.SetClipRect(10.0, 10.0, 20.0, 20.0, false);
    painter.SetClipRect(10.0, 10.0, 30.0, 30.0, false);
    painter.ResetClip();
    EXPECT_TRUE(Read(painter).children.empty());
}

TEST(SvgPainter, AClipThatIsStillSetIsClosedInTheDocument) {
    SvgPainter painter({200.0, 100.0});
    painter.SetClipRect(10.0, 10.0, 20.0, 20.0, false);
    painter.Rectangle(0.0, 0.0, 2.0, 2.0);
    EXPECT_EQ(Read(painter).FindAll("g").size(), 1U);
    painter.Rectangle(0.0, 0.0, 3.0, 3.0);
    EXPECT_EQ(Read(painter).FindAll("g").at(0)->children.size(), 2U);
}

TEST(SvgPainter, GradientsOfTheSameColorsAreDefinedOnce) {
    SvgPainter painter({200.0, 100.0});
    painter.GradientFill({0.0, 0.0, 5.0, 5.0}, _color(255, 255, 255), _color(127, 127, 127), 100,
                         0);
    painter.GradientFill({0.0, 9.0, 5.0, 14.0}, _color(255, 255, 255), _color(127, 127, 127), 100,
                         0);
    painter.GradientFill({0.0, 0.0, 5.0, 5.0}, _color(127, 127, 127), _color(255, 255, 255, 51),
                         100, 0);
    const XmlElement root = Read(painter);
    const auto gradients = root.FindAll("linearGradient");
    const auto boxes = root.FindAll("rect");
    ASSERT_EQ(gradients.size(), 2U);
    ASSERT_EQ(boxes.size(), 3U);
    EXPECT_EQ(boxes[0]->Get("fill"), "url(#g0)");
    EXPECT_EQ(boxes[1]->Get("fill"), "url(#g0)");
    EXPECT_EQ(boxes[2]->Get("fill"), "url(#g1)");
    // From the top down.
    EXPECT_EQ(gradients[0]->Get("y1") + gradients[0]->Get("y2"), "01");
    EXPECT_EQ(gradients[0]->Get("x1") + gradients[0]->Get("x2"), "00");
    EXPECT_EQ(gradients[0]->children.at(0).Get("stop-color"), "#ffffff");
    EXPECT_EQ(gradients[0]->children.at(1).Get("stop-color"), "#7f7f7f");
    EXPECT_EQ(gradients[1]->children.at(1).Get("stop-opacity"), "0.2");
}

TEST(SvgPainter, ARunOfLinesIsOnePath) {
    SvgPainter painter({200.0, 100.0});
    painter.SetPen({_color(255, 0, 0), 2, 1, 1, 2});
    painter.MoveTo(0.0, 0.5);
    painter.LineTo(10.0, 1.0 / 3.0);
    painter.LineTo(20.0, -1.0);
    painter.EndPaint();
    const XmlElement root = Read(painter);
    ASSERT_EQ(root.children.size(), 1U);
    const XmlElement& path = root.children[0];
    EXPECT_EQ(path.name, "path");
    EXPECT_EQ(path.Get("d"), "M0 0.5L10 0.333L20 -1");
    EXPECT_EQ(path.Get("fill"), "none");
    EXPECT_EQ(path.Get("stroke"), "#ff0000");
    EXPECT_EQ(path.Get("stroke-width"), "2");
    EXPECT_EQ(path.Get("stroke-linecap"), "round");
    EXPECT_EQ(path.Get("stroke-linejoin"), "bevel");
}

TEST(SvgPainter, PenValuesThatDoNotExistAreTakenAsTheNearest) {
    SvgPainter painter({200.0, 100.0});
    painter.SetPen({_color(0, 0, 0), -3, 1, 99, -99});
    painter.Rectangle(0.0, 0.0, 1.0, 1.0);
    const XmlElement root = Read(painter);
    EXPECT_EQ(root.children.at(0).Get("stroke-width"), "");
    EXPECT_EQ(root.children.at(0).Get("stroke-linecap"), "square");
    EXPECT_EQ(root.children.at(0).Get("stroke-linejoin"), "");
}

TEST(SvgPainter, AnArrowheadIsAPolygonInTheColorOfThePen) {
    SvgPainter painter({200.0, 100.0});
    painter.SetPen({_color(1, 2, 3), 1, 1, 0, 0});
    painter.SetArrowSize(7, 5);
    painter.BeginPlot(6);
    painter.Vertex(0.0, 50.0);
    painter.Vertex(100.0, 50.0);
    painter.EndPlot();
    const XmlElement root = Read(painter);
    ASSERT_EQ(root.children.size(), 1U);
    EXPECT_EQ(root.children[0].name, "polygon");
    EXPECT_EQ(root.children[0].Get("points"), "100 50 93 52.5 93 47.5");
    EXPECT_EQ(root.children[0].Get("fill"), "#010203");
}

TEST(SvgPainter, BoxesHaveTheirFillOutlineAndRadii) {
    SvgPainter painter({200.0, 100.0});
    painter.SetBrush({_color(0, 178, 0, 102), 1});
    painter.RoundRect(1.0, 2.0, 31.0, 22.0, 4.0, 5.0);
    painter.FillRect(1.0, 2.0, 3.0, 4.0);
    const XmlElement root = Read(painter);
    ASSERT_EQ(root.children.size(), 2U);
    EXPECT_EQ(root.children[0].Get("x"), "1");
    EXPECT_EQ(root.children[0].Get("y"), "2");
    EXPECT_EQ(root.children[0].Get("width"), "30");
    EXPECT_EQ(root.children[0].Get("height"), "20");
    EXPECT_EQ(root.children[0].Get("rx"), "4");
    EXPECT_EQ(root.children[0].Get("ry"), "5");
    EXPECT_EQ(root.children[0].Get("fill"), "#00b200");
    EXPECT_EQ(root.children[0].Get("fill-opacity"), "0.4");
    EXPECT_EQ(root.children[0].Get("stroke"), "#000000");
    EXPECT_EQ(root.children[1].Get("stroke"), "");
    EXPECT_EQ(root.children[1].Get("rx"), "");
}

TEST(SvgPainter, ScalesPlacesButNeitherPensNorFonts) {
    SvgPainter painter({200.0, 100.0});
    const CoordInfo info{{10.0, 10.0}, {10.0, 10.0}, {0, 0}, {40, 40}};
    painter.SetCoordSystem(MapMode::Rectangle, &info);
    painter.SetPen({_color(0, 0, 0), 3, 1, 0, 0});
    painter.SetFont(FontOf("", 1, 6));
    painter.Rectangle(10.0, 10.0, 20.0, 20.0);
    painter.DrawString({10.0, 10.0, 20.0, 20.0}, "x", 0x24, -1);
    const XmlElement root = Read(painter);
    EXPECT_EQ(root.children.at(1).Get("width"), "40");
    EXPECT_EQ(root.children.at(1).Get("stroke-width"), "3");
    EXPECT_EQ(root.FindAll("text").at(0)->Get("font-size"), "8");
}

TEST(SvgPainter, NumbersThatAreNoneNeverReachTheDocument) {
    SvgPainter painter({200.0, 100.0});
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinite = std::numeric_limits<double>::infinity();
    painter.SetClipRect(nan, -infinite, infinite, nan, false);
    painter.Rectangle(nan, infinite, 1.0, 1.0);
    painter.Rectangle(0.0, 0.0, 1.0e300, 1.0);
    painter.MoveTo(nan, 0.0);
    painter.LineTo(1.0, 1.0);
    painter.EndPaint();
    const std::string document = painter.GetDocument();
    EXPECT_EQ(XmlReader::Read(document).FindAll("g").size(), 1U);
    EXPECT_EQ(document.find("nan"), std::string::npos);
    EXPECT_EQ(document.find("inf"), std::string::npos);
}

TEST(SvgPainter, TheSameDrawingIsTheSameDocument) {
    const auto draw = [] {
        SvgPainter painter({200.0, 100.0});
        for (int n = 0; n < 20; ++n) {
            painter.GradientFill({0.0, 0.0, 5.0, 5.0}, _color(n, 0, 0), _color(0, n, 0), 100, 0);
            painter.DrawString({0.0, 1.0 * n, 50.0, 20.0}, "main", 9, -1);
        }
        return painter.GetDocument();
    };
    EXPECT_EQ(draw(), draw());
}
