#pragma once

#include <cstdint>
#include <deque>

// When a server that went down by itself is started again. A server that ran a while is started
// again at once. One that falls soon after its start is unstable: each such fall in a row doubles
// the wait before the next start (1, 2, 4 ... at most 60 seconds), and enough of them within a
// while mean that starting it again is of no use: the policy gives up and the server is failed
// until the user runs it. Times are milliseconds of a clock the caller reads, which may jump
// back; nothing here reads a clock, so the policy is tested with any times.
class RestartPolicy {
public:
    // A fall this soon after its start is unstable.
    static constexpr std::int64_t unstableWithinMs = 30'000;
    static constexpr std::int64_t firstWaitMs = 1'000;
    static constexpr std::int64_t longestWaitMs = 60'000;
    // This many unstable falls within the window make the server failed.
    static constexpr std::size_t fallsToFail = 5;
    static constexpr std::int64_t fallWindowMs = 10 * 60'000;
    // Running this long without a fall forgets the falls before.
    static constexpr std::int64_t stableAfterMs = 5 * 60'000;

    // A start began, whoever asked for it.
    void started(std::int64_t now);
    // The server ran at this tick: a long enough run forgets earlier falls.
    void running(std::int64_t now);
    // The server went down by itself.
    void fell(std::int64_t now);
    // True when the server is down by itself, not failed, and its wait is over. A clock that
    // went back restarts the wait from now, so it never exceeds its length.
    bool restartDue(std::int64_t now);
    // The wait before the next start after the last fall; 0 for a stable fall.
    std::int64_t waitMs() const { return wait_; }
    // Too many unstable falls: no start until the user asks.
    bool failed() const { return failed_; }
    // Run, from the window or the tray: forgets every fall and lets the server start at once.
    void clear();

private:
    std::int64_t startedAt_ = 0;
    std::int64_t fellAt_ = 0;
    std::int64_t wait_ = 0;
    // Unstable falls in a row, for the doubling.
    unsigned streak_ = 0;
    // The times of the unstable falls within the window.
    std::deque<std::int64_t> falls_;
    bool down_ = false;
    bool failed_ = false;
};
