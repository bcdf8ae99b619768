#include "host/detector/run_and_capture.h"

#include <gtest/gtest.h>

#include <deque>
#include <fstream>
#include <stdexcept>

#include "foundation/exceptions.h"
#include "host/detector/processes.h"
#include "tests/support/host/host_double.h"

namespace {

// The double writes digits 0 to 9 over and over, the last byte a line end.
std::string emitted(std::size_t count) {
    std::string text;
    for (std::size_t index = 0; index < count; ++index) {
        text += index + 1 == count ? '\n' : static_cast<char>('0' + index % 10);
    }
    return text;
}

// Runs a copy of the double under a name of its own, which no other test's process carries.
std::optional<std::string> capture(const std::string& arguments, std::int64_t seconds = 20) {
    const DoubleInstallation copy;
    return detector::runAndCapture(copy.executable() + " " + arguments, seconds);
}

// A reader that hands out the given blocks one by one, then fails.
detector::BlockReader blocks(std::deque<std::string> parts) {
    return [parts](char* buffer, std::size_t size) mutable -> std::optional<std::size_t> {
        if (parts.empty()) {
            return std::nullopt;
        }
        const std::string part = parts.front();
        parts.pop_front();
        EXPECT_LE(part.size(), size);
        part.copy(buffer, part.size());
        return part.size();
    };
}

TEST(RunAndCapture, ChildThatWrites10BytesGives9OfThem) {
    EXPECT_EQ(capture("--emit 10"), std::optional<std::string>("012345678"));
}

TEST(RunAndCapture, ChildThatWritesExactly128BytesGivesNoValue) {
    EXPECT_EQ(capture("--emit 128"), std::nullopt);
}

TEST(RunAndCapture, ChildThatRunsPastTheTimeOutGivesNoValueAndIsStillRunning) {
    DoubleInstallation copy;
    const std::string pidFile = copy.file("linger.pid");
    EXPECT_EQ(detector::runAndCapture(copy.executable() + " --linger 60 " + pidFile, 1),
              std::nullopt);
    std::uint32_t pid = 0;
    std::ifstream(nativePath(pidFile)) >> pid;
    ASSERT_NE(pid, 0u);
    copy.remember(pid);
    EXPECT_TRUE(detector::processExists(pid));
}

TEST(RunAndCapture, ChildThatWritesNothingGivesNoValue) {
    EXPECT_EQ(capture("--emit 0"), std::nullopt);
}

TEST(RunAndCapture, LongerOutputLosesTheLastByteOfEveryBlock) {
    const std::string all = emitted(300);
    const std::string expected = all.substr(0, 127) + all.substr(128, 127) + all.substr(256, 43);
    EXPECT_EQ(capture("--emit 300"), std::optional<std::string>(expected));
}

TEST(RunAndCapture, ProgramThatCannotStartRaisesInternalError) {
    EXPECT_THROW(detector::runAndCapture(systemPath("/nonexistent/NoSuchProgram.exe"), 1),
                 detector::InternalError);
}

TEST(RunAndCapture, BlocksAreReadUntilOneComesShort) {
    const std::string full(128, 'a');
    EXPECT_EQ(detector::readOutputBlocks(blocks({full, "bcd"})),
              std::optional<std::string>(std::string(127, 'a') + "bc"));
}

TEST(RunAndCapture, BlockIsKeptUpToItsFirstZeroByte) {
    EXPECT_EQ(detector::readOutputBlocks(blocks({std::string("ab\0cdef", 7)})),
              std::optional<std::string>("ab"));
}

TEST(RunAndCapture, FailedReadGivesNoValue) {
    EXPECT_EQ(detector::readOutputBlocks(blocks({})), std::nullopt);
    EXPECT_EQ(detector::readOutputBlocks(blocks({std::string(128, 'x')})), std::nullopt);
}

TEST(RunAndCapture, ReadOfNothingIsOutOfRange) {
    EXPECT_THROW(detector::readOutputBlocks(blocks({""})), std::out_of_range);
}

TEST(RunAndCapture, PipeWithoutWritersReadsAsFailed) {
    detector::PipeEnd readEnd;
    detector::PipeEnd writeEnd;
    detector::createPipe(readEnd, writeEnd);
    EXPECT_TRUE(readEnd.isOpen());
    EXPECT_TRUE(writeEnd.isOpen());
    writeEnd.close();
    char buffer[4] = {};
    EXPECT_EQ(detector::native::readPipe(readEnd, buffer, sizeof buffer), std::nullopt)
        << "a pipe without writers reads as failed";
}

} // namespace
