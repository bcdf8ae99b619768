// The window's watchdog over ticks with times given by the test: a server that keeps falling
// right after each restart is given up on, with the cause its error log names.
#include "host/server_watchdog.h"

#include <gtest/gtest.h>

#include "tests/support/host/model_installation.h"

namespace {

struct WatchdogTest : ::testing::Test {
    WatchdogTest() { installation.makeFolder("logs"); }

    HostModelInstallation installation;
    std::string log = "2026/11/24 10:00:00 [emerg] 1#1: an old line\r\n";
    std::int64_t now = 10'000'000;
    ServerWatchdog watchdog{[this] { return now; }};
};

TEST_F(WatchdogTest, AServerThatRanLongIsStartedAgainAtOnce) {
    EXPECT_TRUE(watchdog.tick(false, true, false));
    EXPECT_FALSE(watchdog.failed());
}

TEST_F(WatchdogTest, NothingIsStartedWhileTheServerRunsOrAnOperationRuns) {
    EXPECT_FALSE(watchdog.tick(true, false, false));
    EXPECT_FALSE(watchdog.tick(false, true, true));
}

TEST_F(WatchdogTest, FallsRightAfterEachRestartEndInAFailureWithTheLogsCause) {
    installation.writeText("logs/error.log", log);
    // The fall of a server that ran long: started again at once.
    ASSERT_TRUE(watchdog.tick(false, true, false));
    int restarts = 1;
    const std::string planted = "2026/11/24 10:00:01 [emerg] 2#2: unknown directive \"lisen\"";
    while (!watchdog.failed() && restarts < 10) {
        log += planted + "\r\n";
        installation.writeText("logs/error.log", log);
        now += 300;
        watchdog.tick(false, false, true);
        now += 1000;
        // Waits of 1, 2, 4, 8 seconds pass tick by tick.
        while (!watchdog.failed() && !watchdog.tick(false, false, false)) {
            now += 1000;
        }
        restarts += watchdog.failed() ? 0 : 1;
    }
    EXPECT_TRUE(watchdog.failed());
    EXPECT_EQ(restarts, 5);
    EXPECT_EQ(watchdog.cause(), std::optional<std::string>(planted));
    now += 3600'000;
    EXPECT_FALSE(watchdog.tick(false, false, false));
}

TEST_F(WatchdogTest, ALogWithoutAnAlarmingLineLeavesTheCauseEmpty) {
    ASSERT_TRUE(watchdog.tick(false, true, false));
    for (int fall = 0; fall < 5 && !watchdog.failed(); ++fall) {
        now += 300;
        watchdog.tick(false, false, true);
        now += 1000;
        while (!watchdog.failed() && !watchdog.tick(false, false, false)) {
            now += 1000;
        }
    }
    ASSERT_TRUE(watchdog.failed());
    EXPECT_FALSE(watchdog.cause().has_value());
}

TEST_F(WatchdogTest, TheUsersCommandEndsTheFailure) {
    ASSERT_TRUE(watchdog.tick(false, true, false));
    while (!watchdog.failed()) {
        now += 300;
        watchdog.tick(false, false, true);
        now += 1000;
        while (!watchdog.failed() && !watchdog.tick(false, false, false)) {
            now += 1000;
        }
    }
    // Run pressed: an operation the watchdog didn't start.
    watchdog.tick(false, false, true);
    EXPECT_FALSE(watchdog.failed());
    EXPECT_FALSE(watchdog.cause().has_value());
}

} // namespace
