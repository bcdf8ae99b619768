#include "host/corvanite_host.h"

#include <atomic>
#include <chrono>
#include <exception>
#include <functional>
#include <optional>
#include <stdexcept>
#include <thread>

#include "foundation/code_page.h"
#include "foundation/filesys.h"
#include "foundation/message_box.h"
#include "foundation/message_catalogue.h"
#include "foundation/shell_open.h"
#include "foundation/text.h"
#include "host/detector/launch_process.h"
#include "host/detector/processes.h"
#include "host/detector/tcp_connections.h"
#include "host/detector/wait_until.h"
#include "host/host_facts.h"
#include "host/host_files.h"
#include "host/nginx_config.h"
#include "host/server_master.h"

namespace {

// nginx's own way to stop: the executable once more with the signal option.
constexpr const char* stopArguments = " -s quit";
constexpr std::int64_t startTimeoutSeconds = 90;
constexpr std::int64_t stopTimeoutSeconds = 20;
// Inside the check itself; the wait adds its own pause between checks.
constexpr auto checkDelay = std::chrono::milliseconds(500);

// A failed run of the server's executable. The words are looked up when they are read, so that
// they follow a change of language made meanwhile.
class ServerError : public std::exception {
public:
    enum class Kind : std::uint8_t { start, stop };

    explicit ServerError(Kind kind) : kind(kind) {}

    const char* what() const noexcept override {
        switch (kind) {
        case Kind::start:
            return panelMessages.text(panelmsg::serverNotStarted);
        case Kind::stop:
            return panelMessages.text(panelmsg::serverNotStopped);
        default:
            return panelMessages.text(panelmsg::internalError);
        }
    }

    Kind kind;
};

// The master process holds no connection of interest: the port belongs to its worker, the first
// child that runs the server's own executable. Raises detector::ConnectionNotFound while the worker
// isn't there or doesn't listen yet.
detector::TcpConnection serverConnection(std::uint32_t masterPid) {
    return detector::connectionOfProcess(detector::childProcessId(masterPid, hostFileName));
}

// The master of a start wrote its pid and is gone again: a server with a bad configuration
// falls at once, and waiting out the whole time for it tells nobody anything.
bool fellDuringStart() {
    try {
        const std::uint32_t pid = readServerPid();
        return pid != 0 && !detector::processExists(pid);
    } catch (...) {
        return false;
    }
}

// A server counts as up when the pid file names a living process whose worker owns a connection,
// and as down when the pid file or its process is gone. A start is also over when its server
// fell meanwhile; the next refresh shows it stopped.
std::function<bool()> serverReachedCheck(bool expected) {
    return [expected] {
        std::this_thread::sleep_for(checkDelay);
        if (expected && fellDuringStart()) {
            return true;
        }
        if (isServerRunning() != expected) {
            return false;
        }
        if (!expected) {
            return true;
        }
        try {
            serverConnection(readServerPid());
        } catch (...) {
            return false;
        }
        return true;
    };
}

// The folder's name doesn't change while the program runs: one box tells it, and the starts and
// stops after it (the watchdog's, the user's) fail without another.
void tellFolderNotWritable() {
    static std::atomic<bool> told{false};
    if (!told.exchange(true)) {
        showMessageBox(productName,
                       folderNotWritableText(installationPath(), codepage::systemCodePage()),
                       MessageBoxKind::error);
    }
}

} // namespace

// Runs only when it takes the host: free, or claimed for it by whoever started it. Its release
// pairs with the refresh's acquire, so that a refresh after the operation sees its changes.
class CorvaniteHost::Operation {
public:
    explicit Operation(std::atomic<OperationState>& state) : state_(state) {
        OperationState expected = claimed;
        owns = state_.compare_exchange_strong(expected, running, std::memory_order_acq_rel);
        expected = idle;
        owns = owns || state_.compare_exchange_strong(expected, running, std::memory_order_acq_rel);
    }
    ~Operation() {
        if (owns) {
            state_.store(idle, std::memory_order_release);
        }
    }
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;

    // False when another operation holds the host: this one does nothing.
    bool owns = false;

private:
    std::atomic<OperationState>& state_;
};

CorvaniteHost::CorvaniteHost() {
    startServer();
}

