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
        : catalogue_(catalogue), saved_(catalogue.language.load()) {
        catalogue.setLanguage(language);
    }
    ~LanguageScope() { catalogue_.setLanguage(saved_); }

private:
    MessageCatalogue& catalogue_;
    int saved_;
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

namespace {

const std::string utf8Ellipsis = "\xE2\x80\xA6";

struct CapCase {
    const char* name;
    std::string pattern;
    std::string a1;
    std::string a2;   // "-" leaves it out
    std::size_t size; // of the result
    bool cut;         // whether it ends in the ellipsis
};

} // namespace

TEST(SubstitutePlaceholders, CapIsTheTemplateAndFourKiBPerGivenArgument) {
    EXPECT_EQ(substitutionCap("%1"), 2u);
    EXPECT_EQ(substitutionCap("%1", "a"), 2u + 4096u);
    EXPECT_EQ(substitutionCap("%1 %3", "a", nullptr, "c"), 5u + 2 * 4096u);
    EXPECT_EQ(substitutionCap("", "", "", "", "", ""), 5 * 4096u);
}

TEST(SubstitutePlaceholders, TextIsCutAtTheCapAndEndsInAnEllipsis) {
    const CapCase cases[] = {
        {"fits exactly", "%1", std::string(4098, 'x'), "-", 4098, false},
        {"one byte over", "%1", std::string(4099, 'x'), "-", 4098, true},
        {"two copies over", "%1%1", std::string(3000, 'x'), "-", 4100, true},
        {"second argument has room", "%1%2", std::string(5000, 'x'), "y", 5001, false},
        {"second argument over", "%1%2", std::string(5000, 'x'), std::string(5000, 'y'), 8196,
         true},
        {"shrinking stays", "%1%1%1", "", "", 0, false},
    };
    for (const CapCase& c : cases) {
        const char* a2 = c.a2 == "-" ? nullptr : c.a2.c_str();
        const std::string result = substitutePlaceholders(c.pattern, c.a1.c_str(), a2);
        EXPECT_EQ(result.size(), c.size) << c.name;
        EXPECT_LE(result.size(), substitutionCap(c.pattern, c.a1.c_str(), a2)) << c.name;
        EXPECT_EQ(result.ends_with(utf8Ellipsis), c.cut) << c.name;
    }
}

// Each pass puts ten placeholders of the next one in place of one: the text would grow tenfold.
TEST(SubstitutePlaceholders, ArgumentsThatMultiplyTheTextStopAtTheCap) {
    const std::string tenOf2 = "%2%2%2%2%2%2%2%2%2%2";
    const std::string tenOf3 = "%3%3%3%3%3%3%3%3%3%3";
    const std::string tenOf4 = "%4%4%4%4%4%4%4%4%4%4";
    const std::string tenOf5 = "%5%5%5%5%5%5%5%5%5%5";
    const std::string result = substitutePlaceholders("%1", tenOf2.c_str(), tenOf3.c_str(),
                                                      tenOf4.c_str(), tenOf5.c_str(), "%%%%%%%%%3");
    EXPECT_EQ(result.size(), 2u + 5 * 4096u);
    EXPECT_TRUE(result.ends_with(utf8Ellipsis));
}

TEST(SubstitutePlaceholders, AUtf8LetterIsNeverCutInTwo) {
    const std::string letters = "\xD0\x9F\xD1\x80"; // two Cyrillic letters of two bytes each
    std::string argument;
    while (argument.size() < 5000) {
        argument += letters;
    }
    for (const std::string pattern : {"%1", "a%1", "ab%1"}) {
        const std::string result = substitutePlaceholders(pattern, argument.c_str());
        ASSERT_TRUE(result.ends_with(utf8Ellipsis)) << pattern;
        const std::string kept = result.substr(0, result.size() - utf8Ellipsis.size());
        EXPECT_EQ(kept, (pattern.substr(0, pattern.size() - 2) + argument).substr(0, kept.size()));
        EXPECT_EQ(cp1251ToUtf8(utf8ToCp1251(kept)), kept) << "a letter was cut: " << pattern;
        EXPECT_LE(result.size(), substitutionCap(pattern, argument.c_str()));
        EXPECT_GE(result.size() + 2, substitutionCap(pattern, argument.c_str()));
    }
}

// The catalogue's words are in code page 1251, so their ellipsis is the one byte 0x85.
TEST(SubstitutePlaceholders, WordsInCodePage1251EndInItsEllipsis) {
    const std::string argument(5000, 'x');
    const std::string result = substitutePlaceholdersIn(TextCode::cp1251, "%1", argument.c_str());
    EXPECT_EQ(result, std::string(4097, 'x') + "\x85");
    LanguageScope english(commonMessages, Language::English);
    const std::string formatted = commonMessages.format("CV-0006", argument.c_str());
    EXPECT_EQ(formatted.size(), std::string(commonMessages.text("CV-0006")).size() + 4096);
    EXPECT_EQ(formatted.back(), '\x85');
}
