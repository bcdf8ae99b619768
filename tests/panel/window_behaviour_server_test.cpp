#include "panel/window_imp.h"

#include <atomic>
#include <chrono>
#include <fstream>
#include <stdexcept>
#include <string>
#include <thread>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "diagnostics/host_section.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"
#include "host/corvanite_host.h"
#include "host/detector/launch_process.h"
#include "host/detector/processes.h"
#include "host/held_port.h"
#include "host/host_facts.h"
#include "host/log_level.h"
#include "panel/tray_tip.h"
#include "panel/window_imp.h"
#include "tests/support/foundation/temp_folder.h"
#include "tests/support/host/host_double.h"
#include "tests/support/panel/expect_failure.h"
#include "tests/support/panel/layout_documents.h"
#include "tests/support/panel/live_window.h"

// The update cycle, the watchdog and the long-running commands of the layout file's window over
// the server double.

namespace {

using namespace std::chrono_literals;

struct WindowUpdateTest : testing::Test {
    PanelLiveWindow panel;

    // The panel over its server, after the first tick; false when the server didn't come up.
    bool showsARunningServer() {
        panel.makeHost();
        panel.build();
        if (!panel.waitForServer(true)) {
            return false;
        }
        panel.tick();
        return true;
    }

    // The worker's box for a failed start, under the title's raw catalogue id.
    void expectOneStartupFailureBox() const {
        ASSERT_EQ(panel.boxes.boxes().size(), 1u);
        EXPECT_EQ(panel.boxes.boxes()[0].caption, L"CVCP-001001");
        EXPECT_EQ(panel.boxes.boxes()[0].text,
                  L"An error occurred during the startup process of Corvanite");
    }

