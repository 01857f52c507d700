#include <nodeline/model/internal/hit_test.h>

#include <cmath>
#include <limits>
#include <unordered_set>

namespace nodeline::internal {

namespace {

// Bends of one box of the edge index: short enough to be tight, long enough to keep boxes few.
constexpr int kBendsPerBox = 8;

bool is_apart(const HitQuery& q, const point<double>& p, const size<double>& s) {
    return q.x1 > p.x + s.cx || p.x > q.x2 || q.y1 > p.y + s.cy || p.y > q.y2;
}

bool is_strictly_inside(const HitQuery& q, const point<double>& p, const size<double>& s) {
    return q.x1 > p.x && p.x + s.cx > q.x2 && q.y1 > p.y && p.y + s.cy > q.y2;
}

bool is_end_inside(const HitQuery& q, const point<double>& p) {
    return q.x1 <= p.x && p.x <= q.x2 && q.y1 <= p.y && p.y <= q.y2;
}

// A segment with no end inside that meets the rectangle crosses two sides at least, so three of the
// four are tried. On an upright segment the divisions give no finite number and the comparisons
// fail, which is the answer wanted.
bool is_segment_hit(const HitQuery& q, const point<double>& a, const point<double>& b) {
    if (is_end_inside(q, a) || is_end_inside(q, b)) return true;
    if (a.x >= q.x2 && b.x >= q.x2) return false;
    if (q.x1 >= a.x && q.x1 >= b.x) return false;
    if (a.y >= q.y2 && b.y >= q.y2) return false;
    if (q.y1 >= a.y && q.y1 >= b.y) return false;
    const double dx = a.x - b.x;
    const double dy = a.y - b.y;
    const double y_right = (q.x2 - a.x) * dy / dx + a.y;
    if (q.y1 <= y_right && y_right <= q.y2) return true;
    const double y_left = (q.x1 - a.x) * dy / dx + a.y;
    if (q.y1 <= y_left && y_left <= q.y2) return true;
    const double x_top = dx * (q.y1 - a.y) / dy + a.x;
    return q.x1 <= x_top && x_top <= q.x2;
}

bool is_route_hit(const HitQuery& q, DefaultEdgeVis& vis) {
    const point<double>* previous = nullptr;
    for (const auto& chain : vis.GetRoute()) {
        for (int i = 0; i < chain->GetCount(); ++i) {
            const point<double>& p = chain->GetPositionAt(i);
            if (previous != nullptr && is_segment_hit(q, *previous, p)) return true;
            previous = &p;
        }
    }
    return false;
}

// The boxes of a route: each takes over the last bend of the one before, so that every segment
// lies in a box.
class RouteBoxes {
public:
    RouteBoxes(std::int32_t item, std::vector<HitBox>& boxes) : item_(item), boxes_(boxes) {}

    void Add(const point<double>& p) {
        if (bends_ == 0) {
            box_ = {p.x, p.y, p.x, p.y, item_};
        } else {
            grow(p);
        }
        if (++bends_ == kBendsPerBox) {
            boxes_.push_back(box_);
            box_ = {p.x, p.y, p.x, p.y, item_};
            bends_ = 1;
        }
    }

    void Finish() {
        if (bends_ > 1) boxes_.push_back(box_);
    }

private:
    // A bound becomes no number, and stays so, where a bend is no number.
    static double lower(double a, double b) { return b < a || std::isnan(b) ? b : a; }
    static double upper(double a, double b) { return b > a || std::isnan(b) ? b : a; }

    void grow(const point<double>& p) {
        box_.left = lower(box_.left, p.x);
        box_.top = lower(box_.top, p.y);
        box_.right = upper(box_.right, p.x);
        box_.bottom = upper(box_.bottom, p.y);
    }

    std::int32_t item_;
    std::vector<HitBox>& boxes_;
    HitBox box_{};
    int bends_ = 0;
};

}  // namespace

std::vector<HitBox> make_node_boxes(const std::vector<DefaultNodeVis*>& items) {
    std::vector<HitBox> boxes;
    boxes.reserve(items.size());
    for (std::size_t i = 0; i < items.size(); ++i) {
        const point<double> p = items[i]->get_position();
        const size<double> s = items[i]->get_size();
        boxes.push_back({p.x, p.y, p.x + s.cx, p.y + s.cy, static_cast<std::int32_t>(i)});
    }
    return boxes;
}

graph_ptr<NodeImplSet> collect_hits(const HitQuery& query,
                                    const std::vector<DefaultNodeVis*>& candidates) {
    graph_ptr<NodeImplSet> touching(new NodeImplSet);
    std::vector<graph_ptr<INodeImpl>> enclosing;
    for (DefaultNodeVis* vis : candidates) {
        const point<double> p = vis->get_position();
        const size<double> s = vis->get_size();
        if (is_apart(query, p, s)) continue;
        const graph_ptr<INodeImpl> node = vis->get_node_impl();
        if (node->get_id() != 0 && !node->get_owner()) continue;
        if (is_strictly_inside(query, p, s)) {
            enclosing.push_back(node);
        } else {
            touching->Add(node);
        }
    }
    std::unordered_set<int> owners;
    for (const auto& node : enclosing) {
        if (node->get_id() != 0) owners.insert(node->get_owner()->get_id());
    }
    for (const auto& node : enclosing) {
        if (owners.count(node->get_id()) == 0) touching->Add(node);
    }
    return touching;
}

std::vector<HitBox> make_edge_boxes(const std::vector<DefaultEdgeVis*>& items) {
    std::vector<HitBox> boxes;
    for (std::size_t i = 0; i < items.size(); ++i) {
        RouteBoxes route(static_cast<std::int32_t>(i), boxes);
        for (const auto& chain : items[i]->GetRoute()) {
            for (int k = 0; k < chain->GetCount(); ++k) route.Add(chain->GetPositionAt(k));
        }
        route.Finish();
    }
    return boxes;
}

graph_ptr<EdgeImplSet> collect_hits(const HitQuery& query,
                                    const std::vector<DefaultEdgeVis*>& candidates) {
    graph_ptr<EdgeImplSet> hits(new EdgeImplSet);
    for (DefaultEdgeVis* vis : candidates) {
        if (is_route_hit(query, *vis)) hits->Add(vis->get_edge_impl());
    }
    return hits;
}

}  // namespace nodeline::internal
