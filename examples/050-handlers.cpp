// Draws a state machine in a look of its own: states are round and coloured by their kind, and
// transitions bear their event. Clicks count, and open a second line. Writes handlers.svg.

#include <backends/cairo/measuring_painter.h>
#include <backends/cairo/picture.h>
#include <backends/headless/headless_window.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/layout/stable_layout.h>
#include <nodeline/ops/graph_ops.h>
#include <nodeline/viewer/draw_functions.h>
#include <nodeline/viewer/graph_viewer.h>

#include <algorithm>
#include <iostream>
#include <map>
#include <string>
#include <vector>

using nodeline::Edge;
using nodeline::Graph;
using nodeline::graph_ptr2;
using nodeline::Node;
using nodeline::point;
using nodeline::rectangle;
using nodeline::size;
using paintcore::_color;
using paintcore::IPainter;

namespace {

// What the application knows of a state. The graph holds the shape of the machine, and this lies
// beside it, by the ids of the nodes.
enum class Kind { kStart, kWork, kWait, kFailed, kGroup };

struct State {
    Kind kind = Kind::kWork;
    std::string note;
    int clicks = 0;
    bool open = false;
};

using States = std::map<int, State>;

// What kind of transition an edge is; its tag says so.
enum Transition { kNormal, kError, kRetry };

struct Look {
    _color fill;
    _color outline;
    double radius = 12.0;
};

Look LookOf(Kind kind) {
    switch (kind) {
        case Kind::kStart:
            return {{44, 62, 80}, {44, 62, 80}, 9.0};
        case Kind::kWork:
            return {{205, 228, 250}, {52, 110, 170}, 12.0};
        case Kind::kWait:
            return {{255, 236, 190}, {190, 135, 20}, 12.0};
        case Kind::kFailed:
            return {{250, 210, 205}, {185, 60, 45}, 12.0};
        case Kind::kGroup:
            return {{249, 250, 252}, {160, 172, 184}, 6.0};
    }
    return {};
}

_color ColorOf(int transition) {
    if (transition == kError) return {200, 60, 45};
    return transition == kRetry ? _color(190, 135, 20) : _color(90, 105, 120);
}

// A font of the painter has the same size at every scale. What should grow with the picture is
// scaled here.
paintcore::font FontAt(double zoom, int style) { return {"", style, 9, 0, 0, zoom}; }

class StateHandler : public nodeline::INodeHandler {
public:
    StateHandler(States& states, IPainter& measure) : states_(states), measure_(measure) {}

    // The layout asks, whatever the scale of the viewers may be.
    size<double> GetSize(Node node) override {
        const State* state = Find(node);
        if (state == nullptr) return {0.0, 0.0};
        if (state->kind == Kind::kStart) return {18.0, 18.0};
        const size<double> caption = Measure(node.GetCaption(), paintcore::FontBold);
        if (!state->open) return {caption.cx + 28.0, caption.cy + 14.0};
        const size<double> note = Measure(state->note, paintcore::FontPlain);
        return {std::max(caption.cx, note.cx) + 28.0, caption.cy + note.cy + 16.0};
    }

    nodeline::NodeFrame GetSize(Node /*node*/, size<double> inner) override {
        return {inner, {0.0, 0.0}};
    }

    void SetZoomFactor(double factor) override {
        if (factor > 0.0) zoom_ = factor;
    }

    void Draw(Node node, IPainter* painter) override {
        // Viewers ask for hidden nodes, too, and for the root.
        const State* state = Find(node);
        if (state == nullptr || !IsFlagSet(node, nodeline::NodeDrawn)) return;
        const rectangle<double> box = nodeline::MakeDRect(node.GetPosition(), node.GetSize());
        const Look look = LookOf(state->kind);
        painter->SetPen({look.outline, state->clicks > 0 ? 2 : 1, 1, 0, 0});
        painter->SetBrush({look.fill, 1});
        painter->RoundRect(box.left, box.top, box.right, box.bottom, look.radius, look.radius);
        if (state->kind != Kind::kStart) DrawTexts(node, *state, box, painter);
    }

    // A click with the left button counts; with Ctrl it opens the second line.
    int HandleClick(Node node, double x, double y, int keys,
                    paintcore::MouseButton button) override {
        State* state = Find(node);
        if (state == nullptr || button != paintcore::MouseButton::Left) {
            return nodeline::HandlerIgnored;
        }
        ++state->clicks;
        OnClick(node, x, y, keys, button);
        if ((keys & paintcore::KeyControl) == 0) return nodeline::HandlerRepaint;
        // The answer alone lays nothing out: the node has to say what has changed.
        state->open = !state->open;
        node.ResizeSelf();
        return nodeline::HandlerRecalculate;
    }

private:
    State* Find(const Node& node) {
        const auto found = states_.find(node.GetID());
        return found != states_.end() ? &found->second : nullptr;
    }

