#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

// One control panel per logged-on user. The first start holds a named mutex for its whole life; a
// later start finds it, brings the running window to the front and ends. The running window is
// found by the window class that the layout file names.

// The instance mutex's system handle, opaque to portable code.
using InstanceMutex = std::intptr_t;

// Keeps the instance mutex for the life of the process and releases it, without closing it, when
// the process's statics are destroyed.
class MutexHandler {
public:
    explicit MutexHandler(InstanceMutex handle) : handle_(handle) {}
    ~MutexHandler();
    MutexHandler(const MutexHandler&) = delete;
    MutexHandler& operator=(const MutexHandler&) = delete;

    InstanceMutex handle() const { return handle_; }

private:
    InstanceMutex handle_;
};

// The mutex's name is the program's base name, without a namespace prefix. Tests use names of
// their own so that they never meet a running control panel.
inline constexpr const char* defaultMutexName = "CVHControlPanel";

// Gives the window class of the running instance (code page 1251); read only when needed.
using ClassNameSource = std::function<std::string()>;

// True when another control panel runs, which this start must leave alone; its window comes to the
// front. Otherwise creates the mutex and keeps it. Fails with "CVCP-006001" when it can't be made.
bool ensureSingleInstance(const ClassNameSource& className,
                          const std::string& mutexName = defaultMutexName);
// Ends a running control panel by sending its window the destroy message; with none running it
// does nothing, and it never creates the mutex.
void quitRunningInstance(const ClassNameSource& className,
                         const std::string& mutexName = defaultMutexName);

// The mutex this process created, or empty.
std::shared_ptr<MutexHandler> instanceMutex();
// Releases the mutex this process created, if any, so that a new start may run at once.
void releaseInstanceMutex();

// The platform's part: the named mutex and the running instance's window.
namespace singleinstance::native {

// A handle to the mutex when some process holds it open.
std::optional<InstanceMutex> openMutex(const std::string& name);
// A new mutex that this process doesn't own, or the existing one; empty when it can't be made.
std::optional<InstanceMutex> createMutex(const std::string& name);
void releaseMutex(InstanceMutex handle);
// Shows the window of that class and brings it to the front; no window is no failure.
void bringToFront(const std::string& className);
// Sends the window of that class the destroy message itself; no window is no failure.
void sendDestroy(const std::string& className);

} // namespace singleinstance::native
