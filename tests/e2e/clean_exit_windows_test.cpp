#include "tests/e2e/panel_session_windows.h"
#include "tests/e2e/shell_stand_in_windows.h"

#include <cstdlib>
#include <memory>
#include <vector>

#include "host/detector/processes.h"

using namespace e2e;

namespace {

constexpr int English = 1;
constexpr int quitCommand = 6;
constexpr int informationLink = 16;
constexpr int problemLink = 17;
// Exit during a start, and during a report, this many times in a row. A start's cycle takes a few
// seconds under Wine and a report's several: the counts keep each test within about a minute in the
// test command. CVH_EXIT_CYCLES asks for a longer series, such as 50 before a release.
int cycles(int usual) {
    const char* asked = std::getenv("CVH_EXIT_CYCLES");
    const int count = asked != nullptr ? std::atoi(asked) : 0;
    return count > 0 ? count : usual;
}

bool processNamed(const wchar_t* name) {
    for (const detector::ProcessEntry& entry : detector::listProcesses()) {
        if (_wcsicmp(entry.exeName.c_str(), name) == 0) {
            return true;
        }
    }
    return false;
}

struct CleanExit : PanelSession {
    CleanExit() : PanelSession(ServerBuild::Windowless) {}

    // Exit from the tray menu, as the user chooses it; the program ended by itself with 0, and no
    // crash report of the system came up: Wine's debugger, which shows the crash box, or a box of
    // the program.
    void exitAndExpectCleanEnd(const ProgramRun& run, HWND window, int cycle) {
        ui::trayClick(window, WM_RBUTTONDOWN);
        HWND menu = ui::waitForPopupMenu(run.processId());
        ASSERT_NE(menu, nullptr) << "cycle " << cycle;
        ui::choosePopupEntry(menu, layout.menuPlaceOf(quitCommand));
        EXPECT_EQ(run.waitForExit(), std::optional<DWORD>(0)) << "cycle " << cycle;
        EXPECT_FALSE(processNamed(L"winedbg.exe")) << "cycle " << cycle;
        EXPECT_EQ(ui::findTopWindow(L"#32770", run.processId()), nullptr) << "cycle " << cycle;
    }

    // The panels of the test: kept until its end, since ending one ends what it started.
    std::vector<std::unique_ptr<ProgramRun>> runs;
};

} // namespace

// A start that waits for a worker that never listens lasts 90 s. Exit meanwhile ends the panel at
// once, with no crash, every time.
TEST_F(CleanExit, ExitDuringAStartEndsThePanelCleanlyEveryTime) {
    // A server is left running, so that each panel below finds one and opens at once.
    runs.push_back(std::make_unique<ProgramRun>());
    ASSERT_NE(startPanel(*runs.back()), nullptr);
    ProgramRun quit(L"--quit");
    ASSERT_EQ(quit.waitForExit(), std::optional<DWORD>(0));
    ASSERT_EQ(runs.back()->waitForExit(), std::optional<DWORD>(0));
    installation.writeFile(L"host_double.cfg", "never_listen\n");
    for (int cycle = 0; cycle < cycles(12); ++cycle) {
        runs.push_back(std::make_unique<ProgramRun>());
        ProgramRun& run = *runs.back();
        HWND window = run.window();
        ASSERT_NE(window, nullptr) << "cycle " << cycle;
        HWND runButton = control(window, RunButton);
        HWND stopButton = control(window, StopButton);
        ASSERT_TRUE(ui::waitUntil([&] {
            return ui::isEnabled(runButton) || ui::isEnabled(stopButton);
        })) << "cycle "
            << cycle;
        // The server goes; the watchdog or Run starts a new one, whose worker never listens.
        installation.killServer();
        ui::click(runButton);
        ASSERT_TRUE(ui::waitUntil([&] {
            return installation.serverRuns() && !ui::isEnabled(runButton) &&
                   !ui::isEnabled(stopButton);
        })) << "cycle "
            << cycle;
        exitAndExpectCleanEnd(run, window, cycle);
        if (HasFailure()) {
            return;
        }
    }
}

// "Get information" and "Report a problem" collect for seconds on the reports' lane, and Exit
// doesn't wait for them. Exit during either ends the panel with no crash, every time.
TEST_F(CleanExit, ExitDuringAReportEndsThePanelCleanlyEveryTime) {
    ShellStandIn shell{installation.pathOf(L"shell-records")};
    for (int cycle = 0; cycle < cycles(8); ++cycle) {
        runs.push_back(std::make_unique<ProgramRun>());
        ProgramRun& run = *runs.back();
        HWND window = startPanel(run);
        ASSERT_NE(window, nullptr) << "cycle " << cycle;
        ASSERT_TRUE(waitForText(control(window, StatusLabel), words("CVCP-000009", English)))
            << "cycle " << cycle;
        HWND link = control(window, cycle % 2 == 0 ? informationLink : problemLink);
        const std::size_t handed = shell.records().size();
        ui::clickLink(link);
        // The report is under way while its link is disabled. The mail's report can be made
        // before the link is looked at, on a machine that answers fast: the shell has the mail
        // then, and Exit meets the report's last steps.
        ASSERT_TRUE(ui::waitUntil([&] {
            return !ui::isEnabled(link) || shell.records().size() > handed;
        })) << "cycle "
            << cycle;
        exitAndExpectCleanEnd(run, window, cycle);
        if (HasFailure()) {
            return;
        }
    }
}
