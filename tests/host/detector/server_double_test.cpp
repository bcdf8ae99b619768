// The detector against the server double: the process layout and connection that the panel
// relies on to tell a running server.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <random>
#include <thread>

#include "foundation/exceptions.h"
#include "host/detector/launch_process.h"
#include "host/detector/processes.h"
#include "host/detector/tcp_connections.h"
#include "tests/support/foundation/temp_folder.h"
#include "tests/support/host/host_double.h"

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr std::uint32_t loopback = 0x0100007F; // 127.0.0.1, first octet in the lowest byte

unsigned randomPort() {
    std::mt19937 generator(std::random_device{}());
    return std::uniform_int_distribution<unsigned>(20000, 59999)(generator);
}

// Polls as the server control does: a table that changed between the two reads of the system
// fails that one read.
std::optional<detector::TcpConnection> connectionOf(std::uint32_t pid, milliseconds limit) {
    std::optional<detector::TcpConnection> found;
    eventually(
        [&] {
            try {
                found = detector::connectionOfProcess(pid);
            } catch (const std::exception&) {
            }
            return found.has_value();
        },
        limit);
    return found;
}

std::vector<detector::TcpConnection> readTable() {
    std::vector<detector::TcpConnection> table;
    eventually([&] {
        try {
            table = detector::tcpConnections();
            return true;
        } catch (const detector::InternalError&) {
            return false;
        }
    });
    return table;
}

// The row of a listener that was given only a port, as nginx's "listen N;" binds it.
void expectListeningOnEveryInterface(const detector::TcpConnection& row, unsigned port) {
    EXPECT_EQ(row.localPort, port);
    EXPECT_EQ(row.localAddress, 0u);
    EXPECT_EQ(row.stateName, "LISTEN");
}

// A copy of the port holder that listens on every interface at a random port until it is ended.
struct PortHolder {
    PortHolder() {
        std::filesystem::copy_file(nativePath(portHolderExecutable()),
                                   nativePath(folder.file(name)));
        if (!detector::launchProcess(folder.file(name), " " + std::to_string(port) + " --for 60")) {
            return;
        }
        eventually([&] {
            const std::vector<std::uint32_t> pids = pidsNamed(name);
            pid = pids.empty() ? 0 : pids.front();
            return pid != 0 && connectionOf(pid, milliseconds(100)).has_value();
        });
    }
    ~PortHolder() { end(); }
    PortHolder(const PortHolder&) = delete;
    PortHolder& operator=(const PortHolder&) = delete;
    void end() const { detector::killProcesses(name); }

    TempFolder folder;
    std::string name = uniqueExecutableName("PortHolder");
    unsigned port = randomPort();
    std::uint32_t pid = 0;
};

std::string listenConfiguration(unsigned port) {
    return "http {\n    server {\n        listen " + std::to_string(port) + ";\n    }\n}\n";
}

// The lines of the installation's error log.
std::vector<std::string> errorLogLines(const DoubleInstallation& installation) {
    std::ifstream log(nativePath(installation.file("logs/error.log")), std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; std::getline(log, line);) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        lines.push_back(line);
    }
    return lines;
}

std::size_t linesWith(const std::vector<std::string>& lines, const std::string& part) {
    std::size_t count = 0;
    for (const std::string& line : lines) {
        count += line.find(part) != std::string::npos ? 1 : 0;
    }
    return count;
}

TEST(ServerDouble, WorkersListeningRowShowsTheWorkersPidAndThePortOfTheConfiguration) {
    // A port taken by some other program makes the worker fail; another one is tried then.
    for (int attempt = 0; attempt < 3; ++attempt) {
        DoubleInstallation installation;
        const unsigned port = randomPort();
        installation.writeConfiguration("http {\n    server {\n        listen 127.0.0.1:" +
                                        std::to_string(port) + " ssl;\n    }\n}\n");
        const RunningServer server(installation);
        ASSERT_NE(server.master, 0u);
        ASSERT_NE(server.worker, 0u);
        const std::optional<detector::TcpConnection> row = connectionOf(server.worker, seconds(5));
        if (!row) {
            continue;
        }
        EXPECT_EQ(row->processId, server.worker);
        EXPECT_EQ(row->localPort, port);
        EXPECT_EQ(row->localAddress, loopback);
        EXPECT_EQ(row->state, 2u);
        EXPECT_EQ(row->stateName, "LISTEN");
        EXPECT_EQ(row->remotePort, 0u);
        const std::vector<detector::TcpConnection> table = readTable();
        EXPECT_THROW(detector::connectionOfProcess(server.master, [&] { return table; }),
                     detector::ConnectionNotFound);
        return;
    }
    FAIL() << "the worker never listened";
}

