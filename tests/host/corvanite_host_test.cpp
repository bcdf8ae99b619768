#include "host/corvanite_host.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>

#include "foundation/language.h"
#include "foundation/message_catalogue.h"
#include "foundation/shell_open.h"
#include "foundation/text.h"
#include "host/detector/launch_process.h"
#include "host/detector/processes.h"
#include "host/detector/tcp_connections.h"
#include "host/held_port.h"
#include "host/host_facts.h"
#include "host/host_files.h"
#include "host/log_level.h"
#include "host/server_master.h"
#include "tests/support/foundation/temp_folder.h"
#include "tests/support/host/host_double.h"
#include "tests/support/host/model_installation.h"
#include "tests/support/host/model_recorders.h"
#include "tests/support/host/model_server.h"
#include "tests/support/host/model_system.h"

namespace {

using namespace std::chrono_literals;

// The host model over an installation of its own, in English, with boxes and shell opens
// recorded. Every server process that a test started is ended when the test ends. A test that has
// servers killed by name runs alone among the tests that run servers.
template <bool KillsServers> struct HostModelTest : ::testing::Test {
    HostModelTest() : savedLanguage(panelMessages.language.load()) {
        panelMessages.setLanguage(Language::English);
        setSelectedLogLevel(0);
    }
    ~HostModelTest() override {
        servers.endAll();
        setSelectedLogLevel(0);
        panelMessages.setLanguage(savedLanguage);
    }

    // An installation with the server double, listening on a free port; the host is made, which
    // starts the server.
    void startWithServer(const std::string& level = "info", const std::string& address = "") {
        port = hostModelFreePort();
        installation.makeServerInstallation(port, level, address);
        makeHost();
    }

    void makeHost() {
        host = std::make_shared<CorvaniteHost>();
        servers.remember();
    }

    // The next refresh takes this many process snapshots and finds the server on its port; the
    // one after it takes none.
    void expectSnapshotsOfAColdRefreshThenNone(std::uint64_t snapshots) {
        const std::uint64_t before = detector::snapshotCount();
        const ServerStatus status = host->serverStatus();
        EXPECT_EQ(detector::snapshotCount() - before, snapshots);
        EXPECT_TRUE(status.running);
        EXPECT_EQ(status.port, std::to_string(port));
        const std::uint64_t warm = detector::snapshotCount();
        EXPECT_TRUE(host->serverStatus().running);
        EXPECT_EQ(detector::snapshotCount(), warm);
    }

    std::wstring box(std::size_t index) const { return boxes.boxes().at(index).text; }
    std::wstring words(const char* id) const { return fromCp1251(panelMessages.text(id)); }

    HostModelServerLock lock{KillsServers};
    int savedLanguage;
    HostModelInstallation installation;
    HostModelServers servers{installation};
    HostModelBoxRecorder boxes;
    HostModelShellRecorder shell{true};
    std::uint16_t port = 0;
    std::shared_ptr<CorvaniteHost> host;
};

using HostModel = HostModelTest<false>;
using HostModelKillingServers = HostModelTest<true>;

void expectStoppedStatus(const ServerStatus& status) {
    EXPECT_FALSE(status.running);
    EXPECT_EQ(status.time, "-");
    EXPECT_EQ(status.port, "-");
    EXPECT_EQ(status.address, "-");
}

// Waits for a refresh that finds the server up: its worker may need a moment for its connection.
ServerStatus runningStatus(CorvaniteHost& host) {
    ServerStatus status = host.serverStatus();
    for (int i = 0; i < 50 && !status.running; ++i) {
        std::this_thread::sleep_for(100ms);
        status = host.serverStatus();
    }
    return status;
}

// The connection of the server's worker; raises while there is none.
detector::TcpConnection serverConnection(std::uint32_t master) {
    return detector::connectionOfProcess(detector::childProcessId(master, hostFileName));
}

} // namespace

// Status refresh.

