#include <nodeline/model/internal/hit_test.h>

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace nodeline::internal {

namespace {

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

}  // namespace

void NodeHits::build() {
    std::vector<HitBox> boxes;
    boxes.reserve(items_.size());
    for (std::size_t i = 0; i < items_.size(); ++i) {
        const point<double> p = items_[i]->get_position();
        const size<double> s = items_[i]->get_size();
        boxes.push_back({p.x, p.y, p.x + s.cx, p.y + s.cy, static_cast<std::int32_t>(i)});
    }
    index_.Build(std::move(boxes));
}

const std::vector<DefaultNodeVis*>& NodeHits::candidates(const HitQuery& q) {
    found_.clear();
    index_.Query(q.x1, q.y1, q.x2, q.y2, found_);
    std::sort(found_.begin(), found_.end());
    candidates_.clear();
    for (const std::int32_t i : found_) {
        candidates_.push_back(items_[static_cast<std::size_t>(i)]);
    }
    return candidates_;
}

graph_ptr<NodeImplSet> NodeHits::collect(const HitQuery& query,
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

graph_ptr<EdgeImplSet> EdgeHits::walk(const HitQuery& q) const {
    graph_ptr<EdgeImplSet> hits(new EdgeImplSet);
    for (DefaultEdgeVis* vis : items_) {
        if (is_route_hit(q, *vis)) hits->Add(vis->get_edge_impl());
    }
    return hits;
}

void EdgeHits::build() {
    joints_.clear();
    std::vector<RouteSegment> segments;
    for (std::size_t i = 0; i < items_.size(); ++i) {
        collect_segments(static_cast<std::int32_t>(i), segments);
    }
    index_.Build(std::move(segments));
    is_found_.assign(items_.size(), false);
}

void EdgeHits::collect_segments(std::int32_t item, std::vector<RouteSegment>& segments) {
    const point<double>* last = nullptr;
    for (const auto& chain : items_[static_cast<std::size_t>(item)]->GetRoute()) {
        const int count = chain->GetCount();
        if (count == 0) continue;
        const point<double>* const first = &chain->GetPositionAt(0);
        if (last != nullptr) {
            joints_.push_back({*last, *first});
            segments.push_back({joints_.back().data(), item});
        }
        for (int i = 0; i + 1 < count; ++i) segments.push_back({first + i, item});
        last = first + (count - 1);
    }
}

graph_ptr<EdgeImplSet> EdgeHits::look_up(const HitQuery& q) {
    candidates_.clear();
    index_.Query(q, candidates_);
    found_.clear();
    for (const auto& [begin, end] : candidates_) {
        for (const RouteSegment* s = begin; s != end; ++s) {
            const auto item = static_cast<std::size_t>(s->item);
            if (is_found_[item] || !is_segment_hit(q, s->ends[0], s->ends[1])) continue;
            is_found_[item] = true;
            found_.push_back(s->item);
        }
    }
    std::sort(found_.begin(), found_.end());
    graph_ptr<EdgeImplSet> hits(new EdgeImplSet);
    for (const std::int32_t i : found_) {
        is_found_[static_cast<std::size_t>(i)] = false;
        hits->Add(items_[static_cast<std::size_t>(i)]->get_edge_impl());
    }
    return hits;
}

}  // namespace nodeline::internal
