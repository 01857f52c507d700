#include <nodeline/layout/internal/layout_engine.h>

#include <nodeline/layout/internal/owner_walk.h>
#include <nodeline/layout/internal/steps.h>
#include <nodeline/ops/graph_ops.h>
#include <nodeline/ops/internal/absolute.h>

#include <utility>

namespace nodeline::internal {

namespace {

void run_steps(const Pipeline& pipeline, LayoutRun& run) {
    for (const Step& step : pipeline) step.run(run);
}

}  // namespace

void LayoutEngine::AppendSteps() {
    const auto append = [](Pipeline& pipeline, const Pipeline& steps) {
        pipeline.insert(pipeline.end(), steps.begin(), steps.end());
    };
    append(make_steps, {{"determine_levels", determine_levels},
                        {"place_nodes_on_levels", place_nodes_on_levels},
                        {"barycentric_adjust", barycentric_adjust},
                        {"calculate_initial_y_coords", calculate_initial_y_coords},
                        {"force_adjust", force_adjust},
                        {"calculate_x_coords", calculate_x_coords},
                        {"make_epilogue", make_epilogue}});
    append(update_steps, {{"restore_old_levels", restore_old_levels},
                          {"make_y_shifts", make_y_shifts},
                          {"determine_new_nodes_levels", determine_new_nodes_levels},
                          {"place_nodes_on_levels", place_nodes_on_levels},
                          {"calculate_new_nodes_y_coords", calculate_new_nodes_y_coords},
                          {"calculate_x_coords", calculate_x_coords},
                          {"update_epilogue", update_epilogue}});
    append(resize_steps, {{"restore_old_levels", restore_old_levels},
                          {"make_y_shifts", make_y_shifts},
                          {"calculate_x_coords", calculate_x_coords},
                          {"resize_epilogue", resize_epilogue}});
}

void LayoutEngine::Make(const Node& node, ILayout& self) {
    if (IsRoot(node)) owner_infos_.clear();
    run_inside_out(node, self, Mode::kMake);
}

void LayoutEngine::Update(const Node& node, ILayout& self) {
    run_inside_out(node, self, Mode::kUpdate);
}

void LayoutEngine::run_inside_out(const Node& node, ILayout& self, Mode mode) {
    const auto run_own = [&](const Node& owner) {
        if (is_leaf(owner.record())) {
            size_leaf(owner);
        } else if (mode == Mode::kMake) {
            make_owner(owner);
        } else {
            update_owner(owner);
        }
    };
    const auto run_foreign = [&](const Node& owner, ILayout& layout) {
        mode == Mode::kMake ? layout.Make(owner) : layout.Update(owner);
    };
    walk_inside_out(node, self, run_own, run_foreign);
}

void LayoutEngine::make_owner(const Node& node) {
    owner_infos_.erase(node.GetID());
    local_infos_.Clear();
    LayoutRun run(settings, node, OwnerStore(), local_infos_);
    run.load_positions();
    run_steps(make_steps, run);
    finish(run, node);
}

// The old picture comes back in the owner's coordinates. The height of the owner's own caption
// comes off y alone: the drawing moves up by it at each update before it is moved down again.
void LayoutEngine::update_owner(const Node& node) {
    OwnerStore& infos = owner_infos_[node.GetID()];
    std::vector<Level> extents = infos.level_extents;
    LayoutRun run(settings, node, std::exchange(infos, OwnerStore()), local_infos_);
    local_infos_.Clear();
    run.level_extents = std::move(extents);
    const graph_ptr2<INodeHandler> handler = node.GetHandler();
    const double header = handler ? handler->GetSize(node).cy : 0.0;
    run.move_old_by(node.GetPosition(), header);
    run.load_positions();
    run_steps(update_steps, run);
    finish(run, node);
}

void LayoutEngine::finish(LayoutRun& run, const Node& node) {
    OwnerStore& infos = owner_infos_[node.GetID()];
    infos = run.finish();
    infos.neighbourhood = run.release_neighbourhood();
    Node(node).SetSize(run.extent);
}

void LayoutEngine::Resize(const Node& node) {
    if (is_leaf(node.record())) {
        size_leaf(node);
        return;
    }
    make_relative(node);
    OwnerStore& infos = owner_infos_[node.GetID()];
    LayoutRun run(settings, node, std::exchange(infos, OwnerStore()), local_infos_);
    run.load_scratch();
    run.load_positions();
    run_steps(resize_steps, run);
    finish(run, node);
    make_absolute(node);
}

void make_epilogue(LayoutRun& run) { run.mark_old(); }
void update_epilogue(LayoutRun& run) { run.mark_old(); }
void resize_epilogue(LayoutRun& run) { run.mark_old(); }

}  // namespace nodeline::internal
