#include "diagnostics/info_report.h"

#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "tests/support/diagnostics/report_installation.h"

using Installation = ReportInstallation;

// A colon is an ordinary letter of a POSIX file name but no member name may hold one.
TEST(InfoReportPosix, PreviousArchiveIsGoneEvenWhenTheNewOneCouldNotBePacked) {
    Installation installation;
    installation.write("tmp/info.zip", "previous archive");
    installation.write("logs/a:b.log", "x");
    EXPECT_EQ(buildInfoArchiveWith(installation.paths, {}), "");
    EXPECT_FALSE(installation.archiveExists());
}

TEST(InfoReportPosix, ListedFileThatCanNotBeReadIsSkipped) {
    Installation installation;
    std::filesystem::create_symlink(installation.folder.native() / "nowhere",
                                    installation.folder.native() / "logs" / "dangling.log");
    installation.write("logs/error.log", "e");
    ASSERT_EQ(buildInfoArchiveWith(installation.paths, {}), installation.paths.archivePath);
    EXPECT_EQ(installation.archiveMemberNames(),
              (std::vector<std::string>{"error.log", "nginx.conf"}));
}
