#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "foundation/uncopyable.h"
#include "panel/app_data_manager.h"
#include "panel/command.h"
#include "panel/window.h"
#include "panel/window_imp.h"

// The portable root of the interface: it owns the window and builds it from the layout. The
// native half (ApplicationImp) runs the message loop and ends the program.
class Application : public Uncopyable {
public:
    // Creates the window around the implementation, then builds, in this order, which is also
    // the tab order and the stacking order of the controls: tab panels, combo boxes, check
    // boxes, links, buttons, labels, each with the command of its "commandId"; then the menu and
    // its items. A widget with a refused command id fails the whole build; a menu item that
    // fails is left out without a word, and so is the whole menu when it can't be made.
    Application(std::shared_ptr<WindowImp> imp, const utils::AppDataManager& layout);
    virtual ~Application() = default;

    // Shows the window unless the command line holds "--silent" and runs the message loop;
    // returns the exit code.
    virtual std::int32_t run(const std::string& commandLine) = 0;
    // Ends the message loop; the server goes on running.
    virtual void quit() = 0;

    Window& window() { return window_; }

    // The command of a layout id, where its row of the command table (panel/command_table.h)
    // leads: 0 none (an empty pointer); the host's ids, 8 among them, to makeServerCommand; 4 show
    // and 5 hide the window, 6 quit; 13 and 14 commands without an action that only carry the
    // check boxes' ids. An id that the table refuses or hasn't fails with std::invalid_argument
    // "invalid command id".
    std::shared_ptr<Command> makeCommand(std::int32_t id);

private:
    void buildWidgets(const utils::AppDataManager& layout);
    void buildMenu(const utils::AppDataManager& layout);

    Window window_;
};

// The program's application, made at the first call: the host first (which may start the server
// and wait for it), then the layout's window record, then the native application.
std::shared_ptr<Application> getApplication();

// The native half's maker of its application for the layout's window record.
std::shared_ptr<Application> makeApplicationImp(const WindowRecord& record);
