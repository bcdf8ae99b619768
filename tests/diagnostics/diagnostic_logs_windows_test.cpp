#include "diagnostics/diagnostic_logs.h"

#include <windows.h>

#include <gtest/gtest.h>

#include "foundation/exceptions.h"
#include "host/detector/run_and_capture.h"
#include "host/host_facts.h"

namespace {

bool underWine() {
    const HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
    return ntdll != nullptr && GetProcAddress(ntdll, "wine_get_version") != nullptr;
}

} // namespace

TEST(DiagnosticLogsWindows, UnderWineNslookupIsMissingAndItsProbeEndsWithAnInternalError) {
    if (!underWine()) {
        GTEST_SKIP() << "Windows has nslookup.exe";
    }
    EXPECT_THROW(nslookupProbe(), detector::InternalError);
}

TEST(DiagnosticLogsWindows, PingOfTheServiceDomainAnswersWithinItsTime) {
    const std::optional<std::string> output =
        detector::runAndCapture("ping " + ServiceDomain + " -n 1", 5);
    ASSERT_TRUE(output);
    EXPECT_FALSE(output->empty());
    EXPECT_NO_THROW(pingProbe());
}
