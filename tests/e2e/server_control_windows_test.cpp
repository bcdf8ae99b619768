#include "tests/e2e/panel_session_windows.h"

#include <thread>

using namespace e2e;

namespace {
constexpr int English = 1;
}

// Start, stop and the watchdog against both builds of the server: a console server has the
// system's console host among its children, which must never be taken for its worker.
class ServerControl : public ::testing::WithParamInterface<ServerBuild>, public PanelSession {
protected:
    ServerControl() : PanelSession(GetParam()) {}
};

INSTANTIATE_TEST_SUITE_P(Server, ServerControl,
                         ::testing::Values(ServerBuild::Console, ServerBuild::Windowless),
                         [](const auto& info) { return serverBuildName(info.param); });

// The window comes once the start has seen the worker listen, long before the start's 90 s
// time-out, and shows the worker's port.
TEST_P(ServerControl, WindowComesWithTheStatusRunningAndTheWorkersPort) {
    ProgramRun run;
    HWND window = run.window(30s);
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(waitForText(control(window, StatusLabel), words("CVCP-000009", English), 10s));
    const std::wstring port = std::to_wstring(installation.port());
    EXPECT_TRUE(ui::waitUntil(
        [&] {
            return ui::text(control(window, AddressLink)).find(L":" + port) != std::wstring::npos;
        },
        10s));
}

TEST_P(ServerControl, StopAndRunByTheButtons) {
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

TEST_P(ServerControl, TrayMenuStopsAndRunsFromTheSamePlace) {
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

TEST_P(ServerControl, ServerKilledFromOutsideIsStartedAgain) {
    ProgramRun run;
    HWND window = startPanel(run);
    ASSERT_NE(window, nullptr);
    ASSERT_TRUE(ui::waitUntil([&] { return ui::isEnabled(control(window, StopButton)); }));
    installation.killServer();
    EXPECT_TRUE(installation.waitForServer(true));
    EXPECT_TRUE(waitForText(control(window, StatusLabel), words("CVCP-000009", English)));
}

TEST_P(ServerControl, QuitEndsThePanelAndLeavesTheServer) {
    ProgramRun first;
    HWND window = startPanel(first);
    ASSERT_NE(window, nullptr);
    ProgramRun quit(L"--quit");
    EXPECT_EQ(quit.waitForExit(), std::optional<DWORD>(0));
    EXPECT_EQ(first.waitForExit(), std::optional<DWORD>(0));
    EXPECT_TRUE(installation.serverRuns());
}

using ServerTray = PanelSession;

TEST_F(ServerTray, RightClickOnTheIconWhileHiddenShowsTheMenuOnly) {
    ProgramRun run(L"--silent");
    HWND window = run.window();
    ASSERT_NE(window, nullptr);
    ui::trayClick(window, WM_RBUTTONDOWN);
    HWND menu = ui::waitForPopupMenu(run.processId());
    ASSERT_NE(menu, nullptr);
    EXPECT_FALSE(ui::isVisible(window));
    ui::dismissPopup(menu);
}