TEST_F(HostModel, StartBringsTheServerUpOnItsPortWithGrowingUptime) {
    startWithServer();
    EXPECT_FALSE(host->busy());
    EXPECT_TRUE(isServerRunning());
    std::this_thread::sleep_for(1100ms);
    const ServerStatus first = runningStatus(*host);
    ASSERT_TRUE(first.running);
    EXPECT_EQ(first.port, std::to_string(port));
    EXPECT_EQ(host->cachedPort(), std::to_string(port));
    EXPECT_NE(first.time, "-");
    std::this_thread::sleep_for(2100ms);
    const ServerStatus later = host->serverStatus();
    EXPECT_TRUE(later.running);
    EXPECT_NE(later.time, first.time);
    EXPECT_TRUE(boxes.boxes().empty());
}

TEST_F(HostModel, AddressIsTheWorkersLocalAddress) {
    startWithServer();
    std::this_thread::sleep_for(1100ms);
    const ServerStatus status = runningStatus(*host);
    ASSERT_TRUE(status.running);
    const auto connection =
        detector::connectionOfProcess(detector::childProcessId(readServerPid(), hostFileName));
    EXPECT_EQ(status.address, detector::ipv4Text(connection.localAddress));
    EXPECT_EQ(host->cachedAddress(), status.address);
}

TEST_F(HostModel, NoPidFileReadsAsStoppedWithoutAMessage) {
    startWithServer();
    host->stopServer();
    ASSERT_FALSE(installation.has("nginx.pid"));
    expectStoppedStatus(host->serverStatus());
    EXPECT_TRUE(host->cachedAddress().empty());
    EXPECT_TRUE(host->cachedPort().empty());
    EXPECT_TRUE(boxes.boxes().empty());
}

TEST_F(HostModel, PidOfAMissingProcessReadsAsStopped) {
    startWithServer();
    const std::uint32_t master = readServerPid();
    host->stopServer();
    ASSERT_FALSE(detector::processExists(master));
    installation.writeText("nginx.pid", std::to_string(master) + "\r\n");
    expectStoppedStatus(host->serverStatus());
    EXPECT_TRUE(boxes.boxes().empty());
}

TEST_F(HostModel, PidFileWithoutANumberReadsAsStopped) {
    startWithServer();
    host->stopServer();
    installation.writeText("nginx.pid", "nginx\r\n");
    expectStoppedStatus(host->serverStatus());
}

// The worker has no child of its own: taken for the server, it has an age but no connection.
TEST_F(HostModel, RunningServerWithoutAChildReadsAsStopped) {
    startWithServer();
    const std::uint32_t master = readServerPid();
    const std::uint32_t worker = detector::childProcessId(master, hostFileName);
    ASSERT_NE(worker, 0u);
    ASSERT_EQ(detector::childProcessId(worker, hostFileName), 0u);
    std::this_thread::sleep_for(1100ms);
    installation.writeText("nginx.pid", std::to_string(worker) + "\n");
    EXPECT_GT(detector::processUptime(worker), 0u);
    expectStoppedStatus(host->serverStatus());
    installation.writeText("nginx.pid", std::to_string(master) + "\n");
}

TEST_F(HostModel, WhileBusyTheStatusIsStoppedAndTheCacheStays) {
    startWithServer();
    ASSERT_TRUE(runningStatus(*host).running);
    const std::string cachedPort = host->cachedPort();
    const std::string cachedAddress = host->cachedAddress();
    ASSERT_TRUE(host->claimOperation());
    expectStoppedStatus(host->serverStatus());
    EXPECT_TRUE(isServerRunning());
    EXPECT_EQ(host->cachedPort(), cachedPort);
    EXPECT_EQ(host->cachedAddress(), cachedAddress);
    // The claimed run: a Run with the server up, which launches nothing and lets the host go.
    host->startServer();
    EXPECT_FALSE(host->busy());
    EXPECT_TRUE(host->serverStatus().running);
}

TEST_F(HostModel, NewPortShowsAfterAStopAndAStartOnAnotherPort) {
    startWithServer();
    ASSERT_EQ(runningStatus(*host).port, std::to_string(port));
    host->stopServer();
    EXPECT_TRUE(host->cachedPort().empty());
    const std::uint16_t other = hostModelFreePort();
    ASSERT_NE(other, port);
    installation.writeText("conf/nginx.conf", HostModelInstallation::nginxConf(other, "info"));
    host->startServer();
    servers.remember();
    EXPECT_EQ(runningStatus(*host).port, std::to_string(other));
}

