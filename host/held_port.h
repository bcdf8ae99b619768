#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

// Who holds the server's port when the server can't have it: another program, a Windows
// service, Windows' HTTP service, or a range that Windows keeps for itself. Found before a start
// and again after a start that didn't complete, so that the user is told at once instead of
// after the start's whole wait.
namespace heldport {

// One row of the TCP tables, IPv4 or IPv6: its state (2 is listening), its local port in host
// order and its owner.
struct PortRow {
    std::uint32_t state = 0;
    std::uint32_t port = 0;
    std::uint32_t processId = 0;
    bool ipv6 = false;
};

// What the system tells about the port at one moment.
struct PortFacts {
    std::vector<PortRow> rows;
    // The executable's file name (UTF-8) of every process that runs.
    std::map<std::uint32_t, std::string> programs;
    // The display name (UTF-8) of the Windows services by the process they run in.
    std::map<std::uint32_t, std::string> services;
    // The processes of this installation's server: never another program.
    std::set<std::uint32_t> ours;
    // Binding the port on every interface was refused.
    bool bindRefused = false;
};

enum class HolderKind {
    program,     // a program: its file name and pid
    service,     // a Windows service: its display name
    httpService, // the system process, pid 4: Windows' HTTP service (http.sys)
    reserved,    // no owner, but the bind is refused: Windows keeps the port
    ended,       // a program that ended after its row was read: there is no name to give
};

struct Holder {
    HolderKind kind = HolderKind::program;
    std::string name;
    std::uint32_t processId = 0;
    bool operator==(const Holder&) const = default;
};

// The pid of the system process, in which Windows' HTTP service listens.
inline constexpr std::uint32_t systemProcessId = 4;
// The state number of a listening row.
inline constexpr std::uint32_t listenState = 2;

// The holder of the port, from the first listening row (IPv4 or IPv6) on it that isn't our own
// server's; rows without an owner (pid 0, as a connection in TIME_WAIT) don't count. Without such
// a row, a refused bind means a port that Windows keeps; otherwise the port is free: no value.
std::optional<Holder> portHolder(const PortFacts& facts, std::uint32_t port);

// The port of the first "listen" directive of nginx.conf's text ("listen 8888;",
// "listen 127.0.0.1:8888;", "listen [::]:8888;"); no value without one.
std::optional<std::uint32_t> configuredPort(std::string_view configuration);

// The words for the user, code page 1251, in the language in force: the sentence that the server
// can't start because the port is held, and the line that names the holder (empty for a holder
// that ended meanwhile).
std::string heldPortSentence(std::uint32_t port);
std::string holderLine(const Holder& holder);
// The sentence and the holder's line as one text: lines of a box, or the short status.
std::string heldPortText(std::uint32_t port, const std::optional<Holder>& holder,
                         const char* separator);

// The processes whose executable is the file at exePath, found by the path the system gives for
// each; a path compares alike whatever its slashes and the case of its letters.
std::vector<std::uint32_t> installationProcesses(const std::string& exePath);

// Gathers the facts of the system about the port, with the processes of the executable at
// exePath (this installation's server) as ours. Never fails: what can't be read is left out.
PortFacts gatherPortFacts(std::uint32_t port, const std::string& exePath);

} // namespace heldport
