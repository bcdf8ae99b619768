#include "bench/bench_case.h"

#include <cstdlib>
#include <utility>

std::vector<BenchCase>& benchCases() {
    static std::vector<BenchCase> cases;
    return cases;
}

BenchCaseRegistration::BenchCaseRegistration(BenchCase benchCase) {
    benchCases().push_back(std::move(benchCase));
}

std::string benchDataFolder() {
    const char* folder = std::getenv("CORVANITE_BENCH_DATA");
    return folder == nullptr ? std::string("bench-data") : std::string(folder);
}