    std::string link() const {
        return "<a>" + ServiceDomain + ":" + std::to_string(panel.port) + "</a>";
    }
};

TEST_F(WindowUpdateTest, ATickWritesLinkTooltipTimeAndStatusOfARunningServer) {
    panel.makeHost();
    panel.build();
    ASSERT_TRUE(panel.waitForServer(true));
    std::this_thread::sleep_for(1100ms);
    EXPECT_TRUE(panel.tick());
    EXPECT_EQ(panel.widget(2)->shown(), link());
    EXPECT_EQ(panel.widget(2)->tooltip(),
              L"https://" + utf8ToUtf16(ServiceDomain) + L":" + std::to_wstring(panel.port));
    EXPECT_EQ(panel.widget(3)->shown(), "Running");
    EXPECT_NE(panel.widget(4)->shown(), "-");
    EXPECT_FALSE(panel.widget(7)->isEnabled());
    EXPECT_TRUE(panel.widget(8)->isEnabled());
    EXPECT_NE(panel.menu()->entry(2), nullptr);
    EXPECT_TRUE(panel.menu()->entry(2)->enabled);
    EXPECT_TRUE(panel.boxes.boxes().empty());
}

// The status and the menu's choice between Run and Stop share the master that the tick finds:
// with the server up a tick takes no process snapshot, and after the pid file changed it takes the
// status's one alone.
TEST_F(WindowUpdateTest, AWarmTickTakesNoProcessSnapshot) {
    ASSERT_TRUE(showsARunningServer());
    const std::uint64_t before = detector::snapshotCount();
    EXPECT_TRUE(panel.tick());
    EXPECT_EQ(detector::snapshotCount(), before);
    EXPECT_EQ(panel.widget(3)->shown(), "Running");
    EXPECT_NE(panel.menu()->entry(2), nullptr);
}

TEST_F(WindowUpdateTest, ATickAfterAChangeOfThePidFileLooksForTheMasterOnce) {
    ASSERT_TRUE(showsARunningServer());
    panel.installation.writeText("nginx.pid", panel.installation.readText("nginx.pid"));
    const std::uint64_t before = detector::snapshotCount();
    EXPECT_TRUE(panel.tick());
    EXPECT_EQ(detector::snapshotCount() - before, 1u);
    EXPECT_EQ(panel.widget(3)->shown(), "Running");
    EXPECT_NE(panel.menu()->entry(2), nullptr);
}

TEST_F(WindowUpdateTest, AllTextsAreWrittenAtEveryTick) {
    ASSERT_TRUE(showsARunningServer());
    panel.tick();
    int statusWrites = 0;
    for (const std::string& call : panel.widget(3)->calls()) {
        statusWrites += call == "showText Running" ? 1 : 0;
    }
    EXPECT_EQ(statusWrites, 2);
}

TEST_F(WindowUpdateTest, WhileACommandIsInProgressNeitherRunNorStopIsEnabled) {
    panel.makeHost();
    panel.build();
    ASSERT_TRUE(panel.waitForServer(true));
    commandInProgress.store(true);
    panel.tick();
    commandInProgress.store(false);
    EXPECT_FALSE(panel.widget(7)->isEnabled());
    EXPECT_FALSE(panel.widget(8)->isEnabled());
    EXPECT_FALSE(panel.menu()->entry(2)->enabled);
    EXPECT_EQ(panel.menu()->calls().back(), "enableItem 2 0");
}

TEST_F(WindowUpdateTest, StopPressedByTheUserDisablesBothAndTheWatchdogStaysQuiet) {
    ASSERT_TRUE(showsARunningServer());
    ASSERT_TRUE(panel.widget(8)->isEnabled());
    EXPECT_TRUE(panel.window().runCommand(2));
    EXPECT_FALSE(panel.widget(7)->isEnabled());
    EXPECT_FALSE(panel.widget(8)->isEnabled());
    ASSERT_TRUE(panel.waitUntilIdle());
    EXPECT_FALSE(isServerRunning());
    for (int i = 0; i < 3; ++i) {
        EXPECT_FALSE(panel.tick());
        std::this_thread::sleep_for(300ms);
    }
    EXPECT_EQ(panel.widget(3)->shown(), "Stopped");
    EXPECT_TRUE(panel.widget(7)->isEnabled());
    EXPECT_FALSE(panel.widget(8)->isEnabled());
    EXPECT_FALSE(isServerRunning());
    EXPECT_EQ(panel.serverPid(), 0u);
    EXPECT_TRUE(panel.boxes.boxes().empty());
}

TEST_F(WindowUpdateTest, AServerKilledFromOutsideIsStartedAgainOnce) {
    ASSERT_TRUE(showsARunningServer());
    const std::uint32_t first = panel.serverPid();
    panel.killServer();
    EXPECT_FALSE(panel.tick());
    EXPECT_EQ(panel.widget(3)->shown(), "Stopped");
    EXPECT_FALSE(panel.widget(8)->isEnabled());
    ASSERT_TRUE(panel.waitForServer(true));
    const std::uint32_t second = panel.serverPid();
    EXPECT_NE(second, first);
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(panel.tick());
        EXPECT_EQ(panel.serverPid(), second);
    }
    EXPECT_EQ(panel.widget(3)->shown(), "Running");
    EXPECT_TRUE(panel.widget(8)->isEnabled());
}

TEST_F(WindowUpdateTest, TheWatchdogsRestartIsOneOperationWithRunAndStopDisabled) {
    ASSERT_TRUE(showsARunningServer());
    panel.killServer();
    EXPECT_FALSE(panel.tick());
    // Claimed before its thread starts: no refresh meets the restart's first steps.
    EXPECT_TRUE(getHost()->busy());
    EXPECT_FALSE(panel.widget(7)->isEnabled());
    EXPECT_FALSE(panel.widget(8)->isEnabled());
    // The level box stays usable: a choice meanwhile waits for the restart.
    EXPECT_TRUE(panel.widget(13)->isEnabled());
    ASSERT_TRUE(panel.waitUntilIdle());
    ASSERT_TRUE(panel.waitForServer(true));
    EXPECT_TRUE(panel.tick());
    EXPECT_FALSE(panel.widget(7)->isEnabled());
    EXPECT_TRUE(panel.widget(8)->isEnabled());
    EXPECT_TRUE(panel.widget(13)->isEnabled());
    EXPECT_TRUE(panel.boxes.boxes().empty());
}

