#include "diagnostics/system_path.h"

#include <gtest/gtest.h>

#include "diagnostics/report_paths.h"

TEST(SystemPathPosix, ArchivePathKeepsItsSlashes) {
    EXPECT_EQ(reportPathsOf("/opt/corvanite").archivePath, "/opt/corvanite/tmp/info.zip");
}
