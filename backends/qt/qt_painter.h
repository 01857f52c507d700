// A painter on a surface of Qt: an image, a widget, a printer.
//
//   QImage image(400, 300, QImage::Format_RGB32);
//   QtPainter painter(&image);
//   painter.BeginPaint(IPainter::StdSettings::All);
//   painter.FillRect(0.0, 0.0, 400.0, 300.0);
//   painter.EndPaint();
#pragma once

#include <corvex/export.h>
#include <paintcore/device_painter.h>

#include <memory>
#include <string_view>
#include <vector>

class QPaintDevice;
class QPainter;
class QPainterPath;

namespace nodeline::qt {

class TextMetrics;

// Draws with the means of Qt. Pixels of the painter are logical pixels of Qt: on a surface of two
// device pixels to one they count twice. Edges of boxes, lines and clips are moved to whole device
// pixels, so that a line of one pixel is not smeared over two.
//
// An empty face is the family of the application's font. Measures of texts are remembered, within a
// bound, and all painters share them. Used on the interface thread, while there is an application.
class NODELINE_API QtPainter : public paintcore::DevicePainter {
public:
    // Measures texts, and what it is asked to draw goes nowhere.
    QtPainter();
    // Draws from `BeginPaint` to `EndPaint`, and goes nowhere outside. The device is not owned and
    // outlives the painter; while a bracket is open nobody else paints on it.
    explicit QtPainter(QPaintDevice* device);
    // Draws with a painter that is active for as long as this one is used, and has no
    // transformation. Its pen, brush, font, hints and clip are not kept.
    explicit QtPainter(QPainter* painter);
    ~QtPainter() override;

    void BeginPaint(StdSettings settings) override;
    void EndPaint() override;

protected:
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
    // Makes `painter` the one to draw with.
    void use(QPainter* painter);
    void use_pen();
    // The outline of a box as an area: stroked, its corners would be blurred.
    [[nodiscard]] QPainterPath frame(const paintcore::rectangle<double>& r) const;
    // The width of the current pen in device pixels, at least one.
    [[nodiscard]] int pen_dots() const;
    // Where the middle of a line of the current pen goes.
    [[nodiscard]] double align_line(double v) const;
    // The device pixels that an area touches, cut where nothing of it can be seen.
    [[nodiscard]] paintcore::rectangle<double> align_area(
        const paintcore::rectangle<double>& area) const;
    [[nodiscard]] paintcore::rectangle<double> near_part(
        const paintcore::rectangle<double>& area) const;

    QPaintDevice* device_ = nullptr;
    std::unique_ptr<QPainter> own_;
    QPainter* painter_ = nullptr;  // null while nothing can be drawn
    double ratio_ = 1.0;           // device pixels to a pixel
    paintcore::rectangle<double> reach_;
    std::shared_ptr<TextMetrics> metrics_;
};

}  // namespace nodeline::qt
