#include "diagnostics/run_all.h"

#include <atomic>
#include <chrono>
#include <mutex>
#include <set>
#include <stdexcept>
#include <thread>

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;

// Blocks each caller until `count` callers have arrived: only callables that run side by side
// get through.
class Meeting {
public:
    explicit Meeting(int count) : count_(count) {}
    bool arrive() {
        ++arrived_;
        const auto end = std::chrono::steady_clock::now() + 10s;
        while (arrived_.load() < count_) {
            if (std::chrono::steady_clock::now() > end) {
                return false;
            }
            std::this_thread::sleep_for(1ms);
        }
        return true;
    }

private:
    const int count_;
    std::atomic<int> arrived_{0};
};

} // namespace

TEST(RunAll, CallablesStartTogetherAndAllEndBeforeItReturns) {
    Meeting meeting(3);
    std::atomic<int> met{0};
    std::vector<Collector> collectors(3, [&] {
        if (meeting.arrive()) {
            ++met;
        }
    });
    runAll(collectors, true);
    EXPECT_EQ(met.load(), 3);
}

TEST(RunAll, EachCallableHasAThreadOfItsOwn) {
    std::mutex guard;
    std::set<std::thread::id> threads;
    Meeting meeting(4);
    std::vector<Collector> collectors(4, [&] {
        meeting.arrive();
        std::lock_guard<std::mutex> lock(guard);
        threads.insert(std::this_thread::get_id());
    });
    runAll(collectors, true);
    EXPECT_EQ(threads.size(), 4u);
    EXPECT_EQ(threads.count(std::this_thread::get_id()), 0u);
}

TEST(RunAll, FailureIsSwallowedWhenIgnoredAndTheOthersGoOn) {
    std::atomic<int> ran{0};
    runAll({[&] { ++ran; }, [] { throw std::runtime_error("collector failed"); }, [&] { ++ran; }},
           true);
    EXPECT_EQ(ran.load(), 2);
}

TEST(RunAll, FailureComesOutWhenNotIgnored) {
    EXPECT_THROW(runAll({[] {}, [] { throw std::runtime_error("collector failed"); }}, false),
                 std::runtime_error);
}

TEST(RunAll, FailureNotDerivedFromStdExceptionIsSwallowedToo) {
    EXPECT_NO_THROW(runAll({[] { throw 7; }}, true));
}

TEST(RunAllCollect, TextsComeInListOrderWhicheverEndedFirst) {
    const std::vector<std::string> texts =
        runAllCollect({[] {
                           std::this_thread::sleep_for(200ms);
                           return std::string("slow first");
                       },
                       [] { return std::string("quick second"); }},
                      true);
    EXPECT_EQ(texts, (std::vector<std::string>{"slow first", "quick second"}));
}

TEST(RunAllCollect, MakerThatThrewLeavesNoEntry) {
    const std::vector<std::string> texts =
        runAllCollect({[] { return std::string("a"); },
                       []() -> std::string { throw std::runtime_error("section failed"); },
                       [] { return std::string("c"); }},
                      true);
    EXPECT_EQ(texts, (std::vector<std::string>{"a", "c"}));
}

TEST(RunAllCollect, FailureComesOutWhenNotIgnored) {
    EXPECT_THROW(runAllCollect({[]() -> std::string { throw std::logic_error("x"); }}, false),
                 std::logic_error);
}

TEST(RunAllCollect, NestedRunsWork) {
    const std::vector<std::string> texts = runAllCollect(
        {[] { return runAllCollect({[] { return std::string("inner"); }}, true).at(0); }}, true);
    EXPECT_EQ(texts, (std::vector<std::string>{"inner"}));
}

TEST(RunAllCollect, EmptyListGivesNoTexts) {
    EXPECT_TRUE(runAllCollect({}, true).empty());
}
