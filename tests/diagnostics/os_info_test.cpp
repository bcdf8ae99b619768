#include "diagnostics/os_info.h"

#include <stdexcept>

#include <gtest/gtest.h>

#include "foundation/exceptions.h"
#include "foundation/language.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"

using detector::OsInfo;
using detector::WindowsFacts;
using detector::windowsOsInfo;
using detector::windowsVersionName;

namespace {

constexpr std::uint8_t workstation = 1;
constexpr std::uint8_t server = 3;

// Facts as Windows gives them; the management service is asked only when the version call's
// answer isn't trusted, and says so.
WindowsFacts facts(std::uint32_t major, std::uint32_t minor, std::uint32_t build,
                   std::uint8_t productType, std::string management = "") {
    WindowsFacts result;
    result.version.major = major;
    result.version.minor = minor;
    result.version.build = build;
    result.version.productType = productType;
    result.managementVersion = [management] {
        if (management.empty()) {
            throw std::logic_error("management service asked");
        }
        return management;
    };
    result.programFiles = "C:\\Program Files (x86)";
    return result;
}

class OsInfoTest : public testing::Test {
protected:
    void SetUp() override { panelMessages.setLanguage(Language::English); }
    void TearDown() override { panelMessages.setLanguage(Language::Ukrainian); }
};

} // namespace

TEST(OsInfo, Version62IsReplacedThroughTheManagementServiceGiving10) {
    const OsInfo info = windowsOsInfo(facts(6, 2, 9200, workstation, "10.0.19045"));
    EXPECT_EQ(info.versionName, "10");
    EXPECT_EQ(info.majorVersion, 10u);
}

TEST(OsInfo, Version10Build22621IsNamed11) {
    EXPECT_EQ(windowsOsInfo(facts(6, 2, 9200, workstation, "10.0.22621")).versionName, "11");
    EXPECT_EQ(windowsVersionName(10, 0, 22000, false), "11");
    EXPECT_EQ(windowsVersionName(10, 0, 21999, false), "10");
}

TEST(OsInfo, Version100KeepsTheVersionCallsNumbersSinceItsMinorIsZero) {
    const OsInfo info = windowsOsInfo(facts(10, 0, 19045, workstation));
    EXPECT_EQ(info.versionName, "10");
}

TEST(OsInfo, Version61IsTrustedWithoutTheManagementService) {
    EXPECT_EQ(windowsOsInfo(facts(6, 1, 7601, workstation)).versionName, "7");
}

TEST(OsInfo, Version10OnAServerIsServer2016TechnicalPreviewForEveryBuild) {
    EXPECT_EQ(windowsVersionName(10, 0, 14393, true), "Server 2016 Technical Preview");
    EXPECT_EQ(windowsVersionName(10, 0, 17763, true), "Server 2016 Technical Preview");
    EXPECT_EQ(windowsVersionName(10, 0, 26100, true), "Server 2016 Technical Preview");
    EXPECT_EQ(windowsOsInfo(facts(6, 3, 9600, server, "10.0.20348")).versionName,
              "Server 2016 Technical Preview");
}

TEST(OsInfo, Version60IsVistaOrServer2008) {
    EXPECT_EQ(windowsVersionName(6, 0, 6002, false), "Vista");
    EXPECT_EQ(windowsVersionName(6, 0, 6002, true), "Server 2008");
}

TEST(OsInfo, Version71IsNamedByItsNumbers) {
    EXPECT_EQ(windowsVersionName(7, 1, 0, false), "7.1");
    EXPECT_EQ(windowsVersionName(7, 1, 0, true), "Server 7.1");
}

TEST(OsInfo, NamingTableRowsOfVersions5And6) {
    EXPECT_EQ(windowsVersionName(5, 0, 2195, false), "2000");
    EXPECT_EQ(windowsVersionName(5, 0, 2195, true), "2000");
    EXPECT_EQ(windowsVersionName(5, 1, 2600, false), "XP");
    EXPECT_EQ(windowsVersionName(5, 2, 3790, true), "Server 2003");
    EXPECT_EQ(windowsVersionName(6, 1, 7601, true), "Server 2008 R2");
    EXPECT_EQ(windowsVersionName(6, 2, 9200, false), "8");
    EXPECT_EQ(windowsVersionName(6, 2, 9200, true), "Server 2012");
    EXPECT_EQ(windowsVersionName(6, 3, 9600, false), "8.1");
    EXPECT_EQ(windowsVersionName(6, 3, 9600, true), "Server 2012 R2");
}

