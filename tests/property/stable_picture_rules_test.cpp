// The rules that pictures are held to find what breaks them.
#include <gtest/gtest.h>
#include <nodeline/model/break_nodes.h>
#include <nodeline/ops/graph_ops.h>
#include <support/picture_moves.h>
#include <support/picture_rules.h>
#include <support/stable_graphs.h>

#include <string>
#include <vector>

namespace nodeline::test {
namespace {

BreakChain& ChainOf(const Edge& edge, const Node& owner) {
    const graph_ptr<IEdgeVis> vis = edge.store()->get_edge_vis(edge.record());
    return *dynamic_cast<DefaultEdgeVis*>(vis.get())->FindChain(owner.GetID());
}

testing::AssertionResult Tells(const std::string& faults, const std::string& fault) {
    if (faults.find(fault) != std::string::npos) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "no \"" << fault << "\" in: " << faults;
}

struct StableBox : Stable<Box> {
    StableBox() {
        Make();
        EXPECT_EQ(Faults(graph), "");
    }
};

TEST(PictureRules, TellOfNodesThatAreTooClose) {
    Stable<Fan> g;
    g.Make();
    ASSERT_EQ(Faults(g.graph), "");
    g.b2.SetPosition(g.b2.GetPosition().x, g.b2.GetPosition().y - 1.0);
    EXPECT_TRUE(Tells(Faults(g.graph), " are 11 apart"));
}

TEST(PictureRules, TellOfANodeInTheMargin) {
    StableBox g;
    g.p.SetPosition(g.p.GetPosition().x, g.box.GetPosition().y + 11.0);
    EXPECT_TRUE(Tells(Faults(g.graph), "is outside of " + std::to_string(g.box.GetID())));
}

TEST(PictureRules, TellOfAnOwnerThatIsTooTall) {
    StableBox g;
    g.root.SetSize({g.root.GetSize().cx, g.root.GetSize().cy + 1.0});
    EXPECT_TRUE(Tells(Faults(g.graph), "owner 0 ends 13 below its contents"));
}

TEST(PictureRules, TellOfAnOwnerThatIsTooWideAfterAMake) {
    StableBox g;
    g.root.SetSize({g.root.GetSize().cx + 1.0, g.root.GetSize().cy});
    EXPECT_EQ(Faults(g.graph), "");
    PictureRules rules;
    rules.is_made = true;
    EXPECT_TRUE(Tells(Faults(g.graph, rules), "owner 0 ends 1 too far to the right"));
}

TEST(PictureRules, TellOfBendsOutsideTheOwner) {
    StableBox g;
    BreakChain& chain = ChainOf(g.pq, g.box);
    const point<double> bend = chain.GetPositionAt(1);
    chain.SetPositionAt(1, bend.x, g.box.GetPosition().y + g.box.GetSize().cy);
    EXPECT_TRUE(Tells(Faults(g.graph), "strays out of " + std::to_string(g.box.GetID())));
}

TEST(PictureRules, TellOfALaneThatRunsThroughANode) {
    StableBox g;
    BreakChain& chain = ChainOf(g.into, g.box);
    const double y = g.q.GetPosition().y + 10.0;
    for (int i = 1; i + 1 < chain.GetCount(); ++i) {
        chain.SetPositionAt(i, chain.GetPositionAt(i).x, y);
    }
    EXPECT_TRUE(Tells(Faults(g.graph), " runs through " + std::to_string(g.q.GetID())));
}

TEST(PictureRules, TellOfARouteThatIsBrokenAtABorder) {
    StableBox g;
    BreakChain& chain = ChainOf(g.into, g.box);
    chain.SetPositionAt(0, chain.GetPositionAt(0).x, chain.GetPositionAt(0).y + 1.0);
    EXPECT_TRUE(Tells(Faults(g.graph), "is broken at the border"));
}

TEST(PictureRules, TellOfRoutesThatMissTheirEnds) {
    StableBox g;
    BreakChain& chain = ChainOf(g.pq, g.box);
    chain.Shift({1.0, 0.0});
    EXPECT_TRUE(Tells(Faults(g.graph), "leaves in the air"));
    EXPECT_TRUE(Tells(Faults(g.graph), "ends in the air"));
}

TEST(PictureRules, TellOfAnEdgeWithoutARoute) {
    StableBox g;
    g.pq.RemoveBreakNodes();
    EXPECT_TRUE(Tells(Faults(g.graph), "has no route"));
}

TEST(PictureRules, PassOverWhatIsHidden) {
    StableBox g;
    g.pq.RemoveBreakNodes();
    Hide(g.box);
    g.Update();
    g.p.SetPosition(-100.0, -100.0);
    EXPECT_EQ(Faults(g.graph), "");
}

// Moves, in an owner that is not fresh.

PlacedNode At(int id, double centre, double y) { return {id, 0, y, centre, 40.0, true}; }

std::string Moves(const std::vector<PlacedNode>& before, const std::vector<PlacedNode>& after) {
    std::string text;
    for (const auto& fault : FindWrongMoves(before, after, [](int) { return false; })) {
        text += fault + '\n';
    }
    return text;
}

TEST(PictureMoves, MayGrowFromTopToBottom) {
    EXPECT_EQ(Moves({At(1, 50, 12), At(2, 50, 44), At(3, 130, 44), At(4, 130, 90)},
                    {At(1, 55, 12), At(2, 55, 54), At(3, 140, 54), At(4, 140, 100)}),
              "");
}

TEST(PictureMoves, MayNotGoUp) {
    EXPECT_TRUE(Tells(Moves({At(1, 50, 13)}, {At(1, 50, 12)}), "node 1 moves up by 1"));
}

TEST(PictureMoves, MayNotGetLessFurtherDown) {
    EXPECT_TRUE(Tells(Moves({At(1, 50, 12), At(2, 130, 44)}, {At(1, 50, 22), At(2, 130, 50)}),
                      "node 2 moves down by 6, node 1 at or above it by 10"));
}

TEST(PictureMoves, MayNotPartWhatWasLevel) {
    EXPECT_TRUE(Tells(Moves({At(1, 50, 12), At(2, 130, 12)}, {At(1, 50, 12), At(2, 130, 13)}),
                      "nodes 1 and 2 were level"));
}

TEST(PictureMoves, MayNotGoLeft) {
    EXPECT_TRUE(Tells(Moves({At(1, 50, 12)}, {At(1, 49, 12)}), "node 1 moves left by 1"));
}

TEST(PictureMoves, MayNotChangeLevels) {
    EXPECT_TRUE(Tells(Moves({At(1, 50, 12), At(2, 50, 44)}, {At(1, 50, 12), At(2, 130, 44)}),
                      "nodes 1 and 2 change levels"));
    EXPECT_TRUE(Tells(Moves({At(1, 50, 12), At(2, 130, 44)}, {At(1, 130, 12), At(2, 130, 44)}),
                      "nodes 1 and 2 change levels"));
}

TEST(PictureMoves, ConcernOldNodesOfTheSameOwnerAlone) {
    PlacedNode moved = At(1, 50, 13);
    moved.owner_id = 7;
    EXPECT_EQ(Moves({moved, At(2, 50, 44)}, {At(1, 10, 5), At(2, 50, 44), At(3, 1, 1)}), "");
    EXPECT_TRUE(FindWrongMoves({At(1, 50, 13)}, {At(1, 10, 5)}, [](int owner) {
                    return owner == 0;
                }).empty());
}

}  // namespace
}  // namespace nodeline::test
