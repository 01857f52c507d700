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
    explicit Straightener(StableRun& run) : run_(run), place_(run.y.size(), 0) {
        const int n = static_cast<int>(run.levels.size());
        for (int k = 1; k <= n - 2; ++k) {
            const auto& level = run.level_at(k);
            for (std::size_t i = 0; i < level.size(); ++i) at(place_, level[i]) = i;
        }
    }

    void Run() {
        for (EdgeIndex e = 0; e < run_.edge_count(); ++e) {
            if (at(run_.courses, e).crossed() > 0) straighten(e);
        }
    }

private:
    // Where a dummy node may stand.
    struct Room {
        double top;
        double bottom;
    };

    [[nodiscard]] Room room(int k, Vertex v) {
        const auto& level = run_.level_at(k);
        const std::size_t i = at(place_, v);
        Room room{-kEndless, kEndless};
        if (i > 0) {
            const Vertex above = level[i - 1];
            room.top = at(run_.y, above) + run_.height(above) + run_.spacing(above, v);
        }
        if (i + 1 < level.size()) {
            const Vertex below = level[i + 1];
            room.bottom = at(run_.y, below) - run_.height(v) - run_.spacing(v, below);
        }
        // A level that is short of room stays as it is.
        if (room.bottom < room.top) room = {at(run_.y, v), at(run_.y, v)};
        return room;
    }

    void straighten(EdgeIndex e) {
        const Course& course = at(run_.courses, e);
        const Vertex left = course.runs_left() ? course.to : course.from;
        const Vertex right = course.runs_left() ? course.from : course.to;
        bool has_wish = left != kNoVertex && !course.runs_left();
        double wish = has_wish ? run_.end_y(e, left, ORDER_OUT) : 0.0;
        for (int first = course.low; first <= course.high;) {
            Room shared{-kEndless, kEndless};
            int next = first;
            for (; next <= course.high; ++next) {
                const Room here = room(next, run_.vertex_on(e, next));
                const Room both{std::max(shared.top, here.top),
                                std::min(shared.bottom, here.bottom)};
                if (both.bottom < both.top) break;
                shared = both;
            }
            if (next > course.high && !course.runs_left() && right != kNoVertex) {
                const double end = run_.end_y(e, right, ORDER_IN);
                const bool bends_anyway = !has_wish || wish < shared.top || wish > shared.bottom;
                if (bends_anyway) wish = end;
                has_wish = true;
            }
            if (!has_wish) wish = at(run_.y, run_.vertex_on(e, first));
            wish = std::clamp(wish, shared.top, shared.bottom);
            has_wish = true;
            for (; first < next; ++first) at(run_.y, run_.vertex_on(e, first)) = wish;
        }
    }

    StableRun& run_;
    std::vector<std::size_t> place_;  // by vertex: the place in its level
};

}  // namespace

void straighten(StableRun& run) {
    if (run.options().straighten) Straightener(run).Run();
}

}  // namespace nodeline::internal
