#include "panel/worker_thread.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

// The thread of the long-running server operations: one thread, the operations in the order
// they were handed over, and a failure that escapes an operation leaves it to the next.

namespace {

using namespace std::chrono_literals;

class Journal {
public:
    void note(int job) {
        const std::lock_guard<std::mutex> hold(lock);
        jobs.push_back(job);
        threads.push_back(std::this_thread::get_id());
        changed.notify_all();
    }
    // A minute, for a loaded machine; the jobs end the wait as soon as they are done.
    bool waitFor(std::size_t count) {
        std::unique_lock<std::mutex> hold(lock);
        return changed.wait_for(hold, 60s, [&] { return jobs.size() >= count; });
    }
    std::mutex lock;
    std::condition_variable changed;
    std::vector<int> jobs;
    std::vector<std::thread::id> threads;
};

TEST(WorkerThread, JobsRunInTheirOrderOnOneThreadThatIsNotTheCallers) {
    Journal journal;
    for (int job = 0; job < 50; ++job) {
        runOnWorkerThread([&journal, job] { journal.note(job); });
    }
    ASSERT_TRUE(journal.waitFor(50));
    const std::lock_guard<std::mutex> hold(journal.lock);
    for (int job = 0; job < 50; ++job) {
        EXPECT_EQ(journal.jobs[static_cast<std::size_t>(job)], job);
        EXPECT_EQ(journal.threads[static_cast<std::size_t>(job)], journal.threads[0]);
    }
    EXPECT_NE(journal.threads[0], std::this_thread::get_id());
}

TEST(WorkerThread, TheThreadStaysFromOneCallToTheNext) {
    Journal journal;
    runOnWorkerThread([&journal] { journal.note(1); });
    ASSERT_TRUE(journal.waitFor(1));
    std::this_thread::sleep_for(50ms);
    runOnWorkerThread([&journal] { journal.note(2); });
    ASSERT_TRUE(journal.waitFor(2));
    const std::lock_guard<std::mutex> hold(journal.lock);
    EXPECT_EQ(journal.threads[0], journal.threads[1]);
}

TEST(WorkerThread, AFailureThatEscapesAJobLeavesTheThreadToTheNext) {
    Journal journal;
    runOnWorkerThread([] { throw std::runtime_error("Failed to run application"); });
    runOnWorkerThread([] { throw 42; });
    runOnWorkerThread([&journal] { journal.note(3); });
    ASSERT_TRUE(journal.waitFor(1));
    const std::lock_guard<std::mutex> hold(journal.lock);
    EXPECT_EQ(journal.jobs, std::vector<int>{3});
}

} // namespace
