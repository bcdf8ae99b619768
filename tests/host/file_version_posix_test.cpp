#include "host/file_version.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "host/host_facts.h"
#include "tests/support/host/model_installation.h"

// Here the version stands in a side file beside the server file.
namespace {

using Shown = std::vector<std::string>;

// Puts each text in turn into the side file (no text: removes it) and collects the version that
// the panel shows after each.
Shown versionsShownFor(std::initializer_list<std::optional<std::string>> sideFiles) {
    const HostModelInstallation installation;
    Shown shown;
    for (const std::optional<std::string>& text : sideFiles) {
        if (text) {
            installation.writeText("CorvaniteHost.exe.version", *text);
        } else {
            installation.remove("CorvaniteHost.exe.version");
        }
        shown.push_back(fileVersionText());
    }
    return shown;
}

} // namespace

TEST(FileVersion, SideFileGivesTheServerVersion) {
    const HostModelInstallation installation;
    installation.writeText("CorvaniteHost.exe", "");
    installation.writeText("CorvaniteHost.exe.version", "1.2.3.4\n");
    EXPECT_EQ(fileVersionText(), "1.2.3.4");
    EXPECT_EQ(versionTail(fileVersionText()), "2.3.4");
}

TEST(FileVersion, SideFileWithThreeNumbersGivesZeros) {
    EXPECT_EQ(versionsShownFor({"1.2.3"}), Shown{"0.0.0.0"});
}

TEST(FileVersion, SideFileWithANumberAboveSixteenBitsGivesZeros) {
    EXPECT_EQ(versionsShownFor({"1.65536.3.4"}), Shown{"0.0.0.0"});
}

TEST(FileVersion, SideFileWithWordsGivesZeros) {
    EXPECT_EQ(versionsShownFor({"one.two.three.four"}), Shown{"0.0.0.0"});
}

TEST(FileVersion, ChangedSideFileIsReadAgain) {
    EXPECT_EQ(versionsShownFor({"1.2.3.4", "1.2.3.45"}), (Shown{"1.2.3.4", "1.2.3.45"}));
}

TEST(FileVersion, RemovedSideFileGivesZeros) {
    EXPECT_EQ(versionsShownFor({"1.2.3.4", std::nullopt}), (Shown{"1.2.3.4", "0.0.0.0"}));
}

TEST(FileVersion, StampFollowsTheSideFile) {
    const HostModelInstallation installation;
    EXPECT_FALSE(fileVersionStamp(installation.file("CorvaniteHost.exe")).has_value());
    installation.writeText("CorvaniteHost.exe.version", "1.2.3.4");
    const auto stamp = fileVersionStamp(installation.file("CorvaniteHost.exe"));
    ASSERT_TRUE(stamp.has_value());
    EXPECT_EQ(stamp->size, 7u);
}