TEST_F(HostModel, RefreshesFromTwoThreadsMeetAStopAndAStartSafely) {
    startWithServer();
    std::atomic<bool> done{false};
    // The timer's refresh and a report's, each on a thread of its own.
    const auto refresh = [&] {
        while (!done.load()) {
            host->serverStatus();
            std::this_thread::sleep_for(2ms);
        }
    };
    std::thread timer(refresh);
    std::thread report(refresh);
    host->stopServer();
    host->startServer();
    servers.remember();
    done.store(true);
    timer.join();
    report.join();
    EXPECT_EQ(runningStatus(*host).port, std::to_string(port));
}

// The tray menu takes the master's state from the tick's refresh instead of asking again.
TEST_F(HostModel, TheRefreshTellsTheMastersStateAsIsServerRunningDoesOrNothingWhileBusy) {
    startWithServer();
    ASSERT_TRUE(runningStatus(*host).running);
    EXPECT_EQ(host->serverStatus().masterRunning, std::optional<bool>(true));
    ASSERT_TRUE(host->claimOperation());
    EXPECT_EQ(host->serverStatus().masterRunning, std::nullopt);
    host->stopServer();
    ASSERT_FALSE(isServerRunning());
    EXPECT_EQ(host->serverStatus().masterRunning, std::optional<bool>(false));
}

TEST_F(HostModel, AClaimHoldsTheHostUntilTheClaimedOperationEnds) {
    startWithServer();
    ASSERT_TRUE(runningStatus(*host).running);
    ASSERT_TRUE(host->claimOperation());
    EXPECT_FALSE(host->claimOperation());
    expectStoppedStatus(host->serverStatus());
    host->stopServer();
    EXPECT_FALSE(host->busy());
    EXPECT_FALSE(isServerRunning());
    ASSERT_TRUE(host->claimOperation());
    host->startServer();
    servers.remember();
    EXPECT_FALSE(host->busy());
    EXPECT_TRUE(runningStatus(*host).running);
}

TEST_F(HostModel, GetHostMakesOneHostAndStartsTheServer) {
    port = hostModelFreePort();
    installation.makeServerInstallation(port);
    const auto first = getHost();
    servers.remember();
    EXPECT_EQ(getHost(), first);
    EXPECT_TRUE(isServerRunning());
    EXPECT_FALSE(first->busy());
}

// The master held from tick to tick: a refresh with the server up takes no process snapshot, and
// whatever happens to the server or its pid file from outside is seen by the next refresh.

// One tick (the status, then the menu's choice between Run and Stop) with the server up reads
// neither a process snapshot nor the connection table.
void expectAWarmTickReadsNothing(CorvaniteHost& host, std::uint16_t port) {
    ASSERT_TRUE(runningStatus(host).running);
    const std::uint64_t snapshots = detector::snapshotCount();
    const std::uint64_t tables = detector::tableReadCount();
    const ServerStatus status = host.serverStatus();
    EXPECT_TRUE(isServerRunning());
    EXPECT_EQ(detector::snapshotCount() - snapshots, 0u);
    EXPECT_EQ(detector::tableReadCount() - tables, 0u);
    EXPECT_TRUE(status.running);
    EXPECT_EQ(status.port, std::to_string(port));
    EXPECT_NE(status.time, "-");
}

TEST_F(HostModel, AWarmTickTakesNoProcessSnapshot) {
    // "listen N": every interface, as the real server is mostly set up.
    startWithServer();
    expectAWarmTickReadsNothing(*host, port);
    // A listener on every interface has no address to show; its port is right.
    EXPECT_EQ(host->serverStatus().address, "");
}

TEST_F(HostModel, AWarmTickOnLoopbackTakesNoProcessSnapshot) {
    startWithServer("info", "127.0.0.1");
    expectAWarmTickReadsNothing(*host, port);
    EXPECT_EQ(host->serverStatus().address, "127.0.0.1");
}

