#include "foundation/text.h"

#include <gtest/gtest.h>

using Map = std::map<std::string, std::string>;
using List = std::vector<std::string>;

TEST(Text, TrimRemovesControlAndBlankBytesAtBothEnds) {
    EXPECT_EQ(trim("\t a b \r\n"), "a b");
}

TEST(Text, TrimStopsAtZeroByteAndKeepsHighBytes) {
    const std::string withZero("\0 a", 3);
    EXPECT_EQ(trimLeft(withZero), withZero);
    EXPECT_EQ(trim("\xA0x\xA0"), "\xA0x\xA0");
    EXPECT_EQ(trimLeft("  x  "), "x  ");
    EXPECT_EQ(trimRight("  x  "), "  x");
    EXPECT_EQ(trim(" \t\n"), "");
}

TEST(Text, ToLowerChangesAsciiLettersOnly) {
    EXPECT_EQ(toLower("AbC-\xC0\xD0\x9F"), "abc-\xC0\xD0\x9F");
}

TEST(Text, ParseBoolOfEmptyTextIsFalse) {
    EXPECT_FALSE(parseBool(""));
}

TEST(Text, ParseBoolAcceptsTrueInAnyCaseWithBlanks) {
    EXPECT_TRUE(parseBool("true"));
    EXPECT_TRUE(parseBool(" TrUe\r\n"));
    EXPECT_FALSE(parseBool("1"));
    EXPECT_FALSE(parseBool("yes"));
    EXPECT_FALSE(parseBool("truex"));
}

TEST(Text, BoolTextGivesTrueOrFalse) {
    EXPECT_EQ(boolText(true), "true");
    EXPECT_EQ(boolText(false), "false");
}

TEST(Text, JoinTextPutsSeparatorBetween) {
    EXPECT_EQ(joinText({}, ", "), "");
    EXPECT_EQ(joinText({"a"}, ", "), "a");
    EXPECT_EQ(joinText({"a", "b", "c"}, ", "), "a, b, c");
}

TEST(Text, SplitTextDropsEmptyAndDuplicatePieces) {
    EXPECT_EQ(splitText("a,,b, a", ',', true, true), (List{"a", "b"}));
}

TEST(Text, SplitTextKeepsUntrimmedPiecesWithoutTrimFlag) {
    EXPECT_EQ(splitText("a,,b, a", ',', false, true), (List{"a", "b", " a"}));
    EXPECT_EQ(splitText("a, ,a", ',', false, false), (List{"a", "a"}));
}

TEST(Text, SplitTextAtEndAddsNoEmptyPiece) {
    EXPECT_EQ(splitText("a,b,", ',', false, false), (List{"a", "b"}));
    EXPECT_EQ(splitText("", ',', false, false), List{});
}

TEST(Text, ParseKeyValuesLaterLineWinsAndFirstSeparatorCounts) {
    EXPECT_EQ(parseKeyValues("a=1\nb\nc=2=3\n\na=4", '=', false), (Map{{"a", "4"}, {"c", "2=3"}}));
}

TEST(Text, ParseKeyValuesKeepsCarriageReturnWithoutTrim) {
    EXPECT_EQ(parseKeyValues("k=v\r\n", '=', false), (Map{{"k", "v\r"}}));
    EXPECT_EQ(parseKeyValues(" k = v\r\n", '=', true), (Map{{"k", "v"}}));
}

TEST(Text, ParseKeyValuesAllowsEmptyKey) {
    EXPECT_EQ(parseKeyValues("=x", '=', false), (Map{{"", "x"}}));
}

TEST(Text, ParseKeyValuesStopsAtZeroByte) {
    const std::string text("a=1\n\0b=2", 8);
    EXPECT_EQ(parseKeyValues(text.c_str(), '=', false), (Map{{"a", "1"}}));
}

TEST(Text, VersionTextJoinsFourNumbers) {
    EXPECT_EQ(versionText(1, 20, 3, 4000), "1.20.3.4000");
}

TEST(Text, EndsWithEmptyAndLongerSuffix) {
    EXPECT_TRUE(endsWith("abc", ""));
    EXPECT_TRUE(endsWith("abc", "bc"));
    EXPECT_FALSE(endsWith("bc", "abc"));
    EXPECT_FALSE(endsWith("abc", "ab"));
}

TEST(Text, SwapBytePairsLeavesLastOddByte) {
    unsigned char data[] = {1, 2, 3, 4, 5};
    swapBytePairs(data, sizeof(data));
    EXPECT_EQ(std::vector<unsigned char>(data, data + 5),
              (std::vector<unsigned char>{2, 1, 4, 3, 5}));
}

TEST(Text, SwapBytePairsOfShortBufferDoesNothing) {
    unsigned char one[] = {9};
    swapBytePairs(one, 1);
    swapBytePairs(nullptr, 0);
    EXPECT_EQ(one[0], 9);
}

TEST(Text, NumberReadingTakesDecimalNumbers) {
    EXPECT_EQ(readInt(" 42"), 42);
    EXPECT_EQ(readInt("-7x"), -7);
    EXPECT_EQ(readUnsigned("4000000000"), 4000000000ul);
}

TEST(Text, NumberReadingFailsWithTheStandardWords) {
    const auto words = [](auto read, const char* text) {
        try {
            read(text);
        } catch (const std::exception& e) {
            return std::string(e.what());
        }
        return std::string("no failure");
    };
    const auto readIntOf = [](const char* text) { return readInt(text); };
    const auto readUnsignedOf = [](const char* text) { return readUnsigned(text); };
    EXPECT_EQ(words(readIntOf, "x"), "invalid stoi argument");
    EXPECT_EQ(words(readIntOf, "99999999999"), "stoi argument out of range");
    EXPECT_EQ(words(readUnsignedOf, ""), "invalid stoul argument");
    EXPECT_EQ(words(readUnsignedOf, "999999999999999999999"), "stoul argument out of range");
}

TEST(Text, NumberReadingFailuresKeepTheirStandardClasses) {
    EXPECT_THROW(readInt("x"), std::invalid_argument);
    EXPECT_THROW(readInt("99999999999"), std::out_of_range);
}
