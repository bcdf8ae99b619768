#include "tests/e2e/panel_session_windows.h"

#include <thread>

using namespace e2e;

namespace {
constexpr int English = 1;
}

using ServerControl = PanelSession;

TEST_F(ServerControl, StopAndRunByTheButtons) {
    ProgramRun run;
    HWND window = startPanel(run);
    ASSERT_NE(window, nullptr);
    HWND stop = control(window, StopButton);
    HWND start = control(window, RunButton);
    ASSERT_TRUE(ui::waitUntil([&] { return ui::isEnabled(stop); }));

    ui::click(stop);
    EXPECT_TRUE(installation.waitForServer(false));
    EXPECT_TRUE(waitForText(control(window, StatusLabel), words("CVCP-000010", English)));
    EXPECT_TRUE(ui::waitUntil([&] { return ui::isEnabled(start) && !ui::isEnabled(stop); }));
    // Stop was disabled when the server went: the watchdog leaves it down.
    std::this_thread::sleep_for(std::chrono::milliseconds(3 * layout.updateTime() + 500));
    EXPECT_FALSE(installation.serverRuns());

    ui::click(start);
    EXPECT_TRUE(installation.waitForServer(true));
    EXPECT_TRUE(waitForText(control(window, StatusLabel), words("CVCP-000009", English)));
}

TEST_F(ServerControl, TrayMenuStopsAndRunsFromTheSamePlace) {
    ProgramRun run;
    HWND window = startPanel(run);
    ASSERT_NE(window, nullptr);
    ASSERT_TRUE(ui::waitUntil([&] { return ui::isEnabled(control(window, StopButton)); }));
    const int place = layout.menuPlaceOf(2);
    ASSERT_GE(place, 0);

    ui::trayClick(window, WM_RBUTTONDOWN);
    HWND menu = ui::waitForPopupMenu(run.processId());
    ASSERT_NE(menu, nullptr);
    ui::choosePopupEntry(menu, place);
    EXPECT_TRUE(installation.waitForServer(false));
    EXPECT_TRUE(waitForText(control(window, StatusLabel), words("CVCP-000010", English)));

    // The next ticks put Run where Stop stood.
    std::this_thread::sleep_for(std::chrono::milliseconds(2 * layout.updateTime() + 500));
    ui::trayClick(window, WM_RBUTTONDOWN);
    menu = ui::waitForPopupMenu(run.processId());
    ASSERT_NE(menu, nullptr);
    ui::choosePopupEntry(menu, place);
    EXPECT_TRUE(installation.waitForServer(true));
}

TEST_F(ServerControl, RightClickOnTheIconWhileHiddenShowsTheMenuOnly) {
    ProgramRun run(L"--silent");
    HWND window = run.window();
    ASSERT_NE(window, nullptr);
    ui::trayClick(window, WM_RBUTTONDOWN);
    HWND menu = ui::waitForPopupMenu(run.processId());
    ASSERT_NE(menu, nullptr);
    EXPECT_FALSE(ui::isVisible(window));
    ui::dismissPopup(menu);
}

TEST_F(ServerControl, ServerKilledFromOutsideIsStartedAgain) {
    ProgramRun run;
    HWND window = startPanel(run);
    ASSERT_NE(window, nullptr);
    ASSERT_TRUE(ui::waitUntil([&] { return ui::isEnabled(control(window, StopButton)); }));
    installation.killServer();
    EXPECT_TRUE(installation.waitForServer(true));
    EXPECT_TRUE(waitForText(control(window, StatusLabel), words("CVCP-000009", English)));
}
