#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <utility>

#include "panel/command.h"

// A command that counts its runs and may do something more, such as fail.
class CountingCommand : public Command {
public:
    explicit CountingCommand(std::int32_t id, std::function<void()> effect = nullptr)
        : Command(id), effect_(std::move(effect)) {}

    void execute() override {
        ++runs;
        if (effect_) {
            effect_();
        }
    }

    std::atomic<int> runs{0};

private:
    std::function<void()> effect_;
};
