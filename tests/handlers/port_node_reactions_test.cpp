#include <gtest/gtest.h>
#include <handlers/event_log.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/ops/graph_ops.h>

#include <string>
#include <vector>

namespace nodeline::test {
namespace {

// Writes down which nodes it is asked to arrange.
class LayoutLog : public ILayout {
public:
    void Make(Node owner) override { Write("make", owner); }
    void Update(Node owner) override { Write("update", owner); }
    void Resize(Node owner) override { Write("resize", owner); }

    std::vector<std::string> lines;

private:
    void Write(const std::string& work, const Node& owner) {
        lines.push_back(work + " " + owner.GetCaption());
    }
};

// A node 100 wide and 10 high inside a frame, with three parents and three children.
class PortReactions : public testing::Test {
protected:
    PortReactions() {
        graph->SetDefaultLayout(graph_ptr2<ILayout>(&layout, false));
        frame.SetCaption("frame");
        node.SetCaption("item");
        node.SetSize({100.0, 10.0});
        for (int i = 0; i < 3; ++i) {
            parents.push_back(frame.AddNode());
            parents.back().LinkTo(node);
            children.push_back(frame.AddNode());
            node.LinkTo(children.back());
        }
        graph->RecalculateLayout(nullptr);
        layout.lines.clear();
    }

    int Click(double x, MouseButton button = MouseButton::Left) {
        return handler.HandleClick(node, x, 5.0, 0, button);
    }
    int Press(Node pressed, double x) {
        return handler.HandleButtonDown(pressed, x, 5.0, 0, MouseButton::Left);
    }
    int Release(Node released) {
        return handler.HandleButtonUp(released, kLeft, 5.0, 0, MouseButton::Left);
    }
    static int CountHidden(const std::vector<Node>& nodes) {
        int count = 0;
        for (const Node& neighbour : nodes) count += IsFlagSet(neighbour, NodeHidden) ? 1 : 0;
        return count;
    }
    static void HideFirst(const std::vector<Node>& nodes, int count) {
        int left = count;
        for (const Node& neighbour : nodes) SetFlag(neighbour, NodeHidden, left-- > 0);
    }
    // The work that was asked for since the last call.
    std::vector<std::string> Work() {
        graph->RecalculateLayout(nullptr);
        return std::exchange(layout.lines, {});
    }

    static constexpr double kLeft = 5.0;
    static constexpr double kMiddle = 50.0;
    static constexpr double kRight = 95.0;
    const std::vector<std::string> kUpdate{"update frame", "resize "};

