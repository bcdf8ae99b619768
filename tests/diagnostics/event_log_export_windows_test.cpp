#include "diagnostics/event_log_export.h"

#include <filesystem>

#include <windows.h>

#include <gtest/gtest.h>

#include "foundation/filesys.h"
#include "tests/support/foundation/temp_folder.h"

namespace {

bool underWine() {
    const HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
    return ntdll != nullptr && GetProcAddress(ntdll, "wine_get_version") != nullptr;
}

} // namespace

TEST(EventLogExportWindows, SystemFolderHoldsTheExportTool) {
    const std::optional<std::string> folder = systemToolFolder();
    ASSERT_TRUE(folder);
    EXPECT_TRUE(filesys::exists(filesys::joinPath(*folder, "wevtutil.exe").c_str()));
}

TEST(EventLogExportWindows, WineToolWritesNothingAndTheExportGoesOnAfterItsWait) {
    if (!underWine()) {
        GTEST_SKIP() << "Windows' own tool exports the log";
    }
    // Wine's wevtutil.exe is a stub that ends at once; the wait runs out and that is no failure.
    TempFolder logs;
    exportEventLogWith(systemToolFolder(), logs.file("Application.evtx"));
    EXPECT_FALSE(std::filesystem::exists(logs.native() / "Application.evtx"));
}