    size<double> Measure(const std::string& text, int style) {
        const paintcore::font font = FontAt(1.0, style);
        return measure_.GetTextSize(text, &font, -1, true, true);
    }

    void DrawTexts(const Node& node, const State& state, rectangle<double> box, IPainter* painter) {
        painter->SetTextColor({34, 45, 57});
        painter->SetFont(FontAt(zoom_, paintcore::FontBold));
        if (state.kind == Kind::kGroup) {
            painter->DrawString(box, node.GetCaption(), paintcore::TextTopLeft, -1);
            return;
        }
        if (state.open) {
            const double middle = (box.top + box.bottom) / 2.0;
            const rectangle<double> lower{box.left, middle, box.right, box.bottom - 2.0};
            box = {box.left, box.top + 2.0, box.right, middle};
            painter->SetFont(FontAt(zoom_, paintcore::FontPlain));
            painter->DrawString(lower, state.note, paintcore::TextCentred, -1);
            painter->SetFont(FontAt(zoom_, paintcore::FontBold));
        }
        painter->DrawString(box, node.GetCaption(), paintcore::TextCentred, -1);
    }

    States& states_;
    IPainter& measure_;
    double zoom_ = 1.0;
};

// The stock handler knows how edges light up and what their tooltip is; only the look is new.
class TransitionHandler : public nodeline::DummyEdgeHandler {
public:
    void SetZoomFactor(double factor) override {
        DummyEdgeHandler::SetZoomFactor(factor);
        if (factor > 0.0) zoom_ = factor;
    }

    // The room of an edge that runs backwards, under its nodes: here for its caption.
    [[nodiscard]] double GetWidth(Edge /*edge*/) const override { return 14.0; }

    void Draw(Edge edge, IPainter* painter) override {
        const std::vector<point<double>> route = edge.GetRoute();
        if (!IsFlagSet(edge, nodeline::EdgeDrawn) || route.size() < 2) return;
        const _color plain = ColorOf(edge.GetTag());
        const bool lit = IsFlagSet(edge, nodeline::EdgeHovered);
        const _color ink = lit ? plain.Lightened() : plain;

        painter->SetPen({ink, edge.GetTag() == kNormal ? 1 : 2, 1, 1, 1});
        painter->MoveTo(route.front().x, route.front().y);
        for (const point<double>& p : route) painter->LineTo(p.x, p.y);
        painter->SetArrowSize(9, 7);
        painter->BeginPlot(paintcore::PlotArrowhead);
        painter->Vertex(route[route.size() - 2].x, route[route.size() - 2].y);
        painter->Vertex(route.back().x, route.back().y);
        painter->EndPlot();
        if (!edge.GetCaption().empty()) DrawCaption(edge.GetCaption(), route, ink, painter);
    }

private:
    // In the middle of the longest stretch, on a patch of the background. A stretch may have points
    // between its ends, where it passes a level.
    void DrawCaption(const std::string& caption, const std::vector<point<double>>& route,
                     const _color& ink, IPainter* painter) {
        point<double> middle;
        double longest = -1.0;
        std::size_t from = 0;
        for (std::size_t i = 1; i < route.size(); ++i) {
            if (route[i].y != route[from].y) from = i - 1;
            const point<double> step = route[i] - route[from];
            const double length = step.x * step.x + step.y * step.y;
            if (length <= longest) continue;
            longest = length;
            middle = {route[from].x + step.x / 2.0, route[from].y + step.y / 2.0};
        }
        painter->SetFont(FontAt(zoom_, paintcore::FontPlain));
        const size<double> text = painter->GetTextSize(caption);
        const rectangle<double> patch{middle.x - text.cx / 2.0 - 2.0, middle.y - text.cy / 2.0,
                                      middle.x + text.cx / 2.0 + 2.0, middle.y + text.cy / 2.0};
        painter->SetBrush({paintcore::GetSysPalette()[paintcore::SysPalette::kBackground], 1});
        painter->FillRect(patch);
        painter->SetTextColor(ink);
        painter->DrawString(patch, caption, paintcore::TextCentred, -1);
    }

    double zoom_ = 1.0;
};

// Hears of the clicks; a handler tells whoever has connected to its signals.
class Console : public nodeline::subscriber_base_t {
public:
    explicit Console(const States& states) : states_(states) {}

