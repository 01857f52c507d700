// One stable layout on several graphs, and several layouts on one graph.
#include <gtest/gtest.h>
#include <nodeline/ops/graph_ops.h>
#include <support/picture_rules.h>
#include <support/session.h>
#include <support/stable_graphs.h>

#include <cstdint>
#include <vector>

namespace nodeline::test {
namespace {

graph_ptr2<ILayout> NewStable() { return StableLayout::Create(); }

TEST(StableGraphs, GraphsThatShareALayoutDoNotDisturbEachOther) {
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        std::vector<Picture> pictures;
        Session alone(seed, {}, NewStable);
        for (int i = 0; i < 8; ++i) {
            alone.Recalculate();
            pictures.push_back(alone.Look());
            alone.Change();
        }
        const graph_ptr2<ILayout> layout = NewStable();
        const auto same = [&] { return layout; };
        Session session(seed, {}, same);
        Session other(seed + 1000, {}, same);
        for (const Picture& picture : pictures) {
            other.Recalculate();
            session.Recalculate();
            ASSERT_EQ(Difference(session.Look(), picture), "") << seed;
            other.Change();
            session.Change();
        }
    }
}

TEST(StableGraphs, CallsOnOneGraphLeaveTheOtherAsItIs) {
    const graph_ptr2<ILayout> layout = NewStable();
    Row first;
    Ring second;
    first.graph->SetDefaultLayout(layout);
    second.graph->SetDefaultLayout(layout);
    first.Make();
    second.Make();
    const point<double> place = first.c.GetPosition();
    second.a.SetTag(SizeTag(900, 900));
    second.Update();
    second.Resize();
    second.Make();
    EXPECT_EQ(first.c.GetPosition(), place);
    first.Update();
    EXPECT_EQ(first.c.GetPosition(), place);
    first.Resize();
    EXPECT_EQ(first.c.GetPosition(), place);
    EXPECT_EQ(Faults(first.graph), "");
    EXPECT_EQ(Faults(second.graph), "");
}

// Dies with the last handle on the visual record of its node.
class Witness : public TagSizes {
public:
    explicit Witness(bool& is_gone) : is_gone_(is_gone) {}
    ~Witness() override { is_gone_ = true; }

private:
    bool& is_gone_;
};

TEST(StableGraphs, NothingIsKeptOfAGraphThatIsGone) {
    const graph_ptr2<ILayout> layout = NewStable();
    bool is_gone = false;
    {
        Ring g;
        g.graph->SetDefaultLayout(layout);
        g.b.SetHandler(graph_ptr2<INodeHandler>(new Witness(is_gone), true));
        g.Make();
        g.Update();
        g.Resize();
        EXPECT_FALSE(is_gone);
    }
    EXPECT_TRUE(is_gone);
    // And the next graph, whose nodes have ids of their own, is laid out from scratch.
    Row next;
    next.graph->SetDefaultLayout(layout);
    next.Update();
    EXPECT_EQ(next.a.GetPosition(), (point<double>{35.0, 12.0}));
    EXPECT_EQ(Faults(next.graph), "");
}

TEST(StableGraphs, NothingIsKeptOfANodeThatIsGoneAfterTheNextUpdate) {
    Stable<Ring> g;
    bool is_gone = false;
    g.b.SetHandler(graph_ptr2<INodeHandler>(new Witness(is_gone), true));
    g.Make();
    g.ab.Remove();
    g.bc.Remove();
    g.b.Remove();
    g.b = Node();
    g.Update();
    EXPECT_TRUE(is_gone);
    EXPECT_EQ(Faults(g.graph), "");
}

TEST(StableGraphs, AGraphOutlivesTheLayoutThatArrangedIt) {
    Stable<Row> g;
    g.Make();
    const point<double> place = g.d.GetPosition();
    g.layout = NewStable();
    g.graph->SetDefaultLayout(g.layout);
    // The new object knows nothing, so it begins from scratch.
    g.Update();
    EXPECT_EQ(g.d.GetPosition(), place);
    EXPECT_EQ(Faults(g.graph), "");
}

}  // namespace
}  // namespace nodeline::test
