#include "panel/text_resolution.h"

#include <chrono>
#include <stdexcept>
#include <thread>

#include <gtest/gtest.h>

#include "foundation/language.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"
#include "host/corvanite_host.h"
#include "host/host_facts.h"
#include "tests/support/panel/expect_failure.h"
#include "tests/support/panel/live_window.h"

namespace {

using namespace std::chrono_literals;

class TextResolutionTest : public testing::Test {
protected:
    void SetUp() override { panelMessages.setLanguage(Language::English); }
};

TEST_F(TextResolutionTest, ACatalogueIdShowsItsWordsAndIsKept) {
    const ResolvedText resolved = resolveText("CVCP-000001");
    EXPECT_EQ(resolved.text, "CVCP-000001");
    EXPECT_EQ(resolved.displayText, "Run");
}

TEST_F(TextResolutionTest, ACatalogueIdShowsTheWordsOfTheLanguageInForce) {
    panelMessages.setLanguage(Language::Ukrainian);
    EXPECT_EQ(cp1251ToUtf8(resolveText("CVCP-000001").displayText), "Запустити");
}

TEST_F(TextResolutionTest, AnythingHoldingTheCataloguePrefixIsLookedUp) {
    expectFailure<std::out_of_range>([] { resolveText("CVCP-"); }, "invalid map<K, T> key");
    expectFailure<std::out_of_range>([] { resolveText("see CVCP-000001"); },
                                     "invalid map<K, T> key");
    expectFailure<std::out_of_range>([] { resolveText("cvcp-000001 CVCP-x"); },
                                     "invalid map<K, T> key");
}

TEST_F(TextResolutionTest, LiteralTextIsConvertedFromUtf8AndFollowsNoLanguage) {
    const ResolvedText resolved = resolveText("Версия: 1.0");
    EXPECT_EQ(resolved.text, "");
    EXPECT_EQ(resolved.displayText, utf8ToCp1251("Версия: 1.0"));
    EXPECT_EQ(resolveText("").displayText, "");
    EXPECT_EQ(resolveText("cvcp-000001").displayText, "cvcp-000001");
    EXPECT_EQ(resolveText("Time").displayText, "Time");
}

// The keys of the host's facts, over the server double.
struct HostTextTest : TextResolutionTest {
    PanelLiveWindow panel;
};

TEST_F(HostTextTest, StatusTimeAndAddressShowTheServerNowAndFollowNoLanguage) {
    panel.makeHost();
    ASSERT_TRUE(panel.waitForServer(true));
    std::this_thread::sleep_for(1100ms);
    const ResolvedText status = resolveText("status");
    EXPECT_EQ(status.text, "");
    EXPECT_EQ(status.displayText, "Running");
    const ResolvedText time = resolveText("time");
    EXPECT_EQ(time.text, "");
    EXPECT_EQ(time.displayText.rfind("00 d. : 00 h. : 00 m. : ", 0), 0u) << time.displayText;
    const ResolvedText address = resolveText("address");
    EXPECT_EQ(address.text, "");
    EXPECT_EQ(address.displayText,
              "<a>" + ServiceDomain + ":" + std::to_string(panel.port) + "</a>");
}

TEST_F(HostTextTest, AStoppedServerShowsStoppedAndDashes) {
    panel.makeHost();
    getHost()->stopServer();
    EXPECT_EQ(resolveText("status").displayText, "Stopped");
    EXPECT_EQ(resolveText("time").displayText, "-");
    EXPECT_EQ(resolveText("address").displayText, "-");
}

TEST_F(HostTextTest, VersionsAreTheHostFilesTailAndTheLibrarysOwn) {
    panel.makeHost();
    const ResolvedText application = resolveText("app_version");
    EXPECT_EQ(application.text, "");
    EXPECT_EQ(application.displayText, versionTail(fileVersionText()));
    EXPECT_EQ(resolveText("lib_version").displayText, libraryVersion());
    panel.installation.addAddonLibrary();
    EXPECT_EQ(resolveText("lib_version").displayText, libraryVersion());
    EXPECT_NE(resolveText("lib_version").displayText, "-");
}

} // namespace
