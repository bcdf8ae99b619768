#include "diagnostics/os_info.h"

#include <windows.h>

#include <gtest/gtest.h>

#include "foundation/filesys.h"

// The test prefix is set to Windows 10, for which the version call tells a program without a
// supportedOS manifest entry 6.2; the name must then come through the management service.

TEST(OsInfoWindows, VersionOfThisSystemComesThroughTheManagementServiceWhenAbove61) {
    OSVERSIONINFOEXW answer{};
    answer.dwOSVersionInfoSize = sizeof(answer);
    ASSERT_TRUE(GetVersionExW(reinterpret_cast<OSVERSIONINFOW*>(&answer)));
    const detector::OsInfo info = detector::queryOsInfo();
    EXPECT_EQ(info.name, "Windows");
    if (answer.dwMajorVersion > 5 && answer.dwMinorVersion > 1) {
        EXPECT_GE(info.majorVersion, answer.dwMajorVersion);
    } else {
        EXPECT_EQ(info.majorVersion, answer.dwMajorVersion);
    }
    EXPECT_EQ(info.isServer, answer.wProductType != VER_NT_WORKSTATION);
    EXPECT_EQ(info.servicePack, std::to_string(answer.wServicePackMajor) + "." +
                                    std::to_string(answer.wServicePackMinor));
}

TEST(OsInfoWindows, BitnessFollowsTheProgramFilesFolderOfA32BitProcess) {
    const std::string folder = filesys::programFilesFolder();
    EXPECT_EQ(detector::queryOsInfo().bitness, folder.find("(x86)") != std::string::npos ? 64 : 32);
}

TEST(OsInfoWindows, AdministratorTestMatchesTheTokenMembership) {
    SID_IDENTIFIER_AUTHORITY ntAuthority = SECURITY_NT_AUTHORITY;
    PSID administrators = nullptr;
    ASSERT_TRUE(AllocateAndInitializeSid(&ntAuthority, 2, SECURITY_BUILTIN_DOMAIN_RID,
                                         DOMAIN_ALIAS_RID_ADMINS, 0, 0, 0, 0, 0, 0,
                                         &administrators));
    BOOL member = FALSE;
    CheckTokenMembership(nullptr, administrators, &member);
    FreeSid(administrators);
    // An enabled membership is certainly listed; a filtered one is listed as well.
    if (member) {
        EXPECT_TRUE(detector::queryOsInfo().isAdmin);
    }
}
