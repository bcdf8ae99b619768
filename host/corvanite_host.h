#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "host/detector/processes.h"
#include "host/held_port.h"

// A port that another program held when the server was to start, and who held it (none when the
// holder ended before it could be named).
struct HeldPort {
    std::uint32_t port = 0;
    std::optional<heldport::Holder> holder;
};

// The state of the server as one refresh found it; "-" stands for every value not known.
struct ServerStatus {
    bool running = false;
    // Whether the master runs, as isServerRunning tells it; none when the refresh didn't look,
    // with an operation in progress.
    std::optional<bool> masterRunning;
    std::string time = "-";
    std::string port = "-";
    std::string address = "-";
};

// The control panel's model of the supervised server, "CorvaniteHost.exe" in the installation
// folder. There is one per process (getHost). Every refresh asks the system whether the server
// runs: the held master process (host/server_master.h) while the pid file stays as it was, a
// process snapshot otherwise. The worker that owns the server's connection is held the same way,
// with the connection's address and port, while it and its master run: a warm refresh reads
// neither a snapshot nor the connection table, whatever address the server listens on.
// Destroying it doesn't touch the server.
class CorvaniteHost {
public:
    // Starts the server unless it runs already, and waits for it for up to 90 seconds. A failure
    // to start leaves the constructor.
    CorvaniteHost();
    CorvaniteHost(const CorvaniteHost&) = delete;
    CorvaniteHost& operator=(const CorvaniteHost&) = delete;

    // Never fails: whatever can't be found out reads as stopped.
    ServerStatus serverStatus();

    // Run: starts the server unless its pid file names a running server of this user.
    void startServer();
    // Stop: stops a running server, killing it when it doesn't go within 20 seconds.
    void stopServer();
    // Writes the chosen log level into nginx.conf and restarts a running server for it.
    void applyLogLevel();
    // The one run behind start and stop: launches the server's executable (with " -s quit" to
    // stop) and waits for the server to come up or go. Throws std::runtime_error when the
    // installation is incomplete; shows every other failure in a message box.
    void controlServer(bool stop);
    // Opens the server's logs folder.
    void openLogs();
    // Opens the service page at the server's port in the default browser.
    void openServicePage();

    // The reports, made by the diagnostics beside their collectors.
    void collectInformation();
    void reportProblem();

    // Takes the host for one start, stop or level change that is about to begin on a thread of
    // its own, before that thread starts; false while another one has it. The operation itself
    // lets it go when it ends. One called without a claim takes the host for itself, and one
    // that finds the host taken by another does nothing.
    bool claimOperation();
    // True from a claim, or the start of an operation, to that operation's end: the refresh then
    // reports stopped without looking.
    bool busy() const;

    // Empties the cache: the server may come back on another port. Every start or stop begins
    // with it.
    void forgetConnection();

    // The port that the last start found held by another program, until the next start.
    std::optional<HeldPort> heldPort() const;

    // Ends every process of this installation's server, whatever its parent: a master that
    // ignored its stop, a worker that outlived its master. Processes of the same name run from
    // another folder, or by another user, are left alone.
    void endInstallationProcesses();

    // The cached address and port of the server's connection; empty when not known.
    std::string cachedAddress() const;
    std::string cachedPort() const;

private:
    // True when the held worker belongs to this master and still runs, as `running` says when
    // the master's question asked it too: the cached address and port are its. Called with
    // cacheLock_ held.
    bool holdsWorkerOf(std::uint32_t masterPid, std::optional<bool> running) const;
    // Looks for the master's worker and its connection, and holds both; false when either isn't
    // there yet. Called with cacheLock_ held.
    bool lookForWorker(std::uint32_t masterPid);
    // Lets go of the worker and its connection. Called with cacheLock_ held.
    void dropWorker();

    // Looks for another program on nginx.conf's port; when there is one, keeps it for the status
    // and tells the user in a box naming it. True when the port is held.
    bool reportHeldPort();

    // One start, stop or level change holding the host, from its beginning to its end.
    class Operation;
    enum OperationState : std::uint8_t { idle, claimed, running };

    // Guards address_ and port_: a refresh runs wholly before or after the changes of a start or
    // stop, and two refreshes (the timer's and a report's) don't meet. Never held across a wait.
    mutable std::mutex cacheLock_;
    // Local address of the server's connection, dotted decimal; empty when not known.
    std::string address_;
    // Local port of the server's connection, decimal; empty when not known.
    std::string port_;
    // The worker whose connection address and port are, and the master it was found under. A
    // listener on every interface has an empty address, so the held worker, not the address,
    // tells a refresh that the connection is known.
    std::optional<detector::ProcessIdentity> worker_;
    std::uint32_t workerMaster_ = 0;
    // Guards heldPort_, which a start writes and the window's tick reads.
    mutable std::mutex heldPortLock_;
    std::optional<HeldPort> heldPort_;
    // The object is made claimed: the constructor's start is its first operation.
    std::atomic<OperationState> operation_{claimed};
};

// The host of this process, made (and the server started) at the first call, which comes on the
// main thread before any other thread exists.
std::shared_ptr<CorvaniteHost> getHost();

// The server's operating time, "01 d. : 02 h. : 03 m. : 04 s." in English; "-" for 0 seconds.
std::string uptimeText(std::uint64_t seconds);

// The text of the address link: "<a>", the service domain, ":", the port, "</a>"; "-" for "-".
std::string addressLinkText(const std::string& port);

// The service page on the port: "https://", the service domain, ":", the port. The address link
// opens it and shows it as its tooltip; with an empty port, it is the tooltip before the first
// refresh.
std::wstring serviceUrl(const std::string& port);

// "Running" or "Stopped" in the user's language.
std::string statusText(bool running);