// A warm tick asks after the held master and the held worker in one question; when the worker
// has ended, the master is still answered without a snapshot and the worker is left to the caller.
TEST_F(HostModel, TheHeldMasterAndAWorkerBesideItAreAskedTogether) {
    startWithServer();
    ASSERT_TRUE(runningStatus(*host).running);
    const std::uint32_t master = readServerPid();
    const std::uint32_t worker = detector::childProcessId(master, hostFileName);
    ASSERT_NE(worker, 0u);
    const std::optional<detector::ProcessIdentity> held = detector::ProcessIdentity::hold(worker);
    ASSERT_TRUE(held.has_value());
    const std::uint64_t snapshots = detector::snapshotCount();
    const ServerMaster both = serverMaster(&*held);
    EXPECT_EQ(both.pid, master);
    EXPECT_TRUE(both.running);
    EXPECT_EQ(both.alongsideRunning, std::optional<bool>(true));
    EXPECT_FALSE(serverMaster().alongsideRunning.has_value());
    ASSERT_TRUE(detector::native::terminateProcess(worker));
    const ServerMaster alone = serverMaster(&*held);
    EXPECT_TRUE(alone.running);
    EXPECT_FALSE(alone.alongsideRunning.has_value());
    EXPECT_EQ(detector::snapshotCount(), snapshots);
}

TEST_F(HostModel, AWorkerThatEndsWhileItsMasterRunsIsLookedForAgain) {
    startWithServer();
    ASSERT_TRUE(runningStatus(*host).running);
    const std::uint32_t master = readServerPid();
    const std::uint32_t worker = detector::childProcessId(master, hostFileName);
    ASSERT_NE(worker, 0u);
    ASSERT_TRUE(detector::native::terminateProcess(worker));
    ASSERT_TRUE(eventually([&] { return !detector::processExists(worker); }));
    const std::uint64_t snapshots = detector::snapshotCount();
    // The double's master starts no new worker: without a connection the server isn't up.
    EXPECT_FALSE(host->serverStatus().running);
    EXPECT_GT(detector::snapshotCount(), snapshots);
    EXPECT_TRUE(host->cachedPort().empty());
}

TEST_F(HostModel, AColdRefreshLooksForTheMasterAndItsWorkerAsBefore) {
    startWithServer();
    ASSERT_TRUE(runningStatus(*host).running);
    // A start or stop that begins forgets the connection and the master; this one fails at once.
    installation.remove("logs");
    EXPECT_THROW(host->controlServer(true), std::runtime_error);
    // One snapshot for the master, one for its worker.
    expectSnapshotsOfAColdRefreshThenNone(2);
}

TEST_F(HostModel, APidFileWrittenAgainMakesTheNextRefreshLookForTheMaster) {
    startWithServer();
    ASSERT_TRUE(runningStatus(*host).running);
    installation.writeText("nginx.pid", installation.readText("nginx.pid"));
    // The connection is still known: the master alone is looked for.
    expectSnapshotsOfAColdRefreshThenNone(1);
}

TEST_F(HostModel, APidFileChangedWhileTheMasterRunsIsReadAtTheNextRefresh) {
    startWithServer();
    ASSERT_TRUE(runningStatus(*host).running);
    const std::string pidText = installation.readText("nginx.pid");
    installation.writeText("nginx.pid", "nginx\r\n");
    expectStoppedStatus(host->serverStatus());
    EXPECT_FALSE(isServerRunning());
    installation.writeText("nginx.pid", pidText);
    EXPECT_TRUE(isServerRunning());
    EXPECT_TRUE(runningStatus(*host).running);
    installation.remove("nginx.pid");
    expectStoppedStatus(host->serverStatus());
    EXPECT_FALSE(isServerRunning());
    EXPECT_TRUE(boxes.boxes().empty());
}

TEST_F(HostModel, AServerStoppedFromOutsideReadsAsStoppedAtTheNextRefresh) {
    startWithServer();
    ASSERT_TRUE(runningStatus(*host).running);
    const std::uint32_t master = readServerPid();
    // The server's own stop run, as a command line outside the panel gives it.
    ASSERT_TRUE(detector::launchProcess(installation.file("CorvaniteHost.exe"), " -s quit"));
    ASSERT_TRUE(eventually([&] { return !detector::processExists(master); }));
    expectStoppedStatus(host->serverStatus());
    EXPECT_FALSE(isServerRunning());
    EXPECT_TRUE(host->cachedPort().empty());
    EXPECT_TRUE(boxes.boxes().empty());
}

