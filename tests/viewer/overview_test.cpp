#include <gtest/gtest.h>
#include <nodeline/viewer/overview.h>

#include <algorithm>
#include <cmath>

#include "viewer/stage.h"

namespace nodeline::test {
namespace {

// An overview that shows the stage's graph at one pixel to the unit, or at another size.
class Overview : public testing::Test {
protected:
    Overview() {
        stage.viewer->SetScale(4.0);
        stage.viewer->SetStartX(20.0);
        stage.viewer->SetStartY(5.0);
        window.Resize(Extent());
        window.PaintPending();
        window.GetRecorder().TakeLines();
    }
    [[nodiscard]] size<int> Extent() const {
        const size<double> s = stage.graph->GetRoot().GetSize();
        return {static_cast<int>(s.cx), static_cast<int>(s.cy)};
    }
    [[nodiscard]] const rectangle<double>& View() const { return overview->GetViewRect(); }
    Log TakeLines() {
        window.PaintPending();
        return window.GetRecorder().TakeLines();
    }

    Stage stage;
    headless::HeadlessWindow window{{50, 50}};
    COverviewContent* overview = new COverviewContent(window.GetRoot(), stage.viewer);
};

TEST_F(Overview, ShowsTheViewAtOnce) {
    EXPECT_EQ(View(), (rectangle<double>{20.0, 5.0, 120.0, 80.0}));
    EXPECT_EQ(overview->GetViewer(), stage.viewer);
    EXPECT_EQ(overview->GetOverviewScale(), 1.0);
    EXPECT_TRUE(overview->GetTracker()->IsEnabled());
    COverviewContent fresh(nullptr, stage.viewer);
    EXPECT_EQ(fresh.GetViewRect(), View());
    EXPECT_EQ(fresh.GetBounds(), (rectangle<int>{0, 0, 40, 40}));
    EXPECT_EQ(fresh.GetAlignment(), viewkit::Alignment::Client);
}

TEST_F(Overview, FollowsTheViewer) {
    stage.viewer->SetStartX(33.0);
    EXPECT_EQ(View().left, 33.0);
    EXPECT_TRUE(window.PaintPending());
    stage.viewer->SetScale(2.0);
    EXPECT_EQ(View().right, 233.0);
}

TEST_F(Overview, DrawsNodesWithoutEdgesAndTheRectangleLast) {
    stage.viewer->RenewView(false);
    overview->Invalidate();
    Log names;
    const Log lines = TakeLines();
    for (const std::string& line : lines) {
        if (line.rfind("DrawString", 0) != 0) continue;
        const std::size_t quote = line.find('"') + 1;
        names.push_back(line.substr(quote, line.find('"', quote) - quote));
    }
    EXPECT_EQ(names, Log({"root", "a", "b", "c", "d"}));
    const auto last = std::find_if(lines.begin(), lines.end(), [](const std::string& line) {
        return line.rfind("Rectangle", 0) == 0;
    });
    ASSERT_NE(last, lines.end());
    EXPECT_EQ(*last, "Rectangle 20 5 120 80");
    EXPECT_EQ(*(last - 1), "SetBrush #000000 0");
    EXPECT_EQ(*(last - 2), "SetPen #b41414 2 1 0 0");
    EXPECT_EQ(*(last + 1), "ResetClip");
    const auto is_fill = [](const std::string& line) { return line.rfind("FillRect", 0) == 0; };
    const auto fill = std::find_if(lines.begin(), lines.end(), is_fill);
    ASSERT_NE(fill, lines.end());
    EXPECT_EQ(*(fill - 1), "SetBrush #ffffff 1");
    EXPECT_EQ(stage.actor->zoom, 1.0);
}

TEST_F(Overview, StretchesTheRootOverItsPixels) {
    const size<int> s = Extent();
    window.Resize({s.cx * 2, s.cy * 3});
    const Log lines = TakeLines();
    const std::string mapping = "SetCoordSystem 3 0 0 " + std::to_string(s.cx) + " " +
                                std::to_string(s.cy) + " 0 0 " + std::to_string(s.cx * 2) + " " +
                                std::to_string(s.cy * 3);
    EXPECT_NE(std::find(lines.begin(), lines.end(), mapping), lines.end()) << mapping;
    point<double> p{10.0, 30.0};
    overview->DP2LP(&p);
    EXPECT_EQ(p, (point<double>{5.0, 10.0}));
    overview->LP2DP(&p);
    EXPECT_EQ(p, (point<double>{10.0, 30.0}));
}

TEST_F(Overview, AResizeComputesItsScaleAnewWithoutTellingTheViewer) {
    const ViewListener listener(*stage.viewer);
    const size<int> s = Extent();
    window.Resize({s.cx * 2, s.cy * 3});
    EXPECT_EQ(overview->GetOverviewScale(), 2.0);
    EXPECT_EQ(listener.count, 0);
    EXPECT_TRUE(window.PaintPending());
}

TEST_F(Overview, AGraphWithoutExtentHasAnInfiniteScaleAndIsNotDivided) {
    stage.graph->GetRoot().SetSize({0.0, 0.0});
    stage.viewer->RenewView(false);
    EXPECT_TRUE(std::isinf(overview->GetOverviewScale()));
    point<double> p{3.0, 4.0};
    overview->DP2LP(&p);
    EXPECT_EQ(p, (point<double>{3.0, 4.0}));
    EXPECT_FALSE(TakeLines().empty());
}

TEST_F(Overview, APressInTheMiddleMovesTheViewAndTheRectangleFollows) {
    window.Drag({70, 40}, {80, 37});
    EXPECT_EQ(stage.viewer->GetStartX(), 30.0);
    EXPECT_EQ(stage.viewer->GetStartY(), 2.0);
    EXPECT_EQ(View(), (rectangle<double>{30.0, 2.0, 130.0, 77.0}));
    EXPECT_EQ(stage.viewer->GetScale(), 4.0);
}

TEST_F(Overview, APressTwoPixelsOutsideIsADragOfTheEdge) {
    window.Press(122, 40);
    EXPECT_TRUE(overview->GetTracker()->IsPressed());
    window.Move(127, 40);
    // Two pixels are near enough to press, and too far to take the edge along.
    EXPECT_EQ(stage.viewer->GetScale(), 4.0);
    EXPECT_EQ(View().left, 20.0);
}

TEST_F(Overview, APressFurtherOutDoesNothingAndReleasesTheMouse) {
    window.Press(123, 40);
    EXPECT_FALSE(overview->GetTracker()->IsPressed());
    EXPECT_EQ(window.GetControl().GetCaptured(), nullptr);
    window.Move(110, 40);
    EXPECT_EQ(View(), (rectangle<double>{20.0, 5.0, 120.0, 80.0}));
}

TEST_F(Overview, APressOnTheShrunkEdgeIsADragOfTheEdgeAndOnePixelFurtherInMovesAll) {
    window.Press(118, 40);
    window.Move(128, 40);
    EXPECT_EQ(stage.viewer->GetStartX(), 20.0) << "too far from the edge to move it";
    window.Release(128, 40);
    window.Press(117, 40);
    window.Move(118, 40);
    EXPECT_EQ(stage.viewer->GetStartX(), 21.0);
}

TEST_F(Overview, ADragOfTheRightEdgeSetsTheScaleAndKeepsTheStart) {
    window.Drag({120, 40}, {145, 42});
    EXPECT_EQ(stage.viewer->GetScale(), 400.0 / 125.0);
    EXPECT_EQ(stage.viewer->GetStartX(), 20.0);
    EXPECT_EQ(stage.viewer->GetStartY(), 5.0);
    EXPECT_EQ(View().right, 145.0);
}

TEST_F(Overview, ADragOfTheLowerEdgeAloneLeavesTheViewAsItIs) {
    window.Drag({70, 80}, {72, 84});
    EXPECT_EQ(stage.viewer->GetScale(), 4.0);
    EXPECT_EQ(View(), (rectangle<double>{20.0, 5.0, 120.0, 80.0}));
}

TEST_F(Overview, ADragOfTheLeftEdgeMovesTheStart) {
    window.Drag({20, 40}, {30, 40});
    EXPECT_EQ(stage.viewer->GetStartX(), 30.0);
    EXPECT_EQ(stage.viewer->GetStartY(), 5.0);
    EXPECT_EQ(stage.viewer->GetScale(), 4.0);
}

// Takes down what an overview asks of its viewer.
class AskedViewer : public IViewer {
public:
    void SetStartX(double x) override { Note("x", x); }
    void SetStartY(double y) override { Note("y", y); }
    void SetScale(double s) override { Note("scale", s); }
    void SetViewWidth(double w) override { Note("width", w); }
    void SetViewHeight(double h) override { Note("height", h); }
    void SetGraph(graph_ptr2<Graph> graph) override { graph_ = graph; }
    void SetDefaultNodeHandler(graph_ptr2<INodeHandler>) override {}
    [[nodiscard]] double GetScale() const override { return 1.0; }
    [[nodiscard]] graph_ptr2<Graph> GetGraph() const override { return graph_; }
    [[nodiscard]] double GetStartX() const override { return 0.0; }
    [[nodiscard]] double GetStartY() const override { return 0.0; }
    void RenewView(bool invalidate) override {
        log.push_back(invalidate ? "renew all" : "renew");
        OnChangeView(point<double>{10.0, 20.0}, point<double>{30.0, 40.0});
    }
    bool RecalculateLayout() override { return false; }

