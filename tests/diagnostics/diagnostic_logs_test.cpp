#include "diagnostics/diagnostic_logs.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "foundation/exceptions.h"
#include "host/detector/run_and_capture.h"
#include "tests/support/diagnostics/commands.h"
#include "tests/support/foundation/temp_folder.h"

using detector::TcpConnection;
using detector::TcpTableRow;

namespace {

constexpr std::uint32_t listenState = 2;
constexpr std::uint32_t establishedState = 5;

std::string readText(const TempFolder& folder, const std::string& name) {
    std::ifstream in(folder.native() / name, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

// A port as the system's table holds it: network byte order in the low 16 bits.
std::uint32_t tablePort(std::uint16_t port) {
    return static_cast<std::uint32_t>(((port & 0xFF) << 8) | (port >> 8));
}

// An address with its first octet in the lowest byte.
std::uint32_t address(std::uint8_t a, std::uint8_t b, std::uint8_t c, std::uint8_t d) {
    return a | (b << 8) | (c << 16) | (static_cast<std::uint32_t>(d) << 24);
}

} // namespace

TEST(DiagnosticLogs, LineBreakIsCarriageReturnAndLineFeed) {
    EXPECT_EQ(lineBreak, "\r\n");
}

TEST(DiagnosticLogs, EmptyTableGivesAnEmptyTcpConnectionsLogThatExists) {
    TempFolder logs;
    writeLogFileIn(logs.path(), "tcp-connections", connectionsLogText({}));
    ASSERT_TRUE(std::filesystem::exists(logs.native() / "tcp-connections.log"));
    EXPECT_EQ(std::filesystem::file_size(logs.native() / "tcp-connections.log"), 0u);
}

TEST(DiagnosticLogs, ListenRowHasRemotePort0EvenWhenTheRowHoldsAnother) {
    TcpTableRow row;
    row.state = listenState;
    row.localAddress = address(127, 0, 0, 1);
    row.localPort = tablePort(8443);
    row.remotePort = tablePort(51234);
    row.owningPid = 4321;
    EXPECT_EQ(connectionsLogText({detector::connectionOfRow(row)}),
              "Local address:  127.0.0.1:8443\r\n"
              "Remote address: 0.0.0.0:0\r\n"
              "State:          LISTEN\r\n"
              "Process ID:     4321\r\n"
              "\r\n");
}

TEST(DiagnosticLogs, ListeningSocketOnAllInterfacesPrintsAddress0000AndItsPort) {
    TcpConnection connection;
    connection.stateName = "LISTEN";
    connection.localAddress = 0;
    connection.localPort = 443;
    connection.processId = 17;
    const std::string text = connectionsLogText({connection});
    EXPECT_EQ(text.substr(0, text.find("\r\n")), "Local address:  0.0.0.0:443");
}

TEST(DiagnosticLogs, EveryConnectionIsARecordOfFourLinesAndAnEmptyOne) {
    TcpConnection first;
    first.stateName = "ESTABLISHED";
    first.state = establishedState;
    first.localAddress = address(192, 168, 1, 5);
    first.localPort = 50000;
    first.remoteAddress = address(93, 184, 216, 34);
    first.remotePort = 443;
    first.processId = 100;
    TcpConnection second = first;
    second.processId = 200;
    EXPECT_EQ(connectionsLogText({first, second}),
              "Local address:  192.168.1.5:50000\r\nRemote address: 93.184.216.34:443\r\n"
              "State:          ESTABLISHED\r\nProcess ID:     100\r\n\r\n"
              "Local address:  192.168.1.5:50000\r\nRemote address: 93.184.216.34:443\r\n"
              "State:          ESTABLISHED\r\nProcess ID:     200\r\n\r\n");
}

TEST(DiagnosticLogs, ProcessListRecordsNameIdAndParent) {
    const std::vector<detector::ProcessEntry> processes = {{L"System", 4, 0},
                                                           {L"Сервер.exe", 1200, 4}};
    EXPECT_EQ(processListLogText(processes),
              "Name:      System\r\nID:        4\r\nParent ID: 0\r\n\r\n"
              "Name:      Сервер.exe\r\nID:        1200\r\nParent ID: 4\r\n\r\n");
}

TEST(DiagnosticLogs, LogFileIsReplacedAndNamedWithTheLogExtension) {
    TempFolder logs;
    writeLogFileIn(logs.path(), "info", "first, longer text");
    writeLogFileIn(logs.path(), "info", "second");
    EXPECT_EQ(readText(logs, "info.log"), "second");
}

TEST(DiagnosticLogs, LogInAMissingFolderIsAWriteFileError) {
    TempFolder base;
    EXPECT_THROW(writeLogFileIn(base.file("missing"), "info", "x"), filesys::WriteFileError);
}

TEST(DiagnosticLogs, ProbeWithOutputWritesItUnchanged) {
    TempFolder logs;
    const std::optional<std::string> expected = detector::runAndCapture(printingCommand(), 10);
    ASSERT_TRUE(expected);
    runProbe(printingCommand(), 10, "ping", logs.path());
    EXPECT_EQ(readText(logs, "ping.log"), *expected);
    EXPECT_NE(expected->find("probe answer"), std::string::npos);
}

TEST(DiagnosticLogs, ProbeWithoutOutputLeavesTheEarlierLog) {
    TempFolder logs;
    writeLogFileIn(logs.path(), "nslookup", "earlier report");
    runProbe(silentCommand(), 10, "nslookup", logs.path());
    EXPECT_EQ(readText(logs, "nslookup.log"), "earlier report");
}

TEST(DiagnosticLogs, ProbeOverItsTimeLeavesTheEarlierLog) {
    TempFolder logs;
    writeLogFileIn(logs.path(), "ping", "earlier report");
    runProbe(slowCommand(), 1, "ping", logs.path());
    EXPECT_EQ(readText(logs, "ping.log"), "earlier report");
}

TEST(DiagnosticLogs, ProbeWhoseProgramIsMissingRaisesAnInternalError) {
    TempFolder logs;
    EXPECT_THROW(runProbe(missingCommand(), 2, "nslookup", logs.path()), detector::InternalError);
    EXPECT_FALSE(std::filesystem::exists(logs.native() / "nslookup.log"));
}

TEST(DiagnosticLogs, ProbeWhoseLogCanNotBeWrittenIsSilent) {
    TempFolder base;
    EXPECT_NO_THROW(runProbe(printingCommand(), 10, "ping", base.file("missing")));
    EXPECT_FALSE(std::filesystem::exists(base.native() / "missing"));
}
