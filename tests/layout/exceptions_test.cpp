// Where updates and resizes do otherwise than one would wish. Each is what the steps come to, taken
// together; pictures that people know depend on it.
#include <gtest/gtest.h>
#include <nodeline/ops/graph_ops.h>
#include <support/layout_graphs.h>

#include <vector>

namespace nodeline::test {
namespace {

using Points = std::vector<point<double>>;

Points RouteOf(const Edge& edge) {
    Points route;
    for (const Node& bend : edge.GetBreakNodes()) route.push_back(bend.GetPosition());
    return route;
}

// Room is made for all that lies below the next top, and that includes its own middle by now.
TEST(LayoutExceptions, ANodeThatGrowsPastTheTopOfTheNextMovesWithItAtEachUpdate) {
    Fan g;
    g.Make();
    ASSERT_EQ(g.b2.GetPosition().y, 44.0);
    ASSERT_EQ(g.b3.GetPosition().y, 76.0);
    g.b2.SetTag(SizeTag(400, 1000));
    for (int i = 1; i <= 3; ++i) {
        g.Update();
        EXPECT_EQ(g.b1.GetPosition().y, 12.0);
        EXPECT_EQ(g.b2.GetPosition().y, 44.0 + 69.0 * i);
        EXPECT_EQ(g.b3.GetPosition().y, 76.0 + 69.0 * i);
    }
}

TEST(LayoutExceptions, ANodeThatGrowsUpToTheTopOfTheNextStays) {
    Fan g;
    g.Make();
    // Its middle comes to lie just above the top of the next.
    g.b2.SetTag(SizeTag(400, 630));
    g.Update();
    EXPECT_EQ(g.b2.GetPosition().y, 44.0);
    EXPECT_EQ(g.b3.GetPosition().y, 44.0 + 63.0 + 1.0);
}

//   +-box-----+
//   |  [high] |
//   |  [low]  |
//   +---------+
struct Shelf : Measured {
    Shelf() {
        box.SetTag(SizeTag(300, 150));
        Make();
    }

