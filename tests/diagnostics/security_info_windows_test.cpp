#include "diagnostics/security_info.h"

#include <windows.h>

#include <gtest/gtest.h>

#include "diagnostics/os_info.h"
#include "foundation/exceptions.h"

namespace {

bool underWine() {
    const HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
    return ntdll != nullptr && GetProcAddress(ntdll, "wine_get_version") != nullptr;
}

} // namespace

TEST(SecurityInfoWindows, UnderWineTheSecurityCentreNamespaceIsMissing) {
    if (!underWine()) {
        GTEST_SKIP() << "Windows itself has a security centre";
    }
    // Wine's management service knows ROOT\CIMV2 but not ROOT\SecurityCenter2.
    ASSERT_FALSE(detector::queryOsInfo().isServer);
    EXPECT_THROW(detector::querySecurityInfo(), detector::InternalError);
}

TEST(SecurityInfoWindows, UnderWineTheHealthLibraryIsMissing) {
    if (!underWine()) {
        GTEST_SKIP() << "Windows itself has WSCAPI.dll";
    }
    const HMODULE library = LoadLibraryW(L"WSCAPI.dll");
    EXPECT_EQ(library, nullptr);
    if (library != nullptr) {
        FreeLibrary(library);
    }
}
