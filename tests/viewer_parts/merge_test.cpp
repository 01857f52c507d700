#include <apps/viewer/merge.h>
#include <gtest/gtest.h>
#include <nodeline/layout/inc_layout.h>
#include <support/random.h>
#include <viewer_parts/graph_text.h>

#include <array>
#include <set>
#include <string>
#include <vector>

namespace nodeline::app {
namespace {

using namespace test;

const char* const kText = R"(a text
[nodes]
1 "alpha" 0 0
2 "beta" 0 0
3 "gamma" 0 0
4 "box" 0 0
5 "inner" 0 4
6 "other" 0 4
[edges]
1 2 "first"
2 3 "second"
3 5 "into"
5 6 "within"
4 1 "from the box"
)";

// The text with one part of it put in the place of another.
std::string With(const std::string& old, const std::string& made) {
    std::string text = kText;
    const std::size_t at = text.find(old);
    EXPECT_NE(at, std::string::npos) << old;
    return text.replace(at, old.size(), made);
}

class MergeTest : public testing::Test {
protected:
    // Merges a text into the shown graph, which holds `kText`, and checks that it holds it then.
    MergeResult MergeText(const std::string& text) {
        const graph_ptr2<Graph> fresh = Read(text);
        const MergeResult result = Merge(shown, fresh);
        EXPECT_EQ(Contents(shown), Contents(fresh));
        EXPECT_TRUE(Merge(shown, Read(text)).IsEmpty()) << "a second time";
        EXPECT_EQ(Contents(shown), Contents(fresh));
        return result;
    }
    [[nodiscard]] Node Named(const std::string& caption) const { return Find(shown, caption); }

