#include "diagnostics/report_paths.h"

#include <gtest/gtest.h>

TEST(SystemPathPosix, ArchivePathKeepsItsSlashes) {
    EXPECT_EQ(reportPathsOf("/opt/corvanite").archivePath, "/opt/corvanite/tmp/info.zip");
}
