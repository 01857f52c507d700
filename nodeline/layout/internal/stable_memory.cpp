#include <nodeline/layout/internal/stable_memory.h>

#include <nodeline/layout/internal/stable_steps.h>
#include <nodeline/model/internal/record_access.h>

#include <iterator>
#include <utility>

namespace nodeline::internal {

namespace {

// Writes the memory of an owner anew, from its drawing and from what was hidden before already.
class Rememberer {
public:
    explicit Rememberer(StableRun& run) : run_(run) {}

    OwnerMemory Run() {
        next_.owner = run_.owner().record();
        next_.bands = run_.bands;
        find_places();
        next_.extent = run_.extent;
        next_.nodes.reserve(static_cast<std::size_t>(run_.node_count()));
        next_.edges.reserve(run_.edges.size());
        next_.spots.reserve(run_.dummies.size());
        next_.bends.reserve(run_.breaks.size());
        for (Vertex v = 0; v < run_.node_count(); ++v) add_node(v);
        for (EdgeIndex e = 0; e < run_.edge_count(); ++e) add_edge(e);
        return std::move(next_);
    }

private:
    void find_places() {
        places_.assign(run_.y.size(), -1);
        for (const auto& level : run_.levels) {
            for (std::size_t i = 0; i < level.size(); ++i) {
                at(places_, level[i]) = static_cast<int>(i);
            }
        }
    }

    void add_node(Vertex v) {
        OwnerMemory::NodeEntry entry;
        entry.id = run_.id_of(v);
        entry.vis = run_.vis(v);
        if (const OwnerMemory::NodeEntry* known = run_.remembered_node(v)) {
            entry.has_place = known->has_place;
            entry.spot.y = known->spot.y;
            entry.position = known->position;
        }
        entry.spot.level = run_.level_of(v);
        entry.spot.is_taken = at(run_.hidden, v) == 0;
        if (entry.spot.is_taken) {
            entry.has_place = true;
            entry.spot.place = at(places_, v);
            entry.spot.y = at(run_.y, v);
            entry.position = {at(run_.x, v), at(run_.y, v)};
        }
        next_.nodes.push_back(std::move(entry));
    }

    void add_edge(EdgeIndex e) {
        const EdgeState& state = at(run_.edges, e);
        if (!state.vis) return;
        const Course& course = at(run_.courses, e);
        OwnerMemory::EdgeEntry entry;
        entry.id = run_.edge_id(e);
        entry.vis = state.vis;
        entry.meets_owner =
            course.kind == CourseKind::kToOwner || course.kind == CourseKind::kFromOwner;
        entry.first_spot = static_cast<std::int32_t>(next_.spots.size());
        add_spots(e, course);
        entry.spot_count = static_cast<std::int32_t>(next_.spots.size()) - entry.first_spot;
        entry.first_bend = static_cast<std::int32_t>(next_.bends.size());
        if (course.kind != CourseKind::kNone && state.chain != nullptr) {
            entry.bend_count = state.chain->GetCount();
            const point<double>* bends = &state.chain->GetPositionAt(0);
            next_.bends.insert(next_.bends.end(), bends, bends + entry.bend_count);
        }
        if (entry.spot_count > 0 || entry.bend_count > 0) next_.edges.push_back(std::move(entry));
    }

    // The spots of this drawing, between those that were known below and above.
    void add_spots(EdgeIndex e, const Course& course) {
        const OwnerMemory::EdgeEntry* known = run_.remembered_edge(e);
        const auto keep = [&](auto wanted) {
            if (known == nullptr) return;
            for (std::int32_t i = 0; i < known->spot_count; ++i) {
                Spot spot = at(run_.memory().spots, known->first_spot + i);
                spot.level += run_.lifted;
                spot.is_taken = false;
                if (wanted(spot.level)) next_.spots.push_back(spot);
            }
        };
        if (course.crossed() == 0 || course.kind == CourseKind::kNone) {
            keep([](int) { return true; });
            return;
        }
        keep([&](int level) { return level < course.low; });
        for (int k = course.low; k <= course.high; ++k) {
            const Vertex v = run_.vertex_on(e, k);
            next_.spots.push_back({k, at(places_, v), true, at(run_.y, v)});
        }
        keep([&](int level) { return level > course.high; });
    }

    StableRun& run_;
    OwnerMemory next_;
    std::vector<int> places_;  // by vertex
};

}  // namespace

void GraphMemory::ForgetRemoved() {
    for (auto it = owners_.begin(); it != owners_.end();) {
        const INodeImpl* node = it->second.owner.get();
        while (node != nullptr && node->get_id() != 0) {
            const INodeImpl* above = node->get_owner().get();
            node = above == node ? nullptr : above;
        }
        it = node == nullptr ? owners_.erase(it) : std::next(it);
    }
}

void remember(StableRun& run) { run.memory() = Rememberer(run).Run(); }

}  // namespace nodeline::internal
