#include "diagnostics/security_info.h"

#include <map>
#include <vector>

#include <gtest/gtest.h>

#include "foundation/exceptions.h"
#include "foundation/language.h"
#include "foundation/message_catalogue.h"

using detector::HealthAnswer;
using detector::SecurityCentre;
using detector::SecurityInfo;
using detector::securityInfoFrom;

namespace {

constexpr std::uint32_t GOOD = 0;
constexpr std::uint32_t NOTMONITORED = 1;
constexpr std::uint32_t POOR = 2;
constexpr std::uint32_t SNOOZE = 3;

// A security centre that answers from tables and writes down what it was asked, in order.
struct CentreScript {
    std::map<std::wstring, std::vector<std::wstring>> products;
    std::map<std::uint32_t, HealthAnswer> health;
    bool libraryMissing = false;
    std::vector<std::string> calls;
};

class ScriptedCentre : public SecurityCentre {
public:
    explicit ScriptedCentre(CentreScript& script) : script_(script) {
        script.calls.push_back("open");
    }
    ~ScriptedCentre() override { script_.calls.push_back("close"); }

    std::wstring firstProductName(const wchar_t* query) override {
        script_.calls.push_back("query");
        for (const std::wstring& name : script_.products[query]) {
            if (!name.empty()) {
                return name;
            }
        }
        return L"";
    }
    void loadHealth() override {
        script_.calls.push_back("load");
        if (script_.libraryMissing) {
            throw LoadLibraryError("WSCAPI.dll");
        }
    }
    HealthAnswer health(std::uint32_t provider) override {
        script_.calls.push_back("health " + std::to_string(provider));
        return script_.health.at(provider);
    }

private:
    CentreScript& script_;
};

SecurityInfo infoFrom(CentreScript& script, bool isServer = false) {
    return securityInfoFrom(isServer,
                            [&script] { return std::make_unique<ScriptedCentre>(script); });
}

CentreScript allGood() {
    CentreScript script;
    for (const std::uint32_t provider : {0x01u, 0x02u, 0x04u, 0x08u, 0x20u, 0x40u}) {
        script.health[provider] = HealthAnswer{0, GOOD};
    }
    return script;
}

const wchar_t* const antivirusQuery = L"SELECT * FROM AntiVirusProduct";
const wchar_t* const firewallQuery = L"SELECT * FROM FirewallProduct";

class SecurityInfoTest : public testing::Test {
protected:
    void SetUp() override { panelMessages.setLanguage(Language::English); }
    void TearDown() override { panelMessages.setLanguage(Language::Ukrainian); }
};

} // namespace

TEST(SecurityInfo, ProviderStateWords) {
    EXPECT_EQ(detector::providerStateName(0), "GOOD");
    EXPECT_EQ(detector::providerStateName(1), "NOTMONITORED");
    EXPECT_EQ(detector::providerStateName(2), "POOR");
    EXPECT_EQ(detector::providerStateName(3), "SNOOZE");
    EXPECT_EQ(detector::providerStateName(4), "UNKNOWN");
    EXPECT_EQ(detector::providerStateName(0xFFFFFFFF), "UNKNOWN");
}

TEST_F(SecurityInfoTest, OnAServerTheAntivirusBlockHasAnEmptyNameAndNotMonitored) {
    CentreScript script = allGood();
    script.products[antivirusQuery] = {L"Defender"};
    const SecurityInfo info = infoFrom(script, true);
    EXPECT_TRUE(script.calls.empty());
    EXPECT_EQ(info.antivirusName, L"");
    EXPECT_EQ(info.antivirusState, NOTMONITORED);
    EXPECT_EQ(info.serviceState, NOTMONITORED);
    EXPECT_EQ(detector::antivirusSectionText(info), "Antivirus: , state: NOTMONITORED");
}

TEST_F(SecurityInfoTest, ServiceNotGoodWithARegisteredProductShowsTheProductAsPoor) {
    CentreScript script = allGood();
    script.products[antivirusQuery] = {L"Kaspersky Anti-Virus"};
    script.health[0x40] = HealthAnswer{0, SNOOZE};
    const SecurityInfo info = infoFrom(script);
    EXPECT_EQ(info.serviceState, SNOOZE);
    EXPECT_EQ(info.antivirusState, POOR);
    EXPECT_EQ(info.firewallState, POOR);
    EXPECT_EQ(info.autoUpdateState, NOTMONITORED);
    EXPECT_EQ(info.userAccountControlState, NOTMONITORED);
    EXPECT_EQ(info.antispywareState, NOTMONITORED);
    EXPECT_EQ(detector::antivirusSectionText(info), "Antivirus: Kaspersky Anti-Virus, state: POOR");
    EXPECT_EQ(script.calls,
              (std::vector<std::string>{"open", "query", "query", "load", "health 64", "close"}));
}

