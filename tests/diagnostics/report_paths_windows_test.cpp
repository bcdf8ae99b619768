#include "diagnostics/report_paths.h"

#include <gtest/gtest.h>

#include "foundation/filesys.h"

TEST(SystemPathWindows, ArchivePathHasEverySlashReplacedByABackslash) {
    EXPECT_EQ(reportPathsOf("C:/Corvanite").archivePath, "C:\\Corvanite\\tmp\\info.zip");
    EXPECT_EQ(filesys::systemPathForm("a/b\\c/"), "a\\b\\c\\");
}
