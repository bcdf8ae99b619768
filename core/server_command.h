#pragma once

#include <cstdint>
#include <memory>

#include "panel/command.h"

// A command whose target is the host: 1 start, 2 stop, 3 open the logs folder, 9 apply the log
// level, 10 collect information, 11 report a problem, 12 open the service page. Any other id,
// among them 8, which stands for an operation the program doesn't have, fails with
// std::logic_error "unknown server command id" before the host is asked for.
std::shared_ptr<Command> makeServerCommand(std::int32_t id);
