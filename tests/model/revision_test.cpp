#include <gtest/gtest.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/ops/graph_ops.h>

#include <cstdint>
#include <functional>

namespace nodeline::test {
namespace {

class GraphRevision : public testing::Test {
protected:
    GraphRevision() {
        // The marks come before the first look at the graph, as in a viewer.
        MarkDrawnIn(graph);
        a.SetPosition(1.0, 2.0);
        b.SetPosition(3.0, 4.0);
    }
    [[nodiscard]] bool Rises(const std::function<void()>& change) {
        const std::uint64_t before = graph->GetRevision();
        change();
        return graph->GetRevision() > before;
    }

    graph_ptr2<Graph> graph{new Graph(), true};
    Node a = graph->GetRoot().AddNode();
    Node b = graph->GetRoot().AddNode();
    Edge edge = a.LinkTo(b);
};

TEST_F(GraphRevision, StandsStillWhileNothingChanges) {
    EXPECT_EQ(graph->GetRevision(), graph->GetRevision());
    EXPECT_FALSE(Rises([&] {
        MarkDrawnIn(graph);
        graph->HitNodeTest(0.0, 0.0, 5.0, 5.0);
        static_cast<void>(a.GetPosition());
        static_cast<void>(a.GetChildren());
        static_cast<void>(a.GetCaption());
    }));
}

TEST_F(GraphRevision, RisesWithWhatIsInTheGraph) {
    EXPECT_TRUE(Rises([&] { graph->GetRoot().AddNode(); }));
    EXPECT_TRUE(Rises([&] { b.SetOwner(a); }));
    EXPECT_TRUE(Rises([&] { b.LinkTo(a); }));
    EXPECT_TRUE(Rises([&] { edge.Remove(); }));
    EXPECT_TRUE(Rises([&] { Node(b).AddNode().Remove(); }));
}

TEST_F(GraphRevision, RisesWithCaptionsAndConditions) {
    EXPECT_TRUE(Rises([&] { a.SetCaption("a"); }));
    EXPECT_TRUE(Rises([&] { edge.SetCaption("edge"); }));
    for (const int flag : {NodeHidden, NodeSelected, NodeMarked, NodeNew}) {
        EXPECT_TRUE(Rises([&] { SetFlag(a, flag, true); })) << flag;
        EXPECT_FALSE(Rises([&] { SetFlag(a, flag, true); })) << flag;
        EXPECT_TRUE(Rises([&] { SetFlag(a, flag, false); })) << flag;
    }
    EXPECT_TRUE(Rises([&] { SetFlag(edge, EdgeMarked, true); }));
}

TEST_F(GraphRevision, DoesNotRiseWithWhatIsDrawnOrUnderThePointer) {
    EXPECT_FALSE(Rises([&] { SetFlag(a, NodeHovered, true); }));
    EXPECT_FALSE(Rises([&] { SetFlag(edge, EdgeHovered, true); }));
    EXPECT_FALSE(Rises([&] { SetFlag(a, NodeDrawn, false); }));
    EXPECT_FALSE(Rises([&] { SetFlag(edge, EdgeDrawn, false); }));
}

TEST_F(GraphRevision, RisesWithPositionsSizesAndRoutes) {
    EXPECT_TRUE(Rises([&] { a.SetPosition(5.0, 6.0); }));
    EXPECT_TRUE(Rises([&] { a.SetSize({7.0, 8.0}); }));
    EXPECT_TRUE(Rises([&] { edge.AddBreakNodesIn(graph->GetRoot(), 2); }));
    EXPECT_TRUE(Rises([&] { edge.GetBreakNodes().GetItem(0).SetPosition(1.0, 1.0); }));
    EXPECT_TRUE(Rises([&] { edge.RemoveBreakNodes(); }));
}

TEST_F(GraphRevision, RisesWithHandlers) {
    const graph_ptr2<INodeHandler> nodes(new SimpleNodeHandler, true);
    EXPECT_TRUE(Rises([&] { a.SetHandler(nodes); }));
    EXPECT_TRUE(Rises([&] { graph->SetDefaultNodeHandler(nodes); }));
    EXPECT_TRUE(Rises([&] {
        graph->SetDefaultEdgeHandler(graph_ptr2<IEdgeHandler>(new DummyEdgeHandler, true));
    }));
}

// A storage whose changes nobody counts.
class OwnRoot : public DefaultRootNodeImpl {};

TEST_F(GraphRevision, RisesWithEachCallOverAStorageOfAnApplication) {
    // A storage that is replaced takes nothing apart.
    edge.Remove();
    a.Remove();
    b.Remove();
    const graph_ptr<INodeImpl> root(new OwnRoot);
    EXPECT_TRUE(
        Rises([&] { graph->SetStorage(graph_ptr<IGraphStorage>(new DefaultStorage(root))); }));
    EXPECT_TRUE(Rises([] {}));
    graph->SetStorage({});
    EXPECT_TRUE(Rises([] {}));
}

}  // namespace
}  // namespace nodeline::test
