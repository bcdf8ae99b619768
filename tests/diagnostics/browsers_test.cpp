#include "diagnostics/browsers.h"

#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "foundation/exceptions.h"
#include "foundation/language.h"
#include "foundation/message_catalogue.h"
#include "tests/support/diagnostics/test_registry.h"
#include "tests/support/foundation/temp_folder.h"

namespace {

const std::string userChoiceKey =
    "Software\\Microsoft\\Windows\\Shell\\Associations\\UrlAssociations\\https\\UserChoice";
const std::string firefoxKey = "Software\\Mozilla\\Mozilla Firefox";

struct BrowsersTest : testing::Test {
    void SetUp() override { panelMessages.setLanguage(Language::English); }
    void TearDown() override { panelMessages.setLanguage(Language::Ukrainian); }

    void setProgId(const std::string& progId) {
        registry.setText(RegistryHive::CurrentUser, userChoiceKey, "ProgId", progId);
    }

    ScopedTestRegistry registry;
};

void makeFolders(const TempFolder& base, const std::string& relative,
                 const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        std::filesystem::create_directories(base.native() / nativePath(relative) /
                                            nativePath(name));
    }
}

} // namespace

TEST_F(BrowsersTest, NoBrowserFoundGivesTheHeadingAlone) {
    EXPECT_EQ(browsersSectionText(browserVersions(), defaultBrowser()), "Browsers:");
    EXPECT_EQ(browsersSectionText({{"Chrome", ""}, {"Opera", ""}}, std::nullopt), "Browsers:");
}

TEST_F(BrowsersTest, ProgIdWithMSEdgeMarksMicrosoftEdge) {
    setProgId("MSEdgeHTM");
    EXPECT_EQ(defaultBrowser(), "Microsoft Edge");
}

TEST_F(BrowsersTest, ProgIdWithIEMarksInternetExplorerEvenInsideALongerWord) {
    setProgId("IE.HTTPS");
    EXPECT_EQ(defaultBrowser(), "Internet Explorer");
    EXPECT_EQ(browserOfProgId("AppXq0fevzme2pys62n3e0fbqa7peapykr8vIEx"), "Internet Explorer");
    EXPECT_EQ(browserOfProgId("FirefoxURL-IE"), "Firefox");
}

TEST_F(BrowsersTest, ProgIdHoldingNoPatternMarksNobody) {
    setProgId("VivaldiHTM.ABCDEF");
    EXPECT_EQ(defaultBrowser(), std::nullopt);
    EXPECT_EQ(browserOfProgId("ie.http"), std::nullopt);
}

TEST_F(BrowsersTest, ProgIdHoldingChromeAndYandexMarksChromeTheEarlierKey) {
    setProgId("YandexChromeHTML");
    EXPECT_EQ(defaultBrowser(), "Chrome");
}

TEST_F(BrowsersTest, MissingProgIdGivesNoDefault) {
    registry.createKey(RegistryHive::CurrentUser, userChoiceKey);
    EXPECT_EQ(defaultBrowser(), std::nullopt);
}

TEST_F(BrowsersTest, ProgIdWithOperaWhereTheOperaFoldersAreMissingGivesNoMark) {
    setProgId("OperaStable");
    registry.setText(RegistryHive::CurrentUser, "Software\\Google\\Chrome\\BLBeacon", "version",
                     "120.0");
    TempFolder folders;
    const auto installs =
        operaInstallFolders(folders.file("Program Files (x86)"), folders.file("Local"));
    EXPECT_EQ(operaVersionIn(installs), std::nullopt);
    BrowserTable versions = browserVersions();
    versions[OperaBrowser] = operaVersionIn(installs).value_or("");
    const std::string block = browsersSectionText(versions, defaultBrowser());
    EXPECT_EQ(block, "Browsers:\n    Chrome 120.0");
    EXPECT_EQ(block.find("(default)"), std::string::npos);
}

TEST_F(BrowsersTest, FirefoxValueInBothHivesShowsTheCurrentUserOne) {
    registry.setText(RegistryHive::CurrentUser, firefoxKey, "CurrentVersion", "121.0 (x64 ru)");
    registry.setText(RegistryHive::LocalMachine, firefoxKey, "CurrentVersion", "115.0esr");
    EXPECT_EQ(firefoxVersion(), "121.0 (x64 ru)");
}

TEST_F(BrowsersTest, FirefoxFallsBackToTheLocalMachineHive) {
    registry.setText(RegistryHive::LocalMachine, firefoxKey, "CurrentVersion", "115.0esr");
    EXPECT_EQ(firefoxVersion(), "115.0esr");
}

