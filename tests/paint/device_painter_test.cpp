#include <gtest/gtest.h>

#include <paintcore/device_painter.h>
#include <paintcore/number_text.h>

#include <initializer_list>
#include <limits>
#include <string>
#include <utility>
#include <vector>

using paintcore::AppendNumber;
using paintcore::CoordInfo;
using paintcore::DevicePainter;
using paintcore::font;
using paintcore::IPainter;
using paintcore::MapMode;
using paintcore::point;
using paintcore::rectangle;
using paintcore::size;
using paintcore::TextLine;

namespace {

using paintcore::_color;

using Lines = std::vector<std::string>;

// Writes down the primitives. A text is 4 pixels per byte wide and 8 high for each point of its
// font.
class SketchPainter : public DevicePainter {
public:
    Lines TakeLines() { return std::exchange(lines_, {}); }

protected:
    size<double> MeasureText(const font& f, std::string_view text) override {
        if (f.size <= 0) return {};
        return {4.0 * f.size * static_cast<double>(text.size()), 8.0 * f.size};
    }

    void StrokePolyline(const std::vector<point<double>>& points) override {
        Write("stroke", points);
    }

    void FillPolygon(const std::vector<point<double>>& points, const _color& color) override {
        EXPECT_EQ(color, GetPen().color);
        Write("polygon", points);
    }

    void DrawBox(const rectangle<double>& box, const size<double>& radii, bool fill,
                 bool outline) override {
        std::string line = "box";
        if (fill) line += " fill";
        if (outline) line += " outline";
        AppendBox(line, box);
        if (!(radii == size<double>{})) {
            line += " round";
            Append(line, {radii.cx, radii.cy});
        }
        lines_.push_back(line);
    }

    void DrawGradient(const rectangle<double>& box, const _color&, const _color&) override {
        std::string line = "gradient";
        AppendBox(line, box);
        lines_.push_back(line);
    }

    void DrawLine(const TextLine& text) override {
        std::string line = "text ";
        line.append(text.text).append(" at");
        Append(line, {text.origin.x, text.origin.y});
        line += " in";
        AppendBox(line, text.clip);
        if (text.centred) line += " centred";
        lines_.push_back(line);
    }

    void ApplyClip() override {
        std::string line = "clip";
        if (GetClip()) AppendBox(line, *GetClip());
        lines_.push_back(line);
    }

private:
    void Write(std::string line, const std::vector<point<double>>& points) {
        for (const auto& p : points) Append(line, {p.x, p.y});
        lines_.push_back(line);
    }

    static void Append(std::string& line, std::initializer_list<double> numbers) {
        for (const double number : numbers) {
            line += ' ';
            AppendNumber(line, number);
        }
    }

    static void AppendBox(std::string& line, const rectangle<double>& box) {
        Append(line, {box.left, box.top, box.right, box.bottom});
    }

    Lines lines_;
};

void SetScale(IPainter& painter, int x, int y) {
    const CoordInfo info{{0.0, 0.0}, {1.0, 1.0}, {0, 0}, {x, y}};
    painter.SetCoordSystem(MapMode::Rectangle, &info);
}

font FontOf(int points) {
    font f;
    f.size = points;
    return f;
}

}  // namespace

TEST(DevicePainter, ARunOfLinesIsStrokedAsOnePath) {
    SketchPainter painter;
    painter.MoveTo(0.0, 0.0);
    painter.LineTo(1.0, 0.0);
    painter.LineTo(1.0, 2.0);
    EXPECT_EQ(painter.TakeLines(), Lines{});
    painter.MoveTo(5.0, 5.0);
    EXPECT_EQ(painter.TakeLines(), Lines{"stroke 0 0 1 0 1 2"});
    painter.LineTo(6.0, 6.0);
    painter.EndPaint();
    EXPECT_EQ(painter.TakeLines(), Lines{"stroke 5 5 6 6"});
}

TEST(DevicePainter, WhateverElseIsDrawnComesAfterTheLinesBefore) {
    SketchPainter painter;
    painter.MoveTo(0.0, 0.0);
    painter.LineTo(1.0, 0.0);
    painter.Rectangle(1.0, 2.0, 3.0, 4.0);
    EXPECT_EQ(painter.TakeLines(), (Lines{"stroke 0 0 1 0", "box outline 1 2 3 4"}));
    painter.LineTo(2.0, 0.0);
    painter.SetClipRect(0.0, 0.0, 9.0, 9.0, false);
    EXPECT_EQ(painter.TakeLines(), (Lines{"stroke 1 0 2 0", "clip 0 0 9 9"}));
    painter.LineTo(3.0, 0.0);
    painter.ResetClip();
    EXPECT_EQ(painter.TakeLines(), (Lines{"stroke 2 0 3 0", "clip"}));
}

