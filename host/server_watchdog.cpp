#include "host/server_watchdog.h"

#include <chrono>
#include <utility>

#include "host/server_failure.h"

ServerWatchdog::ServerWatchdog(Clock clock) : clock_(std::move(clock)) {}

void ServerWatchdog::fell(std::int64_t now) {
    policy_.fell(now);
    if (policy_.failed()) {
        cause_ = serverfailure::firstAlarmLine(serverfailure::errorLogSince(logOffset_));
    }
}

void ServerWatchdog::commandByUser() {
    logOffset_ = serverfailure::errorLogSize();
    if (policy_.failed()) {
        policy_.clear();
        cause_.reset();
    }
}

bool ServerWatchdog::tick(bool running, bool wentDown, bool busy) {
    const std::int64_t now = clock_();
    if (busy) {
        if (!busy_ && !ownStart_) {
            // A command of the user's: Run first of all ends a failure, the user tries again.
            commandByUser();
        }
        busy_ = true;
        // A start counts from its end: one that waited long for its server isn't a long run.
        policy_.started(now);
        return false;
    }
    // The watchdog's own start that ended without a running server fell during its start.
    const bool fellWhileStarting = ownStart_ && !running;
    busy_ = false;
    ownStart_ = false;
    if (running) {
        policy_.running(now);
        return false;
    }
    if (wentDown || fellWhileStarting) {
        fell(now);
    }
    if (!policy_.restartDue(now)) {
        return false;
    }
    // Taken before the start, so that a line the server writes at once is read as its own.
    logOffset_ = serverfailure::errorLogSize();
    policy_.started(now);
    ownStart_ = true;
    return true;
}

std::int64_t steadyMilliseconds() {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}
