// A painter that has mapped everything to pixels and cut it into primitives: a backend derives from
// it and draws the few that are left.
//
// Polylines are collected and stroked in one piece, as soon as anything else is drawn, the pen or
// the clip changes, or the bracket ends. All coordinates of the primitives are pixels and finite;
// corners of rectangles are sorted.
#pragma once

#include <corvex/export.h>
#include <paintcore/state_painter.h>

#include <string>
#include <string_view>
#include <vector>

namespace paintcore {

// A text on one line, ready to be drawn.
struct TextLine {
    // As it was given: neither checked nor escaped.
    std::string_view text;
    // Nothing of the text shows outside of it.
    rectangle<double> clip;
    // The top left corner of the text; it may lie outside of `clip`.
    point<double> origin;
    // What `MeasureText` answered.
    size<double> extent;
    // The text is centred in `clip`.
    bool centred = false;
};

// Makes of the operations of the interface what a backend draws: polylines, polygons, boxes,
// gradients and lines of text.
class NODELINE_API DevicePainter : public StatePainter {
public:
    // The short forms of the interface.
    using IPainter::FillRect;
    using IPainter::GetTextSize;
    using IPainter::Rectangle;

    void BeginPaint(StdSettings settings) override;
    void EndPaint() override;
    void SetPen(const pen& p) override;
    void MoveTo(double x, double y) override;
    void LineTo(double x, double y) override;
    void BeginPlot(int type) override;
    void Vertex(double x, double y) override;
    void EndPlot() override;
    void Rectangle(double left, double top, double right, double bottom) override;
    void RoundRect(double left, double top, double right, double bottom, double rx,
                   double ry) override;
    void FillRect(double left, double top, double right, double bottom) override;
    void GradientFill(const rectangle<double>& r, const _color& from, const _color& to, int percent,
                      int direction) override;
    void DrawString(const rectangle<double>& r, const std::string& text, int format,
                    int length) override;
    [[nodiscard]] size<double> GetTextSize(const std::string& text, const font* f, int length,
                                           bool leading, bool trailing) override;
    void SetClipRect(double left, double top, double right, double bottom, bool combine) override;
    void ResetClip() override;

protected:
    // The width and height of a text on one line, in pixels; both 0 for a font without size.
    [[nodiscard]] virtual size<double> MeasureText(const font& f, std::string_view text) = 0;
    // A polyline of at least two points in the current pen, whose style is not 0.
    virtual void StrokePolyline(const std::vector<point<double>>& points) = 0;
    // At least three points, of which the last is joined to the first.
    virtual void FillPolygon(const std::vector<point<double>>& points, const _color& color) = 0;
    // A box with corners of the radii `radii`, filled with the current brush and then outlined with
    // the current pen, as asked; at least one of the two is.
    virtual void DrawBox(const rectangle<double>& box, const size<double>& radii, bool fill,
                         bool outline) = 0;
    // Fills a box with a gradient from top to bottom.
    virtual void DrawGradient(const rectangle<double>& box, const _color& top,
                              const _color& bottom) = 0;
    // In the current font and text colour.
    virtual void DrawLine(const TextLine& line) = 0;
    // The answer of `GetClip` has changed.
    virtual void ApplyClip() = 0;

    // Strokes the polyline that has been collected.
    void Flush();

private:
    void DrawShape(const rectangle<double>& r, const size<double>& radii, bool fill, bool outline);

    // In pixels. The last point stays when the others have been stroked, so a `LineTo` goes on
    // from it.
    std::vector<point<double>> polyline_;
    int plot_type_ = 0;
    std::vector<point<double>> plot_;
};

}  // namespace paintcore
