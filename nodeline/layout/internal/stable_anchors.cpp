#include <nodeline/layout/internal/stable_anchors.h>

#include <nodeline/layout/internal/stable_steps.h>
#include <nodeline/model/internal/record_access.h>

namespace nodeline::internal {

namespace {

// Finds the heights next to the boxes of a level table that has its order.
class AnchorFinder {
public:
    AnchorFinder(const StableRun& run, Anchors& anchors) : run_(run), anchors_(anchors) {}

    void Run() {
        for (EdgeIndex e = 0; e < run_.edge_count(); ++e) {
            const Course& course = at(run_.courses, e);
            if (course.kind == CourseKind::kNone) continue;
            if (is_box(course.to)) set(e, course.to, ORDER_IN, height_before(e, course));
            if (is_box(course.from)) set(e, course.from, ORDER_OUT, height_behind(e, course));
        }
    }

private:
    [[nodiscard]] bool is_box(Vertex v) const {
        return v != kNoVertex && owned_of(run_.record(v)).size() > 0;
    }

    void set(EdgeIndex e, Vertex box, Order side, std::optional<double> height) {
        if (height) anchors_.Set(run_.id_of(box), run_.edge_id(e), side, *height);
    }

    [[nodiscard]] double height(Vertex v, int level) const {
        return at(run_.y, v) / static_cast<double>(at(run_.levels, level).size());
    }

    [[nodiscard]] std::optional<double> height_before(EdgeIndex e, const Course& course) const {
        const bool is_forward = course.kind == CourseKind::kForward;
        if (is_forward || course.kind == CourseKind::kIn) {
            if (course.crossed() > 0) return height(run_.vertex_on(e, course.high), course.high);
            if (is_forward) return height(course.from, run_.level_of(course.from));
            return anchors_.Find(run_.owner_id(), run_.edge_id(e), ORDER_IN);
        }
        return height_of_lane(course, course.from, course.to);
    }

    [[nodiscard]] std::optional<double> height_behind(EdgeIndex e, const Course& course) const {
        const bool is_forward = course.kind == CourseKind::kForward;
        if (is_forward || course.kind == CourseKind::kOut) {
            if (course.crossed() > 0) return height(run_.vertex_on(e, course.low), course.low);
            if (is_forward) return height(course.to, run_.level_of(course.to));
            return anchors_.Find(run_.owner_id(), run_.edge_id(e), ORDER_OUT);
        }
        return height_of_lane(course, course.to, course.from);
    }

    // An edge that turns runs below its node, but a flat one comes in from where it is from.
    [[nodiscard]] double height_of_lane(const Course& course, Vertex far, Vertex near) const {
        const bool from_above =
            course.kind == CourseKind::kFlat && at(run_.y, far) < at(run_.y, near);
        return from_above ? 0.0 : 1.0;
    }

    const StableRun& run_;
    Anchors& anchors_;
};

}  // namespace

void find_anchors(const StableRun& run, Anchors& anchors) { AnchorFinder(run, anchors).Run(); }

}  // namespace nodeline::internal
