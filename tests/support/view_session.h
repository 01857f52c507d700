// A user at random: presses, drags, turns the wheel, types, and resizes what shows a graph.
#pragma once

#include <nodeline/viewer/graph_viewer.h>
#include <nodeline/viewer/overview.h>
#include <support/random.h>
#include <viewkit/window_base.h>

#include <cstdint>
#include <functional>
#include <string>

namespace nodeline::test {

// What the user does not do.
struct ViewSessionPlan {
    // Neither clicks that fold, nor nodes that are dragged or added: the graph stays as it is.
    bool keeps_graph = false;
    // Only scrolls by whole pixels, so that painted pixels can be kept.
    bool keeps_scale = false;
};

// A viewer in one window and an overview of it in another. Both are painted after every event.
class ViewSession {
public:
    // Called around the release of a button; `at` is the pixel.
    using ReleaseHook = std::function<void(point<int> at)>;

    ViewSession(std::uint64_t seed, const ViewSessionPlan& plan, viewkit::WindowBase* window,
                viewkit::WindowBase* overview_window, const graph_ptr2<Graph>& graph);

    // Does something, paints, and says what it was.
    std::string Step();
    void Paint();

    ReleaseHook before_release;
    ReleaseHook after_release;

    [[nodiscard]] CGraphViewer& viewer() { return *viewer_; }
    [[nodiscard]] COverviewContent& overview() { return *overview_; }

private:
    std::string change_view();
    std::string use_pointer();
    std::string use_overview();
    std::string change_mode();
    std::string change_graph();
    point<int> random_pixel(int beyond);

    Random random_;
    ViewSessionPlan plan_;
    viewkit::WindowBase* window_;
    viewkit::WindowBase* overview_window_;
    CGraphViewer* viewer_;
    COverviewContent* overview_;
    point<int> pointer_;
};

}  // namespace nodeline::test