TEST(SecurityInfo, NoRegisteredFirewallAndAGoodFirewallProviderReadsWindowsFirewall) {
    CentreScript script = allGood();
    EXPECT_EQ(infoFrom(script).firewallName, L"Windows Firewall");
}

TEST(SecurityInfo, NoRegisteredFirewallAndAPoorFirewallProviderStaysEmpty) {
    CentreScript script = allGood();
    script.health[0x01] = HealthAnswer{0, POOR};
    const SecurityInfo info = infoFrom(script);
    EXPECT_EQ(info.firewallName, L"");
    EXPECT_EQ(info.firewallState, POOR);
}

TEST(SecurityInfo, RegisteredFirewallKeepsItsName) {
    CentreScript script = allGood();
    script.products[firewallQuery] = {L"Outpost"};
    EXPECT_EQ(infoFrom(script).firewallName, L"Outpost");
}

TEST(SecurityInfo, FirstProductWithAnEmptyDisplayNameIsPassedOverForTheNext) {
    CentreScript script = allGood();
    script.products[antivirusQuery] = {L"", L"ESET NOD32", L"Avast"};
    EXPECT_EQ(infoFrom(script).antivirusName, L"ESET NOD32");
}

TEST(SecurityInfo, AllProvidersAreAskedInOrderWhenTheServiceIsGood) {
    CentreScript script = allGood();
    script.health[0x02] = HealthAnswer{0, SNOOZE};
    script.health[0x04] = HealthAnswer{0, GOOD};
    script.health[0x08] = HealthAnswer{0, POOR};
    script.health[0x20] = HealthAnswer{0, NOTMONITORED};
    const SecurityInfo info = infoFrom(script);
    EXPECT_EQ(script.calls,
              (std::vector<std::string>{"open", "query", "query", "load", "health 64", "health 1",
                                        "health 2", "health 4", "health 8", "health 32", "close"}));
    EXPECT_EQ(info.autoUpdateState, SNOOZE);
    EXPECT_EQ(info.antivirusState, GOOD);
    EXPECT_EQ(info.antispywareState, POOR);
    EXPECT_EQ(info.userAccountControlState, NOTMONITORED);
}

TEST(SecurityInfo, FailedHealthCallIsAnInternalError) {
    CentreScript script = allGood();
    script.health[0x04] = HealthAnswer{-2147467259, GOOD};
    EXPECT_THROW(infoFrom(script), detector::InternalError);
    EXPECT_EQ(script.calls.back(), "close");
}

TEST(SecurityInfo, HealthValueAbove3IsAnInternalError) {
    CentreScript script = allGood();
    script.health[0x40] = HealthAnswer{0, 4};
    EXPECT_THROW(infoFrom(script), detector::InternalError);
}

TEST(SecurityInfo, MissingHealthLibraryIsALoadLibraryError) {
    CentreScript script = allGood();
    script.libraryMissing = true;
    EXPECT_THROW(infoFrom(script), LoadLibraryError);
}

TEST(SecurityInfo, AntivirusNameOutsideCodePage1251ShowsQuestionMarks) {
    SecurityInfo info;
    info.antivirusName = L"Антивирус \x4E2D";
    info.antivirusState = GOOD;
    panelMessages.setLanguage(Language::English);
    EXPECT_EQ(detector::antivirusSectionText(info), "Antivirus: Антивирус ?, state: GOOD");
    panelMessages.setLanguage(Language::Ukrainian);
}

TEST(SecurityInfo, QueryOfThisSystemAnswersOrFailsWithTheNamedErrors) {
    // Wine knows no Security Center namespace and no health library; a POSIX system has neither.
    try {
        const SecurityInfo info = detector::querySecurityInfo();
        EXPECT_LE(info.serviceState, 3u);
    } catch (const detector::InternalError&) {
        SUCCEED();
    } catch (const LoadLibraryError& e) {
        EXPECT_NE(std::string(e.what()).find("WSCAPI.dll"), std::string::npos);
    }
}
