#include <nodeline/layout/internal/steps.h>

#include <algorithm>
#include <functional>
#include <optional>
#include <queue>

namespace nodeline::internal {

namespace {

// Where a node may stand between neighbours whose levels are known. A level scores one penalty for
// each neighbour on its wrong side, or beside it; the least wins, and the lowest of equal ones.
class LevelChoice {
public:
    void AddParent(int level) { parents_.push_back(level); }
    void AddChild(int level) { children_.push_back(level); }

    [[nodiscard]] std::optional<int> Choose() {
        if (parents_.empty() && children_.empty()) return std::nullopt;
        std::sort(parents_.begin(), parents_.end());
        std::sort(children_.begin(), children_.end());
        if (parents_.empty()) return children_.front() - 1;
        if (children_.empty()) return parents_.back() + 1;
        const int low = std::min(parents_.front(), children_.front());
        const int high = std::max(parents_.back(), children_.back());
        int best = low;
        std::ptrdiff_t least = penalty(low);
        // Penalties fall only right behind a parent.
        for (const int parent : parents_) {
            const int level = parent + 1;
            if (level > high) break;
            if (const std::ptrdiff_t here = penalty(level); here < least) {
                least = here;
                best = level;
            }
        }
        return best;
    }

private:
    [[nodiscard]] std::ptrdiff_t penalty(int level) const {
        return (std::upper_bound(children_.begin(), children_.end(), level) - children_.begin()) +
               (parents_.end() - std::lower_bound(parents_.begin(), parents_.end(), level));
    }

    std::vector<int> parents_;
    std::vector<int> children_;
};

template <class Known>
std::optional<int> choose_level(const LayoutRun& run, Vertex v, Known level_of) {
    LevelChoice choice;
    for (const auto& entry : run.neighbours(OwnerEdges::kParents, v)) {
        if (run.skips(entry.node)) continue;
        if (const auto level = level_of(entry.node)) choice.AddParent(*level);
    }
    for (const auto& entry : run.neighbours(OwnerEdges::kChildren, v)) {
        if (run.skips(entry.node)) continue;
        if (const auto level = level_of(entry.node)) choice.AddChild(*level);
    }
    return choice.Choose();
}

// Settles new nodes none of whose neighbours was in the old picture. Rounds go over them in order;
// a node takes its level from neighbours that have one by then. Two heaps of places stand for this
// round and the next one, so no round walks nodes that still wait.
class Settling {
public:
    Settling(LayoutRun& run, const std::vector<Vertex>& rest) : run_(run), rest_(rest) {
        for (std::size_t i = 0; i < rest.size(); ++i)
            place_.Enter(run, rest[i], static_cast<int>(i));
        queued_.assign(rest.size(), 0);
    }

    void Run() {
        for (std::size_t i = 0; i < rest_.size(); ++i) {
            if (find_level(rest_[i])) queue(static_cast<int>(i));
        }
        while (!next_.empty()) {
            std::swap(current_, next_);
            while (!current_.empty()) {
                reached_ = current_.top();
                current_.pop();
                settle(at(rest_, reached_));
            }
            reached_ = static_cast<int>(rest_.size());
        }
        for (std::size_t i = 0; i < rest_.size(); ++i) {
            if (queued_[i] == 0) at(run_.infos, rest_[i]).level = 1;
        }
    }

private:
    using Places = std::priority_queue<int, std::vector<int>, std::greater<>>;

    // The place of each waiting node; others have none.
    class PlaceMap {
    public:
        void Enter(LayoutRun& run, Vertex v, int place) {
            if (places_.empty()) places_.assign(static_cast<std::size_t>(run.node_count()), -1);
            at(places_, v) = place;
        }
        [[nodiscard]] int Find(Vertex v) const { return places_.empty() ? -1 : at(places_, v); }

    private:
        std::vector<int> places_;
    };

    [[nodiscard]] std::optional<int> find_level(Vertex v) const {
        return choose_level(run_, v, [&](Vertex other) -> std::optional<int> {
            if (other == v || at(run_.infos, other).level == -1) return std::nullopt;
            return at(run_.infos, other).level;
        });
    }

    void settle(Vertex v) {
        at(run_.infos, v).level = std::max(0, *find_level(v));
        for (const auto kind : {OwnerEdges::kParents, OwnerEdges::kChildren}) {
            for (const auto& entry : run_.neighbours(kind, v)) {
                const int place = place_.Find(entry.node);
                if (place >= 0) queue(place);
            }
        }
    }

    void queue(int place) {
        if (at(queued_, place) != 0) return;
        at(queued_, place) = 1;
        (place > reached_ ? current_ : next_).push(place);
    }

    LayoutRun& run_;
    const std::vector<Vertex>& rest_;
    PlaceMap place_;
    std::vector<char> queued_;
    int reached_ = static_cast<int>(rest_.size());
    Places current_;
    Places next_;
};

}  // namespace

void mark_new_nodes_levels(LayoutRun& run, const std::vector<Vertex>& component) {
    std::vector<Vertex> rest;
    for (const Vertex v : component) {
        if (run.skips(v) || at(run.old_infos, v).old) continue;
        const auto level = choose_level(run, v, [&](Vertex other) -> std::optional<int> {
            if (run.is_new(other)) return std::nullopt;
            return at(run.old_infos, other).level;
        });
        if (level) {
            at(run.infos, v).level = *level;
        } else {
            rest.push_back(v);
        }
    }
    if (!rest.empty()) Settling(run, rest).Run();
}

namespace {

// Whether the component of a node may have to be looked at: not for what keeps its level, which is
// what was in the picture once and has a neighbour that still was at the end of the last run.
bool needs_level(const LayoutRun& run, Vertex v) {
    if (run.skips(v) || !run.is_new(v)) return false;
    if (!at(run.old_infos, v).old) return true;
    for (const auto kind : {OwnerEdges::kParents, OwnerEdges::kChildren}) {
        for (const auto& entry : run.neighbours(kind, v)) {
            if (!run.skips(entry.node) && !run.is_new(entry.node)) return false;
        }
    }
    return true;
}

void place_new_nodes_of(LayoutRun& run, const std::vector<Vertex>& component) {
    const bool wholly_new =
        std::all_of(component.begin(), component.end(), [&](Vertex v) { return run.is_new(v); });
    if (wholly_new) {
        enumerate_connectivity_component(run, component);
        mark_reversed_edges(run, component, true);
        mark_levels(run, component);
    } else {
        mark_new_nodes_levels(run, component);
    }
}

}  // namespace

void determine_new_nodes_levels(LayoutRun& run) {
    const std::vector<Vertex> nodes = all_nodes(run);
    if (std::any_of(nodes.begin(), nodes.end(), [&](Vertex v) { return needs_level(run, v); })) {
        for (const auto& component : find_connectivity_components(run, nodes)) {
            place_new_nodes_of(run, component);
        }
    }
    mark_reversed_edges(run, nodes, false);
}

}  // namespace nodeline::internal
