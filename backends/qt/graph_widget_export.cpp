#include <backends/qt/graph_widget.h>
#include <backends/qt/qt_painter.h>
#include <nodeline/viewer/draw_functions.h>
#include <paintcore/pixel_grid.h>

#ifdef NODELINE_WITH_CAIRO
#include <backends/cairo/picture.h>
#endif

#include <QFileInfo>
#include <QImage>
#include <QPointer>
#include <QSaveFile>
#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

// Pictures in files.

namespace nodeline::qt {

using paintcore::CoordInfo;

namespace {

// What a QImage can hold, and what memory can.
constexpr double kMaxSide = 32767.0;
constexpr double kMaxPixels = 268435456.0;

// A part of a graph as a picture.
struct Part {
    graph_ptr2<Graph> graph;
    rectangle<double> area;
    double scale = 1.0;

    // In pixels; what rounding has left beyond a whole one does not count.
    [[nodiscard]] nodeline::size<double> Extent() const {
        const auto pixels = [this](double from, double to) {
            return std::max(1.0, paintcore::CeilToPixel((to - from) * scale));
        };
        return {pixels(area.left, area.right), pixels(area.top, area.bottom)};
    }

    // The painter is in a bracket, and the background is there.
    void Draw(IPainter& painter) const {
        const nodeline::size<double> extent = Extent();
        CoordInfo info;
        info.logical_origin = {area.left, area.top};
        info.logical_extent = {extent.cx / scale, extent.cy / scale};
        info.device_extent = {static_cast<int>(extent.cx), static_cast<int>(extent.cy)};
        painter.SetCoordSystem(paintcore::MapMode::Rectangle, &info);
        DrawGraphIn(graph, area, &painter, scale);
    }
};

Part WholeGraph(const graph_ptr2<Graph>& graph) {
    const Node root = graph->GetRoot();
    return {graph, MakeDRect(root.GetPosition(), root.GetSize()), 1.0};
}

Part VisiblePart(const CGraphViewer& viewer) {
    const rectangle<int> r = viewer.GetContent()->GetContentRect();
    const double x = viewer.GetStartX();
    const double y = viewer.GetStartY();
    const double scale = viewer.GetScale();
    return {viewer.GetGraph(), {x, y, x + r.right / scale, y + r.bottom / scale}, scale};
}

// Null if it is too large.
QImage MakeImage(const Part& part) {
    const nodeline::size<double> extent = part.Extent();
    const bool fits =
        extent.cx <= kMaxSide && extent.cy <= kMaxSide && extent.cx * extent.cy <= kMaxPixels;
    if (!fits) return {};
    QImage image(static_cast<int>(extent.cx), static_cast<int>(extent.cy), QImage::Format_RGB32);
    if (image.isNull()) return image;
    QtPainter painter(&image);
    painter.SetDevicePaintRect({0.0, 0.0, extent.cx, extent.cy});
    painter.BeginPaint(IPainter::StdSettings::All);
    painter.SetBrush({paintcore::GetSysPalette()[paintcore::SysPalette::kBackground], 1});
    painter.FillRect(0.0, 0.0, extent.cx, extent.cy);
    part.Draw(painter);
    painter.EndPaint();
    return image;
}

// An empty answer is a success.
QString WritePng(const Part& part, const QString& path) {
    const QImage image = MakeImage(part);
    if (image.isNull()) return QStringLiteral("the picture is too large for a PNG");
    QSaveFile file(path);
    const bool is_written =
        file.open(QIODevice::WriteOnly) && image.save(&file, "PNG") && file.commit();
    if (is_written) return {};
    return QStringLiteral("cannot write %1: %2").arg(path, file.errorString());
}

#ifdef NODELINE_WITH_CAIRO

QString WriteWithCairo(const Part& part, const QString& path, cairo::PictureFormat format) {
    std::string error;
    const auto picture = cairo::MakePicture(format, part.Extent(), 1.0, &error);
    if (picture == nullptr) return QString::fromStdString(error);
    picture->Draw([&part](IPainter& painter) { part.Draw(painter); });
    if (picture->Save(path.toStdString(), &error)) return {};
    return QString::fromStdString(error);
}

#endif

QString WritePicture(const Part& part, const QString& path) {
    const QString ending = QFileInfo(path).suffix().toLower();
    if (ending == QLatin1String("png")) return WritePng(part, path);
    if (ending != QLatin1String("svg") && ending != QLatin1String("pdf")) {
        return QStringLiteral("%1 ends in none of .svg, .pdf and .png").arg(path);
    }
#ifdef NODELINE_WITH_CAIRO
    return WriteWithCairo(
        part, path,
        ending == QLatin1String("svg") ? cairo::PictureFormat::kSvg : cairo::PictureFormat::kPdf);
#else
    return QStringLiteral("SVG and PDF pictures need a library that was built with Cairo");
#endif
}

}  // namespace

QImage GraphWidget::picture(bool visible_part_only) {
    finishGlide();
    const QPointer<GraphWidget> self(this);
    if (viewer() != nullptr) viewer()->RecalculateLayout();
    if (!self || viewer() == nullptr) return {};
    const graph_ptr2<Graph> graph = viewer()->GetGraph();
    MarkDrawnIn(graph);
    return MakeImage(visible_part_only ? VisiblePart(*viewer()) : WholeGraph(graph));
}

bool GraphWidget::exportPicture(const QString& path, bool visible_part_only, QString* error) {
    finishGlide();
    const QPointer<GraphWidget> self(this);
    if (viewer() != nullptr) viewer()->RecalculateLayout();
    QString reason = QStringLiteral("there is no viewer any more");
    if (self && viewer() != nullptr) {
        const graph_ptr2<Graph> graph = viewer()->GetGraph();
        MarkDrawnIn(graph);
        reason = WritePicture(visible_part_only ? VisiblePart(*viewer()) : WholeGraph(graph), path);
    }
    if (error != nullptr) *error = reason;
    return reason.isEmpty();
}

}  // namespace nodeline::qt
