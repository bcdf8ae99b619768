#include "tests/support/diagnostics/zip_tools.h"

#include <gtest/gtest.h>

#include "tests/support/diagnostics/zip_tool_command.h"

namespace {

void testWithPython(const std::string& archivePath, std::vector<std::string>& ran) {
    const std::optional<ToolResult> run = runPosixTool("python3", "-m zipfile -t", archivePath);
    if (!run) {
        return;
    }
    ran.push_back("python3 zipfile");
    // zipfile reports a bad CRC in its output but still ends with status 0.
    EXPECT_EQ(run->status, 0) << run->output;
    EXPECT_NE(run->output.find("Done testing"), std::string::npos) << run->output;
    EXPECT_EQ(run->output.find("corrupted"), std::string::npos) << run->output;
}

void testWithUnzip(const std::string& archivePath, bool hasMembers, std::vector<std::string>& ran) {
    const std::optional<ToolResult> run = runPosixTool("unzip", "-t", archivePath);
    if (!run) {
        return;
    }
    ran.push_back("unzip");
    if (hasMembers) {
        EXPECT_EQ(run->status, 0) << run->output;
        EXPECT_NE(run->output.find("No errors detected"), std::string::npos) << run->output;
    } else {
        // unzip warns about an archive without members, with its status for warnings.
        EXPECT_NE(run->output.find("zipfile is empty"), std::string::npos) << run->output;
    }
}

} // namespace

std::vector<std::string> testWithExternalReaders(const std::string& archivePath, bool hasMembers,
                                                 bool withUnzip) {
    std::vector<std::string> ran;
    testWithPython(archivePath, ran);
    if (withUnzip) {
        testWithUnzip(archivePath, hasMembers, ran);
    }
    return ran;
}
