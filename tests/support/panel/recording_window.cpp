#include "tests/support/panel/recording_window.h"

#include <stdexcept>
#include <utility>

#include "core/server_command.h"
#include "foundation/exceptions.h"
#include "foundation/message_catalogue.h"

RecordingWindow::RecordingWindow(std::string title, PixelPair size, Options options)
    : WindowImp(std::move(title), size), options_(options) {}

RecordingWindow::RecordingWindow(std::string title, PixelPair size)
    : RecordingWindow(std::move(title), size, Options{}) {}

bool RecordingWindow::create() {
    calls_.push_back("create");
    if (created_) {
        return true;
    }
    if (!options_.createSucceeds) {
        return false;
    }
    // As the native window, the caption is the title's catalogue words.
    caption_ = panelMessages.text(title().c_str());
    created_ = true;
    return true;
}

void RecordingWindow::show() {
    calls_.push_back("show");
    visible_ = true;
}

void RecordingWindow::hide() {
    calls_.push_back("hide");
    visible_ = false;
}

void RecordingWindow::destroy() {
    calls_.push_back("destroy");
    destroyed_ = true;
    visible_ = false;
}

void RecordingWindow::addTabpanel(const TabpanelRecord& record) {
    enter(record.id,
          std::make_shared<RecordingWidget>(WidgetKind::Tabpanel, record.disposition, record.id,
                                            nullptr, record.tabs, journal_),
          "addTabpanel");
}

void RecordingWindow::addCombobox(const ComboboxRecord& record) {
    enter(record.id,
          std::make_shared<RecordingWidget>(WidgetKind::Combobox, record.disposition, record.id,
                                            record.command, record.values, journal_),
          "addCombobox");
}

void RecordingWindow::addLabel(const LabelRecord& record) {
    enter(record.id,
          std::make_shared<RecordingWidget>(WidgetKind::Label, record.disposition, record.id,
                                            nullptr, std::vector<std::string>{}, journal_),
          "addLabel");
}

void RecordingWindow::addButton(const ButtonRecord& record) {
    enter(record.id,
          std::make_shared<RecordingWidget>(WidgetKind::Button, record.disposition, record.id,
                                            record.command, std::vector<std::string>{}, journal_),
          "addButton");
}

void RecordingWindow::addSyslink(const ButtonRecord& record) {
    enter(record.id,
          std::make_shared<RecordingWidget>(WidgetKind::Syslink, record.disposition, record.id,
                                            record.command, std::vector<std::string>{}, journal_),
          "addSyslink");
}

void RecordingWindow::addCheckbox(const ButtonRecord& record) {
    enter(record.id,
          std::make_shared<RecordingWidget>(WidgetKind::Checkbox, record.disposition, record.id,
                                            record.command, std::vector<std::string>{}, journal_),
          "addCheckbox");
}

void RecordingWindow::createMenu() {
    calls_.push_back("createMenu");
    if (menu()) {
        return;
    }
    if (!options_.menuSucceeds) {
        throw BasicException(panelMessages.text("CVCP-006002"));
    }
    auto menu = std::make_shared<RecordingMenu>(title());
    menu->setServerCommands(makeServerCommand);
    setMenu(std::move(menu));
}

std::shared_ptr<RecordingWidget> RecordingWindow::recorded(std::int32_t id) const {
    return std::dynamic_pointer_cast<RecordingWidget>(widget(id));
}

std::shared_ptr<RecordingMenu> RecordingWindow::recordedMenu() const {
    return std::dynamic_pointer_cast<RecordingMenu>(menu());
}

void RecordingWindow::setCaption(const std::string& text) {
    calls_.push_back("setCaption");
    caption_ = text;
}

void RecordingWindow::enter(std::int32_t id, std::shared_ptr<RecordingWidget> widget,
                            const char* call) {
    calls_.push_back(std::string(call) + " " + std::to_string(id));
    addWidget(WidgetEntry{id, std::move(widget)});
}

void RecordingWindow::postLaneResult(LaneResult result, std::int32_t value) {
    const std::lock_guard<std::mutex> hold(laneResultsLock_);
    laneResults_.emplace_back(result, value);
}

std::size_t RecordingWindow::deliverLaneResults() {
    std::vector<std::pair<LaneResult, std::int32_t>> taken;
    {
        const std::lock_guard<std::mutex> hold(laneResultsLock_);
        taken.swap(laneResults_);
    }
    for (const auto& [result, value] : taken) {
        laneResultArrived(result, value);
    }
    return taken.size();
}
