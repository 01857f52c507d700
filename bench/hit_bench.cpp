// What it takes to find the nodes and edges under the pointer, in a call graph that is laid out.
//
// "Still" asks a graph that does not change. "Changed" moves a node before every query, and
// "ChangedTwice" asks twice after each such move: an index pays from the second query on.
#include <bench/built_graph.h>
#include <bench/run_benchmarks.h>

#include <benchmark/benchmark.h>

#include <algorithm>

namespace nodeline::bench {

namespace {

enum class Kind { kNodes, kEdges };

// The last graph that was asked for: one of 100,000 nodes takes a while to lay out.
BuiltGraph& laid_out_calls(int size) {
    static int built_size = 0;
    static BuiltGraph built;
    if (!built.graph || built_size != size) {
        built = BuiltGraph();
        built = Build(FindFamily("calls")->plan(size));
        built.graph->RecalculateLayout(nullptr);
        built_size = size;
    }
    return built;
}

int count_hits(Graph& graph, Kind kind, const rectangle<double>& r) {
    return kind == Kind::kNodes ? graph.HitNodeTest(r.left, r.top, r.right, r.bottom).GetCount()
                                : graph.HitEdgeTest(r.left, r.top, r.right, r.bottom).GetCount();
}

// Small squares all over the drawing, in steps that never meet a place twice.
class Places {
public:
    explicit Places(const nodeline::size<double>& drawing) : drawing_(drawing) {}

    rectangle<double> Next() {
        u_ = advance(u_, 0.7548776662466927);
        v_ = advance(v_, 0.5698402909980532);
        const double x = u_ * drawing_.cx;
        const double y = v_ * drawing_.cy;
        return {x, y, x + 8.0, y + 8.0};
    }

private:
    static double advance(double value, double step) {
        value += step;
        return value < 1.0 ? value : value - 1.0;
    }

    nodeline::size<double> drawing_;
    double u_ = 0.0;
    double v_ = 0.0;
};

void measure_few(benchmark::State& state, Kind kind, int queries_after_change) {
    const BuiltGraph& built = laid_out_calls(static_cast<int>(state.range(0)));
    Graph& graph = *built.graph;
    Node moved = graph.GetRoot().GetOwned().GetItem(0);
    Places places(graph.GetRoot().GetSize());
    for (int i = 0; i < 2; ++i) count_hits(graph, kind, places.Next());
    long long hits = 0;
    for ([[maybe_unused]] auto _ : state) {
        if (queries_after_change > 0) moved.SetPosition(moved.GetPosition());
        for (int i = 0; i < std::max(1, queries_after_change); ++i) {
            hits += count_hits(graph, kind, places.Next());
        }
    }
    state.counters["hits"] =
        benchmark::Counter(static_cast<double>(hits), benchmark::Counter::kAvgIterations);
}

void measure_all(benchmark::State& state, Kind kind) {
    const BuiltGraph& built = laid_out_calls(static_cast<int>(state.range(0)));
    const nodeline::size<double> drawing = built.graph->GetRoot().GetSize();
    int hits = 0;
    for ([[maybe_unused]] auto _ : state) {
        hits = count_hits(*built.graph, kind, {0.0, 0.0, drawing.cx, drawing.cy});
    }
    state.counters["hits"] = static_cast<double>(hits);
}

template <Kind kKind, int kQueriesAfterChange>
void few(benchmark::State& state) {
    measure_few(state, kKind, kQueriesAfterChange);
}

template <Kind kKind>
void all(benchmark::State& state) {
    measure_all(state, kKind);
}

void register_all() {
    const auto add = [](const char* name, void (*measure)(benchmark::State&)) {
        benchmark::RegisterBenchmark(name, measure)
            ->RangeMultiplier(10)
            ->Range(1000, 100000)
            ->Unit(benchmark::kMicrosecond);
    };
    add("HitNodeTest/Still", few<Kind::kNodes, 0>);
    add("HitNodeTest/Changed", few<Kind::kNodes, 1>);
    add("HitNodeTest/ChangedTwice", few<Kind::kNodes, 2>);
    add("HitNodeTest/All", all<Kind::kNodes>);
    add("HitEdgeTest/Still", few<Kind::kEdges, 0>);
    add("HitEdgeTest/Changed", few<Kind::kEdges, 1>);
    add("HitEdgeTest/ChangedTwice", few<Kind::kEdges, 2>);
    add("HitEdgeTest/All", all<Kind::kEdges>);
}

}  // namespace

}  // namespace nodeline::bench

int main(int argc, char** argv) {
    return nodeline::bench::RunBenchmarks(argc, argv, nodeline::bench::register_all);
}
