#include <backends/headless/recording_painter.h>
#include <gtest/gtest.h>
#include <nodeline/model/graph.h>
#include <support/ids.h>
#include <support/layout_log.h>
#include <support/named_graphs.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

namespace nodeline::test {
namespace {

using Lines = std::vector<std::string>;

// A graph with nothing on its lists and a layout that tells what it is asked for.
class Recalculation : public ::testing::Test {
protected:
    Recalculation() {
        log = new LayoutLog(lines);
        g.graph->SetDefaultLayout(graph_ptr2<ILayout>(log, true));
        g.root.store()->clear_make_list();
    }

    Lines Recalculate() {
        lines.clear();
        EXPECT_TRUE(g.graph->RecalculateLayout(&painter));
        return lines;
    }

    // What the painter was told, without the questions.
    Lines Told() {
        Lines told = painter.TakeLines();
        told.erase(std::remove(told.begin(), told.end(), "IsPainting"), told.end());
        return told;
    }

    headless::RecordingPainter painter;
    Lines lines;
    Courts g;
    LayoutLog* log;
};

TEST_F(Recalculation, WithNothingToDoIsFalseAndLeavesThePainterAlone) {
    EXPECT_FALSE(g.graph->RecalculateLayout(&painter));
    EXPECT_TRUE(painter.TakeLines().empty());
    EXPECT_TRUE(lines.empty());
}

TEST_F(Recalculation, OfANewGraphMakesTheRoot) {
    Empty fresh;
    fresh.graph->SetDefaultLayout(graph_ptr2<ILayout>(new LayoutLog(lines), true));
    EXPECT_TRUE(fresh.graph->RecalculateLayout(nullptr));
    EXPECT_EQ(lines, (Lines{"make 0"}));
    EXPECT_FALSE(fresh.graph->RecalculateLayout(nullptr));
}

TEST_F(Recalculation, MakesTheLastRequestFirstAndNothingBehindTheRoot) {
    g.c.MakeLayout();
    g.root.MakeLayout();
    g.d.MakeLayout();
    EXPECT_EQ(Recalculate(), (Lines{"make 0", Line("make", g.c), "resize 0", "resize 0"}));
}

TEST_F(Recalculation, MakesANodeAsOftenAsItWasAskedFor) {
    g.c.MakeLayout();
    g.c.MakeLayout();
    EXPECT_EQ(Recalculate(), (Lines{Line("make", g.c), Line("make", g.c), "resize 0", "resize 0"}));
}

TEST_F(Recalculation, MakesTheRootOnce) {
    g.root.MakeLayout();
    g.root.MakeLayout();
    EXPECT_EQ(Recalculate(), (Lines{"make 0"}));
}

TEST_F(Recalculation, UpdatesANodeThenResizesItsOwnersFromTheInside) {
    g.a.UpdateLayout();
    EXPECT_EQ(Recalculate(), (Lines{Line("update", g.a), Line("resize", g.c), "resize 0"}));
}

TEST_F(Recalculation, ResizesOwnersAndTheRootASecondTime) {
    g.a.ResizeSelf();
    g.b.ResizeSelf();
    EXPECT_EQ(Recalculate(), (Lines{Line("resize", g.b), "resize 0", Line("resize", g.a),
                                    Line("resize", g.c), "resize 0"}));
}

TEST_F(Recalculation, RunsAllMakesThenAllUpdatesThenAllResizes) {
    g.d.ResizeSelf();
    g.a.UpdateLayout();
    g.c.MakeLayout();
    g.b.UpdateLayout();
    EXPECT_EQ(Recalculate(),
              (Lines{Line("make", g.c), Line("update", g.b), Line("update", g.a),
                     Line("resize", g.c), "resize 0", Line("resize", g.d), "resize 0"}));
}

TEST_F(Recalculation, FilesOwnersOfMakesAheadOfOwnersOfUpdates) {
    g.z.UpdateLayout();
    g.x.MakeLayout();
    EXPECT_EQ(Recalculate(),
              (Lines{Line("make", g.x), Line("update", g.z), Line("resize", g.d), "resize 0",
                     Line("resize", g.a), Line("resize", g.c), "resize 0"}));
}

TEST_F(Recalculation, AsksTheLayoutOfEachNode) {
    const graph_ptr2<ILayout> own(new LayoutLog(lines, "own"), true);
    g.c.SetLayout(own);
    g.a.UpdateLayout();
    g.c.MakeLayout();
    EXPECT_EQ(Recalculate(), (Lines{"own " + Line("make", g.c), Line("update", g.a),
                                    "own " + Line("resize", g.c), "resize 0", "resize 0"}));
}

TEST_F(Recalculation, MakesPositionsAbsoluteAfterMakeAndUpdate) {
    g.c.SetPosition(100, 50);
    g.a.SetPosition(10, 5);
    g.x.SetPosition(1, 1);
    g.c.MakeLayout();
    Recalculate();
    EXPECT_EQ(g.c.GetPosition(), (point<double>{100, 50}));
    EXPECT_EQ(g.a.GetPosition(), (point<double>{110, 55}));
    EXPECT_EQ(g.x.GetPosition(), (point<double>{111, 56}));
    g.a.UpdateLayout();
    Recalculate();
    EXPECT_EQ(g.a.GetPosition(), (point<double>{110, 55}));
    EXPECT_EQ(g.x.GetPosition(), (point<double>{221, 111}));
}

TEST_F(Recalculation, LeavesPositionsToTheLayoutAfterResize) {
    g.c.SetPosition(100, 50);
    g.a.SetPosition(10, 5);
    g.c.ResizeSelf();
    Recalculate();
    EXPECT_EQ(g.a.GetPosition(), (point<double>{10, 5}));
}

TEST_F(Recalculation, OpensAPaintBracketForThePass) {
    std::vector<bool> painting;
    log->then = [&](const Node&) { painting.push_back(painter.IsPainting()); };
    g.a.UpdateLayout();
    Recalculate();
    EXPECT_EQ(painting, (std::vector<bool>{true, true, true}));
    EXPECT_EQ(Told(), (Lines{"BeginPaint 3", "EndPaint"}));
    EXPECT_FALSE(painter.IsPainting());
}

TEST_F(Recalculation, LeavesAnOpenPaintBracketAlone) {
    painter.BeginPaint(paintcore::IPainter::StdSettings::None);
    painter.TakeLines();
    g.a.UpdateLayout();
    Recalculate();
    EXPECT_TRUE(Told().empty());
    EXPECT_TRUE(painter.IsPainting());
}

TEST_F(Recalculation, WorksWithoutAPainter) {
    g.a.UpdateLayout();
    EXPECT_TRUE(g.graph->RecalculateLayout(nullptr));
    EXPECT_EQ(lines.size(), 3u);
}

TEST_F(Recalculation, ShowsTheListsToTheLayoutsAndClearsThemAtTheEnd) {
    const auto make_list = g.root.store()->get_make_list();
    const auto update_list = g.root.store()->get_update_list();
    const auto resize_list = g.root.store()->get_resize_list();
    int seen = 0;
    log->then = [&](const Node&) {
        ++seen;
        EXPECT_EQ(Ids(make_list), IdsOf(g.c));
        EXPECT_EQ(Ids(update_list), IdsOf(g.a));
        EXPECT_EQ(Ids(resize_list), IdsOf(g.d));
    };
    g.c.MakeLayout();
    g.a.UpdateLayout();
    g.d.ResizeSelf();
    Recalculate();
    EXPECT_GT(seen, 3);
    EXPECT_EQ(make_list->GetCount(), 0);
    EXPECT_EQ(update_list->GetCount(), 0);
    EXPECT_EQ(resize_list->GetCount(), 0);
}

TEST_F(Recalculation, ThrowsAwayWhatLayoutsAskForMeanwhile) {
    log->then = [&](Node node) {
        node.MakeLayout();
        node.UpdateLayout();
        node.ResizeSelf();
    };
    g.a.UpdateLayout();
    EXPECT_EQ(Recalculate(), (Lines{Line("update", g.a), Line("resize", g.c), "resize 0"}));
    EXPECT_FALSE(g.graph->RecalculateLayout(&painter));
}

TEST_F(Recalculation, LetsExceptionsOfLayoutsThroughAndKeepsTheRequests) {
    log->then = [](const Node&) { throw std::runtime_error("no room"); };
    g.a.UpdateLayout();
    EXPECT_THROW(g.graph->RecalculateLayout(&painter), std::runtime_error);
    EXPECT_TRUE(painter.IsPainting());
    EXPECT_EQ(Ids(g.root.store()->get_update_list()), IdsOf(g.a));
    log->then = nullptr;
    EXPECT_EQ(Recalculate(), (Lines{Line("update", g.a), Line("resize", g.c), "resize 0"}));
}

TEST_F(Recalculation, CallsTheLayoutOfANodeThatWasRemovedMeanwhile) {
    g.d.UpdateLayout();
    g.b_to_z.Remove();
    g.d.Remove();
    EXPECT_EQ(Recalculate(), (Lines{Line("update", g.d)}));
}

}  // namespace
}  // namespace nodeline::test
