#include <apps/viewer/viewer_edge_handler.h>
#include <formats/attribute_handlers.h>
#include <nodeline/ops/graph_ops.h>

#include <algorithm>
#include <cmath>

namespace nodeline::app {

namespace {

// From this scale on edges have their full colour, and never less of it than the least.
constexpr double kFullScale = 0.6;
constexpr double kLeastContrast = 0.35;
constexpr int kStrongPen = 2;

int Between(int from, int to, double part) {
    return static_cast<int>(std::lround(from + (to - from) * part));
}

bool IsSelected(const Node& node) { return node && IsFlagSet(node, NodeSelected); }

}  // namespace

void ViewerEdgeHandler::SetZoomFactor(double factor) {
    DummyEdgeHandler::SetZoomFactor(factor);
    if (factor > 0.0) contrast_ = std::clamp(factor / kFullScale, kLeastContrast, 1.0);
}

void ViewerEdgeHandler::Draw(Edge edge, IPainter* painter) {
    const paintcore::_color usual = color;
    const int pen = pen_width;
    const auto found = looks_.find(edge.GetID());
    const formats::EdgeLook* const look = found != looks_.end() ? &found->second : nullptr;
    if (look != nullptr && look->pen_width) pen_width = formats::PixelsOf(*look->pen_width);
    if (IsSelected(edge.From()) || IsSelected(edge.To())) {
        color = strong_color;
        pen_width = std::max(pen_width, kStrongPen);
    } else if (IsFlagSet(edge, EdgeHovered)) {
        color = strong_color;
    } else {
        const paintcore::_color full = look != nullptr && look->line ? *look->line : usual;
        color = {Between(background.red, full.red, contrast_),
                 Between(background.green, full.green, contrast_),
                 Between(background.blue, full.blue, contrast_)};
    }
    DummyEdgeHandler::Draw(edge, painter);
    color = usual;
    pen_width = pen;
}

}  // namespace nodeline::app
