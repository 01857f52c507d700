// Where the stable layout draws nodes and routes.
#include <nodeline/layout/internal/stable_steps.h>

#include <algorithm>

namespace nodeline::internal {

namespace {

class RouteDrawer {
public:
    explicit RouteDrawer(StableRun& run) : run_(run), settings_(run.settings()) {}

    void Run() {
        const int n = static_cast<int>(run_.levels.size());
        right_border_ = fit_bands(n);
        for (int k = 1; k <= n - 2; ++k) {
            for (const Vertex v : run_.level_at(k)) place(v, at(run_.bands, k));
        }
        for (EdgeIndex e = 0; e < run_.edge_count(); ++e) draw(e);
        run_.extent = {right_border_, bottom_ + settings_.node_spacing};
    }

private:
    // A band neither moves to the left nor shrinks. Gives the x of the right border.
    double fit_bands(int n) {
        if (static_cast<int>(run_.bands.size()) < n) {
            run_.bands.resize(static_cast<std::size_t>(n));
        }
        double x = settings_.level_spacing;
        double border = x;
        for (std::size_t k = 1; k < run_.bands.size(); ++k) {
            Level& band = run_.bands[k];
            const bool is_inner = static_cast<int>(k) <= n - 2;
            const double width =
                std::max(band.width, is_inner ? needed_width(static_cast<int>(k)) : 0.0);
            band.start = std::max(band.start, x);
            band.end = std::max(band.end, band.start + width);
            band.width = band.end - band.start;
            x = band.width != 0.0 ? band.end + settings_.level_spacing : band.end;
            if (is_inner) border = x;
        }
        return border;
    }

    // Nodes without a width need room too where edges turn beside them.
    [[nodiscard]] double needed_width(int k) {
        double width = 0.0;
        bool turns = false;
        for (const Vertex v : run_.level_at(k)) {
            if (run_.is_dummy(v)) continue;
            width = std::max(width, at(run_.sizes, v).cx);
            turns = turns || at(run_.backedge_count, v) > 0;
        }
        return width != 0.0 || turns ? width + 2.0 * settings_.backedge_spacing : 0.0;
    }

    void place(Vertex v, const Level& band) {
        if (run_.is_dummy(v)) {
            reach(at(run_.y, v) + run_.get_height(v));
            return;
        }
        at(run_.x, v) = (band.start + band.end - at(run_.sizes, v).cx) * 0.5;
        double lane = at(run_.y, v) + at(run_.sizes, v).cy;
        const auto take_lane = [&](EdgeIndex e, double Course::*end) {
            lane += settings_.dummy_spacing;
            at(run_.courses, e).*end = lane;
            lane += run_.edge_width(e);
        };
        for (const auto& entry : run_.neighbours(OwnerEdges::kChildren, v)) {
            const CourseKind kind = at(run_.courses, entry.edge).kind;
            if (kind == CourseKind::kBackward || kind == CourseKind::kFlat) {
                take_lane(entry.edge, &Course::lane_from);
            }
        }
        for (const auto& entry : run_.neighbours(OwnerEdges::kParents, v)) {
            const CourseKind kind = at(run_.courses, entry.edge).kind;
            if (kind == CourseKind::kBackward) take_lane(entry.edge, &Course::lane_to);
        }
        take_owner_lanes(v, take_lane);
        reach(lane);
    }

    // An edge with the owner itself stands twice among those that cross the border.
    template <class TakeLane>
    void take_owner_lanes(Vertex v, TakeLane take_lane) {
        const auto take = [&](OwnerEdges::Kind side, CourseKind wanted, double Course::*end) {
            EdgeIndex previous = -1;
            for (const auto& entry : run_.neighbours(side, v)) {
                if (entry.edge == previous) continue;
                previous = entry.edge;
                if (at(run_.courses, entry.edge).kind == wanted) take_lane(entry.edge, end);
            }
        };
        take(OwnerEdges::kEdgesOut, CourseKind::kToOwner, &Course::lane_from);
        take(OwnerEdges::kEdgesIn, CourseKind::kFromOwner, &Course::lane_to);
    }

