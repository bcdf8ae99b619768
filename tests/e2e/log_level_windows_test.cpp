#include "tests/e2e/panel_session_windows.h"

using namespace e2e;

using LogLevelChoice = PanelSession;

TEST_F(LogLevelChoice, StartsOnTheLevelOfNginxConf) {
    ProgramRun run;
    HWND window = startPanel(run);
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(ui::comboSelection(control(window, LogLevelBox)), 1);
}

TEST_F(LogLevelChoice, RewritesTheLevelInNginxConfAndRestartsTheServer) {
    ProgramRun run;
    HWND window = startPanel(run);
    ASSERT_NE(window, nullptr);
    const auto before = installation.serverProcesses();
    const std::string masterBefore = installation.readFile(L"nginx.pid");
    ui::chooseComboEntry(control(window, LogLevelBox), 2);
    EXPECT_TRUE(ui::waitUntil([&] { return installation.confHoldsLevel("debug"); }));
    EXPECT_TRUE(ui::waitUntil([&] {
        const auto now = installation.serverProcesses();
        return !now.empty() && now != before;
    }));
    // The restart ends with a new master that runs, shown as such.
    EXPECT_TRUE(ui::waitUntil([&] {
        const std::string master = installation.readFile(L"nginx.pid");
        return !master.empty() && master != masterBefore;
    }));
    EXPECT_TRUE(waitForText(control(window, StatusLabel), words("CVCP-000009", 1)));
}

TEST_F(LogLevelChoice, WhileTheServerIsStoppedTheLevelIsStoredAllTheSame) {
    ProgramRun run;
    HWND window = startPanel(run);
    ASSERT_NE(window, nullptr);
    HWND stop = control(window, StopButton);
    ASSERT_TRUE(ui::waitUntil([&] { return ui::isEnabled(stop); }));
    ui::click(stop);
    ASSERT_TRUE(installation.waitForServer(false));
    // The box stays usable while the stop runs.
    EXPECT_TRUE(ui::isEnabled(control(window, LogLevelBox)));
    ui::chooseComboEntry(control(window, LogLevelBox), 0);
    EXPECT_TRUE(ui::waitUntil([&] { return installation.confHoldsLevel("error"); }));
}

TEST_F(LogLevelChoice, TwoChoicesInARowLeaveTheSecondInNginxConfAndOneServer) {
    ProgramRun run;
    HWND window = startPanel(run);
    ASSERT_NE(window, nullptr);
    const std::size_t processes = installation.serverProcesses().size();
    HWND box = control(window, LogLevelBox);
    ui::chooseComboEntryNow(box, 2);
    ui::chooseComboEntryNow(box, 0);
    // The second choice waits for the first one's restart and is applied right after it.
    EXPECT_TRUE(ui::waitUntil([&] { return installation.confHoldsLevel("error"); }));
    // Stop is disabled from the first choice to the end of the last operation.
    EXPECT_TRUE(ui::waitUntil([&] { return ui::isEnabled(control(window, StopButton)); }));
    EXPECT_TRUE(waitForText(control(window, StatusLabel), words("CVCP-000009", 1)));
    EXPECT_EQ(installation.serverProcesses().size(), processes);
    EXPECT_EQ(ui::comboSelection(box), 0);
    EXPECT_TRUE(installation.confHoldsLevel("error"));
}
