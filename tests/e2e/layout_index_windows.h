#pragma once

#include <windows.h>

#include <map>
#include <string>
#include <vector>

// Finds the program's controls by the layout file's widget ids: a control is the one of its kind
// whose top left corner lies where the layout puts it.
namespace e2e {

class LayoutIndex {
public:
    // Reads the layout file that the test installations use.
    LayoutIndex();

    // The control of the widget with that layout id in the main window, or null.
    HWND widget(HWND window, int id) const;
    // The id of the first widget of that kind and text in the layout ("buttons", "CVCP-004001").
    int idOf(const std::string& kind, const std::string& text) const;
    int updateTime() const { return updateTime_; }
    // The position in the tray menu of the entry for the command. Run (1) and Stop (2) share one
    // place: the menu holds only one of them at a time. -1 when the menu lacks it.
    int menuPlaceOf(int commandId) const;

private:
    struct Place {
        std::wstring className;
        POINT position;
    };
    std::map<int, Place> places_;
    std::map<std::pair<std::string, std::string>, int> ids_;
    int updateTime_ = 0;
    std::vector<int> menuCommands_;
};

} // namespace e2e
