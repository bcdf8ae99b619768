#include "diagnostics/event_log_export.h"

#include <chrono>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "tests/support/foundation/temp_folder.h"

TEST(EventLogExport, WithoutASystemFolderTheEarlierExportIsDeletedAndNothingRuns) {
    TempFolder logs;
    std::ofstream(logs.native() / "Application.evtx") << "old export";
    exportEventLogWith(std::nullopt, logs.file("Application.evtx"));
    EXPECT_FALSE(std::filesystem::exists(logs.native() / "Application.evtx"));
}

TEST(EventLogExport, MissingToolEndsSilently) {
    TempFolder system;
    TempFolder logs;
    const auto start = std::chrono::steady_clock::now();
    exportEventLogWith(system.path(), logs.file("Application.evtx"));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(4));
    EXPECT_FALSE(std::filesystem::exists(logs.native() / "Application.evtx"));
}