TEST_F(HostModel, AMasterKilledFromOutsideReadsAsStoppedThoughItsPidFileStays) {
    startWithServer();
    ASSERT_TRUE(runningStatus(*host).running);
    const std::uint32_t master = readServerPid();
    const std::string pidText = installation.readText("nginx.pid");
    ASSERT_TRUE(detector::native::terminateProcess(master));
    ASSERT_TRUE(eventually([&] { return !detector::processExists(master); }));
    ASSERT_EQ(installation.readText("nginx.pid"), pidText);
    expectStoppedStatus(host->serverStatus());
    EXPECT_FALSE(isServerRunning());
    EXPECT_TRUE(boxes.boxes().empty());
}

TEST_F(HostModel, AServerReplacedFromOutsideIsTheOneTheNextRefreshShows) {
    startWithServer();
    ASSERT_TRUE(runningStatus(*host).running);
    const std::uint32_t master = readServerPid();
    const std::string executable = installation.file("CorvaniteHost.exe");
    ASSERT_TRUE(detector::launchProcess(executable, " -s quit"));
    ASSERT_TRUE(eventually([&] { return !detector::processExists(master); }));
    ASSERT_TRUE(detector::launchProcess(executable, ""));
    std::uint32_t replacement = 0;
    // Up with its connection, and old enough to have an operating time.
    ASSERT_TRUE(eventually(
        [&] {
            try {
                replacement = readServerPid();
                serverConnection(replacement);
                return replacement != master && detector::processUptime(replacement) >= 1;
            } catch (const std::exception&) {
                return false;
            }
        },
        20s));
    servers.remember();
    const std::uint64_t first = detector::processUptime(replacement);
    const ServerStatus status = host->serverStatus();
    const std::uint64_t last = detector::processUptime(replacement);
    ASSERT_TRUE(status.running);
    EXPECT_TRUE(status.time == uptimeText(first) || status.time == uptimeText(last)) << status.time;
    EXPECT_EQ(status.port, std::to_string(port));
    EXPECT_TRUE(isServerRunning());
    ASSERT_TRUE(detector::native::terminateProcess(replacement));
    ASSERT_TRUE(eventually([&] { return !detector::processExists(replacement); }));
    expectStoppedStatus(host->serverStatus());
}

// Start and stop.

TEST_F(HostModel, RunWithTheServerUpLaunchesNothing) {
    startWithServer();
    const std::uint32_t master = readServerPid();
    const auto before = servers.runningServerProcesses();
    host->startServer();
    EXPECT_EQ(readServerPid(), master);
    EXPECT_EQ(servers.runningServerProcesses(), before);
    EXPECT_FALSE(host->busy());
}

TEST_F(HostModel, RunWithAPidFileOfAForeignProcessLaunchesTheServer) {
    startWithServer();
    host->stopServer();
    const std::uint32_t foreign = hostModelCurrentProcessId();
    installation.writeText("nginx.pid", std::to_string(foreign) + "\n");
    ASSERT_TRUE(isServerRunning());
    host->startServer();
    servers.remember();
    EXPECT_NE(readServerPid(), foreign);
    EXPECT_TRUE(detector::findProcess("CorvaniteHost.exe", true, readServerPid()));
    EXPECT_TRUE(runningStatus(*host).running);
}

TEST_F(HostModel, RunDeletesAStalePidFileBeforeItLaunches) {
    startWithServer();
    host->stopServer();
    installation.writeText("nginx.pid", std::to_string(hostModelCurrentProcessId()) + "\n");
    installation.remove("CorvaniteHost.exe");
    EXPECT_THROW(host->startServer(), std::runtime_error);
    EXPECT_FALSE(installation.has("nginx.pid"));
    EXPECT_FALSE(host->busy());
}

TEST_F(HostModel, StopEndsTheServerByItself) {
    startWithServer();
    const std::uint32_t master = readServerPid();
    const std::uint32_t worker = detector::childProcessId(master, hostFileName);
    host->stopServer();
    EXPECT_FALSE(detector::processExists(master));
    EXPECT_FALSE(detector::processExists(worker));
    // Only a server that quits by itself removes its pid file; a killed one leaves it behind.
    EXPECT_FALSE(installation.has("nginx.pid"));
    expectStoppedStatus(host->serverStatus());
    EXPECT_FALSE(host->busy());
    EXPECT_TRUE(boxes.boxes().empty());
}

