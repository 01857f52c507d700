#include <nodeline/layout/internal/stable_order.h>

namespace nodeline::internal {

LevelOrder::LevelOrder(const StableRun& run) {
    const std::size_t last = std::max<std::size_t>(run.levels.size(), 2) - 2;
    starts_.assign(last + 2, 0);
    std::vector<Item> item_of(run.y.size(), -1);
    for (std::size_t k = 1; k <= last; ++k) {
        for (const Vertex v : run.levels[k]) {
            at(item_of, v) = static_cast<Item>(vertices_.size());
            vertices_.push_back(v);
        }
        starts_[k + 1] = static_cast<std::int32_t>(vertices_.size());
    }
    items_.resize(vertices_.size());
    for (std::size_t i = 0; i < items_.size(); ++i) items_[i] = static_cast<Item>(i);
    places_.assign(items_.size(), 0);
    if (last > 0) Number(1);
    collect_links(run, item_of);
    collect_pulls(run, item_of);
}

void LevelOrder::WriteTo(StableRun& run) const {
    for (int k = 1; k <= last(); ++k) {
        auto next = items_.begin() + at(starts_, k);
        double place = 0.0;
        for (Vertex& v : run.level_at(k)) {
            v = at(vertices_, *next++);
            at(run.y, v) = place;
            place += 1.0;
        }
    }
}

void LevelOrder::SetItems(std::vector<Item> items) {
    items_ = std::move(items);
    for (int k = 1; k <= last(); ++k) Number(k);
}

LevelOrder::Range<LevelOrder::Item> LevelOrder::links_in_order(Order side, Item item) {
    const Range<Item> around = links(side, item);
    if (around.size() < 2) return around;
    const auto before = [this](Item a, Item b) { return place(a) < place(b); };
    // What was in order some swaps ago is almost in order still.
    if (!std::is_sorted(around.begin(), around.end(), before)) {
        std::sort(around.begin(), around.end(), before);
    }
    return around;
}

void LevelOrder::Number(int k) {
    std::size_t place = 0;
    for (const Item item : level(k)) SetPlace(item, place++);
}

void LevelOrder::collect_links(const StableRun& run, const std::vector<Item>& item_of) {
    for (const Order side : {ORDER_IN, ORDER_OUT}) {
        std::vector<std::int32_t>& starts = link_starts_[side];
        // One place further on than where they end up, for the filling moves them back.
        starts.assign(items_.size() + 2, 0);
        for (const Segment& s : run.segments) {
            ++at(starts, at(item_of, side == ORDER_IN ? s.higher : s.lower) + 2);
        }
        for (std::size_t i = 2; i < starts.size(); ++i) starts[i] += starts[i - 1];
        links_[side].resize(run.segments.size());
        for (const Segment& s : run.segments) {
            const Item near = at(item_of, side == ORDER_IN ? s.higher : s.lower);
            const Item far = at(item_of, side == ORDER_IN ? s.lower : s.higher);
            at(links_[side], at(starts, near + 1)++) = far;
        }
    }
}

void LevelOrder::collect_pulls(const StableRun& run, const std::vector<Item>& item_of) {
    if (run.anchors == nullptr || run.anchors->IsEmpty()) return;
    const auto add = [&](EdgeIndex e, Order side, Vertex v) {
        const auto height = run.anchors->Find(run.owner_id(), run.edge_id(e), side);
        if (height) pulls_[side].emplace_back(at(item_of, v), *height);
    };
    for (EdgeIndex e = 0; e < run.edge_count(); ++e) {
        const Course& course = at(run.courses, e);
        const bool is_long = course.crossed() > 0;
        if (course.kind == CourseKind::kIn) {
            add(e, ORDER_IN, is_long ? run.vertex_on(e, 1) : course.to);
        } else if (course.kind == CourseKind::kOut) {
            add(e, ORDER_OUT, is_long ? run.vertex_on(e, last()) : course.from);
        }
    }
    for (auto& side : pulls_) std::sort(side.begin(), side.end());
}

}  // namespace nodeline::internal
