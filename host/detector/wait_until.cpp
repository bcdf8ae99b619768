#include "host/detector/wait_until.h"

#include <atomic>
#include <chrono>
#include <future>
#include <thread>

namespace detector {

namespace {

// The state word holds a std::future_status once the caller stopped waiting; both of its values
// that wait_for can give, ready and timeout, differ from this one.
constexpr int waiting = 2;
constexpr auto pollDelay = std::chrono::milliseconds(50);

} // namespace

bool waitUntil(std::int64_t seconds, const std::function<bool()>& check) {
    if (seconds <= 0) {
        return false;
    }
    std::atomic<int> state{waiting};
    std::future<void> task = std::async(std::launch::async, [&check, &state] {
        while (!check() && state.load(std::memory_order_relaxed) == waiting) {
            std::this_thread::sleep_for(pollDelay);
        }
    });
    const std::future_status status = task.wait_for(std::chrono::seconds(seconds));
    state.store(static_cast<int>(status), std::memory_order_relaxed);
    task.get(); // waits for a check that is still busy, and lets its exception out
    return status == std::future_status::ready;
}

} // namespace detector
