#include "core/single_instance.h"

#include "foundation/exceptions.h"
#include "foundation/message_catalogue.h"

namespace {

std::shared_ptr<MutexHandler>& holder() {
    static std::shared_ptr<MutexHandler> mutex;
    return mutex;
}

} // namespace

MutexHandler::~MutexHandler() {
    singleinstance::native::releaseMutex(handle_);
}

bool ensureSingleInstance(const ClassNameSource& className, const std::string& mutexName) {
    // There is no wait between the test and the create: two starts in the same moment may both get
    // past the test, and the second then simply shares the first one's mutex.
    if (singleinstance::native::openMutex(mutexName)) {
        singleinstance::native::bringToFront(className());
        return true;
    }
    auto created = singleinstance::native::createMutex(mutexName);
    if (!created) {
        throw BasicException(panelMessages.text(panelmsg::panelNotRun));
    }
    holder() = std::make_shared<MutexHandler>(*created);
    return false;
}

void quitRunningInstance(const ClassNameSource& className, const std::string& mutexName) {
    auto running = singleinstance::native::openMutex(mutexName);
    if (!running) {
        return;
    }
    singleinstance::native::sendDestroy(className());
    // The handle stays open: the process ends right after.
    singleinstance::native::releaseMutex(*running);
}

void releaseInstanceMutex() {
    holder().reset();
}

std::shared_ptr<MutexHandler> instanceMutex() {
    return holder();
}