    Node box = AddBox();
    Node high = AddBox(box, 40, 20);
    Node low = AddBox(box, 40, 20);
};

TEST(LayoutExceptions, AnUpdateLiftsWhatIsInABoxByTheHeightOfItsCaptionUpToTheMargin) {
    Shelf g;
    ASSERT_EQ(g.box.GetPosition().y, 12.0);
    ASSERT_EQ(g.high.GetPosition().y, 24.0);
    ASSERT_EQ(g.low.GetPosition().y, 56.0);
    Hide(g.high);
    g.Update();
    EXPECT_EQ(g.low.GetPosition().y, 56.0 - 15.0);
    g.Update();
    EXPECT_EQ(g.low.GetPosition().y, 56.0 - 30.0);
    g.Update();
    EXPECT_EQ(g.low.GetPosition().y, 24.0);
}

TEST(LayoutExceptions, AHiddenNodeInABoxRisesByTheHeightOfItsCaptionAtEachUpdate) {
    Shelf g;
    Hide(g.high);
    for (int i = 1; i <= 4; ++i) {
        g.Update();
        EXPECT_EQ(g.high.GetPosition().y, 24.0 - 15.0 * i);
    }
}

TEST(LayoutExceptions, AResizeLiftsNothing) {
    Shelf g;
    Hide(g.high);
    for (int i = 0; i < 3; ++i) {
        g.Resize();
        EXPECT_EQ(g.low.GetPosition().y, 56.0);
    }
}

// From the second update on, the inner stretch of an edge that crosses a border is not among what
// the last run knew, and is carried off by the position of the box each time.
TEST(LayoutExceptions, StretchesInsideABorderAreCarriedOffFromTheSecondUpdateOn) {
    Box g;
    g.Make();
    ASSERT_EQ(g.box.GetPosition(), (point<double>{115.0, 12.0}));
    const Points made = RouteOf(g.into);
    g.Update();
    EXPECT_EQ(RouteOf(g.into), made);
    for (int i = 1; i <= 3; ++i) {
        g.Update();
        const Points now = RouteOf(g.into);
        ASSERT_EQ(now.size(), made.size());
        ASSERT_EQ(now.size(), 11u);
        // The outer stretch meets the height of the border, the ends stand at their nodes.
        for (const std::size_t k : {0u, 1u}) EXPECT_EQ(now[k], made[k]);
        for (const std::size_t k : {2u, 3u}) {
            EXPECT_EQ(now[k], (point<double>{made[k].x, made[k].y + 12.0 * i}));
        }
        for (std::size_t k = 4; k < 9; ++k) {
            EXPECT_EQ(now[k], (point<double>{made[k].x + 115.0 * i, made[k].y + 12.0 * i}));
        }
        for (const std::size_t k : {9u, 10u}) EXPECT_EQ(now[k], made[k]);
    }
}

TEST(LayoutExceptions, AMakeBringsStretchesInsideABorderBack) {
    Box g;
    g.Make();
    const Points into = RouteOf(g.into);
    const Points out = RouteOf(g.out);
    for (int i = 0; i < 3; ++i) g.Update();
    ASSERT_NE(RouteOf(g.into), into);
    ASSERT_NE(RouteOf(g.out), out);
    g.Make();
    EXPECT_EQ(RouteOf(g.into), into);
    EXPECT_EQ(RouteOf(g.out), out);
}

TEST(LayoutExceptions, ResizesLeaveStretchesInsideABorderInPlace) {
    Box g;
    g.Make();
    const Points into = RouteOf(g.into);
    for (int i = 0; i < 3; ++i) {
        g.Resize();
        EXPECT_EQ(RouteOf(g.into), into);
    }
}

//   [high] ---> [second]
//   [low]  ---> [first]
// New nodes stand on their level in the order of making, wherever they find room.
TEST(LayoutExceptions, ANodeBelowTheLastOfItsLevelDoesNotCountForTheHeight) {
    Measured g;
    Node high = g.AddBox();
    Node low = g.AddBox();
    const Node first = g.AddBox(40, 60);
    const Node second = g.AddBox();
    low.LinkTo(first);
    high.LinkTo(second);
    g.Make();
    ASSERT_GT(first.GetPosition().y, second.GetPosition().y);
    ASSERT_EQ(g.root.GetSize().cy, first.GetPosition().y + 60.0 + 12.0);
    Fold(high, FoldChildren);
    Fold(low, FoldChildren);
    g.Update();
    Unfold(low, FoldChildren);
    Unfold(high, FoldChildren);
    g.Update();
    ASSERT_GT(first.GetPosition().y, second.GetPosition().y);
    EXPECT_EQ(g.root.GetSize().cy, low.GetPosition().y + 20.0 + 12.0);
    EXPECT_LT(g.root.GetSize().cy, first.GetPosition().y + 60.0);
}

// An unfold asks for an update of the owner of the node alone.
TEST(LayoutExceptions, ANeighbourInAnotherOwnerComesBackWithTheNextUpdateOfThatOwner) {
    Box g;
    g.Make();
    const double width = g.root.GetSize().cx;
    const double x = g.z.GetPosition().x;
    Fold(g.r, FoldChildren);
    g.graph->RecalculateLayout(nullptr);
    const double narrow = g.root.GetSize().cx;
    EXPECT_EQ(narrow, width - 80.0);
    Unfold(g.r, FoldChildren);
    g.graph->RecalculateLayout(nullptr);
    EXPECT_FALSE(IsFlagSet(g.z, NodeHidden));
    EXPECT_EQ(g.root.GetSize().cx, narrow);
    g.Update();
    EXPECT_EQ(g.root.GetSize().cx, width);
    EXPECT_EQ(g.z.GetPosition().x, x);
}

TEST(LayoutExceptions, AResizeLeavesANodeThatIsShownWhereItWas) {
    Row g;
    g.Make();
    const double b = g.b.GetPosition().x;
    const double c = g.c.GetPosition().x;
    Hide(g.c);
    g.Update();
    Show(g.c);
    g.a.SetTag(SizeTag(900, 200));
    g.a.ResizeSelf();
    g.graph->RecalculateLayout(nullptr);
    EXPECT_EQ(g.b.GetPosition().x, b + 50.0);
    EXPECT_EQ(g.c.GetPosition().x, c);
    g.Update();
    EXPECT_EQ(g.c.GetPosition().x, c + 50.0);
}

//   [top]  <-.   a loop, which takes up a lane below it
//     '------'
//   [low]
struct Lane : Measured {
    Lane() {
        top.LinkTo(top);
        Make();
    }

