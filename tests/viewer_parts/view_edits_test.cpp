#include <apps/viewer/view_edits.h>
#include <gtest/gtest.h>
#include <nodeline/layout/inc_layout.h>
#include <viewer_parts/graph_text.h>

#include <string>
#include <vector>

namespace nodeline::app {
namespace {

using namespace test;
using Captions = std::vector<std::string>;

//   a -> b -> c -> d        box { in1 -> in2, room { deep } }
//   b -> in1, deep -> d, e stands alone
const char* const kText = R"(a text
[nodes]
1 "a" 0 0
2 "b" 0 0
3 "c" 0 0
4 "d" 0 0
5 "e" 0 0
6 "box" 0 0
7 "in1" 0 6
8 "in2" 0 6
9 "room" 0 6
10 "deep" 0 9
[edges]
1 2 ""
2 3 ""
3 4 ""
2 7 ""
7 8 ""
10 4 ""
)";

class ViewEditsTest : public testing::Test {
protected:
    [[nodiscard]] Node Named(const std::string& caption) const { return Find(graph, caption); }
    [[nodiscard]] Captions Shown() const { return ShownCaptions(graph); }

    graph_ptr2<Graph> graph = ReadAndLayOut(kText);
    const Captions all = Shown();
};

TEST_F(ViewEditsTest, ANodeIsHiddenWithWhatItOwns) {
    HideNode(Named("box"));
    EXPECT_EQ(Shown(), (Captions{"a", "b", "c", "d", "e"}));
    EXPECT_TRUE(graph->RecalculateLayout(nullptr));
    EXPECT_TRUE(IsOutOfSight(Named("deep")));
    EXPECT_FALSE(IsFlagSet(Named("deep"), NodeHidden));
}

TEST_F(ViewEditsTest, HidingTheRootOrNothingDoesNothing) {
    HideNode({});
    HideNode(graph->GetRoot());
    EXPECT_EQ(Shown(), all);
    EXPECT_FALSE(graph->RecalculateLayout(nullptr));
}

TEST_F(ViewEditsTest, AnOwnerShrinksAndGrowsWithWhatIsShownInIt) {
    const double width = Named("box").GetSize().cx;
    HideNode(Named("in2"));
    HideNode(Named("in1"));
    graph->RecalculateLayout(nullptr);
    const double less = Named("box").GetSize().cx;
    EXPECT_LT(less, width);
    ShowAll(graph);
    EXPECT_TRUE(graph->RecalculateLayout(nullptr));
    EXPECT_EQ(Named("box").GetSize().cx, width);
    ShowOnly(Named("room"));
    EXPECT_TRUE(graph->RecalculateLayout(nullptr));
    EXPECT_LT(Named("box").GetSize().cx, width);
}

TEST_F(ViewEditsTest, WhatIsShownLiesInItsOwnerInEitherLayout) {
    for (const bool is_stable : {true, false}) {
        SCOPED_TRACE(is_stable);
        graph = Read(kText);
        LayOut(graph, is_stable ? checked_upcast<ILayout>(StableLayout::Create())
                                : checked_upcast<ILayout>(IncLayout::Create()));
        HideNode(Named("in1"));
        HideNode(Named("deep"));
        graph->RecalculateLayout(nullptr);
        ShowAll(graph);
        graph->RecalculateLayout(nullptr);
        for (const char* const caption : {"in1", "in2", "room", "deep"}) {
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

TEST_F(ViewEditsTest, AllIsShownAgainAndWhatWasHiddenIsNew) {
    HideNode(Named("b"));
    HideNode(Named("deep"));
    HideNode(Named("box"));
    graph->RecalculateLayout(nullptr);
    ShowAll(graph);
    EXPECT_EQ(Shown(), all);
    EXPECT_TRUE(IsFlagSet(Named("b"), NodeNew));
    EXPECT_TRUE(IsFlagSet(Named("deep"), NodeNew));
    EXPECT_FALSE(IsFlagSet(Named("a"), NodeNew));
    ShowAll(graph);
    EXPECT_FALSE(IsFlagSet(Named("b"), NodeNew)) << "it was there before";
}

TEST_F(ViewEditsTest, OnlyANodeAndItsNeighboursAreShown) {
    ShowOnly(Named("c"));
    EXPECT_EQ(Shown(), (Captions{"b", "c", "d"}));
    EXPECT_TRUE(graph->RecalculateLayout(nullptr));
}

TEST_F(ViewEditsTest, OwnersOfNeighboursAreShownForThemAlone) {
    ShowOnly(Named("b"));
    EXPECT_EQ(Shown(), (Captions{"a", "b", "box", "c", "in1"}));
}

TEST_F(ViewEditsTest, NeighboursOfContentsCount) {
    ShowOnly(Named("room"));
    EXPECT_EQ(Shown(), (Captions{"box", "d", "deep", "room"}));
    ShowAll(graph);
    ShowOnly(Named("box"));
    EXPECT_EQ(Shown(), (Captions{"b", "box", "d", "deep", "in1", "in2", "room"}));
}

TEST_F(ViewEditsTest, HiddenNeighboursAndContentsAreShown) {
    HideNode(Named("deep"));
    HideNode(Named("in1"));
    HideNode(Named("d"));
    ShowOnly(Named("box"));
    EXPECT_EQ(Shown(), (Captions{"b", "box", "d", "deep", "in1", "in2", "room"}));
    EXPECT_TRUE(IsFlagSet(Named("d"), NodeNew));
}

TEST_F(ViewEditsTest, WhatIsNewIsWhatTheLastEditBroughtBack) {
    HideNode(Named("a"));
    ShowAll(graph);
    ASSERT_TRUE(IsFlagSet(Named("a"), NodeNew));
    HideNode(Named("c"));
    ShowOnly(Named("b"));
    EXPECT_TRUE(IsFlagSet(Named("c"), NodeNew));
    EXPECT_FALSE(IsFlagSet(Named("a"), NodeNew));
}

TEST_F(ViewEditsTest, ANodeWithoutNeighboursStandsAlone) {
    ShowOnly(Named("e"));
    EXPECT_EQ(Shown(), Captions{"e"});
}

TEST_F(ViewEditsTest, OnlyTheRootOrNothingChangesNothing) {
    ShowOnly({});
    ShowOnly(graph->GetRoot());
    EXPECT_EQ(Shown(), all);
}

TEST_F(ViewEditsTest, ANodeIsOutOfSightWithAnOwner) {
    EXPECT_FALSE(IsOutOfSight(Named("deep")));
    Hide(Named("box"));
    EXPECT_TRUE(IsOutOfSight(Named("box")));
    EXPECT_TRUE(IsOutOfSight(Named("deep")));
    EXPECT_FALSE(IsOutOfSight(Named("a")));
    EXPECT_FALSE(IsOutOfSight({}));
}

TEST_F(ViewEditsTest, AFoldNeedsAShownNeighbourAndAnUnfoldAHiddenOne) {
    EXPECT_TRUE(CanFold(Named("b"), FoldChildren));
    EXPECT_FALSE(CanUnfold(Named("b"), FoldChildren));
    EXPECT_FALSE(CanFold(Named("a"), FoldParents)) << "it has none";
    EXPECT_FALSE(CanUnfold(Named("a"), FoldParents));
    Hide(Named("c"));
    EXPECT_TRUE(CanFold(Named("b"), FoldChildren)) << "one is still there";
    EXPECT_TRUE(CanUnfold(Named("b"), FoldChildren));
    Hide(Named("in1"));
    EXPECT_FALSE(CanFold(Named("b"), FoldChildren));
    EXPECT_TRUE(CanUnfold(Named("b"), FoldChildren));
    EXPECT_TRUE(CanFold(Named("b"), FoldParents));
}

}  // namespace
}  // namespace nodeline::app
