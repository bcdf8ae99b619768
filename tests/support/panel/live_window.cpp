#include "tests/support/panel/live_window.h"

#include <thread>

#include "foundation/language.h"
#include "foundation/message_catalogue.h"
#include "host/corvanite_host.h"
#include "host/host_facts.h"
#include "host/log_level.h"
#include "panel/window_imp.h"
#include "tests/support/host/model_system.h"
#include "tests/support/panel/layout_documents.h"

namespace {

using namespace std::chrono_literals;

template <typename Condition> bool waitFor(Condition condition, std::chrono::seconds timeout) {
    const auto end = std::chrono::steady_clock::now() + timeout;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(50ms);
    }
    return true;
}

} // namespace

PanelLiveWindow::PanelLiveWindow() : savedLanguage_(panelMessages.language.load()) {
    panelMessages.setLanguage(Language::English);
    setSelectedLogLevel(0);
    commandInProgress.store(false);
    port = hostModelFreePort();
    installation.makeServerInstallation(port, "info");
}

PanelLiveWindow::~PanelLiveWindow() {
    waitUntilIdle();
    settleHost();
    servers.remember();
    servers.endAll();
    application_.reset();
    setSelectedLogLevel(0);
    panelMessages.setLanguage(savedLanguage_);
}

void PanelLiveWindow::makeHost() {
    // A host left by an earlier test of the same process starts this test's server anew.
    getHost()->startServer();
    hostMade_ = true;
    servers.remember();
}

void PanelLiveWindow::settleHost() {
    if (!hostMade_) {
        return;
    }
    // A watchdog may be starting a server on a thread of its own: the host stays idle for half a
    // second before its server counts as known.
    int idleChecks = 0;
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(120);
    while (idleChecks < 10 && std::chrono::steady_clock::now() < end) {
        idleChecks = getHost()->busy() ? 0 : idleChecks + 1;
        std::this_thread::sleep_for(50ms);
    }
}

void PanelLiveWindow::build(const std::string& layoutPath) {
    layout_ = std::make_unique<utils::AppDataManager>(layoutPath, DisplayScale{});
    application_ = std::make_unique<RecordingApplication>(makeRecordingWindow(*layout_), *layout_);
}

void PanelLiveWindow::build() {
    build(treeLayoutPath());
}

bool PanelLiveWindow::tick() {
    return window().update();
}

bool PanelLiveWindow::waitUntilIdle(std::chrono::seconds timeout) {
    return waitFor([] { return !commandInProgress.load(); }, timeout);
}

bool PanelLiveWindow::waitForServer(bool running, std::chrono::seconds timeout) {
    const bool reached = waitFor(
        [running] {
            // Up means listening, as the status refresh sees it; a busy host reads as stopped.
            return running ? getHost()->serverStatus().running : !isServerRunning();
        },
        timeout);
    if (reached && running) {
        servers.remember();
    }
    return reached;
}

std::uint32_t PanelLiveWindow::serverPid() const {
    try {
        return readServerPid();
    } catch (...) {
        return 0;
    }
}

void PanelLiveWindow::killServer() {
    servers.remember();
    servers.endAll();
}
