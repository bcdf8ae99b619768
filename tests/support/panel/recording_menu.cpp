#include "tests/support/panel/recording_menu.h"

#include <algorithm>
#include <utility>

#include "foundation/text.h"
#include "panel/tray_tip.h"

RecordingMenu::RecordingMenu(std::string titleId) : titleId_(std::move(titleId)) {
    trayTip_ = trayTipText(titleId_);
}

void RecordingMenu::popup() {
    ++popups_;
    calls_.push_back("popup");
}

// As the native menu, an id that the menu lacks is ignored.
void RecordingMenu::enableItem(std::int32_t id, bool enabled) {
    calls_.push_back("enableItem " + std::to_string(id) + (enabled ? " 1" : " 0"));
    if (Entry* found = entryFor(id)) {
        found->enabled = enabled;
    }
}

const RecordingMenu::Entry* RecordingMenu::entry(std::int32_t id) const {
    for (const Entry& each : entries_) {
        if (each.id == id) {
            return &each;
        }
    }
    return nullptr;
}

void RecordingMenu::appendEntry(std::int32_t id, const std::string& text) {
    calls_.push_back("appendEntry " + std::to_string(id) + " " + cp1251ToUtf8(text));
    entries_.push_back(Entry{id, text, true});
}

void RecordingMenu::modifyEntry(std::int32_t oldId, std::int32_t newId, const std::string& text) {
    calls_.push_back("modifyEntry " + std::to_string(oldId) + " " + std::to_string(newId) + " " +
                     cp1251ToUtf8(text));
    if (Entry* found = entryFor(oldId)) {
        found->id = newId;
        found->text = text;
    }
}

void RecordingMenu::deleteEntry(std::int32_t id) {
    calls_.push_back("deleteEntry " + std::to_string(id));
    const auto first = std::find_if(entries_.begin(), entries_.end(),
                                    [id](const Entry& each) { return each.id == id; });
    if (first != entries_.end()) {
        entries_.erase(first);
    }
}

void RecordingMenu::refreshTrayIcon() {
    calls_.push_back("refreshTrayIcon");
    trayTip_ = trayTipText(titleId_, notice());
}

void RecordingMenu::showBalloon(const std::string& text) {
    calls_.push_back("showBalloon " + cp1251ToUtf8(text));
    balloons_.push_back(text);
}

RecordingMenu::Entry* RecordingMenu::entryFor(std::int32_t id) {
    for (Entry& each : entries_) {
        if (each.id == id) {
            return &each;
        }
    }
    return nullptr;
}
