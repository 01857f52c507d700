// What it costs to keep a view of a large call graph up to date, at scale 1.
//
//   bench-view --benchmark_filter=Pan/
//
// The view stands where about as many nodes and edges meet it at every size, so that what lies
// outside of it is all that grows. "recording" paints with a
// recording painter that does not write down the calls, "cairo" into an image. The calls are
// counted beforehand, with the writing switched on. Every time is that of one step:
//
//   Pan        the view moves by 16 pixels, to and fro over the width of a level
//   PanMiddle  the same in the middle of the graph, however full it is
//   Hover      the pointer moves over a node
//   Select     a click on a node, away from its ports, is answered by repainting that node
//   Click      the same click, answered as `PortNodeHandler` does
//   Repaint    nothing in the window is valid any more
//   Overview   the same for a small window with an overview
#include <backends/headless/headless_window.h>
#include <bench/built_graph.h>
#include <bench/run_benchmarks.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/handlers/port_node_handler.h>
#include <nodeline/ops/graph_ops.h>
#include <nodeline/viewer/graph_viewer.h>
#include <nodeline/viewer/overview.h>
#include <viewkit/scroll_bar.h>

#ifdef NODELINE_WITH_CAIRO
#include <backends/cairo/image_window.h>
#endif

#include <benchmark/benchmark.h>

#include <cmath>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

namespace nodeline::bench {

namespace {

using paintcore::MouseButton;
using viewkit::WindowBase;

constexpr nodeline::size<int> kWindow{1600, 1000};
constexpr nodeline::size<int> kOverviewWindow{300, 200};
constexpr int kPanStep = 16;
constexpr int kPanSteps = 16;  // in either direction
// What is left for the graph beside the scroll bars, at scale 1.
constexpr nodeline::size<double> kExtent{kWindow.cx - viewkit::CScrollBar::kThickness,
                                         kWindow.cy - viewkit::CScrollBar::kThickness};

// Selects as a `PortNodeHandler` does, and says that nothing but the node has changed.
class SelectingHandler : public PortNodeHandler {
public:
    int HandleClick(Node node, double x, double y, int keys, MouseButton button) override {
        const int result = PortNodeHandler::HandleClick(node, x, y, keys, button);
        return result == HandlerIgnored ? HandlerIgnored : HandlerRepaint;
    }
};

// What meets a view, and what meets the strips that a pan of it uncovers, as a mean over a round.
struct Content {
    double nodes;
    double edges;
    double strip_nodes;
    double strip_edges;
};

// What the views of all sizes are like: the graphs have such places, and few that are as full.
constexpr Content kModel{50, 600, 5, 60};

// Counts on one view. The questions are in the order of what they cost.
class Counting {
public:
    Counting(Graph& graph, const point<double>& start, const nodeline::size<double>& extent)
        : graph_(graph), start_(start), extent_(extent) {}

    [[nodiscard]] double Nodes() const { return nodes_in(0.0, extent_.cx); }
    [[nodiscard]] double StripNodes() const {
        return strip_mean([this](double left, double width) { return nodes_in(left, width); });
    }
    [[nodiscard]] double StripEdges() const {
        return strip_mean([this](double left, double width) { return edges_in(left, width); });
    }
    [[nodiscard]] double Edges() const { return edges_in(0.0, extent_.cx); }

private:
    [[nodiscard]] double nodes_in(double left, double width) const {
        const double x = start_.x + left;
        return graph_.HitNodeTest(x, start_.y, x + width, start_.y + extent_.cy).GetCount();
    }
    [[nodiscard]] double edges_in(double left, double width) const {
        const double x = start_.x + left;
        return graph_.HitEdgeTest(x, start_.y, x + width, start_.y + extent_.cy).GetCount();
    }
    template <class Count>
    [[nodiscard]] double strip_mean(Count count) const {
        double sum = 0.0;
        for (int i = 0; i < kPanSteps; ++i) {
            const double left = i * kPanStep;
            sum += count(left, kPanStep) + count(left + extent_.cx, kPanStep);
        }
        return sum / (2.0 * kPanSteps);
    }