TEST_F(BrowsersTest, CompleteBlockInKeyOrderWithTheDefaultMarked) {
    registry.setText(RegistryHive::CurrentUser, "Software\\Google\\Chrome\\BLBeacon", "version",
                     "120.0");
    registry.setText(RegistryHive::CurrentUser, firefoxKey, "CurrentVersion", "121.0");
    registry.setText(RegistryHive::CurrentUser, "Software\\Microsoft\\Edge\\BLBeacon", "version",
                     "120.0");
    registry.setText(RegistryHive::LocalMachine, "Software\\Microsoft\\Internet Explorer",
                     "svcVersion", "11.0.19041");
    registry.setText(RegistryHive::CurrentUser, "Software\\Yandex\\YandexBrowser", "ypv",
                     "23.11.1");
    setProgId("FirefoxURL-308046B0AF4A39CB");
    EXPECT_EQ(browsersSection(), "Browsers:\n    Chrome 120.0\n    Firefox (default) 121.0\n"
                                 "    Internet Explorer 11.0.19041\n    Microsoft Edge 120.0\n"
                                 "    Yandex 23.11.1");
}

TEST_F(BrowsersTest, DefaultBrowserWithoutAVersionMarksNoLine) {
    registry.setText(RegistryHive::CurrentUser, "Software\\Google\\Chrome\\BLBeacon", "version",
                     "120.0");
    setProgId("MSEdgeHTM");
    EXPECT_EQ(browsersSection(), "Browsers:\n    Chrome 120.0");
}

TEST(Browsers, ProgramFilesWithoutX86OnlyScansTwoFolders) {
    EXPECT_EQ(operaInstallFolders("C:/Program Files", "C:/Users/u/AppData/Local"),
              (std::vector<std::string>{"C:/Program Files/Opera",
                                        "C:/Users/u/AppData/Local/Programs/Opera"}));
}

TEST(Browsers, ProgramFilesX86AlsoScansThe64BitFolder) {
    EXPECT_EQ(operaInstallFolders("C:\\Program Files (x86)", "C:\\Local"),
              (std::vector<std::string>{"C:\\Program Files (x86)/Opera", "C:\\Local/Programs/Opera",
                                        "C:\\Program Files/Opera"}));
}

TEST(Browsers, OperaFolderNamed1DoesNotMatchButOneNamed12Does) {
    TempFolder base;
    makeFolders(base, "Opera", {"1"});
    EXPECT_EQ(operaVersionIn({base.file("Opera")}), std::nullopt);
    makeFolders(base, "Opera", {"12"});
    EXPECT_EQ(operaVersionIn({base.file("Opera")}), "12");
}

TEST(Browsers, OperaVersionsCompareAsTextSo9OutranksEightyFive) {
    TempFolder base;
    makeFolders(base, "Opera", {"85.0.4341.75", "9.0.0.1", "launcher", "localization"});
    EXPECT_EQ(operaVersionIn({base.file("Opera")}), "9.0.0.1");
}

TEST(Browsers, OperaMatchStopsAtTheLastDigitOfTheLeadingRun) {
    TempFolder base;
    makeFolders(base, "Opera", {"85.0.4341.75_old", "launcher"});
    EXPECT_EQ(operaVersionIn({base.file("Opera")}), "85.0.4341.75");
}

TEST(Browsers, OperaVersionFilesAreNotCounted) {
    TempFolder base;
    makeFolders(base, "Opera", {"70.0"});
    std::ofstream(base.native() / "Opera" / "99.0.1.2") << "file";
    EXPECT_EQ(operaVersionIn({base.file("Opera")}), "70.0");
}

TEST(Browsers, OperaFoldersOfEveryInstallPlaceCompete) {
    TempFolder base;
    makeFolders(base, "Program Files (x86)/Opera", {"100.0.1"});
    makeFolders(base, "Local/Programs/Opera", {"101.0.2"});
    makeFolders(base, "Program Files/Opera", {"102.0.3"});
    const auto installs = operaInstallFolders(base.file("Program Files (x86)"), base.file("Local"));
    EXPECT_EQ(operaVersionIn(installs), "102.0.3");
}

TEST(Browsers, OperaInstallPathThatIsAFileFailsTheListing) {
    TempFolder base;
    std::ofstream(base.native() / "Opera") << "not a folder";
    EXPECT_THROW(operaVersionIn({base.file("Opera")}), filesys::ReadFolderError);
}

TEST(Browsers, PatternTableAndNamesInByteOrder) {
    const BrowserTable patterns = browserPatterns();
    std::vector<std::string> names;
    for (const auto& [name, pattern] : patterns) {
        names.push_back(name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"Chrome", "Firefox", "Internet Explorer",
                                               "Microsoft Edge", "Opera", "Yandex"}));
    EXPECT_EQ(patterns.at("Internet Explorer"), "IE");
    EXPECT_EQ(patterns.at("Microsoft Edge"), "MSEdge");
}

TEST(Browsers, DefaultMarkFollowsTheProgramLanguage) {
    panelMessages.setLanguage(Language::Russian);
    EXPECT_EQ(browsersSectionText({{"Chrome", "120.0"}}, "Chrome"),
              "Браузеры:\n    Chrome (по умолчанию) 120.0");
    panelMessages.setLanguage(Language::Ukrainian);
}
