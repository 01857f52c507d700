#include <nodeline/layout/internal/steps.h>

#include <algorithm>
#include <map>

namespace nodeline::internal {

namespace {

// Puts the bends of an old edge back on their levels, each with its partner's record.
class ChainRestorer {
public:
    ChainRestorer(LayoutRun& run, EdgeIndex e) : run_(run), edge_(e) {
        run.keep_chain(e);
        count_ = at(run.edges, e).chain->GetCount();
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
    // A bend that no run has placed on a level gets no place in the table.
    void Put(int index, int level) {
        if (level >= 0) run_.level_at(level).push_back(run_.dummy(edge_, index));
    }
    Vertex vertex(int index) { return run_.dummy(edge_, index); }

private:
    LayoutRun& run_;
    EdgeIndex edge_;
    int count_;
};

// The last link, to the child, is left out: it would matter to new nodes alone.
void restore_to_child(LayoutRun& run, Vertex u, EdgeIndex e, bool backwards) {
    ChainRestorer chain(run, e);
    const int first = backwards ? 4 : 2;
    // The last bend that the loop below reaches.
    const int last = first + (chain.count() - 2 * first - 1) / 2 * 2;
    if (chain.count() > 2 * first) run.set_shape(e, {first, last, !backwards, run.id_of(u), 0});
    Vertex previous = u;
    for (int i = first; i < chain.count() - first; ++i) {
        const BreakInfo info = chain.Copy(i);
        chain.Put(i, info.level);
        const Vertex bend = chain.vertex(i);
        backwards ? run.mark_as_neighbours(bend, previous, e)
                  : run.mark_as_neighbours(previous, bend, e);
        previous = bend;
        if (++i >= chain.count() - first) break;
        chain.copy_to(i, info);
    }
}

// A border chain cuts the table behind its level, and grows it up to there.
void cut_behind(LayoutRun& run, int level) {
    const auto length = static_cast<std::size_t>(level + 1);
    if (length < run.levels.size()) run.levels.resize(length);
}

void restore_from_outside(LayoutRun& run, Vertex u, EdgeIndex e) {
    ChainRestorer chain(run, e);
    run.set_shape(e, {0, std::max(0, (chain.count() - 2) / 2 * 2), true, 0, run.id_of(u)});
    Vertex previous = chain.vertex(0);
    for (int i = 0; i < chain.count() - 1; ++i) {
        const Vertex bend = chain.vertex(i);
        if (bend != previous) run.mark_as_neighbours(previous, bend, e);
        const BreakInfo info = chain.Copy(i);
        cut_behind(run, info.level);
        chain.Put(i, info.level);
        previous = bend;
        if (++i >= chain.count() - 2) break;
        chain.copy_to(i, info);
    }
    run.mark_as_neighbours(previous, u, e);
}

void restore_to_outside(LayoutRun& run, Vertex u, EdgeIndex e) {
    ChainRestorer chain(run, e);
    run.set_shape(e, {2, (chain.count() - 1) / 2 * 2, true, run.id_of(u), 0});
    Vertex previous = u;
    for (int i = 2; i < chain.count(); ++i) {
        const Vertex bend = chain.vertex(i);
        run.mark_as_neighbours(previous, bend, e);
        const BreakInfo info = chain.Copy(i);
        cut_behind(run, info.level);
        chain.Put(i, info.level);
        previous = bend;
        if (++i >= chain.count()) break;
        chain.copy_to(i, info);
    }
}

void restore_old_dummy(LayoutRun& run, Vertex u) {
    const int level = at(run.old_infos, u).level;
    for (const auto& entry : run.neighbours(OwnerEdges::kChildren, u)) {
        if (at(run.hidden, entry.node) != 0 || !at(run.edges, entry.edge).old) continue;
        const int child_level = at(run.old_infos, entry.node).level;
        if (child_level != level) restore_to_child(run, u, entry.edge, child_level < level);
    }
    for (const auto& entry : run.neighbours(OwnerEdges::kEdgesIn, u)) {
        if (at(run.edges, entry.edge).old) restore_from_outside(run, u, entry.edge);
    }
    for (const auto& entry : run.neighbours(OwnerEdges::kEdgesOut, u)) {
        if (at(run.edges, entry.edge).old) restore_to_outside(run, u, entry.edge);
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
    for (Vertex u = 0; u < run.node_count(); ++u) {
        const NodeInfo& info = at(run.old_infos, u);
        if (run.skips(u) || !info.old) continue;
        run.level_at(info.level);
        at(run.infos, u) = info;
        if (at(run.hidden, u) != 0 || info.was_hidden) continue;
        run.level_at(info.level).push_back(u);
        restore_old_dummy(run, u);
    }
    for (auto& level : run.levels) {
        std::stable_sort(level.begin(), level.end(),
                         [&](Vertex a, Vertex b) { return at(run.y, a) < at(run.y, b); });
    }
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
