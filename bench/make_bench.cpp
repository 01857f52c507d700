// What it takes to build a graph, to lay it out and to take it apart, by family and size.
//
//   bench-make --benchmark_filter=Make/calls/
//
// Times are processor times of one call. Every call gets a fresh graph: a second layout of the same
// graph would find memory and break nodes of the first.
#include <bench/built_graph.h>
#include <bench/run_benchmarks.h>
#include <bench/stopwatch.h>

#include <benchmark/benchmark.h>

#include <string>
#include <utility>

namespace nodeline::bench {

namespace {

enum class Stage { kBuild, kMake, kRecalculateLayout, kTearDown };

// Takes a graph through its life up to the stage, and tells how long that alone took. Counts what
// there is at that point, if it is not known yet.
double time_stage(const GraphPlan& plan, Stage stage, Elements& elements) {
    const auto count_once = [&](const BuiltGraph& built) {
        if (elements.nodes == 0) elements = CountElements(built);
    };
    const Stopwatch build_watch;
    BuiltGraph built = Build(plan);
    const double build_seconds = build_watch.Seconds();
    if (stage == Stage::kBuild) {
        count_once(built);
        return build_seconds;
    }
    const Stopwatch layout_watch;
    if (stage == Stage::kMake) {
        built.layout->Make(built.graph->GetRoot());
    } else {
        built.graph->RecalculateLayout(nullptr);
    }
    const double layout_seconds = layout_watch.Seconds();
    count_once(built);
    if (stage != Stage::kTearDown) return layout_seconds;
    const Stopwatch teardown_watch;
    built.graph.reset();
    built.layout.reset();
    return teardown_watch.Seconds();
}

void measure(benchmark::State& state, const Family& family, int size, Stage stage) {
    const GraphPlan plan = family.plan(size);
    Elements elements;
    double total = 0.0;
    for ([[maybe_unused]] auto _ : state) {
        const double seconds = time_stage(plan, stage, elements);
        state.SetIterationTime(seconds);
        total += seconds;
    }
    state.counters["nodes"] = static_cast<double>(elements.nodes);
    state.counters["edges"] = static_cast<double>(elements.edges);
    state.counters["breaks"] = static_cast<double>(elements.breaks);
    state.counters["ns_per_element"] =
        1e9 * total / static_cast<double>(state.iterations()) / static_cast<double>(elements.sum());
}

void register_all() {
    constexpr std::pair<const char*, Stage> kStages[] = {
        {"Build", Stage::kBuild},
        {"Make", Stage::kMake},
        {"RecalculateLayout", Stage::kRecalculateLayout},
        {"TearDown", Stage::kTearDown}};
    for (const auto& [title, stage] : kStages) {
        for (const Family& family : Families()) {
            for (const int size : SizesOf(family)) {
                const std::string name = std::string(title) + "/" + std::string(family.name) + "/" +
                                         std::to_string(size);
                benchmark::RegisterBenchmark(name.c_str(), measure, family, size, stage)
                    ->Unit(benchmark::kMillisecond)
                    ->UseManualTime();
            }
        }
    }
}

}  // namespace

}  // namespace nodeline::bench

int main(int argc, char** argv) {
    return nodeline::bench::RunBenchmarks(argc, argv, nodeline::bench::register_all);
}
