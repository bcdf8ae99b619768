#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "panel/display_scale.h"
#include "panel/layout_records.h"

namespace utils {

// The parsed layout file CVHControlPanel.json: the window, the tray menu and the widgets. The
// file is read once; each reader builds its records anew from the kept JSON at each call.
class AppDataManager {
public:
    // The program's layout, read from the installation folder at the first call; only the
    // interface thread reaches it while the program starts.
    static const AppDataManager& instance();

    // Reads and parses the file at the UTF-8 path. Whatever goes wrong here (no file, no JSON,
    // no object, a missing "window", "menu" or "widgets") fails as BasicException "CVCP-006013".
    explicit AppDataManager(const std::string& path,
                            const DisplayScale& scale = sharedDisplayScale());

    // The readers don't guard: a faulty section fails with the JSON library's words, an
    // unknown catalogue id with "invalid map<K, T> key".
    WindowRecord window() const;
    // The tray menu's items in file order. Of Run (1) and Stop (2) only the one that fits the
    // server's state right now is kept.
    std::vector<MenuItemRecord> menuItems() const;
    std::vector<TabpanelRecord> tabpanels() const;
    std::vector<ComboboxRecord> comboboxes() const;
    std::vector<ButtonRecord> checkboxes() const;
    std::vector<ButtonRecord> syslinks() const;
    std::vector<ButtonRecord> buttons() const;
    std::vector<LabelRecord> labels() const;

private:
    DisplayScale scale_;
    nlohmann::json windowData_;
    nlohmann::json menuData_;
    nlohmann::json widgetData_;
};

// Where the program's layout lies: the installation folder, "/", "CVHControlPanel.json". Fixed at
// the first call, which comes on the interface thread while the program starts.
const std::string& layoutPath();

} // namespace utils
