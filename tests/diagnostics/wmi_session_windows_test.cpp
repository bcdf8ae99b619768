// The system's management service, asked from the report's sections side by side.
#include "diagnostics/wmi_session_windows.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "diagnostics/os_info.h"
#include "diagnostics/run_all.h"
#include "diagnostics/security_info.h"

namespace {

// A second session begins only once the first has ended: the first says it is about to end, then
// ends, and the second finds that said when it has begun.
TEST(WmiSessionWindows, ASecondSessionBeginsOnlyOnceTheFirstHasEnded) {
    std::atomic<bool> firstBegun{false};
    std::atomic<bool> firstEnding{false};
    std::thread first([&] {
        detector::WmiSession session;
        firstBegun = true;
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        firstEnding = true;
    });
    while (!firstBegun) {
        std::this_thread::yield();
    }
    bool sawTheEnd = false;
    {
        const detector::WmiSession second;
        sawTheEnd = firstEnding;
    }
    first.join();
    EXPECT_TRUE(sawTheEnd);
}

// The two sections that ask the service run side by side in every report; many reports in a row
// give the same texts as the first (a section the machine can't answer is left out every time),
// and the program lives on.
TEST(WmiSessionWindows, TheSystemAndAntivirusSectionsSideBySideManyTimesInARow) {
    const std::vector<SectionMaker> sections{detector::osSection, detector::antivirusSection};
    const std::vector<std::string> first = runAllCollect(sections, true);
    ASSERT_FALSE(first.empty());
    for (int report = 1; report < 30; ++report) {
        EXPECT_EQ(runAllCollect(sections, true), first) << "report " << report;
    }
}

} // namespace