    LayoutLog layout;
    graph_ptr2<Graph> graph{new Graph(), true};
    Node frame = graph->GetRoot().AddNode();
    Node node = frame.AddNode();
    std::vector<Node> parents;
    std::vector<Node> children;
    PortNodeHandler handler;
};

TEST_F(PortReactions, ToAClickOnAPortFoldASideInFullViewAndUnfoldAnyOther) {
    struct Case {
        int hidden_before;
        int hidden_after;
    };
    for (const Case& c : {Case{0, 3}, {1, 0}, {2, 0}, {3, 0}}) {
        HideFirst(parents, c.hidden_before);
        EXPECT_EQ(Click(kLeft), HandlerRecalculate);
        EXPECT_EQ(CountHidden(parents), c.hidden_after) << c.hidden_before;
        EXPECT_EQ(CountHidden(children), 0);
        EXPECT_EQ(Work(), kUpdate);
        HideFirst(parents, 0);

        HideFirst(children, c.hidden_before);
        EXPECT_EQ(Click(kRight), HandlerRecalculate);
        EXPECT_EQ(CountHidden(children), c.hidden_after) << c.hidden_before;
        EXPECT_EQ(CountHidden(parents), 0);
        EXPECT_EQ(Work(), kUpdate);
        HideFirst(children, 0);
    }
    EXPECT_FALSE(IsFlagSet(node, NodeSelected));
}

TEST_F(PortReactions, ToAnUnfoldMarkWhatItBringsBackAsNew) {
    HideFirst(children, 1);
    Click(kRight);
    EXPECT_TRUE(IsFlagSet(children[0], NodeNew));
    EXPECT_FALSE(IsFlagSet(children[1], NodeNew));
}

TEST_F(PortReactions, ToAClickBetweenThePortsSelectAndTakeItBack) {
    EXPECT_EQ(Click(kMiddle), HandlerRecalculate);
    EXPECT_TRUE(IsFlagSet(node, NodeSelected));
    EXPECT_EQ(Click(kMiddle), HandlerRecalculate);
    EXPECT_FALSE(IsFlagSet(node, NodeSelected));
    EXPECT_EQ(Work(), std::vector<std::string>());
}

TEST_F(PortReactions, ToAClickWhereNoPortIsSelect) {
    Node first = parents.front();
    first.SetSize({100.0, 10.0});
    EXPECT_EQ(handler.HandleClick(first, kLeft, 5.0, 0, MouseButton::Left), HandlerRecalculate);
    EXPECT_TRUE(IsFlagSet(first, NodeSelected));
    Node last = children.front();
    last.SetSize({100.0, 10.0});
    EXPECT_EQ(handler.HandleClick(last, kRight, 5.0, 0, MouseButton::Left), HandlerRecalculate);
    EXPECT_TRUE(IsFlagSet(last, NodeSelected));
    EXPECT_EQ(Work(), std::vector<std::string>());
}

TEST_F(PortReactions, ToAClickOnBothPortsTakeTheLeftOne) {
    node.SetSize({15.0, 10.0});
    Click(7.0);
    EXPECT_EQ(CountHidden(parents), 3);
    EXPECT_EQ(CountHidden(children), 0);
}

TEST_F(PortReactions, ToAClickOnBothPortsTakeTheRightOneWithoutParents) {
    Node first = parents.front();
    first.SetSize({15.0, 10.0});
    handler.HandleClick(first, 7.0, 5.0, 0, MouseButton::Left);
    EXPECT_TRUE(IsFlagSet(node, NodeHidden));
    EXPECT_FALSE(IsFlagSet(first, NodeSelected));
}

TEST_F(PortReactions, ToAClickWithAnotherButtonAreOnlyHeard) {
    EventLog<Node> log(handler);
    for (const MouseButton button : {MouseButton::None, MouseButton::Right, MouseButton::Middle}) {
        for (const double x : {kLeft, kMiddle, kRight}) EXPECT_EQ(Click(x, button), HandlerIgnored);
        EXPECT_EQ(log.Take().size(), 3U);
    }
    EXPECT_EQ(CountHidden(parents) + CountHidden(children), 0);
    EXPECT_FALSE(IsFlagSet(node, NodeSelected));
    EXPECT_EQ(Work(), std::vector<std::string>());
}

TEST_F(PortReactions, ToAClickOnAnOwnerAreOnlyHeard) {
    node.AddNode();
    EventLog<Node> log(handler);
    for (const double x : {kLeft, kMiddle, kRight}) EXPECT_EQ(Click(x), HandlerIgnored);
    EXPECT_EQ(log.Take(),
              (Log{"OnClick item 5 5 0 1", "OnClick item 50 5 0 1", "OnClick item 95 5 0 1"}));
    EXPECT_EQ(CountHidden(parents) + CountHidden(children), 0);
    EXPECT_FALSE(IsFlagSet(node, NodeSelected));
}

TEST_F(PortReactions, ToAClickOnASelfLoopHideTheNodeItself) {
    Node loop = frame.AddNode();
    loop.SetSize({100.0, 10.0});
    loop.LinkTo(loop);
    handler.HandleClick(loop, kRight, 5.0, 0, MouseButton::Left);
    EXPECT_TRUE(IsFlagSet(loop, NodeHidden));
}

TEST_F(PortReactions, AskTheCountsOfDerivedHandlers) {
    // Says that there is more to come on each side.
    class LazyHandler : public PortNodeHandler {
    public:
        [[nodiscard]] int CountAllChildren(Node /*node*/) override { return 7; }
        [[nodiscard]] int CountAllParents(Node /*node*/) override { return 0; }
    };
    LazyHandler lazy;
    lazy.HandleClick(node, kRight, 5.0, 0, MouseButton::Left);
    EXPECT_EQ(CountHidden(children), 0);
    EXPECT_EQ(Work(), kUpdate);
    lazy.HandleClick(node, kLeft, 5.0, 0, MouseButton::Left);
    EXPECT_TRUE(IsFlagSet(node, NodeSelected));
}

TEST_F(PortReactions, ToAPressTellWhetherItIsOnAPort) {
    EXPECT_EQ(Press(node, kLeft), HandlerRepaint);
    EXPECT_EQ(Press(node, kMiddle), HandlerIgnored);
    EXPECT_EQ(Press(node, kRight), HandlerRepaint);
    node.AddNode();
    EXPECT_EQ(Press(node, kLeft), HandlerIgnored);
    EXPECT_EQ(CountHidden(parents) + CountHidden(children), 0);
}

TEST_F(PortReactions, ToAReleaseTellWhereTheButtonWentDown) {
    EXPECT_EQ(Release(node), HandlerDone);
    Press(node, kMiddle);
    EXPECT_EQ(Release(node), HandlerRepaint);
    EXPECT_EQ(Release(node), HandlerDone);
    Press(node, kMiddle);
    EXPECT_EQ(Release(children.front()), HandlerRecalculate);
    EXPECT_EQ(Release(node), HandlerDone);
}

TEST_F(PortReactions, ToAReleaseGoByTheFirstOfTwoPresses) {
    Press(node, kMiddle);
    Press(frame, kMiddle);
    EXPECT_EQ(Release(node), HandlerRepaint);
    Press(frame, kMiddle);
    Press(node, kMiddle);
    EXPECT_EQ(Release(node), HandlerRecalculate);
}

TEST_F(PortReactions, ToEnteringAndLeavingForgetThePress) {
    for (Node entered : {node, frame}) {
        Press(node, kLeft);
        handler.HandleMouseHover(entered);
        EXPECT_EQ(Release(node), HandlerDone);
        Press(node, kLeft);
        handler.HandleMouseLeave(entered);
        EXPECT_EQ(Release(node), HandlerDone);
    }
}

TEST_F(PortReactions, ToThePointerLightALeafUp) {
    EXPECT_EQ(handler.HandleMouseHover(node), HandlerRepaint);
    EXPECT_TRUE(IsFlagSet(node, NodeHovered));
    EXPECT_EQ(handler.HandleMouseLeave(node), HandlerRepaint);
    EXPECT_FALSE(IsFlagSet(node, NodeHovered));
}

TEST_F(PortReactions, ToThePointerLeaveAnOwnerAsItIs) {
    EXPECT_EQ(handler.HandleMouseHover(frame), HandlerIgnored);
    EXPECT_FALSE(IsFlagSet(frame, NodeHovered));
    SetFlag(frame, NodeHovered, true);
    EXPECT_EQ(handler.HandleMouseLeave(frame), HandlerIgnored);
    EXPECT_TRUE(IsFlagSet(frame, NodeHovered));
}

TEST_F(PortReactions, ToATooltipTellTheCaptionAndTheRectangleOfTheNode) {
    node.SetPosition(10.5, -20.0);
    CGraphTooltipEvent event;
    event.pos = {30.0, -15.0};
    EXPECT_EQ(handler.HandleOnTooltip(node, &event), HandlerDone);
    EXPECT_EQ(event.text, "item");
    EXPECT_EQ(event.trackRect, (rectangle<double>{10.5, -20.0, 110.5, -10.0}));
    EXPECT_EQ(event.pos, (point<double>{30.0, -15.0}));
}

TEST_F(PortReactions, ToATooltipOfAnOwnerAreNotHeard) {
    EventLog<Node> log(handler);
    CGraphTooltipEvent event;
    EXPECT_EQ(handler.HandleOnTooltip(frame, &event), HandlerIgnored);
    EXPECT_EQ(event.text, "");
    EXPECT_EQ(event.trackRect, rectangle<double>());
    EXPECT_EQ(log.Take(), Log());
}

// What an operation of a handler is called, how it is called, and what is heard of it.
struct Reaction {
    const char* operation;
    int (*call)(PortNodeHandler& handler, Node node);
    int result;
    const char* heard;
};

CGraphTooltipEvent question;

const std::vector<Reaction> kReactions{
    {"HandleMouseMove",
     [](PortNodeHandler& h, Node n) {
         return h.HandleMouseMove(n, 1.5, -2.0, 3, MouseButton::None);
     },
     0, "OnMouseMove item 1.5 -2 3 0"},
    {"HandleButtonDown",
     [](PortNodeHandler& h, Node n) {
         return h.HandleButtonDown(n, 1.5, 2.0, 1, MouseButton::Right);
     },
     2, "OnButtonDown item 1.5 2 1 2"},
    {"HandleButtonUp",
     [](PortNodeHandler& h, Node n) {
         return h.HandleButtonUp(n, 1.5, -2.0, 2, MouseButton::Right);
     },
     2, "OnButtonUp item 1.5 -2 2 2"},
    {"HandleClick",
     [](PortNodeHandler& h, Node n) { return h.HandleClick(n, 50.0, 2.0, 4, MouseButton::Left); },
     4, "OnClick item 50 2 4 1"},
    {"HandleDoubleClick",
     [](PortNodeHandler& h, Node n) {
         return h.HandleDoubleClick(n, 0.0, 9.0, 0, MouseButton::Left);
     },
     0, "OnDoubleClick item 0 9 0 1"},
    {"HandleMouseHover", [](PortNodeHandler& h, Node n) { return h.HandleMouseHover(n); }, 2,
     "OnMouseHover item"},
    {"HandleMouseLeave", [](PortNodeHandler& h, Node n) { return h.HandleMouseLeave(n); }, 2,
     "OnMouseLeave item"},
    {"HandleOnTooltip", [](PortNodeHandler& h, Node n) { return h.HandleOnTooltip(n, &question); },
     1, "OnTooltip item \"item\""},
    {"HandleOnTooltipTrack",
     [](PortNodeHandler& h, Node n) { return h.HandleOnTooltipTrack(n, &question); }, 0,
     "OnTooltipTrack item \"item\""},
    {"HandleOnSelectRect",
     [](PortNodeHandler& h, Node n) {
         return h.HandleOnSelectRect(n, {1.0, 2.0, 3.0, 4.5});
     },
     0, "OnSelectRect item 1 2 3 4.5"},
    {"HandleContextMenu",
     [](PortNodeHandler& h, Node n) { return h.HandleContextMenu(n, 7.25, 8.0); }, 0,
     "OnContextMenu item 7.25 8"},
};

TEST_F(PortReactions, RaiseTheirSignalsWithTheArgumentsOfTheCall) {
    EventLog<Node> log(handler);
    for (const Reaction& reaction : kReactions) {
        EXPECT_EQ(reaction.call(handler, node), reaction.result) << reaction.operation;
        EXPECT_EQ(log.Take(), Log{reaction.heard}) << reaction.operation;
    }
}

TEST_F(PortReactions, RaiseTheirSignalsWhenTheirWorkIsDone) {
    // Looks at what the handler has done by the time that it is told.
    class Witness : public subscriber_base_t {
    public:
        explicit Witness(Log& log) : log_(log) {}
        void See(Node& node) { log_.push_back(std::to_string(node.GetCondition())); }
        void SeeClick(Node& node, double, double, int, MouseButton) { See(node); }

    private:
        Log& log_;
    };
    Log log;
    Witness witness(log);
    handler.OnMouseHover.connect(&witness, &Witness::See);
    handler.OnMouseLeave.connect(&witness, &Witness::See);
    handler.OnClick.connect(&witness, &Witness::SeeClick);
    handler.HandleMouseHover(node);
    Click(kMiddle);
    handler.HandleMouseLeave(node);
    EXPECT_EQ(log, (Log{"32", "34", "2"}));
}

TEST_F(PortReactions, OnTheRootLeaveItAsItIs) {
    const graph_ptr2<Graph> empty(new Graph(), true);
    const Node root = empty->GetRoot();
    EXPECT_EQ(handler.HandleClick(root, 0.0, 0.0, 0, MouseButton::Left), HandlerRecalculate);
    EXPECT_EQ(handler.HandleMouseHover(root), HandlerRepaint);
    EXPECT_EQ(root.GetCondition(), 0);
}

}  // namespace
}  // namespace nodeline::test
