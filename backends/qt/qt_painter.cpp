#include <backends/qt/internal/text_metrics.h>
#include <backends/qt/qt_painter.h>
#include <paintcore/pixel_grid.h>

#include <QColor>
#include <QLinearGradient>
#include <QPaintDevice>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QPolygonF>
#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace nodeline::qt {

using paintcore::_color;
using paintcore::CeilToPixel;
using paintcore::FloorToPixel;
using paintcore::pen;
using paintcore::point;
using paintcore::rectangle;
using paintcore::size;

namespace {

// How far beyond the surface coordinates are kept: Qt's rasteriser holds them in 16 bits.
constexpr double kMargin = 4096.0;

QColor ToColor(const _color& c) { return {c.red, c.green, c.blue, c.alpha}; }

QRectF ToRect(const rectangle<double>& r) {
    return {r.left, r.top, r.right - r.left, r.bottom - r.top};
}

}  // namespace

QtPainter::QtPainter() : metrics_(TextMetrics::Shared()) {}

QtPainter::QtPainter(QPaintDevice* device) : device_(device), metrics_(TextMetrics::Shared()) {}

QtPainter::QtPainter(QPainter* painter) : metrics_(TextMetrics::Shared()) { use(painter); }

QtPainter::~QtPainter() = default;

void QtPainter::use(QPainter* painter) {
    painter_ = painter;
    QPaintDevice* const device = painter->device();
    ratio_ = device->devicePixelRatioF();
    reach_ = {-kMargin, -kMargin, device->width() + kMargin, device->height() + kMargin};
    painter->setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
}

void QtPainter::BeginPaint(StdSettings settings) {
    if (device_ != nullptr && own_ == nullptr) {
        own_ = std::make_unique<QPainter>(device_);
        if (own_->isActive()) use(own_.get());
    }
    DevicePainter::BeginPaint(settings);
}

void QtPainter::EndPaint() {
    DevicePainter::EndPaint();
    if (own_ == nullptr) return;
    painter_ = nullptr;
    own_.reset();
}

size<double> QtPainter::MeasureText(const paintcore::font& f, std::string_view text) {
    return metrics_->Measure(f, text);
}

void QtPainter::StrokePolyline(const std::vector<point<double>>& points) {
    if (painter_ == nullptr) return;
    QPainterPath path;
    std::optional<point<double>> last;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const auto segment = paintcore::CutSegment(points[i - 1], points[i], reach_);
        if (!segment) continue;
        const auto& [from, to] = *segment;
        if (last != from) path.moveTo(align_line(from.x), align_line(from.y));
        path.lineTo(align_line(to.x), align_line(to.y));
        last = to;
    }
    use_pen();
    painter_->setBrush(Qt::NoBrush);
    painter_->drawPath(path);
}

void QtPainter::FillPolygon(const std::vector<point<double>>& points, const _color& color) {
    const auto is_far = [this](const point<double>& p) {
        return p.x < reach_.left || p.x > reach_.right || p.y < reach_.top || p.y > reach_.bottom;
    };
    if (painter_ == nullptr || std::any_of(points.begin(), points.end(), is_far)) return;
    // A line that is moved to the middle of its pixel takes its arrowhead along.
    const point<double> tip = points.front();
    const QPointF shift(align_line(tip.x) - tip.x, align_line(tip.y) - tip.y);
    QPolygonF polygon;
    for (const auto& p : points) polygon << QPointF(p.x, p.y) + shift;
    painter_->setPen(Qt::NoPen);
    painter_->setBrush(ToColor(color));
    painter_->drawPolygon(polygon);
}

void QtPainter::DrawBox(const rectangle<double>& box, const size<double>& radii, bool fill,
                        bool outline) {
    if (painter_ == nullptr) return;
    rectangle<double> r = near_part(box);
    if (outline) {
        r = {align_line(r.left), align_line(r.top), align_line(r.right), align_line(r.bottom)};
        use_pen();
    } else {
        r = align_area(r);
        painter_->setPen(Qt::NoPen);
    }
    painter_->setBrush(fill ? QBrush(ToColor(GetBrush().color)) : QBrush(Qt::NoBrush));
    if (radii.cx > 0.0) {
        painter_->drawRoundedRect(ToRect(r), radii.cx, radii.cy);
    } else if (outline && GetPen().join == 0) {
        if (fill) painter_->fillRect(ToRect(r), painter_->brush());
        painter_->fillPath(frame(r), ToColor(GetPen().color));
    } else {
        painter_->drawRect(ToRect(r));
    }
}