    void reach(double y) { bottom_ = std::max(bottom_, y); }

    [[nodiscard]] const Level& band_of(Vertex v) const { return at(run_.bands, run_.level_of(v)); }

    void draw(EdgeIndex e) {
        const Course& course = at(run_.courses, e);
        if (course.kind == CourseKind::kNone) return;
        chain_ = at(run_.edges, e).chain;
        bend_ = 0;
        begin(e, course);
        course.runs_left() ? draw_crossings_leftwards(e, course)
                           : draw_crossings_rightwards(e, course);
        finish(e, course);
    }

    // From the right side of the source to the edge of its band, or from the border.
    void begin(EdgeIndex e, const Course& course) {
        if (course.kind == CourseKind::kIn) return bend_to(0.0, first_y(e, course));
        if (course.kind == CourseKind::kFromOwner)
            return bend_to(right_border_, first_y(e, course));
        const Vertex v = course.from;
        const double right = at(run_.x, v) + at(run_.sizes, v).cx;
        const double y = run_.end_y(e, v, ORDER_OUT);
        const bool turns = course.runs_left() || course.kind == CourseKind::kFlat;
        bend_to(right, y);
        bend_to(turns ? right + settings_.backedge_spacing : band_of(v).end, y);
        if (!turns) return;
        bend_to(right + settings_.backedge_spacing, course.lane_from);
        bend_to(band_of(v).start, course.lane_from);
    }

    void draw_crossings_rightwards(EdgeIndex e, const Course& course) {
        for (int k = course.low; k <= course.high; ++k) {
            const double y = at(run_.y, run_.vertex_on(e, k));
            bend_to(at(run_.bands, k).start, y);
            bend_to(at(run_.bands, k).end, y);
        }
    }

    void draw_crossings_leftwards(EdgeIndex e, const Course& course) {
        for (int k = course.high; k >= course.low; --k) {
            const double y = at(run_.y, run_.vertex_on(e, k));
            bend_to(at(run_.bands, k).end, y);
            bend_to(at(run_.bands, k).start, y);
        }
    }

    // From the edge of the band to the left side of the target, or to the border.
    void finish(EdgeIndex e, const Course& course) {
        if (course.kind == CourseKind::kOut) return bend_to(right_border_, last_y(e, course));
        if (course.kind == CourseKind::kToOwner) return bend_to(0.0, last_y(e, course));
        const Vertex v = course.to;
        const double left = at(run_.x, v);
        const double y = run_.end_y(e, v, ORDER_IN);
        if (course.runs_left()) {
            bend_to(band_of(v).end, course.lane_to);
            bend_to(left - settings_.backedge_spacing, course.lane_to);
            bend_to(left - settings_.backedge_spacing, y);
        } else {
            bend_to(band_of(v).start, y);
        }
        bend_to(left, y);
    }

    // A port lies level with what the edge leads to.
    [[nodiscard]] double first_y(EdgeIndex e, const Course& course) const {
        if (course.crossed() > 0) {
            return at(run_.y, run_.vertex_on(e, course.runs_left() ? course.high : course.low));
        }
        return course.runs_left() ? course.lane_to : run_.end_y(e, course.to, ORDER_IN);
    }
    [[nodiscard]] double last_y(EdgeIndex e, const Course& course) const {
        if (course.crossed() > 0) {
            return at(run_.y, run_.vertex_on(e, course.runs_left() ? course.low : course.high));
        }
        return course.runs_left() ? course.lane_from : run_.end_y(e, course.from, ORDER_OUT);
    }

    void bend_to(double x, double y) { chain_->SetPositionAt(bend_++, x, y); }

    StableRun& run_;
    const LayoutSettings& settings_;
    BreakChain* chain_ = nullptr;
    int bend_ = 0;
    double right_border_ = 0.0;
    double bottom_ = 0.0;
};

}  // namespace

void draw_routes(StableRun& run) { RouteDrawer(run).Run(); }

}  // namespace nodeline::internal
