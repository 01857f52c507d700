// A painter on a Cairo context: an image, a page of a PDF, a window of a toolkit that knows Cairo.
#pragma once

#include <backends/cairo/measuring_painter.h>
#include <cairo.h>
#include <corvex/export.h>
#include <paintcore/device_painter.h>

#include <vector>

namespace nodeline::cairo {

// What becomes of the edges of boxes, lines and clips.
enum class EdgeMode {
    // They stay where they are: for surfaces that can be scaled afterwards.
    kExact,
    // They are moved to whole pixels, so that a line of one pixel is not smeared over two: for
    // images, whose context has the identity as its matrix.
    kAligned
};

// Draws on a Cairo context, whatever that writes to.
class NODELINE_API CairoPainter : public MeasuringPainter {
public:
    // Pixels of the painter are units of `context`, of which the painter keeps a reference.
    // The clip of the context belongs to the painter while it paints.
    CairoPainter(cairo_t* context, EdgeMode edges);
    ~CairoPainter() override;

protected:
    void StrokePolyline(const std::vector<paintcore::point<double>>& points) override;
    void FillPolygon(const std::vector<paintcore::point<double>>& points,
                     const paintcore::_color& color) override;
    void DrawBox(const paintcore::rectangle<double>& box, const paintcore::size<double>& radii,
                 bool fill, bool outline) override;
    void DrawGradient(const paintcore::rectangle<double>& box, const paintcore::_color& top,
                      const paintcore::_color& bottom) override;
    void DrawLine(const paintcore::TextLine& line) override;
    void ApplyClip() override;

private:
    void UseColor(const paintcore::_color& color);
    void UsePen();
    // Where the middle of a line of the current pen goes.
    [[nodiscard]] double AlignLine(double v) const;
    // The pixels that an area touches.
    [[nodiscard]] paintcore::rectangle<double> AlignArea(
        const paintcore::rectangle<double>& area) const;

    cairo_t* context_;
    EdgeMode edges_;
};

}  // namespace nodeline::cairo
