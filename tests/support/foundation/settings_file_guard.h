#pragma once

#include <filesystem>
#include <string>

#include "tests/support/foundation/test_file_lock.h"

// The program's settings file is fixed when the program starts and is the same for every test
// process of the user: a test that changes it holds it alone, and leaves it as it found it.
class SettingsFileGuard {
public:
    SettingsFileGuard();
    ~SettingsFileGuard();
    SettingsFileGuard(const SettingsFileGuard&) = delete;
    SettingsFileGuard& operator=(const SettingsFileGuard&) = delete;

private:
    TestFileLock lock_{"corvanite-settings-tests.lock", true};
    std::filesystem::path path_;
    bool existed_ = false;
    std::string saved_;
};
