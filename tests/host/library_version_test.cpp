#include <gtest/gtest.h>

#include <string>

#include "host/host_facts.h"
#include "tests/support/host/model_installation.h"
#include "tools/addon_double/addon_double_protocol.h"

namespace {

struct LibraryVersion : ::testing::Test {
    LibraryVersion() { installation.addAddonLibrary(); }

    void sideFile(const char* suffix, const std::string& text) const {
        installation.writeText(std::string("Corvanite.dll") + suffix, text);
    }

    HostModelInstallation installation;
};

} // namespace

TEST_F(LibraryVersion, IsTheVersionTheLibraryReports) {
    EXPECT_EQ(libraryVersion(), addonDoubleVersion);
}

TEST_F(LibraryVersion, FollowsTheLibrary) {
    sideFile(addonVersionSuffix, "3.0.1.12");
    EXPECT_EQ(libraryVersion(), "3.0.1.12");
}

TEST_F(LibraryVersion, AsksForTheVersionWithTheServiceDomainAndGivesTheAnswerBack) {
    sideFile(addonLogSuffix, "");
    libraryVersion();
    EXPECT_EQ(installation.readText(std::string("Corvanite.dll") + addonLogSuffix),
              "query {\"action\":\"getVersion\"} " + ServiceDomain + "\nfree\n");
}

TEST_F(LibraryVersion, AnswerWithoutVersionGivesADash) {
    sideFile(addonReplySuffix, "{\"answer\":{}}");
    EXPECT_EQ(libraryVersion(), "-");
}

TEST_F(LibraryVersion, NullAnswerGivesADash) {
    sideFile(addonNullSuffix, "");
    sideFile(addonLogSuffix, "");
    EXPECT_EQ(libraryVersion(), "-");
    EXPECT_EQ(installation.readText(std::string("Corvanite.dll") + addonLogSuffix),
              "query {\"action\":\"getVersion\"} " + ServiceDomain + "\n");
}

TEST_F(LibraryVersion, BrokenJsonGivesADash) {
    sideFile(addonReplySuffix, "{\"answer\":{\"version\":");
    EXPECT_EQ(libraryVersion(), "-");
}

TEST_F(LibraryVersion, ReplyWithoutAnswerGivesADash) {
    sideFile(addonReplySuffix, "{\"version\":\"1.2.3.4\"}");
    EXPECT_EQ(libraryVersion(), "-");
}

TEST_F(LibraryVersion, VersionThatIsNoTextGivesADash) {
    sideFile(addonReplySuffix, "{\"answer\":{\"version\":5}}");
    EXPECT_EQ(libraryVersion(), "-");
}

TEST_F(LibraryVersion, OtherMembersOfTheReplyAreIgnored) {
    sideFile(addonReplySuffix, "{\"status\":0,\"answer\":{\"build\":7,\"version\":\"2.0.0.1\"}}");
    EXPECT_EQ(libraryVersion(), "2.0.0.1");
}

TEST(LibraryVersionMissing, MissingLibraryGivesADash) {
    const HostModelInstallation installation;
    EXPECT_EQ(libraryVersion(), "-");
}
