// The status refresh of every timer tick, against the system calls it cannot do without. With the
// server's address and port cached, a refresh reads the pid file and takes one process snapshot;
// with a cold cache it also finds the worker and reads the TCP connection table.
//
// The installation is the one that the registry's "Path" names, with the server double in it:
// scripts/bench.sh prepares it and stops the server afterwards.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include "bench/bench_case.h"
#include "host/corvanite_host.h"
#include "host/detector/processes.h"
#include "host/detector/tcp_connections.h"

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

// The host of the process, with the server up: without it the numbers would mean nothing.
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

void forgetConnection() {
    runningHost().address.clear();
    runningHost().port.clear();
}

const BenchCaseRegistration warm{{
    .name = "refresh/warm",
    .setup = [] { runningHost().serverStatus(); },
    .run = [] { runningHost().serverStatus(); },
}};

const BenchCaseRegistration snapshot{{
    .name = "refresh/snapshot",
    .run = [] { detector::listProcesses(); },
}};

const BenchCaseRegistration cold{{
    .name = "refresh/cold",
    .setup = [] { runningHost(); },
    .run = [] { runningHost().serverStatus(); },
    .prepare = forgetConnection,
}};

const BenchCaseRegistration tcpTable{{
    .name = "refresh/tcp_table",
    .run = [] { detector::tcpConnections(); },
}};

} // namespace
