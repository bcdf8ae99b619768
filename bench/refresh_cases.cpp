// The status refresh of every timer tick, against the system calls it cannot do without. With the
// server's address and port cached, a refresh reads the pid file and takes one process snapshot;
// with a cold cache it also finds the worker and reads the TCP connection table.

#include "bench/bench_case.h"
#include "bench/running_host.h"
#include "host/corvanite_host.h"
#include "host/detector/processes.h"
#include "host/detector/tcp_connections.h"

namespace {

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
