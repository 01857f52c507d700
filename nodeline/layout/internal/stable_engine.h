// The frame of the stable layout: which owners run, through which steps, and in which coordinates
// they are left.
#pragma once

#include <nodeline/layout/internal/stable_run.h>

#include <vector>

namespace nodeline::internal {

// One step of a stable pipeline. Steps that the incremental layout has too take a `LayoutRun`.
struct StableStep {
    const char* name;
    void (*run)(StableRun&);
};
using StablePipeline = std::vector<StableStep>;

class StableEngine {
public:
    explicit StableEngine(const StableLayout::Options& options);

    // `self` is the layout object that the engine works for: contents that name another one are
    // left to that.
    void Make(const Node& node, ILayout& self);
    void Update(const Node& node, ILayout& self);
    void Resize(const Node& node, ILayout& self);

private:
    enum class Mode { kMake, kUpdate, kResize };

    void order_outside_in(const Node& top, ILayout& self, GraphMemory& memory);
    void make_foreign_relative(const Node& top, ILayout& self);
    void run_inside_out(const Node& node, ILayout& self, GraphMemory& memory, Mode mode);
    void run_owner(const Node& owner, GraphMemory& memory, bool afresh);
    template <class Own, class Foreign>
    void for_each_owner(const Node& top, const point<double>& place, ILayout& self,
                        GraphMemory& memory, Own own, Foreign foreign);
    void prepare_shift(const Node& top, ILayout& self, GraphMemory& memory,
                       const point<double>& place);
    void publish(const Node& top, ILayout& self, GraphMemory& memory);
    // What is remembered of the graph; null if its store is not the library's own.
    GraphMemory* memory_of(const Node& node);

    StableLayout::Options options_;
    LayoutSettings settings_;
    LocalInfos local_;
    // Filled for the length of a make.
    Anchors anchors_;
    // Tells the memories of this object from those of others.
    graph_ptr<Countable> token_;
};

}  // namespace nodeline::internal
