#include "diagnostics/info_report.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include <gtest/gtest.h>

#include "diagnostics/diagnostic_logs.h"
#include "foundation/exceptions.h"
#include "foundation/language.h"
#include "foundation/message_box.h"
#include "foundation/message_catalogue.h"
#include "foundation/shell_open.h"
#include "foundation/text.h"
#include "tests/support/diagnostics/report_installation.h"
#include "tests/support/diagnostics/zip_reader.h"
#include "tests/support/foundation/temp_folder.h"

namespace {

using Installation = ReportInstallation;

std::vector<std::pair<std::string, std::string>> membersOf(const std::vector<std::uint8_t>& bytes) {
    std::vector<std::pair<std::string, std::string>> members;
    for (const ZipMemberRead& member : readZip(bytes).members) {
        members.emplace_back(member.central.name,
                             std::string(member.content.begin(), member.content.end()));
    }
    std::sort(members.begin(), members.end());
    return members;
}

const Collector failing = [] { throw std::runtime_error("collector failed"); };

// Records what the shell was asked to open and which boxes were shown, and answers opens with a
// given result.
class ShellRecorder {
public:
    explicit ShellRecorder(bool opens) {
        setShellOpenSink([this, opens](const std::wstring& target, int) {
            opened.push_back(target);
            return opens;
        });
        setMessageBoxSink(
            [this](const std::wstring& caption, const std::wstring& text, unsigned flags) {
                boxes.push_back(utf16ToUtf8(caption) + "|" + utf16ToUtf8(text) + "|" +
                                std::to_string(flags));
            });
    }
    ~ShellRecorder() {
        setShellOpenSink(nullptr);
        setMessageBoxSink(nullptr);
    }

    std::vector<std::wstring> opened;
    std::vector<std::string> boxes;
};

class InfoReportTest : public testing::Test {
protected:
    void SetUp() override { panelMessages.setLanguage(Language::English); }
    void TearDown() override { panelMessages.setLanguage(Language::Ukrainian); }
};

} // namespace

TEST(InfoReport, ReportTextBeginsWithTwoEmptyLinesAndDashesEvenIfEverySectionFailed) {
    const SectionMaker broken = []() -> std::string { throw std::runtime_error("section"); };
    EXPECT_EQ(reportTextFrom({broken, broken, broken}), "\r\n\r\n--\r\n\r\n");
}

TEST(InfoReport, SectionsFollowInListOrderEachWithTwoLineBreaksBehind) {
    const std::string text =
        reportTextFrom({[] { return std::string("first"); },
                        []() -> std::string { throw detector::InternalError(); },
                        [] { return std::string("third\n    line"); }});
    EXPECT_EQ(text, "\r\n\r\n--\r\n\r\nfirst\r\n\r\nthird\n    line\r\n\r\n");
}

TEST(InfoReport, SixSectionMakersAndSixCollectors) {
    EXPECT_EQ(reportSectionMakers().size(), 6u);
    EXPECT_EQ(reportCollectors().size(), 6u);
}

TEST(InfoReport, FileListIsTheLogsFolderThenTheConfiguration) {
    Installation installation;
    installation.write("logs/error.log", "e");
    std::filesystem::create_directories(installation.folder.native() / "logs" / "old");
    installation.write("logs/old/access.log", "inside a sub-folder");
    std::vector<std::string> files = reportFilesOf(installation.paths);
    ASSERT_EQ(files.size(), 2u);
    EXPECT_EQ(files.back(), installation.paths.configFile);
    EXPECT_EQ(files.front(), installation.paths.logsFolder + "/error.log");
}

TEST(InfoReport, MissingLogsFolderIsAReadFolderError) {
    Installation installation;
    std::filesystem::remove_all(installation.folder.native() / "logs");
    EXPECT_THROW(reportFilesOf(installation.paths), filesys::ReadFolderError);
    EXPECT_THROW(buildInfoArchiveWith(installation.paths, {}), filesys::ReadFolderError);
}

TEST(InfoReport, AllCollectorsFailAndTheArchiveHoldsWhatStoodInTheLogsFolderAndNginxConf) {
    Installation installation;
    installation.write("logs/error.log", "2024/01/01 [error] something");
    installation.write("logs/ping.log", "an old ping");
    const std::string archive =
        buildInfoArchiveWith(installation.paths, std::vector<Collector>(6, failing));
    EXPECT_EQ(archive, installation.paths.archivePath);
    EXPECT_EQ(membersOf(installation.archiveBytes()),
              (std::vector<std::pair<std::string, std::string>>{
                  {"error.log", "2024/01/01 [error] something"},
                  {"nginx.conf", "worker_processes 1;\n"},
                  {"ping.log", "an old ping"}}));
}