    void TellClick(Node& node, double /*x*/, double /*y*/, int keys,
                   paintcore::MouseButton /*button*/) {
        std::cout << "clicked " << node.GetCaption() << ", " << states_.at(node.GetID()).clicks
                  << " in all" << ((keys & paintcore::KeyControl) != 0 ? ", with Ctrl" : "")
                  << '\n';
    }

private:
    const States& states_;
};

// Clicks as a user would, in a window without a screen.
void ClickAt(nodeline::headless::HeadlessWindow& window, const nodeline::CGraphViewer& viewer,
             const Node& node, int keys) {
    const point<double> p = node.GetPosition();
    const size<double> s = node.GetSize();
    const point<int> pixel = viewer.GetContent()->ConvertL2P({p.x + s.cx / 2.0, p.y + s.cy / 2.0});
    window.Press(pixel.x, pixel.y, paintcore::MouseButton::Left, keys);
    window.Release(pixel.x, pixel.y, paintcore::MouseButton::Left, keys);
}

bool WritePicture(const graph_ptr2<Graph>& graph, const std::string& path) {
    nodeline::MarkDrawnIn(graph);
    constexpr double kScale = 1.5;
    std::string error;
    const auto picture = nodeline::cairo::MakePicture(nodeline::cairo::PictureFormat::kSvg,
                                                      graph->GetRoot().GetSize(), kScale, &error);
    if (picture != nullptr) {
        picture->Draw([&](IPainter& painter) { DrawGraph(graph, &painter, kScale); });
    }
    if (picture != nullptr && picture->Save(path, &error)) return true;
    std::cerr << error << '\n';
    return false;
}

}  // namespace

int main() {
    const graph_ptr2<Graph> graph(new Graph, true);
    States states;
    const auto add = [&states](Node owner, Kind kind, const std::string& caption,
                               const std::string& note) {
        Node node = owner.AddNode();
        node.SetCaption(caption);
        states[node.GetID()] = {kind, note, 0, false};
        return node;
    };
    const auto link = [](Node from, const Node& to, Transition kind, const std::string& event) {
        Edge edge = from.LinkTo(to);
        edge.SetTag(kind);
        edge.SetCaption(event);
    };

    const Node root = graph->GetRoot();
    const Node start = add(root, Kind::kStart, "start", "");
    const Node idle = add(root, Kind::kWait, "idle", "waits for a call");
    const Node connect = add(root, Kind::kWork, "connect", "3 addresses, 2 s each");
    const Node online = add(root, Kind::kGroup, "online", "");
    const Node login = add(online, Kind::kWork, "log in", "by token");
    const Node ready = add(online, Kind::kWait, "ready", "up to 4 requests");
    const Node send = add(online, Kind::kWork, "send", "in blocks of 4 KiB");
    const Node receive = add(online, Kind::kWork, "receive", "up to 1 MiB");
    const Node failed = add(root, Kind::kFailed, "failed", "kept in the log");
    link(start, idle, kNormal, "");
    link(idle, connect, kNormal, "open");
    link(connect, login, kNormal, "accepted");
    link(login, ready, kNormal, "granted");
    link(ready, send, kNormal, "put");
    link(ready, receive, kNormal, "get");
    link(receive, ready, kNormal, "done");
    link(connect, failed, kError, "refused");
    link(send, failed, kError, "reset");
    link(connect, idle, kRetry, "time out");

    // The graph keeps its handlers; what they refer to is the application's, and has to last for as
    // long as the graph is shown.
    nodeline::cairo::MeasuringPainter measure;
    const graph_ptr2<StateHandler> nodes(new StateHandler(states, measure), true);
    graph->SetDefaultNodeHandler(nodes);
    graph->SetDefaultEdgeHandler(graph_ptr2<TransitionHandler>(new TransitionHandler, true));
    // Events need room between the levels, and so does the caption of a group at its top.
    nodeline::StableLayout::Options options;
    options.level_spacing = 64.0;
    options.caption_room = 26.0;
    options.node_spacing = 18.0;
    options.dummy_spacing = 10.0;
    options.backedge_spacing = 12.0;
    graph->SetDefaultLayout(nodeline::StableLayout::Create(options));

    Console console(states);
    nodes->OnClick.connect(&console, &Console::TellClick);
    nodeline::headless::HeadlessWindow window({1200, 500});
    auto* viewer = new nodeline::CGraphViewer(window.GetRoot(), graph, true);
    viewer->FitToWindow();
    ClickAt(window, *viewer, send, 0);
    ClickAt(window, *viewer, send, 0);
    ClickAt(window, *viewer, connect, paintcore::KeyControl);

    if (!WritePicture(graph, "handlers.svg")) return 1;
    std::cout << "handlers.svg shows what the clicks have changed\n";
}
