#include "diagnostics/name_lookup.h"

#include <stdexcept>

#include <gtest/gtest.h>

#include "foundation/exceptions.h"
#include "foundation/language.h"
#include "foundation/message_catalogue.h"
#include "host/host_facts.h"

using detector::DnsRecordView;

namespace {

constexpr std::uint16_t addressRecord = 1;
constexpr std::uint16_t aliasRecord = 5;

// Dotted text of the four bytes as they lie in memory, the way the system's converters read them.
std::string dotted(std::uint32_t address) {
    return std::to_string(address & 0xFF) + "." + std::to_string((address >> 8) & 0xFF) + "." +
           std::to_string((address >> 16) & 0xFF) + "." + std::to_string(address >> 24);
}

class NameLookupTest : public testing::Test {
protected:
    void SetUp() override { panelMessages.setLanguage(Language::English); }
    void TearDown() override { panelMessages.setLanguage(Language::Ukrainian); }
};

} // namespace

TEST(NameLookup, AnswerWithACnameRecordYieldsOneMoreTextOfItsFirstFourDataBytes) {
    const std::vector<DnsRecordView> answer = {{aliasRecord, 0x0A0B0C0D},
                                               {addressRecord, 0x0100007F}};
    EXPECT_EQ(detector::answerTexts(answer, dotted),
              (std::vector<std::string>{"13.12.11.10", "127.0.0.1"}));
}

TEST(NameLookup, AnswerKeepsTheOrderOfTheRecords) {
    const std::vector<DnsRecordView> answer = {{addressRecord, 0x04030201},
                                               {addressRecord, 0x08070605}};
    EXPECT_EQ(detector::answerTexts(answer, dotted),
              (std::vector<std::string>{"1.2.3.4", "5.6.7.8"}));
}

TEST_F(NameLookupTest, TwoAddressesGiveABlockOfThreeLinesTheLastTwoIndented) {
    const std::string block = domainSectionText("sign.example", [] {
        return std::vector<std::string>{"10.0.0.1", "10.0.0.2"};
    });
    EXPECT_EQ(block, "Domain name sign.example is available from:\n    10.0.0.1\n    10.0.0.2");
}

TEST_F(NameLookupTest, EmptyAnswerGivesAnEmptyAddressLine) {
    EXPECT_EQ(domainSectionText("sign.example", [] { return std::vector<std::string>{}; }),
              "Domain name sign.example is available from:\n    ");
}

TEST_F(NameLookupTest, FailedLookUpGivesTheNotAvailableBlock) {
    EXPECT_EQ(
        domainSectionText("sign.example",
                          []() -> std::vector<std::string> { throw detector::InternalError(); }),
        "Domain name sign.example is not available");
}

TEST_F(NameLookupTest, AnythingThrownGivesTheNotAvailableBlock) {
    EXPECT_EQ(domainSectionText("sign.example", []() -> std::vector<std::string> { throw 42; }),
              "Domain name sign.example is not available");
}

TEST_F(NameLookupTest, SectionOfThisMachineNamesTheServiceDomainAndNeverFails) {
    const std::string block = domainSection();
    EXPECT_NE(block.find("Domain name " + ServiceDomain + " is "), std::string::npos);
}

TEST(NameLookup, NameThatCanNotExistFailsWithAnInternalError) {
    EXPECT_THROW(detector::resolveHost("no-such-host.invalid"), detector::InternalError);
}
