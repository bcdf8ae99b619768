#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <tuple>

#include "host/log_level.h"
#include "panel/widget_kind.h"

// The ids of the layout file that the program addresses by name. Every other id of the file is
// the file's own business.

// A control's "commandId": what it runs. The same number is the native id of the control or
// the menu entry that carries the command, and of the command event that a click sends.
namespace commandid {

constexpr std::int32_t none = 0;
constexpr std::int32_t run = 1;
constexpr std::int32_t stop = 2;
constexpr std::int32_t openLogs = 3;
constexpr std::int32_t showWindow = 4;
constexpr std::int32_t hideWindow = 5;
constexpr std::int32_t quit = 6;
// Refused by the application: no control may carry it.
constexpr std::int32_t refused = 7;
// An operation of the host that the program doesn't have: the host's maker refuses it.
constexpr std::int32_t missingOperation = 8;
constexpr std::int32_t logLevel = 9;
constexpr std::int32_t collectInformation = 10;
constexpr std::int32_t reportProblem = 11;
constexpr std::int32_t openServicePage = 12;
// The check boxes act on their own; their commands only carry these ids.
constexpr std::int32_t portAutoselect = 13;
constexpr std::int32_t useUncPaths = 14;

} // namespace commandid

// A widget's "id": the widgets that the program looks up to read or write them.
namespace widgetid {

constexpr std::int32_t addressLink = 2;
constexpr std::int32_t statusLabel = 3;
constexpr std::int32_t timeLabel = 4;
constexpr std::int32_t runButton = 7;
constexpr std::int32_t stopButton = 8;
constexpr std::int32_t tabPanel = 9;
constexpr std::int32_t languageBox = 12;
constexpr std::int32_t logLevelBox = 13;
constexpr std::int32_t portAutoselectBox = 14;
constexpr std::int32_t uncPathsBox = 15;

} // namespace widgetid

// A widget the program looks up by its id, the kind it takes it for, what it is for in the layout
// checker's words and the entries of its list (0: any). The command that the layout must give it
// is the one whose carrier it is (commandCarriedBy, panel/command_table.h).
struct AddressedWidget {
    std::int32_t id;
    WidgetKind kind;
    const char* role;
    std::size_t entries;
};

constexpr std::array<AddressedWidget, 10> addressedWidgets{{
    {widgetid::addressLink, WidgetKind::Syslink, "the server's address", 0},
    {widgetid::statusLabel, WidgetKind::Label, "the server's state", 0},
    {widgetid::timeLabel, WidgetKind::Label, "the operating time", 0},
    {widgetid::runButton, WidgetKind::Button, "Run", 0},
    {widgetid::stopButton, WidgetKind::Button, "Stop", 0},
    {widgetid::tabPanel, WidgetKind::Tabpanel, "the tabs", 0},
    {widgetid::languageBox, WidgetKind::Combobox, "the language", 3},
    {widgetid::logLevelBox, WidgetKind::Combobox, "the log level",
     std::tuple_size_v<decltype(LogLevelTable)>},
    {widgetid::portAutoselectBox, WidgetKind::Checkbox, "port autoselection", 0},
    {widgetid::uncPathsBox, WidgetKind::Checkbox, "UNC paths", 0},
}};