    graph_ptr2<Graph> shown = ReadAndLayOut(kText);
};

TEST_F(MergeTest, AnUnchangedFileChangesNothing) {
    const int id = Named("inner").GetID();
    EXPECT_TRUE(MergeText(kText).IsEmpty());
    EXPECT_EQ(Named("inner").GetID(), id);
    EXPECT_FALSE(shown->RecalculateLayout(nullptr)) << "nothing is to be laid out";
}

TEST_F(MergeTest, NodesAreAddedWhereTheyBelong) {
    const MergeResult result = MergeText(With("[edges]", "7 \"new\" 0 4\n8 \"top\" 0 0\n[edges]"));
    EXPECT_EQ(result.added, 2);
    EXPECT_EQ(result.removed, 0);
    EXPECT_FALSE(result.has_other_changes);
    EXPECT_EQ(Named("new").GetTag(), 7);
    EXPECT_TRUE(shown->RecalculateLayout(nullptr));
    EXPECT_GT(Named("new").GetSize().cx, 0.0);
}

TEST_F(MergeTest, NodesGoTogetherWithTheirEdges) {
    const Node beta = Named("beta");
    const MergeResult result = MergeText(R"(a text
[nodes]
1 "alpha" 0 0
3 "gamma" 0 0
4 "box" 0 0
5 "inner" 0 4
6 "other" 0 4
[edges]
3 5 "into"
5 6 "within"
4 1 "from the box"
)");
    EXPECT_EQ(result.removed, 1);
    EXPECT_EQ(result.added, 0);
    EXPECT_TRUE(beta.IsDummy());
    EXPECT_TRUE(shown->RecalculateLayout(nullptr));
}

TEST_F(MergeTest, ANodeWithTheSameIdIsRenamed) {
    const Node beta = Named("beta");
    SetFlag(beta, NodeSelected, true);
    const MergeResult result = MergeText(With("\"beta\"", "\"delta\""));
    EXPECT_EQ(result.added + result.removed, 0);
    EXPECT_TRUE(result.has_other_changes);
    EXPECT_EQ(beta.GetCaption(), "delta");
    EXPECT_TRUE(IsFlagSet(beta, NodeSelected));
}

TEST_F(MergeTest, ANodeWithAnotherIdIsTheSameByItsCaption) {
    const Node beta = Named("beta");
    const MergeResult result = MergeText(R"(a text
[nodes]
10 "alpha" 0 0
1 "beta" 0 0
2 "gamma" 0 0
40 "box" 0 0
50 "inner" 0 40
60 "other" 0 40
[edges]
10 1 "first"
1 2 "second"
2 50 "into"
50 60 "within"
40 10 "from the box"
)");
    EXPECT_TRUE(result.IsEmpty());
    EXPECT_EQ(Named("beta"), beta);
    EXPECT_EQ(beta.GetTag(), 1);
}

TEST_F(MergeTest, TwoNodesThatChangeCaptionsChangeTheirIds) {
    const int alpha = Named("alpha").GetID();
    std::string text = With("1 \"alpha\"", "1 \"beta\"");
    text.replace(text.find("2 \"beta\""), 8, "2 \"alpha\"");
    MergeText(text);
    EXPECT_EQ(Named("alpha").GetID(), alpha);
    EXPECT_EQ(Named("alpha").GetTag(), 2);
}

TEST_F(MergeTest, ALongerCaptionIsMeasuredAlsoInAnOwner) {
    for (const bool is_stable : {true, false}) {
        SCOPED_TRACE(is_stable);
        shown = Read(kText);
        LayOut(shown, is_stable ? checked_upcast<ILayout>(StableLayout::Create())
                                : checked_upcast<ILayout>(IncLayout::Create()));
        const Node inner = Named("inner");
        const double width = inner.GetSize().cx;
        MergeText(With("\"inner\"", "\"inner with a much longer caption than it had before\""));
        shown->RecalculateLayout(nullptr);
        EXPECT_GT(inner.GetSize().cx, width + 50.0);
        EXPECT_GT(Named("box").GetSize().cx, inner.GetSize().cx);
    }
}

TEST_F(MergeTest, WhatComesLiesInItsOwnerInEitherLayout) {
    const std::string text =
        With("[edges]", "7 \"new\" 0 4\n8 \"room\" 0 4\n9 \"deep\" 0 8\n[edges]\n6 7 \"\"\n");
    for (const bool is_stable : {true, false}) {
        SCOPED_TRACE(is_stable);
        shown = Read(kText);
        LayOut(shown, is_stable ? checked_upcast<ILayout>(StableLayout::Create())
                                : checked_upcast<ILayout>(IncLayout::Create()));
        MergeText(text);
        shown->RecalculateLayout(nullptr);
        for (const char* const caption : {"inner", "other", "new", "room", "deep"}) {
            SCOPED_TRACE(caption);
            const Node node = Named(caption);
            const point<double> p = node.GetPosition() - node.GetOwner().GetPosition();
            EXPECT_GE(p.x, 0.0);
            EXPECT_GE(p.y, 0.0);
            EXPECT_LE(p.x + node.GetSize().cx, node.GetOwner().GetSize().cx);
            EXPECT_LE(p.y + node.GetSize().cy, node.GetOwner().GetSize().cy);
        }
    }
}

TEST_F(MergeTest, ANodeThatMovesToAnotherOwnerGoesAndComes) {
    const MergeResult result = MergeText(With("3 \"gamma\" 0 0", "3 \"gamma\" 0 4"));
    EXPECT_EQ(result.added, 1);
    EXPECT_EQ(result.removed, 1);
    EXPECT_EQ(PathOf(Named("gamma")), "box/gamma");
}

TEST_F(MergeTest, EqualCaptionsArePairedInTheirOrder) {
    const std::string before =
        "t\n[nodes]\n1 \"x\" 0 0\n2 \"x\" 0 0\n3 \"x\" 0 0\n[edges]\n1 2 \"\"\n";
    shown = ReadAndLayOut(before);
    const std::vector<Node> nodes = AllNodes(shown);
    ASSERT_EQ(nodes.size(), 3u);
    const MergeResult result =
        Merge(shown, Read("t\n[nodes]\n1 \"x\" 0 0\n2 \"x\" 0 0\n[edges]\n1 2 \"\"\n"));
    EXPECT_EQ(result.removed, 1);
    EXPECT_FALSE(nodes[0].IsDummy());
    EXPECT_FALSE(nodes[1].IsDummy());
    EXPECT_TRUE(nodes[2].IsDummy());
    EXPECT_EQ(nodes[0].GetEdgesOut().GetCount(), 1);
}

TEST_F(MergeTest, EdgesComeAndGo) {
    EXPECT_TRUE(MergeText(With("2 3 \"second\"\n", "")).has_other_changes);
    EXPECT_EQ(Named("beta").GetEdgesOut().GetCount(), 0);
    EXPECT_TRUE(MergeText(kText).has_other_changes);
    EXPECT_EQ(Named("beta").GetEdgesOut().GetCount(), 1);
}

TEST_F(MergeTest, ParallelEdgesAreCounted) {
    const std::string three = With("1 2 \"first\"\n", "1 2 \"first\"\n1 2 \"first\"\n1 2 \"\"\n");
    EXPECT_TRUE(MergeText(three).has_other_changes);
    EXPECT_EQ(Named("alpha").GetEdgesOut().GetCount(), 3);
    EXPECT_TRUE(MergeText(kText).has_other_changes);
    EXPECT_EQ(Named("alpha").GetEdgesOut().GetCount(), 1);
}

TEST_F(MergeTest, AnEdgeWithAnotherCaptionIsAnotherEdge) {
    EXPECT_TRUE(MergeText(With("\"first\"", "\"changed\"")).has_other_changes);
    EXPECT_EQ(Named("alpha").GetEdgesOut().GetItem(0).GetCaption(), "changed");
}

TEST_F(MergeTest, LoopsAndEdgesOfOwnersComeAndGo) {
    const std::string many =
        With("1 2 \"first\"\n",
             "1 1 \"loop\"\n4 4 \"box loop\"\n5 4 \"to owner\"\n4 5 \"\"\n2 4 \"\"\n");
    EXPECT_TRUE(MergeText(many).has_other_changes);
    EXPECT_TRUE(shown->RecalculateLayout(nullptr));
    EXPECT_TRUE(MergeText(kText).has_other_changes);
    EXPECT_TRUE(shown->RecalculateLayout(nullptr));
}

TEST_F(MergeTest, AWholeOwnerGoesAndComesWithEdgesAcross) {
    const Node box = Named("box");
    const Node inner = Named("inner");
    const MergeResult gone = MergeText(
        "t\n[nodes]\n1 \"alpha\" 0 0\n2 \"beta\" 0 0\n3 \"gamma\" 0 0\n[edges]\n"
        "1 2 \"first\"\n2 3 \"second\"\n");
    EXPECT_EQ(gone.removed, 3);
    EXPECT_TRUE(box.IsDummy());
    EXPECT_TRUE(inner.IsDummy());
    EXPECT_EQ(Named("gamma").GetEdgesOut().GetCount(), 0);
    EXPECT_TRUE(shown->RecalculateLayout(nullptr));
    const MergeResult back = MergeText(kText);
    EXPECT_EQ(back.added, 3);
    EXPECT_TRUE(shown->RecalculateLayout(nullptr));
    EXPECT_GT(Named("box").GetSize().cx, Named("inner").GetSize().cx);
}

TEST_F(MergeTest, HiddenNodesStayHidden) {
    Hide(Named("beta"));
    Hide(Named("box"));
    shown->GetRoot().UpdateLayout();
    shown->RecalculateLayout(nullptr);
    MergeText(With("[edges]", "7 \"new\" 0 4\n8 \"top\" 0 0\n[edges]\n1 8 \"\"\n"));
    shown->RecalculateLayout(nullptr);
    EXPECT_EQ(ShownCaptions(shown), (std::vector<std::string>{"alpha", "gamma", "top"}));
}

TEST_F(MergeTest, WhatRemainsStaysWhereItWas) {
    const point<double> alpha = Named("alpha").GetPosition();
    const point<double> beta = Named("beta").GetPosition();
    const point<double> gamma = Named("gamma").GetPosition();
    MergeText(With("[edges]", "7 \"new\" 0 0\n[edges]\n2 7 \"\"\n"));
    shown->RecalculateLayout(nullptr);
    EXPECT_EQ(Named("alpha").GetPosition().x, alpha.x);
    EXPECT_EQ(Named("beta").GetPosition().x, beta.x);
    EXPECT_EQ(Named("gamma").GetPosition().x, gamma.x);
    MergeText(kText);
    shown->RecalculateLayout(nullptr);
    EXPECT_EQ(Named("alpha").GetPosition(), alpha);
    EXPECT_EQ(Named("beta").GetPosition(), beta);
    EXPECT_EQ(Named("gamma").GetPosition(), gamma);
}

// ---------------------------------------------------------------------------------------------
// Any graphs

// A file as it could be written, to be changed at random.
struct Draft {
    struct Line {
        int id;
        std::string caption;
        int owner;
    };
    struct Arrow {
        int from;
        int to;
        std::string caption;
    };
    std::vector<Line> nodes;
    std::vector<Arrow> edges;
    int next_id = 1;

