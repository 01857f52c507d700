// What a long session leaves on the heap. The program's allocations are counted
// here.
#include <gtest/gtest.h>
#include <malloc.h>
#include <nodeline/layout/inc_layout.h>
#include <nodeline/ops/graph_ops.h>
#include <support/measures.h>
#include <support/random.h>

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <vector>

namespace {

std::atomic<long> live_bytes{0};

}  // namespace

// Inlined, the two sides of a pair look mismatched to the compiler.
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    void* const block = std::malloc(size > 0 ? size : 1);
    if (block != nullptr) live_bytes += static_cast<long>(malloc_usable_size(block));
    return block;
}

[[gnu::noinline]] void* operator new(std::size_t size) {
    void* const block = ::operator new(size, std::nothrow);
    if (block == nullptr) throw std::bad_alloc();
    return block;
}

[[gnu::noinline]] void operator delete(void* block) noexcept {
    if (block != nullptr) live_bytes -= static_cast<long>(malloc_usable_size(block));
    std::free(block);
}

[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept {
    ::operator delete(block);
}

namespace nodeline::test {
namespace {

// Boxes of nodes, always as many, with as many edges between them.
class Town {
public:
    Town(std::uint64_t seed, bool replaces) : random_(seed), replaces_(replaces) {
        MeasureByTags(graph_);
        graph_->SetDefaultLayout(IncLayout::Create());
        for (int i = 0; i < 6; ++i) boxes_.push_back(root_.AddNode());
        while (nodes_.size() < kNodes) add_node();
        while (edges_.size() < kEdges) add_edge();
        graph_->RecalculateLayout(nullptr);
    }

    void Change() {
        Node node = random_.Of(nodes_);
        const auto direction = random_.OneIn(2) ? FoldParents : FoldChildren;
        switch (random_.Below(replaces_ ? 8 : 6)) {
            case 0:
                Fold(node, direction);
                break;
            case 1:
            case 2:
                Unfold(node, direction);
                break;
            case 3:
                random_.OneIn(2) ? Hide(node) : Show(node);
                node.GetOwner().UpdateLayout();
                break;
            case 4:
                node.SetTag(random_size());
                node.ResizeAll();
                break;
            case 5:
                root_.UpdateLayout();
                break;
            case 6:
                replace_node();
                break;
            default:
                remove_edge(random_.Below(static_cast<int>(kEdges)));
                add_edge();
                root_.UpdateLayout();
        }
        graph_->RecalculateLayout(nullptr);
    }

    void ShowAll() {
        for (const Node& node : nodes_) Show(node);
        root_.UpdateLayout();
        graph_->RecalculateLayout(nullptr);
    }

private:
    static constexpr std::size_t kNodes = 60;
    static constexpr std::size_t kEdges = 80;

    // Drawn one after the other: arguments are not evaluated in any order.
    int random_size() {
        const int width = random_.Between(100, 900);
        const int height = random_.Between(100, 400);
        return SizeTag(width, height);
    }
    void add_node() {
        Node owner = random_.Of(boxes_);
        nodes_.push_back(owner.AddNode());
        nodes_.back().SetTag(random_size());
    }
    void add_edge() {
        const std::vector<Node>& ends = random_.OneIn(4) ? boxes_ : nodes_;
        Node from = random_.Of(ends);
        edges_.push_back(from.LinkTo(random_.Of(ends)));
    }
    void remove_edge(int index) {
        edges_[static_cast<std::size_t>(index)].Remove();
        edges_.erase(edges_.begin() + index);
    }
    void replace_node() {
        const int index = random_.Below(static_cast<int>(kNodes));
        Node node = nodes_[static_cast<std::size_t>(index)];
        for (int i = static_cast<int>(edges_.size()) - 1; i >= 0; --i) {
            const Edge& edge = edges_[static_cast<std::size_t>(i)];
            if (edge.From() == node || edge.To() == node) remove_edge(i);
        }
        node.Remove();
        nodes_.erase(nodes_.begin() + index);
        add_node();
        while (edges_.size() < kEdges) add_edge();
        root_.UpdateLayout();
    }

    Random random_;
    bool replaces_;
    graph_ptr2<Graph> graph_{new Graph(), true};
    Node root_ = graph_->GetRoot();
    std::vector<Node> boxes_;
    std::vector<Node> nodes_;
    std::vector<Edge> edges_;
};

void LiveOn(std::vector<Town>& towns, int changes) {
    for (Town& town : towns) {
        for (int i = 0; i < changes; ++i) town.Change();
    }
}

// With everything in view. How long routes are depends on where the nodes have
// come to stand; over several towns and some time that evens out.
long AverageOver200(std::vector<Town>& towns) {
    long sum = 0;
    for (int i = 0; i < 10; ++i) {
        LiveOn(towns, 20);
        for (Town& town : towns) town.ShowAll();
        sum += live_bytes;
    }
    return sum / 10;
}

void ExpectAsMuchAfter10000AsAfter1000(bool replaces) {
    std::vector<Town> towns;
    const long before = live_bytes;
    for (const std::uint64_t seed : {1u, 2u}) towns.emplace_back(seed, replaces);
    // A layout from scratch is more compact than what grows out of it.
    LiveOn(towns, 2000 + 900);
    const long early = AverageOver200(towns) - before;
    LiveOn(towns, 8800);
    const long late = AverageOver200(towns) - before;
    EXPECT_GT(early, 50000);
    EXPECT_LE(late, early + early / 10);
    EXPECT_GE(late, early - early / 10);
}

TEST(LiveMemory, DoesNotGrowWhileASessionFoldsAndResizes) {
    ExpectAsMuchAfter10000AsAfter1000(false);
}

TEST(LiveMemory, DoesNotGrowWhileASessionReplacesItsNodesAndEdges) {
    ExpectAsMuchAfter10000AsAfter1000(true);
}

}  // namespace
}  // namespace nodeline::test
