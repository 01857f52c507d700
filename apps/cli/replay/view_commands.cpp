#include <apps/cli/replay/commands.h>
#include <apps/cli/replay/dump.h>
#include <nodeline/ops/graph_ops.h>
#include <paintcore/tooltip.h>

namespace nodeline::replay {

namespace {

using paintcore::MouseButton;
using viewkit::CControl;

void run_handler(Session& session, const Words& words) { session.viewing.SetHandlers(words[1]); }

void run_caption(Session& session, const Words& words) {
    session.script.GetNode(words.Integer(1)).node.SetCaption(std::string(words.From(2)));
}

void run_edge_caption(Session& session, const Words& words) {
    session.script.GetEdge(words.Integer(1)).edge.SetCaption(std::string(words.From(2)));
}

void run_flag(Session& session, const Words& words) {
    const Node node = session.script.GetNode(words.Integer(1)).node;
    SetFlag(node, words.Int(2), words.IsFirstOf(3, "on", "off"));
}

void run_edge_flag(Session& session, const Words& words) {
    const Edge edge = session.script.GetEdge(words.Integer(1)).edge;
    SetFlag(edge, words.Int(2), words.IsFirstOf(3, "on", "off"));
}

nodeline::size<int> extent(const Words& words) { return {words.Int(1, 1), words.Int(2, 1)}; }

void run_window(Session& session, const Words& words) {
    session.viewing.OpenWindow(extent(words));
    session.is_laid_out = true;
}

void run_overview(Session& session, const Words& words) {
    session.viewing.OpenOverview(extent(words));
}

void run_window_size(Session& session, const Words& words) {
    session.viewing.ResizeWindow(extent(words));
}

void run_paint(Session& session, const Words&) {
    (void)session.viewing.GetWindow();
    session.viewing.Paint();
}

// The window that a command works on.
using Target = CControl& (Viewing::*)();

CControl& target(Session& session, Target window) { return (session.viewing.*window)(); }

// BUTTON and KEYS may be left out.
MouseButton button_of(const Words& words) {
    const int button = words.count() > 3 ? words.Int(3) : 1;
    if (button < 1 || button > 3) throw ScriptFault("the buttons are 1 to 3");
    return static_cast<MouseButton>(button);
}

int keys_of(const Words& words, std::size_t index) {
    return words.count() > index ? words.Int(index) : 0;
}

template <Target kWindow>
void run_down(Session& session, const Words& words) {
    target(session, kWindow)
        .ButtonDown(words.Int(1), words.Int(2), keys_of(words, 4), button_of(words));
    session.viewing.Paint();
}

template <Target kWindow>
void run_up(Session& session, const Words& words) {
    target(session, kWindow)
        .ButtonUp(words.Int(1), words.Int(2), keys_of(words, 4), button_of(words));
    session.viewing.Paint();
}

template <Target kWindow>
void run_pointer(Session& session, const Words& words) {
    target(session, kWindow)
        .MouseMove(words.Int(1), words.Int(2), keys_of(words, 3), MouseButton::None);
    session.viewing.Paint();
}

template <Target kWindow>
void run_key(Session& session, const Words& words) {
    target(session, kWindow).KeyDown(0, words.Int(1));
    session.viewing.Paint();
}

void run_double(Session& session, const Words& words) {
    session.viewing.GetWindow().DoubleClick(words.Int(1), words.Int(2), 0, MouseButton::Left);
    session.viewing.Paint();
}

void run_context(Session& session, const Words& words) {
    session.viewing.GetWindow().ContextMenu(words.Int(1), words.Int(2));
    session.viewing.Paint();
}

void run_leave(Session& session, const Words&) {
    session.viewing.GetWindow().MouseLeave();
    session.viewing.Paint();
}

void run_tooltip(Session& session, const Words& words) {
    paintcore::CTooltipEvent event;
    event.pos = {words.Int(1), words.Int(2)};
    const bool is_taken = session.viewing.GetWindow().Tooltip(&event);
    session.printed += is_taken ? "tooltip true \"" : "tooltip false \"";
    session.printed += event.text + "\"\n";
    session.viewing.Paint();
}

void run_start(Session& session, const Words& words) {
    CGraphViewer& viewer = session.viewing.GetViewer();
    const double x = words.Number(1);
    const double y = words.Number(2);
    viewer.SetStartX(x);
    viewer.SetStartY(y);
    session.viewing.Paint();
}

template <void (IViewer::*kSet)(double)>
void run_set(Session& session, const Words& words) {
    (session.viewing.GetViewer().*kSet)(words.Number(1));
    session.viewing.Paint();
}

void run_rubber(Session& session, const Words& words) {
    CGraphViewer& viewer = session.viewing.GetViewer();
    const bool is_off = words[1] == "off";
    if (!is_off) {
        viewer.SetRubberMode(words.IsFirstOf(1, "zoom", "select") ? RubberZoom : RubberSelect);
    }
    viewer.GetZoomRect()->Enable(!is_off);
    viewer.GetDragTracker()->Enable(is_off);
}

void run_move_nodes(Session& session, const Words& words) {
    session.viewing.GetViewer().SetMoveNodes(words.IsFirstOf(1, "on", "off"));
}

void print_values(std::string& out, const char* name, std::initializer_list<double> values) {
    out += name;
    for (const double value : values) AppendValue(out, value);
    out += '\n';
}

void run_view(Session& session, const Words&) {
    const CContent& content = *session.viewing.GetViewer().GetContent();
    const auto pixels = content.GetContentRect();
    const point<double> from{content.GetStartX(), content.GetStartY()};
    const double scale = content.GetScale();
    print_values(session.printed, "view",
                 {from.x, from.y, from.x + (pixels.right - pixels.left) / scale,
                  from.y + (pixels.bottom - pixels.top) / scale, scale});
    print_values(
        session.printed, "range",
        {content.GetHorzFrom(), content.GetVertFrom(), content.GetHorzTo(), content.GetVertTo()});
}

void run_selected(Session& session, const Words&) {
    (void)session.viewing.GetWindow();
    session.printed += "selected";
    for (const Node& node : session.script.ListNodes()) {
        if (IsFlagSet(node, NodeSelected)) {
            session.printed += " " + std::to_string(session.script.NumberOf(node));
        }
    }
    session.printed += '\n';
}

void run_trace(Session& session, const Words& words) {
    session.viewing.Trace(words.IsFirstOf(1, "on", "off"));
}

void run_picture(Session& session, const Words& words) {
    session.viewing.SavePicture(std::string(words[1]));
}

}  // namespace

const CommandTable& GetViewCommands() {
    constexpr Target kWindow = &Viewing::GetWindow;
    constexpr Target kOverview = &Viewing::GetOverview;
    static const CommandTable table = {{"handler", {1, 1, run_handler}},
                                       {"caption", {1, kAnyCount, run_caption}},
                                       {"edge-caption", {1, kAnyCount, run_edge_caption}},
                                       {"flag", {3, 3, run_flag}},
                                       {"edge-flag", {3, 3, run_edge_flag}},
                                       {"window", {2, 2, run_window}},
                                       {"overview", {2, 2, run_overview}},
                                       {"window-size", {2, 2, run_window_size}},
                                       {"paint", {0, 0, run_paint}},
                                       {"down", {2, 4, run_down<kWindow>}},
                                       {"up", {2, 4, run_up<kWindow>}},
                                       {"pointer", {2, 3, run_pointer<kWindow>}},
                                       {"double", {2, 2, run_double}},
                                       {"context", {2, 2, run_context}},
                                       {"leave", {0, 0, run_leave}},
                                       {"key", {1, 1, run_key<kWindow>}},
                                       {"tooltip", {2, 2, run_tooltip}},
                                       {"overview-down", {2, 2, run_down<kOverview>}},
                                       {"overview-up", {2, 2, run_up<kOverview>}},
                                       {"overview-pointer", {2, 2, run_pointer<kOverview>}},
                                       {"overview-key", {1, 1, run_key<kOverview>}},
                                       {"start", {2, 2, run_start}},
                                       {"scale", {1, 1, run_set<&IViewer::SetScale>}},
                                       {"view-width", {1, 1, run_set<&IViewer::SetViewWidth>}},
                                       {"view-height", {1, 1, run_set<&IViewer::SetViewHeight>}},
                                       {"rubber", {1, 1, run_rubber}},
                                       {"move-nodes", {1, 1, run_move_nodes}},
                                       {"view", {0, 0, run_view}},
                                       {"selected", {0, 0, run_selected}},
                                       {"trace", {1, 1, run_trace}},
                                       {"picture", {1, 1, run_picture}}};
    return table;
}

}  // namespace nodeline::replay
