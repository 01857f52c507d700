#include <gtest/gtest.h>

#include <algorithm>

#include "viewer/stage.h"

// What an event is for, by the first hit and by what is seen.

namespace nodeline::test {
namespace {

class PickDrawn : public testing::Test {
protected:
    void ExpectNodeAt(point<int> p, const Node& by_hit, const Node& by_sight) {
        stage.content->SetPickDrawn(false);
        EXPECT_EQ(stage.content->GetNodeAt(p), by_hit);
        stage.content->SetPickDrawn(true);
        EXPECT_EQ(stage.content->GetNodeAt(p), by_sight);
    }
    // What a click with the left button is told to.
    Log Clicked(point<int> p) {
        stage.window.Click(p.x, p.y);
        return stage.Take();
    }

    Stage stage;
    Node root = stage.graph->GetRoot();
    viewkit::CControl& control = stage.window.GetControl();
};

TEST_F(PickDrawn, IsOffAtFirst) {
    EXPECT_FALSE(stage.content->GetPickDrawn());
    stage.content->SetPickDrawn(true);
    EXPECT_TRUE(stage.content->GetPickDrawn());
}

TEST_F(PickDrawn, MakesNoDifferenceWhereNothingOverlaps) {
    for (const Node& node : {stage.a, stage.b, stage.d}) {
        ExpectNodeAt(stage.PixelOf(node), node, node);
    }
    ExpectNodeAt(stage.PixelBeside(), root, root);
}

TEST_F(PickDrawn, OfNodesThatOverlapTakesTheOneThatIsPaintedLast) {
    const point<double> p = stage.a.GetPosition();
    MoveNode(stage.b, p.x + 5.0, p.y + 5.0);
    ExpectNodeAt(stage.PixelOf(stage.a), stage.a, stage.b);
    stage.content->RenewView(true);
    const Log painted = stage.TakePaint();
    const auto place = [&painted](const char* name) {
        return std::find(painted.begin(), painted.end(), name) - painted.begin();
    };
    EXPECT_LT(place("a"), place("b"));
}

TEST_F(PickDrawn, TakesALeafBeforeItsOwner) {
    ExpectNodeAt(stage.PixelOf(stage.d), stage.d, stage.d);
    // On its border the leaf and the owner are both hit.
    const point<double> p = stage.d.GetPosition();
    stage.content->SetHorzStart(p.x);
    stage.content->SetVertStart(p.y);
    stage.content->SetPickDrawn(true);
    EXPECT_EQ(stage.content->GetNodeAt({0, 0}), stage.d);
}

TEST_F(PickDrawn, SeesThroughAHiddenNodeToItsOwner) {
    Hide(stage.d);
    ExpectNodeAt(stage.PixelOf(stage.d), stage.d, stage.c);
}

TEST_F(PickDrawn, SeesThroughAHiddenOwnerToTheRoot) {
    const point<int> p = stage.PixelOf(stage.d);
    Hide(stage.c);
    ExpectNodeAt(p, stage.d, root);
}

TEST_F(PickDrawn, SeesThroughSeveralHiddenOwners) {
    Node inner = stage.d.AddNode();
    stage.graph->GetRoot().MakeLayout();
    stage.content->RecalculateLayout();
    const point<int> p = stage.PixelOf(inner);
    Hide(stage.d);
    ExpectNodeAt(p, inner, stage.c);
}

TEST_F(PickDrawn, SeesWhatLiesUnderAHiddenNode) {
    const point<double> p = stage.a.GetPosition();
    MoveNode(stage.b, p.x, p.y);
    Hide(stage.b);
    ExpectNodeAt(stage.PixelOf(stage.a), stage.a, stage.a);
    Show(stage.b);
    Hide(stage.a);
    ExpectNodeAt(stage.PixelOf(stage.a), stage.a, stage.b);
}

TEST_F(PickDrawn, NoClickGoesToAHiddenNode) {
    const point<int> p = stage.PixelOf(stage.a);
    Hide(stage.a);
    EXPECT_EQ(Clicked(p), Log({"down a", "up a", "click a"}));
    stage.content->SetPickDrawn(true);
    EXPECT_EQ(Clicked(p), Log({"down root", "up root", "click root"}));
}

TEST_F(PickDrawn, NoDoubleClickMenuOrTooltipGoesToAHiddenNode) {
    const point<int> p = stage.PixelOf(stage.a);
    Hide(stage.a);
    const auto ask_all = [&] {
        CTooltipEvent tip;
        tip.pos = p;
        control.DoubleClick(p.x, p.y, 0, MouseButton::Left);
        control.ContextMenu(p.x, p.y);
        control.Tooltip(&tip);
        return stage.Take();
    };
    EXPECT_EQ(ask_all(), Log({"double a", "context a", "tooltip a"}));
    stage.content->SetPickDrawn(true);
    EXPECT_EQ(ask_all(), Log({"double root", "context root", "tooltip root"}));
}

TEST_F(PickDrawn, AHiddenNodeIsNotDragged) {
    const point<int> p = stage.PixelOf(stage.a);
    Hide(stage.a);
    stage.content->SetMoveNodes(true);
    stage.content->SetPickDrawn(true);
    const point<double> before = stage.a.GetPosition();
    stage.window.Drag(p, {p.x + 30, p.y + 10});
    EXPECT_EQ(stage.a.GetPosition(), before);
    stage.content->SetPickDrawn(false);
    const point<int> q = stage.PixelOf(stage.a);
    stage.window.Drag(q, {q.x + 30, q.y + 10});
    EXPECT_NE(stage.a.GetPosition(), before);
}

TEST_F(PickDrawn, AnEdgeWithAHiddenEndHasNoTooltip) {
    const point<int> p = stage.PixelOfEdge();
    Hide(stage.b);
    const auto ask = [&] {
        CTooltipEvent tip;
        tip.pos = p;
        control.Tooltip(&tip);
        return stage.Take();
    };
    EXPECT_EQ(ask(), Log({"tooltip root", "edge tooltip ab"}));
    stage.content->SetPickDrawn(true);
    EXPECT_EQ(ask(), Log({"tooltip root"}));
    Show(stage.b);
    EXPECT_EQ(ask(), Log({"tooltip root", "edge tooltip ab"}));
}

TEST_F(PickDrawn, OfEdgesTakesTheOneThatIsPaintedLast) {
    const point<int> p = stage.PixelOfEdge();
    const Edge second = stage.a.LinkTo(stage.b);
    for (const Node& node : stage.ab.GetBreakNodes()) {
        const point<double> at = node.GetPosition();
        Edge(second).AddBreakNodesIn(root, 1);
        const NodeSet made = second.GetBreakNodesIn(root);
        made.GetItem(made.GetCount() - 1).SetPosition(at);
    }
    ASSERT_EQ(stage.content->HitEdgeTest(p.x, p.y, p.x, p.y).GetCount(), 2);
    EXPECT_EQ(stage.content->GetEdgeAt(p), stage.ab);
    stage.content->SetPickDrawn(true);
    EXPECT_EQ(stage.content->GetEdgeAt(p), second);
    EXPECT_FALSE(stage.content->GetEdgeAt(stage.PixelBeside()));
}

}  // namespace
}  // namespace nodeline::test
