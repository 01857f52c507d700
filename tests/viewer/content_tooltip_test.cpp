#include <gtest/gtest.h>

#include <algorithm>

#include "viewer/stage.h"

namespace nodeline::test {
namespace {

class ContentTooltip : public testing::TestWithParam<bool> {
protected:
    // Asks for a tooltip at a pixel, or while it is tracked.
    bool Ask(const point<int>& p) {
        event.pos = p;
        return GetParam() ? stage.content->HandleOnTooltipTrack(&event)
                          : stage.content->HandleOnTooltip(&event);
    }
    [[nodiscard]] std::string Named(const std::string& tip) const {
        return GetParam() ? (tip == "tooltip" ? "track" : "edge track") : tip;
    }
    // A pixel on the edge, away from its ends.
    [[nodiscard]] point<int> PixelOfEdge() const {
        const point<int> a = stage.PixelOf(stage.a);
        const point<int> b = stage.PixelOf(stage.b);
        return {(a.x + b.x) / 2, (a.y + b.y) / 2};
    }

    Stage stage;
    CTooltipEvent event;
};

TEST_P(ContentTooltip, ANodeIsAskedInItsOwnCoordinates) {
    stage.viewer->SetScale(2.0);
    stage.script.answers[Named("tooltip")] = HandlerDone;
    event.trackRect = {2, 4, 6, 8};
    event.text = "before";
    event.style = 5;
    event.textColor = paintcore::_color(1, 2, 3);
    event.font.size = 9;
    const point<int> p = stage.PixelOf(stage.a);
    EXPECT_TRUE(Ask(p));
    EXPECT_EQ(stage.Take(), Log({Named("tooltip") + " a"}));
    const CGraphTooltipEvent& asked = stage.script.asked;
    EXPECT_EQ(asked.pos, stage.content->ConvertP2L(p));
    const point<double> corner = stage.content->ConvertP2L({2, 4});
    EXPECT_EQ(asked.trackRect,
              (rectangle<double>{corner.x, corner.y, corner.x + 2.0, corner.y + 2.0}));
    EXPECT_EQ(asked.text, "before");
    EXPECT_EQ(asked.style, 5);
    EXPECT_EQ(asked.textColor, paintcore::_color(1, 2, 3));
    EXPECT_EQ(asked.font.size, 9);
}

TEST_P(ContentTooltip, TheAnswerComesBackInPixelsWithSortedCorners) {
    stage.viewer->SetScale(2.0);
    stage.script.answers[Named("tooltip")] = HandlerDone;
    const point<double> from = stage.content->ConvertP2L({10, 20});
    const point<double> to = stage.content->ConvertP2L({30, 50});
    CGraphTooltipEvent& reply = stage.script.replied;
    reply.pos = from;
    reply.trackRect = {to.x, to.y, from.x, from.y};
    reply.tipRect = {from.x, to.y, to.x, from.y};
    reply.text = "tip";
    reply.style = 7;
    reply.backColor = paintcore::_color(4, 5, 6);
    reply.font.face = "Sans";
    EXPECT_TRUE(Ask(stage.PixelOf(stage.a)));
    EXPECT_EQ(event.pos, (point<int>{10, 20}));
    EXPECT_EQ(event.trackRect, (rectangle<int>{10, 20, 30, 50}));
    EXPECT_EQ(event.tipRect, (rectangle<int>{10, 20, 30, 50}));
    EXPECT_EQ(event.text, "tip");
    EXPECT_EQ(event.style, 7);
    EXPECT_EQ(event.backColor, paintcore::_color(4, 5, 6));
    EXPECT_EQ(event.font.face, "Sans");
}

TEST_P(ContentTooltip, AnEdgeIsAskedWhenTheNodeDeclines) {
    stage.script.answers[Named("edge tooltip")] = HandlerDone;
    EXPECT_TRUE(Ask(PixelOfEdge()));
    EXPECT_EQ(stage.Take(), Log({Named("tooltip") + " root", Named("edge tooltip") + " ab"}));
}

TEST_P(ContentTooltip, TheEdgeGetsAFreshEventAndTheWindowWhatItWrote) {
    stage.script.answers[Named("edge tooltip")] = HandlerDone;
    stage.script.replied.text = "of the edge";
    stage.script.replied.style = 3;
    EXPECT_TRUE(Ask(PixelOfEdge()));
    // What the node wrote has come back into the window's event, and goes on from there.
    EXPECT_EQ(stage.script.asked.text, "of the edge");
    EXPECT_EQ(event.text, "of the edge");
    EXPECT_EQ(event.style, 3);
}

TEST_P(ContentTooltip, ANodeThatAnswersKeepsTheEdgeFromBeingAsked) {
    stage.script.answers[Named("tooltip")] = HandlerDone;
    EXPECT_TRUE(Ask(PixelOfEdge()));
    EXPECT_EQ(stage.Take(), Log({Named("tooltip") + " root"}));
}

TEST_P(ContentTooltip, NobodyAnswersWhereThereIsNothing) {
    EXPECT_FALSE(Ask(stage.PixelBeside()));
    EXPECT_EQ(stage.Take(), Log({Named("tooltip") + " root"}));
    EXPECT_EQ(event.text, "");
}

TEST_P(ContentTooltip, ListenersOfTheElementHearOfItAfterTheHandlers) {
    Log order;
    Listener listener(stage.content, [&](const std::string& what) {
        order = stage.Take();
        order.push_back(what);
    });
    Ask(PixelOfEdge());
    EXPECT_EQ(order,
              Log({Named("tooltip") + " root", Named("edge tooltip") + " ab", Named("tooltip")}));
    EXPECT_EQ(listener.element, stage.content);
}

TEST_P(ContentTooltip, TheAnswerDecidesAboutTheRepaint) {
    stage.script.answers[Named("tooltip")] = HandlerRecalculate;
    EXPECT_TRUE(Ask(stage.PixelOf(stage.a)));
    EXPECT_EQ(stage.TakePaint().front(), "fill");
    stage.script.answers[Named("tooltip")] = HandlerRepaint;
    EXPECT_TRUE(Ask(stage.PixelOf(stage.a)));
    EXPECT_TRUE(stage.window.GetControl().IsPaintPending());
    EXPECT_EQ(stage.TakePaint(), Log());
}

TEST_P(ContentTooltip, AHandlerMayDestroyTheViewer) {
    for (const std::string dies_in : {"tooltip", "edge tooltip"}) {
        Stage own;
        const point<int> a = own.PixelOf(own.a);
        const point<int> b = own.PixelOf(own.b);
        own.script.on_event = [&](const std::string& what) {
            if (what == Named(dies_in)) delete std::exchange(own.viewer, nullptr);
        };
        event.pos = {(a.x + b.x) / 2, (a.y + b.y) / 2};
        EXPECT_TRUE(GetParam() ? own.content->HandleOnTooltipTrack(&event)
                               : own.content->HandleOnTooltip(&event));
        EXPECT_EQ(own.viewer, nullptr) << dies_in;
    }
}

TEST_P(ContentTooltip, AListenerMayDestroyTheViewer) {
    const Listener listener(stage.content, [&](const std::string& what) {
        if (what == Named("tooltip")) delete std::exchange(stage.viewer, nullptr);
    });
    EXPECT_TRUE(Ask(stage.PixelOf(stage.a)));
    EXPECT_EQ(stage.viewer, nullptr);
}

INSTANTIATE_TEST_SUITE_P(TooltipAndTrack, ContentTooltip, testing::Bool());

}  // namespace
}  // namespace nodeline::test
