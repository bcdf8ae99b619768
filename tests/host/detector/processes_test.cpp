#include "host/detector/processes.h"

#include <gtest/gtest.h>

#include <chrono>
#include <map>
#include <optional>
#include <thread>

#include "foundation/text.h"
#include "host/detector/current_user.h"
#include "host/detector/tcp_connections.h"
#include "tests/support/host/host_double.h"

namespace {

using std::chrono::milliseconds;

// A copy of the double under a name of its own that sleeps until the test ends it.
struct LingeringProcess {
    explicit LingeringProcess(const std::string& stem = "Lingering")
        : installation(uniqueExecutableName(stem)) {
        EXPECT_TRUE(installation.launch(" --linger 60"));
        eventually([this] { return pidsNamed(name()).size() == 1; });
        const std::vector<std::uint32_t> pids = pidsNamed(name());
        pid = pids.size() == 1 ? pids.front() : 0;
        if (pid != 0) {
            installation.remember(pid);
        }
    }
    const std::string& name() const { return installation.exeName(); }
    bool alive() const { return detector::processExists(pid); }

    DoubleInstallation installation;
    std::uint32_t pid = 0;
};

std::string upperCase(std::string text) {
    for (char& c : text) {
        if (c >= 'a' && c <= 'z') {
            c = static_cast<char>(c - 'a' + 'A');
        }
    }
    return text;
}

// Whether the process has a row in the TCP table. A table that changed between the system's two
// reads fails that one read, and is read again.
bool hasConnection(std::uint32_t pid) {
    std::vector<detector::TcpConnection> table;
    eventually([&] {
        try {
            table = detector::tcpConnections();
            return true;
        } catch (const std::exception&) {
            return false;
        }
    });
    for (const detector::TcpConnection& connection : table) {
        if (connection.processId == pid) {
            return true;
        }
    }
    return false;
}

TEST(Processes, SnapshotHoldsALaunchedProcessWithItsName) {
    const LingeringProcess process;
    ASSERT_NE(process.pid, 0u);
    bool found = false;
    for (const detector::ProcessEntry& entry : detector::listProcesses()) {
        if (entry.pid == process.pid) {
            found = true;
            EXPECT_EQ(entry.exeName, utf8ToUtf16(process.name()));
        }
    }
    EXPECT_TRUE(found);
    EXPECT_TRUE(detector::processExists(process.pid));
}

// The pid of a lingering process that has been ended, seen with its creation time while it ran;
// 0 when it didn't start.
std::uint32_t pidOfAGoneProcess() {
    const LingeringProcess process;
    if (process.pid != 0) {
        EXPECT_TRUE(detector::native::processCreationTime(process.pid).has_value());
    }
    return process.pid;
}

TEST(Processes, ProcessThatIsGoneDoesNotExist) {
    const std::uint32_t pid = pidOfAGoneProcess();
    ASSERT_NE(pid, 0u);
    EXPECT_FALSE(detector::processExists(pid));
    EXPECT_EQ(detector::processUptime(pid), 0u);
    EXPECT_FALSE(detector::native::processCreationTime(pid).has_value());
}

// The double starts no process of its own while it lingers. Being a console program, as the real
// server is, it may still have a child that the system starts for it: its console host.
TEST(Processes, ChildProcessIdOfAProcessWithoutChildrenIsZero) {
    const LingeringProcess process;
    ASSERT_NE(process.pid, 0u);
    EXPECT_EQ(detector::childProcessId(process.pid, process.name()), 0u);
    const std::uint32_t child = detector::childProcessId(process.pid);
    if (child != 0) {
        // A process that is being started may stand in the list before its name does.
        std::wstring name;
        eventually([&] {
            for (const detector::ProcessEntry& entry : detector::listProcesses()) {
                if (entry.pid == child) {
                    name = entry.exeName;
                }
            }
            return !name.empty();
        });
        EXPECT_EQ(name, L"conhost.exe");
    }
}

TEST(Processes, ChildProcessIdIsTheMastersWorker) {
    DoubleInstallation server;
    const RunningServer running(server);
    const std::uint32_t master = running.master;
    const std::uint32_t worker = running.worker;
    ASSERT_NE(worker, 0u);
    for (const detector::ProcessEntry& entry : detector::listProcesses()) {
        if (entry.pid == worker) {
            EXPECT_EQ(entry.parentPid, master);
            EXPECT_EQ(entry.exeName, utf8ToUtf16(server.exeName()));
        }
    }
    // The worker is no older than its master, which is what tells it from an earlier holder's.
    const std::optional<std::uint64_t> masterCreated =
        detector::native::processCreationTime(master);
    const std::optional<std::uint64_t> workerCreated =
        detector::native::processCreationTime(worker);
    ASSERT_TRUE(masterCreated.has_value());
    ASSERT_TRUE(workerCreated.has_value());
    EXPECT_GE(*workerCreated, *masterCreated);
}

TEST(Processes, EverySnapshotIsCounted) {
    const std::uint64_t before = detector::snapshotCount();
    detector::listProcesses();
    EXPECT_EQ(detector::snapshotCount() - before, 1u);
    detector::processExists(1);
    EXPECT_EQ(detector::snapshotCount() - before, 2u);
}

TEST(Processes, AHeldProcessRunsUntilItEndsAndIsAskedWithoutASnapshot) {
    LingeringProcess process;
    ASSERT_NE(process.pid, 0u);
    std::optional<detector::ProcessIdentity> held = detector::ProcessIdentity::hold(process.pid);
    ASSERT_TRUE(held.has_value());
    EXPECT_EQ(held->pid(), process.pid);
    const std::uint64_t before = detector::snapshotCount();
    EXPECT_TRUE(held->running());
    const std::uint64_t age = held->ageSeconds();
    EXPECT_EQ(detector::snapshotCount(), before);
    EXPECT_LE(age, detector::processUptime(process.pid));
    process.installation.endProcesses();
    EXPECT_TRUE(eventually([&] { return !held->running(); }));
    // An end is for good.
    EXPECT_FALSE(held->running());
}

TEST(Processes, AHeldProcessCountsItsAgeAsTheUptimeDoes) {
    const LingeringProcess process;
    ASSERT_NE(process.pid, 0u);
    std::this_thread::sleep_for(milliseconds(1100));
    const std::optional<detector::ProcessIdentity> held =
        detector::ProcessIdentity::hold(process.pid);
    ASSERT_TRUE(held.has_value());
    const std::uint64_t first = detector::processUptime(process.pid);
    const std::uint64_t age = held->ageSeconds();
    const std::uint64_t last = detector::processUptime(process.pid);
    EXPECT_GE(first, 1u);
    EXPECT_GE(age, first);
    EXPECT_LE(age, last);
}

TEST(Processes, AProcessThatIsGoneCanNotBeHeld) {
    const std::uint32_t pid = pidOfAGoneProcess();
    ASSERT_NE(pid, 0u);
    EXPECT_FALSE(detector::ProcessIdentity::hold(pid).has_value());
}

TEST(Processes, AHeldProcessMovesWithItsHolder) {
    const LingeringProcess process;
    ASSERT_NE(process.pid, 0u);
    std::optional<detector::ProcessIdentity> held = detector::ProcessIdentity::hold(process.pid);
    ASSERT_TRUE(held.has_value());
    detector::ProcessIdentity moved = std::move(*held);
    held.reset();
    EXPECT_EQ(moved.pid(), process.pid);
    EXPECT_TRUE(moved.running());
}

// Either one of the two ending makes the answer false, whichever is named first.
TEST(Processes, BothRunningIsTrueUntilEitherHeldProcessEnds) {
    LingeringProcess first("LingeringFirst");
    const LingeringProcess second("LingeringSecond");
    ASSERT_NE(first.pid, 0u);
    ASSERT_NE(second.pid, 0u);
    const std::optional<detector::ProcessIdentity> heldFirst =
        detector::ProcessIdentity::hold(first.pid);
    const std::optional<detector::ProcessIdentity> heldSecond =
        detector::ProcessIdentity::hold(second.pid);
    ASSERT_TRUE(heldFirst.has_value() && heldSecond.has_value());
    const std::uint64_t before = detector::snapshotCount();
    EXPECT_TRUE(detector::bothRunning(*heldFirst, *heldSecond));
    EXPECT_TRUE(detector::bothRunning(*heldSecond, *heldFirst));
    EXPECT_EQ(detector::snapshotCount(), before);
    ASSERT_TRUE(detector::native::terminateProcess(first.pid));
    EXPECT_FALSE(detector::bothRunning(*heldFirst, *heldSecond));
    EXPECT_FALSE(detector::bothRunning(*heldSecond, *heldFirst));
    EXPECT_TRUE(heldSecond->running());
}

// Creation times of a made-up process list; a pid without a time is one the system won't tell.
detector::CreationTimes timesOf(std::map<std::uint32_t, std::uint64_t> times) {
    return [times = std::move(times)](std::uint32_t pid) -> std::optional<std::uint64_t> {
        const auto found = times.find(pid);
        return found == times.end() ? std::nullopt : std::optional(found->second);
    };
}

TEST(Processes, AProcessOlderThanItsParentsNumberBelongsToAnEarlierHolderOfTheNumber) {
    // 56 was started by an earlier process 40, which ended; the number 40 went to a new master.
    const std::vector<detector::ProcessEntry> processes = {{L"services.exe", 56, 40},
                                                           {L"CorvaniteHost.exe", 90, 40}};
    using Pids = std::vector<std::uint32_t>;
    EXPECT_EQ(detector::childProcessIds(processes, 40, timesOf({{40, 200}, {56, 100}, {90, 300}})),
              Pids{90});
    EXPECT_EQ(detector::childProcessIds(processes, 40, timesOf({{40, 200}, {56, 100}})), Pids{90});
    EXPECT_EQ(detector::childProcessIds({processes.front()}, 40, timesOf({{40, 200}, {56, 100}})),
              Pids{});
}

TEST(Processes, AChildCreatedInTheSameTickAsItsParentIsItsChild) {
    const std::vector<detector::ProcessEntry> processes = {{L"worker.exe", 8, 4}};
    EXPECT_EQ(detector::childProcessIds(processes, 4, timesOf({{4, 7}, {8, 7}})),
              std::vector<std::uint32_t>{8});
}

TEST(Processes, WithoutCreationTimesEveryProcessNamingTheParentIsAChildInListOrder) {
    using Pids = std::vector<std::uint32_t>;
    const std::vector<detector::ProcessEntry> processes = {
        {L"first.exe", 56, 40}, {L"second.exe", 90, 40}, {L"other.exe", 91, 41}};
    EXPECT_EQ(detector::childProcessIds(processes, 40, timesOf({{56, 100}, {90, 300}})),
              (Pids{56, 90}));
    EXPECT_EQ(detector::childProcessIds(processes, 40, timesOf({{40, 200}, {90, 300}})),
              (Pids{56, 90}));
    EXPECT_EQ(detector::childProcessIds(processes, 42, timesOf({})), Pids{});
}

// A console server's first child is the console host; a helper the server started, or a process
// that inherited the master's old number, may stand before the worker too.
TEST(Processes, TheWorkerIsTheFirstChildThatRunsTheServersExecutable) {
    const std::vector<detector::ProcessEntry> processes = {
        {L"conhost.exe", 41, 40},       {L"services.exe", 56, 40},
        {L"werfault.exe", 60, 40},      {L"CorvaniteHost.exe", 77, 39},
        {L"corvanitehost.exe", 80, 40}, {L"CorvaniteHost.exe", 90, 40},
        {L"CorvaniteHost.exe", 91, 40}};
    const detector::CreationTimes times =
        timesOf({{40, 200}, {41, 201}, {56, 100}, {60, 250}, {80, 260}, {90, 300}, {91, 310}});
    EXPECT_EQ(detector::childProcessNamed(processes, 40, L"CorvaniteHost.exe", times), 90u);
    EXPECT_EQ(detector::childProcessNamed(processes, 40, L"conhost.exe", times), 41u);
}

TEST(Processes, AnOlderProcessOfTheServersNameHoldingTheMastersOldNumberIsNoWorker) {
    const std::vector<detector::ProcessEntry> processes = {{L"conhost.exe", 41, 40},
                                                           {L"CorvaniteHost.exe", 56, 40}};
    EXPECT_EQ(detector::childProcessNamed(processes, 40, L"CorvaniteHost.exe",
                                          timesOf({{40, 200}, {41, 201}, {56, 100}})),
              0u);
    EXPECT_EQ(detector::childProcessNamed(processes, 40, L"CorvaniteHost.exe",
                                          timesOf({{41, 201}, {56, 100}})),
              56u);
}

TEST(Processes, AMasterWithOnlyAConsoleHostHasNoWorker) {
    const std::vector<detector::ProcessEntry> processes = {{L"conhost.exe", 41, 40}};
    EXPECT_EQ(detector::childProcessNamed(processes, 40, L"CorvaniteHost.exe",
                                          timesOf({{40, 200}, {41, 201}})),
              0u);
    EXPECT_EQ(detector::childProcessNamed({}, 40, L"CorvaniteHost.exe", timesOf({})), 0u);
}

TEST(Processes, FindProcessWithoutOwnerTestAndPidZeroIsTrueForAnyProcessOfThatName) {
    const LingeringProcess process;
    ASSERT_NE(process.pid, 0u);
    EXPECT_TRUE(detector::findProcess(process.name(), false, 0));
    EXPECT_TRUE(detector::findProcess(process.name(), true, 0));
    EXPECT_FALSE(detector::findProcess(uniqueExecutableName("Nobody"), false, 0));
}

TEST(Processes, FindProcessWithAPidMatchesOnlyThatProcess) {
    const LingeringProcess process;
    ASSERT_NE(process.pid, 0u);
    EXPECT_TRUE(detector::findProcess(process.name(), true, process.pid));
    EXPECT_FALSE(detector::findProcess(process.name(), true, process.pid + 1));
}

TEST(Processes, NameInAnotherCaseDoesNotMatch) {
    const LingeringProcess process;
    ASSERT_NE(process.pid, 0u);
    const std::string otherCase = upperCase(process.name());
    ASSERT_NE(otherCase, process.name());
    EXPECT_FALSE(detector::findProcess(otherCase, false, 0));
    detector::killProcesses(otherCase);
    std::this_thread::sleep_for(milliseconds(200));
    EXPECT_TRUE(process.alive());
}

TEST(Processes, KillProcessesEndsEveryProcessOfThatNameOfThisUser) {
    DoubleInstallation server;
    const RunningServer running(server);
    ASSERT_NE(running.worker, 0u);
    detector::killProcesses(server.exeName());
    EXPECT_TRUE(eventually([&] { return pidsNamed(server.exeName()).empty(); }));
}

// A server started right after an end must find the port free: the end returns only once the
// worker has let go of its listening socket.
TEST(Processes, AnEndedWorkerHasLetGoOfItsPortWhenTheEndReturns) {
    DoubleInstallation server;
    const RunningServer running(server);
    const std::uint32_t worker = running.worker;
    ASSERT_NE(worker, 0u);
    ASSERT_TRUE(eventually([&] { return hasConnection(worker); }));
    ASSERT_TRUE(detector::native::terminateProcess(worker));
    EXPECT_FALSE(detector::processExists(worker));
    EXPECT_FALSE(hasConnection(worker));
}

TEST(Processes, KillProcessesLeavesProcessesOfAnotherNameAlone) {
    const LingeringProcess target("Target");
    const LingeringProcess bystander("Bystander");
    ASSERT_NE(target.pid, 0u);
    ASSERT_NE(bystander.pid, 0u);
    detector::killProcesses(target.name());
    EXPECT_TRUE(eventually([&] { return !target.alive(); }));
    EXPECT_TRUE(bystander.alive());
}

TEST(Processes, UptimeCountsWholeSecondsOfALivingProcess) {
    const LingeringProcess process;
    ASSERT_NE(process.pid, 0u);
    std::this_thread::sleep_for(milliseconds(1200));
    const std::uint64_t seconds = detector::processUptime(process.pid);
    EXPECT_GE(seconds, 1u);
    EXPECT_LE(seconds, 60u);
}

TEST(Processes, OwnerOfALaunchedProcessIsTheCurrentUser) {
    const LingeringProcess process;
    ASSERT_NE(process.pid, 0u);
    EXPECT_FALSE(detector::currentUserName().empty());
    EXPECT_TRUE(detector::isCurrentUserProcess(process.pid));
}

} // namespace

// A clock put back past the server's start would otherwise wrap around to millions of days.
TEST(Processes, SecondsBetweenAStartAndAnEarlierClockAreZero) {
    EXPECT_EQ(detector::wholeSecondsBetween(1000, 999, 100), 0u);
    EXPECT_EQ(detector::wholeSecondsBetween(1000, 0, 100), 0u);
    EXPECT_EQ(detector::wholeSecondsBetween(1000, 1000, 100), 0u);
    EXPECT_EQ(detector::wholeSecondsBetween(1000, 1099, 100), 0u);
    EXPECT_EQ(detector::wholeSecondsBetween(1000, 1100, 100), 1u);
    EXPECT_EQ(detector::wholeSecondsBetween(0, 864000000000, 10000000), 86400u);
}
