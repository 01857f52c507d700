#include <nodeline/layout/internal/block_adjuster.h>

#include <cfloat>

namespace nodeline::internal {

void BlockAdjuster::force_adjust_block(const Vertex* first, const Vertex* last,
                                       DependenceLevel dependence, bool with_dummies, double lower,
                                       double upper) {
    if (first == last) return;
    first_ = first;
    last_ = last;
    dependence_ = dependence;
    with_dummies_ = with_dummies;
    collect_pulls();
    move_blocks(lower);
    keep_below(upper);
}

void BlockAdjuster::collect_pulls() {
    pulls_.assign(static_cast<std::size_t>(last_ - first_), Pull());
    for (const Vertex* q = first_; q != last_; ++q) {
        if (run_.is_dummy(*q) && !with_dummies_) continue;
        pulls_[static_cast<std::size_t>(q - first_)] = pull_on(*q);
    }
}

BlockAdjuster::Pull BlockAdjuster::pull_on(Vertex v) const {
    const bool is_dummy = run_.is_dummy(v);
    const double centre = is_dummy ? at(run_.y, v) : at(run_.y, v) + 0.5 * at(run_.sizes, v).cy;
    double sum = 0.0;
    int count = 0;
    // A real node follows real neighbours alone; a dummy node follows all of its own.
    const auto pull = [&](const LayoutRun::Link& link) {
        if (run_.is_dummy(link.node) && !is_dummy) return;
        sum += run_.port_y(link) - centre;
        ++count;
    };
    if (dependence_ != DEPEND_OUT) {
        for (const auto& link : run_.links(ORDER_IN, v)) pull(link);
    }
    if (dependence_ != DEPEND_IN) {
        for (const auto& link : run_.links(ORDER_OUT, v)) {
            // What was not in the picture before does not pull from the right.
            if (dependence_ == DEPEND_INOUT && !run_.is_old_here(link.node)) continue;
            pull(link);
        }
    }
    if (count == 0) return {};
    return {sum / count, false};
}

// Within a block the forces do not rise from top to bottom: an upper node that is pushed down at
// least as hard as the one below it would run into that, so the two share one shift. A later block
// never shifts by less than the one before, so no gap shrinks.
void BlockAdjuster::move_blocks(double lower) {
    double floor = lower;
    const Vertex* q = first_;
    while (q != last_) {
        const Vertex* block_start = q;
        double previous = DBL_MAX;
        double sum = 0.0;
        int count = 0;
        for (; q != last_; ++q) {
            const Pull& pull = pulls_[static_cast<std::size_t>(q - first_)];
            if (pull.is_free) continue;
            if (pull.force > previous) break;
            previous = pull.force;
            sum += pull.force;
            ++count;
        }
        if (count == 0) return;
        double shift = sum / count;
        const double top = at(run_.y, *block_start);
        if (floor > top + shift) {
            shift = floor - top;
            // Rounding alone can leave the block above its floor.
            if (floor > top + shift) block_start = first_;
        }
        for (const Vertex* p = block_start; p != q; ++p) at(run_.y, *p) += shift;
        if (q == last_) return;
        floor = shift + at(run_.y, *q);
    }
}

void BlockAdjuster::keep_below(double upper) {
    double ceiling = upper;
    for (const Vertex* p = last_; p != first_;) {
        --p;
        const double gap = run_.half_spacing(*p);
        const double bottom = at(run_.y, *p) + run_.get_height(*p) + gap;
        if (ceiling >= bottom) return;
        const double y = at(run_.y, *p) - (bottom - ceiling);
        at(run_.y, *p) = y;
        ceiling = y - gap;
    }
}

}  // namespace nodeline::internal
