#include <gtest/gtest.h>
#include <nodeline/model/recalculate.h>
#include <support/ids.h>
#include <support/named_graphs.h>

#include <vector>

namespace nodeline::test {
namespace {

std::vector<int> Filed(const RequestMap& map) {
    std::vector<int> ids;
    for (const auto& [key, record] : map) {
        EXPECT_EQ(key, 0);
        ids.push_back(record->get_id());
    }
    return ids;
}

bool File(RequestMap& map, const Node& node) {
    int depth = -1;
    return check_and_insert(&map, node.record(), &depth, true);
}

TEST(MakeRequests, AreFiledInOrder) {
    Stairs g;
    RequestMap map;
    EXPECT_FALSE(File(map, g.c));
    EXPECT_FALSE(File(map, g.a));
    EXPECT_EQ(Filed(map), IdsOf(g.c, g.a));
}

TEST(MakeRequests, OnceTheRootIsFiledAbsorbAllOthers) {
    Stairs g;
    RequestMap map;
    EXPECT_FALSE(File(map, g.a));
    EXPECT_FALSE(File(map, g.root));
    EXPECT_TRUE(File(map, g.b));
    EXPECT_TRUE(File(map, g.root));
    EXPECT_EQ(Filed(map), IdsOf(g.a, g.root));
}

TEST(MakeRequests, OfOneNodeAreFiledAsOftenAsTheyCome) {
    Stairs g;
    RequestMap map;
    EXPECT_FALSE(File(map, g.b));
    EXPECT_FALSE(File(map, g.b));
    EXPECT_FALSE(File(map, g.a));
    EXPECT_EQ(Filed(map), IdsOf(g.b, g.b, g.a));
}

TEST(MakeRequests, TellTheNestingDepth) {
    Stairs g;
    RequestMap map;
    int depth = 99;
    check_and_insert(&map, g.root.record(), &depth, false);
    EXPECT_EQ(depth, 0);
    check_and_insert(&map, g.c.record(), &depth, false);
    EXPECT_EQ(depth, 3);
    File(map, g.root);
    EXPECT_TRUE(check_and_insert(&map, g.b.record(), &depth, true));
    EXPECT_EQ(depth, 2);
}

TEST(MakeRequests, AreOnlyAskedForWithoutInsert) {
    Stairs g;
    RequestMap map;
    int depth = 0;
    EXPECT_FALSE(check_and_insert(&map, g.root.record(), &depth, false));
    EXPECT_TRUE(map.empty());
    File(map, g.root);
    EXPECT_TRUE(check_and_insert(&map, g.root.record(), &depth, false));
    EXPECT_EQ(Filed(map), IdsOf(g.root));
}

// A lookup goes to the entries at the depth of the node, and from there to the end.
TEST(MakeRequests, AreFoundAtTheirDepthInAMapWithFurtherKeys) {
    Stairs g;
    RequestMap map;
    map.emplace(2, g.b.record());
    EXPECT_TRUE(File(map, g.b));
    EXPECT_TRUE(File(map, g.c));
    EXPECT_FALSE(File(map, g.a));
    EXPECT_EQ(map.size(), 2u);
    map.clear();
    map.emplace(1, g.b.record());
    EXPECT_FALSE(File(map, g.b));
}

TEST(ResizeRequests, FileOwnersAheadOfWhatTheyOwn) {
    Stairs g;
    RequestMap map;
    insert_with_owners(&map, g.c.record());
    EXPECT_EQ(Filed(map), IdsOf(g.root, g.a, g.b, g.c));
}

TEST(ResizeRequests, FileNothingTwiceButTheFirstEntryOnce) {
    Stairs g;
    RequestMap map;
    insert_with_owners(&map, g.b.record());
    insert_with_owners(&map, g.c.record());
    EXPECT_EQ(Filed(map), IdsOf(g.root, g.a, g.b, g.root, g.c));
    insert_with_owners(&map, g.c.record());
    insert_with_owners(&map, g.root.record());
    EXPECT_EQ(Filed(map), IdsOf(g.root, g.a, g.b, g.root, g.c));
}

TEST(ResizeRequests, OfTheRootAreFiledTwiceAtMost) {
    Empty g;
    RequestMap map;
    for (int i = 0; i < 3; ++i) insert_with_owners(&map, g.root.record());
    EXPECT_EQ(Filed(map), IdsOf(g.root, g.root));
}

TEST(Redundancy, IsToStandBehindTheFirstEntryOfTheKey) {
    Stairs g;
    RequestMap map;
    map.emplace(0, g.a.record());
    map.emplace(0, g.b.record());
    map.emplace(0, g.root.record());
    EXPECT_FALSE(is_redundant({0, g.a.record()}, &map));
    EXPECT_TRUE(is_redundant({0, g.b.record()}, &map));
    EXPECT_TRUE(is_redundant({0, g.root.record()}, &map));
    EXPECT_FALSE(is_redundant({0, g.c.record()}, &map));
}

TEST(Redundancy, IsSoughtWithLesserKeysButForTheRoot) {
    Stairs g;
    RequestMap map;
    map.emplace(0, g.a.record());
    map.emplace(0, g.b.record());
    map.emplace(0, g.root.record());
    EXPECT_TRUE(is_redundant({2, g.b.record()}, &map));
    EXPECT_FALSE(is_redundant({2, g.root.record()}, &map));
    EXPECT_FALSE(is_redundant({-1, g.b.record()}, &map));
}

TEST(Redundancy, IsNotFoundInAnEmptyMap) {
    Stairs g;
    RequestMap map;
    EXPECT_FALSE(is_redundant({3, g.c.record()}, &map));
    EXPECT_FALSE(is_redundant({0, g.root.record()}, &map));
}

TEST(BreakNodeRemoval, ForwardsToTheEdge) {
    Arrow g;
    g.edge.AddBreakNodesIn(g.root, 3);
    _remove_break_nodes(g.edge);
    EXPECT_EQ(g.edge.GetBreakNodes().GetCount(), 0);
}

}  // namespace
}  // namespace nodeline::test
