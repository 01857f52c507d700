#include <gtest/gtest.h>
#include <handlers/event_log.h>
#include <nodeline/handlers/handlers.h>

#include <string>
#include <vector>

namespace nodeline::test {
namespace {

// What an operation of a handler is called, how it is called, and what is heard of it.
template <class Handler, class Item>
struct Reaction {
    const char* operation;
    int (*call)(Handler& handler, Item item);
    Log heard;
};

CGraphTooltipEvent question;

const std::vector<Reaction<INodeHandler, Node>> kNodeReactions{
    {"HandleMouseMove",
     [](INodeHandler& h, Node n) { return h.HandleMouseMove(n, 1.5, -2.0, 3, MouseButton::None); },
     {"OnMouseMove item 1.5 -2 3 0"}},
    {"HandleButtonDown",
     [](INodeHandler& h, Node n) { return h.HandleButtonDown(n, 1.5, -2.0, 1, MouseButton::Left); },
     {"OnButtonDown item 1.5 -2 1 1"}},
    {"HandleButtonUp",
     [](INodeHandler& h, Node n) { return h.HandleButtonUp(n, 1.5, -2.0, 2, MouseButton::Right); },
     {"OnButtonUp item 1.5 -2 2 2"}},
    {"HandleClick",
     [](INodeHandler& h, Node n) { return h.HandleClick(n, 1.5, -2.0, 4, MouseButton::Middle); },
     {"OnDoubleClick item 1.5 -2 4 3"}},
    {"HandleDoubleClick",
     [](INodeHandler& h, Node n) { return h.HandleDoubleClick(n, 0.0, 9.0, 0, MouseButton::Left); },
     {"OnDoubleClick item 0 9 0 1"}},
    {"HandleMouseHover",
     [](INodeHandler& h, Node n) { return h.HandleMouseHover(n); },
     {"OnMouseHover item"}},
    {"HandleMouseLeave",
     [](INodeHandler& h, Node n) { return h.HandleMouseLeave(n); },
     {"OnMouseLeave item"}},
    {"HandleOnTooltip",
     [](INodeHandler& h, Node n) { return h.HandleOnTooltip(n, &question); },
     {"OnTooltip item \"asked\""}},
    {"HandleOnTooltipTrack",
     [](INodeHandler& h, Node n) { return h.HandleOnTooltipTrack(n, &question); },
     {"OnTooltipTrack item \"asked\""}},
    {"HandleOnSelectRect",
     [](INodeHandler& h, Node n) {
         return h.HandleOnSelectRect(n, {1.0, 2.0, 3.0, 4.5});
     },
     {"OnSelectRect item 1 2 3 4.5"}},
    {"HandleContextMenu",
     [](INodeHandler& h, Node n) { return h.HandleContextMenu(n, 7.25, 8.0); },
     {"OnContextMenu item 7.25 8"}},
};

const std::vector<Reaction<IEdgeHandler, Edge>> kEdgeReactions{
    {"HandleMouseMove",
     [](IEdgeHandler& h, Edge e) { return h.HandleMouseMove(e, 1.5, -2.0, 3, MouseButton::None); },
     {"OnMouseMove item 1.5 -2 3 0"}},
    {"HandleButtonDown",
     [](IEdgeHandler& h, Edge e) { return h.HandleButtonDown(e, 1.5, -2.0, 1, MouseButton::Left); },
     {"OnButtonDown item 1.5 -2 1 1"}},
    {"HandleButtonUp",
     [](IEdgeHandler& h, Edge e) { return h.HandleButtonUp(e, 1.5, -2.0, 2, MouseButton::Right); },
     {"OnButtonUp item 1.5 -2 2 2"}},
    {"HandleClick",
     [](IEdgeHandler& h, Edge e) { return h.HandleClick(e, 1.5, -2.0, 4, MouseButton::Middle); },
     {"OnDoubleClick item 1.5 -2 4 3"}},
    {"HandleDoubleClick",
     [](IEdgeHandler& h, Edge e) { return h.HandleDoubleClick(e, 0.0, 9.0, 0, MouseButton::Left); },
     {"OnDoubleClick item 0 9 0 1"}},
    {"HandleMouseHover",
     [](IEdgeHandler& h, Edge e) { return h.HandleMouseHover(e); },
     {"OnMouseHover item"}},
    {"HandleMouseLeave",
     [](IEdgeHandler& h, Edge e) { return h.HandleMouseLeave(e); },
     {"OnMouseLeave item"}},
    {"HandleOnTooltip",
     [](IEdgeHandler& h, Edge e) { return h.HandleOnTooltip(e, &question); },
     {"OnTooltip item \"asked\""}},
    {"HandleOnTooltipTrack",
     [](IEdgeHandler& h, Edge e) { return h.HandleOnTooltipTrack(e, &question); },
     {"OnTooltipTrack item \"asked\""}},
};

// Leaves every reaction as the interface has it.
class PlainEdgeHandler : public IEdgeHandler {
public:
    void Draw(Edge /*edge*/, IPainter* /*painter*/) override {}
    [[nodiscard]] double GetWidth(Edge /*edge*/) const override { return 1.0; }
};

class Reactions : public testing::Test {
protected:
    Reactions() {
        node.SetCaption("item");
        edge.SetCaption("item");
        question = CGraphTooltipEvent();
        question.text = "asked";
    }

