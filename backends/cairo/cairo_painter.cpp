#include <backends/cairo/cairo_painter.h>
#include <paintcore/pixel_grid.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace nodeline::cairo {

using paintcore::_color;
using paintcore::CeilToPixel;
using paintcore::FloorToPixel;
using paintcore::pen;
using paintcore::point;
using paintcore::rectangle;
using paintcore::size;

namespace {

// Cairo holds coordinates in 24 bits before the point; what lies beyond wraps round.
constexpr double kFarthest = 8.0e6;
constexpr rectangle<double> kReach{-kFarthest, -kFarthest, kFarthest, kFarthest};

// Moving the edges of a box that far out does not change what can be seen of it.
double Near(double v) { return std::isnan(v) ? 0.0 : std::clamp(v, -kFarthest, kFarthest); }

rectangle<double> Near(const rectangle<double>& r) {
    return {Near(r.left), Near(r.top), Near(r.right), Near(r.bottom)};
}

// Quarters of an ellipse as curves, which cannot bring the matrix of the context out of order.
void AddRoundBox(cairo_t* context, const rectangle<double>& box, const size<double>& radii) {
    constexpr double kCurve = 0.5522847498307936;
    const auto& [left, top, right, bottom] = box;
    const double rx = std::min(radii.cx, (right - left) / 2.0);
    const double ry = std::min(radii.cy, (bottom - top) / 2.0);
    const double cx = rx - rx * kCurve;
    const double cy = ry - ry * kCurve;
    cairo_move_to(context, left + rx, top);
    cairo_line_to(context, right - rx, top);
    cairo_curve_to(context, right - cx, top, right, top + cy, right, top + ry);
    cairo_line_to(context, right, bottom - ry);
    cairo_curve_to(context, right, bottom - cy, right - cx, bottom, right - rx, bottom);
    cairo_line_to(context, left + rx, bottom);
    cairo_curve_to(context, left + cx, bottom, left, bottom - cy, left, bottom - ry);
    cairo_line_to(context, left, top + ry);
    cairo_curve_to(context, left, top + cy, left + cx, top, left + rx, top);
    cairo_close_path(context);
}

void AddBox(cairo_t* context, const rectangle<double>& box) {
    cairo_rectangle(context, box.left, box.top, box.right - box.left, box.bottom - box.top);
}

void AddStop(cairo_pattern_t* pattern, double offset, const _color& color) {
    cairo_pattern_add_color_stop_rgba(pattern, offset, color.red / 255.0, color.green / 255.0,
                                      color.blue / 255.0, color.alpha / 255.0);
}

}  // namespace

CairoPainter::CairoPainter(cairo_t* context, EdgeMode edges)
    : context_(cairo_reference(context)), edges_(edges) {}

CairoPainter::~CairoPainter() { cairo_destroy(context_); }

void CairoPainter::StrokePolyline(const std::vector<point<double>>& points) {
    UsePen();
    std::optional<point<double>> last;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const auto segment = paintcore::CutSegment(points[i - 1], points[i], kReach);
        if (!segment) continue;
        const auto& [from, to] = *segment;
        if (last != from) cairo_move_to(context_, AlignLine(from.x), AlignLine(from.y));
        cairo_line_to(context_, AlignLine(to.x), AlignLine(to.y));
        last = to;
    }
    cairo_stroke(context_);
}

void CairoPainter::FillPolygon(const std::vector<point<double>>& points, const _color& color) {
    const bool far = std::any_of(points.begin(), points.end(), [](const point<double>& p) {
        return p.x != Near(p.x) || p.y != Near(p.y);
    });
    if (far) return;
    UseColor(color);
    // A line that is moved to the middle of its pixel takes its arrowhead along.
    const point<double> tip = points.front();
    const point<double> shift{AlignLine(tip.x) - tip.x, AlignLine(tip.y) - tip.y};
    for (const auto& p : points) {
        cairo_line_to(context_, p.x + shift.x, p.y + shift.y);
    }
    cairo_close_path(context_);
    cairo_fill(context_);
}

