#include "diagnostics/info_report.h"

#include <filesystem>
#include <fstream>

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

// A colon is an ordinary letter of a POSIX file name but no member name may hold one.
TEST(InfoReportPosix, PreviousArchiveIsGoneEvenWhenTheNewOneCouldNotBePacked) {
    Installation installation;
    std::ofstream(installation.folder.native() / "tmp" / "info.zip") << "previous archive";
    std::ofstream(installation.folder.native() / "logs" / "a:b.log") << "x";
    EXPECT_EQ(buildInfoArchiveWith(installation.paths, {}), "");
    EXPECT_FALSE(std::filesystem::exists(installation.folder.native() / "tmp" / "info.zip"));
}

TEST(InfoReportPosix, ListedFileThatCanNotBeReadIsSkipped) {
    Installation installation;
    std::filesystem::create_symlink(installation.folder.native() / "nowhere",
                                    installation.folder.native() / "logs" / "dangling.log");
    std::ofstream(installation.folder.native() / "logs" / "error.log") << "e";
    ASSERT_EQ(buildInfoArchiveWith(installation.paths, {}), installation.paths.archivePath);
    std::ifstream in(installation.folder.native() / "tmp" / "info.zip", std::ios::binary);
    const std::vector<std::uint8_t> bytes((std::istreambuf_iterator<char>(in)),
                                          std::istreambuf_iterator<char>());
    const ZipRead read = readZip(bytes);
    std::vector<std::string> names;
    for (const auto& member : read.members) {
        names.push_back(member.central.name);
    }
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"error.log", "nginx.conf"}));
}
