#include <nodeline/layout/internal/steps.h>
#include <nodeline/ops/graph_ops.h>
#include <support/watched_layout.h>

#include <algorithm>
#include <utility>

namespace nodeline::test {

using internal::at;
using internal::LayoutRun;
using internal::Vertex;

namespace {

constexpr double kHair = 1e-6;

}  // namespace

WatchedLayout* WatchedLayout::watching = nullptr;

WatchedLayout::WatchedLayout() {
    engine_.AppendSteps();
    for (internal::Pipeline* steps : {&engine_.update_steps, &engine_.resize_steps}) {
        // Behind `restore_old_levels` and `make_y_shifts`, the first steps of both.
        steps->insert(steps->begin() + 2, {"see_opened", see_opened});
        steps->insert(steps->begin() + 1, {"see_old", see_old});
        steps->push_back({"see_end", see_end});
    }
    engine_.make_steps.push_back({"see_end", see_end});
}

template <class Run>
void WatchedLayout::watch(Run run) {
    WatchedLayout* const outer = std::exchange(watching, this);
    run();
    watching = outer;
}

void WatchedLayout::Make(Node owner) {
    if (IsRoot(owner)) placed.clear();
    watch([&] { engine_.Make(owner, *this); });
}
void WatchedLayout::Update(Node owner) {
    watch([&] { engine_.Update(owner, *this); });
}
void WatchedLayout::Resize(Node owner) {
    resizes_ = true;
    watch([&] { engine_.Resize(owner); });
    resizes_ = false;
}

void WatchedLayout::see_old(LayoutRun& run) {
    auto& old = watching->old_;
    old.clear();
    for (std::size_t k = 0; k < run.levels.size(); ++k) {
        for (const Vertex v : run.levels[k]) {
            if (run.is_dummy(v)) continue;
            const double y = at(run.y, v);
            old.push_back({v, static_cast<int>(k), y, y + 0.5 * run.get_height(v)});
        }
    }
    watching->old_nodes += static_cast<long>(old.size());
}

void WatchedLayout::see_opened(LayoutRun& run) {
    bool calm = true;
    for (Old& old : watching->old_) {
        old.opened_y = at(run.y, old.node);
        calm = calm && old.opened_y == old.y;
    }
    for (Vertex v = 0; v < run.node_count(); ++v) {
        calm = calm && (at(run.hidden, v) != 0 || !run.is_new(v));
    }
    watching->was_calm = calm;
}

void WatchedLayout::see_end(LayoutRun& run) {
    watching->expect_levels(run);
    watching->expect_order(run);
    watching->expect_distances(run);
    watching->note_placed(run);
    watching->old_.clear();
}

// All old nodes move up by the same number of levels, if at all.
void WatchedLayout::expect_levels(const LayoutRun& run) {
    if (old_.empty()) return;
    const int shift = run.level_of(old_.front().node) - old_.front().level;
    if (shift < 0) complain(run, "the old levels moved down");
    for (const Old& old : old_) {
        if (run.level_of(old.node) == old.level + shift) continue;
        complain(run, "node " + std::to_string(run.id_of(old.node)) + " left its level");
    }
}

// The old nodes of a level stand in the table in their order, ahead of all new ones.
void WatchedLayout::expect_order(const LayoutRun& run) {
    std::map<int, std::vector<Vertex>> before;
    for (const Old& old : old_) before[run.level_of(old.node)].push_back(old.node);
    for (const auto& [level, nodes] : before) {
        std::vector<Vertex> now;
        if (level >= 0 && level < static_cast<int>(run.levels.size())) {
            for (const Vertex v : run.levels[static_cast<std::size_t>(level)]) {
                if (!run.is_dummy(v)) now.push_back(v);
            }
        }
        if (now.size() >= nodes.size()) now.resize(nodes.size());
        if (now != nodes) complain(run, "level " + std::to_string(level) + " lost its order");
    }
}

// A node moves at least as far down as those whose middles lie above its own, whatever the level.
void WatchedLayout::expect_distances(const LayoutRun& run) {
    std::sort(old_.begin(), old_.end(),
              [](const Old& a, const Old& b) { return a.middle < b.middle; });
    for (std::size_t i = 1; i < old_.size(); ++i) {
        const double above = at(run.y, old_[i - 1].node) - old_[i - 1].y;
        const double here = at(run.y, old_[i].node) - old_[i].y;
        if (here >= above - kHair) continue;
        complain(run, "node " + std::to_string(run.id_of(old_[i].node)) + " came nearer to " +
                          std::to_string(run.id_of(old_[i - 1].node)));
    }
}

void WatchedLayout::note_placed(const LayoutRun& run) {
    Placed& here = placed[run.owner_id()];
    here = Placed();
    std::vector<char> in_table(static_cast<std::size_t>(run.node_count()), 0);
    for (std::size_t k = 1; k + 1 < run.levels.size(); ++k) {
        for (const Vertex v : run.levels[k]) {
            if (run.is_dummy(v)) continue;
            at(in_table, v) = 1;
            if (!here.nodes.insert(run.id_of(v)).second) {
                complain(run, "node " + std::to_string(run.id_of(v)) + " stands there twice");
            }
        }
    }
    for (Vertex v = 0; v < run.node_count(); ++v) {
        here.levels[run.id_of(v)] = run.level_of(v);
    }
    for (const internal::EdgeState& edge : run.edges) {
        if (edge.from < 0 || edge.to < 0 || !edge.vis || !edge.marked_old) continue;
        const bool in_place = at(in_table, edge.from) != 0 && at(in_table, edge.to) != 0;
        note_edge(run, edge, in_place);
    }
}

// A resize routes nothing: what was added since waits for the next update, and what was shown since
// counts as old from then on, with the bends that it had when it was hidden.
void WatchedLayout::note_edge(const LayoutRun& run, const internal::EdgeState& edge,
                              bool in_place) {
    const int id = edge.vis->impl()->get_id();
    const bool is_routed = edge.chain != nullptr && edge.chain->GetCount() >= 4;
    if (resizes_ && !in_place) outdated_.insert(id);
    if (!resizes_ && !edge.old) outdated_.erase(id);
    if (!in_place || outdated_.count(id) != 0) return;
    if (is_routed) {
        placed[run.owner_id()].edges.insert(id);
    } else if (!resizes_) {
        complain(run, "edge " + std::to_string(id) + " has no route");
    }
}

void WatchedLayout::complain(const LayoutRun& run, const std::string& what) {
    broken.push_back("owner " + std::to_string(run.owner_id()) + ": " + what);
}

}  // namespace nodeline::test
