#include "tests/e2e/panel_session_windows.h"

using namespace e2e;

using TrayIcon = PanelSession;

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
