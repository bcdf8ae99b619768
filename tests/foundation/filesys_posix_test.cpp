#include "foundation/filesys.h"

#include <string>

#include <gtest/gtest.h>

#include "tests/support/foundation/environment_value.h"

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
