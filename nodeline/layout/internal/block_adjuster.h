// The block-wise movement of vertices along a level.
#pragma once

#include <nodeline/layout/internal/layout_run.h>

#include <vector>

namespace nodeline::internal {

// Which neighbours pull on a vertex: those before it, those after it, or both, of which the ones
// after it count only if they were in the picture before.
enum DependenceLevel { DEPEND_IN = 0, DEPEND_OUT = 1, DEPEND_INOUT = 2 };

// Moves the vertices of a range of one level by blocks: neighbours whose pulls conflict move
// together by the mean of their pulls. Keeps the order, and lets no gap shrink.
class BlockAdjuster {
public:
    explicit BlockAdjuster(LayoutRun& run) : run_(run) {}

    // Keeps the range between the bounds, where the upper one wins. Dummy nodes are pulled only if
    // `with_dummies`, else they move along.
    void force_adjust_block(const Vertex* first, const Vertex* last, DependenceLevel dependence,
                            bool with_dummies, double lower, double upper);

private:
    // The pull that the neighbours of a vertex exert along its level.
    struct Pull {
        double force = 0.0;
        // Nothing pulls; the vertex goes where its block goes.
        bool is_free = true;
    };

    [[nodiscard]] Pull pull_on(Vertex v) const;
    void collect_pulls();
    void move_blocks(double lower);
    void keep_below(double upper);

    LayoutRun& run_;
    const Vertex* first_ = nullptr;
    const Vertex* last_ = nullptr;
    DependenceLevel dependence_ = DEPEND_IN;
    bool with_dummies_ = false;
    // By place in the range; a vertex that feels no pull counts as free.
    std::vector<Pull> pulls_;
};

}  // namespace nodeline::internal
