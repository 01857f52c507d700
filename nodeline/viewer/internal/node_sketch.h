// Sketches of nodes that are too small for their look to show: each is its colour, on pixels.
#pragma once

#include <nodeline/model/geometry.h>
#include <paintcore/state_painter.h>

#include <optional>
#include <string>
#include <vector>

namespace nodeline::internal {

// A painter that draws nothing and finds out the colour of what is drawn: that of the largest area
// that is filled, darkened or lightened by a third of the first outline's, so that nodes are seen
// on owners that are filled alike. Without either it is the other.
class ColorFinder : public paintcore::StatePainter {
public:
    using IPainter::FillRect;
    using IPainter::GetTextSize;
    using IPainter::Rectangle;

    // Since the last call.
    std::optional<paintcore::_color> Take();

    void MoveTo(double x, double y) override;
    void LineTo(double x, double y) override;
    void BeginPlot(int type) override;
    void Vertex(double x, double y) override;
    void EndPlot() override;
    void Rectangle(double left, double top, double right, double bottom) override;
    void RoundRect(double left, double top, double right, double bottom, double rx,
                   double ry) override;
    void FillRect(double left, double top, double right, double bottom) override;
    void GradientFill(const rectangle<double>& r, const paintcore::_color& from,
                      const paintcore::_color& to, int percent, int direction) override;
    void DrawString(const rectangle<double>& r, const std::string& text, int format,
                    int length) override;
    // Texts measure nothing here, for none is seen.
    [[nodiscard]] size<double> GetTextSize(const std::string& text, const paintcore::font* f,
                                           int length, bool leading, bool trailing) override;

private:
    void fill(const rectangle<double>& r, const paintcore::_color& color);

    std::optional<paintcore::_color> filled_;
    std::optional<paintcore::_color> outlined_;
    double area_ = -1.0;
};

// A grid of pixels that are empty at first and then have a colour each.
class PixelSketch {
public:
    // An extent below 0 counts as 0.
    explicit PixelSketch(const size<int>& extent);

    // Whether `r`, which is in pixels, meets an empty one.
    [[nodiscard]] bool HasRoom(const rectangle<double>& r) const;
    // Colours the pixels of `r`, at least one on each axis; only the empty ones unless `replaces`.
    void Fill(const rectangle<double>& r, const paintcore::_color& color, bool replaces);
    // Paints what is not empty. The painter's units are pixels.
    void Draw(paintcore::IPainter* painter) const;

private:
    // The part of the grid that a rectangle stands for.
    [[nodiscard]] rectangle<int> cells(const rectangle<double>& r) const;
    [[nodiscard]] std::size_t index(int x, int y) const;

    size<int> extent_;
    std::vector<std::optional<paintcore::_color>> colors_;
};

}  // namespace nodeline::internal
