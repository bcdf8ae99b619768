// The native benchmark program: every registered case under Google Benchmark, with its usual
// command line (--benchmark_format=json, --benchmark_repetitions, --benchmark_filter).

#include <benchmark/benchmark.h>

#include "bench/bench_case.h"

namespace {

void runCase(benchmark::State& state, const BenchCase& benchCase) {
    if (benchCase.setup) {
        benchCase.setup();
    }
    for (auto _ : state) {
        if (benchCase.prepare) {
            state.PauseTiming();
            benchCase.prepare();
            state.ResumeTiming();
        }
        benchCase.run();
    }
    if (benchCase.bytesPerRun > 0) {
        state.SetBytesProcessed(state.iterations() * benchCase.bytesPerRun);
    }
    if (benchCase.counters) {
        for (const auto& [name, value] : benchCase.counters()) {
            state.counters[name] = value;
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    for (const BenchCase& benchCase : benchCases()) {
        benchmark::RegisterBenchmark(benchCase.name.c_str(), runCase, benchCase)
            ->Unit(benchmark::kMicrosecond)
            ->UseRealTime();
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
