#include "host/file_version.h"

#include <gtest/gtest.h>

#include "host/host_facts.h"
#include "tests/support/host/model_installation.h"
#include "tools/addon_double/addon_double_version.h"
#include "tools/host_double/host_double_version.h"

TEST(FileVersion, VersionResourceOfTheServerFile) {
    const HostModelInstallation installation;
    installation.copyTool("CorvaniteHost.exe", "CorvaniteHost.exe");
    EXPECT_EQ(fileVersionText(), HOST_DOUBLE_VERSION_TEXT);
    EXPECT_EQ(versionTail(fileVersionText()), "3.8.2");
    EXPECT_EQ(versionMiddle(fileVersionText()), "3.8");
}

// Any file of the server's name counts, whatever program it is.
TEST(FileVersion, VersionResourceOfAnotherProgramUnderTheServersName) {
    const HostModelInstallation installation;
    installation.copyTool("Corvanite.dll", "CorvaniteHost.exe");
    EXPECT_EQ(fileVersionText(), ADDON_DOUBLE_VERSION_TEXT);
}

TEST(FileVersion, ReadFileVersionGivesTheFourNumbers) {
    const HostModelInstallation installation;
    installation.copyTool("Corvanite.dll", "Corvanite.dll");
    const auto version = readFileVersion(installation.file("Corvanite.dll"));
    ASSERT_TRUE(version.has_value());
    EXPECT_EQ(version->major, 1);
    EXPECT_EQ(version->minor, 4);
    EXPECT_EQ(version->build, 2);
    EXPECT_EQ(version->revision, 7);
}

// An update puts another server file in place: the version shown follows it.
TEST(FileVersion, ReplacedServerFileIsReadAgain) {
    const HostModelInstallation installation;
    installation.copyTool("CorvaniteHost.exe", "CorvaniteHost.exe");
    EXPECT_EQ(fileVersionText(), HOST_DOUBLE_VERSION_TEXT);
    installation.copyTool("Corvanite.dll", "CorvaniteHost.exe");
    EXPECT_EQ(fileVersionText(), ADDON_DOUBLE_VERSION_TEXT);
    installation.remove("CorvaniteHost.exe");
    EXPECT_EQ(fileVersionText(), "0.0.0.0");
}

TEST(FileVersion, StampGivesTheFileSize) {
    const HostModelInstallation installation;
    EXPECT_FALSE(fileVersionStamp(installation.file("CorvaniteHost.exe")).has_value());
    installation.writeText("CorvaniteHost.exe", "12345");
    const auto stamp = fileVersionStamp(installation.file("CorvaniteHost.exe"));
    ASSERT_TRUE(stamp.has_value());
    EXPECT_EQ(stamp->size, 5u);
}
