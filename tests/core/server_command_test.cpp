#include "core/server_command.h"

#include <stdexcept>

#include <gtest/gtest.h>

#include "tests/support/panel/expect_failure.h"

namespace {

// Refused ids fail before the host is made, so these need no installation.

TEST(ServerCommandTest, IdEightIsAServerCommandWithoutAnOperation) {
    expectFailure<std::logic_error>([] { makeServerCommand(8); }, "unknown server command id");
}

TEST(ServerCommandTest, IdsOfOtherTargetsAreUnknownServerCommands) {
    for (std::int32_t id : {0, 4, 5, 6, 7, 13, 14, 15, -1}) {
        expectFailure<std::logic_error>([id] { makeServerCommand(id); },
                                        "unknown server command id");
    }
}

} // namespace
