#include "host/restart_policy.h"

#include <algorithm>

namespace {

// 1, 2, 4 ... seconds for the first, second, third unstable fall in a row, at most the longest.
std::int64_t waitAfter(unsigned streak) {
    std::int64_t wait = RestartPolicy::firstWaitMs;
    for (unsigned fall = 1; fall < streak && wait < RestartPolicy::longestWaitMs; ++fall) {
        wait *= 2;
    }
    return std::min(wait, RestartPolicy::longestWaitMs);
}

} // namespace

void RestartPolicy::started(std::int64_t now) {
    startedAt_ = now;
    down_ = false;
}

void RestartPolicy::running(std::int64_t now) {
    // A clock that went back makes the run count from now.
    if (now < startedAt_) {
        startedAt_ = now;
    }
    if (now - startedAt_ >= stableAfterMs) {
        streak_ = 0;
        falls_.clear();
    }
}

void RestartPolicy::fell(std::int64_t now) {
    if (down_ || failed_) {
        return;
    }
    down_ = true;
    fellAt_ = now;
    const std::int64_t ran = now - startedAt_;
    // A run of unknown length (the clock went back) counts as unstable: waiting is the safe side.
    if (ran >= unstableWithinMs) {
        streak_ = 0;
        wait_ = 0;
        return;
    }
    ++streak_;
    wait_ = waitAfter(streak_);
    while (!falls_.empty() && (now - falls_.front() >= fallWindowMs || now < falls_.front())) {
        falls_.pop_front();
    }
    falls_.push_back(now);
    failed_ = falls_.size() >= fallsToFail;
}

bool RestartPolicy::restartDue(std::int64_t now) {
    if (!down_ || failed_) {
        return false;
    }
    if (now < fellAt_) {
        fellAt_ = now;
    }
    return now - fellAt_ >= wait_;
}

void RestartPolicy::clear() {
    *this = RestartPolicy();
}