    Graph& graph_;
    point<double> start_;
    nodeline::size<double> extent_;
};

double difference(double a, double b) { return std::abs(std::log((a + 1.0) / (b + 1.0))); }

// How much a view differs from the model, or any greater number than `least` if it is more. What a
// pan draws is mostly edges.
double difference_of(const Counting& counting, double least) {
    double sum = difference(counting.Nodes(), kModel.nodes);
    if (sum <= least) sum += difference(counting.StripNodes(), kModel.strip_nodes);
    if (sum <= least) sum += 3.0 * difference(counting.StripEdges(), kModel.strip_edges);
    if (sum <= least) sum += difference(counting.Edges(), kModel.edges);
    return sum;
}

// The start of the view that is most like the model, among those with a node in their middle.
point<double> find_place(Graph& graph) {
    point<double> place;
    double least = std::numeric_limits<double>::infinity();
    const NodeSet nodes = graph.GetRoot().GetOwned();
    for (const Node& node : nodes) {
        const point<double> p = node.GetPosition();
        const point<double> start{p.x - kWindow.cx * 0.5, p.y - kWindow.cy * 0.5};
        const double apart = difference_of({graph, start, kExtent}, least);
        if (apart >= least) continue;
        least = apart;
        place = start;
    }
    return place;
}

// The start of the view with a node in its middle that is halfway down the list.
point<double> middle_of(const Graph& graph) {
    const NodeSet nodes = graph.GetRoot().GetOwned();
    const point<double> p = Node(nodes.GetItem(nodes.GetCount() / 2)).GetPosition();
    return {p.x - kExtent.cx * 0.5, p.y - kExtent.cy * 0.5};
}

// A call graph that is laid out and drawn with ports.
struct Scene {
    BuiltGraph built;
    graph_ptr2<PortNodeHandler> handler;
    point<double> start;
    point<double> middle;
};

Scene make_scene(int size) {
    static headless::RecordingPainter measuring;
    measuring.SetRecording(false);
    Scene scene{Build(FindFamily("calls")->plan(size)), {}, {}, {}};
    Graph& graph = *scene.built.graph;
    scene.handler = graph_ptr2<PortNodeHandler>(new PortNodeHandler, true);
    scene.handler->SetIPainter(&measuring);
    graph.SetDefaultNodeHandler(scene.handler);
    graph.SetDefaultEdgeHandler(GetDefaultEdgeHandler());
    int number = 0;
    const auto name = [&](Node node) { node.SetCaption("call_" + std::to_string(number++)); };
    ForEachNodeIn(graph.GetRoot(), name, false, false);
    graph.RecalculateLayout(&measuring);
    return scene;
}

// The last scene that was asked for: a large one takes a while to make.
Scene& scene_of(int size) {
    static int made_size = 0;
    static Scene scene;
    if (made_size == size) return scene;
    scene = Scene();
    scene = make_scene(size);
    scene.start = find_place(*scene.built.graph);
    scene.middle = middle_of(*scene.built.graph);
    made_size = size;
    return scene;
}

// ---------------------------------------------------------------------------------------------
// The steps

// A window with a viewer, everything painted.
struct Stage {
    Stage(const Scene& scene, const point<double>& start, WindowBase& shown_in)
        : window(shown_in),
          graph(scene.built.graph),
          viewer(new CGraphViewer(window.GetRoot(), graph, true)) {
        viewer->SetStartX(start.x);
        viewer->SetStartY(start.y);
        window.PaintPending();
    }

    WindowBase& window;
    graph_ptr2<Graph> graph;
    CGraphViewer* viewer;
};

// One thing that a user does. `Do` answers false if it did not have its effect.
class Step {
public:
    Step() = default;
    virtual ~Step() = default;
    Step(const Step&) = delete;
    Step& operator=(const Step&) = delete;

