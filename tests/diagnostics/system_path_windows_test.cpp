#include "diagnostics/system_path.h"

#include <gtest/gtest.h>

#include "diagnostics/report_paths.h"

TEST(SystemPathWindows, ArchivePathHasEverySlashReplacedByABackslash) {
    EXPECT_EQ(reportPathsOf("C:/Corvanite").archivePath, "C:\\Corvanite\\tmp\\info.zip");
    EXPECT_EQ(systemPathForm("a/b\\c/"), "a\\b\\c\\");
}
