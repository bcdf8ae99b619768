#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "foundation/language.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"

namespace {

// Puts a catalogue into a language for one test and back into the one it had.
class LanguageScope {
public:
    LanguageScope(MessageCatalogue& catalogue, int language)
        : catalogue(catalogue), saved(catalogue.language.load()) {
        catalogue.setLanguage(language);
    }
    ~LanguageScope() { catalogue.setLanguage(saved); }

private:
    MessageCatalogue& catalogue;
    int saved;
};

const MessageRow sampleRows[] = {
    {"T-0002", "два", "two", "два"},
    {"T-0001", "один %1", "one %1", "один %1"},
};

// Runs a lookup and gives the words of the std::out_of_range it throws.
template <typename Lookup> std::string outOfRangeWords(Lookup lookup) {
    try {
        lookup();
    } catch (const std::out_of_range& error) {
        return error.what();
    }
    return "no exception";
}

} // namespace

TEST(MessageCatalogue, FormatOfReadFileErrorPutsThePathBetweenTheRowsQuotes) {
    LanguageScope english(commonMessages, Language::English);
    EXPECT_EQ(commonMessages.format("CV-0006", "C:/Users/me/logs/error.log"),
              "Error reading file \"C:/Users/me/logs/error.log\"");
}

TEST(MessageCatalogue, FormatOfSystemFactsReplacesAllFivePlaceholders) {
    LanguageScope english(panelMessages, Language::English);
    EXPECT_EQ(panelMessages.format("CVCP-008004", "Windows 10", "Pro", "64", " (10.0.19045)",
                                   ", spVersion: 1.0"),
              "OS info: Windows 10 Pro x64 (10.0.19045), spVersion: 1.0");
}

TEST(MessageCatalogue, FormatOfSystemFactsKeepsThePlaceholderOfANullArgument) {
    LanguageScope english(panelMessages, Language::English);
    EXPECT_EQ(panelMessages.format("CVCP-008004", "Windows 10", "Pro", "64", nullptr, ""),
              "OS info: Windows 10 Pro x64%4");
}

TEST(MessageCatalogue, TextOfFailedProcessRowKeepsItsPlaceholders) {
    LanguageScope english(panelMessages, Language::English);
    EXPECT_STREQ(panelMessages.text("CVCP-006010"),
                 "An error occurred during the %1 process of %2");
    panelMessages.setLanguage(Language::Russian);
    EXPECT_EQ(std::string(panelMessages.text("CVCP-006010")),
              utf8ToCp1251("Произошла ошибка во время процесса %1 %2"));
}

TEST(MessageCatalogue, IdOfAnotherCatalogueThrows) {
    EXPECT_EQ(outOfRangeWords([] { panelMessages.text("CV-0001"); }), "invalid map<K, T> key");
    EXPECT_EQ(outOfRangeWords([] { panelMessages.format("CV-0001", "x"); }),
              "invalid map<K, T> key");
    EXPECT_STREQ(commonMessages.text("CV-0001"), utf8ToCp1251("Рядок не у форматі Base64").c_str());
}

TEST(MessageCatalogue, IdIsLookedUpAsItStands) {
    EXPECT_EQ(outOfRangeWords([] { panelMessages.text("cvcp-000001"); }), "invalid map<K, T> key");
    EXPECT_EQ(outOfRangeWords([] { panelMessages.text("CVCP-006020"); }), "invalid map<K, T> key");
}

TEST(MessageCatalogue, InvalidLanguageFailsEveryLookupUntilHealed) {
    LanguageScope invalid(panelMessages, 3);
    for (const auto& [id, words] : panelMessages.tables.at(Language::English)) {
        EXPECT_EQ(outOfRangeWords([&id] { panelMessages.text(id.c_str()); }),
                  "invalid map<K, T> key")
            << id;
        EXPECT_EQ(outOfRangeWords([&id] { panelMessages.format(id.c_str(), "a", "b"); }),
                  "invalid map<K, T> key")
            << id;
    }
    panelMessages.setLanguage(1);
    EXPECT_STREQ(panelMessages.text("CVCP-000001"), "Run");
}

TEST(MessageCatalogue, CataloguesAnswerInUkrainianUntilALanguageIsApplied) {
    MessageCatalogue catalogue(buildMessageTables(sampleRows));
    EXPECT_EQ(catalogue.language.load(), Language::Ukrainian);
    EXPECT_EQ(zipMessages.language.load(), Language::Ukrainian);
    EXPECT_EQ(std::string(catalogue.text("T-0002")), utf8ToCp1251("два"));
}

