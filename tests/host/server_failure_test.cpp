// The cause of a server's failure, read from its error log.
#include "host/server_failure.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/host/model_installation.h"

namespace {

using serverfailure::firstAlarmLine;

struct Row {
    const char* what;
    std::string bytes;
    std::optional<std::string> line;
};

TEST(ServerFailureLine, FirstAlarmingLineOfTheBytes) {
    const std::string emerg = "2026/11/24 18:00:49 [emerg] 12#12: unknown directive \"lisen\"";
    const std::string crit = "2026/11/24 18:00:50 [crit] 12#12: CreateFile() failed";
    const std::vector<Row> table = {
        {"nothing", "", std::nullopt},
        {"only notices", "2026/11/24 [notice] 1#1: start\r\n", std::nullopt},
        {"emerg after a notice", "x [notice] y\r\n" + emerg + "\r\n", emerg},
        {"the first of two", crit + "\n" + emerg + "\n", crit},
        {"alert", "a [alert] b", "a [alert] b"},
        {"a line without its end", emerg, emerg},
        {"not UTF-8", "x [emerg] \xCF\xF0\xE8\xE2\xE5\xF2\r\n", std::nullopt},
        {"UTF-8 words", "x [emerg] \xD0\x9F\xD1\x80\xD0\xB8\r\n",
         "x [emerg] \xD0\x9F\xD1\x80\xD0\xB8"},
        {"a level word outside brackets", "emerg alert crit\n", std::nullopt},
        {"a broken lead byte at the end", "x [emerg] \xD0", std::nullopt},
    };
    for (const Row& row : table) {
        EXPECT_EQ(firstAlarmLine(row.bytes), row.line) << row.what;
    }
}

TEST(ServerFailureLog, LinesSinceTheStartAreReadAndEarlierOnesAreNot) {
    HostModelInstallation installation;
    installation.makeFolder("logs");
    installation.writeText("logs/error.log", "old [emerg] before the start\r\n");
    const std::uint64_t start = serverfailure::errorLogSize();
    EXPECT_EQ(start, 30u);
    installation.writeText("logs/error.log",
                           "old [emerg] before the start\r\nnew [emerg] after it\r\n");
    EXPECT_EQ(firstAlarmLine(serverfailure::errorLogSince(start)),
              std::optional<std::string>("new [emerg] after it"));
}

TEST(ServerFailureLog, AMissingLogGivesNothing) {
    HostModelInstallation installation;
    EXPECT_EQ(serverfailure::errorLogSize(), 0u);
    EXPECT_EQ(serverfailure::errorLogSince(0), "");
}

TEST(ServerFailureLog, AHugeLogIsReadFromItsTailOnly) {
    HostModelInstallation installation;
    installation.makeFolder("logs");
    const std::string early = "early [emerg] beyond the tail\r\n";
    const std::string filler(serverfailure::tailLimit, 'x');
    installation.writeText("logs/error.log", early + filler + "\r\nlate [crit] in the tail\r\n");
    const std::string tail = serverfailure::errorLogSince(0);
    EXPECT_EQ(tail.size(), serverfailure::tailLimit);
    EXPECT_EQ(firstAlarmLine(tail), std::optional<std::string>("late [crit] in the tail"));
}

TEST(ServerFailureLog, ALogThatShrankIsReadFromItsStart) {
    HostModelInstallation installation;
    installation.makeFolder("logs");
    installation.writeText("logs/error.log", "rotated [alert] short\r\n");
    EXPECT_EQ(firstAlarmLine(serverfailure::errorLogSince(10'000)),
              std::optional<std::string>("rotated [alert] short"));
}

} // namespace
