#include "panel/simple_command.h"

#include <memory>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

namespace {

struct Counter {
    int count = 0;
};

TEST(SimpleCommandTest, ExecuteCallsTheActionOnTheTarget) {
    Counter counter;
    SimpleCommand<Counter> command(5, counter, [](Counter& target) { ++target.count; });
    command.execute();
    command.execute();
    EXPECT_EQ(counter.count, 2);
    EXPECT_EQ(command.id, 5);
}

TEST(SimpleCommandTest, AnEmptyActionDoesNothing) {
    Counter counter;
    SimpleCommand<Counter> command(13, counter, nullptr);
    EXPECT_NO_THROW(command.execute());
    EXPECT_EQ(counter.count, 0);
}

TEST(SimpleCommandTest, FailuresPassToTheCaller) {
    Counter counter;
    SimpleCommand<Counter> command(
        3, counter, [](Counter&) { throw std::runtime_error("Failed to open directory"); });
    EXPECT_THROW(command.execute(), std::runtime_error);
}

TEST(SimpleCommandTest, IsHeldAsACommand) {
    Counter counter;
    const std::shared_ptr<Command> command = std::make_shared<SimpleCommand<Counter>>(
        4, counter, [](Counter& target) { target.count = 10; });
    command->execute();
    EXPECT_EQ(counter.count, 10);
    EXPECT_EQ(command->id, 4);
}

} // namespace
