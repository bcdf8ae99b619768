#include "core/server_command.h"

#include <stdexcept>
#include <utility>

#include "host/corvanite_host.h"
#include "panel/layout_ids.h"
#include "panel/simple_command.h"

namespace {

using HostAction = void (CorvaniteHost::*)();

HostAction actionOf(std::int32_t id) {
    switch (id) {
    case commandid::run:
        return &CorvaniteHost::startServer;
    case commandid::stop:
        return &CorvaniteHost::stopServer;
    case commandid::openLogs:
        return &CorvaniteHost::openLogs;
    case commandid::logLevel:
        return &CorvaniteHost::applyLogLevel;
    case commandid::collectInformation:
        return &CorvaniteHost::collectInformation;
    case commandid::reportProblem:
        return &CorvaniteHost::reportProblem;
    case commandid::openServicePage:
        return &CorvaniteHost::openServicePage;
    default:
        throw std::logic_error("unknown server command id");
    }
}

// Start, stop and a new log level: one at a time, with the host claimed before their thread
// starts, so that the refresh keeps away from the start.
class HostOperationCommand : public SimpleCommand<CorvaniteHost> {
public:
    HostOperationCommand(std::int32_t id, CorvaniteHost& host, Action action)
        : SimpleCommand<CorvaniteHost>(id, host, std::move(action)), host(host) {}

    bool claim() override { return host.claimOperation(); }

private:
    CorvaniteHost& host;
};

bool isHostOperation(std::int32_t id) {
    return id == commandid::run || id == commandid::stop || id == commandid::logLevel;
}

} // namespace

std::shared_ptr<Command> makeServerCommand(std::int32_t id) {
    const HostAction action = actionOf(id);
    CorvaniteHost& host = *getHost();
    auto run = [action](CorvaniteHost& target) { (target.*action)(); };
    if (isHostOperation(id)) {
        return std::make_shared<HostOperationCommand>(id, host, run);
    }
    return std::make_shared<SimpleCommand<CorvaniteHost>>(id, host, run);
}