    Node top = AddBox();
    Node low = AddBox();
    Node box = AddBox();
    Node content = AddBox(box, 10, 10);
};

TEST(LayoutExceptions, AResizeKeepsTheLanesThatTheLastRunHasCounted) {
    Lane g;
    ASSERT_EQ(g.top.GetPosition().y, 12.0);
    ASSERT_EQ(g.low.GetPosition().y, 12.0 + 20.0 + 3.0 + 12.0);
    g.top.SetTag(SizeTag(400, 330));
    g.Resize();
    EXPECT_EQ(g.low.GetPosition().y, 12.0 + 33.0 + 3.0 + 1.0);
}

// The counts are those of the last run of the layout object, whichever owner it was about.
TEST(LayoutExceptions, AResizeAfterTheRunOfAnotherOwnerForgetsTheLanes) {
    Lane g;
    g.box.UpdateLayout();
    g.graph->RecalculateLayout(nullptr);
    g.top.SetTag(SizeTag(400, 330));
    g.Resize();
    EXPECT_EQ(g.low.GetPosition().y, 12.0 + 20.0 + 3.0 + 12.0);
}

//   +-before--+     +-after---+
//   |  [n]    |---->|         |
//   +---------+     +---------+
// What the last run knew is moved back by the position of its owner and by its caption, wherever it
// has gone since.
TEST(LayoutExceptions, TheOldOwnerOfANodePushesItOnceMore) {
    Measured g;
    Node before = g.AddBox();
    Node after = g.AddBox();
    before.LinkTo(after);
    Node n = Measured::AddBox(before, 40, 20);
    Measured::AddBox(before, 40, 20);
    Measured::AddBox(after, 40, 20);
    g.Make();
    n.SetOwner(after);
    after.UpdateLayout();
    g.graph->RecalculateLayout(nullptr);
    const point<double> right = n.GetPosition();
    const point<double> origin = before.GetPosition();
    before.UpdateLayout();
    g.graph->RecalculateLayout(nullptr);
    EXPECT_EQ(n.GetPosition(), (point<double>{right.x - origin.x, right.y - origin.y - 20.0}));
    after.UpdateLayout();
    g.graph->RecalculateLayout(nullptr);
    EXPECT_EQ(n.GetPosition(), right);
}

//   [o] ---> [n], which was in a box before
// The edge led to the box, and an edge that was there before is not routed anew.
TEST(LayoutExceptions, AnEdgeKeepsItsBendsWhenItsEndGoesToAnotherOwner) {
    Measured g;
    Node o = g.AddBox();
    Node box = g.AddBox();
    Node n = Measured::AddBox(box, 40, 20);
    Measured::AddBox(box, 40, 20);
    const Edge edge = o.LinkTo(n);
    g.Make();
    const std::size_t bends = RouteOf(edge).size();
    ASSERT_EQ(bends, 7u);
    n.SetOwner(g.root);
    g.Update();
    EXPECT_EQ(RouteOf(edge).size(), bends);
    g.Make();
    EXPECT_EQ(RouteOf(edge).size(), 4u);
    EXPECT_EQ(RouteOf(edge).back(), (point<double>{n.GetPosition().x, n.GetPosition().y + 10.0}));
}

}  // namespace
}  // namespace nodeline::test