void QtPainter::DrawGradient(const rectangle<double>& box, const _color& top,
                             const _color& bottom) {
    if (painter_ == nullptr) return;
    QLinearGradient gradient(0.0, box.top, 0.0, box.bottom);
    gradient.setColorAt(0.0, ToColor(top));
    gradient.setColorAt(1.0, ToColor(bottom));
    painter_->fillRect(ToRect(align_area(near_part(box))), gradient);
}

void QtPainter::DrawLine(const paintcore::TextLine& line) {
    if (painter_ == nullptr) return;
    const rectangle<double> clip = align_area(near_part(line.clip));
    painter_->save();
    painter_->setClipRect(ToRect(clip), Qt::IntersectClip);
    painter_->setPen(ToColor(GetTextColor()));
    painter_->setFont(metrics_->GetFont(GetFont()));
    const double baseline = line.origin.y + metrics_->GetBaseline(GetFont());
    const double y = std::round(baseline * ratio_) / ratio_;
    const double scale = TextMetrics::GetScale(GetFont());
    painter_->translate(line.origin.x, y);
    painter_->scale(scale, scale);
    double x = line.origin.x;
    for (const QString& piece : CutText(PrintableText(line.text))) {
        if (x >= clip.right) break;
        const double end = x + metrics_->GetWidth(GetFont(), piece);
        if (end > clip.left) painter_->drawText(QPointF((x - line.origin.x) / scale, 0.0), piece);
        x = end;
    }
    painter_->restore();
}

void QtPainter::ApplyClip() {
    if (painter_ == nullptr) return;
    if (GetClip()) {
        painter_->setClipRect(ToRect(align_area(near_part(*GetClip()))));
    } else {
        painter_->setClipping(false);
    }
}

void QtPainter::use_pen() {
    const pen& p = GetPen();
    constexpr Qt::PenCapStyle kCaps[] = {Qt::FlatCap, Qt::RoundCap, Qt::SquareCap};
    constexpr Qt::PenJoinStyle kJoins[] = {Qt::SvgMiterJoin, Qt::RoundJoin, Qt::BevelJoin};
    QPen made(ToColor(p.color), pen_dots() / ratio_, Qt::SolidLine, kCaps[std::clamp(p.cap, 0, 2)],
              kJoins[std::clamp(p.join, 0, 2)]);
    constexpr double kMiterLimit = 10.0;
    made.setMiterLimit(kMiterLimit);
    painter_->setPen(made);
}

QPainterPath QtPainter::frame(const rectangle<double>& r) const {
    const double half = pen_dots() / ratio_ / 2.0;
    QPainterPath path;
    path.addRect(ToRect(r).adjusted(-half, -half, half, half));
    const QRectF inside = ToRect(r).adjusted(half, half, -half, -half);
    if (inside.isValid()) path.addRect(inside);
    return path;
}

int QtPainter::pen_dots() const {
    return std::max(1, static_cast<int>(std::lround(std::max(GetPen().width, 1) * ratio_)));
}

double QtPainter::align_line(double v) const {
    const double dots = v * ratio_;
    const bool odd = pen_dots() % 2 == 1;
    return (odd ? FloorToPixel(dots) + 0.5 : FloorToPixel(dots + 0.5)) / ratio_;
}

rectangle<double> QtPainter::align_area(const rectangle<double>& area) const {
    const auto floor = [this](double v) { return FloorToPixel(v * ratio_) / ratio_; };
    const auto ceil = [this](double v) { return CeilToPixel(v * ratio_) / ratio_; };
    return {floor(area.left), floor(area.top), ceil(area.right), ceil(area.bottom)};
}

rectangle<double> QtPainter::near_part(const rectangle<double>& area) const {
    return {std::clamp(area.left, reach_.left, reach_.right),
            std::clamp(area.top, reach_.top, reach_.bottom),
            std::clamp(area.right, reach_.left, reach_.right),
            std::clamp(area.bottom, reach_.top, reach_.bottom)};
}

}  // namespace nodeline::qt
