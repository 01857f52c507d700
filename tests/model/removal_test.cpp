#include <gtest/gtest.h>
#include <nodeline/model/graph.h>
#include <nodeline/ops/graph_ops.h>
#include <support/ids.h>
#include <support/named_graphs.h>
#include <support/random_graph.h>

#include <vector>

namespace nodeline::test {
namespace {

DefaultNodeImpl* record_of(const Node& node) {
    return dynamic_cast<DefaultNodeImpl*>(node.record().get());
}

TEST(EdgeRemoval, TakesTheEdgeOutOfBothEndsAndLeavesTheOthers) {
    Fork g;
    g.to_b.Remove();
    EXPECT_EQ(Ids(g.a.GetEdgesOut()), IdsOf(g.to_c));
    EXPECT_EQ(g.b.GetEdgesIn().GetCount(), 0);
    EXPECT_EQ(Ids(g.c.GetEdgesIn()), IdsOf(g.to_c));
    EXPECT_FALSE(g.to_b.From());
    EXPECT_FALSE(g.to_b.To());
}

TEST(EdgeRemoval, OfASelfLoopEmptiesBothSets) {
    Arrow g;
    Edge loop = g.a.LinkTo(g.a);
    loop.Remove();
    EXPECT_EQ(Ids(g.a.GetEdgesOut()), IdsOf(g.edge));
    EXPECT_EQ(g.a.GetEdgesIn().GetCount(), 0);
}

TEST(EdgeRemoval, OfOneOfTwoParallelEdgesKeepsTheNeighbour) {
    Arrow g;
    Edge second = g.a.LinkTo(g.b);
    g.edge.Remove();
    EXPECT_EQ(Ids(g.a.GetEdgesOut()), IdsOf(second));
    EXPECT_EQ(Ids(g.a.GetChildren()), IdsOf(g.b));
    EXPECT_EQ(Ids(g.b.GetParents()), IdsOf(g.a));
}

TEST(EdgeRemoval, ASecondTimeDoesNothing) {
    Fork g;
    g.to_b.Remove();
    g.to_b.Remove();
    EXPECT_EQ(Ids(g.a.GetEdgesOut()), IdsOf(g.to_c));
}

TEST(NodeRemoval, TakesTheNodeOutOfItsOwner) {
    Stairs g;
    g.b.Remove();
    EXPECT_EQ(g.a.GetOwned().GetCount(), 0);
    EXPECT_FALSE(g.b.GetOwner());
    EXPECT_TRUE(g.b.IsDummy());
}

TEST(NodeRemoval, TakesTheContentsApartToo) {
    Stairs g;
    g.a.Remove();
    for (const Node& node : {g.a, g.b, g.c}) {
        EXPECT_FALSE(node.GetOwner());
        EXPECT_EQ(node.GetOwned().GetCount(), 0);
    }
    EXPECT_EQ(g.root.GetOwned().GetCount(), 0);
}

TEST(NodeRemoval, RemovesTheEdgesThatArrive) {
    Arrow g;
    g.b.Remove();
    EXPECT_EQ(g.a.GetEdgesOut().GetCount(), 0);
    EXPECT_EQ(g.a.GetChildren().GetCount(), 0);
    EXPECT_EQ(g.b.GetEdgesIn().GetCount(), 0);
    EXPECT_FALSE(g.edge.From());
    EXPECT_FALSE(g.edge.To());
}

TEST(NodeRemoval, EmptiesTheNeighboursOfTheSourceAnew) {
    Arrow g;
    Edge loop = g.a.LinkTo(g.a);
    ASSERT_EQ(Ids(g.a.GetChildren()), IdsOf(g.a, g.b));
    loop.Remove();
    g.b.Remove();
    EXPECT_EQ(g.a.GetChildren().GetCount(), 0);
}

// Edges that leave are only dropped: they stay with their target, and start at a node that is gone.
TEST(NodeRemoval, LeavesItsOutgoingEdgesWithTheirTargets) {
    Arrow g;
    g.a.Remove();
    EXPECT_EQ(g.a.GetEdgesOut().GetCount(), 0);
    EXPECT_EQ(Ids(g.b.GetEdgesIn()), IdsOf(g.edge));
    EXPECT_EQ(g.edge.From(), g.a);
    EXPECT_EQ(g.edge.To(), g.b);
    EXPECT_EQ(Ids(g.b.GetParents()), IdsOf(g.a));
    g.b.Remove();
    EXPECT_FALSE(g.edge.From());
}

TEST(NodeRemoval, AfterItsOutgoingEdgesLeavesNoTrace) {
    Fork g;
    g.to_b.Remove();
    g.to_c.Remove();
    g.a.Remove();
    EXPECT_EQ(g.b.GetEdgesIn().GetCount(), 0);
    EXPECT_EQ(g.c.GetEdgesIn().GetCount(), 0);
    EXPECT_EQ(Ids(g.root.GetOwned()), IdsOf(g.b, g.c));
}

// An edge that arrives is erased from its source twice, and the second time takes the edge that
// stands next.
TEST(NodeRemoval, TakesTheNextEdgeOutOfTheSourceAsWell) {
    Fork g;
    g.b.Remove();
    EXPECT_EQ(g.a.GetEdgesOut().GetCount(), 0);
    EXPECT_EQ(Ids(g.c.GetEdgesIn()), IdsOf(g.to_c));
    EXPECT_EQ(g.to_c.From(), g.a);
    EXPECT_EQ(g.to_c.To(), g.c);
}

TEST(NodeRemoval, TakesTheLastEdgeOutOfTheSourceWhereNoneStandsNext) {
    Fork g;
    g.c.Remove();
    EXPECT_EQ(g.a.GetEdgesOut().GetCount(), 0);
    EXPECT_EQ(Ids(g.b.GetEdgesIn()), IdsOf(g.to_b));
}

TEST(NodeRemoval, TakesOnlyOneFurtherEdgeOutOfTheSource) {
    Fork g;
    Node d = g.root.AddNode();
    const Edge to_d = g.a.LinkTo(d);
    g.b.Remove();
    EXPECT_EQ(Ids(g.a.GetEdgesOut()), IdsOf(to_d));
    EXPECT_EQ(Ids(g.a.GetChildren()), IdsOf(d));
    EXPECT_EQ(Ids(g.c.GetEdgesIn()), IdsOf(g.to_c));
}

// The same on the other side: of two edges that arrive only the first is removed.
TEST(NodeRemoval, LeavesEverySecondArrivingEdgeWithItsSource) {
    Empty g;
    Node a = g.root.AddNode();
    Node b = g.root.AddNode();
    Node c = g.root.AddNode();
    Node target = g.root.AddNode();
    const Edge from_a = a.LinkTo(target);
    const Edge from_b = b.LinkTo(target);
    const Edge from_c = c.LinkTo(target);
    target.Remove();
    EXPECT_FALSE(from_a.From());
    EXPECT_FALSE(from_c.From());
    EXPECT_EQ(a.GetEdgesOut().GetCount(), 0);
    EXPECT_EQ(c.GetEdgesOut().GetCount(), 0);
    EXPECT_EQ(Ids(b.GetEdgesOut()), IdsOf(from_b));
    EXPECT_EQ(from_b.To(), target);
    EXPECT_EQ(target.GetEdgesIn().GetCount(), 0);
}

TEST(NodeRemoval, OfASelfLoopEndsTheEdge) {
    Empty g;
    Node a = g.root.AddNode();
    const Edge loop = a.LinkTo(a);
    a.Remove();
    EXPECT_EQ(a.GetEdgesIn().GetCount(), 0);
    EXPECT_EQ(a.GetEdgesOut().GetCount(), 0);
    EXPECT_FALSE(loop.From());
}

TEST(NodeRemoval, HandlesOnTheNodeStayValidToHold) {
    Stairs g;
    g.c.SetCaption("kept");
    const Node copy = g.c;
    g.a.Remove();
    EXPECT_EQ(copy.GetCaption(), "kept");
    EXPECT_EQ(copy.GetParents().GetCount(), 0);
    EXPECT_EQ(copy.GetChildren().GetCount(), 0);
}

TEST(RootRemoval, EmptiesTheGraphAndKeepsTheRoot) {
    Courts g;
    g.root.Remove();
    EXPECT_EQ(g.root.GetOwned().GetCount(), 0);
    for (const Node& node : {g.a, g.b, g.c, g.d, g.x, g.z}) {
        EXPECT_FALSE(node.GetOwner());
        EXPECT_EQ(node.GetOwned().GetCount(), 0);
        EXPECT_EQ(node.GetEdgesIn().GetCount(), 0);
        EXPECT_EQ(node.GetEdgesOut().GetCount(), 0);
        EXPECT_EQ(node.GetParents().GetCount(), 0);
        EXPECT_EQ(node.GetChildren().GetCount(), 0);
    }
    EXPECT_FALSE(g.x_to_b.From());
    EXPECT_FALSE(g.x_to_b.To());
    const Node fresh = g.root.AddNode();
    EXPECT_EQ(Ids(g.root.GetOwned()), IdsOf(fresh));
}

TEST(StorageOperations, DeleteNodeKeepsTheNodeInItsOwnersSet) {
    Stairs g;
    _delete_node(g.b.record());
    EXPECT_EQ(Ids(g.a.GetOwned()), IdsOf(g.b));
    EXPECT_FALSE(g.b.GetOwner());
    EXPECT_FALSE(g.c.GetOwner());
}

TEST(StorageOperations, DelFromWorksOnTheEdgesOwnSource) {
    Fork g;
    ASSERT_EQ(Ids(g.a.GetChildren()), IdsOf(g.b, g.c));
    _del_from(record_of(g.c), g.to_b.record());
    // Erased twice from the source, so the other edge goes as well.
    EXPECT_EQ(g.a.GetEdgesOut().GetCount(), 0);
    EXPECT_EQ(g.a.GetChildren().GetCount(), 0);
    EXPECT_EQ(g.b.GetEdgesIn().GetCount(), 0);
    EXPECT_EQ(Ids(g.c.GetEdgesIn()), IdsOf(g.to_c));
    EXPECT_FALSE(g.to_b.From());
}

TEST(StorageOperations, DelToTakesTheEdgeOutOfItsTargetAlone) {
    Arrow g;
    ASSERT_EQ(Ids(g.b.GetParents()), IdsOf(g.a));
    _del_to(record_of(g.a), g.edge.record());
    EXPECT_EQ(g.b.GetEdgesIn().GetCount(), 0);
    EXPECT_EQ(g.b.GetParents().GetCount(), 0);
    EXPECT_EQ(Ids(g.a.GetEdgesOut()), IdsOf(g.edge));
    EXPECT_EQ(g.edge.From(), g.a);
}

TEST(StorageOperations, RemoveEdgeTakesItOutOfBothEndsAndKeepsItsEnds) {
    Fork g;
    record_of(g.a)->remove_edge(g.to_b.record());
    EXPECT_EQ(Ids(g.a.GetEdgesOut()), IdsOf(g.to_c));
    EXPECT_EQ(Ids(g.a.GetChildren()), IdsOf(g.c));
    EXPECT_EQ(g.b.GetEdgesIn().GetCount(), 0);
    EXPECT_EQ(g.to_b.From(), g.a);
}

// All records of a graph, held without its store.
struct Records {
    explicit Records(const Graph& graph) {
        ForEachNodeIn(
            graph.GetRoot(),
            [this](const Node& node) {
                nodes.push_back(node.record());
                for (const Edge& edge : node.GetEdgesOut()) edges.push_back(edge.record());
            },
            false, false);
    }