TEST(InfoReport, EmptyLogsFolderAfterFailedCollectorsGivesNginxConfAlone) {
    Installation installation;
    buildInfoArchiveWith(installation.paths, {failing, failing});
    EXPECT_EQ(membersOf(installation.archiveBytes()),
              (std::vector<std::pair<std::string, std::string>>{
                  {"nginx.conf", "worker_processes 1;\n"}}));
}

TEST(InfoReport, NginxConfInTheLogsFolderGivesTwoEntriesOfThatName) {
    Installation installation;
    installation.write("logs/nginx.conf", "a copy");
    buildInfoArchiveWith(installation.paths, {});
    const ZipRead read = readZip(installation.archiveBytes());
    ASSERT_EQ(read.members.size(), 2u);
    EXPECT_EQ(read.members[0].central.name, "nginx.conf");
    EXPECT_EQ(read.members[1].central.name, "nginx.conf");
    EXPECT_EQ(std::string(read.members[1].content.begin(), read.members[1].content.end()),
              "worker_processes 1;\n");
}

TEST(InfoReport, CollectorsEndBeforeThePackingStarts) {
    Installation installation;
    const Collector writer = [&installation] {
        writeLogFileIn(installation.paths.logsFolder, "process-list", "Name:      System\r\n");
    };
    buildInfoArchiveWith(installation.paths, {writer, failing});
    EXPECT_EQ(membersOf(installation.archiveBytes()),
              (std::vector<std::pair<std::string, std::string>>{
                  {"nginx.conf", "worker_processes 1;\n"},
                  {"process-list.log", "Name:      System\r\n"}}));
}

TEST(InfoReport, MissingConfigurationIsLeftOutOfTheArchive) {
    Installation installation;
    std::filesystem::remove(installation.folder.native() / "conf" / "nginx.conf");
    installation.write("logs/error.log", "e");
    buildInfoArchiveWith(installation.paths, {});
    EXPECT_EQ(membersOf(installation.archiveBytes()),
              (std::vector<std::pair<std::string, std::string>>{{"error.log", "e"}}));
}

TEST(InfoReport, ArchiveThatCanNotBeWrittenGivesAnEmptyText) {
    Installation installation;
    std::filesystem::remove_all(installation.folder.native() / "tmp");
    EXPECT_EQ(buildInfoArchiveWith(installation.paths, {}), "");
    EXPECT_FALSE(installation.archiveExists());
}

TEST(InfoReport, PreviousArchiveIsReplaced) {
    Installation installation;
    installation.write("tmp/info.zip", "an old archive");
    installation.write("logs/error.log", "new");
    buildInfoArchiveWith(installation.paths, {});
    EXPECT_EQ(membersOf(installation.archiveBytes()).size(), 2u);
}

TEST_F(InfoReportTest, CollectingOpensTheTmpFolderWhenTheArchiveWasBuilt) {
    Installation installation;
    ShellRecorder shell(true);
    collectInformationWith(installation.paths, [] { return std::string(); });
    EXPECT_EQ(shell.opened, (std::vector<std::wstring>{shellPathOf(installation.paths.tmpFolder)}));
    EXPECT_TRUE(shell.boxes.empty());
}

TEST_F(InfoReportTest, CollectingOpensTheLogsFolderWhenTheBuildThrew) {
    Installation installation;
    ShellRecorder shell(true);
    collectInformationWith(installation.paths, []() -> std::string { throw 1; });
    EXPECT_EQ(shell.opened,
              (std::vector<std::wstring>{shellPathOf(installation.paths.logsFolder)}));
}

TEST_F(InfoReportTest, MissingLogsFolderEndsInTheFailedToOpenBox) {
    Installation installation;
    std::filesystem::remove_all(installation.folder.native() / "logs");
    ShellRecorder shell(false);
    collectInformationWith(installation.paths, [&installation] {
        return buildInfoArchiveWith(installation.paths, {});
    });
    EXPECT_EQ(shell.opened,
              (std::vector<std::wstring>{shellPathOf(installation.paths.logsFolder)}));
    EXPECT_EQ(shell.boxes,
              (std::vector<std::string>{"Corvanite|Failed to open directory with logs|" +
                                        std::to_string(messageBoxFlags(0, 0))}));
}

TEST_F(InfoReportTest, PackingFailureStillOpensTheTmpFolder) {
    Installation installation;
    ShellRecorder shell(true);
    collectInformationWith(installation.paths, [] { return std::string(); });
    ASSERT_EQ(shell.opened.size(), 1u);
    EXPECT_EQ(shell.opened[0], shellPathOf(installation.paths.tmpFolder));
}
