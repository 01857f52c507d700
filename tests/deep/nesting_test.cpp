#include <gtest/gtest.h>
#include <nodeline/model/recalculate.h>
#include <nodeline/ops/graph_ops.h>
#include <support/ids.h>
#include <support/layout_log.h>
#include <support/named_graphs.h>

#include <string>
#include <vector>

namespace nodeline::test {
namespace {

constexpr int kDepth = 100000;

// Each node owns the next.
class Nesting : public ::testing::Test {
protected:
    Nesting() {
        Node node = g.root;
        nodes.reserve(kDepth);
        for (int i = 0; i < kDepth; ++i) {
            node = node.AddNode();
            nodes.push_back(node);
        }
    }

    [[nodiscard]] Node top() const { return nodes.front(); }
    [[nodiscard]] Node innermost() const { return nodes.back(); }

    Empty g;
    std::vector<Node> nodes;
};

TEST_F(Nesting, IsTakenApart) {
    std::vector<graph_ptr<INodeImpl>> records;
    for (const Node& node : nodes) records.push_back(node.record());
    nodes.clear();
    g.root = Node();
    g.graph.reset();
    for (const auto& record : records) {
        ASSERT_EQ(record->GetRefCount(), 1);
        ASSERT_FALSE(record->get_owner());
    }
}

TEST_F(Nesting, IsTakenApartWithoutHandlesOnWhatIsInside) {
    const Node outer = top();
    const Node inner = innermost();
    nodes.clear();
    g.graph.reset();
    EXPECT_FALSE(outer.GetOwner());
    EXPECT_FALSE(inner.GetOwner());
}

TEST_F(Nesting, IsRemovedFromItsTop) {
    Edge edge = innermost().LinkTo(top());
    top().Remove();
    EXPECT_EQ(g.root.GetOwned().GetCount(), 0);
    EXPECT_FALSE(innermost().GetOwner());
    EXPECT_FALSE(edge.From());
    for (const Node& node : nodes) ASSERT_EQ(node.GetOwned().GetCount(), 0);
}

TEST_F(Nesting, IsWalkedFromOutsideAndFromInside) {
    int visited = 0;
    ForEachNodeIn(
        g.root, [&](const Node& node) { visited += node == nodes[std::size_t(visited)] ? 1 : 0; },
        false, false);
    EXPECT_EQ(visited, kDepth);
    ForEachNodeIn(
        g.root,
        [&](const Node& node) { visited -= node == nodes[std::size_t(visited) - 1] ? 1 : 0; }, true,
        false);
    EXPECT_EQ(visited, 0);
}

TEST_F(Nesting, IsResizedAsAWhole) {
    g.root.ResizeAll();
    const auto list = g.root.store()->get_resize_list();
    ASSERT_EQ(list->GetCount(), kDepth + 1);
    EXPECT_EQ(list->GetItem(0)->get_id(), 0);
    EXPECT_EQ(list->GetItem(1)->get_id(), top().GetID());
    EXPECT_EQ(list->GetItem(kDepth)->get_id(), innermost().GetID());
}

TEST_F(Nesting, IsMarkedDrawn) {
    Edge edge = innermost().LinkTo(top());
    MarkDrawnIn(g.graph);
    for (const Node& node : nodes) ASSERT_TRUE(IsFlagSet(node, NodeDrawn));
    EXPECT_TRUE(IsFlagSet(edge, EdgeDrawn));
    Hide(nodes[kDepth / 2]);
    MarkDrawnIn(g.graph);
    EXPECT_TRUE(IsFlagSet(nodes[kDepth / 2 - 1], NodeDrawn));
    EXPECT_FALSE(IsFlagSet(innermost(), NodeDrawn));
    EXPECT_FALSE(IsFlagSet(edge, EdgeDrawn));
}

TEST_F(Nesting, IsFoldedAndUnfolded) {
    innermost().LinkTo(top());
    top().LinkTo(top());
    Fold(innermost(), FoldChildren);
    EXPECT_TRUE(IsFlagSet(top(), NodeHidden));
    Unfold(innermost(), FoldChildren);
    EXPECT_TRUE(IsFlagSet(top(), NodeNew));
}

TEST_F(Nesting, RunsTheLayoutOfEveryOwnerFromTheInside) {
    std::vector<std::string> lines;
    g.graph->SetDefaultLayout(graph_ptr2<ILayout>(new LayoutLog(lines), true));
    g.root.store()->clear_make_list();
    innermost().UpdateLayout();
    ASSERT_TRUE(g.graph->RecalculateLayout(nullptr));
    ASSERT_EQ(lines.size(), std::size_t{kDepth + 1});
    EXPECT_EQ(lines[0], Line("update", innermost()));
    EXPECT_EQ(lines[1], Line("resize", nodes[kDepth - 2]));
    EXPECT_EQ(lines[kDepth - 1], Line("resize", top()));
    EXPECT_EQ(lines[kDepth], "resize 0");
}

TEST_F(Nesting, IsClimbed) {
    EXPECT_TRUE(IsRoot(GetRoot(innermost())));
    EXPECT_TRUE(NodeByOwnershipComparator(top(), innermost()));
    EXPECT_FALSE(NodeByOwnershipComparator(innermost(), top()));
    Node other = g.root.AddNode();
    Edge edge = innermost().LinkTo(other);
    EXPECT_EQ(Pairs(GetChildrenEx(top())), (IdPairs{PairOf(other, edge)}));
    EXPECT_EQ(Pairs(GetParentsEx(other)), (IdPairs{PairOf(top(), edge)}));
    RequestMap map;
    int depth = 0;
    EXPECT_FALSE(check_and_insert(&map, innermost().record(), &depth, true));
    EXPECT_EQ(depth, kDepth);
}

TEST_F(Nesting, RefusesToGoIntoItself) {
    Node outer = top();
    outer.SetOwner(innermost());
    EXPECT_TRUE(IsRoot(outer.GetOwner()));
    Node other = g.root.AddNode();
    outer.SetOwner(other);
    EXPECT_EQ(outer.GetOwner(), other);
}

TEST_F(Nesting, IsCrossedByARoute) {
    Node other = g.root.AddNode();
    Edge edge = innermost().LinkTo(other);
    edge.AddBreakNodesIn(nodes[kDepth - 2], 1);
    edge.AddBreakNodesIn(top(), 1);
    edge.AddBreakNodesIn(g.root, 2);
    EXPECT_EQ(edge.GetBreakNodes().GetCount(), 4);
    EXPECT_EQ(GetRoot(edge.GetBreakNodes().GetItem(0)), g.root);
}

TEST_F(Nesting, IsHitAtItsInnermost) {
    double at = 0;
    for (Node node : nodes) {
        node.SetPosition(at, at);
        node.SetSize({2.0 * kDepth - 2 * at, 2.0 * kDepth - 2 * at});
        at += 0.5;
    }
    const double middle = kDepth;
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(Ids(g.graph->HitNodeTest(middle, middle, middle, middle)), IdsOf(innermost()));
    }
}

}  // namespace
}  // namespace nodeline::test
