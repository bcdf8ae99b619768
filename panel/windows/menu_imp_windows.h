#pragma once

#include <windows.h>

#include <shellapi.h>

#include "panel/app_data_manager.h"
#include "panel/menu_imp.h"

// The program's icon among the resources, shown by the window and the tray.
constexpr WORD programIconId = 202;
// The message that the tray icon sends its window.
constexpr UINT trayMessage = WM_USER + 1;
// The window's timer that tries again to add a tray icon that the shell refused at start.
constexpr UINT_PTR trayIconRetryTimerId = 0x7E1;

// The tray icon and its popup menu. The two go together: the icon is what shows the menu, and the
// icon lives as long as this object, which the window owns.
class MenuImpWindows : public MenuImp {
public:
    // Makes the popup menu and adds the tray icon; "CVCP-006002" when the menu can't be made. An
    // icon the shell refuses (the taskbar isn't there yet at log-on) is tried again every 10 s for
    // 2 minutes, and whenever the taskbar is created; the menu is there meanwhile.
    MenuImpWindows(HWND window, HINSTANCE instance,
                   const utils::AppDataManager& layout = utils::AppDataManager::instance());
    // Removes the icon and destroys the menu.
    ~MenuImpWindows() override;

    // Pops the menu up at the mouse, growing upward; the choice comes back as WM_COMMAND.
    void popup() override;
    void enableItem(std::int32_t id, bool enabled) override;

    // Adds the icon again after the shell lost it in a restart of its taskbar, or had refused it.
    void restoreTrayIcon();
    // The retry timer's tick: adds the icon, or gives up once the 2 minutes are over.
    void retryTrayIcon();
    // Takes the icon out of the tray as the window goes: the program ends without destroying its
    // objects, and an icon left behind would stay in the tray with no program behind it.
    void removeTrayIcon();

    HMENU nativeMenu() const { return menuHandle_; }
    // The tooltip of the tray icon as it was last given to the shell.
    std::wstring tooltip() const { return notifyData_.szTip; }

protected:
    void appendEntry(std::int32_t id, const std::string& text) override;
    void modifyEntry(std::int32_t oldId, std::int32_t newId, const std::string& text) override;
    void deleteEntry(std::int32_t id) override;
    void refreshTrayIcon() override;
    void showBalloon(const std::string& text) override;

private:
    // Fills the tooltip from the window's title and the host's version; true when the icon was
    // added (mode add) or asked to change (mode modify).
    bool showTrayIcon(bool add);
    // Puts the tray tip of the language in force into the icon's data; false when it was there.
    bool fillTooltip();

    // Adds the icon; on success the retry timer stops.
    bool addTrayIcon();

    HWND window_;
    HINSTANCE instance_;
    // When the retries of a refused icon end, in the system's milliseconds since start.
    ULONGLONG retryUntil_ = 0;
    HMENU menuHandle_ = nullptr;
    NOTIFYICONDATAW notifyData_{};
    // The tooltip shows the window's title from here.
    const utils::AppDataManager& layout_;
};
