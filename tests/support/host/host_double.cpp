#include "tests/support/host/host_double.h"

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <random>
#include <thread>

#include "foundation/text.h"
#include "host/detector/launch_process.h"
#include "host/detector/processes.h"

std::string hostDoubleExecutable() {
    return systemPath(std::string(CORVANITE_BUILD_DIR) + "/tools/CorvaniteHost.exe");
}

std::string portHolderExecutable() {
    return systemPath(std::string(CORVANITE_BUILD_DIR) + "/tools/PortHolder.exe");
}

std::string uniqueExecutableName(const std::string& stem) {
    static std::atomic<unsigned> counter{0};
    static const auto seed = std::random_device()();
    const auto stamp = std::chrono::system_clock::now().time_since_epoch().count();
    return stem + "-" + std::to_string(seed % 100000) + std::to_string(stamp % 1000000000) + "-" +
           std::to_string(counter.fetch_add(1)) + ".exe";
}

std::vector<std::uint32_t> pidsNamed(const std::string& name) {
    std::vector<std::uint32_t> pids;
    const std::wstring wideName = utf8ToUtf16(name);
    for (const detector::ProcessEntry& entry : detector::listProcesses()) {
        if (entry.exeName == wideName) {
            pids.push_back(entry.pid);
        }
    }
    return pids;
}

bool eventually(const std::function<bool()>& condition, std::chrono::milliseconds limit) {
    const auto deadline = std::chrono::steady_clock::now() + limit;
    for (;;) {
        if (condition()) {
            return true;
        }
        if (std::chrono::steady_clock::now() >= deadline) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
}

namespace {

std::set<std::uint32_t> consoleHosts() {
    std::set<std::uint32_t> pids;
    for (const detector::ProcessEntry& entry : detector::listProcesses()) {
        if (entry.exeName == L"conhost.exe") {
            pids.insert(entry.pid);
        }
    }
    return pids;
}

} // namespace

DoubleInstallation::DoubleInstallation(std::string exeName)
    : exeName_(std::move(exeName)), sharedName_(exeName_ == "CorvaniteHost.exe") {
    std::filesystem::copy_file(nativePath(hostDoubleExecutable()), nativePath(executable()));
    std::filesystem::create_directories(nativePath(file("conf")));
    // The server ends at once without its configuration; this one has no "listen" line, so that
    // the worker takes a free port.
    writeConfiguration("worker_processes 1;\nevents {\n}\n");
    consoleHostsBefore_ = consoleHosts();
}

DoubleInstallation::~DoubleInstallation() {
    endProcesses();
}

void DoubleInstallation::writeConfiguration(const std::string& text) const {
    std::ofstream(nativePath(file("conf/nginx.conf")), std::ios::binary) << text;
}

void DoubleInstallation::writeSwitches(const std::string& text) const {
    std::ofstream(nativePath(file("host_double.cfg")), std::ios::binary) << text;
}

std::optional<std::uint32_t> DoubleInstallation::pidFromFile() const {
    std::ifstream input(nativePath(file("nginx.pid")), std::ios::binary);
    std::string text;
    if (!std::getline(input, text)) {
        return std::nullopt;
    }
    try {
        return static_cast<std::uint32_t>(std::stoul(text));
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

bool DoubleInstallation::launch(const std::string& arguments) {
    return detector::launchProcess(executable(), arguments);
}

std::uint32_t DoubleInstallation::waitForMaster(std::chrono::milliseconds limit) {
    std::uint32_t master = 0;
    eventually(
        [&] {
            const std::optional<std::uint32_t> pid = pidFromFile();
            master = pid && detector::processExists(*pid) ? *pid : 0;
            return master != 0;
        },
        limit);
    if (master != 0) {
        remember(master);
    }
    return master;
}

std::uint32_t DoubleInstallation::waitForWorker(std::uint32_t master,
                                                std::chrono::milliseconds limit) {
    std::uint32_t worker = 0;
    eventually(
        [&] {
            worker = detector::childProcessId(master, exeName_);
            return worker != 0;
        },
        limit);
    if (worker != 0) {
        remember(worker);
    }
    return worker;
}

bool DoubleInstallation::isOurs(std::uint32_t pid, std::uint32_t parentPid) const {
    return !sharedName_ || known_.count(pid) != 0 || known_.count(parentPid) != 0;
}

void DoubleInstallation::endProcesses() {
    if (const std::optional<std::uint32_t> master = pidFromFile()) {
        remember(*master);
    }
    const std::wstring wideName = utf8ToUtf16(exeName_);
    const auto ourProcesses = [&] {
        std::vector<std::uint32_t> pids;
        for (const detector::ProcessEntry& entry : detector::listProcesses()) {
            if (entry.exeName == wideName && isOurs(entry.pid, entry.parentPid)) {
                pids.push_back(entry.pid);
            }
        }
        return pids;
    };
    // A master may start its worker while we end it, so the sweep goes on until nothing is left.
    eventually([&] {
        const std::vector<std::uint32_t> pids = ourProcesses();
        for (const std::uint32_t pid : pids) {
            known_.insert(pid);
            detector::native::terminateProcess(pid);
        }
        return pids.empty();
    });
    endConsoleHosts();
}

// A console double has a console host for a child. Under Wine the host of a killed double can
// stay, holding the test runner's output open; it goes with the double: a host whose client was
// one of the copy's processes, or that came while the copy ran and whose client is gone. A host
// that is still starting stands in the process list without its name yet.
void DoubleInstallation::endConsoleHosts() const {
    eventually([&] {
        const std::vector<detector::ProcessEntry> processes = detector::listProcesses();
        const auto exists = [&processes](std::uint32_t pid) {
            return std::any_of(
                processes.begin(), processes.end(),
                [pid](const detector::ProcessEntry& entry) { return entry.pid == pid; });
        };
        bool left = false;
        for (const detector::ProcessEntry& entry : processes) {
            const bool ofOurs = known_.count(entry.parentPid) != 0;
            const bool orphanedSince = entry.exeName == L"conhost.exe" &&
                                       consoleHostsBefore_.count(entry.pid) == 0 &&
                                       !exists(entry.parentPid);
            if ((ofOurs && (entry.exeName == L"conhost.exe" || entry.exeName.empty())) ||
                orphanedSince) {
                detector::native::terminateProcess(entry.pid);
                left = true;
            }
        }
        return !left;
    });
}

RunningServer::RunningServer(DoubleInstallation& installation) {
    if (!installation.launch()) {
        return;
    }
    master = installation.waitForMaster();
    worker = master == 0 ? 0 : installation.waitForWorker(master);
}

bool RunningServer::ended() const {
    return eventually(
        [&] { return !detector::processExists(master) && !detector::processExists(worker); });
}
