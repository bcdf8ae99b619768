// Whether a name survives an 8-bit code page, as a program that opens its files through the
// system's 8-bit calls sees it. The code pages here are made from the program's own tables, so the
// answers are the same on every system.
#include "foundation/code_page.h"

#include <gtest/gtest.h>

#include "foundation/text.h"

namespace {

// Code page 1251 as the program's tables hold it: a letter without a byte becomes "?".
codepage::Conversion cp1251() {
    return {[](std::wstring_view text, bool& usedDefault) {
                const std::string bytes = toCp1251(text);
                usedDefault = false;
                for (std::size_t index = 0; index < text.size(); ++index) {
                    usedDefault = usedDefault || (bytes[index] == '?' && text[index] != L'?');
                }
                return bytes;
            },
            [](std::string_view bytes) { return fromCp1251(bytes); }};
}

// The first 256 letters of Unicode as bytes: the Western code page for the letters of these tests.
codepage::Conversion latin1() {
    return {[](std::wstring_view text, bool& usedDefault) {
                std::string bytes;
                usedDefault = false;
                for (const wchar_t letter : text) {
                    usedDefault = usedDefault || letter > 0xFF;
                    bytes += letter > 0xFF ? '?' : static_cast<char>(letter);
                }
                return bytes;
            },
            [](std::string_view bytes) {
                std::wstring text;
                for (const char byte : bytes) {
                    text += static_cast<wchar_t>(static_cast<unsigned char>(byte));
                }
                return text;
            }};
}

const std::wstring cyrillicFolder = L"C:\\Users\\Public\\\x041A\x043E\x0440\x0432\x0430\x043D"
                                    L"\x0438\x0442 \x0425\x043E\x0441\x0442"; // Корванит Хост
const std::wstring westernFolder = L"C:\\Users\\Public\\Jos\x00E9 Host"; // José Host

} // namespace

TEST(CodePage, PlainLettersSurviveEveryCodePage) {
    EXPECT_TRUE(codepage::survives(L"C:\\Users\\Public\\Corvanite Host", cp1251()));
    EXPECT_TRUE(codepage::survives(L"C:\\Users\\Public\\Corvanite Host", latin1()));
    EXPECT_TRUE(codepage::survives(L"", cp1251()));
}

TEST(CodePage, CyrillicSurvivesCodePage1251Only) {
    EXPECT_TRUE(codepage::survives(cyrillicFolder, cp1251()));
    EXPECT_FALSE(codepage::survives(cyrillicFolder, latin1()));
}

TEST(CodePage, AWesternLetterSurvivesTheWesternCodePageOnly) {
    EXPECT_TRUE(codepage::survives(westernFolder, latin1()));
    EXPECT_FALSE(codepage::survives(westernFolder, cp1251()));
}

TEST(CodePage, AQuestionMarkOfTheNameItselfIsNoLoss) {
    EXPECT_TRUE(codepage::survives(L"C:\\why?", cp1251()));
}

// A system that writes "é" as "e" without a word: the name that arrives is another folder's.
TEST(CodePage, ALookAlikeDoesNotCount) {
    const codepage::Conversion bestFit{[](std::wstring_view text, bool& usedDefault) {
                                           usedDefault = false;
                                           std::string bytes;
                                           for (const wchar_t letter : text) {
                                               bytes += letter == L'\x00E9'
                                                            ? 'e'
                                                            : static_cast<char>(letter);
                                           }
                                           return bytes;
                                       },
                                       latin1().widen};
    EXPECT_FALSE(codepage::survives(westernFolder, bestFit));
}

// A stand-in that the conversion owns to is a loss even when the way back happens to agree.
TEST(CodePage, AStandInIsALossEvenWhenTheWayBackAgrees) {
    const codepage::Conversion owned{[](std::wstring_view text, bool& usedDefault) {
                                         usedDefault = true;
                                         return std::string(text.begin(), text.end());
                                     },
                                     latin1().widen};
    EXPECT_FALSE(codepage::survives(L"abc", owned));
}
