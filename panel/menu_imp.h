#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <string>
#include <utility>

#include "foundation/uncopyable.h"
#include "panel/menu_item.h"

// The model of the tray's popup menu: its items with their commands, in display order. The
// native half owns the popup menu and the tray icon and carries out the protected operations
// below; the model decides what they are asked to do.
class MenuImp : public Uncopyable {
public:
    // The maker of the server's commands that the menu swaps in for Run and Stop: the program
    // gives it the application's, so that the menu knows no more of the host than its state.
    using ServerCommands = std::function<std::shared_ptr<Command>(std::int32_t id)>;

    MenuImp() = default;
    virtual ~MenuImp() = default;

    // Until it is given its maker, the menu leaves Run or Stop as it stands at each tick.
    void setServerCommands(ServerCommands maker) { serverCommands_ = std::move(maker); }

    // The platform's: pops the menu up at the mouse; the choice comes back as a command event.
    virtual void popup() = 0;
    // At each tick: keeps Stop in the place of Run while the server runs and Run while it
    // doesn't, then rewrites the texts. The answer comes from the master that the tick's status
    // refresh holds (serverMaster), so the choice costs no process snapshot of its own.
    virtual void update();
    // The same with the answer that the tick's status refresh has just had of the master
    // (isServerRunning), so that the tick asks the system once.
    void update(bool running);
    // Appends an item and its native entry. An item without a command or with a text that is no
    // catalogue id fails before the menu changes. A second item with an id that exists is
    // appended like any other.
    virtual void addItem(const MenuItem& item);
    // Removes every item with the id.
    virtual void removeItem(std::int32_t id);
    // Puts the item where the first item with the old id stands, or at the end, and removes
    // every item with the old id. The native entry keeps its place and gets the item's catalogue
    // id as its text until the next updateTexts.
    virtual void replaceItem(std::int32_t oldId, const MenuItem& item);
    // Runs the command of the first item with the id; false when there is none or the command
    // failed: a menu choice never ends the program.
    virtual bool execute(std::int32_t id);
    // The platform's: an id that the menu lacks is ignored.
    virtual void enableItem(std::int32_t id, bool enabled) = 0;
    // Every entry gets its catalogue words in the language in force, and the tray icon its
    // tooltip.
    virtual void updateTexts();

    // What the tray icon's tooltip tells below the title (code page 1251): why the server failed
    // or why it can't start; empty for nothing. The tooltip takes it at the next updateTexts.
    void setNotice(std::string notice) { notice_ = std::move(notice); }
    const std::string& notice() const { return notice_; }
    // Says the text once in a balloon from the tray icon, beside its tooltip.
    void announce(const std::string& text) { showBalloon(text); }

    // A copy of the first item with the id; "menu item not found" if none has it.
    MenuItem find(std::int32_t id) const;
    // addItem at a position of the model; the native menu is not touched.
    void insertAt(const MenuItem& item, std::size_t index);
    const std::list<MenuItem>& items() const { return items_; }

protected:
    // The platform's popup menu, entries addressed by id; texts in code page 1251.
    virtual void appendEntry(std::int32_t id, const std::string& text) = 0;
    virtual void modifyEntry(std::int32_t oldId, std::int32_t newId, const std::string& text) = 0;
    virtual void deleteEntry(std::int32_t id) = 0;
    // Rebuilds the tray icon's tooltip (trayTipText, with the notice) and shows it.
    virtual void refreshTrayIcon() = 0;
    // The platform's balloon from the tray icon, under the window's title; text in code page
    // 1251.
    virtual void showBalloon(const std::string& text) = 0;

private:
    std::string notice_;
    std::list<MenuItem> items_;
    ServerCommands serverCommands_;
};
