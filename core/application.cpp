#include "core/application.h"

#include <exception>
#include <stdexcept>
#include <utility>

#include "core/server_command.h"
#include "panel/command_table.h"
#include "panel/layout_ids.h"
#include "panel/simple_command.h"

Application::Application(std::shared_ptr<WindowImp> imp, const utils::AppDataManager& layout)
    : window_(std::move(imp)) {
    buildWidgets(layout);
    buildMenu(layout);
}

namespace {

// The behaviour of the ids that the command table leads to the window and to the application.

SimpleCommand<Window>::Action windowAction(std::int32_t id) {
    switch (id) {
    case commandid::showWindow:
        return [](Window& window) { window.show(); };
    case commandid::hideWindow:
        return [](Window& window) { window.hide(); };
    default:
        throw std::logic_error("no window action for the command id");
    }
}

SimpleCommand<Application>::Action applicationAction(std::int32_t id) {
    switch (id) {
    case commandid::quit:
        return [](Application& application) { application.quit(); };
    default:
        throw std::logic_error("no application action for the command id");
    }
}

} // namespace

std::shared_ptr<Command> Application::makeCommand(std::int32_t id) {
    if (id == commandid::none) {
        return nullptr;
    }
    switch (commandRoute(id)) {
    case CommandRoute::hostOperation:
    case CommandRoute::hostAction:
    case CommandRoute::hostMissing:
        return makeServerCommand(id);
    case CommandRoute::window:
        return std::make_shared<SimpleCommand<Window>>(id, window_, windowAction(id));
    case CommandRoute::application:
        return std::make_shared<SimpleCommand<Application>>(id, *this, applicationAction(id));
    case CommandRoute::carrierOnly:
        // The window acts on these ids itself; the command only carries the id.
        return std::make_shared<SimpleCommand<Application>>(id, *this, nullptr);
    case CommandRoute::refused:
        break;
    }
    throw std::invalid_argument("invalid command id");
}

void Application::buildWidgets(const utils::AppDataManager& layout) {
    for (const TabpanelRecord& record : layout.tabpanels()) {
        window_.addTabpanel(record);
    }
    for (ComboboxRecord record : layout.comboboxes()) {
        record.command = makeCommand(record.commandId);
        window_.addCombobox(record);
    }
    for (ButtonRecord record : layout.checkboxes()) {
        record.command = makeCommand(record.commandId);
        window_.addCheckbox(record);
    }
    for (ButtonRecord record : layout.syslinks()) {
        record.command = makeCommand(record.commandId);
        window_.addSyslink(record);
    }
    for (ButtonRecord record : layout.buttons()) {
        record.command = makeCommand(record.commandId);
        window_.addButton(record);
    }
    for (const LabelRecord& record : layout.labels()) {
        window_.addLabel(record);
    }
}

void Application::buildMenu(const utils::AppDataManager& layout) {
    // Without a tray the program goes on with no menu and no icon.
    try {
        window_.createMenu();
    } catch (const std::exception&) {
    }
    if (const std::shared_ptr<MenuImp>& menu = window_.imp()->menu()) {
        menu->setServerCommands(makeServerCommand);
    }
    for (const MenuItemRecord& record : layout.menuItems()) {
        // An item with a refused command or an unknown text is left out; the others follow.
        try {
            window_.addMenuItem(MenuItem{record.text, makeCommand(record.commandId)});
        } catch (...) {
        }
    }
}
