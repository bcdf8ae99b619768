#include "host/file_version.h"

#include <gtest/gtest.h>

#include "host/host_facts.h"
#include "tests/support/host_model_installation.h"
#include "tools/addon_double/addon_double_version.h"

// The addon double carries a version resource; under the server's name it stands for a server
// file with a version.
TEST(FileVersion, VersionResourceOfTheServerFile) {
    const HostModelInstallation installation;
    installation.copyTool("Corvanite.dll", "CorvaniteHost.exe");
    EXPECT_EQ(fileVersionText(), ADDON_DOUBLE_VERSION_TEXT);
    EXPECT_EQ(versionTail(fileVersionText()), "4.2.7");
    EXPECT_EQ(versionMiddle(fileVersionText()), "4.2");
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
