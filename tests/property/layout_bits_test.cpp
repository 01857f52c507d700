#include <gtest/gtest.h>
#include <nodeline/layout/inc_layout.h>
#include <support/measures.h>
#include <support/session.h>

#include <cstdint>
#include <cstring>

namespace nodeline::test {
namespace {

graph_ptr2<ILayout> NewLayout() { return IncLayout::Create(); }

// FNV-1a over the bits of numbers, the low byte first.
class Fnv {
public:
    void Add(double number) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &number, sizeof bits);
        for (int i = 0; i < 8; ++i) {
            hash_ = (hash_ ^ ((bits >> (8 * i)) & 0xffu)) * 0x100000001b3u;
        }
    }
    [[nodiscard]] std::uint64_t hash() const { return hash_; }

private:
    std::uint64_t hash_ = 0xcbf29ce484222325u;
};

// The same on every platform and compiler: additions are taken in one order, in doubles.
TEST(LayoutBits, ALongSessionHasOneHash) {
    SessionPlan plan;
    plan.nodes = 60;
    plan.edges = 90;
    Session session(20240229, plan, NewLayout);
    Fnv fnv;
    for (int i = 0; i < 150; ++i) {
        session.Recalculate();
        for (const Spot& spot : session.Look()) {
            fnv.Add(spot.x);
            fnv.Add(spot.y);
        }
        session.Change();
    }
    EXPECT_EQ(fnv.hash(), 15003755210152761949u);
}

// Counts the objects of its kind that are alive.
class CountedWidths : public TagWidths {
public:
    explicit CountedWidths(int* alive) : alive_(alive) { ++*alive_; }
    ~CountedWidths() override { --*alive_; }

private:
    int* alive_;
};

// What a layout remembers keeps places alive, never the graph behind them.
TEST(LayoutMemory, AGraphGoesWithItsHandlersThoughTheLayoutStays) {
    int alive = 0;
    const graph_ptr2<ILayout> layout = NewLayout();
    {
        Session session(5, SessionPlan(), [&] { return layout; });
        session.graph->SetDefaultEdgeHandler({new CountedWidths(&alive), true});
        for (int i = 0; i < 20; ++i) {
            session.Recalculate();
            session.Change();
        }
        EXPECT_EQ(alive, 1);
    }
    EXPECT_EQ(alive, 0);
}

// Nothing is left of the records of storage once the graph and its layout are gone.
TEST(LayoutMemory, NoRecordOutlivesTheGraphAndItsLayout) {
    graph_ptr<INodeImpl> node;
    graph_ptr<IEdgeImpl> edge;
    graph_ptr<IGraphVis> store;
    {
        Session session(6, SessionPlan(), NewLayout);
        for (int i = 0; i < 20; ++i) {
            session.Recalculate();
            session.Change();
        }
        session.root.UpdateLayout();
        session.Recalculate();
        node = session.nodes.front().record();
        edge = session.edges.front().record();
        store = session.root.store();
        EXPECT_GT(node->GetRefCount(), 1);
    }
    EXPECT_EQ(store->GetRefCount(), 1);
    store = graph_ptr<IGraphVis>();
    // The test's own handle is the last.
    EXPECT_EQ(node->GetRefCount(), 1);
    EXPECT_EQ(edge->GetRefCount(), 1);
}

}  // namespace
}  // namespace nodeline::test
