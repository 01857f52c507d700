// The main program of a benchmark.
#pragma once

#include <benchmark/benchmark.h>

namespace nodeline::bench {

// Registers the benchmarks, and runs those that the command line asks for. Gives the exit status.
inline int RunBenchmarks(int argc, char** argv, void (*register_all)()) {
    register_all();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

}  // namespace nodeline::bench