TEST_F(WindowUpdateTest, AFailedRestartByTheWatchdogIsShownAndThePanelGoesOn) {
    ASSERT_TRUE(showsARunningServer());
    // An installation half way through an upgrade.
    panel.installation.remove("logs");
    panel.killServer();
    EXPECT_FALSE(panel.tick());
    ASSERT_TRUE(panel.waitUntilIdle());
    expectOneStartupFailureBox();
    EXPECT_FALSE(panel.tick());
    EXPECT_TRUE(panel.widget(7)->isEnabled());
    EXPECT_FALSE(panel.widget(8)->isEnabled());
}

// A server that falls right after each start: the watchdog gives up, the status reads Failed, the
// tray's tooltip gives the line of the error log, one balloon says it, and Run starts at once.
TEST_F(WindowUpdateTest, AServerThatKeepsFallingEndsFailedWithTheLogsLineInTheTray) {
    ASSERT_TRUE(showsARunningServer());
    std::atomic<std::int64_t> now{50'000'000};
    panel.window().setWatchdogClock([&now] { return now.load(); });
    panel.installation.writeText("host_double.cfg", "emerg_after=200\n");
    panel.killServer();
    int ticks = 0;
    while (panel.widget(3)->shown() != "Failed" && ticks < 200) {
        panel.tick();
        ASSERT_TRUE(panel.waitUntilIdle());
        now += 1000;
        ++ticks;
    }
    ASSERT_EQ(panel.widget(3)->shown(), "Failed");
    const std::string planted = "the host double failed on purpose after 200 ms";
    const std::string tip = panel.menu()->trayTip();
    EXPECT_EQ(tip.rfind(trayTipText("CVCP-001001") + "\n", 0), 0u) << tip;
    EXPECT_NE(tip.find("[emerg]"), std::string::npos) << tip;
    EXPECT_NE(tip.find(planted), std::string::npos) << tip;
    ASSERT_EQ(panel.menu()->balloons().size(), 1u);
    EXPECT_EQ(panel.menu()->balloons()[0], panel.menu()->notice());
    // Failed it stays, and it is said once.
    for (int i = 0; i < 5; ++i) {
        now += 60'000;
        EXPECT_FALSE(panel.tick());
        EXPECT_FALSE(commandInProgress.load());
    }
    EXPECT_EQ(panel.widget(3)->shown(), "Failed");
    EXPECT_EQ(panel.menu()->balloons().size(), 1u);
    EXPECT_TRUE(panel.boxes.boxes().empty());

    // The configuration mended, Run starts at once and the tray forgets the failure.
    panel.installation.remove("host_double.cfg");
    EXPECT_TRUE(panel.window().runCommand(1));
    ASSERT_TRUE(panel.waitUntilIdle());
    ASSERT_TRUE(panel.waitForServer(true));
    EXPECT_TRUE(panel.tick());
    EXPECT_EQ(panel.widget(3)->shown(), "Running");
    EXPECT_EQ(panel.menu()->trayTip(), trayTipText("CVCP-001001"));
    EXPECT_EQ(panel.menu()->balloons().size(), 1u);
}

