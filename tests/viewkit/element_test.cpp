#include <gtest/gtest.h>

#include "logging_element.h"

namespace viewkit {
namespace {

using nodeline::headless::HeadlessWindow;

class Box : public CVisualElement {
public:
    Box(CVisualElement* parent, const size<int>& initial, Alignment alignment)
        : CVisualElement(parent, initial, alignment) {}

    std::vector<CVisualElement*> former_parents;
    int overlays = 0;
    void DrawOverlay(IPainter*) override { ++overlays; }

protected:
    void ChangeParent(CVisualElement* old) override { former_parents.push_back(old); }
};

TEST(Element, DockedChildrenTakeStripsAndTheClientGetsTheRest) {
    HeadlessWindow window({200, 100});
    auto* top = new Box(window.GetRoot(), {1, 10}, Alignment::Top);
    auto* client = new Box(window.GetRoot(), {1, 1}, Alignment::Client);
    auto* left = new Box(window.GetRoot(), {20, 1}, Alignment::Left);
    auto* bottom = new Box(window.GetRoot(), {1, 30}, Alignment::Bottom);
    auto* right = new Box(window.GetRoot(), {40, 1}, Alignment::Right);
    auto* free = new Box(window.GetRoot(), {5, 6}, Alignment::None);
    EXPECT_EQ(top->GetBounds(), (rectangle<int>{0, 0, 200, 10}));
    EXPECT_EQ(left->GetBounds(), (rectangle<int>{0, 10, 20, 100}));
    EXPECT_EQ(bottom->GetBounds(), (rectangle<int>{20, 70, 200, 100}));
    EXPECT_EQ(right->GetBounds(), (rectangle<int>{160, 10, 200, 70}));
    EXPECT_EQ(client->GetBounds(), (rectangle<int>{20, 10, 160, 70}));
    EXPECT_EQ(free->GetBounds(), (rectangle<int>{0, 0, 5, 6}));
}

TEST(Element, AHiddenChildLeavesItsStripToTheOthers) {
    HeadlessWindow window({200, 100});
    auto* left = new Box(window.GetRoot(), {20, 1}, Alignment::Left);
    auto* client = new Box(window.GetRoot(), {1, 1}, Alignment::Client);
    left->SetVisible(false);
    EXPECT_EQ(client->GetBounds(), (rectangle<int>{0, 0, 200, 100}));
    left->SetVisible(true);
    EXPECT_EQ(client->GetBounds(), (rectangle<int>{20, 0, 200, 100}));
}

TEST(Element, AResizeOfTheWindowPlacesAnew) {
    HeadlessWindow window({200, 100});
    auto* client = new Box(window.GetRoot(), {1, 1}, Alignment::Client);
    auto* inner = new Box(client, {7, 7}, Alignment::Right);
    window.Resize({300, 50});
    EXPECT_EQ(client->GetBounds(), (rectangle<int>{0, 0, 300, 50}));
    EXPECT_EQ(inner->GetBounds(), (rectangle<int>{293, 0, 300, 50}));
    EXPECT_EQ(inner->GetContentRect(), (rectangle<int>{0, 0, 7, 50}));
    EXPECT_EQ(inner->GetWindowOrigin(), (point<int>{293, 0}));
}

TEST(Element, AStripThatIsWiderThanTheRestIsCutOff) {
    HeadlessWindow window({50, 50});
    auto* left = new Box(window.GetRoot(), {80, 1}, Alignment::Left);
    auto* client = new Box(window.GetRoot(), {1, 1}, Alignment::Client);
    EXPECT_EQ(left->GetBounds(), (rectangle<int>{0, 0, 50, 50}));
    EXPECT_EQ(client->GetBounds(), (rectangle<int>{50, 0, 50, 50}));
}

TEST(Element, MovesToAnotherParentAndTellsOfTheOldOne) {
    HeadlessWindow window({200, 100});
    auto* a = new Box(window.GetRoot(), {100, 1}, Alignment::Left);
    auto* b = new Box(window.GetRoot(), {100, 1}, Alignment::Left);
    auto* child = new Box(a, {1, 1}, Alignment::Client);
    child->SetParent(b);
    EXPECT_EQ(child->GetParent(), b);
    EXPECT_TRUE(a->GetChildren().empty());
    EXPECT_EQ(child->former_parents, (std::vector<CVisualElement*>{a}));
    child->SetParent(nullptr);
    EXPECT_EQ(child->GetControl(), nullptr);
    EXPECT_EQ(child->former_parents, (std::vector<CVisualElement*>{a, b}));
    delete child;
}

TEST(Element, DoesNotMoveIntoItself) {
    HeadlessWindow window({200, 100});
    auto* a = new Box(window.GetRoot(), {100, 1}, Alignment::Left);
    auto* child = new Box(a, {1, 1}, Alignment::Client);
    a->SetParent(child);
    a->SetParent(a);
    EXPECT_EQ(a->GetParent(), window.GetRoot());
    EXPECT_EQ(child->GetParent(), a);
}

TEST(Element, WorksWithoutAWindow) {
    Box box(nullptr, {10, 10}, Alignment::None);
    box.Invalidate();
    box.OnChange(&box, UpdateType::Content);
    box.CaptureMouse();
    box.SetFocus();
    EXPECT_FALSE(box.HasCapture());
    EXPECT_FALSE(box.HasFocus());
    EXPECT_EQ(box.GetControl(), nullptr);
}

TEST(Element, WhatLeavesTheTreeLosesCaptureAndFocus) {
    HeadlessWindow window({200, 100});
    auto* box = new Box(window.GetRoot(), {1, 1}, Alignment::Client);
    box->CaptureMouse();
    box->SetFocus();
    delete box;
    EXPECT_EQ(window.GetControl().GetCaptured(), nullptr);
    EXPECT_EQ(window.GetControl().GetFocused(), nullptr);
}

TEST(Paint, HappensOnceForAllRequestsAndThenNoMore) {
    Log log;
    HeadlessWindow window({200, 100});
    auto* box = new LoggingElement(window.GetRoot(), "box", &log, {0, 0, 10, 10});
    EXPECT_TRUE(window.PaintPending());
    EXPECT_FALSE(window.PaintPending());
    EXPECT_EQ(Take(log), (Log{"box draw"}));
    box->OnChange(box, UpdateType::Content);
    box->OnChange(box, UpdateType::Content);
    EXPECT_TRUE(window.PaintPending());
    EXPECT_FALSE(window.PaintPending());
    EXPECT_EQ(Take(log), (Log{"box draw-valid"}));
    box->Invalidate();
    EXPECT_TRUE(window.PaintPending());
    EXPECT_EQ(Take(log), (Log{"box draw"}));
    EXPECT_EQ(window.GetPaintCount(), 3);
}

TEST(Paint, GoesFromParentsToChildrenAndDrawsAgainWhatWasPaintedOver) {
    Log log;
    HeadlessWindow window({200, 100});
    auto* outer = new LoggingElement(window.GetRoot(), "outer", &log, {0, 0, 90, 90});
    auto* inner = new LoggingElement(outer, "inner", &log, {10, 10, 20, 20});
    window.PaintPending();
    EXPECT_EQ(Take(log), (Log{"outer draw", "inner draw"}));
    inner->Invalidate();
    window.PaintPending();
    EXPECT_EQ(Take(log), (Log{"outer draw-valid", "inner draw"}));
    outer->Invalidate();
    window.PaintPending();
    EXPECT_EQ(Take(log), (Log{"outer draw", "inner draw"}));
}

TEST(Paint, ARequestBeforeTheElementsTurnIsMetByTheSamePaint) {
    Log log;
    HeadlessWindow window({200, 100});
    auto* first = new LoggingElement(window.GetRoot(), "first", &log, {0, 0, 10, 10});
    auto* second = new LoggingElement(window.GetRoot(), "second", &log, {10, 0, 20, 10});
    window.PaintPending();
    Take(log);
    first->on_event = [second](const std::string&) { second->Invalidate(); };
    first->Invalidate();
    window.PaintPending();
    EXPECT_EQ(Take(log), (Log{"first draw", "second draw"}));
    EXPECT_FALSE(window.GetControl().IsPaintPending());
}

TEST(Paint, ARequestAfterTheElementsTurnWaitsForTheNextPaint) {
    Log log;
    HeadlessWindow window({200, 100});
    auto* first = new LoggingElement(window.GetRoot(), "first", &log, {0, 0, 10, 10});
    auto* second = new LoggingElement(window.GetRoot(), "second", &log, {10, 0, 20, 10});
    window.PaintPending();
    Take(log);
    bool once = true;
    second->on_event = [&](const std::string&) {
        if (std::exchange(once, false)) first->Invalidate();
    };
    second->Invalidate();
    window.PaintPending();
    EXPECT_EQ(Take(log), (Log{"first draw-valid", "second draw"}));
    EXPECT_TRUE(window.PaintPending());
    EXPECT_EQ(Take(log), (Log{"first draw", "second draw-valid"}));
}

TEST(Paint, WithinAPaintOnlyAsksForAnother) {
    Log log;
    HeadlessWindow window({200, 100});
    auto* box = new LoggingElement(window.GetRoot(), "box", &log, {0, 0, 10, 10});
    bool once = true;
    box->on_event = [&](const std::string&) {
        if (std::exchange(once, false)) window.Repaint(window.GetRect());
    };
    window.PaintPending();
    EXPECT_EQ(window.GetPaintCount(), 1);
    EXPECT_TRUE(window.PaintPending());
    EXPECT_EQ(Take(log), (Log{"box draw", "box draw-valid"}));
}

TEST(Paint, AnExceptionOfAnElementReachesTheHostAndTheNextPaintWorks) {
    Log log;
    HeadlessWindow window({200, 100});
    auto* box = new LoggingElement(window.GetRoot(), "box", &log, {0, 0, 10, 10});
    box->on_event = [](const std::string&) { throw std::string("torn"); };
    EXPECT_THROW(window.PaintPending(), std::string);
    box->on_event = nullptr;
    box->Invalidate();
    EXPECT_TRUE(window.PaintPending());
    EXPECT_EQ(Take(log), (Log{"box draw", "box draw"}));
}

TEST(Paint, APictureDrawsEverythingAndLeavesTheStateAlone) {
    Log log;
    HeadlessWindow window({200, 100});
    auto* box = new LoggingElement(window.GetRoot(), "box", &log, {0, 0, 10, 10});
    window.PaintPending();
    Take(log);
    nodeline::headless::RecordingPainter picture;
    window.GetControl().DrawPicture(&picture);
    EXPECT_EQ(Take(log), (Log{"box draw"}));
    EXPECT_FALSE(window.GetControl().IsPaintPending());
    box->OnChange(box, UpdateType::Content);
    window.PaintPending();
    EXPECT_EQ(Take(log), (Log{"box draw-valid"}));
}

TEST(Paint, OverlaysAreNoPartOfIt) {
    HeadlessWindow window({200, 100});
    auto* box = new Box(window.GetRoot(), {1, 1}, Alignment::Client);
    window.PaintPending();
    EXPECT_EQ(box->overlays, 0);
    nodeline::headless::RecordingPainter screen;
    window.GetControl().DrawOverlays(&screen);
    EXPECT_EQ(box->overlays, 1);
}

// Fills its area, and tries to reach beyond.
class Filler : public CVisualElement {
public:
    Filler(CVisualElement* parent, const rectangle<int>& where)
        : CVisualElement(parent, {0, 0}, Alignment::None) {
        SetPos(where, true);
    }
    void DrawContent(IPainter* painter) override {
        painter->SetClipRect(-50.0, -50.0, 50.0, 50.0, false);
        const CoordInfo twice{{0.0, 0.0}, {1.0, 1.0}, {0, 0}, {2, 2}};
        painter->SetCoordSystem(paintcore::MapMode::Rectangle, &twice);
        painter->FillRect(1.0, 1.0, 2.0, 2.0);
        painter->ResetClip();
        drawn = painter->GetPaintRect();
    }
    rectangle<double> drawn;
};

TEST(Paint, AnElementDrawsInItsOwnPixelsAndNotBeyond) {
    HeadlessWindow window({200, 100});
    auto* filler = new Filler(window.GetRoot(), {30, 40, 50, 60});
    window.PaintPending();
    const std::vector<std::string>& lines = window.GetRecorder().GetLines();
    const auto has = [&lines](const std::string& line) {
        return std::find(lines.begin(), lines.end(), line) != lines.end();
    };
    // The clip that was asked for, as far as it lies in the element.
    EXPECT_TRUE(has("SetClipRect 0 0 20 20 0"));
    EXPECT_TRUE(has("SetCoordSystem 3 0 0 1 1 30 40 2 2"));
    EXPECT_TRUE(has("FillRect 1 1 2 2"));
    // A clip that is taken away leaves that of the element, here in its coordinates.
    EXPECT_TRUE(has("SetClipRect 0 0 10 10 0"));
    EXPECT_EQ(filler->drawn, (rectangle<double>{0.0, 0.0, 10.0, 10.0}));
}

}  // namespace
}  // namespace viewkit