TEST(DevicePainter, ANewPenDoesNotChangeTheLinesBefore) {
    SketchPainter painter;
    painter.MoveTo(0.0, 0.0);
    painter.LineTo(1.0, 0.0);
    painter.SetPen({_color(0, 0, 0), 1, 0, 0, 0});
    EXPECT_EQ(painter.TakeLines(), Lines{"stroke 0 0 1 0"});
    painter.LineTo(5.0, 0.0);
    painter.EndPaint();
    EXPECT_EQ(painter.TakeLines(), Lines{});
}

TEST(DevicePainter, AMoveAloneDrawsNothing) {
    SketchPainter painter;
    painter.MoveTo(1.0, 1.0);
    painter.MoveTo(2.0, 2.0);
    painter.EndPaint();
    EXPECT_EQ(painter.TakeLines(), Lines{});
}

TEST(DevicePainter, PointsAreMappedByTheCoordinateSystemOfTheirCall) {
    SketchPainter painter;
    SetScale(painter, 2, 3);
    painter.MoveTo(1.0, 1.0);
    SetScale(painter, 10, 10);
    painter.LineTo(1.0, 1.0);
    painter.EndPaint();
    EXPECT_EQ(painter.TakeLines(), Lines{"stroke 2 3 10 10"});
}

TEST(DevicePainter, AnArrowheadHasItsTipAtTheSecondVertex) {
    SketchPainter painter;
    painter.SetArrowSize(10, 4);
    painter.BeginPlot(6);
    painter.Vertex(0.0, 50.0);
    painter.Vertex(100.0, 50.0);
    painter.EndPlot();
    EXPECT_EQ(painter.TakeLines(), Lines{"polygon 100 50 90 52 90 48"});
}

TEST(DevicePainter, AnArrowheadKeepsItsSizeAtAnyScale) {
    SketchPainter painter;
    painter.SetArrowSize(10, 4);
    SetScale(painter, 5, 2);
    painter.BeginPlot(6);
    painter.Vertex(0.0, 0.0);
    painter.Vertex(0.0, 100.0);
    painter.EndPlot();
    EXPECT_EQ(painter.TakeLines(), Lines{"polygon 0 200 -2 190 2 190"});
}

TEST(DevicePainter, AnArrowheadWithoutDirectionPointsToTheRight) {
    SketchPainter painter;
    painter.SetArrowSize(10, 4);
    painter.BeginPlot(6);
    painter.Vertex(7.0, 7.0);
    painter.Vertex(7.0, 7.0);
    painter.EndPlot();
    EXPECT_EQ(painter.TakeLines(), Lines{"polygon 7 7 -3 9 -3 5"});
}

TEST(DevicePainter, OtherPlotsAndUnfinishedOnesDrawNothing) {
    SketchPainter painter;
    painter.BeginPlot(5);
    painter.Vertex(0.0, 0.0);
    painter.Vertex(9.0, 0.0);
    painter.EndPlot();
    painter.BeginPlot(6);
    painter.Vertex(0.0, 0.0);
    painter.EndPlot();
    painter.EndPlot();
    EXPECT_EQ(painter.TakeLines(), Lines{});
}

TEST(DevicePainter, ABoxIsFilledWithTheBrushAndOutlinedWithThePen) {
    SketchPainter painter;
    painter.Rectangle(1.0, 2.0, 3.0, 4.0);
    painter.SetBrush({_color(1, 1, 1), 1});
    painter.Rectangle(1.0, 2.0, 3.0, 4.0);
    painter.SetPen({_color(1, 1, 1), 1, 0, 0, 0});
    painter.Rectangle(1.0, 2.0, 3.0, 4.0);
    painter.SetBrush({_color(1, 1, 1), 0});
    painter.Rectangle(1.0, 2.0, 3.0, 4.0);
    EXPECT_EQ(painter.TakeLines(),
              (Lines{"box outline 1 2 3 4", "box fill outline 1 2 3 4", "box fill 1 2 3 4"}));
}

TEST(DevicePainter, FillingARectangleLeavesOutItsOutline) {
    SketchPainter painter;
    painter.FillRect(1.0, 2.0, 3.0, 4.0);
    painter.SetBrush({_color(1, 1, 1), 1});
    painter.FillRect(rectangle<double>{1.0, 2.0, 3.0, 4.0});
    EXPECT_EQ(painter.TakeLines(), Lines{"box fill 1 2 3 4"});
}

TEST(DevicePainter, CornersAreSortedAndRadiiScaledAndBounded) {
    SketchPainter painter;
    SetScale(painter, 2, 4);
    painter.RoundRect(11.0, 12.0, 1.0, 2.0, 3.0, 1.0);
    painter.RoundRect(0.0, 0.0, 10.0, 10.0, 100.0, 100.0);
    painter.RoundRect(0.0, 0.0, 10.0, 10.0, 0.0, 5.0);
    EXPECT_EQ(painter.TakeLines(),
              (Lines{"box outline 2 8 22 48 round 6 4", "box outline 0 0 20 40 round 10 20",
                     "box outline 0 0 20 40"}));
}

