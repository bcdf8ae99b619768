#include "foundation/text.h"

#include <gtest/gtest.h>

namespace {

std::string bytes(std::initializer_list<int> values) {
    std::string result;
    for (int v : values) {
        result += static_cast<char>(v);
    }
    return result;
}

std::wstring units(std::initializer_list<unsigned> values) {
    std::wstring result;
    for (unsigned v : values) {
        result += static_cast<wchar_t>(v);
    }
    return result;
}

} // namespace

TEST(Encoding, Cp1251CapitalIoMapsBothWays) {
    EXPECT_EQ(fromCp1251(bytes({0xA8})), units({0x0401}));
    EXPECT_EQ(toCp1251(units({0x0401})), bytes({0xA8}));
}

TEST(Encoding, EuroSignIsByte88AndChineseIsQuestionMark) {
    EXPECT_EQ(toCp1251(units({0x20AC})), bytes({0x88}));
    EXPECT_EQ(toCp1251(units({0x4E2D})), "?");
}

TEST(Encoding, UndefinedByte98StandsForU0098) {
    EXPECT_EQ(fromCp1251(bytes({0x98})), units({0x0098}));
    EXPECT_EQ(toCp1251(units({0x0098})), bytes({0x98}));
}

TEST(Encoding, SurrogatePairBecomesTwoThreeByteGroupsAndBack) {
    const std::string expected = bytes({0xED, 0xA0, 0xBD, 0xED, 0xB8, 0x80});
    EXPECT_EQ(utf16ToUtf8(units({0xD83D, 0xDE00})), expected);
    EXPECT_EQ(utf8ToUtf16(expected), units({0xD83D, 0xDE00}));
}

TEST(Encoding, SurrogatePairGivesTwoQuestionMarksInCp1251) {
    EXPECT_EQ(toCp1251(units({0xD83D, 0xDE00})), "??");
}

TEST(Encoding, FourByteSequenceRepeatsThePreviousUnit) {
    EXPECT_EQ(utf8ToUtf16(bytes({0x41, 0xF0, 0x9F, 0x98, 0x80})),
              units({0x41, 0x41, 0x41, 0x41, 0x41}));
}

TEST(Encoding, StrayContinuationAtStartYieldsUnitZero) {
    EXPECT_EQ(utf8ToUtf16(bytes({0x80, 0x41})), units({0x0000, 0x41}));
}

TEST(Encoding, TruncatedTwoByteLeadYieldsGatheredBits) {
    EXPECT_EQ(utf8ToUtf16(bytes({0xC3})), units({0x00C0}));
}

TEST(Encoding, TruncatedThreeByteLeadYieldsGatheredBits) {
    EXPECT_EQ(utf8ToUtf16(bytes({0xE2})), units({0x2000}));
    EXPECT_EQ(utf8ToUtf16(bytes({0xE2, 0x82})), units({0x2080}));
}

TEST(Encoding, UnitsEncodeInOneTwoAndThreeBytes) {
    EXPECT_EQ(utf16ToUtf8(units({0x41})), "A");
    EXPECT_EQ(utf16ToUtf8(units({0x0416})), bytes({0xD0, 0x96}));
    EXPECT_EQ(utf16ToUtf8(units({0x20AC})), bytes({0xE2, 0x82, 0xAC}));
}

TEST(Encoding, CyrillicRoundTripsBetweenUtf8AndCp1251) {
    const std::string utf8 = "\xD0\x9F\xD1\x80\xD0\xB8\xD0\xB2\xD0\xB5\xD1\x82"; // Привет
    const std::string cp1251 = bytes({0xCF, 0xF0, 0xE8, 0xE2, 0xE5, 0xF2});
    EXPECT_EQ(utf8ToCp1251(utf8), cp1251);
    EXPECT_EQ(cp1251ToUtf8(cp1251), utf8);
}

TEST(Encoding, LettersOutsideCp1251BecomeQuestionMarks) {
    EXPECT_EQ(utf8ToCp1251("a\xE4\xB8\xAD"
                           "b"),
              "a?b");
}

TEST(Encoding, EmptyInputsGiveEmptyResults) {
    EXPECT_EQ(fromCp1251(""), L"");
    EXPECT_EQ(toCp1251(L""), "");
    EXPECT_EQ(utf16ToUtf8(L""), "");
    EXPECT_EQ(utf8ToUtf16(""), L"");
}

TEST(EncodingProperty, EveryByteSurvivesCp1251RoundTrip) {
    for (int b = 0; b < 256; ++b) {
        const std::string one(1, static_cast<char>(b));
        EXPECT_EQ(toCp1251(fromCp1251(one)), one) << "byte " << b;
    }
}

TEST(EncodingProperty, EveryUnitSurvivesUtf8RoundTrip) {
    for (unsigned u = 0; u <= 0xFFFF; ++u) {
        const std::wstring one(1, static_cast<wchar_t>(u));
        ASSERT_EQ(utf8ToUtf16(utf16ToUtf8(one)), one) << "unit " << u;
    }
}

TEST(EncodingProperty, CodePageTableAgreesInBothDirections) {
    for (int b = 0x80; b < 256; ++b) {
        const std::wstring unit = fromCp1251(std::string(1, static_cast<char>(b)));
        ASSERT_EQ(unit.size(), 1u);
        EXPECT_GE(static_cast<unsigned>(unit[0]), 0x80u) << "byte " << b;
    }
}
