#include <gtest/gtest.h>
#include <nodeline/viewer/coords_keeper.h>
#include <nodeline/viewer/draw_functions.h>

#include <algorithm>
#include <memory>
#include <stdexcept>

#include "viewer/stage.h"

namespace nodeline::test {
namespace {

class ContentDraw : public testing::Test {
protected:
    // Has the next paint paint a node alone. A press asks for a paint, but does not paint.
    void Request(const Node& n) {
        stage.script.answers["down"] = HandlerRepaint;
        const point<int> p = stage.PixelOf(n);
        stage.content->HandleButtonDown(p.x, p.y, 0, MouseButton::Left);
    }
    // The lines of the next paint that begin with one of the given words.
    Log TakeLines(const std::vector<std::string>& words) {
        stage.window.PaintPending();
        Log found;
        for (const std::string& line : stage.window.GetRecorder().TakeLines()) {
            const std::string word = line.substr(0, line.find(' '));
            if (std::find(words.begin(), words.end(), word) != words.end()) found.push_back(word);
        }
        return found;
    }

    Stage stage;
};

// Sorted by ownership, the root has no owner and comes behind all others.
TEST_F(ContentDraw, APaintOfEverythingIsBackgroundThenOwnersThenOwnedThenEdges) {
    stage.viewer->RenewView(true);
    EXPECT_EQ(stage.TakePaint(), Log({"fill", "a", "b", "c", "d", "root", "ab"}));
}

TEST_F(ContentDraw, EachInvalidRectangleIsClippedAndFilledWithTheBackground) {
    stage.viewer->RenewView(true);
    EXPECT_EQ(TakeLines({"FillRect", "ResetClip"}), Log({"FillRect", "ResetClip"}));
    paintcore::SysPalette dark;
    const paintcore::SysPalette before = paintcore::GetSysPalette();
    dark.Set(paintcore::SysPalette::kBackground, paintcore::_color(1, 2, 3));
    paintcore::SetSysPalette(dark);
    stage.viewer->RenewView(true);
    stage.window.PaintPending();
    paintcore::SetSysPalette(before);
    const Log lines = stage.window.GetRecorder().TakeLines();
    const auto fill = std::find_if(lines.begin(), lines.end(), [](const std::string& line) {
        return line.rfind("FillRect", 0) == 0;
    });
    ASSERT_NE(fill, lines.end());
    EXPECT_EQ(*(fill - 1), "SetBrush #010203 1");
    EXPECT_EQ((fill - 2)->rfind("SetClipRect", 0), 0U) << *(fill - 2);
}

TEST_F(ContentDraw, AnUntouchedWindowPaintsNothing) {
    EXPECT_EQ(stage.TakePaint(), Log());
    stage.content->OnChange(stage.content, viewkit::UpdateType::Content);
    EXPECT_EQ(stage.TakePaint(), Log());
}

TEST_F(ContentDraw, APanPaintsTheStripThatItUncovers) {
    stage.viewer->SetStartX(stage.viewer->GetStartX() - 30.0);
    EXPECT_EQ(stage.TakePaint(), Log({"fill"}));
}

TEST_F(ContentDraw, AGraphWithoutVisibleNodesPaintsTheBackground) {
    stage.viewer->SetGraph({});
    stage.viewer->SetStartX(1000.0);
    EXPECT_EQ(stage.TakePaint(), Log({"fill"}));
}

TEST_F(ContentDraw, TwoRequestedNodesAreDrawnWithTheirEdgesAndNothingElse) {
    Request(stage.d);
    Request(stage.a);
    EXPECT_EQ(TakeLines({"DrawString", "FillRect", "SetClipRect"}).size(), 3U);
    Request(stage.d);
    Request(stage.a);
    EXPECT_EQ(stage.TakePaint(), Log({"a", "d", "ab"}));
    EXPECT_EQ(stage.TakePaint(), Log());
}

TEST_F(ContentDraw, AnEdgeThatMeetsTwoRequestedNodesIsDrawnTwice) {
    Request(stage.b);
    Request(stage.a);
    EXPECT_EQ(stage.TakePaint(), Log({"a", "b", "ab", "ab"}));
}

TEST_F(ContentDraw, ThreeRequestedNodesAreNotDrawnAloneButWithEverything) {
    Request(stage.a);
    Request(stage.b);
    Request(stage.d);
    EXPECT_EQ(stage.TakePaint(), Log({"fill", "a", "b", "c", "d", "root", "ab"}));
    stage.content->OnChange(stage.content, viewkit::UpdateType::Content);
    EXPECT_EQ(stage.TakePaint(), Log());
}

TEST_F(ContentDraw, RequestedEdgesAreDrawnBeforeThoseOfTheRequestedNodes) {
    stage.b.LinkTo(stage.c).SetCaption("bc");
    stage.graph->GetRoot().MakeLayout();
    stage.viewer->RecalculateLayout();
    stage.viewer->RenewView(true);
    stage.TakePaint();
    stage.content->NoteRepaint(stage.b.GetEdgesOut().GetItem(0));
    stage.content->NoteRepaint(stage.a);
    stage.viewer->RenewView(false);
    EXPECT_EQ(stage.TakePaint(), Log({"a", "bc", "ab"}));
}

TEST_F(ContentDraw, RequestedEdgesAreForgottenWithThreeRequestedNodes) {
    stage.content->NoteRepaint(stage.ab);
    for (const Node& node : {stage.a, stage.b, stage.d}) stage.content->NoteRepaint(node);
    stage.viewer->RenewView(false);
    EXPECT_EQ(stage.TakePaint(), Log({"fill", "a", "b", "c", "d", "root", "ab"}));
    stage.viewer->RenewView(false);
    EXPECT_EQ(stage.TakePaint(), Log());
}

TEST_F(ContentDraw, ARequestedOwnerIsDrawnWithAllItOwnsAndTheEdgesThatMeetIt) {
    const Node e = stage.c.AddNode();
    Node(e).SetCaption("e");
    stage.d.LinkTo(e).SetCaption("de");
    stage.graph->GetRoot().MakeLayout();
    stage.viewer->RecalculateLayout();
    stage.viewer->RenewView(true);
    stage.window.PaintPending();
    stage.window.GetRecorder().TakeLines();
    const point<double> corner = stage.c.GetPosition();
    const point<int> p = stage.content->ConvertL2P({corner.x + 4.0, corner.y + 4.0});
    stage.script.answers["down"] = HandlerRepaint;
    stage.content->HandleButtonDown(p.x, p.y, 0, MouseButton::Left);
    ASSERT_EQ(stage.Take().back(), "down c");
    EXPECT_EQ(stage.TakePaint(), Log({"c", "d", "e", "de"}));
}

TEST_F(ContentDraw, TheDrawSignalComesAheadOfTheRequestedNodes) {
    Listener listener(stage.content, [&](const std::string& what) {
        if (what != "draw") return;
        stage.window.GetPainter()->DrawString({}, "slot", 9, -1);
        Request(stage.b);
    });
    Request(stage.a);
    EXPECT_EQ(stage.TakePaint(), Log({"slot", "a", "b", "ab", "ab"}));
    EXPECT_EQ(listener.element, stage.content);
}

TEST_F(ContentDraw, ALayoutInAPaintTellsOfTheViewAndPaintsEverything) {
    int draws = 0;
    stage.script.on_event = [&](const std::string& event) { draws += event == "draw" ? 1 : 0; };
    std::vector<int> draws_before;
    const ViewListener listener(*stage.viewer, [&] { draws_before.push_back(draws); });
    stage.graph->GetRoot().AddNode().SetCaption("new");
    stage.graph->GetRoot().UpdateLayout();
    stage.content->OnChange(stage.content, viewkit::UpdateType::Content);
    const Log painted = stage.TakePaint();
    EXPECT_EQ(draws_before, std::vector<int>({0}));
    EXPECT_EQ(painted.front(), "fill");
    EXPECT_NE(std::find(painted.begin(), painted.end(), "new"), painted.end());
    EXPECT_EQ(std::count(painted.begin(), painted.end(), "fill"), 1);
}

TEST_F(ContentDraw, APaintBringsTheDrawnBitsUpToDate) {
    Hide(stage.c);
    EXPECT_TRUE(IsFlagSet(stage.d, NodeDrawn));
    stage.content->OnChange(stage.content, viewkit::UpdateType::Content);
    stage.window.PaintPending();
    EXPECT_FALSE(IsFlagSet(stage.d, NodeDrawn));
    EXPECT_TRUE(IsFlagSet(stage.a, NodeDrawn));
}

TEST_F(ContentDraw, ThePainterMapsTheGraphUnlessItIsToStayAsItIs) {
    stage.viewer->SetScale(2.0);
    stage.viewer->SetStartX(12.0);
    stage.viewer->SetStartY(-34.0);
    stage.window.PaintPending();
    const auto is_mapped = [](const Log& painted) {
        return std::find(painted.begin(), painted.end(),
                         "SetCoordSystem 3 12 -34 200 150 0 0 400 300") != painted.end();
    };
    EXPECT_TRUE(is_mapped(stage.window.GetRecorder().TakeLines()));
    stage.viewer->SetNeedCoordSystem(false);
    stage.viewer->RenewView(true);
    EXPECT_EQ(TakeLines({"SetCoordSystem", "FillRect"}), Log({"FillRect"}));
}

TEST_F(ContentDraw, HandlersHearOfTheScaleJustBeforeEachDraw) {
    stage.viewer->SetScale(2.5);
    stage.viewer->SetStartX(0.0);
    stage.viewer->SetStartY(0.0);
    std::vector<double> zooms;
    stage.script.on_event = [&](const std::string& event) {
        if (event != "draw") return;
        zooms.push_back(stage.actor->zoom);
        stage.actor->zoom = 0.0;
    };
    stage.window.PaintPending();
    EXPECT_EQ(zooms, std::vector<double>(zooms.size(), 2.5));
    EXPECT_FALSE(zooms.empty());
    EXPECT_EQ(stage.edge_actor->zoom, 2.5);
}

TEST_F(ContentDraw, APictureHasEverythingAndLeavesTheStateAlone) {
    Request(stage.a);
    stage.graph->GetRoot().AddNode().SetCaption("new");
    stage.graph->GetRoot().UpdateLayout();
    headless::RecordingPainter painter;
    painter.BeginPaint(IPainter::StdSettings::All);
    stage.content->DrawPicture(&painter);
    painter.EndPaint();
    const Log lines = painter.TakeLines();
    const auto count = [&lines](const std::string& word) {
        return std::count_if(lines.begin(), lines.end(),
                             [&](const std::string& line) { return line.rfind(word, 0) == 0; });
    };
    EXPECT_EQ(count("FillRect"), 1);
    EXPECT_GE(count("DrawString"), 6);
    EXPECT_EQ(count("SetCoordSystem"), 1);
    EXPECT_TRUE(stage.viewer->RecalculateLayout());
    EXPECT_EQ(stage.TakePaint().front(), "a");
}

TEST_F(ContentDraw, ASlotOfTheDrawSignalMayDestroyTheViewer) {
    Request(stage.a);
    const Listener listener(stage.content, [&](const std::string& what) {
        if (what == "draw") delete std::exchange(stage.viewer, nullptr);
    });
    EXPECT_EQ(stage.TakePaint(), Log());
    EXPECT_EQ(stage.viewer, nullptr);
}

TEST_F(ContentDraw, AHandlerMayDestroyTheViewerWhileItDraws) {
    stage.script.on_event = [&](const std::string& event) {
        if (event == "draw") delete std::exchange(stage.viewer, nullptr);
    };
    stage.viewer->RenewView(true);
    EXPECT_EQ(stage.TakePaint(), Log({"fill", "a"}));
    EXPECT_EQ(stage.viewer, nullptr);
}

TEST_F(ContentDraw, AHandlerThatThrowsIsHeardByTheWindowAndTheNextPaintGoesOn) {
    Request(stage.a);
    stage.script.on_event = [](const std::string& event) {
        if (event == "draw") throw std::runtime_error(event);
    };
    EXPECT_THROW(stage.window.PaintPending(), std::runtime_error);
    stage.script.on_event = nullptr;
    stage.window.GetRecorder().TakeLines();
    stage.content->OnChange(stage.content, viewkit::UpdateType::Content);
    EXPECT_EQ(stage.TakePaint(), Log({"a", "ab"}));
}

TEST_F(ContentDraw, AHandlerMayDestroyTheViewerWhileItDrawsARequestedNode) {
    Request(stage.a);
    Request(stage.d);
    stage.script.on_event = [&](const std::string& event) {
        if (event == "draw") delete std::exchange(stage.viewer, nullptr);
    };
    EXPECT_EQ(stage.TakePaint(), Log({"a"}));
    EXPECT_EQ(stage.viewer, nullptr);
}

TEST_F(ContentDraw, AHandlerMayDestroyTheViewerWhileItMeasures) {
    stage.graph->GetRoot().MakeLayout();
    stage.script.on_event = [&](const std::string& event) {
        if (event == "measure") delete std::exchange(stage.viewer, nullptr);
    };
    stage.viewer->RenewView(true);
    EXPECT_EQ(stage.TakePaint(), Log());
    EXPECT_EQ(stage.viewer, nullptr);
}

TEST(ContentWindow, AHandlerMayDestroyTheWindowWhileItDraws) {
    Script script;
    const graph_ptr2<Graph> graph(new Graph(), true);
    graph->SetDefaultNodeHandler(graph_ptr2<INodeHandler>(new NodeActor(script), true));
    graph->GetRoot().AddNode();
    auto window = std::make_unique<headless::HeadlessWindow>(size<int>{100, 80});
    new CGraphViewer(window->GetRoot(), graph, true);
    int draws = 0;
    script.on_event = [&](const std::string& event) {
        if (event != "draw") return;
        ++draws;
        window.reset();
    };
    window->PaintPending();
    EXPECT_EQ(window, nullptr);
    EXPECT_EQ(draws, 1);
}

// ---------------------------------------------------------------------------------------------
// The functions that a paint applies

TEST_F(ContentDraw, CollectingEdgesTakesWhatMeetsTheRectangleOfANodeWithoutATestForDoubles) {
    CollectEdgesInNodes collect{{}, stage.graph};
    collect(stage.d);
    EXPECT_TRUE(collect.edges.empty());
    collect(stage.a);
    collect(stage.b);
    ASSERT_EQ(collect.edges.size(), 2U);
    EXPECT_EQ(collect.edges[0], stage.ab);
    EXPECT_EQ(collect.edges[1], stage.ab);
}

// A viewer that moves its only node when the layout is asked for.
class MovingViewer : public IViewer {
public:
    explicit MovingViewer(const Node& node) : node_(node) {}

