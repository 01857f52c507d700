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

// The records that queries look through, and whether their index is fresh.
template <class Vis>
class HitRecords {
protected:
    // Takes the records anew unless the index stands for them. `for_each(visit)` calls
    // `visit(Vis*)` for every one, by rising id.
    template <class ForEach>
    IndexState::Action renew(unsigned long long revision, ForEach for_each) {
        const IndexState::Action action = state_.Next(revision);
        if (action == IndexState::Action::kUse) return action;
        items_.clear();
        for_each([this](Vis* vis) { items_.push_back(vis); });
        return action;
    }

    std::vector<Vis*> items_;

private:
    IndexState state_;
};

// Finds the nodes that a query meets.
class NodeHits : private HitRecords<DefaultNodeVis> {
public:
    template <class ForEach>
    graph_ptr<NodeImplSet> Find(const HitQuery& q, unsigned long long revision, ForEach for_each) {
        const IndexState::Action action = renew(revision, for_each);
        if (action == IndexState::Action::kWalk) return collect(q, items_);
        if (action == IndexState::Action::kBuild) build();
        return collect(q, candidates(q));
    }

private:
    [[nodiscard]] static graph_ptr<NodeImplSet> collect(
        const HitQuery& q, const std::vector<DefaultNodeVis*>& candidates);
    void build();
    const std::vector<DefaultNodeVis*>& candidates(const HitQuery& q);

    HitIndex index_;
    std::vector<DefaultNodeVis*> candidates_;
    std::vector<std::int32_t> found_;
};

// Finds the edges that a query meets.
class EdgeHits : private HitRecords<DefaultEdgeVis> {
public:
    template <class ForEach>
    graph_ptr<EdgeImplSet> Find(const HitQuery& q, unsigned long long revision, ForEach for_each) {
        const IndexState::Action action = renew(revision, for_each);
        if (action == IndexState::Action::kWalk) return walk(q);
        if (action == IndexState::Action::kBuild) build();
        return look_up(q);
    }

private:
    [[nodiscard]] graph_ptr<EdgeImplSet> walk(const HitQuery& q) const;
    [[nodiscard]] graph_ptr<EdgeImplSet> look_up(const HitQuery& q);
    void build();
    void collect_segments(std::int32_t item, std::vector<RouteSegment>& segments);

    SegmentIndex index_;
    // From the last bend of an owner to the first of the next; such bends do not lie in a row.
    std::deque<std::array<point<double>, 2>> joints_;
    std::vector<SegmentIndex::Run> candidates_;
    std::vector<bool> is_found_;  // by item; none is, between queries
    std::vector<std::int32_t> found_;
};

}  // namespace nodeline::internal
