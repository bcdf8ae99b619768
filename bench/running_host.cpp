#include "bench/running_host.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include "host/corvanite_host.h"

namespace {

// A server younger than a second has no operating time yet and reads as stopped.
bool waitForRunning(CorvaniteHost& host) {
    for (int tries = 0; tries < 50; ++tries) {
        if (host.serverStatus().running) {
            return true;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
    }
    return false;
}

} // namespace

CorvaniteHost& runningHost() {
    static CorvaniteHost& host = []() -> CorvaniteHost& {
        CorvaniteHost& made = *getHost();
        if (!waitForRunning(made)) {
            std::fprintf(stderr, "The server of the benchmark installation did not come up.\n");
            std::exit(1);
        }
        return made;
    }();
    return host;
}