// Another program on the server's port: Run tells it in a box at once, and the status and the
// tray's tooltip say so until the next start.
TEST_F(WindowUpdateTest, RunWithThePortHeldShowsItInTheStatusAndTheTrayUntilTheNextStart) {
    panel.makeHost();
    getHost()->stopServer();
    panel.build();
    panel.widget(8)->setEnabled(false);
    panel.tick();
    // A name of its own: only this test's holder is ended at its end.
    const std::string holderName = uniqueExecutableName("PortHolder");
    panel.installation.copyTool("PortHolder.exe", holderName);
    ASSERT_TRUE(detector::launchProcess(panel.installation.file(holderName),
                                        " " + std::to_string(panel.port) + " --for 30"));
    ASSERT_TRUE(eventually([this] {
        return heldport::portHolder(
                   heldport::gatherPortFacts(panel.port, installPathOf("CorvaniteHost.exe")),
                   panel.port)
            .has_value();
    }));
    EXPECT_TRUE(panel.window().runCommand(1));
    ASSERT_TRUE(panel.waitUntilIdle());
    ASSERT_EQ(panel.boxes.boxes().size(), 1u);
    EXPECT_NE(panel.boxes.boxes()[0].text.find(utf8ToUtf16(holderName) + L" (process "),
              std::wstring::npos);
    EXPECT_FALSE(panel.tick());
    const std::string port = std::to_string(panel.port);
    EXPECT_EQ(panel.widget(3)->shown(), "Port " + port + " is held");
    const std::string tip = panel.menu()->trayTip();
    EXPECT_NE(tip.find("The server can't start: port " + port + " is held. It is held by " +
                       holderName + " (process "),
              std::string::npos)
        << tip;
    EXPECT_TRUE(panel.menu()->balloons().empty());

    for (const std::uint32_t pid : pidsNamed(holderName)) {
        detector::native::terminateProcess(pid);
    }
    ASSERT_TRUE(eventually([this] {
        return !heldport::portHolder(
                    heldport::gatherPortFacts(panel.port, installPathOf("CorvaniteHost.exe")),
                    panel.port)
                    .has_value();
    }));
    EXPECT_TRUE(panel.window().runCommand(1));
    ASSERT_TRUE(panel.waitUntilIdle());
    ASSERT_TRUE(panel.waitForServer(true));
    EXPECT_TRUE(panel.tick());
    EXPECT_EQ(panel.widget(3)->shown(), "Running");
    EXPECT_EQ(panel.menu()->trayTip(), trayTipText("CVCP-001001"));
}

TEST_F(WindowUpdateTest, RefreshesOfTheTimerAndOfAReportMeetTheWatchdogsRestartSafely) {
    ASSERT_TRUE(showsARunningServer());
    std::atomic<bool> done{false};
    std::atomic<int> reportRefreshes{0};
    // The report's thread asks for the state as the information report does.
    std::thread report([&] {
        const HostSources sources = systemHostSources();
        while (!done.load()) {
            sources.status();
            ++reportRefreshes;
            std::this_thread::sleep_for(2ms);
        }
    });
    panel.killServer();
    // The timer's ticks, the first of which starts the watchdog, until the server is back.
    const bool back = eventually([&] { return panel.tick() && !commandInProgress.load(); },
                                 std::chrono::seconds(60));
    done.store(true);
    report.join();
    EXPECT_TRUE(back);
    EXPECT_GT(reportRefreshes.load(), 0);
    EXPECT_EQ(panel.widget(3)->shown(), "Running");
    EXPECT_EQ(panel.widget(2)->shown(), link());
}

TEST_F(WindowUpdateTest, AServerNotRunningAtStartIsStartedByTheFirstTick) {
    panel.makeHost();
    getHost()->stopServer();
    ASSERT_FALSE(isServerRunning());
    panel.build();
    for (const WidgetEntry& entry : panel.window().widgets()) {
        EXPECT_TRUE(entry.widget->isEnabled()) << entry.id;
    }
    EXPECT_FALSE(panel.tick());
    ASSERT_TRUE(panel.waitForServer(true));
    EXPECT_TRUE(panel.tick());
    EXPECT_TRUE(panel.widget(8)->isEnabled());
}

