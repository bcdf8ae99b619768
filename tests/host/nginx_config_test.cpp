#include "host/nginx_config.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>

#include "foundation/message_catalogue.h"
#include "host/log_level.h"
#include "tests/support/foundation/temp_folder.h"
#include "tests/support/host/model_installation.h"

namespace {

struct NginxConfigTest : ::testing::Test {
    ~NginxConfigTest() override { setSelectedLogLevel(0); }

    void writeConf(const std::string& text) const { installation.writeText(conf, text); }
    std::string readConf() const { return installation.readText(conf); }
    std::filesystem::file_time_type confTime() const {
        return std::filesystem::last_write_time(nativePath(installation.file(conf)));
    }

    const std::string conf = "conf/nginx.conf";
    HostModelInstallation installation;
};

} // namespace

TEST(LogLevelTable, WordsAndNamesInTheOrderOfTheBox) {
    ASSERT_EQ(LogLevelTable.size(), 3u);
    EXPECT_EQ(LogLevelTable[0].word, "error");
    EXPECT_STREQ(LogLevelTable[0].textId, "CVCP-005201");
    EXPECT_EQ(LogLevelTable[1].word, "info");
    EXPECT_STREQ(LogLevelTable[1].textId, "CVCP-005202");
    EXPECT_EQ(LogLevelTable[2].word, "debug");
    EXPECT_STREQ(LogLevelTable[2].textId, "CVCP-005203");
}

TEST(SelectedLogLevel, StoresTheByte) {
    EXPECT_EQ(selectedLogLevel.load(), 0);
    setSelectedLogLevel(2);
    EXPECT_EQ(selectedLogLevel.load(), 2);
    // A box without a selection gives -1, which arrives as the byte 255.
    setSelectedLogLevel(static_cast<std::uint8_t>(-1));
    EXPECT_EQ(selectedLogLevel.load(), 255);
    setSelectedLogLevel(0);
}

TEST_F(NginxConfigTest, PathIsTheInstallationsConf) {
    EXPECT_EQ(NginxConfig().path, installation.path() + "/conf/nginx.conf");
}

TEST_F(NginxConfigTest, LevelOfTheDirective) {
    writeConf("worker_processes 1;\nerror_log logs/error.log info;\nevents {}\n");
    const NginxConfig config;
    EXPECT_EQ(config.currentLevel(), "info");
    ASSERT_TRUE(config.level.has_value());
    EXPECT_EQ(*config.level, "info");
    EXPECT_EQ(config.before, "worker_processes 1;\nerror_log logs/error.log ");
    EXPECT_EQ(config.after, ";\nevents {}\n");
}

TEST_F(NginxConfigTest, DebugReplacesOnlyTheLevelWord) {
    const std::string head = "# comment\r\nworker_processes  1;\r\n\r\nerror_log logs/error.log ";
    const std::string tail = ";\r\nhttp {\r\n    listen 8888;\r\n}\n\n";
    writeConf(head + "info" + tail);
    setSelectedLogLevel(2);
    EXPECT_EQ(NginxConfig().writeLevel(), NginxConfig::Written);
    EXPECT_EQ(readConf(), head + "debug" + tail);
}

TEST_F(NginxConfigTest, TwoBlanksMakeThePathPartOfTheLevel) {
    writeConf("error_log  logs/error.log info;\n");
    NginxConfig config;
    EXPECT_EQ(config.currentLevel(), "logs/error.log info");
    setSelectedLogLevel(0);
    EXPECT_EQ(config.writeLevel(), NginxConfig::Written);
    EXPECT_EQ(readConf(), "error_log  error;\n");
}

TEST_F(NginxConfigTest, FirstErrorLogCountsEvenInAComment) {
    writeConf("#error_log logs/a.log;\nerror_log logs/error.log info;\n");
    NginxConfig config;
    // The comment's directive has no level: the search runs on from there into the real line.
    EXPECT_EQ(config.before, "#error_log logs/a.log;\nerror_log ");
    EXPECT_EQ(config.currentLevel(), "logs/error.log info");
    setSelectedLogLevel(2);
    EXPECT_EQ(config.writeLevel(), NginxConfig::Written);
    EXPECT_EQ(readConf(), "#error_log logs/a.log;\nerror_log debug;\n");
}

TEST_F(NginxConfigTest, FirstErrorLogWithALevelInACommentIsEdited) {
    writeConf("#error_log logs/a.log notice;\nerror_log logs/error.log info;\n");
    EXPECT_EQ(NginxConfig().currentLevel(), "notice");
    setSelectedLogLevel(1);
    EXPECT_EQ(NginxConfig().writeLevel(), NginxConfig::Written);
    EXPECT_EQ(readConf(), "#error_log logs/a.log info;\nerror_log logs/error.log info;\n");
}

