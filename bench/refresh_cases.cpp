// The status refresh of every timer tick, against the system calls it cannot do without. With the
// server's master held and its address and port cached, a refresh looks at the pid file's stamp and
// asks the held process whether it still runs; its floor is one question about the master's
// creation time, and one process snapshot is what it cost before. With a cold cache it also
// finds the master and the worker in snapshots and reads the TCP connection table.

#include "bench/bench_case.h"
#include "bench/process_floor.h"
#include "bench/running_host.h"
#include "foundation/exceptions.h"
#include "host/corvanite_host.h"
#include "host/detector/processes.h"
#include "host/detector/tcp_connections.h"
#include "host/host_facts.h"
#include "host/server_master.h"

namespace {

// What a start or stop forgets: the connection and the held master.
void forgetConnection() {
    runningHost().forgetConnection();
    forgetServerMaster();
}

// The master of the running server, read once: the floor asks the system and nothing else.
std::uint32_t masterPid = 0;

const BenchCaseRegistration warm{{
    .name = "refresh/warm",
    .setup = [] { runningHost().serverStatus(); },
    .run = [] { runningHost().serverStatus(); },
}};

const BenchCaseRegistration snapshot{{
    .name = "refresh/snapshot",
    .run = [] { detector::listProcesses(); },
}};

const BenchCaseRegistration floor{{
    .name = "refresh/floor",
    .setup =
        [] {
            runningHost();
            masterPid = readServerPid();
        },
    .run = [] { askCreationTime(masterPid); },
}};

const BenchCaseRegistration cold{{
    .name = "refresh/cold",
    .setup = [] { runningHost(); },
    .run = [] { runningHost().serverStatus(); },
    .prepare = forgetConnection,
}};

const BenchCaseRegistration tcpTable{{
    .name = "refresh/tcp_table",
    .run =
        [] {
            // A table that grows between its size and its read fails the read as a whole; the
            // refresh meets that at its next tick, the measure reads again, a few times at most.
            for (int attempt = 1;; ++attempt) {
                try {
                    detector::tcpConnections();
                    return;
                } catch (const detector::InternalError&) {
                    if (attempt == 10) {
                        throw;
                    }
                }
            }
        },
}};

} // namespace
