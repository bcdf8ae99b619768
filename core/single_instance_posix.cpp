#include "core/single_instance.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

// The named mutex is a lock file in the user's runtime folder: the running instance holds a shared
// lock on it, and an exclusive lock that can't be had means that some instance runs.

namespace {

std::string lockPath(const std::string& name) {
    const char* folder = std::getenv("XDG_RUNTIME_DIR");
    const std::string base = folder != nullptr && *folder != '\0' ? folder : "/tmp";
    return base + "/" + name + ".lock";
}

} // namespace

namespace singleinstance::native {

std::optional<InstanceMutex> openMutex(const std::string& name) {
    const int file = open(lockPath(name).c_str(), O_RDWR | O_CLOEXEC);
    if (file < 0) {
        return std::nullopt;
    }
    if (flock(file, LOCK_EX | LOCK_NB) == 0) {
        // Nobody holds it: a file left behind by an instance that has ended.
        flock(file, LOCK_UN);
        close(file);
        return std::nullopt;
    }
    return file;
}

std::optional<InstanceMutex> createMutex(const std::string& name) {
    const int file = open(lockPath(name).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (file < 0) {
        return std::nullopt;
    }
    flock(file, LOCK_SH | LOCK_NB);
    return file;
}

void releaseMutex(InstanceMutex handle) {
    flock(static_cast<int>(handle), LOCK_UN);
}

// The portable build has no window to find: a running instance is only detected, not shown.
void bringToFront(const std::string&) {}
void sendDestroy(const std::string&) {}

} // namespace singleinstance::native
