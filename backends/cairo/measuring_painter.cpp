#include <backends/cairo/measuring_painter.h>

namespace nodeline::cairo {

using paintcore::_color;
using paintcore::font;
using paintcore::point;
using paintcore::rectangle;
using paintcore::size;

MeasuringPainter::MeasuringPainter() : text_engine_(TextEngine::ForThisThread()) {}

size<double> MeasuringPainter::MeasureText(const font& f, std::string_view text) {
    const TextExtent extent = text_engine_.Measure(f, text);
    return {extent.width, extent.height};
}

void MeasuringPainter::StrokePolyline(const std::vector<point<double>>& /*points*/) {}

void MeasuringPainter::FillPolygon(const std::vector<point<double>>& /*points*/,
                                   const _color& /*color*/) {}

void MeasuringPainter::DrawBox(const rectangle<double>& /*box*/, const size<double>& /*radii*/,
                               bool /*fill*/, bool /*outline*/) {}

void MeasuringPainter::DrawGradient(const rectangle<double>& /*box*/, const _color& /*top*/,
                                    const _color& /*bottom*/) {}

void MeasuringPainter::DrawLine(const paintcore::TextLine& /*line*/) {}

void MeasuringPainter::ApplyClip() {}

}  // namespace nodeline::cairo