    Log log;

private:
    void Note(const std::string& what, double value) {
        log.push_back(what + " " + std::to_string(static_cast<int>(value)));
    }

    graph_ptr2<Graph> graph_;
};

TEST_F(Overview, ADragOfACornerMovesTwoEdges) {
    AskedViewer asked;
    asked.SetGraph(stage.graph);
    overview->SetViewer(&asked);
    window.Drag({10, 20}, {13, 27});
    // This viewer keeps its view, so that all that the corner has moved is seen.
    EXPECT_EQ(asked.log, Log({"renew", "x 13", "y 27", "width 17"}));
    overview->SetViewer(stage.viewer);
}

TEST_F(Overview, ForwardsToItsViewer) {
    AskedViewer asked;
    overview->SetViewer(&asked);
    overview->SetStartX(1.0);
    overview->SetStartY(2.0);
    overview->SetViewWidth(3.0);
    overview->SetViewHeight(4.0);
    EXPECT_EQ(asked.log, Log({"renew", "x 1", "y 2", "width 3", "height 4"}));
    overview->SetViewer(stage.viewer);
}

TEST_F(Overview, AnArrowMovesTheViewByTenUnitsWhateverTheScale) {
    AskedViewer asked;
    overview->SetViewer(&asked);
    for (const int code : {37, 39, 38, 40}) EXPECT_TRUE(overview->HandleKeyDown(0, code));
    EXPECT_EQ(asked.log, Log({"renew", "x 20", "x 0", "y 30", "y 10"}));
    EXPECT_FALSE(overview->HandleKeyDown(0, 36));
    EXPECT_FALSE(overview->HandleKeyDown(0, 41));
    EXPECT_EQ(asked.log.size(), 5U);
    overview->SetViewer(stage.viewer);
}

TEST_F(Overview, AnotherViewerIsShownAtOnceAndTheOldOneNoMore) {
    AskedViewer asked;
    overview->SetViewer(&asked);
    EXPECT_EQ(overview->GetViewer(), &asked);
    EXPECT_EQ(View(), (rectangle<double>{10.0, 20.0, 30.0, 40.0}));
    stage.viewer->SetStartX(77.0);
    EXPECT_EQ(View().left, 10.0);
    overview->SetViewer(stage.viewer);
    EXPECT_EQ(View().left, 77.0);
}

TEST_F(Overview, TheSameViewerAgainAndNoneAreIgnored) {
    const ViewListener listener(*stage.viewer);
    overview->SetViewer(stage.viewer);
    overview->SetViewer(nullptr);
    EXPECT_EQ(listener.count, 0);
    EXPECT_EQ(overview->GetViewer(), stage.viewer);
}

TEST_F(Overview, AViewerWithoutAGraphLeavesTheBackground) {
    AskedViewer asked;
    overview->SetViewer(&asked);
    window.GetRecorder().TakeLines();
    const Log lines = TakeLines();
    const auto count = [&lines](const std::string& word) {
        return std::count_if(lines.begin(), lines.end(),
                             [&](const std::string& line) { return line.rfind(word, 0) == 0; });
    };
    EXPECT_EQ(count("FillRect"), 1);
    EXPECT_EQ(count("Rectangle"), 0);
    overview->SetViewer(stage.viewer);
}

TEST_F(Overview, TheWindowIsPaintedAtEachStepOfADrag) {
    window.Press(70, 40);
    const int before = window.GetPaintCount();
    window.GetControl().MouseMove(75, 40, 0, MouseButton::None);
    EXPECT_EQ(window.GetPaintCount(), before + 1);
}

TEST_F(Overview, TheViewerMayBeDestroyedWithTheOverviewByADrag) {
    for (const point<int> from : {point<int>{70, 40}, point<int>{20, 40}, point<int>{120, 40}}) {
        Stage own;
        headless::HeadlessWindow pane(Extent());
        auto* shown = new COverviewContent(pane.GetRoot(), own.viewer);
        own.viewer->SetScale(4.0);
        own.viewer->SetStartX(20.0);
        own.viewer->SetStartY(5.0);
        pane.PaintPending();
        const ViewListener listener(*own.viewer, [&] {
            delete std::exchange(shown, nullptr);
            delete std::exchange(own.viewer, nullptr);
        });
        pane.Drag(from, {from.x + 5, from.y}, 2);
        EXPECT_EQ(shown, nullptr);
        EXPECT_EQ(listener.count, 1);
    }
}

TEST_F(Overview, AHandlerMayDestroyTheOverviewWhileItDraws) {
    stage.script.on_event = [&](const std::string& event) {
        if (event == "draw") delete std::exchange(overview, nullptr);
    };
    overview->Invalidate();
    window.PaintPending();
    EXPECT_EQ(overview, nullptr);
}

TEST_F(Overview, DyingFirstItIsTakenOffTheViewer) {
    delete overview;
    stage.viewer->SetStartX(50.0);
    EXPECT_EQ(stage.viewer->GetStartX(), 50.0);
}

}  // namespace
}  // namespace nodeline::test