TEST(MessageCatalogue, BuildingMakesThreeSortedTablesInCodePage1251) {
    const MessageTables tables = buildMessageTables(sampleRows);
    ASSERT_EQ(tables.size(), 3u);
    EXPECT_EQ(tables.at(Language::English).begin()->first, "T-0001");
    EXPECT_EQ(tables.at(Language::English).at("T-0002"), "two");
    EXPECT_EQ(tables.at(Language::Russian).at("T-0001"), "\xEE\xE4\xE8\xED %1");
    EXPECT_EQ(tables.at(Language::Ukrainian).at("T-0001"), "\xEE\xE4\xE8\xED %1");
}

TEST(MessageCatalogue, FormatTakesTheCharacterDataOfAStringId) {
    LanguageScope english(commonMessages, Language::English);
    const std::string id = "CV-0007";
    EXPECT_EQ(commonMessages.format(id.c_str(), "out.txt"), "Error writing file \"out.txt\"");
}

TEST(MessageCatalogue, EveryOccurrenceOfAPlaceholderIsReplaced) {
    LanguageScope english(serviceMessages, Language::English);
    EXPECT_EQ(serviceMessages.format("CV-007004", "Key"),
              "Password change for \"Key\" is performing in control panel which was installed "
              "with \"Key\"");
}

TEST(MessageCatalogue, RowWithoutPlaceholdersIgnoresTheArguments) {
    LanguageScope english(panelMessages, Language::English);
    EXPECT_EQ(panelMessages.format("CVCP-000001", "a", "b", "c", "d", "e"), "Run");
}

TEST(SubstitutePlaceholders, EmptyTemplateReturnsAtOnce) {
    EXPECT_EQ(substitutePlaceholders("", "a", "b", "c", "d", "e"), "");
    EXPECT_EQ(substitutePlaceholders("", "%1", "%2", "%3", "%4", "%5"), "");
    EXPECT_EQ(substitutePlaceholders(""), "");
}

TEST(SubstitutePlaceholders, ArgumentHoldingALaterPlaceholderIsReplacedOnItsPass) {
    EXPECT_EQ(substitutePlaceholders("%1", "%2", "x"), "x");
}

TEST(SubstitutePlaceholders, PlaceholdersAreReplacedInRisingOrder) {
    EXPECT_EQ(substitutePlaceholders("%3-%1-%2", "a", "b", "c"), "c-a-b");
    // %2 is gone before argument 3 brings it back, so it stays.
    EXPECT_EQ(substitutePlaceholders("%3 %2", nullptr, "b", "%2"), "%2 b");
}

TEST(SubstitutePlaceholders, EmptyArgumentRemovesThePlaceholder) {
    EXPECT_EQ(substitutePlaceholders("a%1b%1c", ""), "abc");
}

TEST(SubstitutePlaceholders, NullArgumentLeavesThePlaceholder) {
    EXPECT_EQ(substitutePlaceholders("%1 %2 %3", nullptr, "b"), "%1 b %3");
}

TEST(SubstitutePlaceholders, PercentSignHasNoEscape) {
    EXPECT_EQ(substitutePlaceholders("100% %6 %%1", "x", "y", "z", "u", "v"), "100% %6 %x");
}

TEST(SubstitutePlaceholders, ReplacementEmptyingTheTextStops) {
    EXPECT_EQ(substitutePlaceholders("%1", "", "b"), "");
}

// An argument holding its own placeholder is inserted as it stands: the words just inserted are
// not searched for that placeholder again.
TEST(SubstitutePlaceholders, ArgumentHoldingItsOwnPlaceholderIsInsertedOnce) {
    EXPECT_EQ(substitutePlaceholders("%1", "%1"), "%1");
    EXPECT_EQ(substitutePlaceholders("a%1b%1c", "<%1>"), "a<%1>b<%1>c");
    EXPECT_EQ(substitutePlaceholders("%3 and %3", "x", "y", "%3%3"), "%3%3 and %3%3");
    // Its later placeholders are still replaced on their passes.
    EXPECT_EQ(substitutePlaceholders("%1", "%1%2", "y"), "%1y");
}

// "11%%" behind a percent sign forms %1 at its start and, copied there, once more at its end.
TEST(SubstitutePlaceholders, ArgumentRebuildingItsPlaceholderWithTheTextAroundIsInsertedOnce) {
    EXPECT_EQ(substitutePlaceholders("%%1", "11%%"), "%11%%");
    EXPECT_EQ(substitutePlaceholders("%%1%1", "11%%"), "%11%%11%%");
}

// A placeholder formed by an argument with the text around it is replaced as well.
TEST(SubstitutePlaceholders, PlaceholderFormedWithTheTextAroundIsReplaced) {
    EXPECT_EQ(substitutePlaceholders("%%1", "1"), "1");
    EXPECT_EQ(substitutePlaceholders("%11", "%"), "%");
    EXPECT_EQ(substitutePlaceholders("%1%1", "1%"), "11%%");
    EXPECT_EQ(substitutePlaceholders("%%%1", "x"), "%%x");
}
