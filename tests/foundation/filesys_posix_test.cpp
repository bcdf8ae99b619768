#include "foundation/filesys.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>

// The POSIX body reads narrow names as a system with code page 1251 would.
bool narrowNamesAreCodePage1251() {
    return true;
}

namespace {

// Sets or clears an environment variable for one test and puts it back afterwards.
class EnvironmentValue {
public:
    EnvironmentValue(const char* name, const char* value) : name_(name) {
        if (const char* old = std::getenv(name)) {
            old_ = old;
        }
        value != nullptr ? setenv(name, value, 1) : unsetenv(name);
    }
    ~EnvironmentValue() { old_ ? setenv(name_, old_->c_str(), 1) : unsetenv(name_); }

private:
    const char* name_;
    std::optional<std::string> old_;
};

} // namespace

TEST(FileSystemPosix, LocalAppDataIsXdgDataHome) {
    const EnvironmentValue data("XDG_DATA_HOME", "/srv/data");
    EXPECT_EQ(filesys::localAppDataFolder(), "/srv/data");
}

TEST(FileSystemPosix, LocalAppDataFallsBackToLocalShareInHome) {
    const EnvironmentValue home("HOME", "/home/someone");
    const EnvironmentValue data("XDG_DATA_HOME", nullptr);
    EXPECT_EQ(filesys::localAppDataFolder(), "/home/someone/.local/share");
}

TEST(FileSystemPosix, ProgramFilesIsOptAndProfileIsHome) {
    const EnvironmentValue home("HOME", "/home/someone");
    EXPECT_EQ(filesys::programFilesFolder(), "/opt");
    EXPECT_EQ(filesys::profileFolder(), "/home/someone");
}
