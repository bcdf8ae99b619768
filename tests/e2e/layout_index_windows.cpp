#include "tests/e2e/layout_index_windows.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include <nlohmann/json.hpp>

#include "tests/e2e/installation_windows.h"
#include "tests/e2e/ui_driver_windows.h"

namespace e2e {

namespace {

const std::map<std::string, std::wstring> classOfKind = {
    {"tabpanels", L"SysTabControl32"}, {"comboboxs", L"ComboBox"}, {"checkboxs", L"Button"},
    {"syslinks", L"SysLink"},          {"buttons", L"Button"},     {"labels", L"Static"},
};

// The layout is given for 96 dots per inch; the program scales it to the screen's.
POINT scaled(const nlohmann::json& position) {
    HDC screen = GetDC(nullptr);
    const int horizontal = GetDeviceCaps(screen, LOGPIXELSX);
    const int vertical = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return {MulDiv(position.value("x", 0), horizontal, 96),
            MulDiv(position.value("y", 0), vertical, 96)};
}

} // namespace

LayoutIndex::LayoutIndex() {
    std::ifstream file(std::filesystem::path(windowsPathOf(CVH_LAYOUT_FILE)), std::ios::binary);
    const auto layout = nlohmann::json::parse(file);
    updateTime_ = layout.at("window").value("updateTime", 0);
    for (const auto& item : layout.at("menu").value("items", nlohmann::json::array())) {
        menuCommands_.push_back(item.value("commandId", 0));
    }
    for (const auto& [kind, className] : classOfKind) {
        const auto& widgets = layout.at("widgets");
        if (!widgets.contains(kind)) {
            continue;
        }
        for (const auto& widget : widgets.at(kind)) {
            const int id = widget.at("id").get<int>();
            places_.emplace(id, Place{className, scaled(widget.at("disposition").at("position"))});
            ids_.emplace(std::make_pair(kind, widget.value("text", std::string())), id);
        }
    }
}

HWND LayoutIndex::widget(HWND window, int id) const {
    const auto place = places_.find(id);
    if (place == places_.end()) {
        throw std::out_of_range("no widget " + std::to_string(id) + " in the layout");
    }
    return ui::controlAt(window, place->second.className, place->second.position);
}

int LayoutIndex::menuPlaceOf(int commandId) const {
    const auto isRunOrStop = [](int id) { return id == 1 || id == 2; };
    int place = 0;
    bool pairCounted = false;
    for (int id : menuCommands_) {
        if (id == commandId || (isRunOrStop(id) && isRunOrStop(commandId))) {
            return place;
        }
        if (isRunOrStop(id)) {
            if (pairCounted) {
                continue;
            }
            pairCounted = true;
        }
        ++place;
    }
    return -1;
}

int LayoutIndex::idOf(const std::string& kind, const std::string& text) const {
    const auto found = ids_.find({kind, text});
    if (found == ids_.end()) {
        throw std::out_of_range("no " + kind + " with text " + text + " in the layout");
    }
    return found->second;
}

} // namespace e2e
