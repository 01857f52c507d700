// Changes that a stable layout takes up with the next update, without a make.
#include <gtest/gtest.h>
#include <nodeline/ops/graph_ops.h>
#include <support/picture_rules.h>
#include <support/scripts/checked_replay.h>
#include <support/stable_graphs.h>

namespace nodeline::test {
namespace {

//            +-box-----------------+
//   [o] ---> | [p] ---> [q]        | ---> [z]
//            +---------------------+
Script BoxLines() {
    return {"node 1 0 40 20", "node 2 0 0 0", "node 3 0 40 20", "node 4 2 40 20",
            "node 5 2 40 20", "edge 1 1 2",   "edge 2 2 3",     "edge 3 4 5",
            "edge 4 1 5",     "edge 5 4 3",   "recalc"};
}

void ExpectNoFaults(const Script& change) {
    Script script = BoxLines();
    script.insert(script.end(), change.begin(), change.end());
    CheckedReplay replay;
    for (const std::string& line : script) {
        ASSERT_TRUE(replay.Run(line)) << line;
        ASSERT_EQ(replay.faults(), "") << line;
    }
    ASSERT_EQ(replay.session().printed, "recalc true\n");
}

TEST(StableChanges, ANodeIsRemoved) {
    ExpectNoFaults({"remove-node 1", "update 0", "recalc"});
    ExpectNoFaults({"remove-node 4", "update 2", "recalc"});
    ExpectNoFaults({"remove-node 2", "update 0", "recalc"});
}

TEST(StableChanges, AnOwnerLosesAllItsNodes) {
    ExpectNoFaults({"remove-node 4", "remove-node 5", "update 0", "recalc"});
    ExpectNoFaults({"remove-node 4", "remove-node 5", "update 0", "recalc", "node 6 2 30 30",
                    "edge 6 1 6", "update 0", "recalc"});
}

TEST(StableChanges, ANodeMovesToAnotherOwner) {
    ExpectNoFaults({"owner 4 0", "update 0", "recalc"});
    ExpectNoFaults({"owner 3 2", "update 0", "recalc"});
    ExpectNoFaults({"owner 1 2", "update 2", "recalc", "owner 1 0", "update 0", "recalc"});
    ExpectNoFaults({"owner 2 1", "update 0", "recalc"});
}

TEST(StableChanges, SizesChange) {
    ExpectNoFaults({"size 4 90 70", "update 0", "recalc"});
    ExpectNoFaults({"size 4 90 70", "resize 4", "recalc"});
    ExpectNoFaults({"size 5 90 70", "size 1 10 200", "resize-all 0", "recalc"});
    ExpectNoFaults({"size 5 1 1", "size 1 1 1", "resize-all 0", "recalc"});
}

TEST(StableChanges, EdgesAreAddedBetweenOldNodes) {
    ExpectNoFaults({"edge 6 5 4", "update 2", "recalc"});
    ExpectNoFaults({"edge 6 5 1", "edge 7 3 4", "update 0", "recalc"});
    ExpectNoFaults({"edge 6 3 1", "edge 7 1 3", "edge 8 2 2", "update 0", "recalc"});
    ExpectNoFaults({"edge 6 4 2", "edge 7 2 5", "update 2", "recalc"});
}

TEST(StableChanges, EdgesAreRemoved) {
    ExpectNoFaults({"remove-edge 3", "remove-edge 4", "update 2", "recalc"});
    ExpectNoFaults({"remove-edge 1", "remove-edge 5", "resize 0", "recalc"});
}

TEST(StableChanges, ALeafBecomesAnOwner) {
    ExpectNoFaults({"node 6 1 50 50", "update 0", "recalc"});
    ExpectNoFaults({"node 6 5 50 50", "edge 6 6 1", "edge 7 6 5", "update 5", "recalc"});
}

TEST(StableChanges, EverythingAtOnce) {
    ExpectNoFaults({"node 6 5 50 50", "edge 6 6 1", "remove-edge 3", "owner 3 2", "size 1 3 99",
                    "fold 5 parents", "edge 7 3 3", "update 5", "recalc", "unfold 5 parents",
                    "recalc"});
}

TEST(StableChanges, ALayoutIsSetLate) {
    Ring g;
    g.Make();
    g.layout = StableLayout::Create();
    g.graph->SetDefaultLayout(g.layout);
    g.Update();
    EXPECT_EQ(Faults(g.graph), "");
    g.Resize();
    EXPECT_EQ(Faults(g.graph), "");
}

TEST(StableChanges, AnInnerOwnerGetsALayoutOfItsOwnLate) {
    Stable<Box> g;
    g.Make();
    ASSERT_EQ(Faults(g.graph), "");
    g.box.SetLayout(StableLayout::Create());
    g.Update();
    EXPECT_EQ(Faults(g.graph), "");
    g.p.SetTag(SizeTag(600, 600));
    g.Update();
    EXPECT_EQ(Faults(g.graph), "");
    g.box.SetLayout(g.layout);
    g.q.SetTag(SizeTag(600, 900));
    g.Update();
    EXPECT_EQ(Faults(g.graph), "");
}

TEST(StableChanges, AResizeOfAnOwnerThatWasNeverLaidOutLaysItOut) {
    Stable<Box> g;
    g.root.ResizeSelf();
    g.graph->RecalculateLayout(nullptr);
    EXPECT_EQ(Faults(g.graph), "");
    EXPECT_GT(g.box.GetSize().cx, 3 * 40.0);
}

}  // namespace
}  // namespace nodeline::test
