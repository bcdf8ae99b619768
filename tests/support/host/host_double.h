#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "tests/support/foundation/temp_folder.h"

// The built server double, CorvaniteHost.exe, as the programs under test name it.
std::string hostDoubleExecutable();

// The built port holder, PortHolder.exe, as the programs under test name it.
std::string portHolderExecutable();

// A path of the build machine as the programs under test see it: unchanged on POSIX, on drive Z:
// under Wine.
std::string systemPath(const std::string& buildPath);

// "<stem>-<number>.exe" with a number that no other run of the tests uses, so that a test can end
// every process of that name without touching another test's.
std::string uniqueExecutableName(const std::string& stem = "CorvaniteHost");

// The pids of the processes of exactly this name.
std::vector<std::uint32_t> pidsNamed(const std::string& name);

// Polls condition every 20 milliseconds until it holds or limit has passed; true when it held.
bool eventually(const std::function<bool()>& condition,
                std::chrono::milliseconds limit = std::chrono::seconds(10));

// An installation folder holding a copy of the server double, and the guard of the processes the
// copy runs as: when it goes, however the test ended, it ends them. With a name of its own (the
// default) that is every process of that name; under the shipped name "CorvaniteHost.exe" it is
// the processes it learnt of, the pid of its pid file and their children.
class DoubleInstallation {
public:
    explicit DoubleInstallation(std::string exeName = uniqueExecutableName());
    ~DoubleInstallation();
    DoubleInstallation(const DoubleInstallation&) = delete;
    DoubleInstallation& operator=(const DoubleInstallation&) = delete;

    const std::string& folder() const { return temp_.path(); }
    const std::string& exeName() const { return exeName_; }
    std::string executable() const { return temp_.file(exeName_); }
    std::string file(const std::string& name) const { return temp_.file(name); }

    // conf/nginx.conf, and the double's side file host_double.cfg.
    void writeConfiguration(const std::string& text) const;
    void writeSwitches(const std::string& text) const;

    // The pid in nginx.pid, if the file is there and holds one.
    std::optional<std::uint32_t> pidFromFile() const;

    // Starts the copy through the launcher under test: the server without arguments, the stop
    // run with " -s quit", or a private mode of the double.
    bool launch(const std::string& arguments = "");

    // The master once nginx.pid names a running process, and its worker once it is there; 0 when
    // that didn't happen within limit. Both are remembered for the guard.
    std::uint32_t waitForMaster(std::chrono::milliseconds limit = std::chrono::seconds(10));
    std::uint32_t waitForWorker(std::uint32_t master,
                                std::chrono::milliseconds limit = std::chrono::seconds(10));

    // A process of this copy for the guard to end.
    void remember(std::uint32_t pid) { known_.insert(pid); }

    // The guard's work: ends the processes of this copy and waits until they are gone.
    void endProcesses();

private:
    bool isOurs(std::uint32_t pid, std::uint32_t parentPid) const;
    // Ends the console hosts that the copy's processes leave.
    void endConsoleHosts() const;

    TempFolder temp_;
    std::string exeName_;
    bool sharedName_;
    std::set<std::uint32_t> known_;
    // The console hosts that were there before the copy ran: none of them is its.
    std::set<std::uint32_t> consoleHostsBefore_;
};

// A started server of a copy whose worker is there; 0 for both when it didn't come up.
struct RunningServer {
    explicit RunningServer(DoubleInstallation& installation);
    // Whether master and worker have both ended, waited for as long as eventually waits.
    bool ended() const;

    std::uint32_t master = 0;
    std::uint32_t worker = 0;
};
