// A graph on a stage: a window, handlers that write down what they are asked and answer what a test
// wants, and listeners for the signals of an element.
//
//   Stage stage;                       // a -> b, and c which owns d
//   stage.window.Click(x, y);
//   EXPECT_EQ(stage.Take(), Log({"down a", "up a", "click a"}));
#pragma once

#include <backends/headless/headless_window.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/viewer/graph_viewer.h>

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace nodeline::test {

using Log = std::vector<std::string>;

// What an event did, and what it is to answer.
class Script {
public:
    // The answer to an event; 0 without one.
    std::map<std::string, int> answers;
    // Called with the event and the caption of its node, before the answer.
    std::function<void(const std::string& event)> on_event;
    // The coordinates of the last pointer event.
    point<double> at;
    int keys = 0;
    MouseButton button = MouseButton::None;
    rectangle<double> selected;
    CGraphTooltipEvent asked;    // as it came
    CGraphTooltipEvent replied;  // goes out where a text is set

    int Play(const std::string& event, const std::string& caption) {
        log_.push_back(event + " " + caption);
        // On the stack: what is called may destroy the script.
        const auto called = on_event;
        const auto answer = answers.find(event);
        const int result = answer != answers.end() ? answer->second : 0;
        if (called) called(event);
        return result;
    }
    int Point(const std::string& event, const std::string& caption, point<double> p, int k = 0,
              MouseButton b = MouseButton::None) {
        at = p;
        keys = k;
        button = b;
        return Play(event, caption);
    }
    int Ask(const std::string& event, const std::string& caption, CGraphTooltipEvent* tip) {
        asked = *tip;
        if (!replied.text.empty()) *tip = replied;
        return Play(event, caption);
    }
    Log Take() { return std::exchange(log_, {}); }

private:
    Log log_;
};

// Nodes of 40 by 20, owners with a rim of 10. Each draws its caption and its zoom factor.
class NodeActor : public INodeHandler {
public:
    explicit NodeActor(Script& script) : script_(&script) {}

    void Draw(Node n, IPainter* painter) override {
        painter->DrawString(MakeDRect(n.GetPosition(), n.GetSize()), Name(n), 9, -1);
        if (script_->on_event) script_->on_event("draw");
    }
    size<double> GetSize(Node) override {
        if (script_->on_event) script_->on_event("measure");
        return {40.0, 20.0};
    }
    NodeFrame GetSize(Node, size<double> inner) override {
        if (script_->on_event) script_->on_event("measure");
        return {{inner.cx + 20.0, inner.cy + 20.0}, {10.0, 10.0}};
    }
    void SetZoomFactor(double factor) override { zoom = factor; }

    int HandleButtonDown(Node n, double x, double y, int keys, MouseButton b) override {
        return script_->Point("down", Name(n), {x, y}, keys, b);
    }
    int HandleButtonUp(Node n, double x, double y, int keys, MouseButton b) override {
        return script_->Point("up", Name(n), {x, y}, keys, b);
    }
    int HandleClick(Node n, double x, double y, int keys, MouseButton b) override {
        return script_->Point("click", Name(n), {x, y}, keys, b);
    }
    int HandleDoubleClick(Node n, double x, double y, int keys, MouseButton b) override {
        return script_->Point("double", Name(n), {x, y}, keys, b);
    }
    int HandleContextMenu(Node n, double x, double y) override {
        return script_->Point("context", Name(n), {x, y});
    }
    int HandleMouseHover(Node n) override { return script_->Play("hover", Name(n)); }
    int HandleMouseLeave(Node n) override { return script_->Play("leave", Name(n)); }
    int HandleOnTooltip(Node n, CGraphTooltipEvent* e) override {
        return script_->Ask("tooltip", Name(n), e);
    }
    int HandleOnTooltipTrack(Node n, CGraphTooltipEvent* e) override {
        return script_->Ask("track", Name(n), e);
    }
    int HandleOnSelectRect(Node n, rectangle<double> r) override {
        script_->selected = r;
        return script_->Play("select", Name(n));
    }

    static std::string Name(const Node& n) { return IsRoot(n) ? "root" : n.GetCaption(); }

    double zoom = 0.0;

private:
    Script* script_;
};

class EdgeActor : public IEdgeHandler {
public:
    explicit EdgeActor(Script& script) : script_(&script) {}

    void Draw(Edge e, IPainter* painter) override {
        const Node from = e.From();
        painter->DrawString(MakeDRect(from.GetPosition(), from.GetSize()), e.GetCaption(), 9, -1);
    }
    [[nodiscard]] double GetWidth(Edge) const override { return 1.0; }
    void SetZoomFactor(double factor) override { zoom = factor; }
    int HandleMouseHover(Edge e) override { return script_->Play("hover", e.GetCaption()); }
    int HandleMouseLeave(Edge e) override { return script_->Play("leave", e.GetCaption()); }
    int HandleOnTooltip(Edge e, CGraphTooltipEvent* tip) override {
        return script_->Ask("edge tooltip", e.GetCaption(), tip);
    }
    int HandleOnTooltipTrack(Edge e, CGraphTooltipEvent* tip) override {
        return script_->Ask("edge track", e.GetCaption(), tip);
    }

    double zoom = 0.0;

private:
    Script* script_;
};

// Listens to one element, as code beside the library would.
class Listener : public subscriber_base_t {
public:
    using Said = std::function<void(const std::string&)>;

    Listener(CVisualElement* heard, Said said) : said_(std::move(said)) {
        heard->OnButtonDown.connect(this, &Listener::Down);
        heard->OnButtonUp.connect(this, &Listener::Up);
        heard->OnDoubleClick.connect(this, &Listener::Double);
        heard->OnContextMenu.connect(this, &Listener::Context);
        heard->OnMouseLeave.connect(this, &Listener::Leave);
        heard->OnTooltip.connect(this, &Listener::Tooltip);
        heard->OnTooltipTrack.connect(this, &Listener::Track);
        heard->OnDraw.connect(this, &Listener::Draw);
    }

    CVisualElement* element = nullptr;
    point<int> at;
    int keys = 0;
    MouseButton button = MouseButton::None;

private:
    void Say(const std::string& what, CVisualElement* e) {
        element = e;
        // On the stack: what is called may destroy the listener.
        const Said said = said_;
        said(what);
    }
    void Pointer(const std::string& what, CVisualElement* e, point<int> p, int k, MouseButton b) {
        at = p;
        keys = k;
        button = b;
        Say(what, e);
    }
    void Down(CVisualElement* e, int x, int y, int k, MouseButton b) {
        Pointer("down", e, {x, y}, k, b);
    }
    void Up(CVisualElement* e, int x, int y, int k, MouseButton b) {
        Pointer("up", e, {x, y}, k, b);
    }
    void Double(CVisualElement* e, int x, int y, int k, MouseButton b) {
        Pointer("double", e, {x, y}, k, b);
    }
    void Context(CVisualElement* e, int x, int y) {
        Pointer("context", e, {x, y}, 0, MouseButton::None);
    }
    void Leave(CVisualElement* e) { Say("leave", e); }
    void Tooltip(CVisualElement* e, CTooltipEvent*) { Say("tooltip", e); }
    void Track(CVisualElement* e, CTooltipEvent*) { Say("track", e); }
    void Draw(CVisualElement* e, IPainter*) { Say("draw", e); }

    Said said_;
};

// Listens to the view of a viewer.
class ViewListener : public subscriber_base_t {
public:
    explicit ViewListener(IViewer& viewer, std::function<void()> said = {})
        : said_(std::move(said)) {
        viewer.OnChangeView.connect(this, &ViewListener::Hear);
    }

    int count = 0;
    point<double> from;
    point<double> to;

private:
    void Hear(point<double> a, point<double> b) {
        ++count;
        from = a;
        to = b;
        const auto said = said_;
        if (said) said();
    }

    std::function<void()> said_;
};

// Four nodes in a viewer that fills a window of 400 by 300: a and b with an edge "ab", and c, which
// owns d.
struct Stage {
    Stage() {
        graph->SetDefaultNodeHandler(graph_ptr2<INodeHandler>(actor, true));
        graph->SetDefaultEdgeHandler(graph_ptr2<IEdgeHandler>(edge_actor, true));
        a.SetCaption("a");
        b.SetCaption("b");
        c.SetCaption("c");
        d.SetCaption("d");
        ab = a.LinkTo(b);
        ab.SetCaption("ab");
        viewer->ScrollbarsEnable(false);
        viewer->SetGraph(graph);
        window.PaintPending();
        window.GetRecorder().TakeLines();
    }

    // A pixel in the middle of a node, and one where there is only the root.
    [[nodiscard]] point<int> PixelOf(const Node& n) const {
        const point<double> p = n.GetPosition();
        const size<double> s = n.GetSize();
        return content->ConvertL2P({p.x + s.cx * 0.5, p.y + s.cy * 0.5});
    }
    [[nodiscard]] point<int> PixelBeside() const { return {3, 3}; }
    // One on the edge, halfway between its nodes.
    [[nodiscard]] point<int> PixelOfEdge() const {
        const point<double> from = a.GetPosition();
        const point<double> to = b.GetPosition();
        return content->ConvertL2P({(from.x + 40.0 + to.x) * 0.5, from.y + 10.0});
    }

    Log Take() { return script.Take(); }
    // The captions that painter calls draw, with "fill" for each background.
    static Log CaptionsIn(const std::vector<std::string>& lines) {
        Log log;
        for (const std::string& line : lines) {
            if (line.rfind("FillRect", 0) == 0) log.push_back("fill");
            if (line.rfind("DrawString", 0) != 0) continue;
            const std::size_t quote = line.find('"') + 1;
            log.push_back(line.substr(quote, line.find('"', quote) - quote));
        }
        return log;
    }
    // Those of the next paint.
    Log TakePaint() {
        window.PaintPending();
        return CaptionsIn(window.GetRecorder().TakeLines());
    }

    Script script;
    NodeActor* actor = new NodeActor(script);
    EdgeActor* edge_actor = new EdgeActor(script);
    graph_ptr2<Graph> graph{new Graph(), true};
    Node a = graph->GetRoot().AddNode();
    Node b = graph->GetRoot().AddNode();
    Node c = graph->GetRoot().AddNode();
    Node d = c.AddNode();
    Edge ab;
    headless::HeadlessWindow window{{400, 300}};
    CGraphViewer* viewer =
        new CGraphViewer(window.GetRoot(), {100, 100}, viewkit::Alignment::Client);
    CContent* content = viewer->GetContent();
};

}  // namespace nodeline::test
