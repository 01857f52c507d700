// A painter that writes an SVG document, with texts that can be selected and searched.
#pragma once

#include <backends/cairo/measuring_painter.h>
#include <corvex/export.h>
#include <paintcore/device_painter.h>

#include <map>
#include <string>
#include <tuple>
#include <vector>

namespace nodeline::cairo {

// Writes what it is asked to draw as elements of SVG. Whatever a text holds, the document stays
// well-formed.
class NODELINE_API SvgPainter : public MeasuringPainter {
public:
    // The size of the document, in pixels.
    explicit SvgPainter(const paintcore::size<double>& extent);

    // All that was drawn so far, as a document. A polyline that is still being drawn is part of it
    // from the end of the bracket on.
    [[nodiscard]] std::string GetDocument() const;

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
    using Corners = std::tuple<double, double, double, double>;
    using Colors = std::tuple<std::string, std::string>;

    // The number of a clip or gradient, which is defined when it is asked for the first time.
    std::size_t DefineClip(const paintcore::rectangle<double>& clip);
    std::size_t DefineGradient(const paintcore::_color& top, const paintcore::_color& bottom);

    // The body, inside of a group for the clip that is set.
    std::string& Body();
    void CloseGroup();
    void AppendStroke(std::string& element) const;

    paintcore::size<double> extent_;
    std::string definitions_;
    std::string body_;
    bool in_group_ = false;
    std::map<Corners, std::size_t> clips_;
    std::map<Colors, std::size_t> gradients_;
};

}  // namespace nodeline::cairo
