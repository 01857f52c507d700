#include <gtest/gtest.h>
#include <nodeline/handlers/handlers.h>

#include <cstdio>
#include <cstdlib>

namespace nodeline::test {
namespace {

TEST(DefaultHandlers, AreTheSameObjectsAtEveryCall) {
    EXPECT_EQ(GetDefaultNodeHandler().get(), GetDefaultNodeHandler().get());
    EXPECT_EQ(GetDefaultEdgeHandler().get(), GetDefaultEdgeHandler().get());
}

TEST(DefaultHandlers, AreTheDummyHandlers) {
    EXPECT_NE(dynamic_cast<DummyNodeHandler*>(GetDefaultNodeHandler().get()), nullptr);
    EXPECT_NE(dynamic_cast<DummyEdgeHandler*>(GetDefaultEdgeHandler().get()), nullptr);
}

TEST(DefaultHandlers, AreSharedByAllHandles) {
    const graph_ptr2<INodeHandler> first = GetDefaultNodeHandler();
    const int handles = first.GetRefCount();
    const graph_ptr2<INodeHandler> second = GetDefaultNodeHandler();
    EXPECT_TRUE(first.owns());
    EXPECT_EQ(second.GetRefCount(), handles + 1);
}

TEST(DefaultHandlers, ServeNodesAndEdgesThatHaveNoneOfTheirOwn) {
    const graph_ptr2<Graph> graph(new Graph(), true);
    Node node = graph->GetRoot().AddNode();
    const Edge edge = node.LinkTo(node);
    EXPECT_EQ(graph->GetRoot().GetHandler().get(), GetDefaultNodeHandler().get());
    EXPECT_EQ(node.GetHandler().get(), GetDefaultNodeHandler().get());
    EXPECT_EQ(edge.GetHandler().get(), GetDefaultEdgeHandler().get());
    const graph_ptr2<INodeHandler> own(new SimpleNodeHandler, true);
    node.SetHandler(own);
    EXPECT_EQ(node.GetHandler().get(), own.get());
}

// A static object that is made before the first call, and so dies after the default handlers do.
class Survivor {
public:
    Survivor() = default;
    Survivor(const Survivor&) = delete;
    Survivor& operator=(const Survivor&) = delete;
    ~Survivor() {
        const bool kept = edges && edges->GetWidth(Edge()) == 1.0;
        const bool made = GetDefaultEdgeHandler()->GetWidth(Edge()) == 1.0 &&
                          GetDefaultNodeHandler()->GetSize(Node()).cx == 10.0;
        std::fputs(kept && made ? "all is well\n" : "something is wrong\n", stderr);
    }

    graph_ptr2<IEdgeHandler> edges;
};

TEST(DefaultHandlersDeathTest, ServeStaticObjectsThatDieAfterThem) {
    // A process of its own, in which nobody has asked for a default handler yet.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            static Survivor survivor;
            static_cast<void>(GetDefaultNodeHandler());
            survivor.edges = GetDefaultEdgeHandler();
            std::exit(0);
        },
        testing::ExitedWithCode(0), "all is well");
}

TEST(DefaultHandlersDeathTest, ServeAStaticGraphThatDiesAfterThem) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            static graph_ptr2<Graph> graph;
            graph = graph_ptr2<Graph>(new Graph(), true);
            Node node = graph->GetRoot().AddNode();
            const Edge edge = node.LinkTo(node);
            const bool served = node.GetHandler() && edge.GetHandler();
            std::exit(served ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace nodeline::test
