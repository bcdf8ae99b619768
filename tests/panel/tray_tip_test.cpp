#include "panel/tray_tip.h"

#include <stdexcept>

#include <gtest/gtest.h>

#include "foundation/language.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"
#include "host/host_facts.h"
#include "tests/support/host/model_installation.h"
#include "tests/support/panel/expect_failure.h"

namespace {

struct TrayTipTest : testing::Test {
    void SetUp() override { panelMessages.setLanguage(Language::English); }
    HostModelInstallation installation;
};

TEST_F(TrayTipTest, IsTheTitleAndTheMiddleOfTheHostsVersion) {
    EXPECT_EQ(trayTipText("CVCP-001001"),
              "Corvanite Control Panel " + versionMiddle(fileVersionText()));
}

TEST_F(TrayTipTest, WithoutAHostFileTheVersionIsItsFallback) {
    // "0.0.0.0" without its first and last number.
    EXPECT_EQ(trayTipText("CVCP-001001"), "Corvanite Control Panel 0.0");
}

TEST_F(TrayTipTest, FollowsTheLanguage) {
    panelMessages.setLanguage(Language::Russian);
    EXPECT_EQ(cp1251ToUtf8(trayTipText("CVCP-001001")), "Панель управления Corvanite 0.0");
}

TEST_F(TrayTipTest, ATitleThatIsNoCatalogueIdFails) {
    expectFailure<std::out_of_range>([] { trayTipText("Corvanite"); }, "invalid map<K, T> key");
}

TEST_F(TrayTipTest, ANoticeFollowsOnALineOfItsOwn) {
    EXPECT_EQ(trayTipText("CVCP-001001", "port 8888 is held"),
              "Corvanite Control Panel 0.0\nport 8888 is held");
    EXPECT_EQ(trayTipText("CVCP-001001", ""), "Corvanite Control Panel 0.0");
}

TEST_F(TrayTipTest, AFailuresNoticeIsTheLogsLineInTheUsersCodePage) {
    const std::string line = "2026/11/24 10:00:01 [emerg] 2#2: unknown directive \"lisen\" in "
                             "C:\\Users\\\xD0\x98\xD1\x80\xD0\xB0/nginx.conf:3";
    EXPECT_EQ(failureNotice(line), utf8ToCp1251(line));
    EXPECT_EQ(cp1251ToUtf8(failureNotice(line)), line);
}

TEST_F(TrayTipTest, AFailureWithoutALogLineIsToldInASentence) {
    EXPECT_EQ(failureNotice(std::nullopt),
              "The server keeps stopping, and its error log doesn't say why");
    EXPECT_EQ(failureNotice(std::string()), failureNotice(std::nullopt));
    panelMessages.setLanguage(Language::Ukrainian);
    EXPECT_EQ(cp1251ToUtf8(failureNotice(std::nullopt)),
              "Сервер постійно зупиняється, а журнал помилок не вказує причину");
}

} // namespace
