#pragma once

#include <windows.h>

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

// Drives the control panel's window from another process, the way a user would: finds its
// windows, reads their texts, clicks, chooses, and answers its message boxes. Every wait is
// bounded; a wait that runs out returns an empty result rather than hanging the test.
namespace ui {

using namespace std::chrono_literals;

// How long a wait for something that should happen may take: the machine runs other tests beside
// these, and a wait that holds returns at once.
inline constexpr std::chrono::milliseconds patience = 60s;

// Polls `ready` until it holds or the time is up; true when it held.
bool waitUntil(const std::function<bool()>& ready, std::chrono::milliseconds timeout = patience);

// The top-level window of that class owned by the process, if there is one.
HWND findTopWindow(const std::wstring& className, DWORD processId);
HWND waitForTopWindow(const std::wstring& className, DWORD processId,
                      std::chrono::milliseconds timeout = patience);

// Direct children of the window, in the system's order.
std::vector<HWND> children(HWND parent);
std::wstring className(HWND window);
// The control of that class whose top left corner lies at the point of the parent's client area.
HWND controlAt(HWND parent, const std::wstring& className, POINT position);

// WM_GETTEXT; a link answers with its "<a>" markup.
std::wstring text(HWND window);
bool isEnabled(HWND window);
bool isVisible(HWND window);

// Presses a button or toggles a check box (BM_CLICK, posted so that a box it opens can't block).
void click(HWND button);
bool isChecked(HWND checkbox);
// Clicks the first character of a link with the mouse messages, which makes it notify its parent.
void clickLink(HWND link);
// Selects the entry and tells the parent as the user's choice would (CBN_SELCHANGE).
void chooseComboEntry(HWND combobox, int index);
// The same, with the change sent: it returns once the window has handled it, so that two choices
// in a row reach the program one after the other, each with its own entry selected.
void chooseComboEntryNow(HWND combobox, int index);
int comboSelection(HWND combobox);
std::wstring comboEntry(HWND combobox, int index);
int comboCount(HWND combobox);
// Focuses the tab, which tells the parent with TCN_SELCHANGE.
void chooseTab(HWND tabControl, int index);
int tabSelection(HWND tabControl);
std::wstring tabCaption(HWND tabControl, int index);

// The tray icon's callback message, as the shell sends it for a mouse button going down.
void trayClick(HWND window, UINT mouseMessage);
// Posts WM_CLOSE, as the close box does.
void closeBox(HWND window);
// Presses the key on the control that has the focus in the window's thread, as the keyboard's
// messages reach the program's message loop: down, then up. True when the key went.
bool pressKey(HWND window, WORD key);

// The shell's side of the tray: whether it shows the window's icon; its loss of the icon, as a
// restart of the taskbar loses every icon; and the announcement of the new taskbar.
bool trayIconShown(HWND window);
void removeTrayIcon(HWND window);
void announceTaskbarCreated(HWND window);
// The tips that the shell's tray keeps for its icons, read from the shell's own tooltips: what
// the user sees on pointing at an icon.
std::vector<std::wstring> trayTips();

// A message box of the process: its caption and text, and OK pressed.
struct MessageBoxSeen {
    std::wstring caption;
    std::wstring text;
};
std::optional<MessageBoxSeen> waitForMessageBox(DWORD processId,
                                                std::chrono::milliseconds timeout = patience);
// Reads the first box of the process, if any, and presses its OK button.
std::optional<MessageBoxSeen> answerMessageBox(DWORD processId,
                                               std::chrono::milliseconds timeout = patience);

// The open popup menu of the process (class #32768).
HWND waitForPopupMenu(DWORD processId, std::chrono::milliseconds timeout = patience);
// Chooses the menu's entry by its position, with the keyboard.
void choosePopupEntry(HWND menuWindow, int position);
// Closes the popup menu without a choice.
void dismissPopup(HWND menuWindow);

} // namespace ui
