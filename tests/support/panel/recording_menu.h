#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "panel/menu_imp.h"

// The tray menu of the recording window: it keeps the entries that a native popup menu would
// hold, with their words and enabled state, the tray icon's tooltip, and every call.
class RecordingMenu : public MenuImp {
public:
    struct Entry {
        std::int32_t id = 0;
        std::string text; // code page 1251, as shown
        bool enabled = true;
    };

    // The tooltip is made from the window's title, a catalogue id.
    explicit RecordingMenu(std::string titleId);

    void popup() override;
    void enableItem(std::int32_t id, bool enabled) override;

    const std::vector<Entry>& entries() const { return entries_; }
    // The entry with the id, or nullptr.
    const Entry* entry(std::int32_t id) const;
    const std::string& trayTip() const { return trayTip_; }
    int popups() const { return popups_; }
    // The texts of the balloons shown, in order (code page 1251).
    const std::vector<std::string>& balloons() const { return balloons_; }
    const std::vector<std::string>& calls() const { return calls_; }

protected:
    void appendEntry(std::int32_t id, const std::string& text) override;
    void modifyEntry(std::int32_t oldId, std::int32_t newId, const std::string& text) override;
    void deleteEntry(std::int32_t id) override;
    void refreshTrayIcon() override;
    void showBalloon(const std::string& text) override;

private:
    Entry* entryFor(std::int32_t id);

    std::string titleId_;
    std::vector<Entry> entries_;
    std::string trayTip_;
    int popups_ = 0;
    std::vector<std::string> balloons_;
    std::vector<std::string> calls_;
};