std::shared_ptr<CorvaniteHost> getHost() {
    static std::shared_ptr<CorvaniteHost> host;
    if (!host) {
        host = std::make_shared<CorvaniteHost>();
    }
    return host;
}

bool CorvaniteHost::claimOperation() {
    OperationState expected = idle;
    return operation_.compare_exchange_strong(expected, claimed, std::memory_order_acq_rel);
}

bool CorvaniteHost::busy() const {
    return operation_.load(std::memory_order_acquire) != idle;
}

std::string CorvaniteHost::cachedAddress() const {
    const std::lock_guard<std::mutex> lock(cacheLock_);
    return address_;
}

std::string CorvaniteHost::cachedPort() const {
    const std::lock_guard<std::mutex> lock(cacheLock_);
    return port_;
}

void CorvaniteHost::forgetConnection() {
    const std::lock_guard<std::mutex> lock(cacheLock_);
    dropWorker();
}

void CorvaniteHost::dropWorker() {
    worker_.reset();
    workerMaster_ = 0;
    address_.clear();
    port_.clear();
}

bool CorvaniteHost::holdsWorkerOf(std::uint32_t masterPid, std::optional<bool> running) const {
    // Asked only when the master's question didn't answer it already.
    return worker_ && workerMaster_ == masterPid && !port_.empty() &&
           (running ? *running : worker_->running());
}

bool CorvaniteHost::lookForWorker(std::uint32_t masterPid) {
    dropWorker();
    try {
        const std::uint32_t workerPid = detector::childProcessId(masterPid, hostFileName);
        // Held before the table is read, so that the connection found is the held process's.
        std::optional<detector::ProcessIdentity> held = detector::ProcessIdentity::hold(workerPid);
        const detector::TcpConnection connection = detector::connectionOfProcess(workerPid);
        if (!held || !held->running()) {
            return false;
        }
        address_ = detector::ipv4Text(connection.localAddress);
        port_ = std::to_string(connection.localPort);
        worker_ = std::move(held);
        workerMaster_ = masterPid;
    } catch (const std::exception&) {
        dropWorker();
        return false;
    }
    return true;
}

ServerStatus CorvaniteHost::serverStatus() {
    ServerStatus status;
    // Taken before busy is read: an operation that begins meanwhile clears the cache only after
    // this refresh is done with it.
    const std::lock_guard<std::mutex> lock(cacheLock_);
    if (busy()) {
        return status;
    }
    // Held from tick to tick: while the server stays up, no snapshot is taken.
    // The held worker is asked about in the same question as the held master.
    const ServerMaster master = serverMaster(worker_ ? &*worker_ : nullptr);
    status.masterRunning = master.running;
    const std::uint32_t pid = master.pid;
    const std::uint64_t seconds = master.seconds;
    if (seconds == 0) {
        dropWorker();
        return status;
    }
    // The snapshot and the connection table are costly: they are read only until the worker
    // and its connection are known, and again when that worker is gone.
    if (!holdsWorkerOf(pid, master.alongsideRunning) && !lookForWorker(pid)) {
        return status;
    }
    status.running = true;
    status.time = uptimeText(seconds);
    status.port = port_;
    status.address = address_;
    return status;
}

void CorvaniteHost::startServer() {
    const Operation held(operation_);
    if (!held.owns) {
        return;
    }
    bool running = false;
    try {
        running = detector::findProcess(hostFileName, true, readServerPid());
    } catch (...) {
        running = false;
    }
    if (running) {
        return;
    }
    {
        const std::lock_guard<std::mutex> lock(heldPortLock_);
        heldPort_.reset();
    }
    // What is left of an earlier server of this folder (a worker that outlived its master) would
    // hold the port against the new one.
    endInstallationProcesses();
    // Another program on the port: the server couldn't listen, and waiting for it is in vain.
    if (reportHeldPort()) {
        return;
    }
    // A pid file without its process is stale, and a server started beside it could be taken
    // for a running one.
    filesys::deleteFile(installPathOf(pidFileName));
    controlServer(false);
}

std::optional<HeldPort> CorvaniteHost::heldPort() const {
    const std::lock_guard<std::mutex> lock(heldPortLock_);
    return heldPort_;
}