TEST(ServerDouble, WithoutListenLineTheWorkerListensOnAFreePort) {
    DoubleInstallation installation;
    const RunningServer server(installation);
    ASSERT_NE(server.worker, 0u);
    const std::optional<detector::TcpConnection> row = connectionOf(server.worker, seconds(5));
    ASSERT_TRUE(row.has_value());
    EXPECT_NE(row->localPort, 0u);
    EXPECT_EQ(row->localAddress, 0u);
}

TEST(ServerDouble, ListenWithAPortOnlyListensOnEveryInterfaceAsNginxDoes) {
    for (int attempt = 0; attempt < 3; ++attempt) {
        DoubleInstallation installation;
        const unsigned port = randomPort();
        installation.writeConfiguration("http {\n    server {\n        listen " +
                                        std::to_string(port) + ";\n    }\n}\n");
        const RunningServer server(installation);
        ASSERT_NE(server.worker, 0u);
        const std::optional<detector::TcpConnection> row = connectionOf(server.worker, seconds(5));
        if (!row) {
            continue;
        }
        expectListeningOnEveryInterface(*row, port);
        return;
    }
    FAIL() << "the worker never listened";
}

TEST(ServerDouble, PlantedEmergencyWritesOneEmergLineAfterItsStartAndEndsLeavingItsPidFile) {
    DoubleInstallation installation;
    std::filesystem::create_directories(nativePath(installation.file("logs")));
    installation.writeSwitches("emerg_after=300\n");
    const RunningServer server(installation);
    ASSERT_NE(server.worker, 0u);
    EXPECT_TRUE(server.ended());
    EXPECT_EQ(installation.pidFromFile(), std::optional<std::uint32_t>(server.master));
    std::ifstream log(nativePath(installation.file("logs/error.log")), std::ios::binary);
    std::string line;
    // The start's notice, as nginx writes it, then the planted line.
    ASSERT_TRUE(std::getline(log, line));
    EXPECT_NE(line.find(" [notice] "), std::string::npos) << line;
    ASSERT_TRUE(std::getline(log, line));
    // "2026/11/24 18:00:49 [emerg] 1234#1234: ..."
    EXPECT_EQ(line.size() > 20 ? line.substr(19, 9) : line, " [emerg] ") << line;
    EXPECT_NE(line.find(std::to_string(server.master) + "#"), std::string::npos) << line;
    EXPECT_NE(line.find("failed on purpose after 300 ms"), std::string::npos) << line;
    std::string more;
    EXPECT_FALSE(std::getline(log, more) && !more.empty()) << more;
}

TEST(ServerDouble, OrphanWorkerOutlivesItsMasterAndKeepsItsPort) {
    DoubleInstallation installation;
    installation.writeSwitches("orphan_worker\n");
    const RunningServer server(installation);
    ASSERT_NE(server.worker, 0u);
    const std::optional<detector::TcpConnection> before = connectionOf(server.worker, seconds(5));
    ASSERT_TRUE(before.has_value());
    ASSERT_TRUE(installation.launch(" -s quit"));
    EXPECT_TRUE(eventually([&] { return !detector::processExists(server.master); }));
    std::this_thread::sleep_for(milliseconds(500));
    EXPECT_TRUE(detector::processExists(server.worker));
    const std::optional<detector::TcpConnection> after = connectionOf(server.worker, seconds(5));
    ASSERT_TRUE(after.has_value());
    EXPECT_EQ(after->localPort, before->localPort);
}

TEST(ServerDouble, PortHolderHoldsItsPortOnEveryInterfaceUnderItsOwnPid) {
    const std::string name = uniqueExecutableName("PortHolder");
    TempFolder folder;
    std::filesystem::copy_file(nativePath(portHolderExecutable()), nativePath(folder.file(name)));
    for (int attempt = 0; attempt < 3; ++attempt) {
        const unsigned port = randomPort();
        ASSERT_TRUE(
            detector::launchProcess(folder.file(name), " " + std::to_string(port) + " --for 20"));
        std::uint32_t holder = 0;
        eventually([&] {
            const std::vector<std::uint32_t> pids = pidsNamed(name);
            holder = pids.empty() ? 0 : pids.front();
            return holder != 0;
        });
        ASSERT_NE(holder, 0u);
        const std::optional<detector::TcpConnection> row = connectionOf(holder, seconds(5));
        detector::killProcesses(name);
        if (!row) {
            continue;
        }
        expectListeningOnEveryInterface(*row, port);
        return;
    }
    FAIL() << "the holder never listened";
}

