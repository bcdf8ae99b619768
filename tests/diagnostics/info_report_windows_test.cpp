#include "diagnostics/info_report.h"

#include <filesystem>
#include <fstream>

#include <windows.h>

#include <gtest/gtest.h>

#include "tests/support/diagnostics_zip_reader.h"
#include "tests/support/temp_folder.h"

namespace {

struct Installation {
    Installation() : paths(reportPathsOf(folder.path())) {
        for (const char* sub : {"conf", "logs", "tmp"}) {
            std::filesystem::create_directories(folder.native() / sub);
        }
        std::ofstream(folder.native() / "conf" / "nginx.conf") << "events {}\n";
    }
    TempFolder folder;
    ReportPaths paths;
};

} // namespace

TEST(InfoReportWindows, ListedFileThatCanNotBeReadIsSkipped) {
    Installation installation;
    const std::filesystem::path locked = installation.folder.native() / "logs" / "locked.log";
    std::ofstream(locked) << "held by another program";
    std::ofstream(installation.folder.native() / "logs" / "error.log") << "e";
    // Opened without sharing, as a program that keeps its log to itself does.
    const HANDLE holder = CreateFileW(locked.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(holder, INVALID_HANDLE_VALUE);
    const std::string archive = buildInfoArchiveWith(installation.paths, {});
    CloseHandle(holder);
    ASSERT_EQ(archive, installation.paths.archivePath);
    std::ifstream in(installation.folder.native() / "tmp" / "info.zip", std::ios::binary);
    const std::vector<std::uint8_t> bytes((std::istreambuf_iterator<char>(in)),
                                          std::istreambuf_iterator<char>());
    std::vector<std::string> names;
    for (const auto& member : readZip(bytes).members) {
        names.push_back(member.central.name);
    }
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"error.log", "nginx.conf"}));
}

TEST(InfoReportWindows, ArchivePathIsWrittenWithBackslashes) {
    Installation installation;
    const std::string archive = buildInfoArchiveWith(installation.paths, {});
    EXPECT_EQ(archive.find('/'), std::string::npos);
    EXPECT_TRUE(std::filesystem::exists(installation.folder.native() / "tmp" / "info.zip"));
}
