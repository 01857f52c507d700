#include <nodeline/layout/internal/stable_order.h>

#include <algorithm>

namespace nodeline::internal {

LevelOrder::LevelOrder(const StableRun& run) {
    const std::size_t last = std::max<std::size_t>(run.levels.size(), 2) - 2;
    starts_.assign(last + 2, 0);
    for (std::size_t k = 1; k <= last; ++k) {
        vertices_.insert(vertices_.end(), run.levels[k].begin(), run.levels[k].end());
        starts_[k + 1] = static_cast<std::int32_t>(vertices_.size());
    }
    items_.resize(vertices_.size());
    for (std::size_t i = 0; i < items_.size(); ++i) items_[i] = static_cast<Item>(i);
    places_.assign(items_.size(), 0);
    if (last > 0) Number(1);
}

void LevelOrder::Connect(const StableRun& run) {
    std::vector<Item> item_of(run.y.size(), -1);
    for (std::size_t i = 0; i < vertices_.size(); ++i) {
        at(item_of, vertices_[i]) = static_cast<Item>(i);
    }
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

// It was one of a table once. If every item is on its level still, all are, and each once.
bool LevelOrder::Fits(const std::vector<Item>& items) const {
    if (items.size() != items_.size()) return false;
    for (int k = 1; k <= last(); ++k) {
        for (Item i = at(starts_, k); i < at(starts_, k + 1); ++i) {
            if (at(items, i) < at(starts_, k) || at(items, i) >= at(starts_, k + 1)) return false;
        }
    }
    return true;
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
    std::vector<std::pair<Item, double>> found[2];
    const auto add = [&](EdgeIndex e, Order side, Vertex v) {
        const auto height = run.anchors->Find(run.owner_id(), run.edge_id(e), side);
        if (height) found[side].emplace_back(at(item_of, v), *height);
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
    for (const Order side : {ORDER_IN, ORDER_OUT}) rank_pulls(side, found[side]);
}

void LevelOrder::rank_pulls(Order side, std::vector<std::pair<Item, double>>& found) {
    if (found.empty()) return;
    std::sort(found.begin(), found.end());
    std::vector<double> heights;
    heights.reserve(found.size());
    for (const auto& [item, height] : found) heights.push_back(height);
    std::sort(heights.begin(), heights.end());
    const int k = border_level(side);
    pull_starts_[side].assign(level(k).size() + 1, 0);
    for (const auto& [item, height] : found) {
        const auto rank = std::lower_bound(heights.begin(), heights.end(), height);
        pulls_[side].push_back({height, static_cast<std::int32_t>(rank - heights.begin())});
        ++at(pull_starts_[side], item - at(starts_, k) + 1);
    }
    for (std::size_t i = 1; i < pull_starts_[side].size(); ++i) {
        pull_starts_[side][i] += pull_starts_[side][i - 1];
    }
}

}  // namespace nodeline::internal