TEST(ServerDouble, StopRunEndsMasterAndWorkerAndRemovesThePidFile) {
    DoubleInstallation installation;
    const RunningServer server(installation);
    ASSERT_NE(server.worker, 0u);
    ASSERT_TRUE(installation.launch(" -s quit"));
    EXPECT_TRUE(server.ended());
    EXPECT_FALSE(installation.pidFromFile().has_value());
}

TEST(ServerDouble, IgnoringTheQuitKeepsTheServerRunning) {
    DoubleInstallation installation;
    installation.writeSwitches("ignore_quit\n");
    const RunningServer server(installation);
    ASSERT_NE(server.worker, 0u);
    ASSERT_TRUE(installation.launch(" -s quit"));
    std::this_thread::sleep_for(milliseconds(1500));
    EXPECT_TRUE(detector::processExists(server.master));
    EXPECT_EQ(installation.pidFromFile(), std::optional<std::uint32_t>(server.master));
}

TEST(ServerDouble, WorkerThatNeverListensHasNoConnection) {
    DoubleInstallation installation;
    installation.writeSwitches("never_listen\n");
    const RunningServer server(installation);
    ASSERT_NE(server.worker, 0u);
    EXPECT_FALSE(connectionOf(server.worker, milliseconds(1500)).has_value());
}

TEST(ServerDouble, ServerThatDiesLeavesItsPidFileBehind) {
    DoubleInstallation installation;
    installation.writeSwitches("die_after=1\n");
    const RunningServer server(installation);
    ASSERT_NE(server.worker, 0u);
    EXPECT_TRUE(server.ended());
    EXPECT_EQ(installation.pidFromFile(), std::optional<std::uint32_t>(server.master));
}

// nginx tries its bind five times, half a second apart, and says so in its error log; then it gives
// up with "still could not bind()".
TEST(ServerDouble, AWorkerWhosePortIsHeldTriesFiveTimesAsNginxDoesAndGivesUp) {
    const PortHolder holder;
    ASSERT_NE(holder.pid, 0u);
    DoubleInstallation installation;
    std::filesystem::create_directories(nativePath(installation.file("logs")));
    installation.writeConfiguration(listenConfiguration(holder.port));
    ASSERT_TRUE(installation.launch());
    ASSERT_NE(installation.waitForMaster(), 0u);
    EXPECT_TRUE(eventually(
        [&] { return linesWith(errorLogLines(installation), "still could not bind()") == 1; }));
    const std::vector<std::string> lines = errorLogLines(installation);
    EXPECT_EQ(linesWith(lines, "[emerg] "), 6u);
    EXPECT_EQ(linesWith(lines, "bind() to 0.0.0.0:" + std::to_string(holder.port) + " failed ("),
              5u);
    EXPECT_EQ(linesWith(lines, "[notice] "), 5u); // the start's, and four of these:
    EXPECT_EQ(linesWith(lines, "try again to bind() after 500ms"), 4u);
    ASSERT_FALSE(lines.empty());
    EXPECT_NE(lines.back().find("still could not bind()"), std::string::npos) << lines.back();
}

// A port that its holder lets go of while nginx still tries is taken at the next try.
TEST(ServerDouble, APortFreedWhileTheWorkerTriesIsTakenAtTheNextTry) {
    PortHolder holder;
    ASSERT_NE(holder.pid, 0u);
    DoubleInstallation installation;
    std::filesystem::create_directories(nativePath(installation.file("logs")));
    installation.writeConfiguration(listenConfiguration(holder.port));
    ASSERT_TRUE(installation.launch());
    const std::uint32_t master = installation.waitForMaster();
    ASSERT_NE(master, 0u);
    ASSERT_TRUE(
        eventually([&] { return linesWith(errorLogLines(installation), " failed (") > 0; }));
    holder.end();
    const std::uint32_t worker = installation.waitForWorker(master);
    ASSERT_NE(worker, 0u);
    const std::optional<detector::TcpConnection> row = connectionOf(worker, seconds(5));
    ASSERT_TRUE(row.has_value());
    expectListeningOnEveryInterface(*row, holder.port);
    EXPECT_EQ(linesWith(errorLogLines(installation), "still could not bind()"), 0u);
}

} // namespace
