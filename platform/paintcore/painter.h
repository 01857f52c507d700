// The painter: everything that the library asks of a drawing surface.
//
//   painter.BeginPaint(IPainter::StdSettings::All);
//   painter.SetPen({_color(180, 20, 20), 2, 1, 0, 0});
//   painter.Rectangle(10.0, 10.0, 90.0, 40.0);
//   painter.EndPaint();
//
// Coordinates are logical and the painter maps them to pixels by its coordinate system, which is
// the identity in a fresh painter. Widths of pens, sizes of arrowheads and fonts are told on the
// device and do not grow with the scale.
#pragma once

#include <corvex/export.h>
#include <paintcore/geometry.h>
#include <paintcore/style.h>

#include <array>
#include <string>

namespace paintcore {

// A button of the pointer.
enum class MouseButton { None = 0, Left = 1, Right = 2, Middle = 3 };

// Bits of the word that tells which modifier keys are held.
enum KeyState { KeyShift = 1, KeyControl = 2, KeyAlt = 4 };

// How a coordinate system maps logical coordinates to pixels.
enum class MapMode {
    // One to one.
    Identity = 1,
    // The logical rectangle of a `CoordInfo` is stretched over its device rectangle.
    Rectangle = 3
};

// The two rectangles of a coordinate system. Whatever lies outside the logical one is mapped by the
// same factors. An extent of 0 counts as a factor of 1.
struct CoordInfo {
    point<double> logical_origin{0.0, 0.0};
    size<double> logical_extent{1.0, 1.0};
    point<int> device_origin{0, 0};
    size<int> device_extent{1, 1};

    // Member by member.
    friend bool operator==(const CoordInfo&, const CoordInfo&) = default;
};

// Values of `format` in `IPainter::DrawString`.
enum TextFormat {
    // At the top left, a small margin away from the edges.
    TextTopLeft = 9,
    // In the middle, both ways, on one line.
    TextCentred = 0x24
};

// The value of `type` in `IPainter::BeginPlot`.
enum PlotType { PlotArrowhead = 6 };

// A surface to draw on, or to measure texts for. The order of the operations is part of the
// interface.
class NODELINE_API IPainter {
public:
    // What `BeginPaint` sets back.
    enum class StdSettings {
        None = 0,
        // Pen, brush, font and colours: a black pen one pixel wide, a brush that does not fill,
        // the host's default face at 8 points, black text.
        Styles = 1,
        // Clip and coordinate system: no clip, and logical units that are pixels.
        Coords = 2,
        All = 3
    };

    // Opens a paint bracket and sets `settings` back to the standard. Brackets do not nest: a
    // second call only sets back.
    virtual void BeginPaint(StdSettings settings) = 0;
    // Closes the bracket; what was drawn is then complete. Does nothing without a bracket.
    virtual void EndPaint() = 0;

    // The style of what follows, until it is set anew or set back.
    virtual void SetPen(const pen& p) = 0;
    virtual void SetBrush(const brush& b) = 0;
    virtual void SetFont(const font& f) = 0;
    // The size of the arrowheads that follow, in pixels: from base to tip, and across the base.
    virtual void SetArrowSize(int length, int width) = 0;
    // The colour of texts that follow.
    virtual void SetTextColor(const _color& color) = 0;

    // True between `BeginPaint` and `EndPaint`.
    [[nodiscard]] virtual bool IsPainting() const = 0;

    // A polyline in the current pen: `MoveTo` is its first point, each `LineTo` a further one. A
    // run of them is stroked as one path.
    virtual void MoveTo(double x, double y) = 0;
    virtual void LineTo(double x, double y) = 0;

    // A plot takes the points of `Vertex` up to `EndPlot`. Of the types there is one,
    // `PlotArrowhead`: it fills an arrowhead in the colour of the pen, its tip at the second point,
    // along the segment from the first. Other types draw nothing.
    virtual void BeginPlot(int type) = 0;
    virtual void Vertex(double x, double y) = 0;
    virtual void EndPlot() = 0;

    // Filled with the brush, outlined with the pen.
    virtual void Rectangle(double left, double top, double right, double bottom) = 0;
    void Rectangle(const rectangle<double>& r) { Rectangle(r.left, r.top, r.right, r.bottom); }
    // The same with round corners of the radii `rx` and `ry`, in logical units.
    virtual void RoundRect(double left, double top, double right, double bottom, double rx,
                           double ry) = 0;
    // Filled with the brush, no outline.
    virtual void FillRect(double left, double top, double right, double bottom) = 0;
    void FillRect(const rectangle<double>& r) { FillRect(r.left, r.top, r.right, r.bottom); }
    // Fills `r` with a vertical gradient, `from` at the top. `percent` and `direction` are 100 and
    // 0, the whole height and downwards. Leaves the brush at style 0, so that an outline drawn
    // next does not cover the gradient.
    virtual void GradientFill(const rectangle<double>& r, const _color& from, const _color& to,
                              int percent, int direction) = 0;

    // UTF-8 text in the current font and text colour, clipped to `r`; `format` is a `TextFormat`.
    // `length` is the number of bytes to draw, -1 is all of them.
    virtual void DrawString(const rectangle<double>& r, const std::string& text, int format,
                            int length) = 0;
    // The width and height of a text on one line, in logical units: what it measures on the device,
    // divided by the scale. `f` is the font, null for the current one; `length` is as in
    // `DrawString`; the flags ask for blanks at the start and at the end to be counted, which every
    // painter does in any case.
    [[nodiscard]] virtual size<double> GetTextSize(const std::string& text, const font* f,
                                                   int length, bool leading, bool trailing) = 0;
    [[nodiscard]] size<double> GetTextSize(const std::string& text) {
        return GetTextSize(text, nullptr, -1, true, true);
    }

    // Confines what follows to a rectangle, in place of the former one; `combine` is false. The
    // rectangle stays where it is on the device when the coordinate system changes.
    virtual void SetClipRect(double left, double top, double right, double bottom,
                             bool combine) = 0;
    // Takes the clip away.
    virtual void ResetClip() = 0;

    // Reads and sets the mapping of logical coordinates to pixels. A null `info` is not written,
    // and stands for a default one when set.
    virtual void GetCoordSystem(MapMode& mode, CoordInfo* info) const = 0;
    virtual void SetCoordSystem(MapMode mode, const CoordInfo* info) = 0;

    // The rectangle in which the painter is to paint, in logical coordinates.
    [[nodiscard]] virtual rectangle<double> GetPaintRect() const = 0;

    virtual ~IPainter() = default;
};

// The colours of the host, by number.
class NODELINE_API SysPalette {
public:
    // How many colours there are; their numbers begin with 0.
    static constexpr int kSize = 16;
    // The number of the background of a surface.
    static constexpr int kBackground = 3;

    // A white background; the colours that have no meaning of their own are black.
    SysPalette();

    // A number outside the palette gives the colour 0, and sets nothing.
    [[nodiscard]] const _color& operator[](int index) const;
    void Set(int index, const _color& color);

private:
    std::array<_color, kSize> colors_;
};

// The palette of the process. It is read whenever something is painted, on the thread that paints;
// whoever changes it asks for a repaint.
[[nodiscard]] NODELINE_API const SysPalette& GetSysPalette();
NODELINE_API void SetSysPalette(const SysPalette& palette);

}  // namespace paintcore