TEST(OsInfo, Version6AboveMinor3HasNoName) {
    EXPECT_EQ(windowsVersionName(6, 4, 9841, false), "");
    EXPECT_EQ(windowsVersionName(6, 4, 9841, true), "");
}

TEST(OsInfo, DomainControllerCountsAsServer) {
    const OsInfo info = windowsOsInfo(facts(6, 1, 7601, 2));
    EXPECT_TRUE(info.isServer);
    EXPECT_EQ(info.versionName, "Server 2008 R2");
}

TEST(OsInfo, ManagementVersionWithFewerThanThreePartsIsAnInternalError) {
    EXPECT_THROW(windowsOsInfo(facts(6, 2, 9200, workstation, "10.0")), detector::InternalError);
}

TEST(OsInfo, ManagementVersionWithAPartThatIsNoNumberIsAnInternalError) {
    EXPECT_THROW(windowsOsInfo(facts(6, 2, 9200, workstation, "10.x.19045")),
                 detector::InternalError);
}

TEST(OsInfo, ManagementVersionSplitDropsEmptyParts) {
    // "10..0.19045" splits into three numbers, the empty piece being dropped.
    EXPECT_EQ(windowsOsInfo(facts(6, 2, 9200, workstation, "10..0.22621")).versionName, "11");
}

TEST(OsInfo, FailingManagementServicePassesItsFailureOn) {
    WindowsFacts failing = facts(6, 2, 9200, workstation);
    failing.managementVersion = []() -> std::string { throw detector::InternalError(); };
    EXPECT_THROW(windowsOsInfo(failing), detector::InternalError);
}

TEST(OsInfo, BitnessFollowsTheX86ProgramFilesFolder) {
    EXPECT_EQ(detector::bitnessOf("C:\\Program Files (x86)"), 64);
    EXPECT_EQ(detector::bitnessOf("C:\\Program Files"), 32);
    EXPECT_EQ(detector::bitnessOf("(x86)"), 64);
    EXPECT_EQ(detector::bitnessOf("x86)"), 32);
    EXPECT_EQ(detector::bitnessOf(""), 32);
}

TEST(OsInfo, RecordCarriesNameAdministratorAndServicePack) {
    WindowsFacts given = facts(6, 1, 7601, workstation);
    given.version.servicePackMajor = 1;
    given.inAdministratorsGroup = true;
    given.programFiles = "C:\\Program Files";
    const OsInfo info = windowsOsInfo(given);
    EXPECT_EQ(info.name, "Windows");
    EXPECT_TRUE(info.isAdmin);
    EXPECT_FALSE(info.isServer);
    EXPECT_EQ(info.bitness, 32);
    EXPECT_EQ(info.majorVersion, 6u);
    EXPECT_EQ(info.servicePack, "1.0");
}

TEST_F(OsInfoTest, ServicePack00AddsNothing) {
    OsInfo info{"Windows", "10", 64, false, 10, false, "0.0"};
    EXPECT_EQ(detector::osSectionText(info), "OS info: Windows 10 x64");
}

TEST_F(OsInfoTest, ServicePack10AddsCommaBlankAndSpVersion) {
    OsInfo info{"Windows", "7", 32, false, 6, false, "1.0"};
    EXPECT_EQ(detector::osSectionText(info), "OS info: Windows 7 x32, spVersion: 1.0");
}

TEST_F(OsInfoTest, ServerShowsItsKindTwice) {
    OsInfo info{"Windows", "Server 2012 R2", 64, true, 6, true, "0.0"};
    EXPECT_EQ(detector::osSectionText(info), "OS info: Windows Server 2012 R2 x64 Server");
}

TEST(OsInfo, SectionFollowsTheProgramLanguageInUtf8) {
    panelMessages.setLanguage(Language::Russian);
    OsInfo info{"Windows", "10", 64, false, 10, false, "0.0"};
    EXPECT_EQ(detector::osSectionText(info), "Информация о системе: Windows 10 x64");
    panelMessages.setLanguage(Language::Ukrainian);
}

TEST(OsInfo, QueryOfThisMachineGivesAFilledRecord) {
    const OsInfo info = detector::queryOsInfo();
    EXPECT_FALSE(info.name.empty());
    EXPECT_TRUE(info.bitness == 32 || info.bitness == 64);
    EXPECT_FALSE(info.servicePack.empty());
    EXPECT_NE(detector::osSection().find(info.name), std::string::npos);
}
