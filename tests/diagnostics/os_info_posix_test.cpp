#include "diagnostics/os_info.h"

#include <fstream>
#include <string>

#include <sys/utsname.h>
#include <unistd.h>

#include <gtest/gtest.h>

TEST(OsInfoPosix, NameAndVersionComeFromOsRelease) {
    std::ifstream in("/etc/os-release");
    std::string line;
    std::string name;
    while (std::getline(in, line)) {
        if (line.rfind("NAME=", 0) == 0) {
            name = line.substr(5);
            if (name.size() >= 2 && name.front() == '"') {
                name = name.substr(1, name.size() - 2);
            }
        }
    }
    const detector::OsInfo info = detector::queryOsInfo();
    if (!name.empty()) {
        EXPECT_EQ(info.name, name);
    } else {
        utsname system{};
        uname(&system);
        EXPECT_EQ(info.name, system.sysname);
    }
    EXPECT_FALSE(info.isServer);
    EXPECT_EQ(info.servicePack, "0.0");
}

TEST(OsInfoPosix, RootIsTheAdministrator) {
    EXPECT_EQ(detector::queryOsInfo().isAdmin, geteuid() == 0);
}
