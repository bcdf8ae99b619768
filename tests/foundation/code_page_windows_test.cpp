// The system's code page as the program asks it: under Wine it follows the locale that the test
// program was started under (code page 1252 for en_US, 1251 for ru_RU).
#include "foundation/code_page.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "foundation/filesys.h"
#include "foundation/text.h"
#include "tests/support/foundation/temp_folder.h"

#include <windows.h>

namespace {
const std::string cyrillicName = "Корванит Хост";
const std::string westernName = "José Host";
} // namespace

TEST(CodePageWindows, TheNumberIsTheSystemsAnsiCodePage) {
    EXPECT_EQ(codepage::systemCodePage(), GetACP());
}

TEST(CodePageWindows, PlainLettersCanBeWrittenAndAChineseOneCannot) {
    EXPECT_TRUE(codepage::writableInSystemCodePage("C:\\Users\\Public\\Corvanite Host"));
    if (GetACP() == 1251 || GetACP() == 1252) {
        EXPECT_FALSE(codepage::writableInSystemCodePage("C:\\\xE4\xB8\xAD"));
    }
}

TEST(CodePageWindows, CyrillicAndWesternLettersFollowTheCodePage) {
    const bool cyrillic = codepage::writableInSystemCodePage(cyrillicName);
    const bool western = codepage::writableInSystemCodePage(westernName);
    if (GetACP() == 1251) {
        EXPECT_TRUE(cyrillic);
        EXPECT_FALSE(western) << "\"é\" must not pass as its look-alike \"e\"";
    } else if (GetACP() == 1252) {
        EXPECT_FALSE(cyrillic);
        EXPECT_TRUE(western);
    } else {
        GTEST_SKIP() << "code page " << GetACP();
    }
}

// Wine, as Windows on NTFS, keeps a short name for every long one: plain letters only.
TEST(CodePageWindows, AFolderOfEitherNameHasAShortPathThatCanBeWritten) {
    const TempFolder parent;
    for (const std::string& name : {cyrillicName, westernName}) {
        const std::string folder = parent.file(name);
        std::filesystem::create_directory(nativePath(folder));
        const std::optional<std::string> shortPath = filesys::shortPathOf(folder);
        ASSERT_TRUE(shortPath.has_value()) << name;
        EXPECT_TRUE(codepage::writableInSystemCodePage(*shortPath)) << *shortPath;
        EXPECT_NE(GetFileAttributesW(utf8ToUtf16(*shortPath).c_str()), INVALID_FILE_ATTRIBUTES);
        EXPECT_NE(*shortPath, filesys::systemPathForm(folder));
    }
}

TEST(CodePageWindows, AMissingPathHasNoShortForm) {
    const TempFolder parent;
    EXPECT_FALSE(filesys::shortPathOf(parent.file("missing")).has_value());
}
