// Graphs at the edge of what a stable layout may be given.
#include <gtest/gtest.h>
#include <nodeline/ops/graph_ops.h>
#include <support/picture_rules.h>
#include <support/scripts/checked_replay.h>
#include <support/stable_graphs.h>

#include <string>
#include <vector>

namespace nodeline::test {
namespace {

TEST(StableOddGraphs, NodesWithoutASizeTakeNoRoomButTheSpacing) {
    Stable<Measured> g;
    const Node a = g.AddBox(0, 0);
    const Node b = g.AddBox(0, 0);
    const Node c = g.AddBox(0, 0);
    Node(a).LinkTo(c);
    g.Make();
    EXPECT_EQ(a.GetPosition(), (point<double>{30.0, 12.0}));
    EXPECT_EQ(b.GetPosition(), (point<double>{30.0, 24.0}));
    EXPECT_EQ(c.GetPosition(), (point<double>{30.0, 12.0}));
    EXPECT_EQ(g.root.GetSize().cx, 30.0);
    EXPECT_EQ(g.root.GetSize().cy, 36.0);
    EXPECT_EQ(Faults(g.graph), "");
}

// Edges that turn need room for it beside a node without a width, too.
TEST(StableOddGraphs, ABackEdgeTurnsBesideNodesWithoutAWidth) {
    EXPECT_EQ(FaultsOf({"node 1 0 0 0", "node 2 0 0 10", "edge 1 1 2", "edge 2 2 1", "edge 3 1 1",
                        "recalc", "update 0", "recalc"}),
              "");
}

TEST(StableOddGraphs, ALoopTurnsBelowItsNode) {
    Stable<Measured> g;
    Node a = g.AddBox();
    const Edge loop = a.LinkTo(a);
    g.Make();
    const NodeSet bends = loop.GetBreakNodes();
    ASSERT_EQ(bends.GetCount(), 6);
    EXPECT_EQ(bends.GetItem(0).GetPosition(), (point<double>{75.0, 22.0}));
    EXPECT_EQ(bends.GetItem(bends.GetCount() - 1).GetPosition(), (point<double>{35.0, 22.0}));
    for (const Node& bend : bends) EXPECT_GE(bend.GetPosition().x, 30.0);
    EXPECT_EQ(Faults(g.graph), "");
    EXPECT_EQ(g.root.GetSize().cy, 12.0 + 20.0 + 2.0 + 1.0 + 12.0);
}

TEST(StableOddGraphs, ALoopOfAnOwnerRunsAroundItsContents) {
    EXPECT_EQ(FaultsOf({"node 1 0 0 0", "node 2 1 40 20", "edge 1 1 1", "edge 2 2 2", "recalc",
                        "update 0", "recalc", "resize 1", "recalc"}),
              "");
}

TEST(StableOddGraphs, AnOwnerWithNothingButHiddenNodesIsAsLargeAsItsMargins) {
    Stable<BoxArrow> g;
    Hide(g.a);
    Hide(g.b);
    g.Make();
    EXPECT_EQ(g.root.GetSize().cx, 30.0);
    EXPECT_EQ(g.root.GetSize().cy, 12.0);
    Show(g.a);
    Show(g.b);
    g.Update();
    EXPECT_EQ(g.a.GetPosition(), (point<double>{35.0, 12.0}));
    EXPECT_EQ(Faults(g.graph), "");
}

TEST(StableOddGraphs, ChangesInAHiddenOwnerAreThereWhenItIsShown) {
    EXPECT_EQ(FaultsOf({"node 1 0 0 0", "node 2 1 40 20", "node 3 0 40 20", "edge 1 3 2", "recalc",
                        "hide 1", "update 0", "recalc", "node 4 1 30 60", "edge 2 2 4",
                        "edge 3 4 3", "update 1", "recalc", "show 1", "update 0", "recalc"}),
              "");
}

TEST(StableOddGraphs, AnEmptyRootGetsTheSizeOfItsHandler) {
    Stable<Measured> g;
    g.root.SetSize({9.0, 9.0});
    g.Make();
    EXPECT_EQ(g.root.GetSize().cx, 0.0);
    EXPECT_EQ(g.root.GetSize().cy, 0.0);
}

TEST(StableOddGraphs, AnEmptyHandleIsPassedOver) {
    const graph_ptr2<StableLayout> layout = StableLayout::Create();
    layout->Make(Node());
    layout->Update(Node());
    layout->Resize(Node());
    Stable<BoxArrow> g;
    g.Make();
    EXPECT_EQ(Faults(g.graph), "");
}

// The border is met where the other layout has put its ports.
TEST(StableOddGraphs, AnInnerOwnerMayHaveTheIncrementalLayout) {
    Stable<Measured> g;
    Node outside = g.AddBox();
    const Node box = g.AddBox(0, 0);
    Node p = g.AddBox(box, 40, 20);
    const Node q = g.AddBox(box, 40, 20);
    const Node beyond = g.AddBox();
    p.LinkTo(q);
    outside.LinkTo(p);
    Node(q).LinkTo(beyond);
    Node(box).SetLayout(IncLayout::Create());
    g.Make();
    EXPECT_EQ(Faults(g.graph), "");
    g.Update();
    EXPECT_EQ(Faults(g.graph), "");
    g.Resize();
    EXPECT_EQ(Faults(g.graph), "");
    EXPECT_EQ(p.GetPosition(), (point<double>{115.0 + 35.0, 12.0 + 12.0}));
}

TEST(StableOddGraphs, AnInnerOwnerMayHaveTheStableLayoutAlone) {
    Box g;
    g.box.SetLayout(StableLayout::Create());
    g.Make();
    EXPECT_EQ(Faults(g.graph), "");
    const point<double> inside = g.r.GetPosition();
    const size<double> extent = g.box.GetSize();
    g.box.UpdateLayout();
    g.graph->RecalculateLayout(nullptr);
    EXPECT_EQ(g.r.GetPosition(), inside);
    EXPECT_EQ(g.box.GetSize().cx, extent.cx);
    EXPECT_EQ(g.box.GetSize().cy, extent.cy);
}

TEST(StableOddGraphs, AnInnerOwnerWithALayoutOfItsOwnKeepsAnEdgeToItself) {
    Stable<Measured> g;
    Node box = g.AddBox(0, 0);
    Node p = g.AddBox(box, 40, 20);
    p.LinkTo(box);
    box.SetLayout(StableLayout::Create());
    g.Make();
    EXPECT_EQ(Faults(g.graph), "");
}

TEST(StableOddGraphs, ANodeThatOwnsItselfIsNotInThePicture) {
    Stable<Row> g;
    g.Make();
    g.b.SetOwner(g.b);
    g.Update();
    g.b.UpdateLayout();
    g.graph->RecalculateLayout(nullptr);
    g.b.MakeLayout();
    g.graph->RecalculateLayout(nullptr);
    g.Resize();
    EXPECT_EQ(Faults(g.graph), "");
    EXPECT_EQ(g.a.GetPosition(), (point<double>{35.0, 12.0}));
    // Nothing else takes it apart.
    g.ab.Remove();
    g.bc.Remove();
    g.b.Remove();
}

// Each owner adds a band's edges and two gaps across, and two margins down.
TEST(StableOddGraphs, AThousandNestedOwnersWithAnEdgeThroughAllOfThem) {
    Stable<Measured> g;
    Node outside = g.AddBox();
    Node owner = g.root;
    std::vector<Node> boxes;
    for (int i = 0; i < 1000; ++i) {
        owner = g.AddBox(owner, 40, 20);
        boxes.push_back(owner);
    }
    const Edge edge = outside.LinkTo(owner);
    const auto expect_nested = [&](double outer_x) {
        for (std::size_t i = 0; i < boxes.size(); ++i) {
            const double depth = static_cast<double>(i);
            ASSERT_EQ(boxes[i].GetPosition(),
                      (point<double>{outer_x + 35.0 * depth, 12.0 * (depth + 1.0)}))
                << i;
        }
        const NodeSet bends = edge.GetBreakNodes();
        const double y = owner.GetPosition().y + 0.5 * owner.GetSize().cy;
        EXPECT_EQ(bends.GetItem(0).GetPosition().x, 75.0);
        EXPECT_EQ(bends.GetItem(bends.GetCount() - 1).GetPosition(),
                  (point<double>{owner.GetPosition().x, y}));
    };
    g.Make();
    expect_nested(115.0);
    g.Update();
    expect_nested(115.0);
    g.root.ResizeSelf();
    g.graph->RecalculateLayout(nullptr);
    expect_nested(115.0);
    EXPECT_EQ(g.root.GetSize().cy, 20.0 + 1000 * 24.0);
}

}  // namespace
}  // namespace nodeline::test
