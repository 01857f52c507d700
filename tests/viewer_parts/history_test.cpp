#include <apps/viewer/history.h>
#include <apps/viewer/merge.h>
#include <apps/viewer/view_edits.h>
#include <gtest/gtest.h>
#include <qt/events.h>
#include <viewer_parts/graph_text.h>

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace nodeline::app {
namespace {

using namespace test;
using namespace nodeline::test;
using Captions = std::vector<std::string>;

//   top -> left -> low     box { one -> two }     top -> right -> two
const char* const kText = R"(a text
[nodes]
1 "top" 0 0
2 "left" 0 0
3 "right" 0 0
4 "low" 0 0
5 "box" 0 0
6 "one" 0 5
7 "two" 0 5
8 "three" 0 5
[edges]
1 2 ""
1 3 ""
2 4 ""
6 7 ""
6 8 ""
3 7 ""
)";

class HistoryTest : public testing::Test {
protected:
    void SetUp() override {
        widget.viewer()->ScrollbarsEnable(false);
        widget.resize(900, 500);
        widget.show();
        Show(kText);
    }

    void Show(const std::string& text) {
        graph = ReadAndLayOut(text);
        widget.showGraph(graph);
        widget.zoomTo(1.0);
        history.start();
        Settle();
    }
    // A newer reading of the file.
    void MergeText(const std::string& text) {
        widget.change([&] { Merge(graph, Read(text)); });
        history.adopt();
    }
    [[nodiscard]] Node Named(const std::string& caption) const { return Find(graph, caption); }
    [[nodiscard]] Captions Shown() const { return ShownCaptions(graph); }
    [[nodiscard]] QUndoStack& Stack() { return *history.stack(); }

    [[nodiscard]] QPoint PixelAt(double x, double y) const {
        const point<int> p = widget.viewer()->GetContent()->ConvertL2P({x, y});
        return {p.x, p.y};
    }
    [[nodiscard]] QPoint MiddleOf(const Node& node) const {
        const point<double> p = node.GetPosition();
        return PixelAt(p.x + node.GetSize().cx / 2.0, p.y + node.GetSize().cy / 2.0);
    }
    void ClickRightPort(const Node& node) {
        const point<double> p = node.GetPosition();
        Click(&widget, PixelAt(p.x + node.GetSize().cx - 2.0, p.y + node.GetSize().cy / 2.0));
    }
    // By hand, and with the pointer.
    void Drag(const Node& node, QPoint way) {
        widget.viewer()->SetMoveNodes(true);
        const QPoint at = MiddleOf(node);
        nodeline::test::Drag(&widget, at, at + way);
        widget.viewer()->SetMoveNodes(false);
    }
    void HideNamed(const std::string& caption) {
        const Node node = Named(caption);
        widget.change([&] { HideNode(node); }, node);
    }
    // From its owner, as a layout places it.
    [[nodiscard]] point<double> PlaceOf(const std::string& caption) const {
        const Node node = Named(caption);
        return node.GetPosition() - node.GetOwner().GetPosition();
    }
    using Places = std::unordered_map<std::string, point<double>>;
    // Of what is in the picture.
    [[nodiscard]] Places AllPlaces() const {
        Places places;
        MarkDrawnIn(graph);
        for (const Node& node : AllNodes(graph)) {
            if (IsFlagSet(node, NodeDrawn)) places[node.GetCaption()] = PlaceOf(node.GetCaption());
        }
        return places;
    }
    void ExpectPlaces(const Places& expected) const {
        const Places places = AllPlaces();
        EXPECT_EQ(places.size(), expected.size());
        for (const auto& [caption, place] : expected) {
            SCOPED_TRACE(caption);
            ASSERT_EQ(places.count(caption), 1u);
            EXPECT_NEAR(places.at(caption).x, place.x, 1e-6);
            EXPECT_NEAR(places.at(caption).y, place.y, 1e-6);
        }
    }
    void ExpectPlace(const std::string& caption, const point<double>& expected) const {
        const point<double> place = PlaceOf(caption);
        EXPECT_NEAR(place.x, expected.x, 1e-6) << caption;
        EXPECT_NEAR(place.y, expected.y, 1e-6) << caption;
    }

    graph_ptr2<Graph> graph;
    qt::GraphWidget widget;
    History history{&widget};
};

TEST_F(HistoryTest, AFoldByAClickIsUndoneAndRedone) {
    const Captions all = Shown();
    const Places places = AllPlaces();
    ClickRightPort(Named("top"));
    const Captions folded = Shown();
    const Places places_folded = AllPlaces();
    ASSERT_EQ(folded, (Captions{"box", "low", "one", "three", "top", "two"}));
    ASSERT_TRUE(Stack().canUndo());
    Stack().undo();
    EXPECT_EQ(Shown(), all);
    ExpectPlaces(places);
    Stack().redo();
    EXPECT_EQ(Shown(), folded);
    ExpectPlaces(places_folded);
    Stack().undo();
    ExpectPlaces(places);
    EXPECT_EQ(Stack().count(), 1);
}

TEST_F(HistoryTest, ManyChangesAreUndoneOneByOne) {
    const Captions all = Shown();
    HideNamed("left");
    const Captions first = Shown();
    widget.change([&] { ShowOnly(Named("right")); });
    const Captions second = Shown();
    EXPECT_EQ(second, (Captions{"box", "right", "top", "two"}));
    widget.change([&] { ShowAll(graph); });
    EXPECT_EQ(Shown(), all);
    Stack().undo();
    EXPECT_EQ(Shown(), second);
    Stack().undo();
    EXPECT_EQ(Shown(), first);
    Stack().undo();
    EXPECT_EQ(Shown(), all);
    EXPECT_FALSE(Stack().canUndo());
    Stack().redo();
    Stack().redo();
    EXPECT_EQ(Shown(), second);
}

TEST_F(HistoryTest, ARevealIsUndone) {
    HideNamed("box");
    const Captions hidden = Shown();
    widget.reveal(Named("two"));
    EXPECT_NE(Shown(), hidden);
    Stack().undo();
    EXPECT_EQ(Shown(), hidden);
}

TEST_F(HistoryTest, AChangeInAnOwnerIsLaidOutAgainWhenItIsUndone) {
    const Places places = AllPlaces();
    const double width = Named("box").GetSize().cx;
    widget.change([&] { Fold(Named("one"), FoldChildren); });
    ASSERT_LT(Named("box").GetSize().cx, width);
    Stack().undo();
    EXPECT_EQ(Named("box").GetSize().cx, width);
    ExpectPlaces(places);
}

TEST_F(HistoryTest, WhatAnUndoBringsBackIsNewAndNothingElse) {
    HideNamed("left");
    HideNamed("right");
    Stack().undo();
    EXPECT_TRUE(IsFlagSet(Named("right"), NodeNew));
    Stack().undo();
    EXPECT_TRUE(IsFlagSet(Named("left"), NodeNew));
    EXPECT_FALSE(IsFlagSet(Named("right"), NodeNew));
}

TEST_F(HistoryTest, AClickThatSelectsIsNoEntry) {
    Click(&widget, MiddleOf(Named("left")));
    ASSERT_TRUE(IsFlagSet(Named("left"), NodeSelected));
    EXPECT_EQ(Stack().count(), 0);
}

TEST_F(HistoryTest, AChangeThatHidesNothingIsNoEntry) {
    widget.change([&] { SetFlag(Named("left"), NodeMarked, true); });
    widget.change([&] { ShowAll(graph); });
    EXPECT_EQ(Stack().count(), 0);
}

TEST_F(HistoryTest, EntriesSayWhatTheyAre) {
    HideNamed("left");
    EXPECT_EQ(Stack().undoText(), u"hiding “left”");
    ClickRightPort(Named("one"));
    EXPECT_EQ(Stack().undoText(), u"hiding 2 nodes");
    ClickRightPort(Named("one"));
    EXPECT_EQ(Stack().undoText(), u"showing 2 nodes");
    widget.change([&] { ShowOnly(Named("left")); });
    EXPECT_EQ(Stack().undoText(), u"changing what is shown");
    widget.change([&] { ShowAll(graph); });
    Drag(Named("low"), {0, 40});
    EXPECT_EQ(Stack().undoText(), u"moving “low”");
    Named("low").SetCaption("");
    HideNamed("");
    EXPECT_EQ(Stack().undoText(), u"hiding a node");
    Named("right").SetCaption("a caption of more than twenty-four characters");
    HideNamed("a caption of more than twenty-four characters");
    EXPECT_EQ(Stack().undoText(), u"hiding “a caption of more than …”");
}

TEST_F(HistoryTest, AnotherGraphForgetsEverything) {
    HideNamed("left");
    Drag(Named("low"), {0, 40});
    Show(kText);
    EXPECT_EQ(Stack().count(), 0);
    const Places places = AllPlaces();
    HideNamed("left");
    Stack().undo();
    ExpectPlaces(places);
}

// ---------------------------------------------------------------------------------------------
// Dragged nodes

TEST_F(HistoryTest, ADragIsUndoneAndRedone) {
    const Places places = AllPlaces();
    Drag(Named("low"), {10, 45});
    const Places dragged = AllPlaces();
    EXPECT_NEAR(dragged.at("low").x, places.at("low").x + 10.0, 1.0);
    EXPECT_NEAR(dragged.at("low").y, places.at("low").y + 45.0, 1.0);
    Stack().undo();
    ExpectPlaces(places);
    Stack().redo();
    ExpectPlaces(dragged);
}

TEST_F(HistoryTest, ADraggedNodeStaysWhereItWasLeftWhenOthersFold) {
    Drag(Named("low"), {10, 45});
    const point<double> place = PlaceOf("low");
    for (int i = 0; i < 5; ++i) {
        ClickRightPort(Named("one"));
        ExpectPlace("low", place);
    }
    widget.change([&] { HideNode(Named("right")); });
    ExpectPlace("low", place);
    widget.change([&] { ShowAll(graph); });
    ExpectPlace("low", place);
}

TEST_F(HistoryTest, ADraggedNodeInAnOwnerStaysWhenItsSiblingsFold) {
    Drag(Named("two"), {7, 13});
    const point<double> place = PlaceOf("two");
    for (int i = 0; i < 4; ++i) {
        HideNamed("three");
        Stack().undo();
        ExpectPlace("two", place);
    }
}

TEST_F(HistoryTest, ADraggedNodeDoesNotDriftWhenItsOwnerMoves) {
    Drag(Named("two"), {7, 13});
    const point<double> place = PlaceOf("two");
    for (int i = 1; i <= 30; ++i) {
        // As a layout does that moves the box: all in it goes along.
        widget.change([&] {
            for (const char* const caption : {"box", "one", "two", "three"}) {
                Node node = Named(caption);
                node.SetPosition(node.GetPosition() + point<double>{0.1 * i, 1.0 / (3.0 * i)});
            }
        });
        ExpectPlace("two", place);
    }
}

TEST_F(HistoryTest, ADraggedNodeDoesNotDriftInChangesThatLeaveItAlone) {
    Drag(Named("low"), {10, 45});
    const point<double> place = PlaceOf("low");
    for (int i = 0; i < 20; ++i) widget.change([] {});
    ExpectPlace("low", place);
    for (int i = 0; i < 20; ++i) history.adopt();
    ExpectPlace("low", place);
}

TEST_F(HistoryTest, ADraggedNodeThatIsFoldedAwayComesBackWhereItWasLeft) {
    Drag(Named("low"), {10, 45});
    const point<double> place = PlaceOf("low");
    for (int i = 0; i < 4; ++i) {
        HideNamed("low");
        HideNamed("right");
        widget.change([&] { ShowAll(graph); });
        ExpectPlace("low", place);
    }
}

TEST_F(HistoryTest, TwoDragsOfOneNodeAddUp) {
    // Nothing is to lie over the node where it is dragged to.
    HideNamed("box");
    const Places places = AllPlaces();
    Drag(Named("low"), {10, 45});
    const Places once = AllPlaces();
    Drag(Named("low"), {-30, 20});
    const Places twice = AllPlaces();
    HideNamed("right");
    ExpectPlace("low", twice.at("low"));
    Stack().undo();
    ExpectPlaces(twice);
    Stack().undo();
    ExpectPlaces(once);
    Stack().undo();
    ExpectPlaces(places);
    HideNamed("right");
    ExpectPlace("low", places.at("low"));
}

TEST_F(HistoryTest, ADragAndAFoldAreUndoneInTurn) {
    const Places places = AllPlaces();
    Drag(Named("two"), {20, 30});
    const Places dragged = AllPlaces();
    ClickRightPort(Named("top"));
    Stack().undo();
    ExpectPlaces(dragged);
    Stack().undo();
    ExpectPlaces(places);
    Stack().redo();
    ExpectPlaces(dragged);
    Stack().redo();
    ExpectPlace("two", dragged.at("two"));
}

TEST_F(HistoryTest, ADraggedNodeStaysAfterReloadsAlsoWhileThingsGlide) {
    std::string more = kText;
    more.replace(more.find("[edges]"), 7,
                 "9 \"extra\" 0 0\n10 \"more\" 0 0\n[edges]\n2 9 \"\"\n2 10 \"\"");
    // Where the node stands after each of some changes, once everything is in its place.
    const auto places = [&](QPoint drag, int glide_time) {
        std::vector<point<double>> found;
        const auto note = [&] {
            widget.finishGlide();
            found.push_back(PlaceOf("low"));
        };
        widget.setGlideTime(0);
        Show(kText);
        if (!drag.isNull()) Drag(Named("low"), drag);
        widget.setGlideTime(glide_time);
        note();
        for (const std::string& text : {more, std::string(kText), more}) {
            MergeText(text);
            note();
            // Nothing is laid out, so nothing is to be put back.
            widget.change([] {});
            note();
        }
        HideNamed("right");
        note();
        Stack().undo();
        note();
        return found;
    };
    const std::vector<point<double>> plain = places({}, 0);
    const std::vector<point<double>> dragged = places({10, 45}, 0);
    const std::vector<point<double>> gliding = places({10, 45}, 10000);
    ASSERT_EQ(plain.size(), dragged.size());
    ASSERT_EQ(plain.size(), gliding.size());
    const point<double> offset = dragged.front() - plain.front();
    EXPECT_NEAR(offset.y, 45.0, 1.0);
    for (std::size_t i = 0; i < plain.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_NEAR(dragged[i].x - plain[i].x, offset.x, 1e-6);
        EXPECT_NEAR(dragged[i].y - plain[i].y, offset.y, 1e-6);
        EXPECT_NEAR(gliding[i].x, dragged[i].x, 1e-6);
        EXPECT_NEAR(gliding[i].y, dragged[i].y, 1e-6);
    }
}

// ---------------------------------------------------------------------------------------------
// Nodes that have gone

TEST_F(HistoryTest, AnUndoPassesOverNodesThatHaveGone) {
    const point<double> box = Named("box").GetPosition();
    ClickRightPort(Named("one"));
    HideNamed("left");
    MergeText(
        "t\n[nodes]\n1 \"top\" 0 0\n2 \"left\" 0 0\n3 \"right\" 0 0\n[edges]\n1 2 \"\"\n1 3 "
        "\"\"\n");
    ASSERT_EQ(Shown(), (Captions{"right", "top"}));
    Stack().undo();
    EXPECT_EQ(Shown(), (Captions{"left", "right", "top"}));
    Stack().undo();
    EXPECT_EQ(Shown(), (Captions{"left", "right", "top"}));
    Stack().redo();
    Stack().redo();
    EXPECT_EQ(Shown(), (Captions{"right", "top"}));
    EXPECT_GT(box.x + box.y, 0.0);
}

TEST_F(HistoryTest, AnUndoOfADragPassesOverANodeThatHasGone) {
    Drag(Named("two"), {20, 30});
    Drag(Named("low"), {0, 30});
    MergeText("t\n[nodes]\n1 \"top\" 0 0\n2 \"left\" 0 0\n[edges]\n1 2 \"\"\n");
    const Places places = AllPlaces();
    Stack().undo();
    Stack().undo();
    ExpectPlaces(places);
    Stack().redo();
    ExpectPlaces(places);
}

TEST_F(HistoryTest, NodesThatCameByAReloadCanBeFoldedAndUndone) {
    std::string text = kText;
    text.replace(text.find("[edges]"), 7, "9 \"extra\" 0 0\n[edges]\n4 9 \"\"");
    MergeText(text);
    EXPECT_EQ(Stack().count(), 0);
    HideNamed("extra");
    EXPECT_EQ(Stack().undoText(), u"hiding “extra”");
    Stack().undo();
    EXPECT_FALSE(IsFlagSet(Named("extra"), NodeHidden));
}

}  // namespace
}  // namespace nodeline::app
