#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

// The server double: what CorvaniteHost.exe does for the control panel's tests.
namespace hostdouble {

// What the side file asks of the server.
struct Switches {
    bool ignoreQuit = false;
    bool neverListen = false;
    unsigned dieAfter = 0; // seconds; 0 lives until told to quit
};

Switches readSwitches(const std::filesystem::path& file);

// The port of the first "listen" line of an nginx configuration's text ("listen 8080;",
// "listen 127.0.0.1:8443 ssl;"), or 0 for a free port.
unsigned listenPort(const std::string& configuration);

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
// Starts the worker; an opaque handle of it.
std::intptr_t startWorker(unsigned port, bool neverListen);
// True when told to quit, false when the time to die came first.
bool waitForQuit(bool ignoreQuit, unsigned dieAfter);
void stopWorker(std::intptr_t worker);
bool signalQuit(std::uint32_t masterPid);

int runWorker(unsigned port, std::uint32_t masterPid, bool neverListen);
bool writeStandardOutput(const std::string& bytes);

} // namespace native

} // namespace hostdouble
