// What the incremental layout gets wrong and the stable one does not. Each graph is the smallest
// that shows the fault.
#include <gtest/gtest.h>
#include <support/scripts/checked_replay.h>

#include <string>

namespace nodeline::test {
namespace {

// The same session with the other layout has the fault, so the test means something.
void ExpectFaultOfOthersOnly(Script script, const std::string& fault) {
    EXPECT_EQ(FaultsOf(script), "");
    script.insert(script.begin(), "layout inc");
    const std::string faults = FaultsOf(script);
    EXPECT_NE(faults.find(fault), std::string::npos) << "its faults: " << faults;
}

TEST(StableLayoutFaults, AnEdgeAcrossABorderStaysOnItsNodesThroughUpdates) {
    const Script script{"node 1 0 40 20", "node 2 0 0 0", "node 3 2 40 20", "edge 1 1 3", "recalc",
                        "update 0",       "recalc",       "update 0",       "recalc"};
    ExpectFaultOfOthersOnly(script, "is broken at the border");
    ExpectFaultOfOthersOnly(script, "without a change");
}

TEST(StableLayoutFaults, ANodeThatGrowsPastItsMiddlePushesItsNeighbourAway) {
    ExpectFaultOfOthersOnly(
        {"node 1 0 40 20", "node 2 0 40 20", "recalc", "size 1 40 100", "update 0", "recalc"},
        "are -20 apart");
}

TEST(StableLayoutFaults, ABoxThatGrowsPastItsMiddlePushesItsNeighbourAway) {
    ExpectFaultOfOthersOnly({"node 1 0 0 0", "node 2 1 40 20", "node 3 0 40 20", "recalc",
                             "node 4 1 40 90", "update 0", "recalc"},
                            "apart");
}

TEST(StableLayoutFaults, AnOwnerHoldsTheBendsBelowItsLastNode) {
    ExpectFaultOfOthersOnly({"node 1 0 40 20", "node 2 0 40 20", "node 3 0 40 20", "edge 1 1 2",
                             "edge 2 2 3", "edge 3 1 3", "edge 4 3 1", "edge 5 3 1", "recalc"},
                            "strays out of 0");
}

TEST(StableLayoutFaults, AnInnerOwnerHoldsTheBendsBelowItsLastNode) {
    const Script script{"node 9 0 0 0", "node 1 9 40 20", "node 2 9 40 20", "node 3 9 40 20",
                        "edge 1 1 2",   "edge 2 2 3",     "edge 3 1 3",     "edge 4 3 1",
                        "edge 5 3 1",   "recalc"};
    ExpectFaultOfOthersOnly(script, "strays out of");
}

TEST(StableLayoutFaults, AResizeOfAnOwnerThatDidNotRunLastKeepsEdgesOutOfNodes) {
    ExpectFaultOfOthersOnly({"node 1 0 0 0", "node 2 1 40 20", "node 3 1 40 20", "node 4 1 40 20",
                             "edge 1 2 3", "edge 2 3 2", "node 5 0 0 0", "node 6 5 40 20", "recalc",
                             "size 2 40 60", "resize 2", "resize 1", "recalc"},
                            "runs through");
}

TEST(StableLayoutFaults, AnEdgeFromANodeToItsOwnerIsMovedOnce) {
    ExpectFaultOfOthersOnly({"node 1 0 0 0", "node 2 1 40 20", "edge 1 2 1", "recalc"},
                            "leaves in the air");
}

TEST(StableLayoutFaults, AnEdgeFromAnOwnerToItsNodeIsMovedOnce) {
    ExpectFaultOfOthersOnly({"node 1 0 0 0", "node 2 1 40 20", "edge 1 1 2", "recalc"},
                            "ends in the air");
}

TEST(StableLayoutFaults, ANewEdgeAcrossABorderGetsItsInnerStretch) {
    ExpectFaultOfOthersOnly({"node 1 0 40 20", "node 2 0 0 0", "node 3 2 40 20", "recalc",
                             "edge 1 1 3", "update 0", "recalc"},
                            "ends in the air");
}

TEST(StableLayoutFaults, ANewNodeOfAFullLevelStandsInTheDrawing) {
    ExpectFaultOfOthersOnly({"node 1 0 40 20", "recalc", "node 2 0 40 20", "update 0", "recalc"},
                            "is outside of 0");
}

TEST(StableLayoutFaults, ANodeThatGetsNarrowerLeavesItsLevelWhereItIs) {
    ExpectFaultOfOthersOnly({"node 1 0 60 20", "recalc", "size 1 40 20", "resize-all 0", "recalc"},
                            "moves left");
}

}  // namespace
}  // namespace nodeline::test
