#include <gtest/gtest.h>
#include <viewkit/scroll_bar.h>

#include "viewer/stage.h"

namespace nodeline::test {
namespace {

class GraphViewer : public testing::Test {
protected:
    [[nodiscard]] point<double> start() const {
        return {stage.viewer->GetStartX(), stage.viewer->GetStartY()};
    }

    Stage stage;
    CGraphViewer* viewer = stage.viewer;
    viewkit::CScrollBox* box = viewer->GetScrollBox();
};

TEST_F(GraphViewer, IsASurfaceInAScrollBoxOnItsWrappedModels) {
    EXPECT_EQ(box->GetParent(), viewer);
    EXPECT_EQ(stage.content->GetParent(), box);
    EXPECT_EQ(box->GetCentralPane(), stage.content);
    EXPECT_EQ(stage.content->GetHorzScroll(), box->GetWrappedHorzScroll());
    EXPECT_EQ(stage.content->GetVertScroll(), box->GetWrappedVertScroll());
    box->GetWrappedHorzScroll()->SetStart(12.0);
    box->GetWrappedVertScroll()->SetStart(34.0);
    EXPECT_EQ(start(), (point<double>{12.0, 34.0}));
}

TEST(GraphViewerConstruction, TakesAGraphOrShowsAnEmptyOne) {
    const graph_ptr2<Graph> graph(new Graph(), true);
    CGraphViewer with(nullptr, graph, true);
    EXPECT_EQ(with.GetGraph().get(), graph.get());
    EXPECT_EQ(with.GetBounds(), (rectangle<int>{0, 0, 100, 100}));
    EXPECT_EQ(with.GetAlignment(), viewkit::Alignment::Client);
    CGraphViewer without(nullptr, {30, 50}, viewkit::Alignment::Left);
    ASSERT_TRUE(without.GetGraph());
    EXPECT_EQ(without.GetBounds(), (rectangle<int>{0, 0, 30, 50}));
    EXPECT_EQ(without.GetAlignment(), viewkit::Alignment::Left);
}

TEST_F(GraphViewer, ANullGraphBecomesAnEmptyOneWithTheDefaultHandler) {
    const graph_ptr2<INodeHandler> handler(new SimpleNodeHandler, true);
    viewer->SetDefaultNodeHandler(handler);
    viewer->SetGraph({});
    ASSERT_TRUE(viewer->GetGraph());
    EXPECT_NE(viewer->GetGraph().get(), stage.graph.get());
    EXPECT_EQ(viewer->GetGraph()->GetDefaultNodeHandler().get(), handler.get());
}

TEST_F(GraphViewer, TheDefaultHandlerReachesThePresentGraphAndTheNextBeforeItsFirstLayout) {
    Script script;
    auto* actor = new NodeActor(script);
    viewer->SetDefaultNodeHandler(graph_ptr2<INodeHandler>(actor, true));
    EXPECT_EQ(stage.graph->GetDefaultNodeHandler().get(), actor);
    const graph_ptr2<Graph> next(new Graph(), true);
    const Node only = next->GetRoot().AddNode();
    viewer->SetGraph(next);
    EXPECT_EQ(next->GetDefaultNodeHandler().get(), actor);
    EXPECT_EQ(only.GetSize(), (size<double>{40.0, 20.0}));
}

TEST_F(GraphViewer, WithoutADefaultHandlerAGraphKeepsItsOwn) {
    const INodeHandler* own = stage.graph->GetDefaultNodeHandler().get();
    viewer->SetGraph({});
    viewer->SetGraph(stage.graph);
    EXPECT_EQ(stage.graph->GetDefaultNodeHandler().get(), own);
}

TEST_F(GraphViewer, AGraphStandsInTheMiddleOfTheView) {
    viewer->SetStartX(-500.0);
    viewer->SetGraph(stage.graph);
    const size<double> s = stage.graph->GetRoot().GetSize();
    EXPECT_EQ(start(), (point<double>{(s.cx - 400.0) * 0.5, (s.cy - 300.0) * 0.5}));
}

TEST_F(GraphViewer, AGraphLargerThanTheViewStandsInItsMiddleToo) {
    viewer->SetScale(20.0);
    viewer->SetGraph(stage.graph);
    const size<double> s = stage.graph->GetRoot().GetSize();
    EXPECT_EQ(start().x, (s.cx - 20.0) * 0.5);
    EXPECT_GT(start().x, 0.0);
}

TEST_F(GraphViewer, WithoutBarsKeysAndDragsStillScroll) {
    viewer->ScrollbarsEnable(false);
    stage.window.PaintPending();
    EXPECT_EQ(box->GetHorzBarMode(), viewkit::ScrollBarNever);
    EXPECT_EQ(box->GetVertBarMode(), viewkit::ScrollBarNever);
    const point<double> before = start();
    stage.window.Drag({200, 290}, {210, 285});
    EXPECT_EQ(start(), (point<double>{before.x - 10.0, before.y + 5.0}));
    stage.window.GetControl().KeyDown(0, 37);
    EXPECT_EQ(start().x, before.x - 6.0);
    viewer->ScrollbarsEnable(true);
    EXPECT_EQ(box->GetHorzBarMode(), viewkit::ScrollBarAsNeeded);
    EXPECT_EQ(box->GetVertBarMode(), viewkit::ScrollBarAsNeeded);
    EXPECT_EQ(stage.TakePaint().front(), "fill");
}

TEST_F(GraphViewer, ListenersHearOfPansScalesResizesAndLayoutsInAPaint) {
    const ViewListener listener(*viewer);
    viewer->SetStartX(5.0);
    EXPECT_EQ(listener.count, 1);
    EXPECT_EQ(listener.from.x, 5.0);
    viewer->SetScale(2.0);
    EXPECT_EQ(listener.count, 2);
    EXPECT_EQ(listener.to.x, 205.0);
    stage.window.Resize({200, 100});
    EXPECT_GE(listener.count, 3);
    EXPECT_EQ(listener.to.x, 105.0);
    const int before = listener.count;
    stage.window.PaintPending();
    EXPECT_EQ(listener.count, before);
    stage.graph->GetRoot().MakeLayout();
    stage.content->Invalidate();
    stage.window.PaintPending();
    EXPECT_EQ(listener.count, before + 1);
}

TEST_F(GraphViewer, ListenersHearOfTheWheel) {
    viewer->SetScale(20.0);
    viewer->SetStartY(0.0);
    const ViewListener listener(*viewer);
    const point<double> before = start();
    stage.window.GetControl().MouseWheel(200, 150, 0, -1.0, false);
    EXPECT_GT(start().y, before.y);
    EXPECT_GE(listener.count, 1);
    EXPECT_EQ(listener.from, start());
}

TEST_F(GraphViewer, ForwardsToTheSurface) {
    viewer->SetViewWidth(200.0);
    EXPECT_EQ(stage.content->GetScale(), 2.0);
    viewer->SetViewHeight(300.0);
    EXPECT_EQ(stage.content->GetScale(), 1.0);
    stage.graph->GetRoot().MakeLayout();
    EXPECT_TRUE(viewer->RecalculateLayout());
    EXPECT_FALSE(viewer->RecalculateLayout());
}

TEST_F(GraphViewer, ZoomingAboutAPixelKeepsItsPoint) {
    const point<double> fixed = stage.content->ConvertP2L({120, 80});
    viewer->ZoomAbout({120, 80}, 4.0);
    EXPECT_EQ(viewer->GetScale(), 4.0);
    const point<double> now = stage.content->ConvertP2L({120, 80});
    EXPECT_NEAR(now.x, fixed.x, 1e-9);
    EXPECT_NEAR(now.y, fixed.y, 1e-9);
}

TEST_F(GraphViewer, ZoomingIsHeldWithinTheLimits) {
    viewer->ZoomAbout({0, 0}, 1e6);
    EXPECT_EQ(viewer->GetScale(), viewkit::kMaxWheelScale);
    viewer->ZoomAbout({0, 0}, 1e-9);
    EXPECT_EQ(viewer->GetScale(), viewkit::kMinWheelScale);
    const point<double> before = start();
    viewer->ZoomAbout({50, 50}, 0.0);
    viewer->ZoomAbout({50, 50}, -2.0);
    viewer->ZoomAbout({50, 50}, std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(viewer->GetScale(), viewkit::kMinWheelScale);
    EXPECT_EQ(start(), before);
}

TEST_F(GraphViewer, FittingShowsAllOfTheGraphInTheMiddle) {
    stage.graph->GetRoot().AddNode();
    stage.graph->GetRoot().MakeLayout();
    viewer->FitToWindow();
    const size<double> s = stage.graph->GetRoot().GetSize();
    EXPECT_EQ(viewer->GetScale(), std::min(400.0 / s.cx, 300.0 / s.cy));
    EXPECT_NEAR(start().x + 200.0 / viewer->GetScale(), s.cx * 0.5, 1e-9);
    EXPECT_NEAR(start().y + 150.0 / viewer->GetScale(), s.cy * 0.5, 1e-9);
    EXPECT_FALSE(viewer->RecalculateLayout());
    EXPECT_EQ(stage.TakePaint().front(), "fill");
}

TEST_F(GraphViewer, FittingAGraphWithoutExtentKeepsTheScale) {
    viewer->SetGraph({});
    viewer->RecalculateLayout();
    viewer->GetGraph()->GetRoot().SetSize({0.0, 0.0});
    viewer->SetScale(3.0);
    viewer->FitToWindow();
    EXPECT_EQ(viewer->GetScale(), 3.0);
    EXPECT_NEAR(start().x, -200.0 / 3.0, 1e-9);
}

TEST_F(GraphViewer, CentringPutsANodeIntoTheMiddleWhereTheLayoutPutsIt) {
    const Node fresh = stage.graph->GetRoot().AddNode();
    stage.graph->GetRoot().MakeLayout();
    viewer->SetScale(2.0);
    viewer->Centre(fresh);
    const point<double> p = fresh.GetPosition();
    EXPECT_EQ(fresh.GetSize(), (size<double>{40.0, 20.0}));
    EXPECT_EQ(start(), (point<double>{p.x + 20.0 - 100.0, p.y + 10.0 - 75.0}));
    const point<double> before = start();
    viewer->Centre(Node());
    EXPECT_EQ(start(), before);
}

TEST_F(GraphViewer, DyingLeavesTheWindowEmpty) {
    const ViewListener listener(*viewer);
    delete viewer;
    EXPECT_TRUE(stage.window.GetRoot()->GetChildren().empty());
    stage.window.PaintPending();
    EXPECT_EQ(listener.count, 0);
}

}  // namespace
}  // namespace nodeline::test
