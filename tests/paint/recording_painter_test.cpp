#include <gtest/gtest.h>

#include <backends/headless/recording_painter.h>

#include <string>
#include <vector>

using nodeline::headless::RecordingPainter;
using paintcore::CoordInfo;
using paintcore::font;
using paintcore::IPainter;
using paintcore::MapMode;
using paintcore::rectangle;
using paintcore::size;

namespace {

using paintcore::_color;

using Lines = std::vector<std::string>;

font FontOf(const char* face, int style, int points) {
    font f;
    f.face = face;
    f.style = style;
    f.size = points;
    return f;
}

}  // namespace

TEST(RecordingPainter, WritesEveryOperationWithItsArguments) {
    RecordingPainter painter;
    IPainter& p = painter;
    p.BeginPaint(IPainter::StdSettings::All);
    p.SetPen({_color(180, 20, 255), 2, 1, 0, 0});
    p.SetBrush({_color(0, 10, 0), 1});
    p.SetFont(FontOf("Arial", 1, 7));
    p.SetArrowSize(7, 5);
    p.SetTextColor(_color(120, 10, 10));
    p.MoveTo(1.0, 0.1);
    p.LineTo(-2.5, 3.0);
    p.BeginPlot(6);
    p.Vertex(1.0, 2.0);
    p.EndPlot();
    p.Rectangle(1.0, 2.0, 3.0, 4.0);
    p.Rectangle(rectangle<double>{5.0, 6.0, 7.0, 8.0});
    p.RoundRect(1.0, 2.0, 3.0, 4.0, 0.5, 0.25);
    p.FillRect(0.0, 0.0, 10.0, 10.0);
    p.GradientFill({1.0, 2.0, 3.0, 4.0}, _color(255, 255, 255), _color(127, 127, 127), 100, 0);
    p.DrawString({1.0, 2.0, 3.0, 4.0}, "main", 0x24, -1);
    p.SetClipRect(0.0, 0.0, 5.0, 5.0, false);
    p.ResetClip();
    const CoordInfo info{{1.0, 2.0}, {30.0, 40.0}, {5, 6}, {70, 80}};
    p.SetCoordSystem(MapMode::Rectangle, &info);
    p.EndPaint();
    EXPECT_EQ(painter.GetLines(), (Lines{
                                      "BeginPaint 3",
                                      "SetPen #b414ff 2 1 0 0",
                                      "SetBrush #000a00 1",
                                      "SetFont \"Arial\" 1 7 0 0 1",
                                      "SetArrowSize 7 5",
                                      "SetTextColor #780a0a",
                                      "MoveTo 1 0.1",
                                      "LineTo -2.5 3",
                                      "BeginPlot 6",
                                      "Vertex 1 2",
                                      "EndPlot",
                                      "Rectangle 1 2 3 4",
                                      "Rectangle 5 6 7 8",
                                      "RoundRect 1 2 3 4 0.5 0.25",
                                      "FillRect 0 0 10 10",
                                      "GradientFill 1 2 3 4 #ffffff #7f7f7f 100 0",
                                      "DrawString 1 2 3 4 \"main\" 36 -1",
                                      "SetClipRect 0 0 5 5 0",
                                      "ResetClip",
                                      "SetCoordSystem 3 1 2 30 40 5 6 70 80",
                                      "EndPaint",
                                  }));
}

TEST(RecordingPainter, WritesQuestionsToo) {
    RecordingPainter painter;
    const font f = FontOf("", 4, 8);
    MapMode mode{};
    CoordInfo info;
    static_cast<void>(painter.IsPainting());
    static_cast<void>(painter.GetTextSize("a"));
    static_cast<void>(painter.GetTextSize("ab", &f, 1, true, false));
    painter.GetCoordSystem(mode, &info);
    static_cast<void>(painter.GetPaintRect());
    EXPECT_EQ(painter.TakeLines(),
              (Lines{"IsPainting", "GetTextSize \"a\" null -1 1 1",
                     "GetTextSize \"ab\" \"\" 4 8 0 0 1 1 1 0", "GetCoordSystem", "GetPaintRect"}));
}

