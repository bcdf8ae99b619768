#include "host/nginx_config.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <unistd.h>

#include "foundation/filesys.h"
#include "host/log_level.h"
#include "tests/support/host/model_installation.h"

// The new conf is written beside the old one first; here that write meets a device without room,
// /dev/full, as on a full disk. The level change is refused and the old conf stays whole.
TEST(NginxConfigPosix, LevelChangeOnAFullDiskIsRefusedAndTheConfStaysWhole) {
    const HostModelInstallation installation;
    const std::string whole = "worker_processes 1;\nerror_log logs/error.log info;\nevents {}\n";
    installation.writeText("conf/nginx.conf", whole);
    const std::string side = filesys::sideFileOf(installation.file("conf/nginx.conf"));
    ASSERT_EQ(symlink("/dev/full", side.c_str()), 0);
    NginxConfig config;
    setSelectedLogLevel(2);
    EXPECT_EQ(config.writeLevel(), NginxConfig::Refused);
    setSelectedLogLevel(0);
    EXPECT_EQ(installation.readText("conf/nginx.conf"), whole);
    EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(side)));
}
