#include <nodeline/layout/internal/block_adjuster.h>
#include <nodeline/layout/internal/steps.h>

#include <cfloat>

namespace nodeline::internal {

namespace {

void adjust_level(BlockAdjuster& adjuster, const std::vector<Vertex>& level,
                  DependenceLevel dependence) {
    adjuster.force_adjust_block(level.data(), level.data() + level.size(), dependence, false,
                                -DBL_MAX, DBL_MAX);
}

// Settles the runs of dummy nodes of a level in the gaps between its real nodes.
void adjust_dummies(LayoutRun& run, BlockAdjuster& adjuster, const std::vector<Vertex>& level) {
    const double half = 0.5 * run.settings().node_spacing;
    const Vertex* const end = level.data() + level.size();
    double lowest = -DBL_MAX;
    for (const Vertex* q = level.data(); q != end;) {
        if (!run.is_dummy(*q)) {
            lowest = at(run.y, *q) + half + run.get_height(*q);
            ++q;
            continue;
        }
        const Vertex* stop = q;
        while (stop != end && run.is_dummy(*stop)) ++stop;
        const double highest = stop == end ? DBL_MAX : at(run.y, *stop) - half;
        adjuster.force_adjust_block(q, stop, DEPEND_OUT, true, lowest, highest);
        q = stop;
    }
}

}  // namespace

// Real nodes settle first, on real neighbours; the dummy nodes of long edges follow, from right to
// left. Level 1 anchors the forward pass and the last inner level the backward ones.
void force_adjust(LayoutRun& run) {
    const int n = static_cast<int>(run.levels.size());
    if (n < 3) return;
    BlockAdjuster adjuster(run);
    for (int k = 2; k <= n - 2; ++k) adjust_level(adjuster, run.level_at(k), DEPEND_IN);
    if (run.settings().backward_force_pass) {
        for (int k = n - 3; k >= 1; --k) adjust_level(adjuster, run.level_at(k), DEPEND_OUT);
    }
    for (int k = n - 3; k >= 1; --k) adjust_dummies(run, adjuster, run.level_at(k));
}

}  // namespace nodeline::internal
