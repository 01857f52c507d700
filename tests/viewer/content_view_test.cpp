#include <gtest/gtest.h>

#include <limits>

#include "viewer/stage.h"

namespace nodeline::test {
namespace {

// A surface of 200 by 100 pixels on its own models, over a root whose extent a test sets.
class ContentView : public testing::Test {
protected:
    ContentView() {
        content.SetPos({0, 0, 200, 100}, false);
        content.SetHorzScroll(static_cast<IHorzSimpleScrollModel*>(&content));
        content.SetVertScroll(static_cast<IVertSimpleScrollModel*>(&content));
        SetRoot({10.0, 20.0, 310.0, 420.0});
    }
    void SetRoot(const rectangle<double>& r) {
        root.SetPosition(r.left, r.top);
        root.SetSize({r.right - r.left, r.bottom - r.top});
    }

    graph_ptr2<Graph> graph{new Graph(), true};
    Node root = graph->GetRoot();
    CContent content{nullptr, graph, true};
};

TEST_F(ContentView, BeginsAtTheOriginAtOnePixelToTheUnit) {
    EXPECT_EQ(content.GetScale(), 1.0);
    EXPECT_EQ(content.GetStartX(), 0.0);
    EXPECT_EQ(content.GetStartY(), 0.0);
    EXPECT_EQ(content.GetGraph().get(), graph.get());
    EXPECT_TRUE(content.GetDragTracker()->IsEnabled());
    EXPECT_FALSE(content.GetZoomRect()->IsEnabled());
    EXPECT_EQ(content.GetRubberMode(), RubberZoom);
    EXPECT_FALSE(content.GetMoveNodes());
    EXPECT_FALSE(content.GetCursorPending());
}

TEST(ContentConstruction, MakesAnEmptyGraphForANullOneAndTakesTheSizeOfItsParent) {
    CVisualElement parent(nullptr, {70, 50}, viewkit::Alignment::None);
    const auto* content = new CContent(&parent, {}, true);
    ASSERT_TRUE(content->GetGraph());
    EXPECT_EQ(content->GetGraph()->GetRoot().GetOwned().GetCount(), 0);
    EXPECT_EQ(content->GetAlignment(), viewkit::Alignment::Client);
    CContent alone(nullptr, {}, true);
    EXPECT_EQ(alone.GetBounds(), (rectangle<int>{0, 0, 40, 40}));
}

TEST_F(ContentView, TheRangeOfAGraphWithoutExtentIsThePositionOfItsRoot) {
    SetRoot({7.0, 9.0, 7.0, 9.0});
    EXPECT_EQ(content.GetHorzFrom(), 7.0);
    EXPECT_EQ(content.GetHorzTo(), 7.0);
    EXPECT_EQ(content.GetVertFrom(), 9.0);
    EXPECT_EQ(content.GetVertTo(), 9.0);
}

TEST_F(ContentView, AnEmptyGraphIsShownInTheMiddle) {
    content.SetGraph({});
    const Node shown = content.GetGraph()->GetRoot();
    const size<double> s = shown.GetSize();
    const point<double> p = shown.GetPosition();
    EXPECT_NE(content.GetGraph().get(), graph.get());
    EXPECT_EQ(content.GetStartX(), (s.cx - 200.0) * 0.5 + p.x);
    EXPECT_EQ(content.GetStartY(), (s.cy - 100.0) * 0.5 + p.y);
}

TEST_F(ContentView, AGraphSmallerThanTheViewGetsARangeFromTheStart) {
    content.SetGraph(graph);
    ASSERT_LT(root.GetSize().cx, 200.0);
    EXPECT_LT(content.GetStartX(), root.GetPosition().x);
    EXPECT_EQ(content.GetHorzFrom(), content.GetStartX());
    EXPECT_EQ(content.GetVertFrom(), content.GetStartY());
    // The next start right of the root widens the other side.
    content.SetHorzStart(root.GetPosition().x + 1.0);
    EXPECT_GT(content.GetHorzTo(), root.GetPosition().x + root.GetSize().cx);
    EXPECT_EQ(content.GetHorzTo(), content.GetHorzStart() + 200.0);
}

TEST_F(ContentView, AStartLeftOfTheRootWidensTheRangeThereAndClearsTheRight) {
    content.SetHorzStart(300.0);
    content.SetVertStart(400.0);
    ASSERT_EQ(content.GetHorzTo(), 500.0);
    ASSERT_EQ(content.GetVertTo(), 500.0);
    content.SetHorzStart(-30.0);
    content.SetVertStart(-40.0);
    EXPECT_EQ(content.GetHorzFrom(), -30.0);
    EXPECT_EQ(content.GetHorzTo(), 310.0);
    EXPECT_EQ(content.GetVertFrom(), -40.0);
    EXPECT_EQ(content.GetVertTo(), 420.0);
}

TEST_F(ContentView, AViewBeyondTheRightEdgeWidensTheRangeToItsEnd) {
    content.SetScale(2.0);
    content.SetHorzStart(250.0);
    content.SetVertStart(390.0);
    EXPECT_EQ(content.GetHorzFrom(), 10.0);
    EXPECT_EQ(content.GetHorzTo(), 250.0 + 100.0);
    EXPECT_EQ(content.GetVertFrom(), 20.0);
    EXPECT_EQ(content.GetVertTo(), 390.0 + 50.0);
}

TEST_F(ContentView, AViewThatComesBackTakesTheRangeBack) {
    content.SetHorzStart(300.0);
    content.SetHorzStart(150.0);
    EXPECT_EQ(content.GetHorzTo(), 350.0);
    content.SetHorzStart(50.0);
    EXPECT_EQ(content.GetHorzTo(), 310.0);
}

TEST_F(ContentView, AStartAtTheEdgeOfTheRootLeavesTheRightAsItWas) {
    content.SetHorzStart(300.0);
    content.SetHorzStart(10.0);
    EXPECT_EQ(content.GetHorzFrom(), 10.0);
    EXPECT_EQ(content.GetHorzTo(), 500.0);
    content.SetVertStart(400.0);
    content.SetVertStart(20.0);
    EXPECT_EQ(content.GetVertFrom(), 20.0);
    EXPECT_EQ(content.GetVertTo(), 500.0);
}

TEST_F(ContentView, TheRangeFollowsTheRootWithWhatItHadBeyondIt) {
    content.SetHorzStart(300.0);
    SetRoot({10.0, 20.0, 1010.0, 420.0});
    EXPECT_EQ(content.GetHorzTo(), 1010.0 + 190.0);
}

TEST_F(ContentView, SettingTheStartOfTheModelTellsNobody) {
    const ViewListener listener(content);
    content.SetHorzStart(50.0);
    content.SetVertStart(60.0);
    EXPECT_EQ(listener.count, 0);
    EXPECT_EQ(content.GetStartX(), 50.0);
    EXPECT_EQ(content.GetStartY(), 60.0);
}

TEST_F(ContentView, SetStartGoesThroughTheModelsAndTellsOfTheView) {
    const ViewListener listener(content);
    content.SetStartX(50.0);
    EXPECT_EQ(listener.from, (point<double>{50.0, 0.0}));
    content.SetStartY(60.0);
    EXPECT_EQ(listener.count, 2);
    EXPECT_EQ(listener.from, (point<double>{50.0, 60.0}));
    EXPECT_EQ(listener.to, (point<double>{250.0, 160.0}));
}

TEST_F(ContentView, SetStartWithoutAModelDoesNothing) {
    content.SetHorzScroll(nullptr);
    content.SetVertScroll(nullptr);
    const ViewListener listener(content);
    content.SetStartX(50.0);
    content.SetStartY(60.0);
    EXPECT_EQ(listener.count, 0);
    EXPECT_EQ(content.GetStartX(), 0.0);
    EXPECT_EQ(content.GetStartY(), 0.0);
}

TEST_F(ContentView, TheRubberRectangleScrollsTheSameModels) {
    EXPECT_EQ(content.GetZoomRect()->GetHorzScroll(), content.GetHorzScroll());
    EXPECT_EQ(content.GetZoomRect()->GetVertScroll(), content.GetVertScroll());
    EXPECT_NE(content.GetHorzScroll(), content.GetVertScroll());
}

TEST_F(ContentView, MeasuresSayHowMuchOnePixelIs) {
    content.SetScale(2.0);
    EXPECT_EQ(content.GetHorzMeasure(), std::make_pair(0.5, 1));
    EXPECT_EQ(content.GetVertMeasure(), std::make_pair(0.5, 1));
    content.SetHorzMeasure({10.0, 5});
    EXPECT_EQ(content.GetScale(), 0.5);
    content.SetVertMeasure({2.0, 8});
    EXPECT_EQ(content.GetScale(), 4.0);
    EXPECT_EQ(content.GetHorzStepInPixels(), 4);
    EXPECT_EQ(content.GetVertStepInPixels(), 4);
}

TEST_F(ContentView, AViewWidthCountsFromTheOriginOfTheParent) {
    content.SetPos({40, 60, 240, 160}, false);
    content.SetViewWidth(120.0);
    EXPECT_EQ(content.GetScale(), 2.0);
    content.SetViewHeight(320.0);
    EXPECT_EQ(content.GetScale(), 0.5);
}

TEST_F(ContentView, AResizeKeepsScaleAndStartAndTellsOfTheView) {
    content.SetScale(2.0);
    content.SetStartX(30.0);
    const ViewListener listener(content);
    content.SetPos({0, 0, 100, 80}, true);
    EXPECT_EQ(listener.count, 1);
    EXPECT_EQ(listener.from, (point<double>{30.0, 0.0}));
    EXPECT_EQ(listener.to, (point<double>{80.0, 40.0}));
    EXPECT_EQ(content.GetScale(), 2.0);
}

TEST_F(ContentView, PixelsAndCoordinatesMapOntoEachOther) {
    content.SetScale(2.0);
    content.SetHorzStart(100.0);
    content.SetVertStart(-50.0);
    EXPECT_EQ(content.ConvertP2L({0, 0}), (point<double>{100.0, -50.0}));
    EXPECT_EQ(content.ConvertP2L({3, 5}), (point<double>{101.5, -47.5}));
    EXPECT_EQ(content.ConvertL2P({100.0, -50.0}), (point<int>{0, 0}));
    point<double> p{3.0, 5.0};
    content.DP2LP(&p);
    EXPECT_EQ(p, (point<double>{101.5, -47.5}));
    content.LP2DP(&p);
    EXPECT_EQ(p, (point<double>{3.05, 5.05}));
}

TEST_F(ContentView, APixelBeginsATwentiethEarly) {
    content.SetHorzStart(100.0);
    EXPECT_EQ(content.ConvertL2P({110.96, 0.0}).x, 11);
    EXPECT_EQ(content.ConvertL2P({110.94, 0.0}).x, 10);
    // What lies before the start is cut towards it.
    EXPECT_EQ(content.ConvertL2P({99.5, 0.0}).x, 0);
    EXPECT_EQ(content.ConvertL2P({98.5, 0.0}).x, -1);
}

TEST_F(ContentView, CoordinatesThatNoPixelHasBecomeTheOutermostOnes) {
    const point<int> p = content.ConvertL2P({1e300, -1e300});
    EXPECT_EQ(p.x, std::numeric_limits<int>::max());
    EXPECT_LT(p.y, -2000000000);
}

TEST_F(ContentView, ALayoutIsDoneWithoutAWindow) {
    root.AddNode();
    EXPECT_TRUE(content.RecalculateLayout());
    EXPECT_FALSE(content.RecalculateLayout());
    EXPECT_FALSE(content.RecalculateLayout(nullptr));
}

TEST(ContentRepaint, BadScalesAndWidthsChangeAndRepaintNothing) {
    Stage stage;
    const ViewListener listener(*stage.viewer);
    stage.content->SetScale(0.0);
    stage.content->SetScale(-1.0);
    stage.content->SetScale(std::numeric_limits<double>::quiet_NaN());
    stage.content->SetViewWidth(0.0);
    stage.content->SetViewHeight(-5.0);
    EXPECT_EQ(stage.content->GetScale(), 1.0);
    EXPECT_EQ(listener.count, 0);
    EXPECT_FALSE(stage.window.PaintPending());
}

TEST(ContentRepaint, ListenersHearOfTheViewBeforeARepaintIsAskedFor) {
    Stage stage;
    std::vector<bool> pending;
    const auto note = [&] { pending.push_back(stage.window.GetControl().IsPaintPending()); };
    const ViewListener listener(*stage.viewer, note);
    stage.viewer->RenewView(true);
    note();
    EXPECT_EQ(pending, std::vector<bool>({false, true}));
    EXPECT_EQ(stage.TakePaint().front(), "fill");
    stage.viewer->RenewView(false);
    EXPECT_EQ(stage.TakePaint(), Log());
}

TEST(ContentRepaint, ALayoutMeasuresByThePainterOfTheWindow) {
    Stage stage;
    stage.a.MakeLayout();
    EXPECT_TRUE(stage.content->RecalculateLayout());
    const Log lines = stage.window.GetRecorder().TakeLines();
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.front().rfind("IsPainting", 0), 0U) << lines.front();
}

// ---------------------------------------------------------------------------------------------
// A finished rubber rectangle

class FinishedRubber : public testing::Test {
protected:
    void Finish(point<double> a, point<double> b) {
        stage.content->GetZoomRect()->OnEnd(stage.content->GetZoomRect(), a, b);
    }

