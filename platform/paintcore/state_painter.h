// The part of a painter that every painter has: the bracket, the current style, the clip and the
// coordinate system. A backend derives from it, or from `DevicePainter`, and adds the drawing.
#pragma once

#include <corvex/export.h>
#include <paintcore/painter.h>

#include <optional>

namespace paintcore {

// Keeps what has been set, and maps coordinates by it.
class NODELINE_API StatePainter : public IPainter {
public:
    // A fresh painter has the standard settings, no bracket and an empty paint rectangle.
    StatePainter();
    StatePainter(const StatePainter&) = delete;
    StatePainter& operator=(const StatePainter&) = delete;

    void BeginPaint(StdSettings settings) override;
    void EndPaint() override;
    void SetPen(const pen& p) override;
    void SetBrush(const brush& b) override;
    void SetFont(const font& f) override;
    void SetArrowSize(int length, int width) override;
    void SetTextColor(const _color& color) override;
    [[nodiscard]] bool IsPainting() const override;
    void SetClipRect(double left, double top, double right, double bottom, bool combine) override;
    void ResetClip() override;
    void GetCoordSystem(MapMode& mode, CoordInfo* info) const override;
    void SetCoordSystem(MapMode mode, const CoordInfo* info) override;
    [[nodiscard]] rectangle<double> GetPaintRect() const override;

    // Draws nothing here, but leaves the brush as the interface says.
    void GradientFill(const rectangle<double>& r, const _color& from, const _color& to, int percent,
                      int direction) override;

    // What `GetPaintRect` answers, in pixels.
    void SetDevicePaintRect(const rectangle<double>& pixels);

protected:
    // What was set last, or the standard. The size of arrowheads has the length as its `cx`.
    [[nodiscard]] const pen& GetPen() const { return pen_; }
    [[nodiscard]] const brush& GetBrush() const { return brush_; }
    [[nodiscard]] const font& GetFont() const { return font_; }
    [[nodiscard]] const _color& GetTextColor() const { return text_color_; }
    [[nodiscard]] size<int> GetArrowSize() const { return arrow_size_; }
    // In pixels, with sorted corners; empty while there is no clip.
    [[nodiscard]] const std::optional<rectangle<double>>& GetClip() const { return clip_; }

    // Pixels per logical unit; neither is 0.
    [[nodiscard]] size<double> GetScale() const { return scale_; }
    // Logical coordinates in pixels.
    [[nodiscard]] point<double> ToDevice(double x, double y) const;
    // The same, with sorted corners.
    [[nodiscard]] rectangle<double> ToDevice(const rectangle<double>& r) const;

private:
    [[nodiscard]] point<double> ToLogical(double x, double y) const;

    bool painting_ = false;
    pen pen_;
    brush brush_;
    font font_;
    _color text_color_;
    size<int> arrow_size_;
    std::optional<rectangle<double>> clip_;
    MapMode mode_ = MapMode::Identity;
    CoordInfo info_;
    size<double> scale_{1.0, 1.0};
    rectangle<double> paint_rect_;
};

}  // namespace paintcore
