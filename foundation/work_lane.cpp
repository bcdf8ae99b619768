#include "foundation/work_lane.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

struct WorkLane::Queue {
    std::mutex lock;
    std::condition_variable wake;
    std::deque<std::function<void()>> jobs;
    bool started = false;
};

namespace {

[[noreturn]] void serve(std::mutex& lock, std::condition_variable& wake,
                        std::deque<std::function<void()>>& jobs) {
    for (;;) {
        std::function<void()> job;
        {
            std::unique_lock<std::mutex> hold(lock);
            wake.wait(hold, [&jobs] { return !jobs.empty(); });
            job = std::move(jobs.front());
            jobs.pop_front();
        }
        try {
            job();
        } catch (...) {
            // A job that lets a failure out still leaves the lane to the next one.
        }
    }
}

} // namespace

WorkLane::WorkLane() : queue_(new Queue) {}

void WorkLane::post(std::function<void()> job) {
    Queue& lane = *queue_;
    {
        const std::lock_guard<std::mutex> hold(lane.lock);
        lane.jobs.push_back(std::move(job));
        if (!lane.started) {
            lane.started = true;
            std::thread([&lane] { serve(lane.lock, lane.wake, lane.jobs); }).detach();
        }
    }
    lane.wake.notify_one();
}

WorkLane& serverLane() {
    // Never destroyed, as its thread outlives every static.
    static WorkLane* const lane = new WorkLane;
    return *lane;
}

WorkLane& reportLane() {
    static WorkLane* const lane = new WorkLane;
    return *lane;
}
