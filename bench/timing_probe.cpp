// The benchmark program of the Windows build, run under Wine: Google Benchmark has no package for
// mingw-w64, so every registered case runs in a plain timing loop here instead. It prints one JSON
// object, {"benchmarks": [...]}, with the median wall time of a run in microseconds, the number
// of runs and the case's counters, in the shape that scripts/bench.sh reads from both programs.
//
//   corvanite_bench_probe.exe [NAME_PREFIX]

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "bench/bench_case.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto minimumTime = std::chrono::seconds(2);
constexpr std::size_t minimumRuns = 5;
constexpr std::size_t maximumRuns = 100000;

double medianOf(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

// Microseconds of each timed run, after one untimed run that warms what the case touches.
std::vector<double> timeRuns(const BenchCase& benchCase) {
    if (benchCase.setup) {
        benchCase.setup();
    }
    benchCase.run();
    std::vector<double> times;
    const auto start = Clock::now();
    while (times.size() < maximumRuns &&
           (times.size() < minimumRuns || Clock::now() - start < minimumTime)) {
        if (benchCase.prepare) {
            benchCase.prepare();
        }
        const auto before = Clock::now();
        benchCase.run();
        const std::chrono::duration<double, std::micro> took = Clock::now() - before;
        times.push_back(took.count());
    }
    return times;
}

void printCase(const BenchCase& benchCase, const std::vector<double>& times, bool last) {
    const double median = medianOf(times);
    std::printf("    {\"name\": \"%s\", \"iterations\": %zu, \"real_time\": %.3f, "
                "\"time_unit\": \"us\"",
                benchCase.name.c_str(), times.size(), median);
    if (benchCase.bytesPerRun > 0) {
        std::printf(", \"bytes_per_second\": %.1f", benchCase.bytesPerRun / (median / 1e6));
    }
    if (benchCase.counters) {
        for (const auto& [name, value] : benchCase.counters()) {
            std::printf(", \"%s\": %.3f", name.c_str(), value);
        }
    }
    std::printf("}%s\n", last ? "" : ",");
}

} // namespace

// With an argument, only the cases whose names begin with it run.
int main(int argc, char** argv) {
    const std::string prefix = argc > 1 ? argv[1] : "";
    std::vector<const BenchCase*> chosen;
    for (const BenchCase& benchCase : benchCases()) {
        if (benchCase.name.starts_with(prefix)) {
            chosen.push_back(&benchCase);
        }
    }
    std::printf("{\"benchmarks\": [\n");
    for (std::size_t i = 0; i < chosen.size(); ++i) {
        printCase(*chosen[i], timeRuns(*chosen[i]), i + 1 == chosen.size());
        std::fflush(stdout);
    }
    std::printf("]}\n");
    return 0;
}
