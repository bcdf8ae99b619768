#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

// One measured operation. The same cases run natively under Google Benchmark and, on Windows, where
// that library has no package, under the program's own timing loop; scripts/bench.sh reads both.
struct BenchCase {
    // "group/what", e.g. "refresh/warm"; the name is what scripts/bench.sh looks for.
    std::string name;
    // Untimed, before the case's first timed run: brings up what the case measures against.
    std::function<void()> setup;
    // Timed, once an iteration.
    std::function<void()> run;
    // Untimed, before each run: puts a cache in the state the case measures.
    std::function<void()> prepare;
    // Bytes that one run handles, for a throughput; 0 for none.
    std::int64_t bytesPerRun = 0;
    // Facts of the case that are not times (an output size), read after the runs.
    std::function<std::map<std::string, double>()> counters;
};

std::vector<BenchCase>& benchCases();

// Registers a case at static initialisation: `const BenchCaseRegistration r{{...}};`.
struct BenchCaseRegistration {
    explicit BenchCaseRegistration(BenchCase benchCase);
};

// The folder of input files that scripts/bench.sh makes (CORVANITE_BENCH_DATA), as a UTF-8 path.
std::string benchDataFolder();
