#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

#include "viewer/stage.h"

namespace nodeline::test {
namespace {

class ContentPointer : public testing::Test {
protected:
    void Press(const point<int>& p) { stage.window.Press(p.x, p.y); }
    void Move(const point<int>& p) { stage.window.Move(p.x, p.y); }
    void Release(const point<int>& p) { stage.window.Release(p.x, p.y); }
    [[nodiscard]] const DragTracker& tracker() const { return *stage.content->GetDragTracker(); }
    [[nodiscard]] point<double> start() const {
        return {stage.viewer->GetStartX(), stage.viewer->GetStartY()};
    }

    Stage stage;
    viewkit::CControl& control = stage.window.GetControl();
};

// ---------------------------------------------------------------------------------------------
// What is hit

TEST_F(ContentPointer, AClickOnEmptySpaceReachesTheRoot) {
    stage.viewer->SetScale(2.0);
    stage.window.Click(3, 5);
    EXPECT_EQ(stage.Take(), Log({"down root", "up root", "click root"}));
    EXPECT_EQ(stage.script.at, stage.content->ConvertP2L({3, 5}));
}

TEST_F(ContentPointer, HandlersGetKeysAndButtonAsTheyCome) {
    const point<int> p = stage.PixelOf(stage.a);
    control.ButtonDown(p.x, p.y, paintcore::KeyShift | paintcore::KeyAlt, MouseButton::Middle);
    EXPECT_EQ(stage.Take(), Log({"down a"}));
    EXPECT_EQ(stage.script.at, stage.content->ConvertP2L(p));
    EXPECT_EQ(stage.script.keys, 5);
    EXPECT_EQ(stage.script.button, MouseButton::Middle);
}

TEST_F(ContentPointer, EdgesAreHitAPixelAround) {
    stage.viewer->SetScale(0.5);
    const point<double> a = stage.a.GetPosition();
    const point<double> b = stage.b.GetPosition();
    // Halfway between the nodes, one and a half units beside the straight edge.
    ASSERT_EQ(a.y, b.y);
    stage.content->SetHorzStart((a.x + 40.0 + b.x) * 0.5 - 10.0);
    stage.content->SetVertStart(a.y + 10.0 - 1.5);
    EXPECT_EQ(stage.content->HitEdgeTest(5, 0, 5, 0).GetCount(), 1);
    stage.content->SetVertStart(a.y + 10.0 - 2.5);
    EXPECT_EQ(stage.content->HitEdgeTest(5, 0, 5, 0).GetCount(), 0);
}

TEST_F(ContentPointer, NodesAreHitInARectangleOfPixels) {
    EXPECT_GE(stage.content->HitNodeTest(0, 0, 400, 300).GetCount(), 4);
    const point<int> p = stage.PixelOf(stage.b);
    const NodeSet met = stage.content->HitNodeTest(p.x, p.y, p.x, p.y);
    ASSERT_GE(met.GetCount(), 1);
    EXPECT_EQ(met.GetItem(0), stage.b);
}

TEST_F(ContentPointer, EventsWithoutWorkAnswerWhatTheyAlwaysAnswer) {
    const Node nobody;
    EXPECT_TRUE(stage.content->HandleMouseMove(1, 2, 0, MouseButton::None));
    EXPECT_FALSE(stage.content->HandleKeyUp(0, 37));
    EXPECT_FALSE(stage.content->HandleChar('a'));
    EXPECT_TRUE(stage.content->HandleDragOver(1, 2));
    EXPECT_TRUE(stage.content->HandleDragDrop(1, 2));
    stage.content->HandleMouseHover(stage.content);
    EXPECT_EQ(stage.Take(), Log());
    EXPECT_FALSE(stage.window.PaintPending());
}

// ---------------------------------------------------------------------------------------------
// The states of a press

TEST_F(ContentPointer, IdleAPressNotesItsTargetAndArmsTheTracker) {
    EXPECT_FALSE(tracker().IsPressed());
    Press(stage.PixelOf(stage.a));
    EXPECT_EQ(stage.Take(), Log({"down a"}));
    EXPECT_TRUE(tracker().IsPressed());
    EXPECT_FALSE(tracker().IsActive());
    EXPECT_EQ(control.GetCaptured(), &tracker());
}

TEST_F(ContentPointer, PressedAMoveBeginsADragAndPans) {
    const point<double> before = start();
    const point<int> p = stage.PixelOf(stage.a);
    Press(p);
    Move({p.x + 7, p.y - 4});
    EXPECT_TRUE(tracker().IsActive());
    EXPECT_EQ(start(), (point<double>{before.x - 7.0, before.y + 4.0}));
}

TEST_F(ContentPointer, PressedAReleaseOnTheSameNodeIsAClick) {
    const point<int> p = stage.PixelOf(stage.a);
    Press(p);
    Release({p.x + 1, p.y + 1});
    EXPECT_EQ(stage.Take(), Log({"down a", "up a", "click a"}));
    EXPECT_FALSE(tracker().IsPressed());
    EXPECT_EQ(control.GetCaptured(), nullptr);
    // The press is over: a further release is none.
    Release(p);
    EXPECT_EQ(stage.Take(), Log({"up a"}));
}

TEST_F(ContentPointer, PressedAReleaseOnAnotherNodeIsNoClick) {
    Press(stage.PixelOf(stage.a));
    Release(stage.PixelOf(stage.b));
    EXPECT_EQ(stage.Take(), Log({"down a", "up b"}));
    EXPECT_FALSE(tracker().IsPressed());
}

TEST_F(ContentPointer, DraggingFurtherMovesGoOnPanning) {
    const point<double> before = start();
    Press({200, 290});
    Move({210, 280});
    Move({190, 285});
    Move({205, 270});
    EXPECT_TRUE(tracker().IsActive());
    EXPECT_EQ(start(), (point<double>{before.x - 5.0, before.y + 20.0}));
}

TEST_F(ContentPointer, DraggingAReleaseOnThePressedNodeIsNoClick) {
    const point<int> p = stage.PixelOf(stage.a);
    Press(p);
    Move({p.x + 30, p.y});
    Move(p);
    Release(p);
    EXPECT_EQ(stage.Take(), Log({"down a", "up a"}));
    EXPECT_FALSE(tracker().IsPressed());
    EXPECT_FALSE(tracker().IsActive());
}

TEST_F(ContentPointer, LeavingChangesNothingAboutAPress) {
    const point<int> p = stage.PixelOf(stage.a);
    Press(p);
    stage.content->HandleMouseLeave(stage.content);
    EXPECT_TRUE(tracker().IsPressed());
    Release(p);
    EXPECT_EQ(stage.Take(), Log({"down a", "up a", "click a"}));
}

TEST_F(ContentPointer, AnOwnerPansAlsoWhereNodesAreMoved) {
    stage.viewer->SetMoveNodes(true);
    const point<double> before = stage.c.GetPosition();
    const point<double> view = start();
    const point<int> p = stage.content->ConvertL2P({before.x + 4.0, before.y + 4.0});
    stage.window.Drag(p, {p.x + 10, p.y + 10});
    EXPECT_EQ(stage.Take().front(), "down c");
    EXPECT_EQ(stage.c.GetPosition(), before);
    EXPECT_EQ(start(), (point<double>{view.x - 10.0, view.y - 10.0}));
}

TEST_F(ContentPointer, ALeafFollowsThePointerWhereNodesAreMoved) {
    stage.viewer->SetMoveNodes(true);
    stage.viewer->SetScale(2.0);
    const point<double> before = stage.a.GetPosition();
    const point<double> view = start();
    const point<int> p = stage.content->ConvertL2P({before.x + 10.0, before.y + 5.0});
    stage.window.Press(p.x, p.y);
    stage.window.GetRecorder().TakeLines();
    stage.window.Move(p.x + 20, p.y + 8);
    EXPECT_EQ(stage.a.GetPosition(), (point<double>{before.x + 10.0, before.y + 4.0}));
    EXPECT_EQ(stage.TakePaint().front(), "fill");
    EXPECT_EQ(start(), view);
    const NodeSet route = stage.ab.GetBreakNodes();
    EXPECT_GE(route.GetItem(0).GetPosition().y, before.y + 4.0);
}

TEST_F(ContentPointer, ADragTakesHoldOfTheNodeWhereItWasPressed) {
    stage.viewer->SetMoveNodes(true);
    const point<double> before = stage.a.GetPosition();
    const point<int> p = stage.content->ConvertL2P({before.x + 30.0, before.y + 15.0});
    stage.window.Drag(p, {p.x - 6, p.y - 2}, 2);
    EXPECT_EQ(stage.a.GetPosition(), (point<double>{before.x - 6.0, before.y - 2.0}));
}

TEST_F(ContentPointer, TheEndOfADragBringsTheCursorBack) {
    stage.window.SetCursor(viewkit::Cursor::Move);
    stage.viewer->SetCursorPending(true);
    stage.window.Drag({200, 290}, {210, 280});
    EXPECT_EQ(stage.window.GetCursor(), viewkit::Cursor::Arrow);
    EXPECT_FALSE(stage.viewer->GetCursorPending());
}

// ---------------------------------------------------------------------------------------------
// Clicks

TEST_F(ContentPointer, TheAnswersToAReleaseAndItsClickAreJoined) {
    stage.script.answers = {{"up", 1}, {"click", 2}};
    const point<int> p = stage.PixelOf(stage.a);
    stage.content->HandleButtonDown(p.x, p.y, 0, MouseButton::Left);
    EXPECT_TRUE(stage.content->HandleButtonUp(p.x, p.y, 0, MouseButton::Left));
    EXPECT_EQ(stage.TakePaint(), Log({"a", "ab"}));
}

TEST_F(ContentPointer, AHandlerThatThrowsLeavesThePressAsItStood) {
    const point<int> p = stage.PixelOf(stage.a);
    stage.script.on_event = [](const std::string& event) {
        if (event == "down" || event == "up") throw std::runtime_error(event);
    };
    EXPECT_THROW(stage.window.Press(p.x, p.y), std::runtime_error);
    EXPECT_THROW(stage.window.Release(p.x, p.y), std::runtime_error);
    stage.script.on_event = nullptr;
    stage.Take();
    stage.window.Release(p.x, p.y);
    EXPECT_EQ(stage.Take(), Log({"up a", "click a"}));
}

TEST_F(ContentPointer, DoubleClickAndContextMenuLeaveThePressAlone) {
    const point<int> p = stage.PixelOf(stage.a);
    stage.content->HandleButtonDown(p.x, p.y, 0, MouseButton::Left);
    stage.content->HandleDoubleClick(p.x, p.y, 0, MouseButton::Left);
    stage.content->HandleContextMenu(p.x, p.y);
    stage.content->HandleButtonUp(p.x, p.y, 0, MouseButton::Left);
    EXPECT_EQ(stage.Take(), Log({"down a", "double a", "context a", "up a", "click a"}));
}

TEST_F(ContentPointer, AReleaseKeepsItsNodeInPlaceWhileTheLayoutMovesIt) {
    stage.script.on_event = [&](const std::string& event) {
        if (event != "click") return;
        stage.graph->GetRoot().AddNode().LinkTo(stage.a);
        stage.graph->GetRoot().MakeLayout();
    };
    const point<int> p = stage.PixelOf(stage.a);
    const point<double> before = stage.a.GetPosition();
    stage.window.Click(p.x, p.y);
    EXPECT_NE(stage.a.GetPosition(), before);
    EXPECT_EQ(stage.PixelOf(stage.a), p);
}

// ---------------------------------------------------------------------------------------------
// What the window promises

TEST_F(ContentPointer, APressThatIsNotUsedUpIsOfferedAgainAndBeginsADrag) {
    std::vector<bool> armed;
    Listener listener(stage.content, [&](const std::string& what) {
        if (what == "down") armed.push_back(tracker().IsPressed());
    });
    const point<int> p = stage.PixelOf(stage.a);
    EXPECT_FALSE(stage.content->HandleButtonDown(p.x, p.y, 0, MouseButton::Left));
    EXPECT_FALSE(tracker().IsPressed()) << "the surface undoes what its own signal began";
    EXPECT_EQ(armed.size(), 1U);
    control.ButtonDown(p.x, p.y, 2, MouseButton::Left);
    EXPECT_EQ(armed, std::vector<bool>({true, true, true}));
    EXPECT_TRUE(tracker().IsPressed());
    EXPECT_EQ(listener.at, p);
    EXPECT_EQ(listener.keys, 2);
    EXPECT_EQ(listener.button, MouseButton::Left);
}

TEST_F(ContentPointer, APressThatIsUsedUpIsOfferedOnceAndBeginsNoDrag) {
    int heard = 0;
    const Listener listener(stage.content,
                            [&](const std::string& what) { heard += what == "down" ? 1 : 0; });
    stage.script.answers["down"] = HandlerDone;
    const point<double> before = start();
    const point<int> p = stage.PixelOf(stage.a);
    EXPECT_TRUE(control.ButtonDown(p.x, p.y, 0, MouseButton::Left));
    EXPECT_EQ(heard, 1);
    EXPECT_FALSE(tracker().IsPressed());
    Move({p.x + 20, p.y});
    EXPECT_EQ(start(), before);
}

TEST_F(ContentPointer, MovesAndTheReleaseGoToTheRubberRectangleWhereverThePointerIs) {
    const point<double> before = start();
    Press({200, 290});
    Move({2000, 290});
    EXPECT_EQ(start().x, before.x - 200.0) << "held at the edge of the surface";
    Release({2000, 290});
    EXPECT_FALSE(tracker().IsPressed());
    EXPECT_EQ(control.GetCaptured(), nullptr);
}

TEST_F(ContentPointer, TheReleaseIsOfferedToTheSurfaceAfterTheRubberRectangle) {
    bool was_pressed = true;
    stage.script.on_event = [&](const std::string& event) {
        if (event == "up") was_pressed = tracker().IsPressed();
    };
    int heard = 0;
    const Listener listener(stage.content,
                            [&](const std::string& what) { heard += what == "up" ? 1 : 0; });
    stage.window.Drag({200, 290}, {210, 290});
    EXPECT_FALSE(was_pressed);
    EXPECT_EQ(heard, 1);
    EXPECT_EQ(stage.Take(), Log({"down root", "up root"}));
}

TEST_F(ContentPointer, AnEnabledRubberRectangleTakesTheDragInPlaceOfTheTracker) {
    stage.content->GetDragTracker()->Enable(false);
    stage.content->GetZoomRect()->Enable(true);
    Press({10, 10});
    EXPECT_EQ(control.GetCaptured(), stage.content->GetZoomRect());
    Press({10, 10});
    EXPECT_TRUE(stage.content->GetZoomRect()->IsPressed());
    Release({10, 10});
    EXPECT_FALSE(stage.content->GetZoomRect()->IsPressed());
}

// ---------------------------------------------------------------------------------------------
// Leaving, and the keyboard

TEST_F(ContentPointer, LeavingTellsWhatWasHoveredOnceAndPaintsEverything) {
    stage.content->NoteHover(stage.a);
    stage.content->NoteHover(stage.ab);
    Log order;
    const Listener listener(stage.content, [&](const std::string& what) {
        if (what == "leave") order = stage.Take();
    });
    stage.content->HandleMouseLeave(stage.content);
    EXPECT_EQ(order, Log({"leave a", "leave ab"}));
    EXPECT_EQ(stage.TakePaint().front(), "fill");
    stage.content->HandleMouseLeave(stage.content);
    EXPECT_EQ(order, Log());
}

TEST_F(ContentPointer, TheAnswersToALeaveAreDropped) {
    stage.script.answers["leave"] = HandlerRepaint;
    stage.content->NoteHover(stage.a);
    stage.content->HandleMouseLeave(stage.content);
    EXPECT_EQ(stage.TakePaint(), Log({"fill", "a", "b", "c", "d", "root", "ab"}));
}

TEST_F(ContentPointer, AHandlerMayDestroyTheViewerWhenThePointerLeaves) {
    stage.content->NoteHover(stage.a);
    stage.content->NoteHover(stage.b);
    stage.script.on_event = [&](const std::string&) {
        delete std::exchange(stage.viewer, nullptr);
    };
    stage.content->HandleMouseLeave(stage.content);
    EXPECT_EQ(stage.Take(), Log({"leave a"}));
    EXPECT_EQ(stage.viewer, nullptr);
}

TEST_F(ContentPointer, AListenerMayDestroyTheViewerWhenThePointerLeaves) {
    const Listener listener(stage.content, [&](const std::string& what) {
        if (what == "leave") delete std::exchange(stage.viewer, nullptr);
    });
    stage.window.Move(10, 10);
    control.MouseLeave();
    EXPECT_EQ(stage.viewer, nullptr);
}

TEST_F(ContentPointer, AnArrowMovesThePictureByFourPixels) {
    stage.viewer->SetScale(2.0);
    const point<double> s = start();
    EXPECT_TRUE(stage.content->HandleKeyDown(0, 37));
    EXPECT_EQ(start(), (point<double>{s.x + 2.0, s.y}));
    EXPECT_TRUE(stage.content->HandleKeyDown(0, 39));
    EXPECT_EQ(start(), s);
    EXPECT_TRUE(stage.content->HandleKeyDown(7, 38));
    EXPECT_EQ(start(), (point<double>{s.x, s.y + 2.0}));
    EXPECT_TRUE(stage.content->HandleKeyDown(0, 40));
    EXPECT_EQ(start(), s);
}

TEST_F(ContentPointer, OtherKeysChangeNothing) {
    const ViewListener listener(*stage.viewer);
    for (const int code : {0, 36, 41, -37}) {
        EXPECT_FALSE(stage.content->HandleKeyDown(0, code)) << code;
    }
    EXPECT_EQ(listener.count, 0);
}

TEST_F(ContentPointer, KeysReachTheSurfaceThatWasPressed) {
    const point<double> s = start();
    EXPECT_FALSE(control.KeyDown(0, 37)) << "nothing has the focus yet";
    stage.window.Click(3, 3);
    EXPECT_TRUE(control.KeyDown(0, 37));
    EXPECT_EQ(start().x, s.x + 4.0);
}

}  // namespace
}  // namespace nodeline::test
