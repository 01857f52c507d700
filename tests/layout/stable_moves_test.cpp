// What moves in a stable picture, and what does not.
#include <gtest/gtest.h>
#include <nodeline/ops/graph_ops.h>
#include <support/picture_rules.h>
#include <support/scripts/checked_replay.h>
#include <support/session.h>
#include <support/stable_graphs.h>

#include <cstdint>

namespace nodeline::test {
namespace {

point<double> At(const Node& node) { return node.GetPosition(); }

struct StableRungs : Stable<Measured> {
    explicit StableRungs(int count) {
        for (int i = 0; i < count; ++i) {
            a.push_back(AddBox());
            b.push_back(AddBox());
            a.back().LinkTo(b.back());
        }
        Make();
    }

    std::vector<Node> a;
    std::vector<Node> b;
};

TEST(StableMoves, WhatGrowsMovesAllThatIsBelowOnAllLevelsAlike) {
    StableRungs g(3);
    g.a[0].SetTag(SizeTag(400, 700));
    g.Update();
    EXPECT_EQ(At(g.a[0]), (point<double>{35.0, 12.0}));
    EXPECT_EQ(At(g.b[0]), (point<double>{115.0, 12.0}));
    EXPECT_EQ(At(g.a[1]), (point<double>{35.0, 94.0}));
    EXPECT_EQ(At(g.b[1]), (point<double>{115.0, 94.0}));
    EXPECT_EQ(At(g.a[2]), (point<double>{35.0, 126.0}));
    EXPECT_EQ(At(g.b[2]), (point<double>{115.0, 126.0}));
    EXPECT_EQ(g.root.GetSize().cy, 158.0);
    EXPECT_EQ(Faults(g.graph), "");
}

TEST(StableMoves, WhatShrinksMovesNothing) {
    StableRungs g(3);
    g.a[0].SetTag(SizeTag(100, 50));
    g.Update();
    // A level keeps its width, and a node the middle of its level.
    EXPECT_EQ(At(g.a[0]), (point<double>{50.0, 12.0}));
    EXPECT_EQ(At(g.a[1]), (point<double>{35.0, 44.0}));
    EXPECT_EQ(At(g.b[2]), (point<double>{115.0, 76.0}));
}

TEST(StableMoves, WhatIsRemovedLeavesAGap) {
    StableRungs g(3);
    g.a[1].Remove();
    g.b[1].Remove();
    g.Update();
    EXPECT_EQ(At(g.a[2]), (point<double>{35.0, 76.0}));
    EXPECT_EQ(At(g.b[2]), (point<double>{115.0, 76.0}));
}

TEST(StableMoves, ANewNodeTakesAGapThatIsFree) {
    StableRungs g(3);
    g.b[1].Remove();
    g.Update();
    const Node fresh = g.AddBox();
    g.a[1].LinkTo(fresh);
    g.Update();
    EXPECT_EQ(At(fresh), (point<double>{115.0, 44.0}));
    EXPECT_EQ(At(g.a[2]), (point<double>{35.0, 76.0}));
    EXPECT_EQ(At(g.b[2]), (point<double>{115.0, 76.0}));
}

TEST(StableMoves, ANewNodeWithoutAGapInReachOpensTheDrawing) {
    StableLayout::Options options;
    options.reach = 0.0;
    Stable<Measured> g(options);
    std::vector<Node> left;
    std::vector<Node> right;
    for (int i = 0; i < 3; ++i) {
        left.push_back(g.AddBox());
        right.push_back(g.AddBox());
        left.back().LinkTo(right.back());
    }
    g.Make();
    const Node fresh = g.AddBox();
    left[1].LinkTo(fresh);
    g.Update();
    EXPECT_EQ(Faults(g.graph), "");
    EXPECT_EQ(At(left[0]).y, 12.0);
    EXPECT_EQ(At(right[0]).y, 12.0);
    EXPECT_EQ(At(fresh).x, 115.0);
    EXPECT_EQ(At(left[1]).y, At(right[1]).y);
    EXPECT_EQ(At(left[2]).y, 108.0);
    EXPECT_EQ(At(right[2]).y, 108.0);
}

TEST(StableMoves, ANewNodeOnTheLeftMovesLevelsToTheRight) {
    Stable<BoxArrow> g;
    g.Make();
    const Node fresh = g.AddBox();
    Node(fresh).LinkTo(g.a);
    g.Update();
    EXPECT_EQ(At(fresh).x, 35.0);
    EXPECT_EQ(At(g.a).x, 115.0);
    EXPECT_EQ(At(g.b).x, 195.0);
    EXPECT_EQ(Faults(g.graph), "");
}

TEST(StableMoves, ANewEdgeBetweenOldNodesMovesNeitherToAnotherLevel) {
    StableRungs g(2);
    const Edge flat = g.a[0].LinkTo(g.a[1]);
    const Edge back = g.b[1].LinkTo(g.a[0]);
    g.Update();
    EXPECT_EQ(At(g.a[0]), (point<double>{35.0, 12.0}));
    EXPECT_EQ(At(g.a[1]).x, 35.0);
    EXPECT_EQ(At(g.b[1]).x, 115.0);
    EXPECT_EQ(flat.GetBreakNodes().GetCount(), 6);
    EXPECT_EQ(back.GetBreakNodes().GetCount(), 8);
    EXPECT_EQ(Faults(g.graph), "");
}

TEST(StableMoves, ALevelThatIsHiddenKeepsItsWidth) {
    Stable<Row> g;
    g.Make();
    const point<double> d = At(g.d);
    Hide(g.b);
    g.Update();
    EXPECT_EQ(At(g.d), d);
    EXPECT_EQ(Faults(g.graph), "");
}

TEST(StableMoves, WhatIsHiddenGetsItsPlaceBack) {
    StableRungs g(4);
    const point<double> place = At(g.b[1]);
    Fold(g.a[1], FoldChildren);
    g.graph->RecalculateLayout(nullptr);
    EXPECT_TRUE(IsFlagSet(g.b[1], NodeHidden));
    Unfold(g.a[1], FoldChildren);
    g.graph->RecalculateLayout(nullptr);
    EXPECT_EQ(At(g.b[1]), place);
}

TEST(StableMoves, APlaceInMindMovesWithWhatIsAround) {
    StableRungs g(4);
    Fold(g.a[2], FoldChildren);
    g.graph->RecalculateLayout(nullptr);
    g.a[0].SetTag(SizeTag(400, 700));
    g.Update();
    Unfold(g.a[2], FoldChildren);
    g.graph->RecalculateLayout(nullptr);
    EXPECT_EQ(At(g.b[2]).y, At(g.a[2]).y);
    EXPECT_EQ(At(g.b[3]).y, At(g.a[3]).y);
}

TEST(StableMoves, APlaceThatIsTakenGivesTheNearestGap) {
    StableRungs g(4);
    Fold(g.a[1], FoldChildren);
    g.graph->RecalculateLayout(nullptr);
    // Stands level with its parent, where the hidden node stood.
    const Node thief = g.AddBox();
    g.a[1].LinkTo(thief);
    g.Update();
    EXPECT_EQ(At(thief).y, 44.0);
    g.b[3].Remove();
    Show(g.b[1]);
    g.Update();
    EXPECT_EQ(At(thief).y, 44.0);
    EXPECT_EQ(At(g.b[0]).y, 12.0);
    EXPECT_EQ(At(g.b[2]).y, 76.0);
    EXPECT_EQ(At(g.b[1]).y, 108.0);
    EXPECT_EQ(Faults(g.graph), "");
}

TEST(StableMoves, AFoldAndAnUnfoldGiveTheSamePictureWithItsBends) {
    const Script script{"node 1 0 40 20", "node 2 0 40 20", "node 3 0 40 20", "node 4 0 0 0",
                        "node 5 4 30 33", "node 6 4 31 14", "edge 1 1 2",     "edge 2 2 3",
                        "edge 3 1 3",     "edge 4 3 1",     "edge 5 2 5",     "edge 6 6 1",
                        "edge 7 5 6",     "recalc",         "update 0",       "recalc"};
    for (const char* hidden : {"1", "2", "3", "5", "6"}) {
        for (const char* side : {" parents", " children"}) {
            Script whole = script;
            whole.push_back(std::string("fold ") + hidden + side);
            whole.emplace_back("recalc");
            whole.push_back(std::string("unfold ") + hidden + side);
            whole.emplace_back("recalc");
            CheckedReplay replay;
            for (const std::string& line : whole) {
                ASSERT_TRUE(replay.Run(line));
                ASSERT_EQ(replay.faults(), "") << line;
            }
            EXPECT_GE(replay.comparisons(), 1);
        }
    }
}

void ExpectStill(const SessionPlan& plan, std::uint64_t seed) {
    Session session(seed, plan, [] { return checked_upcast<ILayout>(StableLayout::Create()); });
    session.Recalculate();
    ASSERT_EQ(Faults(session.graph), "") << seed;
    const Picture picture = session.Look();
    for (Node node : session.nodes) {
        seed % 2 == 0 ? node.UpdateLayout() : node.ResizeAll();
        session.Recalculate();
        ASSERT_EQ(Difference(session.Look(), picture), "") << seed;
    }
}

TEST(StableMoves, UpdatesAndResizesWithoutAChangeMoveNothing) {
    for (std::uint64_t seed = 1; seed <= 20; ++seed) ExpectStill({}, seed);
}

TEST(StableMoves, OwnersWithLayoutsOfTheirOwnMoveNothingEither) {
    SessionPlan plan;
    plan.own_layouts = 4;
    for (std::uint64_t seed = 1; seed <= 20; ++seed) ExpectStill(plan, seed);
}

}  // namespace
}  // namespace nodeline::test
