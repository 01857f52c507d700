#include <backends/qt/internal/glide.h>
#include <nodeline/ops/graph_ops.h>

#include <cstddef>

namespace nodeline::qt {

namespace {

// More would glide in a few jerks.
constexpr int kMostItems = 3000;

rectangle<double> Around(const CGraphViewer& viewer) {
    const rectangle<int> r = viewer.GetContent()->GetContentRect();
    const double width = r.right / viewer.GetScale();
    const double height = r.bottom / viewer.GetScale();
    const double x = viewer.GetStartX();
    const double y = viewer.GetStartY();
    return {x - width, y - height, x + 2.0 * width, y + 2.0 * height};
}

point<double> Between(const point<double>& a, const point<double>& b, double part) {
    return {a.x + (b.x - a.x) * part, a.y + (b.y - a.y) * part};
}

bool IsSame(const point<double>& a, const point<double>& b) { return a.x == b.x && a.y == b.y; }

// Fast at first, and slower towards the end.
double Eased(double part) { return 1.0 - (1.0 - part) * (1.0 - part); }

}  // namespace

Places PlacesIn(const CGraphViewer& viewer) {
    Places places;
    places.scale = viewer.GetScale();
    const graph_ptr2<Graph> graph = viewer.GetGraph();
    const rectangle<double> r = Around(viewer);
    const NodeSet nodes = graph->HitNodeTest(r.left, r.top, r.right, r.bottom);
    const EdgeSet edges = graph->HitEdgeTest(r.left, r.top, r.right, r.bottom);
    places.is_too_much = nodes.GetCount() + edges.GetCount() > kMostItems;
    if (places.is_too_much) return places;
    const point<double> start{viewer.GetStartX(), viewer.GetStartY()};
    for (const Node& node : nodes) {
        if (!IsFlagSet(node, NodeDrawn)) continue;
        places.nodes[node.GetID()] = {node.GetPosition() - start, node.GetSize()};
    }
    for (const Edge& edge : edges) {
        if (!IsFlagSet(edge, EdgeDrawn)) continue;
        std::vector<point<double>>& route = places.routes[edge.GetID()];
        route = edge.GetRoute();
        for (point<double>& p : route) p = p - start;
    }
    return places;
}

Glide Glide::From(const Places& before, const CGraphViewer& viewer) {
    Glide glide;
    const graph_ptr2<Graph> graph = viewer.GetGraph();
    if (before.is_too_much || before.scale != viewer.GetScale()) return glide;
    const point<double> start{viewer.GetStartX(), viewer.GetStartY()};
    MarkDrawnIn(graph);
    const rectangle<double> r = Around(viewer);
    for (const Node& node : graph->HitNodeTest(r.left, r.top, r.right, r.bottom)) {
        const auto found = before.nodes.find(node.GetID());
        if (found == before.nodes.end() || !IsFlagSet(node, NodeDrawn)) continue;
        glide.take_node(node, {found->second.position + start, found->second.size});
    }
    for (const Edge& edge : graph->HitEdgeTest(r.left, r.top, r.right, r.bottom)) {
        const auto found = before.routes.find(edge.GetID());
        if (found == before.routes.end() || !IsFlagSet(edge, EdgeDrawn)) continue;
        std::vector<point<double>> from = found->second;
        for (point<double>& p : from) p = p + start;
        glide.take_route(edge, from);
    }
    return glide;
}

void Glide::take_node(const Node& node, const Places::Box& from) {
    const Places::Box to{node.GetPosition(), node.GetSize()};
    const bool is_in_place = IsSame(from.position, to.position) && from.size.cx == to.size.cx &&
                             from.size.cy == to.size.cy;
    if (!is_in_place && !IsRoot(node)) boxes_.push_back({node, from, to});
}

// A route with as many bends as before moves bend by bend. Another one is in its new shape at once,
// and moves with its ends.
void Glide::take_route(const Edge& edge, const std::vector<point<double>>& from) {
    const NodeSet bends = edge.GetBreakNodes();
    const auto count = static_cast<std::size_t>(bends.GetCount());
    if (count == 0 || from.empty()) return;
    const point<double> first = from.front() - bends.GetItem(0).GetPosition();
    const point<double> last = from.back() - bends.GetItem(bends.GetCount() - 1).GetPosition();
    for (std::size_t i = 0; i < count; ++i) {
        const Node bend = bends.GetItem(static_cast<int>(i));
        const point<double> to = bend.GetPosition();
        const double along =
            count > 1 ? static_cast<double>(i) / static_cast<double>(count - 1) : 0.0;
        const point<double> was = from.size() == count ? from[i] : to + Between(first, last, along);
        if (!IsSame(was, to)) bends_.push_back({bend, was, to});
    }
}

void Glide::Show(double part) {
    const bool is_there = part >= 1.0;
    const double way = Eased(part);
    for (Box& box : boxes_) {
        const Places::Box& a = box.from;
        const Places::Box& b = box.to;
        box.node.SetPosition(is_there ? b.position : Between(a.position, b.position, way));
        const nodeline::size<double> s{a.size.cx + (b.size.cx - a.size.cx) * way,
                                       a.size.cy + (b.size.cy - a.size.cy) * way};
        box.node.SetSize(is_there ? b.size : s);
    }
    for (Bend& bend : bends_) {
        bend.node.SetPosition(is_there ? bend.to : Between(bend.from, bend.to, way));
    }
}

}  // namespace nodeline::qt