TEST_F(HostModel, StopLeavesNoWorkerThatOutlivedItsMaster) {
    port = hostModelFreePort();
    installation.makeServerInstallation(port);
    installation.writeText("host_double.cfg", "orphan_worker\n");
    makeHost();
    const std::uint32_t master = readServerPid();
    const std::uint32_t worker = detector::childProcessId(master, hostFileName);
    ASSERT_NE(worker, 0u);
    host->stopServer();
    EXPECT_TRUE(eventually([master] { return !detector::processExists(master); }));
    EXPECT_TRUE(eventually([worker] { return !detector::processExists(worker); }));
    EXPECT_TRUE(heldport::installationProcesses(installPathOf(hostFileName)).empty());
    EXPECT_TRUE(boxes.boxes().empty());
}

TEST_F(HostModel, ThePortHeldByAnotherProgramIsToldAndNothingIsStarted) {
    port = hostModelFreePort();
    installation.makeServerInstallation(port);
    // A name of its own: only this test's holder is ended at its end.
    const std::string holderName = uniqueExecutableName("PortHolder");
    installation.copyTool("PortHolder.exe", holderName);
    makeHost();
    host->stopServer();
    ASSERT_TRUE(detector::launchProcess(installation.file(holderName),
                                        " " + std::to_string(port) + " --for 30"));
    ASSERT_TRUE(eventually([this] {
        return heldport::portHolder(heldport::gatherPortFacts(port, installPathOf(hostFileName)),
                                    port)
            .has_value();
    }));
    const auto start = std::chrono::steady_clock::now();
    host->startServer();
    EXPECT_LT(std::chrono::steady_clock::now() - start, 20s);
    EXPECT_FALSE(isServerRunning());
    ASSERT_EQ(boxes.boxes().size(), 1u);
    EXPECT_NE(box(0).find(L"port " + std::to_wstring(port) + L" is held"), std::wstring::npos);
    EXPECT_NE(box(0).find(utf8ToUtf16(holderName) + L" (process "), std::wstring::npos) << box(0);
    ASSERT_TRUE(host->heldPort().has_value());
    EXPECT_EQ(host->heldPort()->port, port);
    for (const std::uint32_t pid : pidsNamed(holderName)) {
        detector::native::terminateProcess(pid);
    }
}

TEST_F(HostModel, StopOfAStoppedServerDoesNothing) {
    startWithServer();
    host->stopServer();
    host->stopServer();
    EXPECT_FALSE(isServerRunning());
    EXPECT_TRUE(boxes.boxes().empty());
}

TEST_F(HostModelKillingServers, StopKillsAServerThatIgnoresTheSignalAfterTwentySeconds) {
    port = hostModelFreePort();
    installation.makeServerInstallation(port);
    servers.ignoreQuit();
    makeHost();
    const auto ours = servers.runningServerProcesses();
    ASSERT_FALSE(ours.empty());
    const auto start = std::chrono::steady_clock::now();
    host->stopServer();
    EXPECT_GE(std::chrono::steady_clock::now() - start, 20s);
    // The kill isn't waited for: on a loaded machine the processes go a moment later.
    for (const std::uint32_t pid : ours) {
        EXPECT_TRUE(eventually([pid] { return !detector::processExists(pid); })) << pid;
    }
    EXPECT_TRUE(eventually([] { return !detector::findProcess("CorvaniteHost.exe", true, 0); }));
    EXPECT_TRUE(boxes.boxes().empty());
}

TEST_F(HostModel, StartWithoutAConnectionEndsSilentlyAfterNinetySeconds) {
    port = hostModelFreePort();
    installation.makeServerInstallation(port);
    servers.neverListen();
    const auto start = std::chrono::steady_clock::now();
    makeHost();
    EXPECT_GE(std::chrono::steady_clock::now() - start, 90s);
    EXPECT_TRUE(boxes.boxes().empty());
    expectStoppedStatus(host->serverStatus());
}

