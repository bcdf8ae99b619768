#include "diagnostics/event_log_export.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "tests/support/foundation/temp_folder.h"

TEST(EventLogExportPosix, PosixSystemHasNoEventLogTool) {
    EXPECT_EQ(systemToolFolder(), std::nullopt);
}

// A stand-in for the tool that writes its own arguments into the file it is told to export to.
TEST(EventLogExportPosix, ToolIsStartedWithTheExportArgumentsAndWaitedForUntilTheFileIsThere) {
    TempFolder system;
    TempFolder logs;
    const std::filesystem::path tool = system.native() / "wevtutil.exe";
    std::ofstream(tool) << "#!/bin/sh\n"
                           "target=$(printf %s \"$3\" | tr -d '\"')\n"
                           "sleep 1\n"
                           "printf '%s|' \"$@\" > \"$target\"\n";
    std::filesystem::permissions(tool, std::filesystem::perms::owner_all);
    const std::string file = logs.file("Application.evtx");
    exportEventLogWith(system.path(), file);
    std::ifstream in(logs.native() / "Application.evtx");
    std::ostringstream text;
    text << in.rdbuf();
    EXPECT_EQ(text.str(), "export-log|Application|\"" + file + "\"|");
}