TEST_F(NginxConfigTest, SameLevelWritesNothing) {
    writeConf("error_log logs/error.log debug;\n");
    std::filesystem::last_write_time(nativePath(installation.file(conf)),
                                     std::filesystem::file_time_type::clock::now() -
                                         std::chrono::hours(1));
    // As the file system stores it, which may be less precise.
    const auto written = confTime();
    setSelectedLogLevel(2);
    EXPECT_EQ(NginxConfig().writeLevel(), NginxConfig::Unchanged);
    EXPECT_EQ(confTime(), written);
    EXPECT_EQ(readConf(), "error_log logs/error.log debug;\n");
}

TEST_F(NginxConfigTest, InvalidSelectionIsRefused) {
    writeConf("error_log logs/error.log info;\n");
    setSelectedLogLevel(3);
    EXPECT_EQ(NginxConfig().writeLevel(), NginxConfig::Refused);
    setSelectedLogLevel(255);
    EXPECT_EQ(NginxConfig().writeLevel(), NginxConfig::Refused);
    EXPECT_EQ(readConf(), "error_log logs/error.log info;\n");
}

TEST_F(NginxConfigTest, UnreadableFileHasNoLevelAfterFourTries) {
    const auto start = std::chrono::steady_clock::now();
    const NginxConfig config;
    const auto waited = std::chrono::steady_clock::now() - start;
    EXPECT_FALSE(config.level.has_value());
    EXPECT_EQ(config.currentLevel(), "");
    // Three pauses of half a second lie between the four tries.
    EXPECT_GE(waited, std::chrono::milliseconds(1500));
}

TEST_F(NginxConfigTest, FileThatAppearsDuringTheRetriesIsRead) {
    std::thread writer([this] {
        std::this_thread::sleep_for(std::chrono::milliseconds(700));
        writeConf("error_log logs/error.log debug;\n");
    });
    installation.makeFolder("conf");
    const NginxConfig config;
    writer.join();
    EXPECT_EQ(config.currentLevel(), "debug");
}

TEST_F(NginxConfigTest, UnreadableFileIsWrittenWithTheBareWord) {
    installation.makeFolder("conf");
    NginxConfig config;
    EXPECT_FALSE(config.level.has_value());
    setSelectedLogLevel(1);
    EXPECT_EQ(config.writeLevel(), NginxConfig::Written);
    EXPECT_EQ(readConf(), "info");
}

TEST_F(NginxConfigTest, UnwritableFileIsRefused) {
    NginxConfig config;
    setSelectedLogLevel(1);
    // Without the folder "conf" the file can't be created.
    EXPECT_EQ(config.writeLevel(), NginxConfig::Refused);
}

TEST_F(NginxConfigTest, WithoutErrorLogTheSearchStartsAtPositionEight) {
    writeConf("abcdefgh ij kl;rest");
    const NginxConfig config;
    EXPECT_EQ(config.currentLevel(), "kl");
    EXPECT_EQ(config.before, "abcdefgh ij ");
    EXPECT_EQ(config.after, ";rest");
}

// Files with no ";" behind the place of the level, the bare word among them, which is what an
// unreadable file was written as.
const char* const filesWithoutLevel[] = {
    "",
    "info",
    "error_log logs/error.log info",
    "error_log logs/error.log info\n",
    "worker_processes 1;\nerror_log logs/error.log debug\nevents {}\n",
    "error_log",
    "error_log ",
    "error_log logs/error.log",
    "abcdefgh ij kl",
};

TEST_F(NginxConfigTest, WithoutSemicolonTheFileHasNoLevel) {
    for (const char* file : filesWithoutLevel) {
        writeConf(file);
        const NginxConfig config;
        EXPECT_EQ(config.text, file);
        EXPECT_FALSE(config.level.has_value()) << '"' << file << '"';
        EXPECT_EQ(config.currentLevel(), "") << '"' << file << '"';
    }
}

TEST_F(NginxConfigTest, WithoutSemicolonTheLevelIsNotWritten) {
    setSelectedLogLevel(2);
    for (const char* file : filesWithoutLevel) {
        writeConf(file);
        EXPECT_EQ(NginxConfig().writeLevel(), NginxConfig::Refused) << '"' << file << '"';
        EXPECT_EQ(readConf(), file);
    }
}