TEST_F(HostModel, AServerThatFallsDuringItsStartEndsTheWaitSilently) {
    port = hostModelFreePort();
    installation.makeServerInstallation(port);
    // A bad configuration: the master writes its pid, then an "[emerg]" line, and ends.
    installation.writeText("host_double.cfg", "emerg_after=300\n");
    const auto start = std::chrono::steady_clock::now();
    makeHost();
    // Over before the start's time-out of 90 s.
    EXPECT_LT(std::chrono::steady_clock::now() - start, 90s);
    EXPECT_TRUE(boxes.boxes().empty());
    expectStoppedStatus(host->serverStatus());
    EXPECT_NE(installation.readText("logs/error.log").find("[emerg]"), std::string::npos);
}

TEST_F(HostModel, ServerThatCanNotBeStartedShowsTheStartFailure) {
    installation.writeText("CorvaniteHost.exe", "not a program");
    installation.writeText("conf/nginx.conf", HostModelInstallation::nginxConf(1, "info"));
    installation.makeFolder("logs");
    makeHost();
    ASSERT_EQ(boxes.boxes().size(), 1u);
    EXPECT_EQ(boxes.boxes()[0].caption, L"Corvanite");
    EXPECT_EQ(box(0), L"Failed to run application");
    EXPECT_EQ(boxes.boxes()[0].flags, 0x10010u);
    EXPECT_FALSE(host->busy());
}

TEST_F(HostModel, ServerThatCanNotBeStoppedShowsTheStopFailure) {
    installation.writeText("CorvaniteHost.exe", "not a program");
    installation.writeText("conf/nginx.conf", HostModelInstallation::nginxConf(1, "info"));
    installation.makeFolder("logs");
    makeHost();
    // Any living process counts as the server for a stop; this one is never signalled, as the
    // stop run can't be started.
    installation.writeText("nginx.pid", std::to_string(hostModelCurrentProcessId()) + "\n");
    host->stopServer();
    ASSERT_EQ(boxes.boxes().size(), 2u);
    EXPECT_EQ(box(1), L"Failed to stop application");
}

TEST_F(HostModel, FailureWordsFollowTheLanguageWhenShown) {
    installation.writeText("CorvaniteHost.exe", "not a program");
    installation.writeText("conf/nginx.conf", HostModelInstallation::nginxConf(1, "info"));
    installation.makeFolder("logs");
    panelMessages.setLanguage(Language::Russian);
    makeHost();
    ASSERT_EQ(boxes.boxes().size(), 1u);
    EXPECT_EQ(box(0), words("CVCP-006014"));
    EXPECT_EQ(box(0), utf8ToUtf16("Ошибка запуска приложения"));
}

TEST_F(HostModel, MissingHostFilesFailTheConstruction) {
    installation.writeText("conf/nginx.conf", "");
    installation.makeFolder("logs");
    try {
        makeHost();
        FAIL() << "a host was made without its server";
    } catch (const std::runtime_error& failure) {
        EXPECT_EQ(std::string(failure.what()), panelMessages.format("CVCP-006018", "Corvanite"));
        EXPECT_EQ(std::string(failure.what()),
                  "Files needed for running/stopping Corvanite application are missed");
    }
    EXPECT_TRUE(boxes.boxes().empty());
}

TEST_F(HostModel, ControlServerForgetsTheAddressAndPort) {
    startWithServer();
    ASSERT_TRUE(runningStatus(*host).running);
    ASSERT_FALSE(host->cachedPort().empty());
    installation.remove("logs");
    EXPECT_THROW(host->controlServer(true), std::runtime_error);
    EXPECT_TRUE(host->cachedPort().empty());
    EXPECT_TRUE(host->cachedAddress().empty());
}

// Log level.

TEST_F(HostModel, LevelChangeOnAStoppedServerOnlyRewritesTheFile) {
    startWithServer("info");
    host->stopServer();
    const std::string before = installation.readText("conf/nginx.conf");
    setSelectedLogLevel(2);
    host->applyLogLevel();
    std::string expected = before;
    expected.replace(expected.find(" info;"), 6, " debug;");
    EXPECT_EQ(installation.readText("conf/nginx.conf"), expected);
    EXPECT_FALSE(installation.has("nginx.pid"));
    EXPECT_FALSE(isServerRunning());
    EXPECT_TRUE(boxes.boxes().empty());
}

