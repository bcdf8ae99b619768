#include "tools/host_double/host_double.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <signal.h>
#include <spawn.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace hostdouble::native {

namespace {

sigset_t quitSignal() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGQUIT);
    return signals;
}

// True when SIGQUIT came before the deadline; a deadline of 0 seconds never comes.
bool awaitQuit(unsigned seconds) {
    const sigset_t signals = quitSignal();
    if (seconds == 0) {
        int received = 0;
        return sigwait(&signals, &received) == 0;
    }
    timespec deadline{};
    clock_gettime(CLOCK_MONOTONIC, &deadline);
    deadline.tv_sec += seconds;
    for (;;) {
        timespec now{};
        clock_gettime(CLOCK_MONOTONIC, &now);
        timespec left{deadline.tv_sec - now.tv_sec, deadline.tv_nsec - now.tv_nsec};
        if (left.tv_nsec < 0) {
            left.tv_nsec += 1000000000L;
            --left.tv_sec;
        }
        if (left.tv_sec < 0) {
            return false;
        }
        if (sigtimedwait(&signals, nullptr, &left) == SIGQUIT) {
            return true;
        }
        if (errno == EAGAIN) {
            return false;
        }
    }
}

int listenOn(unsigned port) {
    const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (listener < 0 ||
        bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        listen(listener, SOMAXCONN) != 0) {
        return -1;
    }
    return listener;
}

} // namespace

// A POSIX system's narrow calls take the folder's bytes as they stand.
std::string prefix() {
    std::vector<char> folder(4096);
    return getcwd(folder.data(), folder.size()) != nullptr ? std::string(folder.data()) + "/" : "";
}

bool readNarrow(const std::string& path, std::string& bytes) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        return false;
    }
    bytes.assign(std::istreambuf_iterator<char>(file), {});
    return true;
}

bool writeNarrow(const std::string& path, const std::string& bytes, bool append) {
    std::ofstream file(path, std::ios::binary | (append ? std::ios::app : std::ios::trunc));
    return static_cast<bool>(file << bytes);
}

bool removeNarrow(const std::string& path) {
    return std::remove(path.c_str()) == 0;
}

std::uint32_t ownPid() {
    return static_cast<std::uint32_t>(getpid());
}

std::filesystem::path ownExecutable() {
    return std::filesystem::read_symlink("/proc/self/exe");
}

const char* lineEnd() {
    return "\n";
}

void prepareForQuit() {
    // Held back from the start, so that a quit is kept for the wait whenever it comes.
    const sigset_t signals = quitSignal();
    sigprocmask(SIG_BLOCK, &signals, nullptr);
}

std::intptr_t startWorker(unsigned port, bool neverListen) {
    const std::string executable = ownExecutable().string();
    std::vector<std::string> arguments = {executable, "--worker", std::to_string(port),
                                          std::to_string(ownPid())};
    if (neverListen) {
        arguments.push_back("never_listen");
    }
    std::vector<char*> argv;
    for (std::string& argument : arguments) {
        argv.push_back(argument.data());
    }
    argv.push_back(nullptr);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t none;
    sigemptyset(&none);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK);
    pid_t worker = 0;
    const int failure =
        posix_spawn(&worker, executable.c_str(), nullptr, &attributes, argv.data(), environ);
    posix_spawnattr_destroy(&attributes);
    return failure == 0 ? worker : 0;
}

bool waitForQuit(bool ignoreQuit, unsigned dieAfter) {
    if (!ignoreQuit) {
        return awaitQuit(dieAfter);
    }
    if (dieAfter == 0) {
        for (;;) {
            pause();
        }
    }
    sleep(dieAfter);
    return false;
}

void stopWorker(std::intptr_t worker) {
    if (worker > 0) {
        kill(static_cast<pid_t>(worker), SIGKILL);
        waitpid(static_cast<pid_t>(worker), nullptr, 0);
    }
}

bool signalQuit(std::uint32_t masterPid) {
    return kill(static_cast<pid_t>(masterPid), SIGQUIT) == 0;
}

int runWorker(unsigned port, std::uint32_t masterPid, bool neverListen) {
    // A worker doesn't outlive its master.
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (static_cast<std::uint32_t>(getppid()) != masterPid) {
        return 1;
    }
    if (neverListen) {
        for (;;) {
            pause();
        }
    }
    const int listener = listenOn(port);
    if (listener < 0) {
        return 1;
    }
    for (;;) {
        const int connection = accept(listener, nullptr, nullptr);
        if (connection >= 0) {
            close(connection);
        }
    }
}

bool writeStandardOutput(const std::string& bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t written = write(1, bytes.data() + done, bytes.size() - done);
        if (written <= 0) {
            return false;
        }
        done += static_cast<std::size_t>(written);
    }
    return true;
}

} // namespace hostdouble::native
