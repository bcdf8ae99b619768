#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "foundation/language.h"
#include "foundation/message_catalogue.h"
#include "foundation/registry.h"
#include "foundation/text.h"

// A key of the tests' own under HKEY_CURRENT_USER (registry_*_test.cpp).
std::string makeTestKey();
void removeTestKey(const std::string& keyPath);

namespace {

const char* const productKey = "Software\\Ormal Co\\CorvaniteHost";

// Brings the catalogues back to the language they had before a test applied another, and the
// product's stored language code to the one it had, where there was one.
struct LanguageTest : ::testing::Test {
    ~LanguageTest() override {
        commonMessages.setLanguage(common);
        serviceMessages.setLanguage(service);
        panelMessages.setLanguage(panel);
        zipMessages.setLanguage(zip);
        if (storedCode) {
            writeRegistryText(RegistryHive::CurrentUser, productKey, "Language", *storedCode);
        }
    }

    int common = commonMessages.language.load();
    int service = serviceMessages.language.load();
    int panel = panelMessages.language.load();
    int zip = zipMessages.language.load();
    std::optional<std::string> storedCode =
        readRegistryText(RegistryHive::CurrentUser, productKey, "Language");
};

// A registry key of the test's own, removed afterwards.
struct StoredLanguage : ::testing::Test {
    void TearDown() override { removeTestKey(key); }

    void store(const char* code) {
        ASSERT_TRUE(writeRegistryText(RegistryHive::CurrentUser, key, "Language", code));
    }

    std::string key = makeTestKey();
};

} // namespace

TEST(Language, NumbersAreTheTableKeys) {
    EXPECT_EQ(Language::Russian, 0);
    EXPECT_EQ(Language::English, 1);
    EXPECT_EQ(Language::Ukrainian, 2);
}

TEST(Language, CodesAreSortedByText) {
    ASSERT_EQ(languageCodes.size(), 3u);
    auto code = languageCodes.begin();
    EXPECT_EQ(code->first, "1033");
    EXPECT_EQ(code->second, Language::English);
    ++code;
    EXPECT_EQ(code->first, "1049");
    EXPECT_EQ(code->second, Language::Russian);
    ++code;
    EXPECT_EQ(code->first, "1058");
    EXPECT_EQ(code->second, Language::Ukrainian);
}

TEST_F(LanguageTest, ApplyLanguageLeavesTheArchiveWordsInUkrainian) {
    applyLanguage(Language::English);
    EXPECT_EQ(std::string(zipMessages.text("Z-0002")), utf8ToCp1251("Помилка пакування ZIP"));
    EXPECT_EQ(zipMessages.language.load(), Language::Ukrainian);
}

TEST_F(LanguageTest, ApplyLanguageSwitchesTheOtherCatalogues) {
    applyLanguage(Language::English);
    EXPECT_STREQ(panelMessages.text("CVCP-000001"), "Run");
    EXPECT_STREQ(commonMessages.text("CV-0014"), "Error getting random data");
    EXPECT_STREQ(serviceMessages.text("CV-009002"), "Cancel");
    applyLanguage(Language::Russian);
    EXPECT_EQ(std::string(panelMessages.text("CVCP-000001")), utf8ToCp1251("Запустить"));
}

TEST_F(LanguageTest, ApplyLanguageWithoutCodeStillSwitches) {
    applyLanguage(7);
    EXPECT_EQ(panelMessages.language.load(), 7);
    EXPECT_EQ(commonMessages.language.load(), 7);
    EXPECT_EQ(serviceMessages.language.load(), 7);
}

TEST(StartupLanguage, UnknownCodeGivesUkrainian) {
    EXPECT_EQ(languageFromCode(std::string("1041")), Language::Ukrainian);
    EXPECT_EQ(languageFromCode(std::string("")), Language::Ukrainian);
}

TEST(StartupLanguage, MissingValueGivesRussian) {
    EXPECT_EQ(languageFromCode(std::nullopt), Language::Russian);
}

TEST(StartupLanguage, EnglishCodeGivesEnglish) {
    EXPECT_EQ(languageFromCode(std::string("1033")), Language::English);
    EXPECT_EQ(languageFromCode(std::string("1049")), Language::Russian);
    EXPECT_EQ(languageFromCode(std::string("1058")), Language::Ukrainian);
}

TEST_F(StoredLanguage, UnknownCodeGivesUkrainian) {
    store("1041");
    EXPECT_EQ(storedLanguage(key), Language::Ukrainian);
}

TEST_F(StoredLanguage, MissingValueGivesRussian) {
    EXPECT_EQ(storedLanguage(key), Language::Russian);
}

TEST_F(StoredLanguage, EnglishCodeGivesEnglish) {
    store("1033");
    EXPECT_EQ(storedLanguage(key), Language::English);
}

TEST_F(StoredLanguage, MissingKeyGivesRussian) {
    EXPECT_EQ(storedLanguage(key + "\\Missing"), Language::Russian);
}

TEST_F(StoredLanguage, StoringWritesTheLanguagesCode) {
    storeLanguageCode(key, Language::English);
    EXPECT_EQ(readRegistryText(RegistryHive::CurrentUser, key, "Language"), "1033");
    storeLanguageCode(key, Language::Ukrainian);
    EXPECT_EQ(readRegistryText(RegistryHive::CurrentUser, key, "Language"), "1058");
    EXPECT_EQ(storedLanguage(key), Language::Ukrainian);
}

TEST_F(StoredLanguage, LanguageWithoutCodeStoresNothing) {
    storeLanguageCode(key, 3);
    EXPECT_EQ(readRegistryText(RegistryHive::CurrentUser, key, "Language"), std::nullopt);
    store("1049");
    storeLanguageCode(key, -1);
    EXPECT_EQ(readRegistryText(RegistryHive::CurrentUser, key, "Language"), "1049");
}

TEST(StartupLanguage, ReadsTheProductKey) {
    EXPECT_EQ(startupLanguage(), languageFromCode(readRegistryText(RegistryHive::CurrentUser,
                                                                   productKey, "Language")));
}
