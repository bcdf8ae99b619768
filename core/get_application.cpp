#include "core/application.h"

#include "host/corvanite_host.h"

// Only the interface thread reaches this, first while the program starts: no lock.
std::shared_ptr<Application> getApplication() {
    static std::shared_ptr<Application> application;
    if (!application) {
        getHost();
        application = makeApplicationImp(utils::AppDataManager::instance().window());
    }
    return application;
}
