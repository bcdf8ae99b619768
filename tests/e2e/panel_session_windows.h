#pragma once

#include <optional>
#include <string>

#include "tests/e2e/installation_windows.h"
#include "tests/e2e/layout_index_windows.h"
#include "tests/e2e/ui_driver_windows.h"

#include <gtest/gtest.h>

// The fixture of the end-to-end tests: a fresh installation, the layout's index of controls, and
// the catalogue's words in a chosen language as the program shows them.
namespace e2e {

// Widget ids that the program addresses.
enum Widget : int {
    AddressLink = 2,
    StatusLabel = 3,
    TimeLabel = 4,
    RunButton = 7,
    StopButton = 8,
    Tabs = 9,
    LanguageBox = 12,
    LogLevelBox = 13,
    PortAutoselectBox = 14,
    UncPathsBox = 15,
};

// A catalogue text in a language, as UTF-16; `argument` fills %1.
std::wstring words(const char* id, int language, const char* argument = nullptr);

struct PanelSession : ::testing::Test {
    explicit PanelSession(ServerBuild server = ServerBuild::Console,
                          const std::wstring& folderName = L"")
        : installation(server, folderName) {}

    // Starts the program, waits for its window and for the server to run.
    HWND startPanel(ProgramRun& run);
    // The control of the layout's widget id. The window exists before its controls, so this waits
    // for it to be made; null when it doesn't come.
    HWND control(HWND window, int id) const;
    // Clicks the control once it is enabled, as a user waits for a button to come back; fails
    // the test when it doesn't.
    void clickOnceEnabled(HWND window, int id) const;

    // Waits until the control shows the text.
    bool waitForText(HWND control, const std::wstring& text,
                     std::chrono::milliseconds timeout = ui::patience) const;

    Installation installation;
    LayoutIndex layout;
};

} // namespace e2e
