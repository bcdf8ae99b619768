#include "tests/e2e/panel_session_windows.h"
#include <thread>

using namespace e2e;

namespace {
constexpr int English = 1;
}

using StartupModes = PanelSession;

TEST_F(StartupModes, SilentStartsWithoutWindowAndTheTimerRuns) {
    ProgramRun run(L"--silent");
    HWND window = run.window();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(installation.waitForServer(true));
    HWND time = control(window, TimeLabel);
    ASSERT_TRUE(ui::waitUntil([&] { return ui::text(time) != L"-"; }));
    const std::wstring first = ui::text(time);
    EXPECT_TRUE(ui::waitUntil([&] { return ui::text(time) != first; }));
    EXPECT_FALSE(ui::isVisible(window));
}

TEST_F(StartupModes, LeftClickOnTheTrayIconShowsTheWindow) {
    ProgramRun run(L"--silent");
    HWND window = run.window();
    ASSERT_NE(window, nullptr);
    ui::trayClick(window, WM_LBUTTONDOWN);
    EXPECT_TRUE(ui::waitUntil([&] { return ui::isVisible(window); }));
}

TEST_F(StartupModes, SilentAnywhereInTheLineCounts) {
    ProgramRun run(L"abc--silentxyz");
    HWND window = run.window();
    ASSERT_NE(window, nullptr);
    std::this_thread::sleep_for(std::chrono::milliseconds(layout.updateTime() + 500));
    EXPECT_FALSE(ui::isVisible(window));
}

TEST_F(StartupModes, QuitInCapitalsIsNoSwitch) {
    ProgramRun run(L"--QUIT");
    HWND window = run.window();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(ui::waitUntil([&] { return ui::isVisible(window); }));
}

TEST_F(StartupModes, QuitWithNoRunningInstanceExitsWithZero) {
    ProgramRun quit(L"--quit");
    EXPECT_EQ(quit.waitForExit(), std::optional<DWORD>(0));
    EXPECT_EQ(OpenMutexW(SYNCHRONIZE, FALSE, L"CVHControlPanel"), nullptr);
}

TEST_F(StartupModes, SecondStartShowsTheFirstWindowAndExitsWithZero) {
    ProgramRun first(L"--silent");
    HWND window = first.window();
    ASSERT_NE(window, nullptr);
    ASSERT_FALSE(ui::isVisible(window));
    // The second start doesn't look at the installation.
    installation.removeFile(L"conf\\nginx.conf");
    ProgramRun second;
    EXPECT_EQ(second.waitForExit(), std::optional<DWORD>(0));
    EXPECT_TRUE(ui::waitUntil([&] { return ui::isVisible(window); }));
    EXPECT_FALSE(ui::waitForMessageBox(second.processId(), 1s).has_value());
}

TEST_F(StartupModes, ExitFromTheTrayMenuEndsTheProgramAndLeavesTheServer) {
    ProgramRun run;
    HWND window = startPanel(run);
    ASSERT_NE(window, nullptr);
    const int place = layout.menuPlaceOf(6);
    ASSERT_GE(place, 0);
    ui::trayClick(window, WM_RBUTTONDOWN);
    HWND menu = ui::waitForPopupMenu(run.processId());
    ASSERT_NE(menu, nullptr);
    ui::choosePopupEntry(menu, place);
    EXPECT_EQ(run.waitForExit(), std::optional<DWORD>(0));
    EXPECT_TRUE(installation.serverRuns());
}

TEST_F(StartupModes, CloseBoxHidesTheWindowAndKeepsTimerTrayAndTab) {
    ProgramRun run;
    HWND window = startPanel(run);
    ASSERT_NE(window, nullptr);
    ASSERT_TRUE(ui::waitUntil([&] { return ui::isVisible(window); }));
    HWND tabs = control(window, Tabs);
    ui::chooseTab(tabs, 1);
    ui::chooseComboEntry(control(window, LogLevelBox), 2);
    ui::closeBox(window);
    EXPECT_TRUE(ui::waitUntil([&] { return !ui::isVisible(window); }));
    EXPECT_TRUE(run.running());
    // The timer goes on: the status follows the server while the window is hidden.
    installation.killServer();
    EXPECT_TRUE(installation.waitForServer(true));
    ui::trayClick(window, WM_LBUTTONDOWN);
    EXPECT_TRUE(ui::waitUntil([&] { return ui::isVisible(window); }));
    EXPECT_EQ(ui::tabSelection(tabs), 1);
    EXPECT_EQ(ui::comboSelection(control(window, LogLevelBox)), 2);
    EXPECT_TRUE(ui::isVisible(control(window, LanguageBox)));
    EXPECT_FALSE(ui::isVisible(control(window, StopButton)));
    EXPECT_TRUE(waitForText(control(window, StatusLabel), words("CVCP-000009", English)));
}