TEST(RecordingPainter, ACaptionNeverBreaksOutOfItsQuotesOrItsLine) {
    RecordingPainter painter;
    painter.DrawString({}, "a\"b\\c\nd\x7F\xC3\xA9", 9, 3);
    EXPECT_EQ(painter.GetLines(),
              Lines{"DrawString 0 0 0 0 \"a\\\"b\\\\c\\x0ad\\x7f\xC3\xA9\" 9 3"});
}

TEST(RecordingPainter, TakingTheLinesBeginsAnew) {
    RecordingPainter painter;
    painter.ResetClip();
    EXPECT_EQ(painter.TakeLines(), Lines{"ResetClip"});
    EXPECT_TRUE(painter.GetLines().empty());
    painter.EndPlot();
    EXPECT_EQ(painter.TakeLines(), Lines{"EndPlot"});
}

TEST(RecordingPainter, RecordsNothingWhileSwitchedOff) {
    RecordingPainter painter;
    painter.SetRecording(false);
    painter.BeginPaint(IPainter::StdSettings::All);
    EXPECT_TRUE(painter.IsPainting());
    EXPECT_TRUE(painter.GetLines().empty());
    painter.SetRecording(true);
    painter.EndPaint();
    EXPECT_EQ(painter.GetLines(), Lines{"EndPaint"});
}

TEST(RecordingPainter, MeasuresSixByTenPerCodePoint) {
    RecordingPainter painter;
    EXPECT_EQ(painter.GetTextSize("main"), (size<double>{24.0, 10.0}));
    EXPECT_EQ(painter.GetTextSize(""), (size<double>{0.0, 10.0}));
    EXPECT_EQ(painter.GetTextSize("na\xC3\xAFve"), (size<double>{30.0, 10.0}));
    EXPECT_EQ(painter.GetTextSize("main", nullptr, 2, true, true), (size<double>{12.0, 10.0}));
}

TEST(RecordingPainter, MeasuresTheSameInAnyFontAndAtAnyScale) {
    RecordingPainter painter;
    painter.SetFont(FontOf("Arial", 2, 72));
    EXPECT_EQ(painter.GetTextSize("main"), (size<double>{24.0, 10.0}));
    const font none = FontOf("", 4, 0);
    EXPECT_EQ(painter.GetTextSize("main", &none, -1, true, true), (size<double>{24.0, 10.0}));
    const CoordInfo info{{0.0, 0.0}, {10.0, 10.0}, {0, 0}, {40, 40}};
    painter.SetCoordSystem(MapMode::Rectangle, &info);
    EXPECT_EQ(painter.GetTextSize("main"), (size<double>{24.0, 10.0}));
}

TEST(RecordingPainter, HandsEverythingButMeasuringOnToItsTarget) {
    RecordingPainter target;
    target.SetDevicePaintRect({0.0, 0.0, 50.0, 40.0});
    RecordingPainter painter(&target);
    painter.BeginPaint(IPainter::StdSettings::Styles);
    painter.SetPen({});
    painter.SetBrush({});
    painter.SetFont({});
    painter.SetArrowSize(1, 2);
    painter.SetTextColor({});
    painter.MoveTo(1.0, 2.0);
    painter.LineTo(3.0, 4.0);
    painter.BeginPlot(6);
    painter.Vertex(1.0, 2.0);
    painter.EndPlot();
    painter.Rectangle(1.0, 2.0, 3.0, 4.0);
    painter.RoundRect(1.0, 2.0, 3.0, 4.0, 5.0, 6.0);
    painter.FillRect(1.0, 2.0, 3.0, 4.0);
    painter.GradientFill({}, {}, {}, 100, 0);
    painter.DrawString({}, "x", 9, -1);
    painter.SetClipRect(1.0, 2.0, 3.0, 4.0, true);
    painter.ResetClip();
    painter.SetCoordSystem(MapMode::Identity, nullptr);
    EXPECT_EQ(painter.GetPaintRect(), (rectangle<double>{0.0, 0.0, 50.0, 40.0}));
    painter.EndPaint();
    EXPECT_EQ(target.GetLines().size(), 21U);
    EXPECT_EQ(target.GetLines(), painter.GetLines());

    EXPECT_EQ(painter.GetTextSize("ab").cx, 12.0);
    EXPECT_EQ(target.GetLines().back(), "EndPaint");
}
