// Processes of another user, which only a root run of the tests can make.
#include "host/detector/processes.h"

#include <gtest/gtest.h>

#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "host/detector/current_user.h"
#include "tests/support/host/host_double.h"

namespace {

constexpr uid_t otherUser = 65534; // nobody

// A copy of the double that sleeps under another user's uid, ended and reaped when it goes.
class ForeignProcess {
public:
    explicit ForeignProcess(const std::string& executable) {
        pid_ = fork();
        if (pid_ == 0) {
            if (setgid(otherUser) != 0 || setuid(otherUser) != 0) {
                _exit(127);
            }
            execl(executable.c_str(), executable.c_str(), "--linger", "60",
                  static_cast<char*>(nullptr));
            _exit(127);
        }
    }
    ~ForeignProcess() {
        if (pid_ > 0) {
            kill(pid_, SIGKILL);
            waitpid(pid_, nullptr, 0);
        }
    }
    ForeignProcess(const ForeignProcess&) = delete;
    ForeignProcess& operator=(const ForeignProcess&) = delete;

    std::uint32_t pid() const { return static_cast<std::uint32_t>(pid_); }

private:
    pid_t pid_ = -1;
};

struct OtherUser : testing::Test {
    void SetUp() override {
        if (geteuid() != 0) {
            GTEST_SKIP() << "a process of another user needs a run as root";
        }
        // The other user must reach the copy through the folder.
        std::filesystem::permissions(
            nativePath(installation.folder()),
            std::filesystem::perms::owner_all | std::filesystem::perms::group_read |
                std::filesystem::perms::group_exec | std::filesystem::perms::others_read |
                std::filesystem::perms::others_exec);
    }

    // Waits until the foreign process runs the copy under its name.
    bool runsTheCopy(const ForeignProcess& process) const {
        return eventually([&] {
            for (const std::uint32_t pid : pidsNamed(installation.exeName())) {
                if (pid == process.pid()) {
                    return true;
                }
            }
            return false;
        });
    }

    DoubleInstallation installation;
};

TEST_F(OtherUser, KillProcessesLeavesASameNamedProcessOfAnotherUserAlone) {
    const ForeignProcess foreign(installation.executable());
    ASSERT_TRUE(runsTheCopy(foreign));
    ASSERT_TRUE(installation.launch(" --linger 60"));
    ASSERT_TRUE(eventually([&] { return pidsNamed(installation.exeName()).size() == 2; }));
    detector::killProcesses(installation.exeName());
    EXPECT_TRUE(eventually([&] { return pidsNamed(installation.exeName()).size() == 1; }));
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_EQ(pidsNamed(installation.exeName()), std::vector<std::uint32_t>{foreign.pid()});
}

TEST_F(OtherUser, FindProcessWithoutOwnerTestFindsTheProcessOfAnotherUser) {
    const ForeignProcess foreign(installation.executable());
    ASSERT_TRUE(runsTheCopy(foreign));
    EXPECT_TRUE(detector::findProcess(installation.exeName(), false, 0));
    EXPECT_FALSE(detector::findProcess(installation.exeName(), true, 0));
    EXPECT_FALSE(detector::isCurrentUserProcess(foreign.pid()));
}

} // namespace
