// The restart policy with times given by the test: a server that keeps falling soon after its
// start is started again later and later, and then no more.
#include "host/restart_policy.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

constexpr std::int64_t second = 1000;

// A start at the given time and its fall after ran milliseconds; the next start comes when the
// policy lets it. Gives the waits the policy asked for, -1 where it gave up.
std::vector<std::int64_t> waitsOfFalls(RestartPolicy& policy, std::int64_t& now,
                                       const std::vector<std::int64_t>& runs) {
    std::vector<std::int64_t> waits;
    for (const std::int64_t ran : runs) {
        policy.started(now);
        now += ran;
        policy.fell(now);
        if (policy.failed()) {
            waits.push_back(-1);
            break;
        }
        waits.push_back(policy.waitMs());
        now += policy.waitMs();
        EXPECT_TRUE(policy.restartDue(now));
    }
    return waits;
}

struct Row {
    const char* what;
    std::vector<std::int64_t> runs;
    std::vector<std::int64_t> waits;
};

TEST(RestartPolicy, WaitsAndTheFailureFollowHowLongEachStartRan) {
    const std::vector<Row> table = {
        {"a fall after a long run is restarted at once", {60 * second}, {0}},
        {"a fall at 29.999 s is unstable", {29'999}, {1000}},
        {"a fall at 30 s is stable", {30 * second}, {0}},
        {"unstable falls double the wait and the fifth fails",
         {200, 200, 200, 200, 200},
         {1000, 2000, 4000, 8000, -1}},
        {"a stable fall ends the doubling", {200, 200, 40 * second, 200}, {1000, 2000, 0, 1000}},
        {"a stable fall between doesn't forget the unstable ones",
         {200, 200, 40 * second, 200, 200, 200},
         {1000, 2000, 0, 1000, 2000, -1}},
    };
    for (const Row& row : table) {
        RestartPolicy policy;
        std::int64_t now = 1'000'000;
        EXPECT_EQ(waitsOfFalls(policy, now, row.runs), row.waits) << row.what;
    }
}

TEST(RestartPolicy, TheWaitStopsGrowingAtSixtySeconds) {
    RestartPolicy policy;
    std::int64_t now = 0;
    std::vector<std::int64_t> waits;
    for (int fall = 0; fall < 9; ++fall) {
        policy.started(now);
        now += 200;
        policy.fell(now);
        waits.push_back(policy.waitMs());
        // Far enough apart that no five fall within ten minutes.
        now += 3 * 60 * second;
    }
    EXPECT_FALSE(policy.failed());
    EXPECT_EQ(waits, (std::vector<std::int64_t>{1000, 2000, 4000, 8000, 16000, 32000, 60000, 60000,
                                                60000}));
}

TEST(RestartPolicy, FallsOlderThanTenMinutesDoNotCount) {
    RestartPolicy policy;
    std::int64_t now = 0;
    for (int fall = 0; fall < 4; ++fall) {
        policy.started(now);
        policy.fell(now + 200);
        now += 200 + 60 * second;
    }
    now += 10 * 60 * second;
    policy.started(now);
    policy.fell(now + 200);
    EXPECT_FALSE(policy.failed());
}

TEST(RestartPolicy, NoRestartBeforeTheWaitIsOver) {
    RestartPolicy policy;
    policy.started(0);
    policy.fell(200);
    policy.started(1200);
    policy.fell(1400);
    ASSERT_EQ(policy.waitMs(), 2000);
    EXPECT_FALSE(policy.restartDue(1400));
    EXPECT_FALSE(policy.restartDue(3399));
    EXPECT_TRUE(policy.restartDue(3400));
}

TEST(RestartPolicy, FiveMinutesOfStableRunningForgetTheFalls) {
    RestartPolicy policy;
    std::int64_t now = 0;
    for (int fall = 0; fall < 4; ++fall) {
        policy.started(now);
        policy.fell(now + 200);
        now += 20 * second;
    }
    policy.started(now);
    policy.running(now + 5 * 60 * second);
    now += 5 * 60 * second + 1;
    policy.fell(now);
    EXPECT_EQ(policy.waitMs(), 0);
    policy.started(now);
    policy.fell(now + 200);
    EXPECT_FALSE(policy.failed());
    EXPECT_EQ(policy.waitMs(), 1000);
}

TEST(RestartPolicy, AFailedServerIsNotRestartedUntilRunClearsIt) {
    RestartPolicy policy;
    std::int64_t now = 0;
    for (int fall = 0; fall < 5; ++fall) {
        policy.started(now);
        policy.fell(now + 200);
        now += 20 * second;
    }
    ASSERT_TRUE(policy.failed());
    EXPECT_FALSE(policy.restartDue(now + 3600 * second));
    policy.clear();
    EXPECT_FALSE(policy.failed());
    policy.started(now);
    policy.fell(now + 200);
    EXPECT_EQ(policy.waitMs(), 1000);
}

TEST(RestartPolicy, AClockGoingBackNeverMakesTheWaitLongerThanSixtySeconds) {
    RestartPolicy policy;
    std::int64_t now = 0;
    for (int fall = 0; fall < 7; ++fall) {
        policy.started(now);
        policy.fell(now + 200);
        now += 3 * 60 * second;
    }
    ASSERT_EQ(policy.waitMs(), 60 * second);
    const std::int64_t fellAt = now - 3 * 60 * second + 200;
    // An hour back, just after the fall: the wait starts again from there and lasts 60 s.
    const std::int64_t back = fellAt - 3600 * second;
    EXPECT_FALSE(policy.restartDue(back));
    EXPECT_TRUE(policy.restartDue(back + 60 * second));
}

TEST(RestartPolicy, AStartThatSeemsToEndBeforeItBeganCountsAsUnstable) {
    RestartPolicy policy;
    policy.started(100 * second);
    policy.fell(50 * second);
    EXPECT_EQ(policy.waitMs(), 1000);
    EXPECT_TRUE(policy.restartDue(51 * second));
}

} // namespace
