#include <viewkit/internal/element_painter.h>

#include <algorithm>

namespace viewkit::internal {

using paintcore::CoordInfo;
using paintcore::MapMode;
using paintcore::rectangle;

ElementPainter::ElementPainter(paintcore::IPainter* window, const paintcore::point<int>& origin,
                               const rectangle<int>& visible)
    : window_(window), origin_(origin) {
    SetDevicePaintRect({static_cast<double>(visible.left - origin.x),
                        static_cast<double>(visible.top - origin.y),
                        static_cast<double>(visible.right - origin.x),
                        static_cast<double>(visible.bottom - origin.y)});
}

void ElementPainter::BeginPaint(StdSettings settings) {
    StatePainter::BeginPaint(settings);
    window_->BeginPaint(settings);
    if (settings == StdSettings::Coords || settings == StdSettings::All) {
        pass_coords();
        ResetClip();
    }
}

void ElementPainter::pass_coords() {
    MapMode mode = MapMode::Identity;
    CoordInfo info;
    GetCoordSystem(mode, &info);
    if (mode == MapMode::Identity) info = {};
    info.device_origin += origin_;
    window_->SetCoordSystem(MapMode::Rectangle, &info);
}

void ElementPainter::SetCoordSystem(MapMode mode, const CoordInfo* info) {
    StatePainter::SetCoordSystem(mode, info);
    pass_coords();
}

void ElementPainter::SetClipRect(double left, double top, double right, double bottom,
                                 bool combine) {
    StatePainter::SetClipRect(left, top, right, bottom, combine);
    const rectangle<double> frame = GetPaintRect();
    const double l = std::max(std::min(left, right), frame.left);
    const double t = std::max(std::min(top, bottom), frame.top);
    window_->SetClipRect(l, t, std::max(l, std::min(std::max(left, right), frame.right)),
                         std::max(t, std::min(std::max(top, bottom), frame.bottom)), combine);
}

void ElementPainter::ResetClip() {
    StatePainter::ResetClip();
    const rectangle<double> frame = GetPaintRect();
    window_->SetClipRect(frame.left, frame.top, frame.right, frame.bottom, false);
}

void ElementPainter::SetPen(const paintcore::pen& p) {
    StatePainter::SetPen(p);
    window_->SetPen(p);
}

void ElementPainter::SetBrush(const paintcore::brush& b) {
    StatePainter::SetBrush(b);
    window_->SetBrush(b);
}

void ElementPainter::SetFont(const paintcore::font& f) {
    StatePainter::SetFont(f);
    window_->SetFont(f);
}

void ElementPainter::SetArrowSize(int length, int width) {
    StatePainter::SetArrowSize(length, width);
    window_->SetArrowSize(length, width);
}

void ElementPainter::SetTextColor(const paintcore::_color& color) {
    StatePainter::SetTextColor(color);
    window_->SetTextColor(color);
}

void ElementPainter::MoveTo(double x, double y) { window_->MoveTo(x, y); }

void ElementPainter::LineTo(double x, double y) { window_->LineTo(x, y); }

void ElementPainter::BeginPlot(int type) { window_->BeginPlot(type); }

void ElementPainter::Vertex(double x, double y) { window_->Vertex(x, y); }

void ElementPainter::EndPlot() { window_->EndPlot(); }

void ElementPainter::Rectangle(double left, double top, double right, double bottom) {
    window_->Rectangle(left, top, right, bottom);
}

void ElementPainter::RoundRect(double left, double top, double right, double bottom, double rx,
                               double ry) {
    window_->RoundRect(left, top, right, bottom, rx, ry);
}

void ElementPainter::FillRect(double left, double top, double right, double bottom) {
    window_->FillRect(left, top, right, bottom);
}

void ElementPainter::GradientFill(const rectangle<double>& r, const paintcore::_color& from,
                                  const paintcore::_color& to, int percent, int direction) {
    StatePainter::GradientFill(r, from, to, percent, direction);
    window_->GradientFill(r, from, to, percent, direction);
}

void ElementPainter::DrawString(const rectangle<double>& r, const std::string& text, int format,
                                int length) {
    window_->DrawString(r, text, format, length);
}

paintcore::size<double> ElementPainter::GetTextSize(const std::string& text,
                                                    const paintcore::font* f, int length,
                                                    bool leading, bool trailing) {
    return window_->GetTextSize(text, f, length, leading, trailing);
}

}  // namespace viewkit::internal
