#pragma once

#include <functional>

// The one thread that runs the long-running server operations (Run, Stop, a new log level, the
// watchdog's restart), one after another. It is made by the first operation and waits for the
// next one as long as the program lives. A thread made and ended for each operation is what it
// replaces: under Wine, two such threads ending at once were seen to stop each other for good in
// the system's loader, and the panel then waited forever with Run and Stop disabled.

// Hands the job to the thread and returns at once; the job runs after those handed before it. A
// job tells its own failures.
void runOnWorkerThread(std::function<void()> job);
