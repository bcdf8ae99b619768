#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "host/restart_policy.h"

// What the window's tick does about a server that went down by itself: it starts it again when
// the restart policy lets it, and gives up on one that keeps falling, keeping the first
// alarming line of its error log as the cause.
class ServerWatchdog {
public:
    // Milliseconds of the clock the times are read from.
    using Clock = std::function<std::int64_t()>;
    explicit ServerWatchdog(Clock clock);

    // One tick. running: the server is up; wentDown: it ran at the last tick and nothing was in
    // progress since; busy: a start, stop or level change runs, the watchdog's own or the
    // user's. True when a restart is to begin now; the caller starts the server then.
    bool tick(bool running, bool wentDown, bool busy);
    // Run, Stop or a level change asked for by the user: a failure ends at once, the user tries
    // again, and the server's lines from now on are its next start's.
    void commandByUser();
    // Too many falls: no restart until the user's next command.
    bool failed() const { return policy_.failed(); }
    // The first alarming line of the error log since the last start; none when there was none.
    const std::optional<std::string>& cause() const { return cause_; }

private:
    void fell(std::int64_t now);

    Clock clock_;
    // An operation ran at the last tick; the watchdog asked for a start that hasn't been seen
    // to end yet.
    bool busy_ = false;
    bool ownStart_ = false;
    RestartPolicy policy_;
    std::uint64_t logOffset_ = 0;
    std::optional<std::string> cause_;
};

// Milliseconds of the steady clock, the window's watchdog's clock.
std::int64_t steadyMilliseconds();
