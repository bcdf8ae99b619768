#include "foundation/code_page.h"

#include <gtest/gtest.h>

#include "foundation/filesys.h"
#include "tests/support/foundation/temp_folder.h"

// The narrow calls of a POSIX system take UTF-8: every name can be written, and no short names
// are needed or kept.
TEST(CodePagePosix, EveryNameCanBeWritten) {
    EXPECT_EQ(codepage::systemCodePage(), 65001u);
    EXPECT_TRUE(codepage::writableInSystemCodePage("/srv/Корванит Хост"));
    EXPECT_TRUE(codepage::writableInSystemCodePage("/srv/José Host"));
}

TEST(CodePagePosix, NoShortNames) {
    const TempFolder folder;
    EXPECT_FALSE(filesys::shortPathOf(folder.path()).has_value());
}
