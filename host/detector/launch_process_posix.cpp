#include "host/detector/launch_process.h"

#include <fcntl.h>
#include <unistd.h>

#include "host/detector/spawn_posix.h"

namespace detector::native {

namespace {

// The program's path as the caller's folder sees it: the child changes its folder before the
// program is looked up.
std::string absolutePath(const std::string& path) {
    if (path.empty() || path.front() == '/') {
        return path;
    }
    std::string folder(4096, '\0');
    if (getcwd(folder.data(), folder.size()) == nullptr) {
        return path;
    }
    return std::string(folder.c_str()) + "/" + path;
}

} // namespace

bool startDetached(const std::string& path, const std::string& arguments,
                   const std::string& folder) {
    std::vector<std::string> argv = spawning::words(arguments);
    if (!path.empty()) {
        argv.insert(argv.begin(), absolutePath(path));
    }
    if (argv.empty()) {
        return false;
    }
    // The child inherits nothing of ours, as a Windows child without inherited handles: its
    // standard handles lead nowhere, so that it never holds a test runner's output open.
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addclosefrom_np(&actions, 3);
    if (!folder.empty()) {
        posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
    }
    const pid_t child = spawning::start(argv.front(), argv, actions, true, path.empty());
    posix_spawn_file_actions_destroy(&actions);
    if (child == -1) {
        return false;
    }
    spawning::reapLater(child);
    return true;
}

} // namespace detector::native
