// The painter of one element: pixels are those of the element, and nothing shows outside of it.
#pragma once

#include <paintcore/state_painter.h>

#include <string>

namespace viewkit::internal {

// Passes everything on to the painter of the window, whose bracket stays open.
class ElementPainter : public paintcore::StatePainter {
public:
    using IPainter::FillRect;
    using IPainter::GetTextSize;
    using IPainter::Rectangle;

    // `origin` is the pixel (0, 0) of the element in the window, `visible` what shows of it there.
    ElementPainter(paintcore::IPainter* window, const paintcore::point<int>& origin,
                   const paintcore::rectangle<int>& visible);

    void BeginPaint(StdSettings settings) override;
    void SetPen(const paintcore::pen& p) override;
    void SetBrush(const paintcore::brush& b) override;
    void SetFont(const paintcore::font& f) override;
    void SetArrowSize(int length, int width) override;
    void SetTextColor(const paintcore::_color& color) override;
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
    void SetCoordSystem(paintcore::MapMode mode, const paintcore::CoordInfo* info) override;

private:
    void pass_coords();

    paintcore::IPainter* window_;
    paintcore::point<int> origin_;
};

}  // namespace viewkit::internal
