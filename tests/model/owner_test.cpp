#include <gtest/gtest.h>
#include <nodeline/model/graph.h>
#include <support/ids.h>
#include <support/named_graphs.h>

namespace nodeline::test {
namespace {

TEST(Owner, ChangeMovesTheNodeToTheEndOfTheNewOwner) {
    Stairs g;
    Node d = g.root.AddNode();
    g.c.SetOwner(g.root);
    EXPECT_EQ(Ids(g.root.GetOwned()), IdsOf(g.a, d, g.c));
    EXPECT_EQ(g.b.GetOwned().GetCount(), 0);
    EXPECT_EQ(g.c.GetOwner(), g.root);
}

TEST(Owner, ChangeTakesTheContentsAlong) {
    Stairs g;
    Node d = g.root.AddNode();
    g.b.SetOwner(d);
    EXPECT_EQ(Ids(d.GetOwned()), IdsOf(g.b));
    EXPECT_EQ(Ids(g.b.GetOwned()), IdsOf(g.c));
}

TEST(Owner, ChangeToADescendantIsRefused) {
    Stairs g;
    g.a.SetOwner(g.c);
    g.a.SetOwner(g.b);
    EXPECT_EQ(g.a.GetOwner(), g.root);
    EXPECT_EQ(Ids(g.root.GetOwned()), IdsOf(g.a));
    EXPECT_EQ(g.c.GetOwned().GetCount(), 0);
    EXPECT_EQ(Ids(g.b.GetOwned()), IdsOf(g.c));
}

TEST(Owner, ChangeToTheCurrentOwnerMovesTheNodeToTheEnd) {
    Fork g;
    g.a.SetOwner(g.root);
    EXPECT_EQ(Ids(g.root.GetOwned()), IdsOf(g.b, g.c, g.a));
}

// Taking a node out looks it up, and that sorts what is left.
TEST(Owner, ChangeSortsTheOldOwnersSetAndUnsortsTheNewOnes) {
    Fork g;
    g.a.SetOwner(g.root);
    Node d = g.root.AddNode();
    ASSERT_EQ(Ids(g.root.GetOwned()), IdsOf(g.b, g.c, g.a, d));
    g.c.SetOwner(d);
    EXPECT_EQ(Ids(g.root.GetOwned()), IdsOf(g.a, g.b, d));
    EXPECT_TRUE(g.root.record()->get_owned()->IsSorted());
    EXPECT_FALSE(d.record()->get_owned()->IsSorted());
}

TEST(Owner, ChangeToNothingDoesNothing) {
    Arrow g;
    g.a.SetOwner(Node());
    EXPECT_EQ(g.a.GetOwner(), g.root);
    EXPECT_EQ(Ids(g.root.GetOwned()), IdsOf(g.a, g.b));
}

TEST(Owner, ChangeLeavesEdgesAlone) {
    Arrow g;
    g.b.SetOwner(g.a);
    EXPECT_EQ(Ids(g.a.GetEdgesOut()), IdsOf(g.edge));
    EXPECT_EQ(Ids(g.b.GetEdgesIn()), IdsOf(g.edge));
    EXPECT_EQ(Ids(g.a.GetChildren()), IdsOf(g.b));
}

TEST(Owner, NodeMayBecomeItsOwn) {
    Stairs g;
    g.b.SetOwner(g.b);
    EXPECT_EQ(g.b.GetOwner(), g.b);
    EXPECT_EQ(Ids(g.b.GetOwned()), IdsOf(g.c, g.b));
    EXPECT_EQ(g.a.GetOwned().GetCount(), 0);
    g.b.SetOwner(g.a);
    EXPECT_EQ(g.b.GetOwner(), g.a);
    EXPECT_EQ(Ids(g.b.GetOwned()), IdsOf(g.c));
}

TEST(Owner, NodeThatOwnsItselfIsNotGivenToItselfTwice) {
    Stairs g;
    g.b.SetOwner(g.b);
    g.b.SetOwner(g.b);
    EXPECT_EQ(Ids(g.b.GetOwned()), IdsOf(g.c, g.b));
    g.b.SetOwner(g.a);
}

TEST(Owner, NodeThatOwnsItselfRefusesItsContentsAndTakesOthers) {
    Stairs g;
    Node d = g.root.AddNode();
    g.b.SetOwner(g.b);
    g.b.SetOwner(g.c);
    EXPECT_EQ(g.b.GetOwner(), g.b);
    d.SetOwner(g.c);
    EXPECT_EQ(d.GetOwner(), g.c);
    g.b.SetOwner(g.a);
}

TEST(Owner, NodeThatOwnsItselfCanBeRemoved) {
    Stairs g;
    g.b.SetOwner(g.b);
    g.b.Remove();
    EXPECT_FALSE(g.b.GetOwner());
    EXPECT_EQ(g.b.GetOwned().GetCount(), 0);
    EXPECT_FALSE(g.c.GetOwner());
}

TEST(Owner, RemovedNodeIsNoOwner) {
    Arrow g;
    g.edge.Remove();
    g.b.Remove();
    g.a.SetOwner(g.b);
    EXPECT_EQ(g.a.GetOwner(), g.root);
    EXPECT_EQ(g.b.GetOwned().GetCount(), 0);
    EXPECT_FALSE(g.b.AddNode());
}

TEST(Owner, UnlinkLeavesTheOwnerItselfAlone) {
    Stairs g;
    auto* b = dynamic_cast<DefaultNodeImpl*>(g.b.record().get());
    ASSERT_NE(b, nullptr);
    b->unlink_owner();
    EXPECT_EQ(g.a.GetOwned().GetCount(), 0);
    EXPECT_EQ(g.b.GetOwner(), g.a);
    b->delete_node();
}

#ifdef NDEBUG
TEST(OwnerMisuse, BreakNodesOwnNothingAndRemovedNodesAreNotMoved) {
    Arrow g;
    g.edge.AddBreakNodesIn(g.root, 1);
    g.a.SetOwner(g.edge.GetBreakNodes().GetItem(0));
    EXPECT_EQ(g.a.GetOwner(), g.root);
    g.edge.Remove();
    g.b.Remove();
    g.b.SetOwner(g.a);
    EXPECT_FALSE(g.b.GetOwner());
    EXPECT_EQ(g.a.GetOwned().GetCount(), 0);
}
#else
TEST(OwnerMisuseDeathTest, BreakNodesAsOwnersAndMovesOfRemovedNodesAreCaught) {
    Arrow g;
    g.edge.AddBreakNodesIn(g.root, 1);
    EXPECT_DEATH(g.a.SetOwner(g.edge.GetBreakNodes().GetItem(0)), "nodes of a graph");
    g.edge.Remove();
    g.b.Remove();
    EXPECT_DEATH(g.b.SetOwner(g.a), "nodes of a graph");
}
#endif

}  // namespace
}  // namespace nodeline::test
