#include "core/application.h"

#include <future>
#include <system_error>

#include "host/corvanite_host.h"

namespace {

// The first look for the server (a process snapshot and the connection table) is made while the
// window is created: the address link, which shows the port, waits for it, and the window shows
// sooner. Without a thread for it the link makes that look itself.
std::future<void> lookForTheServerBeside() {
    try {
        return std::async(std::launch::async, [] { getHost()->serverStatus(); });
    } catch (const std::system_error&) {
        return {};
    }
}

} // namespace

// Only the interface thread reaches this, first while the program starts: no lock.
std::shared_ptr<Application> getApplication() {
    static std::shared_ptr<Application> application;
    if (!application) {
        getHost();
        const std::future<void> firstLook = lookForTheServerBeside();
        application = makeApplicationImp(utils::AppDataManager::instance().window());
    }
    return application;
}
