#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "foundation/uncopyable.h"
#include "host/server_watchdog.h"
#include "panel/display_scale.h"
#include "panel/layout_records.h"
#include "panel/menu_imp.h"
#include "panel/menu_item.h"
#include "panel/widget_imp.h"

// True while a long-running command (Run, Stop, a new log level, the watchdog's restart) works on
// its worker thread. The interface thread takes it when it starts one; a Run or Stop asked for
// meanwhile is dropped, a log level chosen meanwhile waits for its end. The worker lets it go. The
// buttons read it at each tick.
extern std::atomic<bool> commandInProgress;

// What a worker hands back to the interface thread, by a message to the window: a worker never
// touches a widget itself.
enum class LaneResult : std::int32_t {
    // The level changes have ended; the value is the index of nginx.conf's level in the box.
    levelSettled = 1,
    // A report has ended; the value is its command id.
    reportDone = 2,
};

// One row of the widget table: the layout's "id" and the widget.
struct WidgetEntry {
    std::int32_t id = 0;
    std::shared_ptr<WidgetImp> widget;
};

// The portable half of the window: the widget table, the update cycle, the way from an event to
// a command, and the language change. The native half makes the window, its widgets and its menu
// and carries out the operations marked as the platform's; it calls the event operations below
// when the user acts. It is always held by a std::shared_ptr: worker threads share it.
class WindowImp : public Uncopyable, public std::enable_shared_from_this<WindowImp> {
public:
    // The title is a catalogue id; the size the outer size in device pixels.
    WindowImp(std::string title, PixelPair size);
    virtual ~WindowImp() = default;

    // The platform's: make the native window and start the update timer; false on failure.
    virtual bool create() = 0;
    // The platform's: show and bring to the front, hide, destroy (which ends the message loop).
    virtual void show() = 0;
    virtual void hide() = 0;
    virtual void destroy() = 0;
    // The platform's: whether the window is visible.
    virtual bool isVisible() const = 0;

    // One tick of the update timer: the server's state into the status widgets and the tray
    // menu, the watchdog, and the enabled state of Run and Stop. True when the server runs.
    virtual bool update();
    // Puts every catalogue text into the language in force: caption, menu, widgets.
    virtual void updateTexts();

    // The platform's: build the native widget from the record and enter it with addWidget.
    virtual void addTabpanel(const TabpanelRecord& record) = 0;
    virtual void addCombobox(const ComboboxRecord& record) = 0;
    virtual void addLabel(const LabelRecord& record) = 0;
    virtual void addButton(const ButtonRecord& record) = 0;
    virtual void addSyslink(const ButtonRecord& record) = 0;
    virtual void addCheckbox(const ButtonRecord& record) = 0;
    // The platform's: make the menu and store it with setMenu, unless one exists.
    virtual void createMenu() = 0;

    // Pops the menu up; nothing without a menu.
    virtual void showMenu();
    // Hands the item to the menu; nothing without a menu.
    virtual void addMenuItem(const MenuItem& item);
    virtual bool isWidgetEnabled(std::int32_t id) const;
    // Runs a command of a control or a menu item: Run, Stop and the log level (1, 2, 9) on the
    // server's lane, the reports (10, 11) on the reports' lane, others at once through the first
    // widget that carries them, else through the menu. False when nothing ran it.
    virtual bool runCommand(std::int32_t id);

    // Starts a long-running command on the worker thread, with Run and Stop disabled meanwhile. A
    // Run or Stop asked for while another one runs is dropped; a log level asked for meanwhile is
    // applied right after it, once however often it was asked for, with the level chosen last. A
    // failure there is shown in a box that names the action.
    void runOnWorker(std::int32_t id);

    // The platform's: hands a worker's result to the interface thread, which gives it to
    // laneResultArrived. Called on a worker; returns at once.
    virtual void postLaneResult(LaneResult result, std::int32_t value) = 0;
    // A worker's result, on the interface thread.
    void laneResultArrived(LaneResult result, std::int32_t value);

    // The events of the user, as the native half gets them:
    // a language picked in widgetid::languageBox (its entry index),
    void changeLanguage(std::int32_t index);
    // a log level picked in widgetid::logLevelBox (its entry index),
    void changeLogLevel(std::int32_t index);
    // a click on a control or a menu choice with a command id, answering what runCommand
    // answers (false for the two check boxes, which act on their own),
    bool commandEvent(std::int32_t id);
    // and a change of tab, or the window shown or hidden.
    void changeTab();

    void addWidget(WidgetEntry entry);
    // The first widget entered with the id; "widget is not found" if there is none.
    std::shared_ptr<WidgetImp> widget(std::int32_t id) const;
    const std::shared_ptr<MenuImp>& menu() const { return menu_; }
    void setMenu(std::shared_ptr<MenuImp> menu) { menu_ = std::move(menu); }
    // Hides every widget of the other tabs, then shows those of this one. Widgets on no tab
    // (-1) are left alone.
    void showTab(std::int32_t index);
    // Hides and shows again the widgets of the tab, so that they repaint.
    void refreshTab(std::int32_t index);
    const std::vector<WidgetEntry>& widgets() const { return widgets_; }
    // The clock of the watchdog's restart policy, milliseconds; the steady clock unless a test
    // gives another one before the first tick.
    void setWatchdogClock(ServerWatchdog::Clock clock) {
        watchdog_ = ServerWatchdog(std::move(clock));
    }
    PixelPair size() const { return size_; }
    std::string title() const { return title_; }

protected:
    // The platform's: the window's caption, code page 1251.
    virtual void setCaption(const std::string& text) = 0;

private:
    // Claims what the command of the widget that carries it works on.
    bool claimCarrier(std::int32_t id) const;
    void finishOnWorker(std::int32_t id);
    void executeOnWorker(std::int32_t id);
    // Starts a report on the reports' lane, with the report links disabled and the tray telling
    // it meanwhile; a report asked for while one is collected does nothing.
    bool runOnReportLane(std::int32_t id);
    std::shared_ptr<Command> reportCommand(std::int32_t id) const;
    void showReportInProgress(bool collecting);
    // The command the worker runs next: a level chosen while the last one ran, else none (0), which
    // ends the long-running command.
    std::int32_t nextOnWorker();

    const std::string title_;
    const PixelPair size_;
    std::shared_ptr<MenuImp> menu_;
    std::vector<WidgetEntry> widgets_;
    // Guards the start and the end of a long-running command with the pending level choice: the
    // interface thread and the worker hold it for a moment each, never across an operation.
    std::mutex operationLock_;
    bool levelPending_ = false;
    // Read and written by the interface thread only.
    bool reportInProgress_ = false;
    // Decides at each tick whether a server that went down by itself is started again.
    ServerWatchdog watchdog_{steadyMilliseconds};
    // The balloon of the present failure was shown; a failure is announced once.
    bool failureAnnounced_ = false;
};
