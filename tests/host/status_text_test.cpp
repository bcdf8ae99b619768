#include <gtest/gtest.h>

#include <string>

#include "foundation/language.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"
#include "host/corvanite_host.h"
#include "host/host_facts.h"

namespace {

// The panel's words in English for one test.
class InEnglish : public ::testing::Test {
protected:
    InEnglish() { panelMessages.setLanguage(Language::English); }
    ~InEnglish() override { panelMessages.setLanguage(saved_); }

private:
    int saved_ = panelMessages.language.load();
};

} // namespace

TEST_F(InEnglish, UptimeOfZeroIsADash) {
    EXPECT_EQ(uptimeText(0), "-");
}

TEST_F(InEnglish, UptimeOfFiftyNineSeconds) {
    EXPECT_EQ(uptimeText(59), "00 d. : 00 h. : 00 m. : 59 s.");
}

TEST_F(InEnglish, UptimeOfEveryUnit) {
    EXPECT_EQ(uptimeText(93784), "01 d. : 02 h. : 03 m. : 04 s.");
}

TEST_F(InEnglish, UptimeOfAHundredDaysHasThreeDigits) {
    EXPECT_EQ(uptimeText(100 * 86400 + 1), "100 d. : 00 h. : 00 m. : 01 s.");
}

TEST(UptimeText, FollowsTheLanguage) {
    const int saved = panelMessages.language.load();
    panelMessages.setLanguage(Language::Russian);
    EXPECT_EQ(uptimeText(61), utf8ToCp1251("00 д. : 00 ч. : 01 м. : 01 с."));
    panelMessages.setLanguage(saved);
}

TEST(AddressLinkText, DashStaysADash) {
    EXPECT_EQ(addressLinkText("-"), "-");
}

TEST(AddressLinkText, PortBecomesTheServiceLink) {
    EXPECT_EQ(addressLinkText("8888"), "<a>" + ServiceDomain + ":8888</a>");
}

TEST(ServiceUrl, IsTheServicePageOnThePort) {
    EXPECT_EQ(serviceUrl("8888"), L"https://" + utf8ToUtf16(ServiceDomain) + L":8888");
    EXPECT_EQ(serviceUrl("-"), L"https://" + utf8ToUtf16(ServiceDomain) + L":-");
}

// The link's tooltip before the first refresh.
TEST(ServiceUrl, WithoutAPortEndsInTheColon) {
    EXPECT_EQ(serviceUrl(""), L"https://" + utf8ToUtf16(ServiceDomain) + L":");
}

TEST_F(InEnglish, StatusTextOfBothStates) {
    EXPECT_EQ(statusText(true), "Running");
    EXPECT_EQ(statusText(false), "Stopped");
}

TEST(ServerStatus, DefaultsToStoppedWithDashes) {
    const ServerStatus status;
    EXPECT_FALSE(status.running);
    EXPECT_EQ(status.time, "-");
    EXPECT_EQ(status.port, "-");
    EXPECT_EQ(status.address, "-");
}