TEST_F(HostModel, LevelChangeOnARunningServerRewritesTheWordAndRestarts) {
    startWithServer("info");
    const std::uint32_t master = readServerPid();
    const std::string before = installation.readText("conf/nginx.conf");
    setSelectedLogLevel(0);
    host->applyLogLevel();
    servers.remember();
    std::string expected = before;
    expected.replace(expected.find(" info;"), 6, " error;");
    EXPECT_EQ(installation.readText("conf/nginx.conf"), expected);
    EXPECT_FALSE(detector::processExists(master));
    EXPECT_NE(readServerPid(), master);
    EXPECT_TRUE(runningStatus(*host).running);
    EXPECT_FALSE(host->busy());
    EXPECT_TRUE(boxes.boxes().empty());
}

TEST_F(HostModel, SameLevelAgainWritesNothingAndRestartsNothing) {
    startWithServer("debug");
    const std::uint32_t master = readServerPid();
    const auto conf = nativePath(installation.file("conf/nginx.conf"));
    std::filesystem::last_write_time(conf, std::filesystem::file_time_type::clock::now() -
                                               std::chrono::hours(1));
    const auto written = std::filesystem::last_write_time(conf);
    setSelectedLogLevel(2);
    host->applyLogLevel();
    EXPECT_EQ(std::filesystem::last_write_time(conf), written);
    EXPECT_EQ(readServerPid(), master);
    EXPECT_TRUE(detector::processExists(master));
    EXPECT_TRUE(boxes.boxes().empty());
}

TEST_F(HostModel, NoLevelSelectedShowsTheConfigurationFailure) {
    startWithServer("info");
    const std::uint32_t master = readServerPid();
    setSelectedLogLevel(static_cast<std::uint8_t>(-1));
    host->applyLogLevel();
    ASSERT_EQ(boxes.boxes().size(), 1u);
    EXPECT_EQ(box(0), L"Can not open the nginx config-file");
    EXPECT_EQ(readServerPid(), master);
}

TEST_F(HostModel, LevelChangeOnAFileWithoutSemicolonShowsTheConfigurationFailure) {
    startWithServer("info");
    host->stopServer();
    // What an unreadable file was written as.
    installation.writeText("conf/nginx.conf", "info");
    setSelectedLogLevel(2);
    host->applyLogLevel();
    ASSERT_EQ(boxes.boxes().size(), 1u);
    EXPECT_EQ(box(0), L"Can not open the nginx config-file");
    EXPECT_EQ(installation.readText("conf/nginx.conf"), "info");
    EXPECT_FALSE(isServerRunning());
}

// Logs folder and service page.

TEST_F(HostModel, OpenServicePageOfAStoppedServerEndsInColonDash) {
    startWithServer();
    host->stopServer();
    host->openServicePage();
    ASSERT_EQ(shell.opens().size(), 1u);
    EXPECT_EQ(shell.opens()[0].target, L"https://" + utf8ToUtf16(ServiceDomain) + L":-");
    EXPECT_EQ(shell.opens()[0].showCommand, 5);
}

TEST_F(HostModel, OpenServicePageOfARunningServerHasItsPort) {
    startWithServer();
    ASSERT_TRUE(runningStatus(*host).running);
    host->openServicePage();
    ASSERT_EQ(shell.opens().size(), 1u);
    EXPECT_EQ(shell.opens()[0].target,
              L"https://" + utf8ToUtf16(ServiceDomain) + L":" + std::to_wstring(port));
}

TEST_F(HostModel, OpenLogsOpensTheLogsFolder) {
    startWithServer();
    host->openLogs();
    ASSERT_EQ(shell.opens().size(), 1u);
    EXPECT_EQ(shell.opens()[0].target, shellPathOf(installPathOf("logs")));
    EXPECT_EQ(shell.opens()[0].showCommand, 1);
    EXPECT_TRUE(boxes.boxes().empty());
}

TEST_F(HostModel, LogsFolderThatDoesNotOpenIsReported) {
    startWithServer();
    const HostModelShellRecorder refusingShell(false);
    host->openLogs();
    ASSERT_EQ(boxes.boxes().size(), 1u);
    EXPECT_EQ(box(0), L"Failed to open directory with logs");
}
