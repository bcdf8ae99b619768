#include "panel/window_imp.h"

#include <exception>
#include <stdexcept>
#include <string>
#include <utility>

#include "foundation/language.h"
#include "foundation/message_box.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"
#include "foundation/work_lane.h"
#include "host/corvanite_host.h"
#include "host/host_options.h"
#include "host/log_level.h"
#include "panel/command_table.h"
#include "panel/layout_ids.h"
#include "panel/startup_state.h"
#include "panel/tray_tip.h"

std::atomic<bool> commandInProgress{false};

namespace {

// The action's word in the failure box; none for an action without one.
std::string actionWord(std::int32_t id) {
    const char* word = actionWordOf(id);
    return word != nullptr ? panelMessages.text(word) : std::string();
}

bool busy() {
    return commandInProgress.load(std::memory_order_relaxed);
}

} // namespace

WindowImp::WindowImp(std::string title, PixelPair size) : title_(std::move(title)), size_(size) {}

void WindowImp::showMenu() {
    if (menu_) {
        menu_->popup();
    }
}

void WindowImp::addMenuItem(const MenuItem& item) {
    if (menu_) {
        menu_->addItem(item);
    }
}

bool WindowImp::isWidgetEnabled(std::int32_t id) const {
    return widget(id)->isEnabled();
}

void WindowImp::addWidget(WidgetEntry entry) {
    widgets_.push_back(std::move(entry));
}

std::shared_ptr<WidgetImp> WindowImp::widget(std::int32_t id) const {
    for (const WidgetEntry& entry : widgets_) {
        if (entry.id == id) {
            return entry.widget;
        }
    }
    throw std::logic_error("widget is not found");
}

void WindowImp::showTab(std::int32_t index) {
    // The tab control counts its tabs in 16 bits.
    const std::int32_t tab = static_cast<std::int16_t>(index);
    for (const WidgetEntry& entry : widgets_) {
        const std::int32_t own = entry.widget->tabIndex();
        if (own != -1 && own != tab) {
            entry.widget->setVisible(false);
        }
    }
    for (const WidgetEntry& entry : widgets_) {
        const std::int32_t own = entry.widget->tabIndex();
        if (own != -1 && own == tab) {
            entry.widget->setVisible(true);
        }
    }
}

void WindowImp::refreshTab(std::int32_t index) {
    for (const WidgetEntry& entry : widgets_) {
        const std::int32_t own = entry.widget->tabIndex();
        if (own != -1 && own == index) {
            entry.widget->setVisible(false);
            entry.widget->setVisible(true);
        }
    }
}

bool WindowImp::update() {
    const ServerStatus status = getHost()->serverStatus();
    const auto link = widget(widgetid::addressLink);
    link->setText(addressLinkText(status.port));
    link->setTooltipText(serviceUrl(status.port));
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
        if (status.masterRunning) {
            menu_->update(*status.masterRunning);
        } else {
            menu_->update();
        }
    }
    failureAnnounced_ = failed;
    widget(widgetid::runButton)->setEnabled(!busy() && !status.running);
    widget(widgetid::stopButton)->setEnabled(!busy() && status.running);
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
    if (isReport(id)) {
        return runOnReportLane(id);
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
    {
        const std::lock_guard<std::mutex> hold(operationLock_);
        if (commandInProgress.load(std::memory_order_relaxed)) {
            // One server operation at a time: a Run or Stop meanwhile is dropped, while a level
            // chosen meanwhile is the user's last word and is applied right after this one.
            levelPending_ = levelPending_ || id == commandid::logLevel;
            return;
        }
        if (!claimCarrier(id)) {
            return;
        }
        commandInProgress.store(true, std::memory_order_relaxed);
        // A level change reads the level chosen last when it runs.
        levelPending_ = levelPending_ && id != commandid::logLevel;
    }
    // The level box stays usable: a choice meanwhile waits for its turn.
    widget(widgetid::runButton)->setEnabled(false);
    widget(widgetid::stopButton)->setEnabled(false);
    if (menu_) {
        menu_->enableItem(id, false);
    }
    serverLane().post([window = shared_from_this(), id] { window->finishOnWorker(id); });
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
    bool levelChanged = false;
    for (std::int32_t next = id; next != 0; next = nextOnWorker()) {
        executeOnWorker(next);
        levelChanged = levelChanged || next == commandid::logLevel;
    }
    if (levelChanged) {
        // The box shows what the file holds, also when a write was refused.
        postLaneResult(LaneResult::levelSettled, startupSelection(widgetid::logLevelBox));
    }
}

std::int32_t WindowImp::nextOnWorker() {
    const std::lock_guard<std::mutex> hold(operationLock_);
    if (levelPending_ && claimCarrier(commandid::logLevel)) {
        levelPending_ = false;
        return commandid::logLevel;
    }
    commandInProgress.store(false, std::memory_order_relaxed);
    return 0;
}

void WindowImp::executeOnWorker(std::int32_t id) {
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
}

bool WindowImp::runOnReportLane(std::int32_t id) {
    const std::shared_ptr<Command> command = reportCommand(id);
    if (!command) {
        return false;
    }
    // A report takes seconds; one at a time, and a click meanwhile does nothing.
    if (reportInProgress_) {
        return true;
    }
    reportInProgress_ = true;
    showReportInProgress(true);
    reportLane().post([window = shared_from_this(), command, id] {
        try {
            command->execute();
        } catch (...) {
            // A report tells its own failures; the window is freed for the next one all the same.
        }
        window->postLaneResult(LaneResult::reportDone, id);
    });
    return true;
}

// The command of the first widget that carries the id, else the menu's.
std::shared_ptr<Command> WindowImp::reportCommand(std::int32_t id) const {
    for (const WidgetEntry& entry : widgets_) {
        if (entry.widget->commandId() == id) {
            return entry.widget->command();
        }
    }
    try {
        return menu_ ? menu_->find(id).command : nullptr;
    } catch (const std::logic_error&) {
        return nullptr;
    }
}

void WindowImp::showReportInProgress(bool collecting) {
    for (const WidgetEntry& entry : widgets_) {
        if (isReport(entry.widget->commandId())) {
            entry.widget->setEnabled(!collecting);
        }
    }
    setReportBeingCollected(collecting);
    if (menu_) {
        menu_->updateTexts();
    }
}

void WindowImp::laneResultArrived(LaneResult result, std::int32_t value) {
    if (result == LaneResult::reportDone) {
        reportInProgress_ = false;
        showReportInProgress(false);
        return;
    }
    if (result != LaneResult::levelSettled) {
        return;
    }
    // A newer choice already runs: its own end tells the file's level.
    const std::lock_guard<std::mutex> hold(operationLock_);
    if (commandInProgress.load(std::memory_order_relaxed) || levelPending_) {
        return;
    }
    try {
        widget(widgetid::logLevelBox)->select(value);
    } catch (const std::logic_error&) {
        // A layout without the level box has nothing to show it in.
    }
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
        setPortAutoselect(widget(carrierOf(id))->isChecked());
        return false;
    }
    if (id == commandid::useUncPaths) {
        setUseUncPaths(widget(carrierOf(id))->isChecked());
        return false;
    }
    return runCommand(id);
}

void WindowImp::changeTab() {
    showTab(widget(widgetid::tabPanel)->selectedIndex());
}
