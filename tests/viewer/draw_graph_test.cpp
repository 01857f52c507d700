#include <gtest/gtest.h>
#include <nodeline/viewer/draw_functions.h>

#include <algorithm>

#include "viewer/stage.h"

namespace nodeline::test {
namespace {

class DrawGraphTest : public testing::Test {
protected:
    // Another order of edges than that of the nodes that they leave.
    DrawGraphTest() {
        stage.b.LinkTo(stage.c).SetCaption("bc");
        stage.a.LinkTo(stage.c).SetCaption("ac");
        stage.graph->GetRoot().UpdateLayout();
        stage.graph->RecalculateLayout(nullptr);
        MarkDrawnIn(stage.graph);
    }

    Log Drawn() {
        DrawGraph(stage.graph, &painter, 2.5);
        return Stage::CaptionsIn(painter.TakeLines());
    }
    Log DrawnIn(const Node& node) {
        DrawGraphIn(stage.graph, MakeDRect(node.GetPosition(), node.GetSize()), &painter, 2.5);
        return Stage::CaptionsIn(painter.TakeLines());
    }

    Stage stage;
    headless::RecordingPainter painter;
};

TEST_F(DrawGraphTest, DrawsOwnersThenWhatTheyOwnThenTheEdgesByTheirIds) {
    EXPECT_EQ(Drawn(), Log({"a", "b", "c", "d", "ab", "bc", "ac"}));
}

TEST_F(DrawGraphTest, TellsTheHandlersTheScale) {
    stage.actor->SetZoomFactor(1.0);
    Drawn();
    EXPECT_EQ(stage.actor->zoom, 2.5);
}

TEST_F(DrawGraphTest, LeavesOutWhatIsHiddenWithItsContentsAndItsEdges) {
    Hide(stage.c);
    MarkDrawnIn(stage.graph);
    EXPECT_EQ(Drawn(), Log({"a", "b", "ab"}));
}

TEST_F(DrawGraphTest, OfAPartDrawsWhatMeetsIt) {
    const Log drawn = DrawnIn(stage.d);
    EXPECT_EQ(std::count(drawn.begin(), drawn.end(), "a"), 0);
    EXPECT_EQ(std::count(drawn.begin(), drawn.end(), "c"), 1);
    EXPECT_LT(std::find(drawn.begin(), drawn.end(), "c"),
              std::find(drawn.begin(), drawn.end(), "d"));
    EXPECT_EQ(std::count(drawn.begin(), drawn.end(), "ab"), 0);
}

}  // namespace
}  // namespace nodeline::test