    void SetStartX(double x) override { log.push_back("x " + std::to_string(x)); }
    void SetStartY(double y) override {
        log.push_back("y " + std::to_string(y));
        if (throws) throw std::runtime_error("y");
    }
    void SetScale(double) override {}
    void SetViewWidth(double) override {}
    void SetViewHeight(double) override {}
    void SetGraph(graph_ptr2<Graph>) override {}
    void SetDefaultNodeHandler(graph_ptr2<INodeHandler>) override {}
    [[nodiscard]] double GetScale() const override { return 1.0; }
    [[nodiscard]] graph_ptr2<Graph> GetGraph() const override { return {}; }
    [[nodiscard]] double GetStartX() const override { return 100.0; }
    [[nodiscard]] double GetStartY() const override { return 200.0; }
    void RenewView(bool) override {}
    bool RecalculateLayout() override {
        log.push_back("layout");
        node_.SetPosition(11.0, 22.0);
        return true;
    }

    Log log;
    bool throws = false;

private:
    Node node_;
};

class Keeper : public testing::Test {
protected:
    Keeper() { node.SetPosition(1.0, 2.0); }

    Graph graph;
    Node node = graph.GetRoot().AddNode();
    MovingViewer viewer{node};
};

TEST_F(Keeper, LaysOutAndThenMovesTheViewAlongFirstDownThenAcross) {
    {
        const CoordsKeeper keeper(&viewer, node);
        EXPECT_TRUE(viewer.log.empty());
    }
    EXPECT_EQ(viewer.log, Log({"layout", "y 220.000000", "x 110.000000"}));
}

TEST_F(Keeper, LeavesAViewerAloneWhoseLifeHasEnded) {
    auto life = std::make_shared<int>(0);
    {
        const CoordsKeeper keeper(&viewer, node, life);
        life.reset();
    }
    EXPECT_TRUE(viewer.log.empty());
}

TEST_F(Keeper, PassesOnWhatTheViewerThrows) {
    viewer.throws = true;
    EXPECT_THROW({ const CoordsKeeper keeper(&viewer, node); }, std::runtime_error);
}

TEST_F(Keeper, DoesNotThrowIntoAnotherException) {
    viewer.throws = true;
    const auto fail = [this] {
        const CoordsKeeper keeper(&viewer, node);
        throw std::logic_error("first");
    };
    EXPECT_THROW(fail(), std::logic_error);
    EXPECT_EQ(viewer.log, Log({"layout", "y 220.000000"}));
}

}  // namespace
}  // namespace nodeline::test
