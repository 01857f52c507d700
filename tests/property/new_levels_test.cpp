// An update finds a level for every new node, whatever the new nodes know.
#include <gtest/gtest.h>
#include <nodeline/ops/graph_ops.h>
#include <support/measures.h>
#include <support/random.h>
#include <support/watched_layout.h>

#include <cstdint>
#include <string>
#include <vector>

namespace nodeline::test {
namespace {

// A few nodes that are laid out, and many that come later.
class Growth {
public:
    explicit Growth(std::uint64_t seed) : random_(seed) {
        MeasureByTags(graph_);
        graph_->SetDefaultLayout(graph_ptr2<ILayout>(&layout_, false));
        add_nodes(random_.Below(8));
        add_edges(random_.Below(10));
        graph_->RecalculateLayout(nullptr);
    }

    // Without edges to what is there, too: rings, loops, rows that lead nowhere.
    void Grow() {
        const std::size_t old = nodes_.size();
        add_nodes(random_.Between(1, 40));
        add_edges(random_.Below(80));
        const std::vector<Node> added(nodes_.begin() + static_cast<std::ptrdiff_t>(old),
                                      nodes_.end());
        add_ring(added, random_.Between(1, 6));
        for (int i = random_.Below(4); i > 0; --i) {
            Node loop = random_.Of(added);
            loop.LinkTo(loop);
        }
        for (int i = random_.Below(6); i > 0; --i) Hide(random_.Of(nodes_));
        for (int i = random_.Below(3); i > 0; --i) Show(random_.Of(nodes_));
    }
    void Update() {
        graph_->GetRoot().UpdateLayout();
        graph_->RecalculateLayout(nullptr);
    }

    // Levels of real nodes begin at 1, and every node in view stands on one.
    void ExpectAllPlaced() {
        ASSERT_EQ(layout_.broken, std::vector<std::string>());
        const WatchedLayout::Placed& placed = layout_.placed[0];
        ASSERT_EQ(placed.levels.size(), nodes_.size());
        for (const Node& node : nodes_) {
            const int level = placed.levels.at(node.GetID());
            ASSERT_GE(level, 1) << node.GetID();
            ASSERT_LE(level, static_cast<int>(nodes_.size())) << node.GetID();
            const bool in_view = !IsFlagSet(node, NodeHidden);
            ASSERT_EQ(placed.nodes.count(node.GetID()), in_view ? 1u : 0u) << node.GetID();
        }
    }

private:
    void add_nodes(int count) {
        for (int i = 0; i < count; ++i) {
            nodes_.push_back(graph_->GetRoot().AddNode());
            nodes_.back().SetTag(SizeTag(100, 100));
        }
    }
    void add_edges(int count) {
        for (int i = 0; i < count && !nodes_.empty(); ++i) {
            Node from = random_.Of(nodes_);
            from.LinkTo(random_.Of(nodes_));
        }
    }
    void add_ring(const std::vector<Node>& nodes, int length) {
        const Node first = random_.Of(nodes);
        Node last = first;
        for (int i = 1; i < length; ++i) {
            const Node next = random_.Of(nodes);
            last.LinkTo(next);
            last = next;
        }
        last.LinkTo(first);
    }

    Random random_;
    WatchedLayout layout_;
    graph_ptr2<Graph> graph_{new Graph(), true};
    std::vector<Node> nodes_;
};

TEST(NewLevels, AreFoundForAnyNewNodesInOneUpdate) {
    for (std::uint64_t seed = 1; seed <= 3000; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Growth growth(seed);
        growth.Grow();
        growth.Update();
        growth.ExpectAllPlaced();
        if (HasFatalFailure()) return;
    }
}

TEST(NewLevels, AreFoundUpdateAfterUpdate) {
    for (std::uint64_t seed = 1; seed <= 100; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Growth growth(seed);
        for (int i = 0; i < 6; ++i) {
            growth.Grow();
            growth.Update();
            growth.ExpectAllPlaced();
            if (HasFatalFailure()) return;
        }
    }
}

// One old node, and a ring of new ones that a single edge joins to it.
TEST(NewLevels, AreFoundForALongRingBesideAnOldNode) {
    WatchedLayout layout;
    const graph_ptr2<Graph> graph(new Graph(), true);
    MeasureByTags(graph);
    graph->SetDefaultLayout(graph_ptr2<ILayout>(&layout, false));
    Node old = graph->GetRoot().AddNode();
    graph->RecalculateLayout(nullptr);
    std::vector<Node> ring;
    for (int i = 0; i < 2000; ++i) {
        ring.push_back(graph->GetRoot().AddNode());
        if (i > 0) ring.back().LinkTo(ring[ring.size() - 2]);
    }
    ring.front().LinkTo(ring.back());
    old.LinkTo(ring.front());
    old.LinkTo(old);
    graph->GetRoot().UpdateLayout();
    graph->RecalculateLayout(nullptr);
    EXPECT_EQ(layout.broken, std::vector<std::string>());
    EXPECT_EQ(layout.placed[0].nodes.size(), ring.size() + 1);
}

}  // namespace
}  // namespace nodeline::test
