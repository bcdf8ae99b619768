#include "diagnostics/run_all.h"

#include <future>

namespace {

template <typename Result>
std::vector<std::future<Result>> startAll(const std::vector<std::function<Result()>>& callables) {
    std::vector<std::future<Result>> futures;
    futures.reserve(callables.size());
    for (const auto& callable : callables) {
        futures.push_back(std::async(std::launch::async, callable));
    }
    return futures;
}

} // namespace

// A failure that comes out leaves the remaining futures behind; their tasks are still waited for
// when the futures go, as those of std::async are.
void runAll(const std::vector<Collector>& collectors, bool ignoreFailures) {
    std::vector<std::future<void>> futures = startAll(collectors);
    for (auto& future : futures) {
        try {
            future.get();
        } catch (...) {
            if (!ignoreFailures) {
                throw;
            }
        }
    }
}

std::vector<std::string> runAllCollect(const std::vector<SectionMaker>& sectionMakers,
                                       bool ignoreFailures) {
    std::vector<std::future<std::string>> futures = startAll(sectionMakers);
    std::vector<std::string> texts;
    for (auto& future : futures) {
        try {
            texts.push_back(future.get());
        } catch (...) {
            if (!ignoreFailures) {
                throw;
            }
        }
    }
    return texts;
}
