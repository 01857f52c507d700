// What one click on a port costs, next to laying the graph out from scratch.
//
//   bench-click --benchmark_filter=/calls/10000/
//
// A click folds or unfolds a node in the middle of the graph and calls `RecalculateLayout`. Make is
// `RecalculateLayout` of a fresh graph. Nodes have a fixed size, or that of their captions: "warm"
// where the captions have been measured before, "cold" where they have not. Times are processor
// times of one call.
#include <bench/built_graph.h>
#include <bench/stopwatch.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/ops/graph_ops.h>

#ifdef NODELINE_BENCH_TEXT
#include <backends/cairo/measuring_painter.h>
#endif

#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace nodeline::bench {

namespace {

enum class Sizes { kFixed, kWarmText, kColdText };

#ifdef NODELINE_BENCH_TEXT

// Gives nodes the size of their captions.
class Captions {
public:
    // Captions of one round are the same for every graph; those of another are all different.
    void Write(const BuiltGraph& built, long long round) {
        auto* handler = new SimpleNodeHandler;
        handler->SetIPainter(&painter_);
        built.graph->SetDefaultNodeHandler(graph_ptr2<INodeHandler>(handler, true));
        const std::string prefix = "call_" + std::to_string(round) + "_";
        int number = 0;
        const auto write = [&](Node node) {
            node.SetCaption(prefix + std::to_string(number));
            ++number;
        };
        ForEachNodeIn(built.graph->GetRoot(), write, false, false);
    }

private:
    cairo::MeasuringPainter painter_;
};

#else

class Captions {
public:
    void Write(const BuiltGraph&, long long) {}
};

#endif

Captions& TheCaptions() {
    static Captions captions;
    return captions;
}

// A graph that has not been laid out yet.
BuiltGraph build(const GraphPlan& plan, Sizes sizes) {
    static long long round = 0;
    BuiltGraph built = Build(plan);
    if (sizes != Sizes::kFixed) {
        if (sizes == Sizes::kColdText) ++round;
        TheCaptions().Write(built, round);
    }
    return built;
}

void measure_make(benchmark::State& state, const Family& family, int size, Sizes sizes) {
    const GraphPlan plan = family.plan(size);
    if (sizes == Sizes::kWarmText) build(plan, sizes).graph->RecalculateLayout(nullptr);
    for ([[maybe_unused]] auto _ : state) {
        const BuiltGraph built = build(plan, sizes);
        const Stopwatch watch;
        built.graph->RecalculateLayout(nullptr);
        state.SetIterationTime(watch.Seconds());
    }
}

// Nodes without contents from the middle of the graph, which have callers to fold.
std::vector<Node> find_targets(const BuiltGraph& built) {
    std::vector<Node> leaves;
    const auto enter = [&](const Node& node) {
        if (node.GetOwned().GetCount() == 0) leaves.push_back(node);
    };
    ForEachNodeIn(built.graph->GetRoot(), enter, false, false);
    const std::size_t first = leaves.size() / 2;
    const std::size_t count = std::min<std::size_t>(16, leaves.size() - first);
    const auto start = leaves.begin() + static_cast<std::ptrdiff_t>(first);
    return {start, start + static_cast<std::ptrdiff_t>(count)};
}

// The time of a click, which is half that of folding a node and unfolding it again.
void measure_click(benchmark::State& state, const Family& family, int size, Sizes sizes) {
    const BuiltGraph built = build(family.plan(size), sizes);
    built.graph->RecalculateLayout(nullptr);
    const std::vector<Node> targets = find_targets(built);
    std::size_t next = 0;
    for ([[maybe_unused]] auto _ : state) {
        const Node& target = targets[next++ % targets.size()];
        const Stopwatch watch;
        Fold(target, FoldParents);
        built.graph->RecalculateLayout(nullptr);
        Unfold(target, FoldParents);
        built.graph->RecalculateLayout(nullptr);
        state.SetIterationTime(watch.Seconds() / 2.0);
    }
}

using Measure = void (*)(benchmark::State&, const Family&, int, Sizes);

void add(const std::string& title, const Family& family, int size, Measure measure, Sizes sizes) {
    const std::string name =
        title + "/" + std::string(family.name) + "/" + std::to_string(size) + "/";
    const char* kind = sizes == Sizes::kFixed      ? "fixed"
                       : sizes == Sizes::kWarmText ? "warm"
                                                   : "cold";
    benchmark::RegisterBenchmark((name + kind).c_str(), measure, family, size, sizes)
        ->Unit(benchmark::kMillisecond)
        ->UseManualTime();
}

void register_all() {
#ifdef NODELINE_BENCH_TEXT
    const std::vector<Sizes> kinds{Sizes::kFixed, Sizes::kWarmText, Sizes::kColdText};
#else
    const std::vector<Sizes> kinds{Sizes::kFixed};
#endif
    for (const char* name : {"calls", "boxes"}) {
        const Family& family = *FindFamily(name);
        for (const int size : {1000, 10000, 100000}) {
            for (const Sizes sizes : kinds) {
                add("Make", family, size, measure_make, sizes);
                // By the time of a click, the captions have been measured.
                if (sizes != Sizes::kColdText) add("Click", family, size, measure_click, sizes);
            }
        }
    }
}

}  // namespace

}  // namespace nodeline::bench

int main(int argc, char** argv) {
    nodeline::bench::register_all();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
