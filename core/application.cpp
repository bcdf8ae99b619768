#include "core/application.h"

#include <exception>
#include <stdexcept>
#include <utility>

#include "core/server_command.h"
#include "panel/layout_ids.h"
#include "panel/simple_command.h"

Application::Application(std::shared_ptr<WindowImp> imp, const utils::AppDataManager& layout)
    : window_(std::move(imp)) {
    buildWidgets(layout);
    buildMenu(layout);
}

std::shared_ptr<Command> Application::makeCommand(std::int32_t id) {
    switch (id) {
    case commandid::none:
        return nullptr;
    case commandid::run:
    case commandid::stop:
    case commandid::openLogs:
    case commandid::missingOperation:
    case commandid::logLevel:
    case commandid::collectInformation:
    case commandid::reportProblem:
    case commandid::openServicePage:
        return makeServerCommand(id);
    case commandid::showWindow:
        return std::make_shared<SimpleCommand<Window>>(id, window_,
                                                       [](Window& window) { window.show(); });
    case commandid::hideWindow:
        return std::make_shared<SimpleCommand<Window>>(id, window_,
                                                       [](Window& window) { window.hide(); });
    case commandid::quit:
        return std::make_shared<SimpleCommand<Application>>(
            id, *this, [](Application& application) { application.quit(); });
    case commandid::portAutoselect:
    case commandid::useUncPaths:
        // The window acts on these ids itself; the command only carries the id.
        return std::make_shared<SimpleCommand<Application>>(id, *this, nullptr);
    default:
        throw std::invalid_argument("invalid command id");
    }
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
