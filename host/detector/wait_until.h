#pragma once

#include <cstdint>
#include <functional>

namespace detector {

// The program's one timed wait: calls check on a background task every 50 milliseconds until it
// holds or seconds have passed, and blocks the caller meanwhile. True when check held. A check
// that is busy when the time is up is waited for; an exception from check comes out here.
// With seconds of 0 or less the result is false and check isn't called.
bool waitUntil(std::int64_t seconds, const std::function<bool()>& check);

} // namespace detector
