#pragma once

#include <cstdint>

// An action that a control or a tray menu item starts, made from the command id of the layout
// file. It holds no state that changes after it is made, so any thread may execute it.
class Command {
public:
    explicit Command(std::int32_t id) : id(id) {}
    virtual ~Command() = default;
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;

    // Failures pass to the caller.
    virtual void execute() = 0;

    // Before a long-running command starts on a thread of its own: takes what it works on for
    // that one run, which lets it go; false while another run has it, and this one must not
    // start. Commands that share nothing always may.
    virtual bool claim() { return true; }

    // The command id of the layout file, also the native id of the control that carries it.
    const std::int32_t id;
};