void CairoPainter::DrawBox(const rectangle<double>& box, const size<double>& radii, bool fill,
                           bool outline) {
    rectangle<double> r = Near(box);
    if (outline) {
        r = {AlignLine(r.left), AlignLine(r.top), AlignLine(r.right), AlignLine(r.bottom)};
    } else {
        r = AlignArea(r);
    }
    if (radii.cx > 0.0) {
        AddRoundBox(context_, r, radii);
    } else {
        AddBox(context_, r);
    }
    if (fill) {
        UseColor(GetBrush().color);
        cairo_fill_preserve(context_);
    }
    if (outline) {
        UsePen();
        cairo_stroke_preserve(context_);
    }
    cairo_new_path(context_);
}

void CairoPainter::DrawGradient(const rectangle<double>& box, const _color& top,
                                const _color& bottom) {
    cairo_pattern_t* pattern = cairo_pattern_create_linear(0.0, box.top, 0.0, box.bottom);
    AddStop(pattern, 0.0, top);
    AddStop(pattern, 1.0, bottom);
    cairo_set_source(context_, pattern);
    cairo_pattern_destroy(pattern);
    AddBox(context_, AlignArea(Near(box)));
    cairo_fill(context_);
}

void CairoPainter::DrawLine(const paintcore::TextLine& line) {
    const rectangle<double> clip = Near(line.clip);
    cairo_save(context_);
    AddBox(context_, AlignArea(clip));
    cairo_clip(context_);
    UseColor(GetTextColor());
    point<double> origin = line.origin;
    if (edges_ == EdgeMode::kAligned) {
        const double baseline = GetTextEngine().Measure(GetFont(), line.text).baseline;
        origin.y = std::round(origin.y + baseline) - baseline;
    }
    GetTextEngine().Draw(context_, GetFont(), line.text, origin, clip,
                         edges_ == EdgeMode::kAligned);
    cairo_restore(context_);
}

void CairoPainter::ApplyClip() {
    cairo_reset_clip(context_);
    if (!GetClip()) return;
    AddBox(context_, AlignArea(Near(*GetClip())));
    cairo_clip(context_);
}

void CairoPainter::UseColor(const _color& color) {
    cairo_set_source_rgba(context_, color.red / 255.0, color.green / 255.0, color.blue / 255.0,
                          color.alpha / 255.0);
}

void CairoPainter::UsePen() {
    const pen& p = GetPen();
    UseColor(p.color);
    cairo_set_line_width(context_, std::max(p.width, 1));
    constexpr cairo_line_cap_t kCaps[] = {CAIRO_LINE_CAP_BUTT, CAIRO_LINE_CAP_ROUND,
                                          CAIRO_LINE_CAP_SQUARE};
    constexpr cairo_line_join_t kJoins[] = {CAIRO_LINE_JOIN_MITER, CAIRO_LINE_JOIN_ROUND,
                                            CAIRO_LINE_JOIN_BEVEL};
    cairo_set_line_cap(context_, kCaps[std::clamp(p.cap, 0, 2)]);
    cairo_set_line_join(context_, kJoins[std::clamp(p.join, 0, 2)]);
}

double CairoPainter::AlignLine(double v) const {
    if (edges_ == EdgeMode::kExact) return v;
    const bool odd = std::max(GetPen().width, 1) % 2 == 1;
    return odd ? FloorToPixel(v) + 0.5 : FloorToPixel(v + 0.5);
}

rectangle<double> CairoPainter::AlignArea(const rectangle<double>& area) const {
    if (edges_ == EdgeMode::kExact) return area;
    return {FloorToPixel(area.left), FloorToPixel(area.top), CeilToPixel(area.right),
            CeilToPixel(area.bottom)};
}

}  // namespace nodeline::cairo
