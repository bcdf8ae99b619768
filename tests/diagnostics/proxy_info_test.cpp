#include "diagnostics/proxy_info.h"

#include <stdexcept>

#include <gtest/gtest.h>

#include "foundation/language.h"
#include "foundation/message_catalogue.h"
#include "tests/support/diagnostics/test_registry.h"

using detector::ProxyInfo;

namespace {

const std::string settingsKey = "Software\\Microsoft\\Windows\\CurrentVersion\\Internet Settings";

struct ProxyInfoTest : testing::Test {
    void SetUp() override { panelMessages.setLanguage(Language::English); }
    void TearDown() override { panelMessages.setLanguage(Language::Ukrainian); }

    ScopedTestRegistry registry;
};

} // namespace

TEST_F(ProxyInfoTest, NoProxyEnableValueGivesOff) {
    registry.createKey(RegistryHive::CurrentUser, settingsKey);
    const ProxyInfo info = detector::queryProxyInfo();
    EXPECT_FALSE(info.enabled);
    EXPECT_EQ(detector::proxySection(), "Proxy settings (off):\n    Server: -\n    Override: -");
}

TEST_F(ProxyInfoTest, ProxyEnable0x100GivesOffSinceOnlyTheFirstByteCounts) {
    registry.setDword(RegistryHive::CurrentUser, settingsKey, "ProxyEnable", 0x00000100);
    EXPECT_FALSE(detector::queryProxyInfo().enabled);
    EXPECT_EQ(detector::proxySection().find("Proxy settings (off):"), 0u);
}

TEST_F(ProxyInfoTest, ProxyEnable1GivesOn) {
    registry.setDword(RegistryHive::CurrentUser, settingsKey, "ProxyEnable", 1);
    registry.setText(RegistryHive::CurrentUser, settingsKey, "ProxyServer", "proxy.corp:3128");
    registry.setText(RegistryHive::CurrentUser, settingsKey, "ProxyOverride", "*.corp;<local>");
    const ProxyInfo info = detector::queryProxyInfo();
    EXPECT_TRUE(info.enabled);
    EXPECT_EQ(info.server, "proxy.corp:3128");
    EXPECT_EQ(info.override, "*.corp;<local>");
    EXPECT_EQ(detector::proxySection(),
              "Proxy settings (on):\n    Server: proxy.corp:3128\n    Override: *.corp;");
}

TEST_F(ProxyInfoTest, EmptyProxyServerAndProxyOverrideGiveADashTwice) {
    registry.setText(RegistryHive::CurrentUser, settingsKey, "ProxyServer", "");
    registry.setText(RegistryHive::CurrentUser, settingsKey, "ProxyOverride", "");
    const ProxyInfo info = detector::queryProxyInfo();
    EXPECT_EQ(info.server, "");
    EXPECT_EQ(info.override, "");
    EXPECT_EQ(detector::proxySection(), "Proxy settings (off):\n    Server: -\n    Override: -");
}

TEST_F(ProxyInfoTest, MissingKeyIsNoFailure) {
    const ProxyInfo info = detector::queryProxyInfo();
    EXPECT_FALSE(info.enabled);
    EXPECT_EQ(info.server, "");
    EXPECT_EQ(info.override, "");
}

TEST_F(ProxyInfoTest, OverrideLocalhostLocalGivesLocalhostWithItsSemicolon) {
    registry.setText(RegistryHive::CurrentUser, settingsKey, "ProxyOverride", "localhost;<local>");
    EXPECT_EQ(detector::proxySection(),
              "Proxy settings (off):\n    Server: -\n    Override: localhost;");
}

TEST_F(ProxyInfoTest, OverrideEndingInAnAsteriskStaysAsItIs) {
    registry.setText(RegistryHive::CurrentUser, settingsKey, "ProxyOverride", "10.*;192.168.*");
    EXPECT_EQ(detector::proxySection(),
              "Proxy settings (off):\n    Server: -\n    Override: 10.*;192.168.*");
}

TEST_F(ProxyInfoTest, OverrideLocalMakesTheSectionFail) {
    registry.setText(RegistryHive::CurrentUser, settingsKey, "ProxyOverride", "local");
    EXPECT_THROW(detector::proxySection(), std::length_error);
}

TEST(ProxyInfo, CutWorksOnTheCharacterSetOfLocal) {
    EXPECT_EQ(detector::overrideWithoutLocal("*.corp.loc"), "*.c");
    EXPECT_EQ(detector::overrideWithoutLocal("a;b;<local>"), "a;b;");
    EXPECT_EQ(detector::overrideWithoutLocal("1234567>"), "1");
    EXPECT_EQ(detector::overrideWithoutLocal("abcdefg"), "abcdefg");
    EXPECT_EQ(detector::overrideWithoutLocal("<local>"), "");
    EXPECT_EQ(detector::overrideWithoutLocal(""), "");
    EXPECT_THROW(detector::overrideWithoutLocal("a.loc"), std::length_error);
}

TEST(ProxyInfo, OverrideCutToNothingShowsADash) {
    panelMessages.setLanguage(Language::English);
    const ProxyInfo info{"", "<local>", true};
    EXPECT_EQ(detector::proxySectionText(info),
              "Proxy settings (on):\n    Server: -\n    Override: -");
    panelMessages.setLanguage(Language::Ukrainian);
}

TEST(ProxyInfo, SectionInRussianIsUtf8WithBareLineFeeds) {
    panelMessages.setLanguage(Language::Russian);
    const ProxyInfo info{"p:1", "", true};
    EXPECT_EQ(detector::proxySectionText(info),
              "Настройки прокси (включено):\n    Сервер: p:1\n    Исключения: -");
    panelMessages.setLanguage(Language::Ukrainian);
}
