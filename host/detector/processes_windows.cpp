#include "host/detector/processes.h"

#include <windows.h>

#include <tlhelp32.h>

#include <iterator>

#include "foundation/exceptions.h"
#include "host/detector/scoped_handle_windows.h"

namespace detector {

namespace {

std::uint64_t hundredNanoseconds(const FILETIME& time) {
    return (static_cast<std::uint64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
}

// A file time cut to whole milliseconds, the resolution of a system time.
std::uint64_t toMilliseconds(const FILETIME& time) {
    SYSTEMTIME system{};
    FILETIME cut{};
    FileTimeToSystemTime(&time, &system);
    SystemTimeToFileTime(&system, &cut);
    return hundredNanoseconds(cut);
}

std::optional<FILETIME> creationTimeOf(HANDLE process) {
    FILETIME creation{};
    FILETIME exit{};
    FILETIME kernel{};
    FILETIME user{};
    if (!GetProcessTimes(process, &creation, &exit, &kernel, &user)) {
        return std::nullopt;
    }
    return creation;
}

} // namespace

namespace native {

std::vector<ProcessEntry> processSnapshot() {
    const ScopedHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    if (snapshot.get() == INVALID_HANDLE_VALUE) {
        throw InternalError();
    }
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    if (!Process32FirstW(snapshot.get(), &entry)) {
        throw InternalError();
    }
    std::vector<ProcessEntry> processes;
    do {
        processes.push_back({entry.szExeFile, entry.th32ProcessID, entry.th32ParentProcessID});
    } while (Process32NextW(snapshot.get(), &entry));
    return processes;
}

bool terminateProcess(std::uint32_t pid) {
    const ScopedHandle process(OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, pid));
    if (process.get() == nullptr || !TerminateProcess(process.get(), 0)) {
        return false;
    }
    // TerminateProcess only starts the end: the process still holds its port and files until
    // its handle is signalled, and a server started meanwhile would find its port taken.
    WaitForSingleObject(process.get(), terminationWaitMilliseconds);
    return true;
}

std::optional<std::uint64_t> processCreationTime(std::uint32_t pid) {
    // An ended process can still be opened while someone holds a handle to it.
    const ScopedHandle process(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, pid));
    DWORD code = 0;
    if (process.get() == nullptr || !GetExitCodeProcess(process.get(), &code) ||
        code != STILL_ACTIVE) {
        return std::nullopt;
    }
    const std::optional<FILETIME> creation = creationTimeOf(process.get());
    return creation ? std::optional(hundredNanoseconds(*creation)) : std::nullopt;
}

std::uint64_t secondsSinceCreation(std::uint64_t created) {
    FILETIME creation{};
    creation.dwLowDateTime = static_cast<DWORD>(created);
    creation.dwHighDateTime = static_cast<DWORD>(created >> 32);
    SYSTEMTIME nowSystem{};
    GetSystemTime(&nowSystem);
    FILETIME now{};
    SystemTimeToFileTime(&nowSystem, &now);
    return wholeSecondsBetween(toMilliseconds(creation), hundredNanoseconds(now), 10000000);
}

std::uint64_t processAgeSeconds(std::uint32_t pid) {
    std::optional<FILETIME> creation;
    {
        const ScopedHandle process(OpenProcess(PROCESS_QUERY_INFORMATION, FALSE, pid));
        creation = process.get() == nullptr ? std::nullopt : creationTimeOf(process.get());
    }
    return creation ? secondsSinceCreation(hundredNanoseconds(*creation)) : 0;
}

} // namespace native

std::optional<ProcessIdentity> ProcessIdentity::hold(std::uint32_t pid) {
    // Enough to wait for the process's end and to read its times, and granted for a process of
    // another user as well.
    HANDLE process = OpenProcess(SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE, pid);
    if (process == nullptr) {
        return std::nullopt;
    }
    // An ended process can still be opened while someone holds a handle to it.
    const std::optional<FILETIME> creation = creationTimeOf(process);
    if (!creation || WaitForSingleObject(process, 0) != WAIT_TIMEOUT) {
        CloseHandle(process);
        return std::nullopt;
    }
    return ProcessIdentity(pid, reinterpret_cast<std::uintptr_t>(process),
                           hundredNanoseconds(*creation));
}

ProcessIdentity::~ProcessIdentity() {
    if (handle_ != 0) {
        CloseHandle(reinterpret_cast<HANDLE>(handle_));
    }
}

bool ProcessIdentity::running() const {
    // A process's handle is signalled when the process has ended.
    return WaitForSingleObject(reinterpret_cast<HANDLE>(handle_), 0) == WAIT_TIMEOUT;
}

std::uint64_t ProcessIdentity::ageSeconds() const {
    return native::secondsSinceCreation(created_);
}

bool bothRunning(const ProcessIdentity& first, const ProcessIdentity& second) {
    // Neither handle signalled: neither process has ended.
    const HANDLE handles[] = {reinterpret_cast<HANDLE>(first.handle_),
                              reinterpret_cast<HANDLE>(second.handle_)};
    return WaitForMultipleObjects(static_cast<DWORD>(std::size(handles)), handles, FALSE, 0) ==
           WAIT_TIMEOUT;
}

} // namespace detector
