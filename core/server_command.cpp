#include "core/server_command.h"

#include <array>
#include <cstddef>
#include <stdexcept>
#include <utility>

#include "host/corvanite_host.h"
#include "panel/command_table.h"
#include "panel/simple_command.h"

namespace {

using HostAction = void (CorvaniteHost::*)();

struct HostBinding {
    std::int32_t id;
    HostAction action;
};

// The member of the host that runs each id of the command table's host routes.
constexpr auto hostActions = std::to_array<HostBinding>({
    {commandid::run, &CorvaniteHost::startServer},
    {commandid::stop, &CorvaniteHost::stopServer},
    {commandid::openLogs, &CorvaniteHost::openLogs},
    {commandid::logLevel, &CorvaniteHost::applyLogLevel},
    {commandid::collectInformation, &CorvaniteHost::collectInformation},
    {commandid::reportProblem, &CorvaniteHost::reportProblem},
    {commandid::openServicePage, &CorvaniteHost::openServicePage},
});

constexpr bool isBound(std::int32_t id) {
    std::size_t count = 0;
    for (const HostBinding& binding : hostActions) {
        count += binding.id == id ? 1 : 0;
    }
    return count == 1;
}

// Every id that the table sends to the host has one member, and only those ids have one.
constexpr bool everyHostIdIsBound() {
    for (const CommandRow& row : commandTable) {
        if (hasHostAction(row.id) != isBound(row.id)) {
            return false;
        }
    }
    for (const HostBinding& binding : hostActions) {
        if (!hasHostAction(binding.id)) {
            return false;
        }
    }
    return true;
}

static_assert(everyHostIdIsBound(), "a host id of the command table has no member, or two");

HostAction actionOf(std::int32_t id) {
    if (hasHostAction(id)) {
        for (const HostBinding& binding : hostActions) {
            if (binding.id == id) {
                return binding.action;
            }
        }
    }
    throw std::logic_error("unknown server command id");
}

// Start, stop and a new log level: one at a time, with the host claimed before their thread
// starts, so that the refresh keeps away from the start.
class HostOperationCommand : public SimpleCommand<CorvaniteHost> {
public:
    HostOperationCommand(std::int32_t id, CorvaniteHost& host, Action action)
        : SimpleCommand<CorvaniteHost>(id, host, std::move(action)), host_(host) {}

    bool claim() override { return host_.claimOperation(); }

private:
    CorvaniteHost& host_;
};

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
