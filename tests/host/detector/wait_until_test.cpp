#include "host/detector/wait_until.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <stdexcept>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

TEST(WaitUntil, ZeroSecondsIsFalseAndCheckIsNotCalled) {
    int calls = 0;
    EXPECT_FALSE(detector::waitUntil(0, [&] {
        ++calls;
        return true;
    }));
    EXPECT_FALSE(detector::waitUntil(-5, [&] {
        ++calls;
        return true;
    }));
    EXPECT_EQ(calls, 0);
}

TEST(WaitUntil, CheckTrueAtOnceReturnsAfterTheFirstCallWithoutThePollDelay) {
    // The shortest of a few runs: a wait that slept before returning could never be this quick.
    auto shortest = Clock::duration::max();
    for (int run = 0; run < 3; ++run) {
        int calls = 0;
        const auto start = Clock::now();
        EXPECT_TRUE(detector::waitUntil(1, [&] {
            ++calls;
            return true;
        }));
        shortest = std::min(shortest, Clock::now() - start);
        EXPECT_EQ(calls, 1);
    }
    EXPECT_LT(shortest, milliseconds(50));
}

TEST(WaitUntil, CheckThatBecomesTrueEndsTheWaitWithTrue) {
    std::atomic<int> calls{0};
    EXPECT_TRUE(detector::waitUntil(5, [&] { return ++calls == 4; }));
    EXPECT_EQ(calls.load(), 4);
}

TEST(WaitUntil, CheckThatNeverHoldsGivesFalseAfterTheTime) {
    std::atomic<int> calls{0};
    const auto start = Clock::now();
    EXPECT_FALSE(detector::waitUntil(1, [&] {
        ++calls;
        return false;
    }));
    EXPECT_GE(Clock::now() - start, std::chrono::seconds(1));
    EXPECT_GT(calls.load(), 1);
    const int afterwards = calls.load();
    std::this_thread::sleep_for(milliseconds(150));
    EXPECT_EQ(calls.load(), afterwards) << "the polling task outlived the wait";
}

TEST(WaitUntil, BusyCheckIsWaitedForWhenTheTimeIsUp) {
    const auto start = Clock::now();
    EXPECT_FALSE(detector::waitUntil(1, [] {
        std::this_thread::sleep_for(milliseconds(1500));
        return false;
    }));
    EXPECT_GE(Clock::now() - start, milliseconds(1500));
}

TEST(WaitUntil, ExceptionFromCheckComesOut) {
    EXPECT_THROW(detector::waitUntil(5, []() -> bool { throw std::runtime_error("check"); }),
                 std::runtime_error);
}

} // namespace
