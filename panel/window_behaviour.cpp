#include "panel/window_imp.h"

#include <exception>
#include <stdexcept>
#include <string>

#include "foundation/language.h"
#include "foundation/message_box.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"
#include "host/corvanite_host.h"
#include "host/host_options.h"
#include "host/log_level.h"
#include "panel/layout_ids.h"
#include "panel/tooltip_base.h"
#include "panel/tray_tip.h"
#include "panel/worker_thread.h"

std::atomic<bool> commandInProgress{false};

namespace {

bool isLongRunning(std::int32_t id) {
    return id == commandid::run || id == commandid::stop || id == commandid::logLevel;
}

// The worker takes its command from a fixed widget, whichever control or menu item asked for it.
std::int32_t carrierOf(std::int32_t id) {
    switch (id) {
    case commandid::run:
        return widgetid::runButton;
    case commandid::stop:
        return widgetid::stopButton;
    case commandid::logLevel:
        return widgetid::logLevelBox;
    default:
        return -1;
    }
}

// The log-level box goes with Run and Stop while a server operation runs; a layout without one
// still runs the server.
void enableIfPresent(const WindowImp& window, std::int32_t id, bool enabled) {
    std::shared_ptr<WidgetImp> found;
    try {
        found = window.widget(id);
    } catch (const std::logic_error&) {
        return;
    }
    found->setEnabled(enabled);
}

// The action's word in the failure box; none for an action without one.
std::string actionWord(std::int32_t id) {
    switch (id) {
    case commandid::run:
        return panelMessages.text(panelmsg::startAction);
    case commandid::stop:
        return panelMessages.text(panelmsg::stopAction);
    case commandid::logLevel:
        return panelMessages.text(panelmsg::logLevelAction);
    default:
        return std::string();
    }
}

bool busy() {
    return commandInProgress.load(std::memory_order_relaxed);
}

} // namespace

bool WindowImp::update() {
    const ServerStatus status = getHost()->serverStatus();
    const auto link = widget(widgetid::addressLink);
    link->setText(addressLinkText(status.port));
    link->setTooltipText(tooltipBase + utf8ToUtf16(status.port));
    widget(widgetid::timeLabel)->setText(status.time);
    // Stop still enabled means that the server ran at the last tick with nothing in progress:
    // it went down by itself. The watchdog starts it again when its restart policy lets it, by
    // a Run like any other, one operation among the others.
    const bool wentDown = !status.running && widget(widgetid::stopButton)->isEnabled();
    if (watchdog_.tick(status.running, wentDown, busy())) {
        runOnWorker(commandid::run);
    }
    const bool failed = watchdog_.failed() && !status.running;
    // A port that another program held at the last start is told until the next start.
    const std::optional<HeldPort> held = status.running ? std::nullopt : getHost()->heldPort();
    std::string state = statusText(status.running);
    if (failed) {
        state = panelMessages.text(panelmsg::failed);
    } else if (held) {
        state = panelMessages.format(panelmsg::portHeldStatus, std::to_string(held->port).c_str());
    }
    widget(widgetid::statusLabel)->setText(state);
    if (menu_) {
        // The tray tells why the server failed, in its tooltip for as long as it lasts and once
        // in a balloon; or which program holds its port.
        std::string notice;
        if (failed) {
            notice = failureNotice(watchdog_.cause());
        } else if (held) {
            notice = heldport::heldPortText(held->port, held->holder, " ");
        }
        menu_->setNotice(notice);
        if (failed && !failureAnnounced_) {
            menu_->announce(notice);
        }
        menu_->update();
    }
    failureAnnounced_ = failed;
    widget(widgetid::runButton)->setEnabled(!busy() && !status.running);
    widget(widgetid::stopButton)->setEnabled(!busy() && status.running);
    enableIfPresent(*this, widgetid::logLevelBox, !busy());
    if (menu_) {
        menu_->enableItem(commandid::run, !busy());
        menu_->enableItem(commandid::stop, !busy());
    }
    return status.running;
}

void WindowImp::updateTexts() {
    setCaption(panelMessages.text(title_.c_str()));
    // The tray belongs to the window; a window whose tray could not be made fails here.
    if (!menu_) {
        throw std::logic_error("menu is not found");
    }
    menu_->updateTexts();
    for (const WidgetEntry& entry : widgets_) {
        entry.widget->updateText();
    }
}

bool WindowImp::runCommand(std::int32_t id) {
    if (isLongRunning(id)) {
        // The user's Run ends a failure and starts at once; so does any other command of theirs.
        watchdog_.commandByUser();
        runOnWorker(id);
        return true;
    }
    for (const WidgetEntry& entry : widgets_) {
        if (entry.widget->commandId() == id) {
            entry.widget->execute();
            return true;
        }
    }
    return menu_ ? menu_->execute(id) : false;
}

void WindowImp::runOnWorker(std::int32_t id) {
    // One long-running command at a time, whoever asks: a second one meanwhile is dropped.
    bool idle = false;
    if (!commandInProgress.compare_exchange_strong(idle, true)) {
        return;
    }
    if (!claimCarrier(id)) {
        commandInProgress.store(false);
        return;
    }
    widget(widgetid::runButton)->setEnabled(false);
    widget(widgetid::stopButton)->setEnabled(false);
    enableIfPresent(*this, widgetid::logLevelBox, false);
    if (menu_) {
        menu_->enableItem(id, false);
    }
    runOnWorkerThread([window = shared_from_this(), id] { window->finishOnWorker(id); });
}

bool WindowImp::claimCarrier(std::int32_t id) const {
    std::shared_ptr<Command> command;
    try {
        command = widget(carrierOf(id))->command();
    } catch (const std::logic_error&) {
        // No carrier: the worker meets the same failure and tells it.
        return true;
    }
    return !command || command->claim();
}

void WindowImp::finishOnWorker(std::int32_t id) {
    try {
        widget(carrierOf(id))->execute();
    } catch (...) {
        // The box's caption is the title's catalogue id as it stands, not its words.
        try {
            const std::string text =
                panelMessages.format(panelmsg::actionFailed, actionWord(id).c_str(), productName);
            showMessageBox(title_, text, MessageBoxKind::error);
        } catch (...) {
            // Nothing is left to tell the user with; the panel goes on.
        }
    }
    commandInProgress.store(false, std::memory_order_relaxed);
}

void WindowImp::changeLanguage(std::int32_t index) {
    applyLanguage(index);
    updateTexts();
    refreshTab(widget(widgetid::tabPanel)->selectedIndex());
}

void WindowImp::changeLogLevel(std::int32_t index) {
    setSelectedLogLevel(static_cast<std::uint8_t>(index));
    runCommand(commandid::logLevel);
}

bool WindowImp::commandEvent(std::int32_t id) {
    if (id == commandid::portAutoselect) {
        setPortAutoselect(widget(widgetid::portAutoselectBox)->isChecked());
        return false;
    }
    if (id == commandid::useUncPaths) {
        setUseUncPaths(widget(widgetid::uncPathsBox)->isChecked());
        return false;
    }
    return runCommand(id);
}

void WindowImp::changeTab() {
    showTab(widget(widgetid::tabPanel)->selectedIndex());
}
