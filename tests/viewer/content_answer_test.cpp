#include <gtest/gtest.h>

#include <stdexcept>

#include "viewer/stage.h"

namespace nodeline::test {
namespace {

// An event, as the window delivers it, and how it is played.
struct Reaction {
    std::string event;
    std::function<bool(Stage&, point<int>)> act;
};

bool ActPress(Stage& stage, point<int> p) {
    return stage.content->HandleButtonDown(p.x, p.y, 0, MouseButton::Left);
}
bool ActRelease(Stage& stage, point<int> p) {
    return stage.content->HandleButtonUp(p.x, p.y, 0, MouseButton::Left);
}
// Only a release on the node of a press is a click.
bool ActClick(Stage& stage, point<int> p) {
    ActPress(stage, p);
    return ActRelease(stage, p);
}
bool ActDoubleClick(Stage& stage, point<int> p) {
    return stage.content->HandleDoubleClick(p.x, p.y, 0, MouseButton::Left);
}
bool ActContextMenu(Stage& stage, point<int> p) {
    return stage.content->HandleContextMenu(p.x, p.y);
}

class ContentAnswer : public testing::TestWithParam<Reaction> {
protected:
    // Plays the event on node a with that answer, without a paint.
    bool Act(int answer) {
        const point<int> p = stage.PixelOf(stage.a);
        stage.script.answers[GetParam().event] = answer;
        stage.Take();
        return GetParam().act(stage, p);
    }
    // How often the view has been told of, without the two of a release that keeps its place.
    int Renewals(int answer) {
        const ViewListener listener(*stage.viewer);
        Act(answer);
        const bool is_release = GetParam().event == "up" || GetParam().event == "click";
        return listener.count - (is_release ? 2 : 0);
    }

    Stage stage;
};

TEST_P(ContentAnswer, ZeroIsNotUsedUpAndChangesNothing) {
    EXPECT_FALSE(Act(0));
    EXPECT_EQ(Renewals(0), 0);
    EXPECT_EQ(stage.TakePaint(), Log());
}

TEST_P(ContentAnswer, OneIsUsedUpAndChangesNothing) {
    EXPECT_TRUE(Act(1));
    EXPECT_EQ(Renewals(1), 0);
    EXPECT_EQ(stage.TakePaint(), Log());
}

TEST_P(ContentAnswer, TwoPaintsTheNodeAlone) {
    EXPECT_TRUE(Act(2));
    EXPECT_EQ(stage.TakePaint(), Log({"a", "ab"}));
    EXPECT_EQ(Renewals(2), 1);
}

TEST_P(ContentAnswer, ThreeAsksForAPaintAndNoNode) {
    EXPECT_TRUE(Act(3));
    EXPECT_TRUE(stage.window.GetControl().IsPaintPending());
    EXPECT_EQ(stage.TakePaint(), Log());
    EXPECT_EQ(Renewals(3), 1);
}

TEST_P(ContentAnswer, FourAndMorePaintEverythingOnce) {
    for (const int answer : {4, 5, 100}) {
        Act(2);
        EXPECT_TRUE(Act(answer));
        EXPECT_EQ(stage.TakePaint(), Log({"fill", "a", "b", "c", "d", "root", "ab"}));
        EXPECT_EQ(Renewals(answer), 1);
        stage.TakePaint();
    }
}

TEST_P(ContentAnswer, BelowZeroIsUsedUpAndChangesNothing) {
    EXPECT_TRUE(Act(-1));
    EXPECT_EQ(stage.TakePaint(), Log());
}

TEST_P(ContentAnswer, ListenersHearOfTheEventAfterTheHandlerAndBeforeTheRepaint) {
    const std::string signal = GetParam().event == "click" ? "up" : GetParam().event;
    Log order;
    std::vector<bool> pending;
    Listener listener(stage.content, [&](const std::string& what) {
        if (what != signal) return;
        order = stage.Take();
        pending.push_back(stage.window.GetControl().IsPaintPending());
    });
    // The press of a click asks for a paint of the rubber rectangle.
    const bool is_pressed = GetParam().event == "click";
    Act(2);
    ASSERT_FALSE(order.empty());
    EXPECT_EQ(order.back(), GetParam().event + " a");
    EXPECT_EQ(pending, std::vector<bool>({is_pressed}));
    EXPECT_TRUE(stage.window.GetControl().IsPaintPending());
    EXPECT_EQ(listener.element, stage.content);
}

TEST_P(ContentAnswer, AHandlerMayDestroyTheViewer) {
    const point<int> p = stage.PixelOf(stage.a);
    stage.script.on_event = [&](const std::string& event) {
        if (event == GetParam().event) delete std::exchange(stage.viewer, nullptr);
    };
    EXPECT_TRUE(GetParam().act(stage, p));
    EXPECT_EQ(stage.viewer, nullptr);
}

TEST_P(ContentAnswer, AListenerMayDestroyTheViewer) {
    const point<int> p = stage.PixelOf(stage.a);
    const std::string signal = GetParam().event == "click" ? "up" : GetParam().event;
    const Listener listener(stage.content, [&](const std::string& what) {
        if (what == signal) delete std::exchange(stage.viewer, nullptr);
    });
    EXPECT_TRUE(GetParam().act(stage, p));
    EXPECT_EQ(stage.viewer, nullptr);
}

TEST_P(ContentAnswer, ASlotOfTheViewMayDestroyTheViewer) {
    const point<int> p = stage.PixelOf(stage.a);
    stage.script.answers[GetParam().event] = HandlerRecalculate;
    const ViewListener listener(*stage.viewer,
                                [&] { delete std::exchange(stage.viewer, nullptr); });
    EXPECT_TRUE(GetParam().act(stage, p));
    EXPECT_EQ(stage.viewer, nullptr);
    EXPECT_EQ(listener.count, 1);
}

TEST_P(ContentAnswer, AHandlerThatThrowsIsHeardByTheCaller) {
    const point<int> p = stage.PixelOf(stage.a);
    stage.script.on_event = [&](const std::string& event) {
        if (event == GetParam().event) throw std::runtime_error(event);
    };
    EXPECT_THROW(GetParam().act(stage, p), std::runtime_error);
}

INSTANTIATE_TEST_SUITE_P(Events, ContentAnswer,
                         testing::Values(Reaction{"down", ActPress}, Reaction{"up", ActRelease},
                                         Reaction{"click", ActClick},
                                         Reaction{"double", ActDoubleClick},
                                         Reaction{"context", ActContextMenu}),
                         [](const testing::TestParamInfo<Reaction>& i) { return i.param.event; });

}  // namespace
}  // namespace nodeline::test
