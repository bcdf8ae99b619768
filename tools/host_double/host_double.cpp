// CorvaniteHost.exe for the tests: a stand-in for the nginx build that the control panel
// supervises. It behaves as the panel expects of the real server and nothing more.
//
// Started without arguments in the installation folder (its working folder), it is the master:
// as nginx does, it takes that folder as its prefix in the system's 8-bit code page and opens its
// files below it through the 8-bit calls: it notes its start in "logs/error.log", reads
// "conf/nginx.conf" (and ends with 1 when it can't), writes its pid and a line end to
// "nginx.pid", starts one worker (itself again with a private argument) that listens where the
// first `listen` line of the configuration says, as nginx does ("listen 8888;" is every IPv4
// interface, "listen 127.0.0.1:8888;" loopback, "listen [::]:8888;" every IPv6 interface), or on
// every IPv4 interface at a free port, and waits. A second run with " -s quit" in that folder
// tells the master to quit (the named event "ngx_quit_<pid>" on Windows, SIGQUIT on POSIX); the
// master then stops its worker, removes "nginx.pid" and ends.
//
// Side file: "host_double.cfg" next to the executable, one switch per line:
//   ignore_quit     the master hears the quit and stays
//   never_listen    the worker runs but never opens a socket
//   die_after=N     after N seconds the master stops its worker and ends at once, leaving
//                   "nginx.pid" behind, as a crashed server does
//   emerg_after=N   after N milliseconds the master writes one "[emerg]" line to
//                   "logs/error.log" in nginx's form, stops its worker and ends, leaving
//                   "nginx.pid" behind, as a server with a bad configuration does
//   orphan_worker   the worker outlives its master and keeps its port
//
// Private arguments:
//   --worker <port> <master pid> <address> [never_listen] [orphan]
//                                   the worker; it ends when its master is gone, unless orphan
//   --emit <count>                  writes count bytes ("0123456789..." ending in a line end)
//                                   to its standard output and ends
//   --linger <seconds> [pid file]   writes its pid to the file, if given, and sleeps
#include "tools/host_double/host_double.h"

#include <chrono>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <sstream>
#include <thread>
#include <vector>

namespace hostdouble {

namespace {

const char* const pidFile = "nginx.pid";
const char* const configurationFile = "conf/nginx.conf";
const char* const errorLog = "logs/error.log";

std::string prefixed(const char* name) {
    return native::prefix() + name;
}

unsigned readNumber(const std::string& text) {
    try {
        return static_cast<unsigned>(std::stoul(text));
    } catch (const std::exception&) {
        return 0;
    }
}

std::string trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string::npos) {
        return "";
    }
    return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

void writePidFile() {
    native::writeNarrow(prefixed(pidFile), std::to_string(native::ownPid()) + native::lineEnd(),
                        false);
}

std::uint32_t readPidFile() {
    std::string text;
    return native::readNarrow(prefixed(pidFile), text) ? readNumber(text) : 0;
}

// The message of the planted failure; tests look for it in the panel.
std::string plantedMessage(unsigned milliseconds) {
    return "the host double failed on purpose after " + std::to_string(milliseconds) + " ms";
}

void writeErrorLog(const std::string& line) {
    native::writeNarrow(prefixed(errorLog), line + native::lineEnd(), true);
}

// The time to wait for a quit: the sooner of the two ends, 0 for none.
unsigned waitLimit(const Switches& switches) {
    const unsigned death = switches.dieAfter * 1000;
    if (switches.emergAfter == 0 || (death != 0 && death < switches.emergAfter)) {
        return death;
    }
    return switches.emergAfter;
}

int emit(const std::string& count) {
    return native::writeStandardOutput(emittedText(readNumber(count))) ? 0 : 1;
}

int linger(const std::string& seconds, const std::string& file) {
    if (!file.empty()) {
        std::ofstream(file, std::ios::binary | std::ios::trunc) << native::ownPid();
    }
    std::this_thread::sleep_for(std::chrono::seconds(readNumber(seconds)));
    return 0;
}

// The command line's words from the first on: a Windows program started with " -s quit" and no
// name of its own may find "-s" in any place.
std::string argumentAfter(const std::vector<std::string>& words, const std::string& key,
                          std::size_t distance = 1) {
    for (std::size_t index = 0; index + distance < words.size(); ++index) {
        if (words[index] == key) {
            return words[index + distance];
        }
    }
    return "";
}

bool has(const std::vector<std::string>& words, const std::string& key) {
    for (const std::string& word : words) {
        if (word == key) {
            return true;
        }
    }
    return false;
}

} // namespace

Switches readSwitches(const std::filesystem::path& file) {
    Switches switches;
    std::ifstream input(file);
    for (std::string line; std::getline(input, line);) {
        line = trimmed(line);
        if (line == "ignore_quit") {
            switches.ignoreQuit = true;
        } else if (line == "never_listen") {
            switches.neverListen = true;
        } else if (line == "orphan_worker") {
            switches.orphanWorker = true;
        } else if (line.rfind("die_after=", 0) == 0) {
            switches.dieAfter = readNumber(line.substr(10));
        } else if (line.rfind("emerg_after=", 0) == 0) {
            switches.emergAfter = readNumber(line.substr(12));
        }
    }
    return switches;
}

