#include "diagnostics/report_paths.h"

#include <gtest/gtest.h>

#include "foundation/filesys.h"

TEST(ReportPaths, EveryPathLiesBelowTheInstallationJoinedWithASlash) {
    const ReportPaths paths =
        reportPathsOf("C:\\Users\\u\\AppData\\Local\\Ormal Co\\CorvaniteHost");
    const std::string base = "C:\\Users\\u\\AppData\\Local\\Ormal Co\\CorvaniteHost";
    EXPECT_EQ(paths.installPath, base);
    EXPECT_EQ(paths.logsFolder, base + "/logs");
    EXPECT_EQ(paths.tmpFolder, base + "/tmp");
    EXPECT_EQ(paths.configFile, base + "/conf/nginx.conf");
    EXPECT_EQ(paths.eventLogFile, base + "/logs/Application.evtx");
    EXPECT_EQ(paths.archivePath, filesys::systemPathForm(base + "/tmp/info.zip"));
}
