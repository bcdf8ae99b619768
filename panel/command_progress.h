#pragma once

#include <atomic>

// True while a long-running command (Run, Stop, a new log level, the watchdog's restart) works on
// its worker thread. The interface thread takes it when it starts one, and a second request
// meanwhile is dropped; the worker lets it go. The buttons read it at each tick.
extern std::atomic<bool> commandInProgress;
