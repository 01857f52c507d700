// A painter without a surface: it measures texts as the pictures of this backend will show them,
// and what it is asked to draw goes nowhere.
//
//   MeasuringPainter painter;
//   handler->SetIPainter(&painter);
//   graph->RecalculateLayout(&painter);
#pragma once

#include <backends/cairo/text_engine.h>
#include <corvex/export.h>
#include <paintcore/device_painter.h>

#include <string_view>
#include <vector>

namespace nodeline::cairo {

// Measures texts and draws nothing; the other painters of this backend derive from it. It is used
// on the thread that made it.
class NODELINE_API MeasuringPainter : public paintcore::DevicePainter {
public:
    MeasuringPainter();

protected:
    // That of the thread that made the painter.
    [[nodiscard]] TextEngine& GetTextEngine() const { return text_engine_; }

    [[nodiscard]] paintcore::size<double> MeasureText(const paintcore::font& f,
                                                      std::string_view text) override;
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
    TextEngine& text_engine_;
};

}  // namespace nodeline::cairo
