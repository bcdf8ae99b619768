#include "tests/e2e/panel_session_windows.h"

#include <algorithm>
#include <string>
#include <thread>

using namespace e2e;

namespace {

constexpr int English = 1;
// What the server double writes to its error log when it fails on purpose after 200 ms.
constexpr const wchar_t* planted = L"the host double failed on purpose after 200 ms";

// Each start of the failing double writes one "[emerg]" line before it ends.
std::size_t emergLines(const Installation& installation) {
    const std::string log = installation.readFile(L"logs/error.log");
    std::size_t count = 0;
    for (std::size_t at = log.find("[emerg]"); at != std::string::npos;
         at = log.find("[emerg]", at + 1)) {
        ++count;
    }
    return count;
}

bool trayTipHolds(const std::wstring& words) {
    const auto tips = ui::trayTips();
    return std::any_of(tips.begin(), tips.end(), [&](const std::wstring& tip) {
        return tip.find(words) != std::wstring::npos;
    });
}

} // namespace

using ServerFailure = PanelSession;

// A server with a bad configuration falls right after every start. The panel starts it a few
// times, gives up within a minute, shows Failed, and the tray icon's tip gives the line of the
// error log that says why. Run, once the configuration is mended, starts it at once.
TEST_F(ServerFailure, AServerThatKeepsFallingEndsFailedWithTheLogsLineInTheTrayTip) {
    installation.writeFile(L"host_double.cfg", "emerg_after=200\n");
    const auto begin = std::chrono::steady_clock::now();
    ProgramRun run(L"--silent");
    HWND window = run.window(30s);
    ASSERT_NE(window, nullptr);
    ASSERT_TRUE(waitForText(control(window, StatusLabel), words("CVCP-000011", English), 60s));
    EXPECT_LE(std::chrono::steady_clock::now() - begin, 60s);
    EXPECT_TRUE(ui::waitUntil([] { return trayTipHolds(planted); }, 10s));
    // No start after the failure: at most 6 in the minute.
    const std::size_t launches = emergLines(installation);
    EXPECT_GE(launches, 5u);
    EXPECT_LE(launches, 6u);
    const auto minute = begin + 60s;
    if (std::chrono::steady_clock::now() < minute) {
        std::this_thread::sleep_until(std::min(minute, std::chrono::steady_clock::now() + 8s));
    }
    EXPECT_EQ(emergLines(installation), launches);
    EXPECT_TRUE(ui::isEnabled(control(window, RunButton)));
    EXPECT_FALSE(installation.serverRuns());

    installation.removeFile(L"host_double.cfg");
    ui::click(control(window, RunButton));
    EXPECT_TRUE(installation.waitForServer(true, 20s));
    EXPECT_TRUE(waitForText(control(window, StatusLabel), words("CVCP-000009", English)));
    EXPECT_TRUE(ui::waitUntil([] { return !trayTipHolds(planted); }, 10s));
}
