#include "panel/worker_thread.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

namespace {

struct WorkerThread {
    std::mutex lock;
    std::condition_variable wake;
    std::deque<std::function<void()>> jobs;
};

[[noreturn]] void serve(WorkerThread& worker) {
    for (;;) {
        std::function<void()> job;
        {
            std::unique_lock<std::mutex> hold(worker.lock);
            worker.wake.wait(hold, [&worker] { return !worker.jobs.empty(); });
            job = std::move(worker.jobs.front());
            worker.jobs.pop_front();
        }
        try {
            job();
        } catch (...) {
            // A job that lets a failure out still leaves the thread to the next one.
        }
    }
}

WorkerThread& workerThread() {
    // Never destroyed: the thread waits on it until the process ends.
    static WorkerThread* const worker = [] {
        auto* made = new WorkerThread;
        std::thread([made] { serve(*made); }).detach();
        return made;
    }();
    return *worker;
}

} // namespace

void runOnWorkerThread(std::function<void()> job) {
    WorkerThread& worker = workerThread();
    {
        const std::lock_guard<std::mutex> hold(worker.lock);
        worker.jobs.push_back(std::move(job));
    }
    worker.wake.notify_one();
}
