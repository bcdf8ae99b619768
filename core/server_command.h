#pragma once

#include <cstdint>
#include <memory>

#include "panel/command.h"

// A command whose target is the host: an id whose route in the command table
// (panel/command_table.h) is a host operation or a host action, such as 1 start, 2 stop or 9 apply
// the log level. Any other id, among them 8, which stands for an operation the program doesn't
// have, fails with std::logic_error "unknown server command id" before the host is asked for.
std::shared_ptr<Command> makeServerCommand(std::int32_t id);
