#include <gtest/gtest.h>
#include <support/layout_graphs.h>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace nodeline::test {
namespace {

// Boxes of 40 by 20: a level and its gap take 80.
constexpr double kPitch = 40.0 + 2 * 5.0 + 30.0;

double LevelX(int level) { return 30.0 + 5.0 + (level - 1) * kPitch; }

TEST(DeepLayout, AChainOfAMillionNodes) {
    Measured g;
    const int count = 1000000;
    const Node first = g.AddBox();
    Node last = first;
    for (int i = 1; i < count; ++i) {
        const Node next = g.AddBox();
        last.LinkTo(next);
        last = next;
    }
    g.Make();
    EXPECT_EQ(first.GetPosition(), (point<double>{LevelX(1), 12.0}));
    EXPECT_EQ(last.GetPosition(), (point<double>{LevelX(count), 12.0}));
    EXPECT_EQ(g.root.GetSize().cx, 30.0 + count * kPitch);
    EXPECT_EQ(g.root.GetSize().cy, 44.0);
}

// There are 2 to the power of 10,000 paths from end to end.
TEST(DeepLayout, ALadderOfTenThousandDiamonds) {
    Measured g;
    const int count = 10000;
    Node end = g.AddBox();
    std::vector<Node> tops;
    for (int i = 0; i < count; ++i) {
        Node up = g.AddBox();
        Node down = g.AddBox();
        end.LinkTo(up);
        end.LinkTo(down);
        end = g.AddBox();
        up.LinkTo(end);
        down.LinkTo(end);
        tops.push_back(up);
    }
    g.Make();
    EXPECT_EQ(end.GetPosition().x, LevelX(2 * count + 1));
    for (const Node& up : tops) ASSERT_EQ(up.GetPosition().y, 12.0);
    EXPECT_EQ(tops.back().GetPosition().x, LevelX(2 * count));
    EXPECT_EQ(end.GetPosition().y, 28.0);
    EXPECT_EQ(g.root.GetSize().cy, 12.0 + 20.0 + 12.0 + 20.0 + 12.0);
}

TEST(DeepLayout, AStarOfAHundredThousandLeaves) {
    Measured g;
    const int count = 100000;
    Node hub = g.AddBox();
    std::vector<Node> leaves;
    for (int i = 0; i < count; ++i) {
        leaves.push_back(g.AddBox());
        hub.LinkTo(leaves.back());
    }
    g.Make();
    EXPECT_EQ(hub.GetPosition().x, LevelX(1));
    double y = leaves.front().GetPosition().y;
    EXPECT_EQ(y, 12.0);
    for (std::size_t i = 1; i < leaves.size(); ++i) {
        ASSERT_EQ(leaves[i].GetPosition().x, LevelX(2));
        ASSERT_EQ(leaves[i].GetPosition().y, y + 32.0);
        y += 32.0;
    }
    EXPECT_EQ(g.root.GetSize().cx, 30.0 + 2 * kPitch);
    EXPECT_EQ(g.root.GetSize().cy, y + 32.0);
}

// Each owner adds a band's edges and two gaps across, and two margins down.
void ExpectNested(bool with_resize, int depth) {
    Measured g;
    Node owner = g.root;
    std::vector<Node> boxes;
    for (int i = 0; i < depth; ++i) {
        owner = g.AddBox(owner, 40, 20);
        boxes.push_back(owner);
    }
    g.Make();
    if (with_resize) {
        g.root.ResizeSelf();
        g.graph->RecalculateLayout(nullptr);
    }
    EXPECT_EQ(g.root.GetSize().cx, 40.0 + depth * 70.0);
    EXPECT_EQ(g.root.GetSize().cy, 20.0 + depth * 24.0);
    for (int i = 0; i < depth; ++i) {
        const Node& box = boxes[static_cast<std::size_t>(i)];
        ASSERT_EQ(box.GetPosition(), (point<double>{35.0 * (i + 1), 12.0 * (i + 1)})) << i;
    }
}

TEST(DeepLayout, OwnersNestedTenThousandDeep) { ExpectNested(false, 10000); }

TEST(DeepLayout, AResizeOfOwnersNestedThreeThousandDeep) { ExpectNested(true, 3000); }

// Every node leads to the next ones, and the last to the first: nothing is a source or a sink.
TEST(DeepLayout, OneStronglyConnectedComponentOfTwentyThousand) {
    Measured g;
    const int count = 20000;
    std::vector<Node> nodes;
    for (int i = 0; i < count; ++i) nodes.push_back(g.AddBox());
    const auto at = [&](int i) -> Node& { return nodes[static_cast<std::size_t>(i % count)]; };
    std::vector<Edge> forward;
    for (int i = 0; i < count; ++i) {
        forward.push_back(at(i).LinkTo(at(i + 1)));
        if (i % 3 == 0 && i + 2 < count) forward.push_back(at(i).LinkTo(at(i + 2)));
    }
    std::vector<Edge> back;
    for (int i = 7; i < count; i += 11) back.push_back(at(i).LinkTo(at(i - 7)));
    g.Make();
    int reversed = 0;
    const auto count_reversed = [&](const std::vector<Edge>& edges) {
        for (const Edge& e : edges) {
            const double from = e.From().GetPosition().x;
            const double to = e.To().GetPosition().x;
            ASSERT_NE(from, to);
            if (from > to) ++reversed;
        }
    };
    count_reversed(forward);
    count_reversed(back);
    EXPECT_GT(reversed, 0);
    EXPECT_LT(reversed, count / 5);
    double right = 0.0;
    for (const Node& n : nodes) right = std::max(right, n.GetPosition().x + 40.0);
    EXPECT_EQ(g.root.GetSize().cx, right + 5.0 + 30.0);
}

}  // namespace
}  // namespace nodeline::test
