#pragma once

#include <functional>
#include <utility>

#include "panel/command.h"

// A command that calls one action on a target it does not own; the target outlives the command.
// An empty action is a deliberate state: the check boxes carry such commands only for their ids.
template <typename Target> class SimpleCommand : public Command {
public:
    using Action = std::function<void(Target&)>;

    SimpleCommand(std::int32_t id, Target& target, Action action)
        : Command(id), target_(target), action_(std::move(action)) {}

    void execute() override {
        if (action_) {
            action_(target_);
        }
    }

private:
    Target& target_;
    const Action action_;
};
