#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

// The process list as the panel sees it: every question takes a fresh snapshot, nothing is kept,
// but for a process held on purpose (ProcessIdentity).
namespace detector {

// One row of a process snapshot.
struct ProcessEntry {
    std::wstring exeName; // file name without a path, UTF-16 units
    std::uint32_t pid = 0;
    std::uint32_t parentPid = 0;
};

// Every process of the machine in the order of the system's walk.
// Raises detector::InternalError when the system gives no snapshot.
std::vector<ProcessEntry> listProcesses();

// How many snapshots listProcesses has taken in this process: what a question costs is counted
// by it.
std::uint64_t snapshotCount();

bool processExists(std::uint32_t pid);

// The first process of the snapshot whose parent is pid, or 0. The pid file names the server's
// master process, and the port belongs to its worker. Windows keeps a process's parent number
// after that parent has gone and gives the number out again, so a process created before pid's
// own process is not its child: it belongs to an earlier holder of the number.
std::uint32_t childProcessId(std::uint32_t pid);

// When a process was created, in ticks that compare between processes; no value when unknown.
using CreationTimes = std::function<std::optional<std::uint64_t>(std::uint32_t pid)>;

// The children of pid in a given process list, in its order, told by the same rule. A process
// whose creation time, or whose parent's, is unknown counts as a child.
std::vector<std::uint32_t> childProcessIds(const std::vector<ProcessEntry>& processes,
                                           std::uint32_t pid, const CreationTimes& createdAt);

// The first child of pid, told by the same rule, that runs the executable exeName (compared as the
// process list gives names: the same UTF-16 units), or 0. This is how the server's worker is
// found: a console program gets the system's console host (conhost.exe) as its first child, and
// a debugger or a crash reporter may stand among the children too.
std::uint32_t childProcessId(std::uint32_t pid, const std::string& exeName);
std::uint32_t childProcessNamed(const std::vector<ProcessEntry>& processes, std::uint32_t pid,
                                const std::wstring& exeName, const CreationTimes& createdAt);

// True when a process has exactly this name (UTF-8, compared in UTF-16, case counts), belongs to
// this user if currentUserOnly is set, and has this pid unless pid is 0. A process whose owner
// can't be told doesn't match.
bool findProcess(const std::string& name, bool currentUserOnly, std::uint32_t pid);

// Terminates every process of exactly this name that belongs to this user. Reports nothing: a
// failure to tell an owner ends the walk.
void killProcesses(const std::string& name);

// Whole seconds since the process was created; 0 when it isn't there or can't be asked.
std::uint64_t processUptime(std::uint32_t pid);

// One process held by what tells it from every other process, so that whether it still runs and
// since when can be asked again without a snapshot: on Windows an open handle (which also keeps
// its number from being given out again), elsewhere its pid and start time, with a process
// descriptor where the system gives one.
class ProcessIdentity {
public:
    // Holds the process with this pid; no value when it isn't there or can't be opened.
    static std::optional<ProcessIdentity> hold(std::uint32_t pid);
    ProcessIdentity(ProcessIdentity&& other) noexcept;
    ProcessIdentity& operator=(ProcessIdentity&& other) noexcept;
    ProcessIdentity(const ProcessIdentity&) = delete;
    ProcessIdentity& operator=(const ProcessIdentity&) = delete;
    ~ProcessIdentity();

    std::uint32_t pid() const { return pid_; }
    // True while the very process held runs; once it has ended, never again.
    bool running() const;
    // Whole seconds since the process was created, counted as processUptime counts them.
    std::uint64_t ageSeconds() const;

private:
    friend bool bothRunning(const ProcessIdentity& first, const ProcessIdentity& second);

    ProcessIdentity(std::uint32_t pid, std::uintptr_t handle, std::uint64_t created)
        : pid_(pid), handle_(handle), created_(created) {}

    std::uint32_t pid_ = 0;
    // The system's handle of the process where it has one, as an opaque number; 0 for none.
    std::uintptr_t handle_ = 0;
    // The creation time in the system's ticks (native::processCreationTime).
    std::uint64_t created_ = 0;
};

// Whether both held processes still run, asked of the system once where it can (one wait on both
// handles on Windows): the window's tick asks it of the server's master and worker, and under
// Wine every question is a request to the wineserver.
bool bothRunning(const ProcessIdentity& first, const ProcessIdentity& second);

// What each system provides beneath the functions above.
// Whole seconds from start to now, both in ticks of the given rate; 0 when the clock stands before
// the start, as after the system clock was put back.
std::uint64_t wholeSecondsBetween(std::uint64_t start, std::uint64_t now,
                                  std::uint64_t ticksPerSecond);

namespace native {

// Every process of the machine, as listProcesses gives it, without counting.
std::vector<ProcessEntry> processSnapshot();

// How long terminateProcess waits for the end it asked for.
constexpr int terminationWaitMilliseconds = 5000;

// Ends the process where the system lets us, and waits, at most terminationWaitMilliseconds,
// until it has ended and let go of its port and files; false when it couldn't be ended.
bool terminateProcess(std::uint32_t pid);

// Whole seconds since the creation of a process; 0 when the system doesn't tell.
std::uint64_t processAgeSeconds(std::uint32_t pid);

// When the process was created, in the system's own ticks; no value when the system doesn't tell.
std::optional<std::uint64_t> processCreationTime(std::uint32_t pid);

// Whole seconds from a creation time in the system's ticks to now; 0 when the system doesn't tell.
std::uint64_t secondsSinceCreation(std::uint64_t created);

} // namespace native

} // namespace detector