    Stage stage;
};

TEST_F(FinishedRubber, OfTwentyUnitsWidthOnlyRepaints) {
    const point<double> start{stage.viewer->GetStartX(), stage.viewer->GetStartY()};
    const ViewListener listener(*stage.viewer);
    Finish({0.0, 0.0}, {20.0, 100.0});
    EXPECT_EQ(listener.count, 1);
    EXPECT_EQ(stage.viewer->GetScale(), 1.0);
    EXPECT_EQ((point<double>{stage.viewer->GetStartX(), stage.viewer->GetStartY()}), start);
    EXPECT_TRUE(stage.window.PaintPending());
    Finish({0.0, 0.0}, {100.0, -20.0});
    EXPECT_EQ(stage.viewer->GetScale(), 1.0);
}

TEST_F(FinishedRubber, ZoomsSoThatAllOfItFits) {
    Finish({10.0, 20.0}, {210.0, 50.0});
    EXPECT_EQ(stage.viewer->GetScale(), 2.0);
    EXPECT_EQ(stage.viewer->GetStartX(), 10.0);
    EXPECT_EQ(stage.viewer->GetStartY(), 20.0);
    Finish({50.0, 80.0}, {20.0, 5.0});
    EXPECT_EQ(stage.viewer->GetScale(), 4.0);
    EXPECT_EQ(stage.viewer->GetStartX(), 20.0);
    EXPECT_EQ(stage.viewer->GetStartY(), 5.0);
}

TEST_F(FinishedRubber, SelectsWhatItsCoordinatesMeetAsPixels) {
    stage.viewer->SetRubberMode(RubberSelect);
    const point<int> at = stage.PixelOf(stage.b);
    const point<double> p{at.x + 0.75, at.y + 0.75};
    Finish({p.x, p.y}, {p.x - 25.0, p.y - 25.0});
    const Log log = stage.Take();
    EXPECT_NE(std::find(log.begin(), log.end(), "select b"), log.end());
    EXPECT_EQ(stage.script.selected, (rectangle<double>{p.x - 25.0, p.y - 25.0, p.x, p.y}));
    EXPECT_EQ(stage.viewer->GetScale(), 1.0);
}

TEST_F(FinishedRubber, IsResetAndBringsTheCursorBackOnce) {
    stage.window.SetCursor(viewkit::Cursor::Cross);
    stage.viewer->SetCursorPending(true);
    ZoomRect* rubber = stage.content->GetZoomRect();
    rubber->Enable(true);
    rubber->StartDragging(stage.content, 5, 5, 0, MouseButton::Left);
    ASSERT_TRUE(rubber->IsPressed());
    Finish({0.0, 0.0}, {1.0, 1.0});
    EXPECT_FALSE(rubber->IsPressed());
    EXPECT_FALSE(rubber->HasCapture());
    EXPECT_EQ(stage.window.GetCursor(), viewkit::Cursor::Arrow);
    EXPECT_FALSE(stage.viewer->GetCursorPending());
    stage.window.SetCursor(viewkit::Cursor::Cross);
    Finish({0.0, 0.0}, {1.0, 1.0});
    EXPECT_EQ(stage.window.GetCursor(), viewkit::Cursor::Cross);
}

TEST_F(FinishedRubber, MayDestroyTheViewerFromWhatItSelects) {
    stage.viewer->SetRubberMode(RubberSelect);
    stage.script.on_event = [&](const std::string& event) {
        if (event == "select") delete std::exchange(stage.viewer, nullptr);
    };
    Finish({-1000.0, -1000.0}, {1000.0, 1000.0});
    EXPECT_EQ(stage.viewer, nullptr);
    EXPECT_EQ(stage.Take().size(), 1U);
}

// ---------------------------------------------------------------------------------------------
// A slot of the view that destroys the viewer

class DeadlyView : public testing::TestWithParam<std::function<void(Stage&)>> {};

TEST_P(DeadlyView, EndsTheCallThatTold) {
    Stage stage;
    stage.viewer->SetCursorPending(true);
    const ViewListener listener(*stage.viewer,
                                [&] { delete std::exchange(stage.viewer, nullptr); });
    GetParam()(stage);
    EXPECT_EQ(stage.viewer, nullptr);
    EXPECT_EQ(listener.count, 1);
    EXPECT_TRUE(stage.window.GetRoot()->GetChildren().empty());
}

INSTANTIATE_TEST_SUITE_P(Calls, DeadlyView,
                         testing::Values([](Stage& s) { s.viewer->SetStartX(5.0); },
                                         [](Stage& s) { s.viewer->SetStartY(5.0); },
                                         [](Stage& s) { s.viewer->SetScale(2.0); },
                                         [](Stage& s) { s.viewer->SetViewWidth(5.0); },
                                         [](Stage& s) { s.viewer->SetGraph({}); },
                                         [](Stage& s) { s.viewer->RenewView(true); },
                                         [](Stage& s) { s.viewer->ScrollbarsEnable(true); },
                                         [](Stage& s) {
                                             s.viewer->ZoomAbout({1, 1}, 2.0);
                                         },
                                         [](Stage& s) { s.viewer->FitToWindow(); },
                                         [](Stage& s) { s.viewer->Centre(s.d); },
                                         [](Stage& s) {
                                             s.window.Resize({200, 100});
                                         },
                                         [](Stage& s) { s.content->HandleKeyDown(0, 37); },
                                         [](Stage& s) {
                                             s.window.Drag({200, 150}, {210, 160});
                                         },
                                         [](Stage& s) {
                                             s.a.MakeLayout();
                                             s.content->Invalidate();
                                             s.window.PaintPending();
                                         }));

}  // namespace
}  // namespace nodeline::test
