#include <backends/qt/graph_widget.h>
#include <gtest/gtest.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/ops/graph_ops.h>
#include <qt/graph_widget_stage.h>

#include <QElapsedTimer>
#include <QPointF>
#include <vector>

// Changes through the widget, and how they glide into place.

namespace nodeline::qt {
namespace {

using namespace nodeline::test;

// The stage, with nodes enough for a fold to move some.
class GraphWidgetChangeTest : public GraphWidgetTest {
protected:
    void SetUp() override {
        GraphWidgetTest::SetUp();
        for (int i = 0; i < 4; ++i) a.LinkTo(AddNode(graph->GetRoot(), "more"));
        graph->GetRoot().MakeLayout();
        widget->viewer()->RecalculateLayout();
        widget->fitToWindow();
        widget->zoomTo(1.0);
        Settle();
    }

    // A change that moves things.
    void OpenOwner() {
        widget->change([this] {
            for (int i = 0; i < 5; ++i) AddNode(d, "inside");
            d.UpdateLayout();
            graph->GetRoot().UpdateLayout();
        });
    }
    [[nodiscard]] std::vector<point<double>> Positions() const {
        std::vector<point<double>> positions;
        const auto take = [&](const Node& node) { positions.push_back(node.GetPosition()); };
        ForEachNodeIn(graph->GetRoot(), take, false, false);
        return positions;
    }
    void WaitForGlide() {
        QElapsedTimer clock;
        clock.start();
        while (widget->isGliding() && clock.elapsed() < 5000) Settle();
    }
};

TEST_F(GraphWidgetChangeTest, AChangeIsLaidOutAndTold) {
    int count = 0;
    QObject::connect(widget, &GraphWidget::graphChanged, [&] { ++count; });
    widget->change([this] { Fold(a, FoldChildren); });
    EXPECT_EQ(count, 1);
    EXPECT_TRUE(IsFlagSet(b, NodeHidden));
    EXPECT_FALSE(widget->viewer()->RecalculateLayout());
    EXPECT_FALSE(widget->isGliding());
}

TEST_F(GraphWidgetChangeTest, AChangeKeepsANodeAtItsPixel) {
    const QPoint before = MiddleOf(c);
    widget->change(
        [this] { Node(c).SetPosition(c.GetPosition().x + 40.0, c.GetPosition().y + 30.0); }, c);
    const QPoint way = MiddleOf(c) - before;
    EXPECT_LE(way.manhattanLength(), 2);
}

TEST_F(GraphWidgetChangeTest, AClickOnAPortTellsOfAChange) {
    int count = 0;
    QObject::connect(widget, &GraphWidget::graphChanged, [&] { ++count; });
    Click(widget, RightPortOf(a));
    EXPECT_EQ(count, 1);
}

TEST_F(GraphWidgetChangeTest, WithoutAGlideEverythingIsInPlaceAtOnce) {
    OpenOwner();
    EXPECT_FALSE(widget->isGliding());
}

TEST_F(GraphWidgetChangeTest, AGlideEndsAtThePlacesThatTheLayoutChose) {
    OpenOwner();
    const std::vector<point<double>> expected = Positions();
    widget->setGlideTime(60);
    widget->change([this] {
        for (const Node& node : d.GetOwned()) {
            if (node != e) Hide(node);
        }
        d.UpdateLayout();
        graph->GetRoot().UpdateLayout();
    });
    widget->change([this] {
        for (const Node& node : d.GetOwned()) Show(node);
        d.UpdateLayout();
        graph->GetRoot().UpdateLayout();
    });
    WaitForGlide();
    ASSERT_FALSE(widget->isGliding());
    EXPECT_EQ(Positions(), expected);
}

TEST_F(GraphWidgetChangeTest, AGlideBeginsWhereThingsWere) {
    widget->setGlideTime(10000);
    const QPoint before = MiddleOf(c);
    widget->change([this] { Node(c).SetPosition(c.GetPosition().x, c.GetPosition().y + 30.0); });
    ASSERT_TRUE(widget->isGliding());
    EXPECT_LE((MiddleOf(c) - before).manhattanLength(), 2);
    widget->finishGlide();
    EXPECT_FALSE(widget->isGliding());
    EXPECT_GE((MiddleOf(c) - before).manhattanLength(), 28);
}

TEST_F(GraphWidgetChangeTest, ANextClickFindsEverythingInPlace) {
    widget->setGlideTime(10000);
    widget->change([this] { Node(c).SetPosition(c.GetPosition().x, c.GetPosition().y + 30.0); });
    ASSERT_TRUE(widget->isGliding());
    const double shown = c.GetPosition().y;
    Click(widget, {2, 2});
    EXPECT_FALSE(widget->isGliding());
    EXPECT_NEAR(c.GetPosition().y, shown + 30.0, 1e-9);
}

TEST_F(GraphWidgetChangeTest, SlotsMayMoveNodesWhichThenGlide) {
    widget->setGlideTime(10000);
    QObject::connect(widget, &GraphWidget::graphChanged,
                     [this] { MoveNode(c, c.GetPosition().x + 50.0, c.GetPosition().y); });
    const double before = c.GetPosition().x;
    widget->change([] {});
    ASSERT_TRUE(widget->isGliding());
    EXPECT_NEAR(c.GetPosition().x, before, 1e-9);
    widget->finishGlide();
    EXPECT_NEAR(c.GetPosition().x, before + 50.0, 1e-9);
}

TEST_F(GraphWidgetChangeTest, AHandThatShakesAPixelStillClicks) {
    int clicks = 0;
    QObject::connect(widget, &GraphWidget::nodeClicked, [&] { ++clicks; });
    const point<double> start = Start();
    const QPoint at = RightPortOf(a);
    Press(widget, at);
    Move(widget, at + QPoint(1, 1), Qt::LeftButton);
    Release(widget, at + QPoint(1, 1));
    EXPECT_EQ(clicks, 1);
    EXPECT_TRUE(IsFlagSet(b, NodeHidden));
    EXPECT_EQ(Start(), start);
}

TEST_F(GraphWidgetChangeTest, TwoFastClicksOnAPortFoldAndUnfold) {
    int clicks = 0;
    QObject::connect(widget, &GraphWidget::nodeClicked, [&] { ++clicks; });
    const QPoint at = RightPortOf(a);
    Click(widget, at);
    EXPECT_TRUE(IsFlagSet(b, NodeHidden));
    Mouse(widget, QEvent::MouseButtonDblClick, at, Qt::LeftButton, Qt::LeftButton);
    Release(widget, at);
    EXPECT_FALSE(IsFlagSet(b, NodeHidden));
    EXPECT_EQ(clicks, 2);
}

TEST_F(GraphWidgetChangeTest, ADraggedNodeIsToldWithThePlaceItComesFrom) {
    widget->viewer()->SetMoveNodes(true);
    const point<double> before = c.GetPosition();
    Node moved;
    QPointF from;
    QObject::connect(widget, &GraphWidget::nodeMoved, [&](const Node& node, const QPointF& p) {
        moved = node;
        from = p;
    });
    const QPoint at = MiddleOf(c);
    Drag(widget, at, at + QPoint(0, 25));
    ASSERT_EQ(moved, c);
    EXPECT_EQ(from, QPointF(before.x, before.y));
    EXPECT_NEAR(c.GetPosition().y, before.y + 25.0, 1.0);
}

TEST_F(GraphWidgetChangeTest, AMenuIsAskedForWithTheNodeUnderThePointer) {
    std::vector<int> ids;
    QObject::connect(widget, &GraphWidget::menuRequested, [&](const Node& node, const QPoint&) {
        ids.push_back(node ? node.GetID() : -1);
    });
    const auto ask = [this](QPoint at) {
        Send(widget, QContextMenuEvent(QContextMenuEvent::Mouse, at, widget->mapToGlobal(at)));
    };
    ask(MiddleOf(c));
    ask({1, 1});
    EXPECT_EQ(ids, (std::vector<int>{c.GetID(), -1}));
}

TEST_F(GraphWidgetChangeTest, AGraphLaidOutAheadStaysAsItIs) {
    const graph_ptr2<Graph> ahead(new Graph(), true);
    GiveLookAndLayout(ahead);
    Node first = AddNode(ahead->GetRoot(), "first");
    first.LinkTo(AddNode(ahead->GetRoot(), "second"));
    ahead->RecalculateLayout(nullptr);
    first.SetPosition(7.0, 9.0);
    widget->showGraph(ahead);
    EXPECT_EQ(first.GetPosition(), (point<double>{7.0, 9.0}));
    EXPECT_GT(first.GetSize().cx, 20.0);
    widget->setGraph(ahead);
    EXPECT_NE(first.GetPosition(), (point<double>{7.0, 9.0}));
}

TEST_F(GraphWidgetChangeTest, APictureIsTheVisiblePartOrTheWhole) {
    const rectangle<int> r = widget->viewer()->GetContent()->GetContentRect();
    EXPECT_EQ(widget->picture(true).size(), QSize(r.right, r.bottom));
    const nodeline::size<double> s = graph->GetRoot().GetSize();
    const QSize whole = widget->picture(false).size();
    EXPECT_NEAR(whole.width(), s.cx, 1.0);
    EXPECT_NEAR(whole.height(), s.cy, 1.0);
}

TEST_F(GraphWidgetChangeTest, ASlotMayDestroyTheWidgetInAChange) {
    QObject::connect(widget, &GraphWidget::graphChanged, [this] { delete widget.data(); });
    widget->setGlideTime(50);
    widget->change([this] { Fold(a, FoldChildren); }, a);
    EXPECT_TRUE(widget.isNull());
}

}  // namespace
}  // namespace nodeline::qt