TEST_F(WindowUpdateTest, WithPortDashTheLinkShowsADashAndTheTooltipEndsInADash) {
    panel.makeHost();
    getHost()->stopServer();
    panel.build();
    // As after a stop by the user: the watchdog has nothing to do.
    panel.widget(8)->setEnabled(false);
    EXPECT_FALSE(panel.tick());
    EXPECT_EQ(panel.widget(2)->shown(), "-");
    EXPECT_EQ(panel.widget(2)->tooltip(), L"https://" + utf8ToUtf16(ServiceDomain) + L":-");
    EXPECT_EQ(panel.widget(4)->shown(), "-");
    EXPECT_EQ(panel.widget(3)->shown(), "Stopped");
    EXPECT_TRUE(panel.widget(7)->isEnabled());
}

TEST_F(WindowUpdateTest, RunStartsTheServerOnItsWorker) {
    panel.makeHost();
    getHost()->stopServer();
    panel.build();
    panel.widget(8)->setEnabled(false);
    panel.tick();
    EXPECT_TRUE(panel.window().runCommand(1));
    EXPECT_TRUE(commandInProgress.load());
    ASSERT_TRUE(panel.waitUntilIdle());
    ASSERT_TRUE(panel.waitForServer(true));
    EXPECT_TRUE(panel.tick());
    EXPECT_FALSE(panel.widget(7)->isEnabled());
    EXPECT_TRUE(panel.widget(8)->isEnabled());
}

TEST_F(WindowUpdateTest, SelectingALogLevelWhileTheServerIsStoppedStoresItAndRunsCommandNine) {
    panel.makeHost();
    getHost()->stopServer();
    panel.build();
    panel.window().changeLogLevel(2);
    EXPECT_EQ(selectedLogLevel.load(), 2);
    ASSERT_TRUE(panel.waitUntilIdle());
    EXPECT_NE(panel.installation.readText("conf/nginx.conf").find("debug;"), std::string::npos);
    EXPECT_FALSE(isServerRunning());
    EXPECT_TRUE(panel.boxes.boxes().empty());
}

TEST_F(WindowUpdateTest, AFailedStartOnTheWorkerShowsTheStartupBox) {
    panel.makeHost();
    getHost()->stopServer();
    panel.build();
    panel.installation.remove("conf/nginx.conf");
    panel.window().runCommand(1);
    ASSERT_TRUE(panel.waitUntilIdle());
    expectOneStartupFailureBox();
    EXPECT_FALSE(commandInProgress.load());
}

TEST_F(WindowUpdateTest, ALayoutWithoutARequiredWidgetFailsAtTheFirstTick) {
    panel.makeHost();
    nlohmann::json document = nlohmann::json::parse(std::ifstream(nativePath(treeLayoutPath())));
    document["widgets"].erase("syslinks");
    TempFolder folder;
    panel.build(writeLayoutFile(folder, document.dump()));
    expectFailure<std::logic_error>([&] { panel.tick(); }, "widget is not found");
}

TEST_F(WindowUpdateTest, TimeInAnotherWidgetShowsTheTimeOfStartAndIsNotUpdated) {
    panel.makeHost();
    ASSERT_TRUE(panel.waitForServer(true));
    std::this_thread::sleep_for(1100ms);
    nlohmann::json document = nlohmann::json::parse(std::ifstream(nativePath(treeLayoutPath())));
    nlohmann::json extra = document["widgets"]["labels"][0];
    extra["id"] = 40;
    extra["text"] = "time";
    document["widgets"]["labels"].push_back(extra);
    TempFolder folder;
    panel.build(writeLayoutFile(folder, document.dump()));
    const std::string atStart = panel.widget(40)->shown();
    EXPECT_NE(atStart, "-");
    std::this_thread::sleep_for(2100ms);
    panel.tick();
    EXPECT_EQ(panel.widget(40)->shown(), atStart);
    EXPECT_NE(panel.widget(4)->shown(), atStart);
    EXPECT_EQ(panel.widget(40)->text(), "");
}

} // namespace
