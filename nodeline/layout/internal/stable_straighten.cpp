// How the stable layout takes bends out of long edges.
#include <nodeline/layout/internal/stable_steps.h>

#include <algorithm>
#include <limits>

namespace nodeline::internal {

namespace {

constexpr double kEndless = std::numeric_limits<double>::infinity();

// Moves the dummy nodes of one edge after the other between their neighbours, which stay. The
// levels that share a y are taken together as far as they go, so an edge bends only where it must.
class Straightener {
public:
    explicit Straightener(StableRun& run) : run_(run), place_(run.y.size(), 0) { collect_slots(); }

    void Run() {
        for (EdgeIndex e = 0; e < run_.edge_count(); ++e) {
            if (at(run_.courses, e).crossed() > 0) straighten(e);
        }
        write_back();
    }

private:
    // What stands on a level: an edge asks for little of many levels, so that lies together.
    struct Slot {
        double y;
        double height;
        double spacing;  // to a dummy node beside it
    };

    // Where a dummy node may stand.
    struct Room {
        double top;
        double bottom;
    };

    // Level by level, each between two slots that bound nothing.
    void collect_slots() {
        const double half = 0.5 * run_.settings().node_spacing;
        slots_.reserve(run_.y.size() + run_.levels.size());
        for_each_level([&](const std::vector<Vertex>& level) {
            slots_.push_back({-kEndless, 0.0, 0.0});
            for (const Vertex v : level) {
                at(place_, v) = static_cast<std::int32_t>(slots_.size());
                const double spacing = run_.is_dummy(v) ? run_.settings().dummy_spacing : half;
                slots_.push_back({at(run_.y, v), run_.height(v), spacing});
            }
            slots_.push_back({kEndless, 0.0, 0.0});
        });
    }

    void write_back() {
        for_each_level([&](const std::vector<Vertex>& level) {
            for (const Vertex v : level) at(run_.y, v) = at(slots_, at(place_, v)).y;
        });
    }

    template <class F>
    void for_each_level(F f) {
        const int n = static_cast<int>(run_.levels.size());
        for (int k = 1; k <= n - 2; ++k) f(run_.level_at(k));
    }

    [[nodiscard]] Room room(std::int32_t place) const {
        const Slot& above = at(slots_, place - 1);
        const Slot& self = at(slots_, place);
        const Slot& below = at(slots_, place + 1);
        const Room room{above.y + above.height + above.spacing,
                        below.y - self.height - below.spacing};
        // A level that is short of room stays as it is.
        return room.bottom < room.top ? Room{self.y, self.y} : room;
    }

    // The places of the edge's dummy nodes, by rising level.
    void find_path(EdgeIndex e, const Course& course) {
        path_.clear();
        for (int k = course.low; k <= course.high; ++k) {
            path_.push_back(at(place_, run_.vertex_on(e, k)));
        }
    }

    void straighten(EdgeIndex e) {
        const Course& course = at(run_.courses, e);
        find_path(e, course);
        const Vertex left = course.runs_left() ? course.to : course.from;
        const Vertex right = course.runs_left() ? course.from : course.to;
        bool has_wish = left != kNoVertex && !course.runs_left();
        double wish = has_wish ? run_.end_y(e, left, ORDER_OUT) : 0.0;
        for (auto first = path_.begin(); first != path_.end();) {
            Room shared{-kEndless, kEndless};
            auto next = first;
            for (; next != path_.end(); ++next) {
                const Room here = room(*next);
                const Room both{std::max(shared.top, here.top),
                                std::min(shared.bottom, here.bottom)};
                if (both.bottom < both.top) break;
                shared = both;
            }
            if (next == path_.end() && !course.runs_left() && right != kNoVertex) {
                const double end = run_.end_y(e, right, ORDER_IN);
                const bool bends_anyway = !has_wish || wish < shared.top || wish > shared.bottom;
                if (bends_anyway) wish = end;
                has_wish = true;
            }
            if (!has_wish) wish = at(slots_, *first).y;
            wish = std::clamp(wish, shared.top, shared.bottom);
            has_wish = true;
            for (; first != next; ++first) at(slots_, *first).y = wish;
        }
    }

    StableRun& run_;
    std::vector<Slot> slots_;
    std::vector<std::int32_t> place_;  // by vertex: its slot
    std::vector<std::int32_t> path_;   // of the edge at hand
};

}  // namespace

void straighten(StableRun& run) {
    if (run.options().straighten) Straightener(run).Run();
}

}  // namespace nodeline::internal
