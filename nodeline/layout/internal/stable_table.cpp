// How the stable layout builds its table of levels.
#include <nodeline/layout/internal/stable_steps.h>
#include <nodeline/model/internal/record_access.h>

#include <algorithm>
#include <climits>
#include <utility>

namespace nodeline::internal {

void recall(StableRun& run) {
    for (Vertex v = 0; v < run.node_count(); ++v) {
        const OwnerMemory::NodeEntry* entry = run.remembered_node(v);
        if (entry == nullptr || entry->spot.level < 1) continue;
        NodeInfo& info = at(run.old_infos, v);
        info.level = entry->spot.level;
        info.old = true;
        at(run.infos, v) = info;
        if (!entry->has_place) continue;
        at(run.y, v) = entry->spot.y;
        at(run.placing, v) = entry->spot.is_taken ? Placing::kPlaced : Placing::kReturning;
        if (entry->spot.is_taken) at(run.places, v) = entry->spot.place;
    }
}

void lift_levels(StableRun& run) {
    int least = INT_MAX;
    for (const NodeInfo& info : run.infos) least = std::min(least, info.level);
    if (least > 0) return;
    run.lifted = 1 - least;
    for (NodeInfo& info : run.infos) info.level += run.lifted;
    if (run.bands.size() < 2) return;
    run.bands.insert(run.bands.begin() + 1, static_cast<std::size_t>(run.lifted), Level());
}

namespace {

class CourseLayer {
public:
    explicit CourseLayer(StableRun& run) : run_(run) {}

    void Run() {
        int last = 0;
        for (Vertex v = 0; v < run_.node_count(); ++v) {
            if (at(run_.hidden, v) != 0) continue;
            // An edge that its source has lost leads no level to its target, and keeps it from
            // being a start.
            int& level = at(run_.infos, v).level;
            level = std::max(level, 1);
            last = std::max(last, level);
        }
        border_ = last + 1;
        run_.levels.resize(static_cast<std::size_t>(border_) + 1);
        for (Vertex v = 0; v < run_.node_count(); ++v) {
            if (at(run_.hidden, v) == 0) lay_around(v);
        }
    }

private:
    void lay_around(Vertex v) {
        run_.level_at(run_.level_of(v)).push_back(v);
        for (const auto& entry : run_.neighbours(OwnerEdges::kEdgesIn, v)) {
            lay_across_border(entry.edge, v, ORDER_IN);
        }
        for (const auto& entry : run_.neighbours(OwnerEdges::kEdgesOut, v)) {
            lay_across_border(entry.edge, v, ORDER_OUT);
        }
        for (const auto& entry : run_.neighbours(OwnerEdges::kChildren, v)) {
            if (run_.is_drawn(entry.edge)) lay_between(entry.edge, v, entry.node);
        }
    }

    // An edge whose other end is the owner itself is met twice, and laid once.
    void lay_across_border(EdgeIndex e, Vertex v, Order side) {
        Course& course = at(run_.courses, e);
        if (course.kind != CourseKind::kNone || !run_.is_drawn(e)) return;
        const int level = run_.level_of(v);
        IEdgeImpl& impl = run_.edge_record(e);
        const EdgeEnd far = side == ORDER_IN ? from_of(impl) : to_of(impl);
        const bool meets_owner = far.node == run_.owner().record().get();
        (side == ORDER_IN ? course.to : course.from) = v;
        if (meets_owner) {
            course.kind = side == ORDER_IN ? CourseKind::kFromOwner : CourseKind::kToOwner;
            course.first_bend = side == ORDER_IN ? 1 : 4;
            take_lane(e, v);
        } else {
            course.kind = side == ORDER_IN ? CourseKind::kIn : CourseKind::kOut;
            course.first_bend = side == ORDER_IN ? 1 : 2;
        }
        // An edge from the owner comes in from the right, and one to it goes out to the left.
        const bool crosses_lower = (side == ORDER_IN) != meets_owner;
        course.low = crosses_lower ? 1 : level + 1;
        course.high = crosses_lower ? level - 1 : border_ - 1;
        const int ends = meets_owner ? 5 : 3;
        lay_chain(e, 2 * course.crossed() + ends);
    }

    void lay_between(EdgeIndex e, Vertex from, Vertex to) {
        Course& course = at(run_.courses, e);
        course.from = from;
        course.to = to;
        const int from_level = run_.level_of(from);
        const int to_level = run_.level_of(to);
        if (from_level == to_level) {
            course.kind = CourseKind::kFlat;
            take_lane(e, from);
            // The steps that are shared reckon with a lane at either end.
            if (from != to) ++at(run_.backedge_count, to);
            lay_chain(e, 6);
            return;
        }
        course.kind = from_level > to_level ? CourseKind::kBackward : CourseKind::kForward;
        if (course.runs_left()) {
            take_lane(e, from);
            take_lane(e, to);
        }
        course.first_bend = course.runs_left() ? 4 : 2;
        course.low = std::min(from_level, to_level) + 1;
        course.high = std::max(from_level, to_level) - 1;
        lay_chain(e, 2 * course.crossed() + 2 * course.first_bend);
    }

