#include "diagnostics/name_lookup.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "foundation/exceptions.h"
#include "foundation/text.h"

namespace {

bool underWine() {
    const HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
    return ntdll != nullptr && GetProcAddress(ntdll, "wine_get_version") != nullptr;
}

std::string systemFolder() {
    wchar_t folder[MAX_PATH] = {};
    const UINT length = GetSystemDirectoryW(folder, MAX_PATH);
    return utf16ToUtf8(std::wstring(folder, length));
}

} // namespace

// By a bare name the program's folder and the current one would be searched before the system's.
TEST(NameLookupWindows, ProbesStartTheirToolsByTheirFullPathInTheSystemFolder) {
    EXPECT_EQ(std::string(pingCommandFormat), "\"" + systemFolder() + "\\ping.exe\" %1 -n 1");
    EXPECT_EQ(std::string(nslookupCommandFormat), "\"" + systemFolder() + "\\nslookup.exe\" %1");
}

TEST(NameLookupWindows, LocalhostAnswersOnWindowsAndFailsUnderWine) {
    // Wine's DNS client ignores the hosts file, so "localhost" has no DNS answer there.
    if (underWine()) {
        EXPECT_THROW(detector::resolveHost("localhost"), detector::InternalError);
    } else {
        EXPECT_FALSE(detector::resolveHost("localhost").empty());
    }
}
