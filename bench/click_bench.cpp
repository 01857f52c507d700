// What one click on a port costs, next to laying the graph out from scratch.
//
//   bench-click --benchmark_filter=/calls/10000/
//
// A click folds or unfolds a node in the middle of the graph and calls `RecalculateLayout`. Make is
// `RecalculateLayout` of a fresh graph. Nodes have a fixed size, or that of their captions: "warm"
// where the captions have been measured before, "cold" where they have not. "stable" stands for
// nodes of a fixed size under `StableLayout`, everything else for `IncLayout`. Times are processor
// times of one call.
#include <bench/built_graph.h>
#include <bench/run_benchmarks.h>
#include <bench/stopwatch.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/layout/stable_layout.h>
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

enum class Setting { kFixed, kStable, kWarmText, kColdText };

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
BuiltGraph build(const GraphPlan& plan, Setting setting) {
    static long long round = 0;
    BuiltGraph built = Build(plan);
    if (setting == Setting::kStable) {
        built.graph->SetDefaultLayout(graph_ptr2<ILayout>(StableLayout::Create()));
    } else if (setting != Setting::kFixed) {
        if (setting == Setting::kColdText) ++round;
        TheCaptions().Write(built, round);
    }
    return built;
}

void measure_make(benchmark::State& state, const Family& family, int size, Setting setting) {
    const GraphPlan plan = family.plan(size);
    if (setting == Setting::kWarmText) build(plan, setting).graph->RecalculateLayout(nullptr);
    for ([[maybe_unused]] auto _ : state) {
        const BuiltGraph built = build(plan, setting);
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
void measure_click(benchmark::State& state, const Family& family, int size, Setting setting) {
    const BuiltGraph built = build(family.plan(size), setting);
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

using Measure = void (*)(benchmark::State&, const Family&, int, Setting);

void add(const std::string& title, const Family& family, int size, Measure measure,
         Setting setting) {
    const std::string name =
        title + "/" + std::string(family.name) + "/" + std::to_string(size) + "/";
    const char* kind = setting == Setting::kFixed      ? "fixed"
                       : setting == Setting::kStable   ? "stable"
                       : setting == Setting::kWarmText ? "warm"
                                                       : "cold";
    benchmark::RegisterBenchmark((name + kind).c_str(), measure, family, size, setting)
        ->Unit(benchmark::kMillisecond)
        ->UseManualTime();
}

void register_all() {
#ifdef NODELINE_BENCH_TEXT
    const std::vector<Setting> kinds{Setting::kFixed, Setting::kStable, Setting::kWarmText,
                                     Setting::kColdText};
#else
    const std::vector<Setting> kinds{Setting::kFixed, Setting::kStable};
#endif
    for (const char* name : {"calls", "boxes"}) {
        const Family& family = *FindFamily(name);
        for (const int size : {1000, 10000, 100000}) {
            for (const Setting setting : kinds) {
                add("Make", family, size, measure_make, setting);
                // By the time of a click, the captions have been measured.
                if (setting != Setting::kColdText)
                    add("Click", family, size, measure_click, setting);
            }
        }
    }
}

}  // namespace

}  // namespace nodeline::bench

int main(int argc, char** argv) {
    return nodeline::bench::RunBenchmarks(argc, argv, nodeline::bench::register_all);
}