Listener listenerOf(const std::string& configuration) {
    std::istringstream input(configuration);
    for (std::string line; std::getline(input, line);) {
        std::istringstream words(line);
        std::string directive;
        std::string value;
        if (!(words >> directive >> value) || directive != "listen") {
            continue;
        }
        if (!value.empty() && value.back() == ';') {
            value.pop_back();
        }
        Listener listener;
        const std::size_t colon = value.rfind(':');
        const unsigned port =
            readNumber(colon == std::string::npos ? value : value.substr(colon + 1));
        listener.port = port <= 65535 ? port : 0;
        if (colon == std::string::npos) {
            return listener;
        }
        std::string host = value.substr(0, colon);
        if (host.size() >= 2 && host.front() == '[' && host.back() == ']') {
            host = host.substr(1, host.size() - 2);
        }
        listener.address = host == "*" ? "0.0.0.0" : host;
        return listener;
    }
    return {};
}

std::string errorLogLine(const std::string& level, std::uint32_t pid, const std::string& message) {
    const std::time_t now = std::time(nullptr);
    char stamp[32] = {};
    std::strftime(stamp, sizeof stamp, "%Y/%m/%d %H:%M:%S", std::localtime(&now));
    return std::string(stamp) + " [" + level + "] " + std::to_string(pid) + "#" +
           std::to_string(pid) + ": " + message;
}

std::string emittedText(std::size_t count) {
    std::string text;
    for (std::size_t index = 0; index < count; ++index) {
        text += index + 1 == count ? '\n' : static_cast<char>('0' + index % 10);
    }
    return text;
}

bool listenLikeNginx(const Listener& where,
                     const std::function<std::optional<std::string>()>& tryOnce) {
    constexpr int tries = 5;
    const std::string address =
        where.address.find(':') != std::string::npos ? "[" + where.address + "]" : where.address;
    const std::string place = address + ":" + std::to_string(where.port);
    for (int attempt = 1; attempt <= tries; ++attempt) {
        const std::optional<std::string> refusal = tryOnce();
        if (!refusal) {
            return true;
        }
        writeErrorLog(errorLogLine("emerg", native::ownPid(),
                                   "bind() to " + place + " failed (" + *refusal + ")"));
        if (attempt < tries) {
            writeErrorLog(
                errorLogLine("notice", native::ownPid(), "try again to bind() after 500ms"));
            std::this_thread::sleep_for(std::chrono::milliseconds(500));
        }
    }
    writeErrorLog(errorLogLine("emerg", native::ownPid(), "still could not bind()"));
    return false;
}

int runMaster(const Switches& switches) {
    // nginx opens its error log first and goes on without it; a configuration that can't be read
    // ends it.
    writeErrorLog(errorLogLine("notice", native::ownPid(), "start worker processes"));
    std::string configuration;
    if (!native::readNarrow(prefixed(configurationFile), configuration)) {
        return 1;
    }
    native::prepareForQuit();
    native::WorkerOrders orders;
    orders.listener = listenerOf(configuration);
    orders.neverListen = switches.neverListen;
    orders.orphan = switches.orphanWorker;
    const std::intptr_t worker = native::startWorker(orders);
    writePidFile();
    const bool quit = native::waitForQuit(switches.ignoreQuit, waitLimit(switches));
    if (!quit && switches.emergAfter != 0 && waitLimit(switches) == switches.emergAfter) {
        writeErrorLog(errorLogLine("emerg", native::ownPid(), plantedMessage(switches.emergAfter)));
    }
    if (switches.orphanWorker) {
        native::releaseWorker(worker);
    } else {
        native::stopWorker(worker);
    }
    if (quit) {
        native::removeNarrow(prefixed(pidFile));
    }
    return 0;
}

int sendQuit() {
    const std::uint32_t master = readPidFile();
    return master != 0 && native::signalQuit(master) ? 0 : 1;
}

} // namespace hostdouble

int main(int argc, char** argv) {
    using namespace hostdouble;
    const std::vector<std::string> words(argv, argv + argc);
    if (argumentAfter(words, "-s") == "quit") {
        return sendQuit();
    }
    if (has(words, "--worker")) {
        native::WorkerOrders orders;
        orders.listener.port = readNumber(argumentAfter(words, "--worker"));
        orders.listener.address = argumentAfter(words, "--worker", 3);
        orders.neverListen = has(words, "never_listen");
        orders.orphan = has(words, "orphan");
        return native::runWorker(orders, readNumber(argumentAfter(words, "--worker", 2)));
    }
    if (has(words, "--emit")) {
        return emit(argumentAfter(words, "--emit"));
    }
    if (has(words, "--linger")) {
        return linger(argumentAfter(words, "--linger"), argumentAfter(words, "--linger", 2));
    }
    const std::filesystem::path sideFile =
        native::ownExecutable().parent_path() / "host_double.cfg";
    return runMaster(readSwitches(sideFile));
}
