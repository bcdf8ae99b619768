#include "host/detector/processes.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <iterator>
#include <utility>

#include "foundation/text.h"
#include "host/detector/current_user.h"

namespace detector {

namespace {

std::atomic<std::uint64_t> snapshotsTaken{0};

} // namespace

std::vector<ProcessEntry> listProcesses() {
    snapshotsTaken.fetch_add(1, std::memory_order_relaxed);
    return native::processSnapshot();
}

std::uint64_t snapshotCount() {
    return snapshotsTaken.load(std::memory_order_relaxed);
}

ProcessIdentity::ProcessIdentity(ProcessIdentity&& other) noexcept
    : pid_(other.pid_), handle_(std::exchange(other.handle_, 0)), created_(other.created_) {}

ProcessIdentity& ProcessIdentity::operator=(ProcessIdentity&& other) noexcept {
    std::swap(pid_, other.pid_);
    std::swap(handle_, other.handle_);
    std::swap(created_, other.created_);
    return *this;
}

bool processExists(std::uint32_t pid) {
    for (const ProcessEntry& entry : listProcesses()) {
        if (entry.pid == pid) {
            return true;
        }
    }
    return false;
}

std::vector<std::uint32_t> childProcessIds(const std::vector<ProcessEntry>& processes,
                                           std::uint32_t pid, const CreationTimes& createdAt) {
    std::vector<std::uint32_t> children;
    for (const ProcessEntry& entry : processes) {
        if (entry.parentPid == pid) {
            children.push_back(entry.pid);
        }
    }
    // Most processes have no children, and then the parent isn't asked for its time.
    if (children.empty()) {
        return children;
    }
    const std::optional<std::uint64_t> parentCreated = createdAt(pid);
    if (parentCreated) {
        std::erase_if(children, [&](std::uint32_t child) {
            const std::optional<std::uint64_t> created = createdAt(child);
            return created && *created < *parentCreated;
        });
    }
    return children;
}

std::uint32_t childProcessId(std::uint32_t pid) {
    const std::vector<std::uint32_t> children =
        childProcessIds(listProcesses(), pid, native::processCreationTime);
    return children.empty() ? 0 : children.front();
}

std::uint32_t childProcessNamed(const std::vector<ProcessEntry>& processes, std::uint32_t pid,
                                const std::wstring& exeName, const CreationTimes& createdAt) {
    std::vector<ProcessEntry> named;
    std::copy_if(processes.begin(), processes.end(), std::back_inserter(named),
                 [&](const ProcessEntry& entry) { return entry.exeName == exeName; });
    const std::vector<std::uint32_t> children = childProcessIds(named, pid, createdAt);
    return children.empty() ? 0 : children.front();
}

std::uint32_t childProcessId(std::uint32_t pid, const std::string& exeName) {
    return childProcessNamed(listProcesses(), pid, utf8ToUtf16(exeName),
                             native::processCreationTime);
}

bool findProcess(const std::string& name, bool currentUserOnly, std::uint32_t pid) {
    const std::wstring wideName = utf8ToUtf16(name);
    for (const ProcessEntry& entry : listProcesses()) {
        if (entry.exeName != wideName) {
            continue;
        }
        if (currentUserOnly) {
            try {
                if (!isCurrentUserProcess(entry.pid)) {
                    continue;
                }
            } catch (const std::exception&) {
                continue;
            }
        }
        if (pid == 0 || entry.pid == pid) {
            return true;
        }
    }
    return false;
}

void killProcesses(const std::string& name) {
    const std::vector<ProcessEntry> snapshot = listProcesses();
    try {
        const std::wstring wideName = utf8ToUtf16(name);
        for (const ProcessEntry& entry : snapshot) {
            if (entry.exeName == wideName && isCurrentUserProcess(entry.pid)) {
                native::terminateProcess(entry.pid);
            }
        }
    } catch (const std::exception&) {
        // An owner that can't be told ends the walk; the caller learns nothing of it.
    }
}

std::uint64_t processUptime(std::uint32_t pid) {
    if (!processExists(pid)) {
        return 0;
    }
    return native::processAgeSeconds(pid);
}

std::uint64_t wholeSecondsBetween(std::uint64_t start, std::uint64_t now,
                                  std::uint64_t ticksPerSecond) {
    return now > start ? (now - start) / ticksPerSecond : 0;
}

} // namespace detector
