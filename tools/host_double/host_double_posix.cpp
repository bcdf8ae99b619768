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
#include <cstring>
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

// True when SIGQUIT came before the deadline; a deadline of 0 milliseconds never comes.
bool awaitQuit(unsigned milliseconds) {
    const sigset_t signals = quitSignal();
    if (milliseconds == 0) {
        int received = 0;
        return sigwait(&signals, &received) == 0;
    }
    timespec deadline{};
    clock_gettime(CLOCK_MONOTONIC, &deadline);
    deadline.tv_sec += milliseconds / 1000;
    deadline.tv_nsec += static_cast<long>(milliseconds % 1000) * 1000000L;
    if (deadline.tv_nsec >= 1000000000L) {
        deadline.tv_nsec -= 1000000000L;
        ++deadline.tv_sec;
    }
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

// The socket address of a listener: IPv4 or IPv6 by the form of its address text.
socklen_t socketAddress(const Listener& listener, sockaddr_storage& address) {
    const auto port = htons(static_cast<std::uint16_t>(listener.port));
    auto* four = reinterpret_cast<sockaddr_in*>(&address);
    if (inet_pton(AF_INET, listener.address.c_str(), &four->sin_addr) == 1) {
        four->sin_family = AF_INET;
        four->sin_port = port;
        return sizeof(sockaddr_in);
    }
    auto* six = reinterpret_cast<sockaddr_in6*>(&address);
    if (inet_pton(AF_INET6, listener.address.c_str(), &six->sin6_addr) == 1) {
        six->sin6_family = AF_INET6;
        six->sin6_port = port;
        return sizeof(sockaddr_in6);
    }
    return 0;
}

// A listening socket, or -1 with errno telling why.
int listenOn(const Listener& where) {
    sockaddr_storage address{};
    const socklen_t length = socketAddress(where, address);
    if (length == 0) {
        errno = EINVAL;
        return -1;
    }
    const int listener = socket(address.ss_family, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (listener < 0) {
        return -1;
    }
    // nginx's "[::]" listener takes IPv6 only.
    const int sixOnly = 1;
    if (address.ss_family == AF_INET6) {
        setsockopt(listener, IPPROTO_IPV6, IPV6_V6ONLY, &sixOnly, sizeof sixOnly);
    }
    if (bind(listener, reinterpret_cast<const sockaddr*>(&address), length) != 0 ||
        listen(listener, SOMAXCONN) != 0) {
        const int error = errno;
        close(listener);
        errno = error;
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

std::intptr_t startWorker(const WorkerOrders& orders) {
    const std::string executable = ownExecutable().string();
    std::vector<std::string> arguments = {executable, "--worker",
                                          std::to_string(orders.listener.port),
                                          std::to_string(ownPid()), orders.listener.address};
    if (orders.neverListen) {
        arguments.push_back("never_listen");
    }
    if (orders.orphan) {
        arguments.push_back("orphan");
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

bool waitForQuit(bool ignoreQuit, unsigned dieAfterMilliseconds) {
    if (!ignoreQuit) {
        return awaitQuit(dieAfterMilliseconds);
    }
    if (dieAfterMilliseconds == 0) {
        for (;;) {
            pause();
        }
    }
    const timespec pauseFor{static_cast<time_t>(dieAfterMilliseconds / 1000),
                            static_cast<long>(dieAfterMilliseconds % 1000) * 1000000L};
    nanosleep(&pauseFor, nullptr);
    return false;
}

void stopWorker(std::intptr_t worker) {
    if (worker > 0) {
        kill(static_cast<pid_t>(worker), SIGKILL);
        waitpid(static_cast<pid_t>(worker), nullptr, 0);
    }
}

void releaseWorker(std::intptr_t) {
    // The worker goes on alone; the system takes it over when the master ends.
}

bool signalQuit(std::uint32_t masterPid) {
    return kill(static_cast<pid_t>(masterPid), SIGQUIT) == 0;
}

int runWorker(const WorkerOrders& orders, std::uint32_t masterPid) {
    // A worker doesn't outlive its master, unless it is told to.
    if (!orders.orphan) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
    }
    if (static_cast<std::uint32_t>(getppid()) != masterPid) {
        return 1;
    }
    if (orders.neverListen) {
        for (;;) {
            pause();
        }
    }
    int listener = -1;
    const bool listening = listenLikeNginx(orders.listener, [&]() -> std::optional<std::string> {
        listener = listenOn(orders.listener);
        if (listener >= 0) {
            return std::nullopt;
        }
        return std::to_string(errno) + ": " + std::strerror(errno);
    });
    if (!listening) {
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
