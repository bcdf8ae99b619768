#include "core/server_command.h"

#include <stdexcept>

#include "core/simple_command.h"
#include "host/corvanite_host.h"

namespace {

using HostAction = void (CorvaniteHost::*)();

HostAction actionOf(std::int32_t id) {
    switch (id) {
    case 1:
        return &CorvaniteHost::startServer;
    case 2:
        return &CorvaniteHost::stopServer;
    case 3:
        return &CorvaniteHost::openLogs;
    case 9:
        return &CorvaniteHost::applyLogLevel;
    case 10:
        return &CorvaniteHost::collectInformation;
    case 11:
        return &CorvaniteHost::reportProblem;
    case 12:
        return &CorvaniteHost::openServicePage;
    default:
        throw std::logic_error("unknown server command id");
    }
}

} // namespace

std::shared_ptr<Command> makeServerCommand(std::int32_t id) {
    const HostAction action = actionOf(id);
    return std::make_shared<SimpleCommand<CorvaniteHost>>(
        id, *getHost(), [action](CorvaniteHost& host) { (host.*action)(); });
}
