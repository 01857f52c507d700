#include <formats/attribute_handlers.h>
#include <formats/colors.h>
#include <nodeline/ops/graph_ops.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace nodeline::formats {

using paintcore::_color;

// No pen is thinner than a pixel.
int PixelsOf(double pen_width) { return std::max(1, static_cast<int>(std::lround(pen_width))); }

void ApplyLook(const NodeLook& look, const Node& node, CPortNodeDrawInfo& info) {
    if (look.fill) {
        info.fill_top = *look.fill;
        info.fill_bottom = *look.fill;
        if (!IsFlagSet(node, NodeSelected | NodeNew)) {
            const bool is_lit = IsFlagSet(node, NodeHovered);
            info.text_color = ReadableOn(is_lit ? look.fill->Lightened() : *look.fill);
        }
    }
    if (look.border) info.border_color = *look.border;
    if (look.text) info.text_color = *look.text;
    if (look.pen_width) info.pen_width = PixelsOf(*look.pen_width);
}

AttributeNodeHandler::AttributeNodeHandler(std::unordered_map<int, NodeLook> looks)
    : looks_(std::move(looks)) {}

void AttributeNodeHandler::Draw(Node node, IPainter* painter) {
    const auto look = looks_.find(node.GetID());
    if (look == looks_.end()) {
        PortNodeHandler::Draw(node, painter);
        return;
    }
    CPortNodeDrawInfo& info = GetDrawInfo();
    const CPortNodeDrawInfo usual = info;
    ApplyLook(look->second, node, info);
    PortNodeHandler::Draw(node, painter);
    info = usual;
}

AttributeEdgeHandler::AttributeEdgeHandler(std::unordered_map<int, EdgeLook> looks)
    : looks_(std::move(looks)) {}

void AttributeEdgeHandler::Draw(Edge edge, IPainter* painter) {
    const auto look = looks_.find(edge.GetID());
    if (look == looks_.end()) {
        DummyEdgeHandler::Draw(edge, painter);
        return;
    }
    const _color usual_color = color;
    const int usual_width = pen_width;
    color = look->second.line.value_or(usual_color);
    if (look->second.pen_width) pen_width = PixelsOf(*look->second.pen_width);
    DummyEdgeHandler::Draw(edge, painter);
    color = usual_color;
    pen_width = usual_width;
}

graph_ptr2<PortNodeHandler> MakePortNodeHandler(const GraphLooks& looks) {
    if (looks.nodes.empty()) return {new PortNodeHandler, true};
    return {new AttributeNodeHandler(looks.nodes), true};
}

graph_ptr2<IEdgeHandler> MakeEdgeHandler(const GraphLooks& looks) {
    if (looks.edges.empty()) return {};
    return {new AttributeEdgeHandler(looks.edges), true};
}

}  // namespace nodeline::formats
