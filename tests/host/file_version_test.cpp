#include "host/file_version.h"

#include <gtest/gtest.h>

#include "host/host_facts.h"
#include "tests/support/host/model_installation.h"

TEST(FileVersion, MissingServerFileGivesZeros) {
    const HostModelInstallation installation;
    EXPECT_EQ(fileVersionText(), "0.0.0.0");
}

TEST(FileVersion, ServerFileWithoutVersionGivesZeros) {
    const HostModelInstallation installation;
    installation.writeText("CorvaniteHost.exe", "no version in here");
    EXPECT_EQ(fileVersionText(), "0.0.0.0");
}
