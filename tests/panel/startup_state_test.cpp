#include "panel/startup_state.h"

#include <gtest/gtest.h>

#include "foundation/client_properties.h"
#include "foundation/language.h"
#include "foundation/message_catalogue.h"
#include "tests/support/foundation/settings_file_guard.h"
#include "tests/support/host/model_installation.h"

namespace {

struct StartupStateTest : testing::Test {
    void SetUp() override { saved = panelMessages.language.load(); }
    void TearDown() override { panelMessages.setLanguage(saved); }

    HostModelInstallation installation;
    SettingsFileGuard settings;
    int saved = 0;
};

TEST_F(StartupStateTest, TheLanguageBoxShowsTheLanguageInForce) {
    const int expected[][2] = {{0, 0}, {1, 1}, {2, 2}, {5, 2}, {-1, 2}};
    for (const auto& [language, selection] : expected) {
        panelMessages.setLanguage(language);
        EXPECT_EQ(startupSelection(12), selection) << language;
    }
}

TEST_F(StartupStateTest, TheLogLevelBoxShowsTheLevelOfNginxConf) {
    const char* const levels[] = {"error", "info", "debug"};
    for (int index = 0; index < 3; ++index) {
        installation.writeText("conf/nginx.conf", "worker_processes 1;\nerror_log logs/error.log " +
                                                      std::string(levels[index]) + ";\n");
        EXPECT_EQ(startupSelection(13), index) << levels[index];
    }
}

TEST_F(StartupStateTest, ALevelThatFitsNoEntryOrNoFileSelectsTheFirst) {
    installation.writeText("conf/nginx.conf", "error_log logs/error.log crit;\n");
    EXPECT_EQ(startupSelection(13), 0);
    installation.remove("conf/nginx.conf");
    EXPECT_EQ(startupSelection(13), 0);
}

TEST_F(StartupStateTest, AFileWithoutSemicolonSelectsTheFirst) {
    for (const char* file : {"", "debug", "error_log logs/error.log debug\n"}) {
        installation.writeText("conf/nginx.conf", file);
        EXPECT_EQ(startupSelection(13), 0) << '"' << file << '"';
    }
}

TEST_F(StartupStateTest, OtherComboBoxesSelectTheirFirstEntry) {
    installation.writeText("conf/nginx.conf", "error_log logs/error.log debug;\n");
    EXPECT_EQ(startupSelection(21), 0);
    EXPECT_EQ(startupSelection(0), 0);
}

TEST_F(StartupStateTest, TheCheckBoxesShowTheSettings) {
    clientProperties().set(portAutoselectKey, "false");
    clientProperties().set(useUncPathsKey, "true");
    EXPECT_FALSE(startupChecked(14));
    EXPECT_TRUE(startupChecked(15));
    clientProperties().set(portAutoselectKey, "true");
    clientProperties().set(useUncPathsKey, "false");
    EXPECT_TRUE(startupChecked(14));
    EXPECT_FALSE(startupChecked(15));
}

TEST_F(StartupStateTest, OtherCheckBoxesStartUnchecked) {
    clientProperties().set(portAutoselectKey, "true");
    EXPECT_FALSE(startupChecked(22));
    EXPECT_FALSE(startupChecked(13));
}

} // namespace
