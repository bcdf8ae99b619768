#include "tests/support/host/model_server.h"

#include <chrono>
#include <thread>

#include "host/detector/processes.h"
#include "host/host_facts.h"
#include "tests/support/host/model_installation.h"

namespace {

constexpr const char* serverName = "CorvaniteHost.exe";

bool isOurServerProcess(std::uint32_t pid) {
    try {
        return detector::findProcess(serverName, true, pid);
    } catch (...) {
        return false;
    }
}

} // namespace

HostModelServers::HostModelServers(const HostModelInstallation& installation)
    : installation_(installation) {}

HostModelServers::~HostModelServers() {
    endAll();
}

void HostModelServers::remember() {
    std::uint32_t master = 0;
    try {
        master = readServerPid();
    } catch (...) {
        return;
    }
    if (!isOurServerProcess(master)) {
        return;
    }
    pids_.insert(master);
    for (const detector::ProcessEntry& entry : detector::listProcesses()) {
        if (entry.parentPid == master && entry.exeName == L"CorvaniteHost.exe") {
            pids_.insert(entry.pid);
        }
    }
}

std::set<std::uint32_t> HostModelServers::runningServerProcesses() const {
    std::set<std::uint32_t> running;
    for (const std::uint32_t pid : pids_) {
        if (isOurServerProcess(pid)) {
            running.insert(pid);
        }
    }
    return running;
}

// The double reads its switches from "host_double.cfg" beside it, one a line.
void HostModelServers::ignoreQuit() const {
    installation_.writeText("host_double.cfg", "ignore_quit\n");
}

void HostModelServers::neverListen() const {
    installation_.writeText("host_double.cfg", "never_listen\n");
}

void HostModelServers::endAll() {
    for (const std::uint32_t pid : runningServerProcesses()) {
        detector::native::terminateProcess(pid);
    }
    for (int i = 0; i < 100 && !runningServerProcesses().empty(); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    pids_.clear();
}
