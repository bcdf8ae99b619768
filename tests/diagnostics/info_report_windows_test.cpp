#include "diagnostics/info_report.h"

#include <filesystem>
#include <fstream>

#include <windows.h>

#include <gtest/gtest.h>

#include "tests/support/diagnostics/report_installation.h"

using Installation = ReportInstallation;

TEST(InfoReportWindows, ListedFileThatCanNotBeReadIsSkipped) {
    Installation installation;
    const std::filesystem::path locked = installation.folder.native() / "logs" / "locked.log";
    std::ofstream(locked) << "held by another program";
    installation.write("logs/error.log", "e");
    // Opened without sharing, as a program that keeps its log to itself does.
    const HANDLE holder = CreateFileW(locked.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(holder, INVALID_HANDLE_VALUE);
    const std::string archive = buildInfoArchiveWith(installation.paths, {});
    CloseHandle(holder);
    ASSERT_EQ(archive, installation.paths.archivePath);
    EXPECT_EQ(installation.archiveMemberNames(),
              (std::vector<std::string>{"error.log", "nginx.conf"}));
}

TEST(InfoReportWindows, ArchivePathIsWrittenWithBackslashes) {
    Installation installation;
    const std::string archive = buildInfoArchiveWith(installation.paths, {});
    EXPECT_EQ(archive.find('/'), std::string::npos);
    EXPECT_TRUE(installation.archiveExists());
}
