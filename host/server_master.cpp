#include "host/server_master.h"

#include <mutex>
#include <optional>
#include <string>
#include <utility>

#include "host/detector/processes.h"
#include "host/file_version.h"
#include "host/host_facts.h"
#include "host/host_files.h"

namespace {

// The master found last, with the state of the pid file that named it. The timer, a report and
// the workers of a start or stop ask from threads of their own.
struct HeldMaster {
    std::mutex mutex;
    std::string path;
    FileStamp stamp;
    std::optional<detector::ProcessIdentity> process;
};

HeldMaster& heldMaster() {
    static HeldMaster held;
    return held;
}

// The question asked in full: the pid file read, the process looked for in a snapshot, its age.
ServerMaster lookUp(HeldMaster& held, const std::string& path) {
    held.process.reset();
    // Taken before the file is read: a change after this point is seen by the next question.
    const std::optional<FileStamp> stamp = fileStamp(path);
    ServerMaster master;
    try {
        master.pid = readServerPid();
        // Held before the snapshot, so that the process the snapshot shows is the one held.
        std::optional<detector::ProcessIdentity> process =
            detector::ProcessIdentity::hold(master.pid);
        master.running = detector::processExists(master.pid);
        if (!master.running) {
            return master;
        }
        if (!process || !process->running()) {
            master.seconds = detector::native::processAgeSeconds(master.pid);
            return master;
        }
        master.seconds = process->ageSeconds();
        if (stamp) {
            held.path = path;
            held.stamp = *stamp;
            held.process = std::move(process);
        }
    } catch (...) {
        return ServerMaster{};
    }
    return master;
}

} // namespace

ServerMaster serverMaster(const detector::ProcessIdentity* alongside) {
    HeldMaster& held = heldMaster();
    const std::string path = installPathOf(pidFileName);
    const std::lock_guard<std::mutex> lock(held.mutex);
    if (held.process && held.path == path && fileStamp(path) == held.stamp) {
        ServerMaster master{held.process->pid(), true, held.process->ageSeconds()};
        if (alongside != nullptr && detector::bothRunning(*held.process, *alongside)) {
            master.alongsideRunning = true;
            return master;
        }
        // One of the two has ended, or there is no other: the master is asked alone.
        if (held.process->running()) {
            return master;
        }
    }
    return lookUp(held, path);
}

void forgetServerMaster() {
    HeldMaster& held = heldMaster();
    const std::lock_guard<std::mutex> lock(held.mutex);
    held.process.reset();
}
