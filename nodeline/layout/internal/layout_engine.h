// The frame of the layered layout: which owners run, and through which steps.
#pragma once

#include <nodeline/layout/internal/layout_run.h>

#include <map>
#include <vector>

namespace nodeline::internal {

// One step of a pipeline.
struct Step {
    const char* name;
    void (*run)(LayoutRun&);
};
using Pipeline = std::vector<Step>;

// Runs the pipelines for the owners of one layout object, and keeps what it knows of each.
class LayoutEngine {
public:
    LayoutSettings settings;
    Pipeline make_steps;
    Pipeline update_steps;
    Pipeline resize_steps;

    // Appends the steps of the incremental layout to the pipelines.
    void AppendSteps();

    // `self` is the layout object that the engine works for: contents that name another one are
    // left to that.
    void Make(const Node& node, ILayout& self);
    void Update(const Node& node, ILayout& self);
    void Resize(const Node& node);

private:
    enum class Mode { kMake, kUpdate };

    void run_inside_out(const Node& node, ILayout& self, Mode mode);
    void make_owner(const Node& node);
    void update_owner(const Node& node);
    // Keeps what a run leaves, and gives its owner the size of the drawing.
    void finish(LayoutRun& run, const Node& node);

    std::map<int, OwnerStore> owner_infos_;
    LocalInfos local_infos_;
};

}  // namespace nodeline::internal
