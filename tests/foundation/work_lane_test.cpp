#include "foundation/work_lane.h"

#include <chrono>
#include <condition_variable>
#include <future>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

// A lane: one thread, the jobs in the order they were handed over, a failure that escapes a job
// leaves the lane to the next; and two lanes side by side, each with a thread of its own.

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

TEST(WorkLane, JobsRunInTheirOrderOnOneThreadThatIsNotTheCallers) {
    WorkLane lane;
    Journal journal;
    for (int job = 0; job < 50; ++job) {
        lane.post([&journal, job] { journal.note(job); });
    }
    ASSERT_TRUE(journal.waitFor(50));
    const std::lock_guard<std::mutex> hold(journal.lock);
    for (int job = 0; job < 50; ++job) {
        EXPECT_EQ(journal.jobs[static_cast<std::size_t>(job)], job);
        EXPECT_EQ(journal.threads[static_cast<std::size_t>(job)], journal.threads[0]);
    }
    EXPECT_NE(journal.threads[0], std::this_thread::get_id());
}

TEST(WorkLane, TheThreadStaysFromOneCallToTheNext) {
    WorkLane lane;
    Journal journal;
    lane.post([&journal] { journal.note(1); });
    ASSERT_TRUE(journal.waitFor(1));
    std::this_thread::sleep_for(50ms);
    lane.post([&journal] { journal.note(2); });
    ASSERT_TRUE(journal.waitFor(2));
    const std::lock_guard<std::mutex> hold(journal.lock);
    EXPECT_EQ(journal.threads[0], journal.threads[1]);
}

TEST(WorkLane, AFailureThatEscapesAJobLeavesTheThreadToTheNext) {
    WorkLane lane;
    Journal journal;
    lane.post([] { throw std::runtime_error("Failed to run application"); });
    lane.post([] { throw 42; });
    lane.post([&journal] { journal.note(3); });
    ASSERT_TRUE(journal.waitFor(1));
    const std::lock_guard<std::mutex> hold(journal.lock);
    EXPECT_EQ(journal.jobs, std::vector<int>{3});
}

TEST(WorkLane, AJobOfOneLaneRunsWhileTheOtherLaneIsBusy) {
    WorkLane busy;
    WorkLane free;
    std::promise<void> release;
    std::shared_future<void> released = release.get_future().share();
    Journal journal;
    busy.post([&journal, released] {
        journal.note(1);
        released.wait();
    });
    ASSERT_TRUE(journal.waitFor(1));
    free.post([&journal] { journal.note(2); });
    EXPECT_TRUE(journal.waitFor(2));
    release.set_value();
    const std::lock_guard<std::mutex> hold(journal.lock);
    EXPECT_NE(journal.threads[0], journal.threads[1]);
}

TEST(WorkLane, TheServersAndTheReportsLanesAreTwoLastingLanes) {
    EXPECT_NE(&serverLane(), &reportLane());
    EXPECT_EQ(&serverLane(), &serverLane());
    EXPECT_EQ(&reportLane(), &reportLane());
    Journal journal;
    serverLane().post([&journal] { journal.note(1); });
    ASSERT_TRUE(journal.waitFor(1));
    reportLane().post([&journal] { journal.note(2); });
    ASSERT_TRUE(journal.waitFor(2));
    const std::lock_guard<std::mutex> hold(journal.lock);
    EXPECT_NE(journal.threads[0], journal.threads[1]);
}

} // namespace