    void take_lane(EdgeIndex e, Vertex v) {
        ++at(run_.backedge_count, v);
        at(run_.lane_room, v) += run_.settings().dummy_spacing + run_.edge_width(e);
    }

    // Gives the edge its bends, and its crossed levels a vertex each, and links them. A chain that
    // has the right length is kept.
    void lay_chain(EdgeIndex e, int bends) {
        const EdgeState& state = at(run_.edges, e);
        if (state.chain != nullptr && state.chain->GetCount() == bends) {
            run_.keep_chain(e);
        } else {
            run_.replace_chain(e, bends);
        }
        const Course& course = at(run_.courses, e);
        if (course.kind == CourseKind::kFlat) return;
        Vertex lower = course.runs_left() ? course.to : course.from;
        const Vertex higher = course.runs_left() ? course.from : course.to;
        StableRun::Spots spots = run_.remembered_spots(e, course.low);
        for (int level = course.low; level <= course.high; ++level) {
            const Vertex v = run_.dummy(e, course.bend_on(level));
            run_.level_at(level).push_back(v);
            run_.break_info(e, course.bend_on(level)).level = level;
            recall_spot(v, level, spots);
            if (lower != kNoVertex) run_.mark_as_neighbours(lower, v, e);
            lower = v;
        }
        if (lower != kNoVertex && higher != kNoVertex) run_.mark_as_neighbours(lower, higher, e);
    }

    // The place that a long edge had on a level; `spots` are those from this level on.
    void recall_spot(Vertex v, int level, StableRun::Spots& spots) {
        at(run_.y, v) = 0.0;
        run_.placing.push_back(Placing::kFresh);
        run_.places.push_back(-1);
        if (spots.next == spots.last || spots.next->level + run_.lifted != level) return;
        const Spot& spot = *spots.next++;
        at(run_.y, v) = spot.y;
        run_.placing.back() = spot.is_taken ? Placing::kPlaced : Placing::kReturning;
        if (spot.is_taken) run_.places.back() = spot.place;
    }

    StableRun& run_;
    int border_ = 1;
};

// Puts what stood on a level back in its order, ahead of what is new there.
void restore_order(StableRun& run) {
    std::vector<Vertex> standing;
    std::vector<Vertex> rest;
    for (auto& level : run.levels) {
        standing.clear();
        rest.clear();
        for (const Vertex v : level) {
            const int place = at(run.places, v);
            if (place < 0) {
                rest.push_back(v);
                continue;
            }
            if (static_cast<std::size_t>(place) >= standing.size()) {
                standing.resize(static_cast<std::size_t>(place) + 1, kNoVertex);
            }
            Vertex& slot = at(standing, place);
            slot == kNoVertex ? slot = v : rest.emplace_back(v);
        }
        if (standing.empty()) continue;
        const auto end = std::copy_if(standing.begin(), standing.end(), level.begin(),
                                      [](Vertex v) { return v != kNoVertex; });
        std::copy(rest.begin(), rest.end(), end);
    }
}

}  // namespace

void number_by_level(StableRun& run) {
    const std::vector<Vertex> numbers = run.number_by_level();
    std::vector<Placing> placing = run.placing;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        at(placing, numbers[i]) = run.placing[i + static_cast<std::size_t>(run.node_count())];
    }
    run.placing = std::move(placing);
    run.index_links();
}

void lay_courses(StableRun& run) {
    CourseLayer(run).Run();
    restore_order(run);
}

// What an edge left elsewhere, before one of its ends moved, would turn up in its route.
void drop_stale_stretches(StableRun& run) {
    std::vector<int> path;
    for (EdgeIndex e = 0; e < run.edge_count(); ++e) {
        EdgeState& edge = at(run.edges, e);
        const CourseKind kind = at(run.courses, e).kind;
        if (!edge.vis || kind == CourseKind::kIn || kind == CourseKind::kOut) continue;
        if (kind == CourseKind::kNone) {
            edge.vis->remove_break_nodes_in(run.owner_id());
            edge.chain = nullptr;
            continue;
        }
        if (run.joins_nodes(e) && edge.vis->GetStretchCount() == 1) continue;
        IEdgeImpl& impl = run.edge_record(e);
        path.assign(1, run.owner_id());
        for (const INodeImpl* end : {from_of(impl).node, to_of(impl).node}) {
            run.for_each_owner(end,
                               [&](const INodeImpl& above) { path.push_back(above.get_id()); });
        }
        if (edge.vis->GetStretchCount() == static_cast<int>(path.size())) continue;
        edge.vis->KeepStretchesIn(path);
    }
}

}  // namespace nodeline::internal
