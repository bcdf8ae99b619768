#include "tests/e2e/panel_session_windows.h"

#include <thread>

using namespace e2e;

namespace {
constexpr int English = 1;
}

using WindowKeys = PanelSession;

// Esc dismisses the open window; Enter with no button in focus does nothing. Neither may stop or
// restart the signing service.
TEST_F(WindowKeys, EscAndEnterOnTheOpenWindowLeaveTheServerWithItsPid) {
    ProgramRun run;
    HWND window = startPanel(run);
    ASSERT_NE(window, nullptr);
    // The keys go to the open window: it is shown once the program enters its message loop.
    ASSERT_TRUE(ui::waitUntil([&] { return ui::isVisible(window); }));
    ASSERT_TRUE(ui::waitUntil([&] { return ui::isEnabled(control(window, StopButton)); }));
    const std::vector<DWORD> server = installation.serverProcesses();

    ASSERT_TRUE(ui::pressKey(window, VK_ESCAPE));
    EXPECT_TRUE(ui::waitUntil([&] { return !ui::isVisible(window); }));

    ui::trayClick(window, WM_LBUTTONDOWN);
    ASSERT_TRUE(ui::waitUntil([&] { return ui::isVisible(window); }));
    ASSERT_TRUE(ui::pressKey(window, VK_RETURN));
    std::this_thread::sleep_for(std::chrono::milliseconds(3 * layout.updateTime() + 500));
    EXPECT_EQ(installation.serverProcesses(), server);
    EXPECT_TRUE(waitForText(control(window, StatusLabel), words("CVCP-000009", English)));
    EXPECT_TRUE(ui::isEnabled(control(window, StopButton)));
}
