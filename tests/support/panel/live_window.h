#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <set>
#include <string>

#include "panel/app_data_manager.h"
#include "tests/support/host/model_installation.h"
#include "tests/support/host/model_recorders.h"
#include "tests/support/host/model_server.h"
#include "tests/support/host/model_system.h"
#include "tests/support/panel/recording_application.h"

// The whole panel for a test: the tree's layout file built with the recording native half, over
// an installation with the server double on a free port, in English, with message boxes and
// shell opens recorded. Every server that the test brought about is ended when it is over.
class PanelLiveWindow {
public:
    PanelLiveWindow();
    ~PanelLiveWindow();
    PanelLiveWindow(const PanelLiveWindow&) = delete;
    PanelLiveWindow& operator=(const PanelLiveWindow&) = delete;

    // The host of the process, made at the first call, which starts the server; a host made
    // before starts it too.
    void makeHost();
    // The application from the tree's layout file (or another), with the recording window, at
    // the design unit of 96 dots per inch whatever the screen.
    void build(const std::string& layoutPath);
    void build();

    RecordingApplication& application() { return *application_; }
    RecordingWindow& window() { return application_->recordingWindow(); }
    std::shared_ptr<RecordingWidget> widget(std::int32_t id) { return window().recorded(id); }
    std::shared_ptr<RecordingMenu> menu() { return window().recordedMenu(); }

    // One tick of the update timer.
    bool tick();
    // Waits until no long-running command is in progress; false after the time-out.
    bool waitUntilIdle(std::chrono::seconds timeout = std::chrono::seconds(60));
    // Waits until the server runs (and listens) or is gone; false after the time-out. A server
    // that came up is remembered for the end of the test.
    bool waitForServer(bool running, std::chrono::seconds timeout = std::chrono::seconds(60));
    // The master's pid of the pid file, 0 without one.
    std::uint32_t serverPid() const;
    // Ends the running server from outside, as a crash or the task manager would; its pid file
    // stays behind.
    void killServer();

    // Held first and let go last: a test that has every server killed by name waits meanwhile.
    HostModelServerLock serverLock{false};
    HostModelInstallation installation;
    HostModelServers servers{installation};
    HostModelBoxRecorder boxes;
    HostModelShellRecorder shell{true};
    std::uint16_t port = 0;

private:
    // Waits until no start or stop of the host is under way.
    void settleHost();

    bool hostMade_ = false;
    int savedLanguage_;
    std::unique_ptr<utils::AppDataManager> layout_;
    std::unique_ptr<RecordingApplication> application_;
};
