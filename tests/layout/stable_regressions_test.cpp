// Sessions that broke a promise of the stable layout, each as small as it gets.
#include <gtest/gtest.h>
#include <support/scripts/checked_replay.h>

namespace nodeline::test {
namespace {

// The stretch inside an owner may not give the place of a port to an edge that does not run there
// any more.
TEST(StableStretches, AnOwnerThatBecomesALeafForgetsTheStretchesInIt) {
    EXPECT_EQ(FaultsOf({"node 1 0 48 60", "node 2 1 62 20", "node 3 2 20 14", "edge 1 3 2 2",
                        "recalc", "owner 3 0", "update 0", "recalc"}),
              "");
}

TEST(StableStretches, ANodeThatLeavesTheOwnerThatItsEdgeLeadsToTakesTheEdgeAlong) {
    EXPECT_EQ(
        FaultsOf({"node 1 0 0 29", "node 2 0 10 26", "node 3 1 11 54", "edge 1 2 3 1", "owner 2 3",
                  "recalc", "owner 2 0", "update 0", "recalc", "update 0", "recalc"}),
        "");
}

TEST(StableStretches, AnOwnerThatLosesItsContentsKeepsItsEdgesOnItsSides) {
    EXPECT_EQ(FaultsOf({"node 2 0 36 5", "node 3 0 7 13", "node 7 3 59 1", "node 8 7 10 10",
                        "node 14 2 70 16", "edge 2 7 14 2", "owner 14 8", "recalc", "owner 8 2",
                        "update 0", "recalc"}),
              "");
}

// Two nodes come in above the same one, one update after the other.
TEST(StableOpenings, WhatStoodLevelStaysLevelWhenTwoNodesComeInOnTop) {
    EXPECT_EQ(FaultsOf({"node 4 0 69.7 10.3", "node 5 0 53.4 29.7", "node 6 0 0.0 32.5",
                        "node 10 0 62.2 43.5", "edge 7 4 5 2.5", "recalc", "node 13 0 51.3 18.1",
                        "update 4", "recalc", "node 14 0 6.7 38.0", "update 0",
                        "node 15 0 57.8 48.6", "recalc"}),
              "");
}

// Lanes are as wide as their own edges.
TEST(StableLanes, LanesOfWideEdgesStayOutOfTheNodeBelow) {
    EXPECT_EQ(FaultsOf({"node 1 0 40 20", "node 2 0 40 20", "node 3 0 40 20", "edge 1 1 2 0.5",
                        "edge 2 2 1 0.5", "edge 3 2 1 30", "edge 4 2 1 30", "recalc"}),
              "");
}

TEST(StableLanes, LanesOfWideLoopsStayOutOfTheNodeBelow) {
    EXPECT_EQ(FaultsOf({"node 1 0 40 20", "node 2 0 40 20", "edge 1 1 1 0.5", "edge 2 1 1 30",
                        "edge 3 1 1 1", "recalc"}),
              "");
}

// The contents of a node that owns itself hang under no root. Edges lead from there into the graph,
// and one of the nodes comes back.
TEST(StableDetached, EdgesIntoContentsOfANodeThatOwnsItselfAreBorne) {
    CheckedReplay replay;
    for (const char* line :
         {"node 1 0 0.0 46.0", "node 3 1 60.8 51.8", "node 4 1 74.1 18.4", "node 8 1 48.3 51.7",
          "node 9 1 0.0 31.1", "update 1", "node 10 0 19.8 41.4", "edge 20 4 4 2",
          "edge 21 3 1 0.5", "edge 27 8 10 2", "edge 29 10 9 1", "edge 30 1 9 1.5", "owner 1 1",
          "recalc", "update 1", "owner 3 0", "recalc"}) {
        EXPECT_TRUE(replay.Run(line)) << line;
    }
    EXPECT_EQ(replay.recalculations(), 2);
}

}  // namespace
}  // namespace nodeline::test
