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

class TrayTipTest : public testing::Test {
protected:
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

} // namespace