    template <class Handler, class Item>
    static void ExpectReactions(Handler& handler, Item item,
                                const std::vector<Reaction<Handler, Item>>& reactions) {
        EventLog<Item> log(handler);
        const int condition = item.GetCondition();
        for (const auto& reaction : reactions) {
            EXPECT_EQ(reaction.call(handler, item), HandlerIgnored) << reaction.operation;
            EXPECT_EQ(log.Take(), reaction.heard) << reaction.operation;
            EXPECT_EQ(item.GetCondition(), condition) << reaction.operation;
        }
    }

    graph_ptr2<Graph> graph{new Graph(), true};
    Node node = graph->GetRoot().AddNode();
    Edge edge = node.LinkTo(node);
};

TEST_F(Reactions, OfASimpleNodeHandlerRaiseTheirSignals) {
    SimpleNodeHandler handler;
    ExpectReactions<INodeHandler>(handler, node, kNodeReactions);
}

TEST_F(Reactions, OfADummyNodeHandlerRaiseTheirSignals) {
    DummyNodeHandler handler;
    ExpectReactions<INodeHandler>(handler, node, kNodeReactions);
}

TEST_F(Reactions, OfAPlainEdgeHandlerRaiseTheirSignals) {
    PlainEdgeHandler handler;
    ExpectReactions<IEdgeHandler>(handler, edge, kEdgeReactions);
}

TEST_F(Reactions, WithoutListenersAnswerZeroAndDoNothing) {
    SimpleNodeHandler boxes;
    PlainEdgeHandler lines;
    for (const auto& reaction : kNodeReactions) {
        EXPECT_EQ(reaction.call(boxes, node), 0) << reaction.operation;
    }
    for (const auto& reaction : kEdgeReactions) {
        EXPECT_EQ(reaction.call(lines, edge), 0) << reaction.operation;
    }
    EXPECT_EQ(node.GetCondition(), 0);
    EXPECT_EQ(edge.GetCondition(), 0);
    EXPECT_EQ(question.text, "asked");
    EXPECT_EQ(question.trackRect, rectangle<double>());
}

TEST_F(Reactions, ToAClickAndADoubleClickAreBothHeardAsADoubleClick) {
    SimpleNodeHandler handler;
    EventLog<Node> log(handler);
    handler.HandleClick(node, 1.0, 2.0, 0, MouseButton::Left);
    handler.HandleDoubleClick(node, 3.0, 4.0, 0, MouseButton::Left);
    EXPECT_EQ(log.Take(), (Log{"OnDoubleClick item 1 2 0 1", "OnDoubleClick item 3 4 0 1"}));
}

TEST_F(Reactions, PassTheTooltipEventOfTheCallerOn) {
    class Answer : public subscriber_base_t {
    public:
        void Fill(Node& /*node*/, CGraphTooltipEvent* event) { event->text = "answered"; }
    };
    SimpleNodeHandler handler;
    Answer answer;
    handler.OnTooltip.connect(&answer, &Answer::Fill);
    EXPECT_EQ(handler.HandleOnTooltip(node, &question), 0);
    EXPECT_EQ(question.text, "answered");
}

TEST_F(Reactions, GiveAllSlotsOneCopyOfTheNode) {
    class Exchange : public subscriber_base_t {
    public:
        explicit Exchange(Node other) : other_(other) {}
        void Put(Node& node) { node = other_; }

    private:
        Node other_;
    };
    Node other = graph->GetRoot().AddNode();
    other.SetCaption("other");
    SimpleNodeHandler handler;
    Exchange exchange(other);
    handler.OnMouseHover.connect(&exchange, &Exchange::Put);
    EventLog<Node> log(handler);
    handler.HandleMouseHover(node);
    EXPECT_EQ(log.Take(), (Log{"OnMouseHover other"}));
    EXPECT_EQ(node.GetCaption(), "item");
}

TEST(StockNodeHandlers, NeedRecursiveProcessing) {
    SimpleNodeHandler boxes;
    DummyNodeHandler bare;
    EXPECT_TRUE(boxes.IsRecursiveProcessingNeeded());
    EXPECT_TRUE(bare.IsRecursiveProcessingNeeded());
}

TEST(TooltipEvent, StartsEmptyWithTheHostsFontAndColours) {
    const CGraphTooltipEvent event;
    EXPECT_EQ(event.pos, (point<double>{0.0, 0.0}));
    EXPECT_EQ(event.trackRect, rectangle<double>());
    EXPECT_EQ(event.tipRect, rectangle<double>());
    EXPECT_TRUE(event.text.empty());
    EXPECT_EQ(event.style, 0);
    EXPECT_EQ(event.textColor, paintcore::_color());
    EXPECT_EQ(event.backColor.flag, 1);
    EXPECT_EQ(event.font, (paintcore::font{"", 4, 0, 0, 0, 1.0}));
}

TEST(HandlerResult, KeepsItsRangesWhenAnswersAreJoined) {
    EXPECT_EQ(HandlerDone | HandlerRepaint, 3);
    EXPECT_LT(HandlerDone, HandlerRepaint);
    EXPECT_LT(HandlerDone | HandlerRepaint, HandlerRecalculate);
}

}  // namespace
}  // namespace nodeline::test
