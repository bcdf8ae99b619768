#include "host/detector/launch_process.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "host/detector/processes.h"
#include "tests/support/host/host_double.h"

namespace {

TEST(LaunchProcess, ProgramWorksInItsOwnFolder) {
    DoubleInstallation installation;
    ASSERT_TRUE(detector::launchProcess(installation.executable(), ""));
    // The server writes its pid file into its working folder.
    EXPECT_NE(installation.waitForMaster(), 0u);
}

TEST(LaunchProcess, ArgumentsArriveWithoutTheProgramsName) {
    DoubleInstallation installation;
    ASSERT_TRUE(detector::launchProcess(installation.executable(), " --linger 60 lingered.pid"));
    // A relative file of the arguments lands in the program's own folder.
    EXPECT_TRUE(eventually([&] {
        std::uint32_t pid = 0;
        std::ifstream(nativePath(installation.file("lingered.pid"))) >> pid;
        return pid != 0 && detector::processExists(pid);
    }));
}

TEST(LaunchProcess, MissingProgramIsFalse) {
    const TempFolder folder;
    EXPECT_FALSE(detector::launchProcess(folder.file("NoSuchProgram.exe"), ""));
    EXPECT_FALSE(detector::launchProcess(folder.file("NoSuchProgram.exe"), " -s quit"));
}

TEST(LaunchProcess, StopRunIsLaunchedWithItsLeadingBlank) {
    DoubleInstallation installation;
    ASSERT_TRUE(detector::launchProcess(installation.executable(), ""));
    const std::uint32_t master = installation.waitForMaster();
    ASSERT_NE(master, 0u);
    ASSERT_TRUE(detector::launchProcess(installation.executable(), " -s quit"));
    EXPECT_TRUE(eventually([&] { return !detector::processExists(master); }));
}

} // namespace
