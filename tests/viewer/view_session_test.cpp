#include <backends/headless/headless_window.h>
#include <gtest/gtest.h>
#include <nodeline/layout/stable_layout.h>
#include <nodeline/viewer/graph_viewer.h>
#include <support/random_graph.h>
#include <support/view_session.h>

#include <cmath>
#include <optional>
#include <string>

namespace nodeline {
namespace {

using headless::HeadlessWindow;
using test::ViewSession;

// Where a node stands on the screen.
point<double> PixelOf(const CGraphViewer& viewer, const Node& node) {
    const point<double> p = node.GetPosition();
    return {(p.x - viewer.GetStartX()) * viewer.GetScale(),
            (p.y - viewer.GetStartY()) * viewer.GetScale()};
}

graph_ptr2<Graph> NestedGraph(std::uint64_t seed, paintcore::IPainter* painter, bool stable) {
    test::RandomGraphPlan plan;
    plan.nodes = 24;
    plan.edges = 34;
    plan.depth = 3;
    test::RandomGraph random_graph(seed, plan);
    for (Node node : random_graph.nodes) node.SetCaption("n" + std::to_string(node.GetID()));
    if (stable) {
        random_graph.graph->SetDefaultLayout(checked_upcast<ILayout>(StableLayout::Create()));
    }
    const graph_ptr2<PortNodeHandler> handler(new PortNodeHandler, true);
    handler->SetIPainter(painter);
    random_graph.graph->SetDefaultNodeHandler(checked_upcast<INodeHandler>(handler));
    return random_graph.graph;
}

class ViewSessions : public ::testing::TestWithParam<int> {};

TEST_P(ViewSessions, KeepTheViewSoundAndReleasedNodesInPlace) {
    const auto seed = static_cast<std::uint64_t>(GetParam());
    HeadlessWindow window({300, 200});
    HeadlessWindow overview_window({120, 80});
    ViewSession session(seed, {}, &window, &overview_window,
                        NestedGraph(seed, window.GetPainter(), seed % 2 == 0));
    CGraphViewer& viewer = session.viewer();

    std::optional<Node> target;
    point<double> pixel;
    int followed = 0;
    session.before_release = [&](point<int> at) {
        target.reset();
        if (viewer.GetZoomRect()->IsPressed()) return;
        const NodeSet met = viewer.GetContent()->HitNodeTest(at.x, at.y, at.x, at.y);
        if (met.GetCount() == 0) return;
        target = met.GetItem(0);
        pixel = PixelOf(viewer, *target);
    };
    session.after_release = [&](point<int>) {
        EXPECT_FALSE(viewer.GetDragTracker()->IsPressed());
        EXPECT_FALSE(viewer.GetZoomRect()->IsPressed());
        if (!target) return;
        ++followed;
        const point<double> now = PixelOf(viewer, *target);
        EXPECT_NEAR(now.x, pixel.x, 1e-6);
        EXPECT_NEAR(now.y, pixel.y, 1e-6);
        // Nothing is held any more: a move drags nothing along.
        const point<double> start{viewer.GetStartX(), viewer.GetStartY()};
        window.GetControl().MouseMove(150, 100, 0, MouseButton::None);
        EXPECT_EQ(start, (point<double>{viewer.GetStartX(), viewer.GetStartY()}));
    };
    for (int i = 0; i < 2000; ++i) {
        const std::string done = session.Step();
        window.GetRecorder().TakeLines();
        overview_window.GetRecorder().TakeLines();
        ASSERT_TRUE(std::isfinite(viewer.GetStartX())) << i << ": " << done;
        ASSERT_TRUE(std::isfinite(viewer.GetStartY())) << i << ": " << done;
        ASSERT_TRUE(std::isfinite(viewer.GetScale()) && viewer.GetScale() > 0.0)
            << i << ": " << done;
        ASSERT_FALSE(HasFailure()) << i << ": " << done;
    }
    EXPECT_GT(followed, 5);
}

INSTANTIATE_TEST_SUITE_P(Seeds, ViewSessions, ::testing::Range(1, 13));

}  // namespace
}  // namespace nodeline