    std::vector<graph_ptr<INodeImpl>> nodes;
    std::vector<graph_ptr<IEdgeImpl>> edges;
};

TEST(TearDown, LeavesEveryRecordToItsHandlesAlone) {
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        std::vector<graph_ptr<INodeImpl>> nodes;
        std::vector<graph_ptr<IEdgeImpl>> edges;
        graph_ptr<IGraphVis> store;
        {
            RandomGraph g(seed);
            Random random(seed);
            g.Place(random);
            const Records records(*g.graph);
            nodes = records.nodes;
            edges = records.edges;
            store = g.root.store();
            g.graph->HitNodeTest(0, 0, 1, 1);
            g.graph->HitEdgeTest(0, 0, 1, 1);
        }
        ASSERT_GT(nodes.size(), 10u);
        ASSERT_GT(edges.size(), 10u);
        EXPECT_EQ(store->GetRefCount(), 1);
        store = graph_ptr<IGraphVis>();
        for (const auto& edge : edges) {
            EXPECT_EQ(edge->GetRefCount(), 1);
            EXPECT_FALSE(edge->from());
            EXPECT_FALSE(edge->to());
        }
        for (const auto& node : nodes) {
            EXPECT_EQ(node->GetRefCount(), 1);
            EXPECT_FALSE(node->get_owner());
            EXPECT_EQ(node->get_owned()->GetCount(), 0);
            EXPECT_EQ(node->get_edges_in()->GetCount(), 0);
            EXPECT_EQ(node->get_edges_out()->GetCount(), 0);
        }
    }
}

TEST(TearDown, FreesWhatWasRemovedBefore) {
    std::vector<graph_ptr<INodeImpl>> nodes;
    std::vector<graph_ptr<IEdgeImpl>> edges;
    {
        RandomGraph g(3, {60, 120, 0, 0, 4});
        const Records records(*g.graph);
        nodes = records.nodes;
        edges = records.edges;
        Random random(3);
        for (int i = 0; i < 25; ++i) {
            Node node = random.Of(g.nodes);
            if (!node.IsDummy()) node.Remove();
        }
    }
    for (const auto& edge : edges) EXPECT_EQ(edge->GetRefCount(), 1);
    // An edge that went astray with a removed node still knows its ends.
    edges.clear();
    for (const auto& node : nodes) EXPECT_EQ(node->GetRefCount(), 1);
}

TEST(TearDown, HandlesThatRemainMayBeCopiedAndDestroyed) {
    Node node;
    Edge edge;
    {
        Courts g;
        node = g.x;
        edge = g.b_to_z;
        node.SetPosition(3, 4);
    }
    const Node copy = node;
    EXPECT_FALSE(copy.GetOwner());
    EXPECT_EQ(copy.GetOwned().GetCount(), 0);
    EXPECT_EQ(copy.GetPosition(), (point<double>{3, 4}));
    EXPECT_FALSE(edge.From());
    EXPECT_EQ(edge.GetBreakNodes().GetCount(), 0);
}

#ifdef NDEBUG
TEST(RemovalMisuse, SecondRemovalOfANodeDoesNothing) {
    Fork g;
    g.b.Remove();
    g.b.Remove();
    EXPECT_EQ(Ids(g.root.GetOwned()), IdsOf(g.a, g.c));
}
#else
TEST(RemovalMisuseDeathTest, SecondRemovalOfANodeIsCaught) {
    Fork g;
    g.b.Remove();
    EXPECT_DEATH(g.b.Remove(), "a node is removed once");
}
#endif

}  // namespace
}  // namespace nodeline::test
