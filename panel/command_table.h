#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "foundation/messages/panel_messages.h"
#include "panel/layout_ids.h"

// What the program does with each command id of the layout: one row per id. The application's
// maker of commands, the host's maker, the window's worker and report lane and the layout checker
// all read their facts here, so that they can't disagree. An id without a row is refused like 7:
// the application makes no command for it ("invalid command id"), a widget that carries it fails
// the window's build, a menu item with it is left out, and cvh-layout-check names it.
//
// To add a command id:
//   1. name it in commandid (panel/layout_ids.h) and give it a row below; the checks at the end
//      of this file refuse a row whose facts don't fit together;
//   2. give it its behaviour where its route leads: a member of CorvaniteHost bound to the id in
//      hostActions (core/server_command.cpp) for hostOperation and hostAction, a case of
//      Application's window or application action (core/application.cpp) for window and
//      application, a case of WindowImp::commandEvent (panel/window_imp.cpp) for
//      carrierOnly; the builds refuse a host id without a member;
//   3. add the number to the commandId enum of layout/CVHControlPanel.schema.json, for editors;
//      a test of the panel holds that enum to this table.
// Nothing else names the id: the layout checker accepts it, and the worker, the report lane and
// the failure box pick it up from its row.

// Where a command id leads.
enum class CommandRoute {
    // No command: the application refuses the id ("invalid command id").
    refused,
    // A server operation of the host: run, stop, a new log level. It is claimed before its thread
    // starts and runs one at a time on the worker, which takes its command from the carrier.
    hostOperation,
    // Any other action of the host, run by the window's thread or, for a report, the report lane.
    hostAction,
    // An operation that the program doesn't have: the application hands the id to the host's
    // maker, which refuses it ("unknown server command id").
    hostMissing,
    // Shows or hides the window.
    window,
    // Acts on the application itself: quit.
    application,
    // The window acts on the id itself, reading its carrier; the command only carries the id.
    carrierOnly,
};

// The carrier of an id that has none.
constexpr std::int32_t noCarrier = -1;

struct CommandRow {
    std::int32_t id;
    CommandRoute route;
    // The widget whose command the worker runs, or whose state the window reads, whichever
    // control or menu item asked for the id. The layout must give that widget this id.
    std::int32_t carrier = noCarrier;
    // Takes seconds on the report lane, one at a time, with its controls disabled meanwhile.
    bool report = false;
    // The catalogue id of the action's word in the failure box of a long-running command.
    const char* actionWord = nullptr;
};

// Rows in the order of their ids.
inline constexpr auto commandTable = std::to_array<CommandRow>({
    {.id = commandid::run,
     .route = CommandRoute::hostOperation,
     .carrier = widgetid::runButton,
     .actionWord = panelmsg::startAction},
    {.id = commandid::stop,
     .route = CommandRoute::hostOperation,
     .carrier = widgetid::stopButton,
     .actionWord = panelmsg::stopAction},
    {.id = commandid::openLogs, .route = CommandRoute::hostAction},
    {.id = commandid::showWindow, .route = CommandRoute::window},
    {.id = commandid::hideWindow, .route = CommandRoute::window},
    {.id = commandid::quit, .route = CommandRoute::application},
    {.id = commandid::refused, .route = CommandRoute::refused},
    {.id = commandid::missingOperation, .route = CommandRoute::hostMissing},
    {.id = commandid::logLevel,
     .route = CommandRoute::hostOperation,
     .carrier = widgetid::logLevelBox,
     .actionWord = panelmsg::logLevelAction},
    {.id = commandid::collectInformation, .route = CommandRoute::hostAction, .report = true},
    {.id = commandid::reportProblem, .route = CommandRoute::hostAction, .report = true},
    {.id = commandid::openServicePage, .route = CommandRoute::hostAction},
    {.id = commandid::portAutoselect,
     .route = CommandRoute::carrierOnly,
     .carrier = widgetid::portAutoselectBox},
    {.id = commandid::useUncPaths,
     .route = CommandRoute::carrierOnly,
     .carrier = widgetid::uncPathsBox},
});

// The row of the id; for an id that the table hasn't, a row that refuses it.
constexpr CommandRow commandRow(std::int32_t id) {
    for (const CommandRow& row : commandTable) {
        if (row.id == id) {
            return row;
        }
    }
    return CommandRow{.id = id, .route = CommandRoute::refused};
}

constexpr CommandRoute commandRoute(std::int32_t id) {
    return commandRow(id).route;
}

// The application makes a command for the id (0, no command, aside).
constexpr bool commandIsMade(std::int32_t id) {
    const CommandRoute route = commandRoute(id);
    return route != CommandRoute::refused && route != CommandRoute::hostMissing;
}

// The host runs the id with one of its members.
constexpr bool hasHostAction(std::int32_t id) {
    const CommandRoute route = commandRoute(id);
    return route == CommandRoute::hostOperation || route == CommandRoute::hostAction;
}

constexpr bool isHostOperation(std::int32_t id) {
    return commandRoute(id) == CommandRoute::hostOperation;
}

// Runs on the worker, with Run and Stop disabled meanwhile: every host operation, and nothing else.
constexpr bool isLongRunning(std::int32_t id) {
    return isHostOperation(id);
}

constexpr bool isReport(std::int32_t id) {
    return commandRow(id).report;
}

constexpr std::int32_t carrierOf(std::int32_t id) {
    return commandRow(id).carrier;
}

// The catalogue id of the action's word; none for an action without one.
constexpr const char* actionWordOf(std::int32_t id) {
    return commandRow(id).actionWord;
}

// The command id that the layout must give the widget: the one it carries (none: any).
constexpr std::int32_t commandCarriedBy(std::int32_t widgetId) {
    for (const CommandRow& row : commandTable) {
        if (row.carrier != noCarrier && row.carrier == widgetId) {
            return row.id;
        }
    }
    return commandid::none;
}

namespace commandtable {

constexpr bool idsAreUnique() {
    for (std::size_t index = 0; index < commandTable.size(); ++index) {
        for (std::size_t later = index + 1; later < commandTable.size(); ++later) {
            if (commandTable[index].id == commandTable[later].id ||
                (commandTable[index].carrier != noCarrier &&
                 commandTable[index].carrier == commandTable[later].carrier)) {
                return false;
            }
        }
    }
    return true;
}

// The worker claims a host operation through its carrier.
constexpr bool hostOperationsHaveCarriers() {
    for (const CommandRow& row : commandTable) {
        if (row.route == CommandRoute::hostOperation && row.carrier == noCarrier) {
            return false;
        }
    }
    return true;
}

// A report is an action of the host; the window acts on a carrier-only id by its carrier.
constexpr bool otherRowsFit() {
    for (const CommandRow& row : commandTable) {
        if ((row.report && row.route != CommandRoute::hostAction) ||
            (row.route == CommandRoute::carrierOnly && row.carrier == noCarrier) ||
            row.id == commandid::none) {
            return false;
        }
    }
    return true;
}

static_assert(idsAreUnique(), "a command id or a carrier stands in two rows");
static_assert(hostOperationsHaveCarriers(), "a host operation has no carrier");
static_assert(otherRowsFit(), "a report, a carrier-only id or id 0 doesn't fit its row");

} // namespace commandtable
