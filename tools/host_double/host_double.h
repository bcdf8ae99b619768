#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

// The server double: what CorvaniteHost.exe does for the control panel's tests.
namespace hostdouble {

// What the side file asks of the server.
struct Switches {
    bool ignoreQuit = false;
    bool neverListen = false;
    unsigned dieAfter = 0;     // seconds; 0 lives until told to quit
    unsigned emergAfter = 0;   // milliseconds; 0 never fails
    bool orphanWorker = false; // the worker lives on when its master ends
};

// Where the worker listens: an address in text ("0.0.0.0", "127.0.0.1", "::") and a port, 0 for
// a free one.
struct Listener {
    std::string address = "0.0.0.0";
    unsigned port = 0;
};

Switches readSwitches(const std::filesystem::path& file);

// The first "listen" line of an nginx configuration's text, as nginx reads it: "listen 8080;" is
// every IPv4 interface, "listen 127.0.0.1:8443 ssl;" that address, "listen [::]:8443;" every IPv6
// interface. Without such a line, every IPv4 interface at a free port.
Listener listenerOf(const std::string& configuration);

// One line of nginx's error log: "2026/11/24 18:00:49 [emerg] 1234#1234: <message>".
std::string errorLogLine(const std::string& level, std::uint32_t pid, const std::string& message);

// nginx's bind: up to five tries half a second apart, each refusal written to the error log as
// nginx writes it, then "still could not bind()" and false. tryOnce listens, or gives the system's
// words for the refusal ("10048: Only one usage …").
bool listenLikeNginx(const Listener& where,
                     const std::function<std::optional<std::string>()>& tryOnce);

// The bytes that --emit writes: digits 0 to 9 over and over, the last byte a line end.
std::string emittedText(std::size_t count);

int runMaster(const Switches& switches);
int sendQuit();

// What each system provides.
namespace native {

std::uint32_t ownPid();
// The server's prefix as nginx's Windows build takes it: the working folder as 8-bit text of the
// system's code page (GetCurrentDirectoryA), with a separator at its end. Its files are this
// prefix and their relative names, opened through the 8-bit calls below: a letter that the code
// page lacks arrives as "?" or a look-alike, and the file isn't found.
std::string prefix();
bool readNarrow(const std::string& path, std::string& bytes);
bool writeNarrow(const std::string& path, const std::string& bytes, bool append);
bool removeNarrow(const std::string& path);
std::filesystem::path ownExecutable();
const char* lineEnd();

// Makes the master ready to hear a quit before anybody can learn its pid.
void prepareForQuit();
// What the master hands its worker.
struct WorkerOrders {
    Listener listener;
    bool neverListen = false;
    bool orphan = false; // lives on without its master
};

// Starts the worker; an opaque handle of it.
std::intptr_t startWorker(const WorkerOrders& orders);
// True when told to quit, false when the time to die came first.
bool waitForQuit(bool ignoreQuit, unsigned dieAfterMilliseconds);
void stopWorker(std::intptr_t worker);
// Lets go of the worker without ending it.
void releaseWorker(std::intptr_t worker);
bool signalQuit(std::uint32_t masterPid);

int runWorker(const WorkerOrders& orders, std::uint32_t masterPid);
bool writeStandardOutput(const std::string& bytes);

} // namespace native

} // namespace hostdouble
