#pragma once

#include <atomic>

// True while a long-running command (Run, Stop, a new log level) works on its worker thread. The
// interface thread sets it, the worker clears it; a stale read costs at most one tick of wrong
// button states, so relaxed order is enough.
extern std::atomic<bool> commandInProgress;
