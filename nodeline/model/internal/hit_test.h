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

class NodeHitTest {
public:
    // `for_each(visit)` calls `visit(DefaultNodeVis*)` for every record, by rising id.
    template <class ForEach>
    graph_ptr<NodeImplSet> Test(const HitQuery& query, unsigned long long revision,
                                ForEach for_each) {
        candidates_.clear();
        const IndexState::Action action = state_.Next(revision);
        if (action == IndexState::Action::kWalk) {
            for_each([&](DefaultNodeVis* vis) { candidates_.push_back(vis); });
            return collect(query);
        }
        if (action == IndexState::Action::kBuild) {
            items_.clear();
            for_each([&](DefaultNodeVis* vis) { items_.push_back(vis); });
            build();
        }
        query_index(query);
        return collect(query);
    }

private:
    void build();
    void query_index(const HitQuery& query);
    // Applies the exact test to the candidates, in order.
    graph_ptr<NodeImplSet> collect(const HitQuery& query) const;

    IndexState state_;
    HitIndex index_;
    std::vector<DefaultNodeVis*> items_;
    std::vector<DefaultNodeVis*> candidates_;
    std::vector<std::int32_t> found_;
};

class EdgeHitTest {
public:
    // `for_each(visit)` calls `visit(DefaultEdgeVis*)` for every record, by rising id.
    template <class ForEach>
    graph_ptr<EdgeImplSet> Test(const HitQuery& query, unsigned long long revision,
                                ForEach for_each) {
        candidates_.clear();
        const IndexState::Action action = state_.Next(revision);
        if (action == IndexState::Action::kWalk) {
            for_each([&](DefaultEdgeVis* vis) { candidates_.push_back(vis); });
            return collect(query);
        }
        if (action == IndexState::Action::kBuild) {
            items_.clear();
            for_each([&](DefaultEdgeVis* vis) { items_.push_back(vis); });
            build();
        }
        query_index(query);
        return collect(query);
    }

private:
    void build();
    void query_index(const HitQuery& query);
    graph_ptr<EdgeImplSet> collect(const HitQuery& query) const;

    IndexState state_;
    HitIndex index_;
    std::vector<DefaultEdgeVis*> items_;
    std::vector<DefaultEdgeVis*> candidates_;
    std::vector<std::int32_t> found_;
};

}  // namespace nodeline::internal
