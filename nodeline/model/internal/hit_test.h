// Hit tests over the visual records of a store, with an index behind them.
//
// An index pays only while nothing moves. So the first query after a change walks all records, and
// only a second one against the same state builds the index: no query costs more than the walk by
// more than a constant factor, and a still picture answers in the time of what is met.
#pragma once

#include <nodeline/model/break_nodes.h>
#include <nodeline/model/internal/hit_index.h>
#include <nodeline/model/internal/segment_index.h>

#include <array>
#include <deque>
#include <vector>

namespace nodeline::internal {

// Whether the index of a store is fresh, and when to build it.
class IndexState {
public:
    enum class Action { kWalk, kBuild, kUse };

    // What to do for a query against the state numbered `revision`.
    Action Next(unsigned long long revision) {
        if (!seen_ || revision != revision_) {
            seen_ = true;
            built_ = false;
            revision_ = revision;
            return Action::kWalk;
        }
        if (built_) return Action::kUse;
        built_ = true;
        return Action::kBuild;
    }

private:
    bool seen_ = false;
    bool built_ = false;
    unsigned long long revision_ = 0;
};

// Finds the nodes that a query meets.
class NodeHits {
public:
    // `for_each(visit)` calls `visit(DefaultNodeVis*)` for every record, by rising id.
    template <class ForEach>
    graph_ptr<NodeImplSet> Find(const HitQuery& q, unsigned long long revision, ForEach for_each) {
        const IndexState::Action action = state_.Next(revision);
        if (action != IndexState::Action::kUse) {
            items_.clear();
            for_each([&](DefaultNodeVis* vis) { items_.push_back(vis); });
        }
        if (action == IndexState::Action::kWalk) return collect(q, items_);
        if (action == IndexState::Action::kBuild) build();
        return collect(q, candidates(q));
    }

private:
    [[nodiscard]] static graph_ptr<NodeImplSet> collect(
        const HitQuery& q, const std::vector<DefaultNodeVis*>& candidates);
    void build();
    const std::vector<DefaultNodeVis*>& candidates(const HitQuery& q);

    IndexState state_;
    HitIndex index_;
    std::vector<DefaultNodeVis*> items_;
    std::vector<DefaultNodeVis*> candidates_;
    std::vector<std::int32_t> found_;
};

// Finds the edges that a query meets.
class EdgeHits {
public:
    // `for_each(visit)` calls `visit(DefaultEdgeVis*)` for every record, by rising id.
    template <class ForEach>
    graph_ptr<EdgeImplSet> Find(const HitQuery& q, unsigned long long revision, ForEach for_each) {
        const IndexState::Action action = state_.Next(revision);
        if (action != IndexState::Action::kUse) {
            items_.clear();
            for_each([&](DefaultEdgeVis* vis) { items_.push_back(vis); });
        }
        if (action == IndexState::Action::kWalk) return walk(q);
        if (action == IndexState::Action::kBuild) build();
        return look_up(q);
    }

private:
    [[nodiscard]] graph_ptr<EdgeImplSet> walk(const HitQuery& q) const;
    [[nodiscard]] graph_ptr<EdgeImplSet> look_up(const HitQuery& q);
    void build();
    void collect_segments(std::int32_t item, std::vector<RouteSegment>& segments);

    IndexState state_;
    SegmentIndex index_;
    std::vector<DefaultEdgeVis*> items_;
    // From the last bend of an owner to the first of the next; such bends do not lie in a row.
    std::deque<std::array<point<double>, 2>> joints_;
    std::vector<SegmentIndex::Run> candidates_;
    std::vector<bool> is_found_;  // by item; none is, between queries
    std::vector<std::int32_t> found_;
};

}  // namespace nodeline::internal