    [[nodiscard]] virtual bool Do() = 0;
    // After so many steps everything is as before the first.
    [[nodiscard]] virtual int Round() const { return 2; }
};

class PanStep : public Step {
public:
    explicit PanStep(Stage& stage) : stage_(stage) {}
    bool Do() override {
        const int step = number_++ % Round() < kPanSteps ? kPanStep : -kPanStep;
        stage_.viewer->SetStartX(stage_.viewer->GetStartX() + step);
        return stage_.window.PaintPending();
    }
    [[nodiscard]] int Round() const override { return 2 * kPanSteps; }

private:
    Stage& stage_;
    int number_ = 0;
};

// The steps that need a node: the one nearest to the middle of the view.
class NodeStep : public Step {
public:
    explicit NodeStep(Stage& stage) : stage_(stage) {
        const CContent& content = *stage.viewer->GetContent();
        const point<double> middle = content.ConvertP2L({kWindow.cx / 2, kWindow.cy / 2});
        double least = std::numeric_limits<double>::infinity();
        for (const Node& node :
             stage.graph->HitNodeTest(middle.x - kWindow.cx * 0.4, middle.y - kWindow.cy * 0.4,
                                      middle.x + kWindow.cx * 0.4, middle.y + kWindow.cy * 0.4)) {
            const point<double> p = node.GetPosition();
            const nodeline::size<double> s = node.GetSize();
            const point<double> centre{p.x + s.cx * 0.5, p.y + s.cy * 0.5};
            const double apart = std::abs(centre.x - middle.x) + std::abs(centre.y - middle.y);
            if (IsRoot(node) || apart >= least) continue;
            least = apart;
            node_ = node;
            pixel_ = content.ConvertL2P(centre);
        }
    }

protected:
    Stage& stage_;
    Node node_;
    point<int> pixel_;
};

class HoverStep : public NodeStep {
public:
    using NodeStep::NodeStep;
    bool Do() override {
        side_ = -side_;
        stage_.window.GetControl().MouseMove(pixel_.x + side_, pixel_.y, 0, MouseButton::None);
        stage_.window.PaintPending();
        return static_cast<bool>(node_);
    }

private:
    int side_ = 1;
};

class SelectStep : public NodeStep {
public:
    using NodeStep::NodeStep;
    bool Do() override {
        const bool was_selected = IsFlagSet(node_, NodeSelected);
        viewkit::CControl& control = stage_.window.GetControl();
        control.ButtonDown(pixel_.x, pixel_.y, 0, MouseButton::Left);
        stage_.window.PaintPending();
        control.ButtonUp(pixel_.x, pixel_.y, 0, MouseButton::Left);
        return stage_.window.PaintPending() && IsFlagSet(node_, NodeSelected) != was_selected;
    }
};

class RepaintStep : public Step {
public:
    explicit RepaintStep(Stage& stage) : RepaintStep(stage.window) {}
    explicit RepaintStep(WindowBase& window) : window_(window) {}
    bool Do() override {
        window_.GetControl().InvalidateAll();
        return window_.PaintPending();
    }
    [[nodiscard]] int Round() const override { return 1; }

private:
    WindowBase& window_;
};

// ---------------------------------------------------------------------------------------------
// Measuring

template <class Window>
constexpr bool kIsRecording = std::is_same_v<Window, headless::HeadlessWindow>;

template <class Window>
void quieten(Window& window) {
    if constexpr (kIsRecording<Window>) window.GetRecorder().SetRecording(false);
}

// Reports the calls of one step, as a mean over a round.
template <class Window>
void count_calls(benchmark::State& state, Window& window, Step& step) {
    if constexpr (kIsRecording<Window>) {
        window.GetRecorder().SetRecording(true);
        for (int i = 0; i < step.Round(); ++i) static_cast<void>(step.Do());
        window.GetRecorder().SetRecording(false);
        state.counters["calls"] =
            static_cast<double>(window.GetRecorder().TakeLines().size()) / step.Round();
    }
}

template <class Window>
void run(benchmark::State& state, Window& window, Step& step) {
    count_calls(state, window, step);
    for (int i = 0; i < step.Round(); ++i) static_cast<void>(step.Do());
    for ([[maybe_unused]] auto _ : state) {
        if (!step.Do()) state.SkipWithError("A step had no effect.");
    }
}

void report(benchmark::State& state, const Scene& scene, const point<double>& start) {
    const Counting counting(*scene.built.graph, start, kExtent);
    state.counters["nodes"] = counting.Nodes();
    state.counters["edges"] = counting.Edges();
    state.counters["strip_nodes"] = counting.StripNodes();
    state.counters["strip_edges"] = counting.StripEdges();
}

template <class Window, point<double> Scene::*kStart>
void measure_pan(benchmark::State& state) {
    Scene& scene = scene_of(static_cast<int>(state.range(0)));
    Window window(kWindow);
    quieten(window);
    Stage stage(scene, scene.*kStart, window);
    PanStep step(stage);
    run(state, window, step);
    report(state, scene, scene.*kStart);
}

template <class Window, class SomeStep, class Handler>
void measure(benchmark::State& state) {
    Scene& scene = scene_of(static_cast<int>(state.range(0)));
    const graph_ptr2<INodeHandler> handler(new Handler, true);
    scene.built.graph->SetDefaultNodeHandler(handler);
    Window window(kWindow);
    quieten(window);
    Stage stage(scene, scene.start, window);
    SomeStep step(stage);
    run(state, window, step);
    report(state, scene, scene.start);
    scene.built.graph->SetDefaultNodeHandler(scene.handler);
}

template <class Window>
void measure_overview(benchmark::State& state) {
    Scene& scene = scene_of(static_cast<int>(state.range(0)));
    headless::HeadlessWindow viewed(kWindow);
    quieten(viewed);
    Stage stage(scene, scene.start, viewed);
    Window window(kOverviewWindow);
    quieten(window);
    new COverviewContent(window.GetRoot(), stage.viewer);
    window.PaintPending();
    RepaintStep step(window);
    run(state, window, step);
}

template <class Window>
void register_with(const std::string& painter) {
    const auto add = [&](const char* name, void (*measure_step)(benchmark::State&)) {
        benchmark::RegisterBenchmark((name + ("/" + painter)).c_str(), measure_step)
            ->RangeMultiplier(10)
            ->Range(1000, 100000)
            ->Unit(benchmark::kMicrosecond);
    };
    add("Pan", measure_pan<Window, &Scene::start>);
    add("PanMiddle", measure_pan<Window, &Scene::middle>);
    add("Hover", measure<Window, HoverStep, PortNodeHandler>);
    add("Select", measure<Window, SelectStep, SelectingHandler>);
    add("Click", measure<Window, SelectStep, PortNodeHandler>);
    add("Repaint", measure<Window, RepaintStep, PortNodeHandler>);
    add("Overview", measure_overview<Window>);
}

void register_all() {
    register_with<headless::HeadlessWindow>("recording");
#ifdef NODELINE_WITH_CAIRO
    register_with<cairo::ImageWindow>("cairo");
#endif
}

}  // namespace

}  // namespace nodeline::bench

int main(int argc, char** argv) {
    return nodeline::bench::RunBenchmarks(argc, argv, nodeline::bench::register_all);
}
