#include "host/file_version.h"

#include <gtest/gtest.h>

#include "host/host_facts.h"
#include "tests/support/host_model_installation.h"

// Here the version stands in a side file beside the server file.
TEST(FileVersion, SideFileGivesTheServerVersion) {
    const HostModelInstallation installation;
    installation.writeText("CorvaniteHost.exe", "");
    installation.writeText("CorvaniteHost.exe.version", "1.2.3.4\n");
    EXPECT_EQ(fileVersionText(), "1.2.3.4");
    EXPECT_EQ(versionTail(fileVersionText()), "2.3.4");
}

TEST(FileVersion, SideFileWithThreeNumbersGivesZeros) {
    const HostModelInstallation installation;
    installation.writeText("CorvaniteHost.exe.version", "1.2.3");
    EXPECT_EQ(fileVersionText(), "0.0.0.0");
}

TEST(FileVersion, SideFileWithANumberAboveSixteenBitsGivesZeros) {
    const HostModelInstallation installation;
    installation.writeText("CorvaniteHost.exe.version", "1.65536.3.4");
    EXPECT_EQ(fileVersionText(), "0.0.0.0");
}

TEST(FileVersion, SideFileWithWordsGivesZeros) {
    const HostModelInstallation installation;
    installation.writeText("CorvaniteHost.exe.version", "one.two.three.four");
    EXPECT_EQ(fileVersionText(), "0.0.0.0");
}

TEST(FileVersion, ChangedSideFileIsReadAgain) {
    const HostModelInstallation installation;
    installation.writeText("CorvaniteHost.exe.version", "1.2.3.4");
    EXPECT_EQ(fileVersionText(), "1.2.3.4");
    installation.writeText("CorvaniteHost.exe.version", "1.2.3.45");
    EXPECT_EQ(fileVersionText(), "1.2.3.45");
}

TEST(FileVersion, RemovedSideFileGivesZeros) {
    const HostModelInstallation installation;
    installation.writeText("CorvaniteHost.exe.version", "1.2.3.4");
    EXPECT_EQ(fileVersionText(), "1.2.3.4");
    installation.remove("CorvaniteHost.exe.version");
    EXPECT_EQ(fileVersionText(), "0.0.0.0");
}

TEST(FileVersion, StampFollowsTheSideFile) {
    const HostModelInstallation installation;
    EXPECT_FALSE(fileVersionStamp(installation.file("CorvaniteHost.exe")).has_value());
    installation.writeText("CorvaniteHost.exe.version", "1.2.3.4");
    const auto stamp = fileVersionStamp(installation.file("CorvaniteHost.exe"));
    ASSERT_TRUE(stamp.has_value());
    EXPECT_EQ(stamp->size, 7u);
}
