#include <nodeline/layout/internal/steps.h>

#include <algorithm>
#include <cmath>
#include <map>

namespace nodeline::internal {

namespace {

// Sorts levels by y; what has the same y keeps its order. The last run has left most of a level in
// order, so going by the places of that time leaves little to sort.
class LevelSorter {
public:
    explicit LevelSorter(LayoutRun& run) : run_(run) {}

    // A bend that no run has placed on a level gets no place in the table.
    void Put(Vertex bend, const BreakInfo& info) {
        if (info.level >= 0) {
            Put(bend, info.level, info.place);
        } else {
            run_.in_any_order = false;
        }
    }
    // Puts a vertex at the end of its level, which is to be sorted.
    void Put(Vertex v, int level, int place) {
        run_.level_at(level).push_back(v);
        if (static_cast<std::size_t>(level) >= shelves_.size()) {
            shelves_.resize(static_cast<std::size_t>(level) + 1);
        }
        Shelf& shelf = shelves_[static_cast<std::size_t>(level)];
        ++shelf.puts;
        if (place < 0) return;
        if (static_cast<std::size_t>(place) >= shelf.items.size()) {
            shelf.items.resize(static_cast<std::size_t>(place) + 1);
        }
        shelf.items[static_cast<std::size_t>(place)] = {at(run_.y, v), v};
    }

    void Sort() {
        shelves_.resize(std::max(shelves_.size(), run_.levels.size()));
        for (std::size_t k = 0; k < run_.levels.size(); ++k) sort(run_.levels[k], shelves_[k]);
    }

private:
    struct Item {
        double y = 0.0;
        Vertex vertex = kNoVertex;
        bool operator<(const Item& other) const { return y < other.y; }
    };
    // What was put on a level, by its place when the last run ended.
    struct Shelf {
        std::vector<Item> items;
        std::size_t puts = 0;
    };

    void sort(std::vector<Vertex>& level, Shelf& shelf) const {
        if (is_in_order(level, shelf)) {
            // No two are equal, so there is no other order.
            for (std::size_t i = 0; i < level.size(); ++i) level[i] = shelf.items[i].vertex;
            return;
        }
        std::stable_sort(level.begin(), level.end(),
                         [&](Vertex a, Vertex b) { return at(run_.y, a) < at(run_.y, b); });
    }

    // Brings the shelf into order; false where it does not hold the level, or leaves open which of
    // two comes first.
    static bool is_in_order(const std::vector<Vertex>& level, Shelf& shelf) {
        auto& items = shelf.items;
        items.erase(std::remove_if(items.begin(), items.end(),
                                   [](const Item& item) { return item.vertex == kNoVertex; }),
                    items.end());
        if (items.size() != level.size() || shelf.puts != level.size()) return false;
        const auto is_no_number = [](const Item& item) { return std::isnan(item.y); };
        if (std::any_of(items.begin(), items.end(), is_no_number)) return false;
        const auto tail = std::is_sorted_until(items.begin(), items.end());
        if (tail != items.end()) {
            std::sort(tail, items.end());
            std::inplace_merge(items.begin(), tail, items.end());
        }
        const auto is_open = [](const Item& a, const Item& b) { return !(a < b); };
        return std::adjacent_find(items.begin(), items.end(), is_open) == items.end();
    }

    LayoutRun& run_;
    std::vector<Shelf> shelves_;  // by level
};

// Puts the bends of an old edge back on their levels, each with its partner's record.
class ChainRestorer {
public:
    ChainRestorer(LayoutRun& run, LevelSorter& sorter, EdgeIndex e)
        : run_(run), sorter_(sorter), edge_(e) {
        run.keep_chain(e);
        count_ = at(run.edges, e).bends;
    }

    [[nodiscard]] int count() const { return count_; }

