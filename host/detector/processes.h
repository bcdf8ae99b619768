#pragma once

#include <cstdint>
#include <string>
#include <vector>

// The process list as the panel sees it: every question takes a fresh snapshot, nothing is kept.
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

bool processExists(std::uint32_t pid);

// The first process of the snapshot whose parent is pid, or 0. The pid file names the server's
// master process, and the port belongs to its worker.
std::uint32_t childProcessId(std::uint32_t pid);

// True when a process has exactly this name (UTF-8, compared in UTF-16, case counts), belongs to
// this user if currentUserOnly is set, and has this pid unless pid is 0. A process whose owner
// can't be told doesn't match.
bool findProcess(const std::string& name, bool currentUserOnly, std::uint32_t pid);

// Terminates every process of exactly this name that belongs to this user. Reports nothing: a
// failure to tell an owner ends the walk.
void killProcesses(const std::string& name);

// Whole seconds since the process was created; 0 when it isn't there or can't be asked.
std::uint64_t processUptime(std::uint32_t pid);

// What each system provides beneath the functions above.
namespace native {

// Ends the process at once where the system lets us; false when it couldn't be ended.
bool terminateProcess(std::uint32_t pid);

// Whole seconds since the creation of a process; 0 when the system doesn't tell.
std::uint64_t processAgeSeconds(std::uint32_t pid);

} // namespace native

} // namespace detector
