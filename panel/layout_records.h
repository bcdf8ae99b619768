#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "panel/command.h"
#include "panel/display_scale.h"

// The records that the layout file's readers fill. They live until the widget is built from them;
// sizes and positions are device pixels, already scaled.

// The part that every kind of widget has.
struct WidgetDisposition {
    PixelPair size{0, 0};
    PixelPair position{0, 0};
    // The catalogue id that the widget's words follow; empty when its text is no catalogue id.
    std::string text;
    // The words shown at start, code page 1251.
    std::string displayText;
    // The tab the widget shows on; -1 leaves it alone when tabs change.
    std::int32_t tabIndex = 0;
};

// A push button, a check box or a link.
struct ButtonRecord {
    std::int32_t id = 0;
    std::int32_t commandId = 0;
    WidgetDisposition disposition;
    // Empty until the window model makes it from commandId.
    std::shared_ptr<Command> command;
};

struct LabelRecord {
    std::int32_t id = 0;
    WidgetDisposition disposition;
};

struct ComboboxRecord {
    std::int32_t id = 0;
    std::int32_t commandId = 0;
    WidgetDisposition disposition;
    // Catalogue ids of the list's entries, in list order.
    std::vector<std::string> values;
    std::shared_ptr<Command> command;
};

struct TabpanelRecord {
    std::int32_t id = 0;
    WidgetDisposition disposition;
    // Catalogue ids of the tab captions, in tab order.
    std::vector<std::string> tabs;
};

struct WindowRecord {
    // A catalogue id, looked up each time the title is shown.
    std::string title;
    // The outer size of the window.
    PixelPair size{0, 0};
    // The native window class, by which a second start finds the first; code page 1251.
    std::string className;
    // Period of the update timer in milliseconds.
    std::int32_t updateTime = 0;
};

struct MenuItemRecord {
    std::int32_t commandId = 0;
    // The catalogue id as it stands in the file.
    std::string text;
};
