#include "host/detector/processes.h"

#include <errno.h>
#include <poll.h>
#include <signal.h>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

#include <array>
#include <initializer_list>
#include <string_view>

#include "foundation/text.h"
#include "host/detector/proc_files_posix.h"
#include "host/detector/wait_until.h"

namespace detector {

namespace {

constexpr std::size_t stateField = 0;      // kernel field 3
constexpr std::size_t parentField = 1;     // kernel field 4
constexpr std::size_t startTimeField = 19; // kernel field 22, clock ticks after boot

std::string baseName(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    return std::string(slash == std::string_view::npos ? path : path.substr(slash + 1));
}

// The program's file name: where /proc/<pid>/exe points, else the first word of the command
// line, else the kernel's command name, which it cuts to 15 bytes.
std::string executableName(std::uint32_t pid) {
    const std::string folder = "/proc/" + std::to_string(pid);
    if (std::optional<std::string> target = procfs::linkTarget(folder + "/exe")) {
        constexpr std::string_view deleted = " (deleted)";
        if (endsWith(*target, deleted)) {
            target->resize(target->size() - deleted.size());
        }
        return baseName(*target);
    }
    const std::optional<std::string> commandLine = procfs::readText(folder + "/cmdline");
    if (commandLine && !commandLine->empty() && commandLine->front() != '\0') {
        return baseName(commandLine->c_str());
    }
    return procfs::commandName(procfs::readText(folder + "/stat").value_or(""));
}

// A zombie has ended and only waits for its parent; the system's list has no such rows.
bool hasEnded(const std::vector<std::string>& fields) {
    const std::string& state = fields[stateField];
    return state == "Z" || state == "X";
}

// The start time of a process that runs; no value for one that is gone or has ended.
std::optional<std::uint64_t> runningStartTime(std::uint32_t pid) {
    const std::optional<std::vector<std::string>> fields = procfs::statFields(pid);
    if (!fields || fields->size() <= startTimeField || hasEnded(*fields)) {
        return std::nullopt;
    }
    return std::stoull((*fields)[startTimeField]);
}

// A process descriptor as the identity's opaque handle, one above it, so that 0 stays "none".
std::uintptr_t handleOf(int descriptor) {
    return static_cast<std::uintptr_t>(descriptor) + 1;
}

int descriptorOf(std::uintptr_t handle) {
    return static_cast<int>(handle - 1);
}

// Whether any of the processes' descriptors tells that its process has ended, asked in one call.
bool anyEnded(std::initializer_list<int> descriptors) {
    std::array<pollfd, 2> polled{};
    nfds_t count = 0;
    for (const int descriptor : descriptors) {
        polled.at(count++) = pollfd{descriptor, POLLIN, 0};
    }
    int ready = 0;
    do {
        ready = poll(polled.data(), count, 0);
    } while (ready < 0 && errno == EINTR);
    return ready != 0;
}

} // namespace

namespace native {

std::vector<ProcessEntry> processSnapshot() {
    std::vector<ProcessEntry> processes;
    for (const std::uint32_t pid : procfs::processIds()) {
        const std::optional<std::vector<std::string>> fields = procfs::statFields(pid);
        if (!fields || fields->size() <= parentField) {
            continue; // ended while the list was read
        }
        if (hasEnded(*fields)) {
            continue;
        }
        const auto parent = static_cast<std::uint32_t>(std::stoul((*fields)[parentField]));
        processes.push_back({utf8ToUtf16(executableName(pid)), pid, parent});
    }
    return processes;
}

bool terminateProcess(std::uint32_t pid) {
    if (pid == 0 || kill(static_cast<pid_t>(pid), SIGKILL) != 0) {
        return false;
    }
    // The signal only starts the end: the process lets go of its port once it is a zombie.
    waitUntil(terminationWaitMilliseconds / 1000, [pid] { return !runningStartTime(pid); });
    return true;
}

std::optional<std::uint64_t> processCreationTime(std::uint32_t pid) {
    const std::optional<std::vector<std::string>> fields = procfs::statFields(pid);
    if (!fields || fields->size() <= startTimeField) {
        return std::nullopt;
    }
    return std::stoull((*fields)[startTimeField]);
}

std::uint64_t secondsSinceCreation(std::uint64_t created) {
    timespec now{};
    if (clock_gettime(CLOCK_BOOTTIME, &now) != 0) {
        return 0;
    }
    const auto ticksPerSecond = static_cast<std::uint64_t>(sysconf(_SC_CLK_TCK));
    const std::uint64_t nowTicks =
        static_cast<std::uint64_t>(now.tv_sec) * ticksPerSecond +
        static_cast<std::uint64_t>(now.tv_nsec) * ticksPerSecond / 1000000000U;
    return wholeSecondsBetween(created, nowTicks, ticksPerSecond);
}

std::uint64_t processAgeSeconds(std::uint32_t pid) {
    const std::optional<std::uint64_t> created = processCreationTime(pid);
    return created ? secondsSinceCreation(*created) : 0;
}

} // namespace native

std::optional<ProcessIdentity> ProcessIdentity::hold(std::uint32_t pid) {
    const std::optional<std::uint64_t> started = runningStartTime(pid);
    if (!started) {
        return std::nullopt;
    }
    // A descriptor of the very process, which the system marks readable when it ends: asking it
    // costs one call where the start time costs reading and parsing a file.
    // The C library's own wrapper is declared without C linkage in this one's headers.
    const auto descriptor = static_cast<int>(syscall(SYS_pidfd_open, static_cast<pid_t>(pid), 0));
    if (descriptor < 0) {
        return ProcessIdentity(pid, 0, *started);
    }
    // The number may have been given out again between the read and the open.
    if (runningStartTime(pid) != started) {
        close(descriptor);
        return std::nullopt;
    }
    return ProcessIdentity(pid, handleOf(descriptor), *started);
}

ProcessIdentity::~ProcessIdentity() {
    if (handle_ != 0) {
        close(descriptorOf(handle_));
    }
}

bool ProcessIdentity::running() const {
    if (handle_ != 0) {
        return !anyEnded({descriptorOf(handle_)});
    }
    // A number given out again belongs to a process with another start time.
    return runningStartTime(pid_) == created_;
}

std::uint64_t ProcessIdentity::ageSeconds() const {
    return native::secondsSinceCreation(created_);
}

bool bothRunning(const ProcessIdentity& first, const ProcessIdentity& second) {
    if (first.handle_ != 0 && second.handle_ != 0) {
        return !anyEnded({descriptorOf(first.handle_), descriptorOf(second.handle_)});
    }
    return first.running() && second.running();
}

} // namespace detector
