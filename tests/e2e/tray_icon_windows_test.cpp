#include "tests/e2e/panel_session_windows.h"
#include "tests/e2e/taskbar_stand_in_windows.h"

#include <chrono>
#include <optional>

using namespace e2e;

using TrayIcon = PanelSession;
using namespace std::chrono_literals;

// A restart of the shell's taskbar loses every icon and announces the new taskbar; the panel, even
// in the tray alone, puts its icon back, so that it stays reachable.
TEST_F(TrayIcon, TheTrayIconComesBackWhenTheTaskbarIsMadeAnew) {
    ProgramRun run(L"--silent");
    HWND window = run.window();
    ASSERT_NE(window, nullptr);
    ASSERT_TRUE(ui::waitUntil([&] { return ui::trayIconShown(window); }));
    ui::removeTrayIcon(window);
    ASSERT_FALSE(ui::trayIconShown(window));
    ui::announceTaskbarCreated(window);
    EXPECT_TRUE(ui::waitUntil([&] { return ui::trayIconShown(window); }));
    ui::trayClick(window, WM_LBUTTONDOWN);
    EXPECT_TRUE(ui::waitUntil([&] { return ui::isVisible(window); }));
}

// The program ends at once on Exit, without destroying its objects one by one, so it takes its
// icon out of the tray before. An icon whose program has ended is left to the shell to clear away:
// Windows leaves it in the tray until the mouse passes over it, and Wine's shell holds the desktop
// for about two seconds while it clears it, so that every program started meanwhile waits.
TEST_F(TrayIcon, ExitTakesTheIconOutOfTheTrayAndLeavesTheDesktopFree) {
    ProgramRun run(L"--silent");
    HWND window = run.window();
    ASSERT_NE(window, nullptr);
    ASSERT_TRUE(ui::waitUntil([&] { return ui::trayIconShown(window); }));
    ProgramRun quit(L"--quit");
    ASSERT_EQ(quit.waitForExit(), std::optional<DWORD>(0));
    ASSERT_EQ(run.waitForExit(), std::optional<DWORD>(0));
    DWORD_PTR answer = 0;
    EXPECT_NE(
        SendMessageTimeoutW(GetDesktopWindow(), WM_NULL, 0, 0, SMTO_ABORTIFHUNG, 1000, &answer), 0);
    EXPECT_FALSE(ui::trayIconShown(window));
}

// At log-on the taskbar may not be there yet, and it refuses the icon. The panel keeps trying every
// 10 s, and meanwhile its menu exists: a language change works and ends nothing.
TEST_F(TrayIcon, AnIconRefusedAtStartIsAddedOnceTheTaskbarTakesIt) {
    std::optional<TaskbarStandIn> taskbar(std::in_place);
    ASSERT_TRUE(taskbar->ready());
    ProgramRun run(L"--silent");
    HWND window = run.window();
    ASSERT_NE(window, nullptr);
    ASSERT_TRUE(ui::waitUntil([&] { return taskbar->refused() > 0; }));

    ui::chooseComboEntry(control(window, LanguageBox), 0);
    EXPECT_TRUE(ui::waitUntil([&] { return installation.language.read() == L"1049"; }));
    EXPECT_EQ(ui::findTopWindow(L"#32770", run.processId()), nullptr);
    EXPECT_TRUE(run.running());

    // The taskbar is there now; the next try puts the icon in it, and it answers a click.
    taskbar.reset();
    EXPECT_TRUE(ui::waitUntil([&] { return ui::trayIconShown(window); }, 30s));
    ui::trayClick(window, WM_LBUTTONDOWN);
    EXPECT_TRUE(ui::waitUntil([&] { return ui::isVisible(window); }));
}
