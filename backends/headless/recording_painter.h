// A painter that draws nothing and writes down what it is asked to draw.
//
//   RecordingPainter painter;
//   window.GetControl().Paint(&painter);
//   EXPECT_EQ(painter.TakeLines().front(), "BeginPaint 3");
//
// Each call is one line: the name of the operation and its arguments in their order, parted by
// blanks.
//
//   numbers      in their shortest form, "12" or "0.1"; a bool is 0 or 1, a size or rectangle its
//                numbers in a row
//   colours      "#rrggbb"
//   texts        in double quotes; quotes, backslashes and control characters are written as \",
//                \\ and \x0a, so that a call never takes two lines
//   pens         colour, width, style, cap, join
//   brushes      colour, style
//   fonts        face in quotes, style, size, angle, charset, scale; a null font is "null"
//   coordinates  mode; logical origin and extent; device origin and extent
//
// What is measured does not depend on any installed font: every text is 6 units per code point wide
// and 10 high, at any font and scale.
#pragma once

#include <corvex/export.h>
#include <paintcore/state_painter.h>

#include <string>
#include <string_view>
#include <vector>

namespace nodeline::headless {

// Records the operations of a painter, one line each.
class NODELINE_API RecordingPainter : public paintcore::StatePainter {
public:
    // What a code point adds to the width of a text, and the height of every text, in logical
    // units.
    static constexpr double kCodePointWidth = 6.0;
    static constexpr double kLineHeight = 10.0;

    // The short forms of the interface.
    using IPainter::FillRect;
    using IPainter::GetTextSize;
    using IPainter::Rectangle;

    // What is recorded also goes to `target`, if there is one, except for the measuring of texts,
    // so that what follows from their sizes is the same on every surface. The target is not owned
    // and outlives the recorder.
    explicit RecordingPainter(paintcore::IPainter* target = nullptr);

    // Switches the writing of lines on and off; it is on at first. Everything else goes on.
    void SetRecording(bool on);

    // The lines since the last `TakeLines` or since the beginning.
    [[nodiscard]] const std::vector<std::string>& GetLines() const;
    // The same, and begins anew.
    std::vector<std::string> TakeLines();

    void BeginPaint(StdSettings settings) override;
    void EndPaint() override;
    void SetPen(const paintcore::pen& p) override;
    void SetBrush(const paintcore::brush& b) override;
    void SetFont(const paintcore::font& f) override;
    void SetArrowSize(int length, int width) override;
    void SetTextColor(const paintcore::_color& color) override;
    [[nodiscard]] bool IsPainting() const override;
    void MoveTo(double x, double y) override;
    void LineTo(double x, double y) override;
    void BeginPlot(int type) override;
    void Vertex(double x, double y) override;
    void EndPlot() override;
    void Rectangle(double left, double top, double right, double bottom) override;
    void RoundRect(double left, double top, double right, double bottom, double rx,
                   double ry) override;
    void FillRect(double left, double top, double right, double bottom) override;
    void GradientFill(const paintcore::rectangle<double>& r, const paintcore::_color& from,
                      const paintcore::_color& to, int percent, int direction) override;
    void DrawString(const paintcore::rectangle<double>& r, const std::string& text, int format,
                    int length) override;
    [[nodiscard]] paintcore::size<double> GetTextSize(const std::string& text,
                                                      const paintcore::font* f, int length,
                                                      bool leading, bool trailing) override;
    void SetClipRect(double left, double top, double right, double bottom, bool combine) override;
    void ResetClip() override;
    void GetCoordSystem(paintcore::MapMode& mode, paintcore::CoordInfo* info) const override;
    void SetCoordSystem(paintcore::MapMode mode, const paintcore::CoordInfo* info) override;
    // That of the target, where there is one.
    [[nodiscard]] paintcore::rectangle<double> GetPaintRect() const override;

private:
    template <class... Arguments>
    void Record(std::string_view operation, const Arguments&... arguments) const;

    paintcore::IPainter* target_;
    bool recording_ = true;
    // Questions are recorded as well, and those are const.
    mutable std::vector<std::string> lines_;
};

}  // namespace nodeline::headless
