#include "foundation/filesys.h"

#include <csignal>
#include <fstream>
#include <string>
#include <sys/mount.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "foundation/exceptions.h"
#include "tests/support/foundation/environment_value.h"
#include "tests/support/foundation/temp_folder.h"

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

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes bytesOf(std::string_view text) {
    return Bytes(text.begin(), text.end());
}

void makeFile(const std::string& path, std::string_view content) {
    std::ofstream stream(path, std::ios::binary);
    stream << content;
}

// A file system with no room left: a 64 KiB tmpfs filled to the brim where the test may mount one,
// else the side file's name leads to /dev/full, a device that fails every write with "no space".
class FullFolder {
public:
    FullFolder() {
        mounted_ = mount("tmpfs", folder_.path().c_str(), "tmpfs", 0, "size=64k") == 0;
        makeFile(folder_.file("nginx.conf"), "error_log logs/error.log info;");
        if (mounted_) {
            fill();
        } else {
            symlink("/dev/full", filesys::sideFileOf(folder_.file("nginx.conf")).c_str());
        }
    }
    ~FullFolder() {
        if (mounted_) {
            umount(folder_.path().c_str());
        }
    }
    FullFolder(const FullFolder&) = delete;
    FullFolder& operator=(const FullFolder&) = delete;

    std::string file(const std::string& name) const { return folder_.file(name); }

private:
    void fill() const {
        std::ofstream filler(folder_.file("filler"), std::ios::binary);
        const std::string block(4096, 'x');
        while (filler.write(block.data(), static_cast<std::streamsize>(block.size())).flush()) {
        }
    }

    TempFolder folder_;
    bool mounted_ = false;
};

} // namespace

TEST(FileSystemPosix, WriteFileOnAFullDeviceFails) {
    try {
        filesys::writeFile("/dev/full", Bytes(100, 'x'));
        FAIL() << "a write to a full device was taken for done";
    } catch (const filesys::WriteFileError& error) {
        EXPECT_EQ(error.path(), "/dev/full");
    }
}

TEST(FileSystemPosix, ReplaceFileOnAFullDiskFailsAndKeepsTheOldFileWhole) {
    const FullFolder folder;
    const std::string file = folder.file("nginx.conf");
    const std::string longer = "error_log logs/error.log debug;" + std::string(70000, ' ');
    EXPECT_THROW(filesys::replaceFile(file, bytesOf(longer)), filesys::WriteFileError);
    EXPECT_EQ(filesys::readFile(file), bytesOf("error_log logs/error.log info;"));
}

// The process is killed after the new content is written beside the file and before the move.
TEST(FileSystemPosix, KillBetweenWriteAndMoveLeavesTheOldFileWhole) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const TempFolder folder;
    const std::string file = folder.file("nginx.conf");
    makeFile(file, "error_log logs/error.log info;");
    EXPECT_EXIT(
        {
            filesys::writeSideFile(file, bytesOf("error_log logs/error.log debug;"));
            raise(SIGKILL);
        },
        testing::KilledBySignal(SIGKILL), "");
    EXPECT_EQ(filesys::readFile(file), bytesOf("error_log logs/error.log info;"));
    filesys::replaceFile(file, bytesOf("error_log logs/error.log warn;"));
    EXPECT_EQ(filesys::readFile(file), bytesOf("error_log logs/error.log warn;"));
}
