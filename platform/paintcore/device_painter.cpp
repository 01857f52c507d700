#include <paintcore/device_painter.h>

#include <paintcore/utf8.h>

#include <algorithm>
#include <cmath>

namespace paintcore {
namespace {

bool IsFinite(const point<double>& p) { return std::isfinite(p.x) && std::isfinite(p.y); }

bool IsFinite(const rectangle<double>& r) {
    return std::isfinite(r.left) && std::isfinite(r.top) && std::isfinite(r.right) &&
           std::isfinite(r.bottom);
}

// Tip first. An arrow without a direction points to the right, where edges run.
std::vector<point<double>> ArrowheadPolygon(const point<double>& from, const point<double>& tip,
                                            const size<int>& arrow) {
    const double dx = tip.x - from.x;
    const double dy = tip.y - from.y;
    const double distance = std::sqrt(dx * dx + dy * dy);
    point<double> along{1.0, 0.0};
    if (distance > 0.0 && std::isfinite(distance)) along = {dx / distance, dy / distance};
    const point<double> base{tip.x - along.x * arrow.cx, tip.y - along.y * arrow.cx};
    const point<double> across{-along.y * arrow.cy * 0.5, along.x * arrow.cy * 0.5};
    return {tip, base + across, base - across};
}

}  // namespace

void DevicePainter::BeginPaint(StdSettings settings) {
    Flush();
    StatePainter::BeginPaint(settings);
    ApplyClip();
}

void DevicePainter::EndPaint() {
    Flush();
    StatePainter::EndPaint();
}

void DevicePainter::SetPen(const pen& p) {
    Flush();
    StatePainter::SetPen(p);
}

void DevicePainter::MoveTo(double x, double y) {
    Flush();
    polyline_.assign(1, ToDevice(x, y));
}

void DevicePainter::LineTo(double x, double y) {
    if (polyline_.empty()) polyline_.push_back(ToDevice(0.0, 0.0));
    polyline_.push_back(ToDevice(x, y));
}

void DevicePainter::BeginPlot(int type) {
    plot_type_ = type;
    plot_.clear();
}

void DevicePainter::Vertex(double x, double y) { plot_.push_back(ToDevice(x, y)); }

void DevicePainter::EndPlot() {
    Flush();
    const bool is_arrowhead =
        plot_type_ == PlotArrowhead && plot_.size() >= 2 && GetPen().style != 0;
    if (is_arrowhead && IsFinite(plot_[0]) && IsFinite(plot_[1])) {
        FillPolygon(ArrowheadPolygon(plot_[0], plot_[1], GetArrowSize()), GetPen().color);
    }
    plot_type_ = 0;
    plot_.clear();
}

void DevicePainter::Rectangle(double left, double top, double right, double bottom) {
    DrawShape({left, top, right, bottom}, {0.0, 0.0}, GetBrush().style != 0, GetPen().style != 0);
}

void DevicePainter::RoundRect(double left, double top, double right, double bottom, double rx,
                              double ry) {
    const size<double> scale = GetScale();
    DrawShape({left, top, right, bottom}, {std::fabs(rx * scale.cx), std::fabs(ry * scale.cy)},
              GetBrush().style != 0, GetPen().style != 0);
}

void DevicePainter::FillRect(double left, double top, double right, double bottom) {
    DrawShape({left, top, right, bottom}, {0.0, 0.0}, GetBrush().style != 0, false);
}

void DevicePainter::DrawShape(const rectangle<double>& r, const size<double>& radii, bool fill,
                              bool outline) {
    Flush();
    const rectangle<double> box = ToDevice(r);
    if (!(fill || outline) || !IsFinite(box)) return;
    const double rx = std::min(radii.cx, (box.right - box.left) / 2.0);
    const double ry = std::min(radii.cy, (box.bottom - box.top) / 2.0);
    const bool round = rx > 0.0 && ry > 0.0;
    DrawBox(box, round ? size<double>{rx, ry} : size<double>{}, fill, outline);
}

void DevicePainter::GradientFill(const rectangle<double>& r, const _color& from, const _color& to,
                                 int percent, int direction) {
    Flush();
    const rectangle<double> box = ToDevice(r);
    if (IsFinite(box)) DrawGradient(box, from, to);
    StatePainter::GradientFill(r, from, to, percent, direction);
}

void DevicePainter::DrawString(const rectangle<double>& r, const std::string& text, int format,
                               int length) {
    Flush();
    TextLine line;
    line.text = FirstBytes(text, length);
    line.clip = ToDevice(r);
    if (line.text.empty() || !IsFinite(line.clip)) return;
    line.extent = MeasureText(GetFont(), line.text);
    if (!(line.extent.cy > 0.0)) return;
    line.centred = format == TextCentred;
    if (line.centred) {
        line.origin = {(line.clip.left + line.clip.right - line.extent.cx) / 2.0,
                       (line.clip.top + line.clip.bottom - line.extent.cy) / 2.0};
    } else {
        // A strip of one and a half lines is what a caption gets; this sets it in its middle.
        const double margin = line.extent.cy / 4.0;
        line.origin = {line.clip.left + margin, line.clip.top + margin};
    }
    DrawLine(line);
}

size<double> DevicePainter::GetTextSize(const std::string& text, const font* f, int length,
                                        bool /*leading*/, bool /*trailing*/) {
    const size<double> pixels =
        MeasureText(f != nullptr ? *f : GetFont(), FirstBytes(text, length));
    const size<double> scale = GetScale();
    return {pixels.cx / std::fabs(scale.cx), pixels.cy / std::fabs(scale.cy)};
}

void DevicePainter::SetClipRect(double left, double top, double right, double bottom,
                                bool combine) {
    Flush();
    StatePainter::SetClipRect(left, top, right, bottom, combine);
    ApplyClip();
}

void DevicePainter::ResetClip() {
    Flush();
    StatePainter::ResetClip();
    ApplyClip();
}

void DevicePainter::Flush() {
    if (polyline_.size() < 2) return;
    const bool finite = std::all_of(polyline_.begin(), polyline_.end(),
                                    [](const point<double>& p) { return IsFinite(p); });
    if (finite && GetPen().style != 0) StrokePolyline(polyline_);
    polyline_.erase(polyline_.begin(), polyline_.end() - 1);
}

}  // namespace paintcore
