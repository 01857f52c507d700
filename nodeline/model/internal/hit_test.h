// Hit tests over the visual records of a store, with an index behind them.
//
// An index pays only while nothing moves. So the first query after a change walks all records, and
// only a second one against the same state builds the index: no query costs more than the walk by
// more than a constant factor, and a still picture answers in the time of what is met.
#pragma once

#include <nodeline/model/break_nodes.h>
#include <nodeline/model/internal/hit_index.h>

#include <algorithm>
#include <vector>

namespace nodeline::internal {

// A query rectangle; closed, and taken as it is also where right lies left of left.
struct HitQuery {
    double x1, y1, x2, y2;
};

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

// Finds the records that a query may meet: all of them, or what an index tells.
template <class Vis>
class HitCandidates {
public:
    // `for_each(visit)` calls `visit(Vis*)` for every record, by rising id; `make_boxes(items)`
    // gives the boxes of the records, each with the place of its record. The answer keeps the order
    // of the records, and stands until the next call.
    template <class ForEach, class MakeBoxes>
    const std::vector<Vis*>& Find(const HitQuery& q, unsigned long long revision, ForEach for_each,
                                  MakeBoxes make_boxes) {
        candidates_.clear();
        const IndexState::Action action = state_.Next(revision);
        if (action == IndexState::Action::kWalk) {
            for_each([&](Vis* vis) { candidates_.push_back(vis); });
            return candidates_;
        }
        if (action == IndexState::Action::kBuild) {
            items_.clear();
            for_each([&](Vis* vis) { items_.push_back(vis); });
            index_.Build(make_boxes(items_));
        }
        found_.clear();
        index_.Query(q.x1, q.y1, q.x2, q.y2, found_);
        std::sort(found_.begin(), found_.end());
        found_.erase(std::unique(found_.begin(), found_.end()), found_.end());
        for (const std::int32_t i : found_) {
            candidates_.push_back(items_[static_cast<std::size_t>(i)]);
        }
        return candidates_;
    }

private:
    IndexState state_;
    HitIndex index_;
    std::vector<Vis*> items_;
    std::vector<Vis*> candidates_;
    std::vector<std::int32_t> found_;
};

[[nodiscard]] std::vector<HitBox> make_node_boxes(const std::vector<DefaultNodeVis*>& items);
[[nodiscard]] std::vector<HitBox> make_edge_boxes(const std::vector<DefaultEdgeVis*>& items);

// The exact tests.
[[nodiscard]] graph_ptr<NodeImplSet> collect_hits(const HitQuery& query,
                                                  const std::vector<DefaultNodeVis*>& candidates);
[[nodiscard]] graph_ptr<EdgeImplSet> collect_hits(const HitQuery& query,
                                                  const std::vector<DefaultEdgeVis*>& candidates);

}  // namespace nodeline::internal