    // The old record of a bend, which becomes its record of this run.
    BreakInfo Copy(int index) {
        const BreakInfo info = run_.old_break_info(edge_, index);
        copy_to(index, info);
        return info;
    }
    void copy_to(int index, const BreakInfo& info) {
        BreakInfo& record = run_.break_info(edge_, index);
        record = info;
        record.known = true;
    }
    void Put(int index, const BreakInfo& info) { sorter_.Put(vertex(index), info); }
    Vertex vertex(int index) { return run_.dummy(edge_, index); }
    void Link(Vertex lower, Vertex higher) { run_.mark_as_neighbours(lower, higher, edge_); }

private:
    LayoutRun& run_;
    LevelSorter& sorter_;
    EdgeIndex edge_;
    int count_;
};

// The same as below for a chain that is as it was. It gets no links: only what is new follows them.
void restore_untouched(LayoutRun& run, LevelSorter& sorter, EdgeIndex e, int first) {
    run.keep_chain(e);
    const int end = at(run.edges, e).bends - first;
    const BreakInfo* old = run.old_breaks(e);
    for (int i = first; i < end; i += 2) {
        run.break_info(e, i) = old[i];
        if (i + 1 < end) run.break_info(e, i + 1) = old[i];
        sorter.Put(run.make_dummy(e, i, false), old[i]);
    }
}

// The last link, to the child, is left out: it would matter to new nodes alone.
void restore_to_child(LayoutRun& run, LevelSorter& sorter, Vertex u, EdgeIndex e, bool backwards) {
    const int first = backwards ? 4 : 2;
    const int count = at(run.edges, e).bends;
    // The last bend that the loop below reaches.
    const int last = first + (count - 2 * first - 1) / 2 * 2;
    if (count > 2 * first) run.set_shape(e, {first, last, !backwards, run.id_of(u), 0});
    if (at(run.edges, e).untouched) {
        restore_untouched(run, sorter, e, first);
        return;
    }
    ChainRestorer chain(run, sorter, e);
    Vertex previous = u;
    for (int i = first; i < chain.count() - first; ++i) {
        const BreakInfo info = chain.Copy(i);
        chain.Put(i, info);
        const Vertex bend = chain.vertex(i);
        backwards ? chain.Link(bend, previous) : chain.Link(previous, bend);
        previous = bend;
        if (++i >= chain.count() - first) break;
        chain.copy_to(i, info);
    }
}

// A border chain cuts the table behind its level, and grows it up to there. What stood behind is in
// the table no more.
void cut_behind(LayoutRun& run, int level) {
    run.in_any_order = false;
    const auto length = static_cast<std::size_t>(level + 1);
    if (length < run.levels.size()) run.levels.resize(length);
}

void restore_from_outside(LayoutRun& run, LevelSorter& sorter, Vertex u, EdgeIndex e) {
    ChainRestorer chain(run, sorter, e);
    run.set_shape(e, {0, std::max(0, (chain.count() - 2) / 2 * 2), true, 0, run.id_of(u)});
    Vertex previous = chain.vertex(0);
    for (int i = 0; i < chain.count() - 1; ++i) {
        const Vertex bend = chain.vertex(i);
        if (bend != previous) chain.Link(previous, bend);
        const BreakInfo info = chain.Copy(i);
        cut_behind(run, info.level);
        chain.Put(i, info);
        previous = bend;
        if (++i >= chain.count() - 2) break;
        chain.copy_to(i, info);
    }
    chain.Link(previous, u);
}

void restore_to_outside(LayoutRun& run, LevelSorter& sorter, Vertex u, EdgeIndex e) {
    ChainRestorer chain(run, sorter, e);
    run.set_shape(e, {2, (chain.count() - 1) / 2 * 2, true, run.id_of(u), 0});
    Vertex previous = u;
    for (int i = 2; i < chain.count(); ++i) {
        const Vertex bend = chain.vertex(i);
        chain.Link(previous, bend);
        const BreakInfo info = chain.Copy(i);
        cut_behind(run, info.level);
        chain.Put(i, info);
        previous = bend;
        if (++i >= chain.count()) break;
        chain.copy_to(i, info);
    }
}

void restore_old_dummy(LayoutRun& run, LevelSorter& sorter, Vertex u) {
    const int level = at(run.old_infos, u).level;
    for (const auto& entry : run.neighbours(OwnerEdges::kChildren, u)) {
        if (at(run.hidden, entry.node) != 0 || !at(run.edges, entry.edge).old) continue;
        const int child_level = at(run.old_infos, entry.node).level;
        if (child_level != level) restore_to_child(run, sorter, u, entry.edge, child_level < level);
    }
    for (const auto& entry : run.neighbours(OwnerEdges::kEdgesIn, u)) {
        if (at(run.edges, entry.edge).old) restore_from_outside(run, sorter, u, entry.edge);
    }
    for (const auto& entry : run.neighbours(OwnerEdges::kEdgesOut, u)) {
        if (at(run.edges, entry.edge).old) restore_to_outside(run, sorter, u, entry.edge);
    }
}

// No real node may stand on the last level.
void close_table(LayoutRun& run) {
    if (run.levels.empty()) return;
    const auto& last = run.levels.back();
    if (std::all_of(last.begin(), last.end(), [&](Vertex v) { return run.is_dummy(v); })) return;
    run.levels.emplace_back();
    run.level_extents.resize(run.levels.size() + 1);
}

}  // namespace

// The order of a level comes back from the y coordinates alone.
void restore_old_levels(LayoutRun& run) {
    LevelSorter sorter(run);
    for (Vertex u = 0; u < run.node_count(); ++u) {
        const NodeInfo& info = at(run.old_infos, u);
        if (run.skips(u) || !info.old) continue;
        run.level_at(info.level);
        at(run.infos, u) = info;
        if (at(run.hidden, u) != 0 || info.was_hidden) continue;
        sorter.Put(u, info.level, info.place);
        restore_old_dummy(run, sorter, u);
    }
    sorter.Sort();
    close_table(run);
}

// One table of openings serves all levels: a vertex moves by the sum of the overlaps above its
// centre, so that vertices of different levels stay level with each other.
void make_y_shifts(LayoutRun& run) {
    const int n = static_cast<int>(run.levels.size());
    const double gap = 0.5 * std::min(run.settings().dummy_spacing, run.settings().node_spacing);
    std::map<double, double> shifts;
    for (int k = 1; k <= n - 2; ++k) {
        const auto& level = run.level_at(k);
        for (std::size_t i = 0; i + 1 < level.size(); ++i) {
            const double need = at(run.y, level[i]) + run.get_height(level[i]) + gap;
            const double top = at(run.y, level[i + 1]);
            if (!(top < need)) continue;
            double& shift = shifts.emplace(top, need - top).first->second;
            shift = std::max(shift, need - top);
        }
    }
    if (shifts.empty()) return;
    double sum = 0.0;
    for (auto& [top, shift] : shifts) {
        sum = shift + sum;
        shift = sum;
    }
    for (int k = 1; k <= n - 2; ++k) {
        for (const Vertex v : run.level_at(k)) {
            const double mid = at(run.y, v) + 0.5 * run.get_height(v);
            auto after = shifts.upper_bound(mid);
            if (after != shifts.begin()) run.shift_along(v, (--after)->second);
        }
    }
}

}  // namespace nodeline::internal
