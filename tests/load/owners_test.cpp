#include <load/loaded_graph.h>

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace nodeline {
namespace {

using Strings = std::vector<std::string>;

TEST(LoadOwners, GoByRisingIdWithinOneOwner) {
    const LoadedGraph loaded(
        "title\n[nodes]\n9 \"nine\" 0 4\n3 \"three\" 0 4\n4 \"four\" 0 0\n7 \"seven\" 0 4\n");
    ASSERT_TRUE(loaded.is_loaded);
    EXPECT_EQ(Captions(loaded.Find("four").GetOwned()), (Strings{"three", "seven", "nine"}));
}

TEST(LoadOwners, InACircleTheGreatestIdStaysUnderTheRoot) {
    const LoadedGraph loaded("title\n[nodes]\n1 \"one\" 0 2\n2 \"two\" 0 1\n");
    ASSERT_TRUE(loaded.is_loaded);
    EXPECT_EQ(Captions(loaded.Root().GetOwned()), (Strings{"two"}));
    EXPECT_EQ(Captions(loaded.Find("two").GetOwned()), (Strings{"one"}));
    EXPECT_EQ(loaded.error.line, 4);
    EXPECT_EQ(loaded.error.reason, "node 2 owns its owner, so it stands outside of all owners");
}

TEST(LoadOwners, ANodeThatOwnsItselfIsTakenOutWithItsContentsAndEdges) {
    const LoadedGraph loaded(
        "title\n[nodes]\n1 \"a\" 0 0\n2 \"self\" 0 2\n3 \"inside\" 0 2\n4 \"deeper\" 0 3\n"
        "[edges]\n1 2 \"\"\n4 1 \"\"\n3 4 \"\"\n1 1 \"\"\n2 2 \"\"\n");
    ASSERT_TRUE(loaded.is_loaded);
    EXPECT_EQ(Captions(loaded.Root().GetOwned()), (Strings{"a"}));
    EXPECT_EQ(loaded.Find("a").GetEdgesOut().GetCount(), 1);
    EXPECT_EQ(loaded.Find("a").GetEdgesIn().GetCount(), 1);
    EXPECT_EQ(Captions(loaded.Find("a").GetChildren()), (Strings{"a"}));
    EXPECT_EQ(loaded.error.line, 4);
    EXPECT_EQ(loaded.error.reason, "node 2 owns itself, so it is left out with all that it owns");
}

TEST(LoadOwners, AThreadThatOwnsItselfStillLeadsTheWayDown) {
    const LoadedGraph loaded(
        "title\n[nodes]\n1 \"Thread\" 0 1\n2 \"main\" 0 0\n3 \"f\" 0 0\n4 \"g\" 0 0\n"
        "[edges]\n1 2 \"\"\n2 3 \"\"\n3 4 \"\"\n");
    ASSERT_TRUE(loaded.is_loaded);
    EXPECT_EQ(loaded.Visible(), (Strings{"main", "f"}));
}

// The plain way: one `SetOwner` after the other, by rising id. No node may name itself.
class PlainOwners {
public:
    explicit PlainOwners(const std::vector<int>& owners) : graph_(new Graph, true) {
        std::map<int, Node> nodes;
        for (std::size_t i = 0; i < owners.size(); ++i) {
            const int id = static_cast<int>(i) + 1;
            nodes[id] = graph_->GetRoot().AddNode();
            nodes[id].SetCaption(std::to_string(id));
        }
        for (auto& [id, node] : nodes) {
            const int owner = owners[static_cast<std::size_t>(id) - 1];
            if (owner != 0) node.SetOwner(nodes[owner]);
        }
    }

    [[nodiscard]] Node Root() const { return graph_->GetRoot(); }

private:
    graph_ptr2<Graph> graph_;
};

std::string Tree(const Node& top) {
    std::string text;
    ForEachNodeIn(
        top,
        [&](const Node& node) {
            text += node.GetCaption() + " in " + node.GetOwner().GetCaption() + "\n";
        },
        false, false);
    return text;
}

TEST(LoadOwners, AreAsAfterOneSetOwnerPerNode) {
    std::mt19937 random(7);
    for (int round = 0; round < 400; ++round) {
        const int count = 1 + round % 12;
        std::uniform_int_distribution<int> pick(0, count);
        std::vector<int> owners;
        std::string text = "title\n[nodes]\n";
        for (int id = 1; id <= count; ++id) {
            int owner = pick(random);
            if (owner == id) owner = 0;
            owners.push_back(owner);
            text += std::to_string(id) + " \"" + std::to_string(id) + "\" 0 " +
                    std::to_string(owner) + "\n";
        }
        const LoadedGraph loaded(text);
        ASSERT_TRUE(loaded.is_loaded);
        ASSERT_EQ(Tree(loaded.Root()), Tree(PlainOwners(owners).Root())) << text;
    }
}

std::string Chain(int depth, bool outermost_first) {
    std::string text = "title\n[nodes]\n";
    for (int id = 1; id <= depth; ++id) {
        const int owner = outermost_first ? id - 1 : (id == depth ? 0 : id + 1);
        text += std::to_string(id) + " \"n\" 0 " + std::to_string(owner) + "\n";
    }
    return text;
}

int Depth(Node node) {
    int depth = 0;
    for (; node.GetOwned().GetCount() > 0; node = node.GetOwned().GetItem(0)) ++depth;
    return depth;
}

// With a walk up for each node, these would take minutes.
TEST(LoadOwners, NestDeeplyInLinearTime) {
    constexpr int kDepth = 200000;
    EXPECT_EQ(Depth(LoadedGraph(Chain(kDepth, true)).Root()), kDepth);
    EXPECT_EQ(Depth(LoadedGraph(Chain(kDepth, false)).Root()), kDepth);
}

// Every second node leaves the set of the root, from its middle.
TEST(LoadOwners, LeaveTheRootInLinearTime) {
    constexpr int kCount = 300000;
    std::string text = "title\n[nodes]\n1 \"owner\" 0 0\n";
    for (int id = 2; id <= kCount; ++id) {
        text += std::to_string(id) + (id % 2 == 0 ? " \"n\" 0 1\n" : " \"n\" 0 0\n");
    }
    const LoadedGraph loaded(text);
    ASSERT_TRUE(loaded.is_loaded);
    EXPECT_EQ(loaded.Root().GetOwned().GetCount(), kCount / 2);
    EXPECT_EQ(loaded.Find("owner").GetOwned().GetCount(), kCount / 2);
}

}  // namespace
}  // namespace nodeline
