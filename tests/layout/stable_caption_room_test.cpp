// The room that a stable layout keeps for the captions of owners.
#include <gtest/gtest.h>
#include <nodeline/ops/graph_ops.h>
#include <support/picture_rules.h>
#include <support/random_graph.h>
#include <support/stable_graphs.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

namespace nodeline::test {
namespace {

constexpr double kRoom = 26.0;
constexpr double kMargin = 12.0;
// The layout takes less for rounding.
constexpr double kSlack = 1e-6;

StableLayout::Options WithRoom() {
    StableLayout::Options options;
    options.caption_room = kRoom;
    return options;
}

// How far below the top of its owner the highest node stands; infinite if none is shown.
double RoomIn(const Node& owner) {
    double room = std::numeric_limits<double>::infinity();
    for (const Node& node : owner.GetOwned()) {
        if (IsFlagSet(node, NodeHidden)) continue;
        room = std::min(room, node.GetPosition().y - owner.GetPosition().y);
    }
    return room;
}

// The owners in the picture in which the room is not kept.
std::string Narrow(const graph_ptr2<Graph>& graph) {
    std::string narrow;
    const auto look = [&narrow](const Node& owner) {
        const double least = IsRoot(owner) ? kMargin : kRoom;
        if (IsOutOfSight(owner) || RoomIn(owner) >= least - kSlack) return;
        narrow += std::to_string(owner.GetID()) + ": " + std::to_string(RoomIn(owner)) + "\n";
    };
    ForEachNodeIn(graph->GetRoot(), look, false, true);
    return narrow;
}

// The rules know nothing of lanes between a node and its owner, below which an owner ends.
std::string FaultsButHeights(const graph_ptr2<Graph>& graph) {
    std::string faults;
    for (const std::string& fault : FindFaults(graph)) {
        if (fault.find("below its contents") == std::string::npos) faults += fault + "\n";
    }
    return faults;
}

TEST(StableCaptionRoom, IsKeptInOwnersAndNotInTheRoot) {
    Stable<Box> g(WithRoom());
    g.Make();
    EXPECT_EQ(Faults(g.graph), "");
    EXPECT_DOUBLE_EQ(RoomIn(g.box), kRoom);
    EXPECT_DOUBLE_EQ(RoomIn(g.root), kMargin);
}

TEST(StableCaptionRoom, ThatIsLessThanTheMarginChangesNothing) {
    StableLayout::Options options;
    options.caption_room = kMargin - 1.0;
    Stable<Box> g(options);
    g.Make();
    EXPECT_DOUBLE_EQ(RoomIn(g.box), kMargin);
}

TEST(StableCaptionRoom, IsKeptThroughUpdates) {
    for (std::uint64_t seed = 1; seed <= 30; ++seed) {
        Random random(seed);
        RandomGraph made(seed);
        MeasureByTags(made.graph);
        for (Node& node : made.nodes) node.SetTag(SizeTag(400, random.Between(100, 300)));
        made.graph->SetDefaultLayout(StableLayout::Create(WithRoom()));
        for (int step = 0; step < 12; ++step) {
            made.graph->RecalculateLayout(nullptr);
            ASSERT_EQ(FaultsButHeights(made.graph), "") << "seed " << seed << ", step " << step;
            ASSERT_EQ(Narrow(made.graph), "") << "seed " << seed << ", step " << step;
            Node node = random.Of(made.nodes);
            if (random.OneIn(3)) {
                Node inner = node.AddNode();
                inner.SetTag(SizeTag(300, 200));
                inner.LinkTo(random.Of(made.nodes));
                node.UpdateLayout();
                continue;
            }
            SetFlag(node, NodeHidden, !IsFlagSet(node, NodeHidden));
            node.GetOwner().UpdateLayout();
        }
    }
}

}  // namespace
}  // namespace nodeline::test
