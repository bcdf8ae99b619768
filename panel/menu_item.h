#pragma once

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>

#include "panel/command.h"

// One entry of the tray menu. Its id is its command's id, which is also the native entry's id.
struct MenuItem {
    // A catalogue id, never shown as it stands.
    std::string text;
    std::shared_ptr<Command> command;

    // An item without a command (commandid::none in the layout) has no id and fails with
    // "invalid command id": every item needs a real command.
    std::int32_t id() const {
        if (!command) {
            throw std::invalid_argument("invalid command id");
        }
        return command->id;
    }
};
