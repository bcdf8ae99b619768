#include "diagnostics/name_lookup.h"

#include <windows.h>

#include <gtest/gtest.h>

#include "foundation/exceptions.h"

namespace {

bool underWine() {
    const HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
    return ntdll != nullptr && GetProcAddress(ntdll, "wine_get_version") != nullptr;
}

} // namespace

TEST(NameLookupWindows, LocalhostAnswersOnWindowsAndFailsUnderWine) {
    // Wine's DNS client ignores the hosts file, so "localhost" has no DNS answer there.
    if (underWine()) {
        EXPECT_THROW(detector::resolveHost("localhost"), detector::InternalError);
    } else {
        EXPECT_FALSE(detector::resolveHost("localhost").empty());
    }
}