    [[nodiscard]] int AnyId(nodeline::test::Random& random) const {
        return nodes.empty() ? 0 : random.Of(nodes).id;
    }
    void AddNode(nodeline::test::Random& random) {
        static const std::vector<std::string> kCaptions = {"a", "b", "c", "d", "e", "f", ""};
        const int owner = random.OneIn(2) ? 0 : AnyId(random);
        nodes.push_back({next_id++, random.Of(kCaptions), owner});
    }
    void AddEdge(nodeline::test::Random& random) {
        static const std::vector<std::string> kCaptions = {"", "", "x"};
        if (nodes.empty()) return;
        edges.push_back({AnyId(random), AnyId(random), random.Of(kCaptions)});
    }
    // With all that it owns, and their edges.
    void RemoveNode(int id) {
        std::set<int> gone{id};
        for (const Line& node : nodes) {
            if (gone.count(node.owner) != 0) gone.insert(node.id);
        }
        const auto is_gone = [&](int one) { return gone.count(one) != 0; };
        nodes.erase(std::remove_if(nodes.begin(), nodes.end(),
                                   [&](const Line& node) { return is_gone(node.id); }),
                    nodes.end());
        edges.erase(std::remove_if(
                        edges.begin(), edges.end(),
                        [&](const Arrow& edge) { return is_gone(edge.from) || is_gone(edge.to); }),
                    edges.end());
    }
    void Change(nodeline::test::Random& random) {
        switch (random.Below(5)) {
            case 0:
                return AddNode(random);
            case 1:
                return AddEdge(random);
            case 2:
                if (!nodes.empty()) RemoveNode(AnyId(random));
                return;
            case 3:
                if (!edges.empty()) edges.erase(edges.begin() + random.Below(Size(edges)));
                return;
            default:
                if (!nodes.empty()) {
                    nodes[static_cast<std::size_t>(random.Below(Size(nodes)))].caption = "renamed";
                }
        }
    }
    template <class T>
    [[nodiscard]] static int Size(const std::vector<T>& items) {
        return static_cast<int>(items.size());
    }
    [[nodiscard]] std::string Text() const {
        std::string text = "a draft\n[nodes]\n";
        for (const Line& node : nodes) {
            text += std::to_string(node.id) + " \"" + node.caption + "\" 0 " +
                    std::to_string(node.owner) + "\n";
        }
        text += "[edges]\n";
        for (const Arrow& edge : edges) {
            text += std::to_string(edge.from) + " " + std::to_string(edge.to) + " \"" +
                    edge.caption + "\"\n";
        }
        return text;
    }
};

TEST(MergeAnyGraphs, TheShownGraphHoldsWhatTheFreshOneDoes) {
    for (std::uint64_t seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(seed);
        nodeline::test::Random random(seed);
        Draft draft;
        for (int i = random.Below(25); i >= 0; --i) draft.AddNode(random);
        for (int i = random.Below(40); i >= 0; --i) draft.AddEdge(random);
        const graph_ptr2<Graph> shown = ReadAndLayOut(draft.Text());
        for (int round = 0; round < 4; ++round) {
            for (Node node : AllNodes(shown)) {
                if (random.OneIn(6)) Hide(node);
            }
            const std::vector<Node> before = AllNodes(shown);
            std::vector<bool> was_hidden;
            for (const Node& node : before) was_hidden.push_back(IsFlagSet(node, NodeHidden));
            for (int i = random.Below(8); i >= 0; --i) draft.Change(random);
            const graph_ptr2<Graph> fresh = Read(draft.Text());

            const MergeResult result = Merge(shown, fresh);
            ASSERT_EQ(Contents(shown), Contents(fresh));
            int removed = 0;
            for (std::size_t i = 0; i < before.size(); ++i) {
                removed += before[i].IsDummy() ? 1 : 0;
                if (!before[i].IsDummy()) {
                    ASSERT_EQ(IsFlagSet(before[i], NodeHidden), was_hidden[i]);
                }
            }
            ASSERT_EQ(removed, result.removed);
            ASSERT_EQ(AllNodes(shown).size() + static_cast<std::size_t>(result.removed),
                      before.size() + static_cast<std::size_t>(result.added));
            ASSERT_TRUE(Merge(shown, fresh).IsEmpty());
            shown->RecalculateLayout(nullptr);
        }
    }
}

}  // namespace
}  // namespace nodeline::app