TEST(DevicePainter, AnOutlineAfterAGradientDoesNotCoverIt) {
    SketchPainter painter;
    painter.SetBrush({_color(1, 1, 1), 1});
    painter.GradientFill({1.0, 2.0, 3.0, 4.0}, _color(0, 0, 0), _color(9, 9, 9), 100, 0);
    painter.Rectangle(1.0, 2.0, 3.0, 4.0);
    EXPECT_EQ(painter.TakeLines(), (Lines{"gradient 1 2 3 4", "box outline 1 2 3 4"}));
}

TEST(DevicePainter, TextIsCentredBothWaysInFormat24) {
    SketchPainter painter;
    painter.SetFont(FontOf(1));
    painter.DrawString({0.0, 0.0, 100.0, 20.0}, "abcde", 0x24, -1);
    EXPECT_EQ(painter.TakeLines(), Lines{"text abcde at 40 6 in 0 0 100 20 centred"});
    painter.DrawString({0.0, 0.0, 10.0, 4.0}, "abcde", 0x24, -1);
    EXPECT_EQ(painter.TakeLines(), Lines{"text abcde at -5 -2 in 0 0 10 4 centred"});
}

TEST(DevicePainter, TextStandsAtTheTopLeftWithAMarginInFormat9) {
    SketchPainter painter;
    painter.SetFont(FontOf(1));
    painter.DrawString({10.0, 20.0, 100.0, 200.0}, "abcde", 9, -1);
    EXPECT_EQ(painter.TakeLines(), Lines{"text abcde at 12 22 in 10 20 100 200"});
}

TEST(DevicePainter, ALengthCutsTheText) {
    SketchPainter painter;
    painter.SetFont(FontOf(1));
    painter.DrawString({0.0, 0.0, 100.0, 20.0}, "abcde", 0x24, 2);
    EXPECT_EQ(painter.TakeLines(), Lines{"text ab at 46 6 in 0 0 100 20 centred"});
    painter.DrawString({0.0, 0.0, 100.0, 20.0}, "abcde", 0x24, 0);
    painter.DrawString({0.0, 0.0, 100.0, 20.0}, "", 0x24, -1);
    EXPECT_EQ(painter.TakeLines(), Lines{});
    EXPECT_EQ(painter.GetTextSize("abcde", nullptr, 2, true, true), (size<double>{8.0, 8.0}));
}

TEST(DevicePainter, AFontOfSizeZeroDrawsNothing) {
    SketchPainter painter;
    painter.SetFont(FontOf(0));
    painter.DrawString({0.0, 0.0, 100.0, 20.0}, "abcde", 0x24, -1);
    EXPECT_EQ(painter.TakeLines(), Lines{});
    EXPECT_EQ(painter.GetTextSize("abcde"), (size<double>{0.0, 0.0}));
}

TEST(DevicePainter, TextSizesAreDividedByTheScale) {
    SketchPainter painter;
    painter.SetFont(FontOf(2));
    EXPECT_EQ(painter.GetTextSize("ab"), (size<double>{16.0, 16.0}));
    SetScale(painter, 2, 4);
    EXPECT_EQ(painter.GetTextSize("ab"), (size<double>{8.0, 4.0}));
    const font other = FontOf(1);
    EXPECT_EQ(painter.GetTextSize("ab", &other, -1, true, true), (size<double>{4.0, 2.0}));
}

TEST(DevicePainter, BeginningSetsTheClipBackAndDrawsWhatWasOpen) {
    SketchPainter painter;
    painter.SetClipRect(0.0, 0.0, 1.0, 1.0, false);
    painter.MoveTo(0.0, 0.0);
    painter.LineTo(1.0, 1.0);
    static_cast<void>(painter.TakeLines());
    painter.BeginPaint(IPainter::StdSettings::All);
    EXPECT_EQ(painter.TakeLines(), (Lines{"stroke 0 0 1 1", "clip"}));
}

TEST(DevicePainter, ShapesWithoutAPlaceAreLeftOut) {
    SketchPainter painter;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinite = std::numeric_limits<double>::infinity();
    painter.SetBrush({_color(1, 1, 1), 1});
    painter.Rectangle(nan, 0.0, 1.0, 1.0);
    painter.RoundRect(0.0, 0.0, 1.0, infinite, 1.0, 1.0);
    painter.FillRect(0.0, nan, 1.0, 1.0);
    painter.GradientFill({0.0, 0.0, infinite, 1.0}, {}, {}, 100, 0);
    painter.DrawString({0.0, 0.0, nan, 1.0}, "x", 0x24, -1);
    painter.MoveTo(0.0, 0.0);
    painter.LineTo(infinite, 0.0);
    painter.BeginPlot(6);
    painter.Vertex(nan, 0.0);
    painter.Vertex(1.0, 0.0);
    painter.EndPlot();
    EXPECT_EQ(painter.TakeLines(), Lines{});
}
