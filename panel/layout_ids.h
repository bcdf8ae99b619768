#pragma once

#include <array>
#include <cstdint>

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
// The highest id the application makes a command for.
constexpr std::int32_t last = useUncPaths;

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

// A widget the program addresses, with the command that the layout must give it
// (commandid::none: the program asks for no particular one).
struct AddressedWidget {
    std::int32_t id;
    std::int32_t commandId;
};

constexpr std::array<AddressedWidget, 10> addressedWidgets{{
    {widgetid::addressLink, commandid::none},
    {widgetid::statusLabel, commandid::none},
    {widgetid::timeLabel, commandid::none},
    {widgetid::runButton, commandid::run},
    {widgetid::stopButton, commandid::stop},
    {widgetid::tabPanel, commandid::none},
    {widgetid::languageBox, commandid::none},
    {widgetid::logLevelBox, commandid::logLevel},
    {widgetid::portAutoselectBox, commandid::portAutoselect},
    {widgetid::uncPathsBox, commandid::useUncPaths},
}};