bool CorvaniteHost::reportHeldPort() {
    std::optional<std::uint32_t> configured;
    try {
        const std::vector<std::uint8_t> text = filesys::readFile(installPathOf("conf/nginx.conf"));
        configured = heldport::configuredPort(
            std::string_view(reinterpret_cast<const char*>(text.data()), text.size()));
    } catch (const std::exception&) {
        return false;
    }
    if (!configured) {
        return false;
    }
    const heldport::PortFacts facts =
        heldport::gatherPortFacts(*configured, installPathOf(hostFileName));
    std::optional<heldport::Holder> holder = heldport::portHolder(facts, *configured);
    if (!holder) {
        return false;
    }
    // A holder that ended since the look-up has no name to give.
    const bool named = holder->kind == heldport::HolderKind::program ||
                       holder->kind == heldport::HolderKind::service;
    if (named && !detector::processExists(holder->processId)) {
        holder->kind = heldport::HolderKind::ended;
        holder->name.clear();
    }
    {
        const std::lock_guard<std::mutex> lock(heldPortLock_);
        heldPort_ = HeldPort{*configured, holder};
    }
    showMessageBox(productName, heldport::heldPortText(*configured, holder, "\n"),
                   MessageBoxKind::error);
    return true;
}

void CorvaniteHost::endInstallationProcesses() {
    try {
        for (const std::uint32_t pid :
             heldport::installationProcesses(installPathOf(hostFileName))) {
            detector::native::terminateProcess(pid);
        }
    } catch (const std::exception&) {
        // A snapshot that can't be had leaves nothing to end.
    }
}

void CorvaniteHost::stopServer() {
    const Operation held(operation_);
    if (held.owns && isServerRunning()) {
        controlServer(true);
    }
}

void CorvaniteHost::applyLogLevel() {
    int result = NginxConfig::Unchanged;
    {
        // Held from the read of nginx.conf on: two level changes at once would write it together.
        const Operation held(operation_);
        if (!held.owns) {
            return;
        }
        result = NginxConfig().writeLevel();
        // A stopped server stays stopped: the new level counts from its next start.
        if (result == NginxConfig::Written && isServerRunning()) {
            controlServer(true);
            controlServer(false);
        }
    }
    // Told once the host is free again, so that the status shows the truth meanwhile.
    if (result == NginxConfig::Refused) {
        showMessageBox(productName, panelMessages.text(panelmsg::configNotOpened),
                       MessageBoxKind::error);
    }
}

void CorvaniteHost::controlServer(bool stop) {
    forgetConnection();
    forgetServerMaster();
    if (!checkInstallation()) {
        throw std::runtime_error(panelMessages.format(panelmsg::serverFilesMissing, productName));
    }
    try {
        // The server finds its files below its working folder through the 8-bit calls.
        const std::optional<std::string> folder = serverFolder();
        if (!folder) {
            tellFolderNotWritable();
            return;
        }
        if (!detector::launchProcess(*folder + "/" + hostFileName, stop ? stopArguments : "")) {
            throw ServerError(stop ? ServerError::Kind::stop : ServerError::Kind::start);
        }
        const bool reached = detector::waitUntil(stop ? stopTimeoutSeconds : startTimeoutSeconds,
                                                 serverReachedCheck(!stop));
        // A server that doesn't go is ended, and so is what it leaves behind (a worker that
        // outlived its master): only the processes of this installation, never a program of the
        // same name elsewhere.
        if (stop) {
            endInstallationProcesses();
        }
        // A start that doesn't complete is reported only when another program holds the port;
        // otherwise the next refresh shows what is true.
        if (!reached && !stop) {
            reportHeldPort();
        }
    } catch (const std::exception& failure) {
        showMessageBox(productName, failure.what(), MessageBoxKind::error);
    }
}

void CorvaniteHost::openLogs() {
    if (!shellOpenPath(installPathOf("logs"))) {
        showMessageBox(productName, panelMessages.text(panelmsg::logsNotOpened),
                       MessageBoxKind::error);
    }
}

void CorvaniteHost::openServicePage() {
    shellOpenUrl(serviceUrl(serverStatus().port));
}
