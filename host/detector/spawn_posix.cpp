#include "host/detector/spawn_posix.h"

#include <signal.h>
#include <sys/wait.h>

#include <cerrno>
#include <sstream>
#include <system_error>
#include <thread>

namespace detector::spawning {

std::vector<std::string> words(const std::string& commandLine) {
    std::istringstream stream(commandLine);
    std::vector<std::string> result;
    for (std::string word; stream >> word;) {
        result.push_back(word);
    }
    return result;
}

pid_t start(const std::string& program, const std::vector<std::string>& arguments,
            const posix_spawn_file_actions_t& actions, bool newSession, bool searchPath) {
    std::vector<char*> argv;
    for (const std::string& argument : arguments) {
        argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t none;
    sigset_t all;
    sigemptyset(&none);
    sigfillset(&all);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setsigdefault(&attributes, &all);
    short flags = POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF;
    if (newSession) {
        flags |= POSIX_SPAWN_SETSID;
    }
    posix_spawnattr_setflags(&attributes, flags);
    pid_t child = -1;
    const int failure =
        searchPath
            ? posix_spawnp(&child, program.c_str(), &actions, &attributes, argv.data(), environ)
            : posix_spawn(&child, program.c_str(), &actions, &attributes, argv.data(), environ);
    posix_spawnattr_destroy(&attributes);
    return failure == 0 ? child : -1;
}

void reapLater(pid_t child) {
    try {
        std::thread([child] {
            int status = 0;
            while (waitpid(child, &status, 0) == -1 && errno == EINTR) {
            }
        }).detach();
    } catch (const std::system_error&) {
        // Without a thread the ended child stays a zombie until this program ends.
    }
}

} // namespace detector::spawning
