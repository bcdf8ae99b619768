#pragma once

#include <cstdint>
#include <set>

class HostModelInstallation;

// The server processes that a test brought about through the host model, so that the test can
// look at them and end them when it is over. Only processes named "CorvaniteHost.exe" that the
// test's own pid file named, and their children, are ever touched.
class HostModelServers {
public:
    explicit HostModelServers(const HostModelInstallation& installation);
    ~HostModelServers();
    HostModelServers(const HostModelServers&) = delete;
    HostModelServers& operator=(const HostModelServers&) = delete;

    // Notes the server that the pid file names now, with its children.
    void remember();

    // The remembered processes that still run.
    std::set<std::uint32_t> runningServerProcesses() const;

    // Switches of the server double for its next start.
    void ignoreQuit() const;
    void neverListen() const;

    // Ends every remembered process that still runs.
    void endAll();

private:
    const HostModelInstallation& installation_;
    std::set<std::uint32_t> pids_;
};
