#include "panel/windows/menu_imp_windows.h"

#include <algorithm>
#include <cwchar>

#include "foundation/exceptions.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"
#include "panel/app_data_manager.h"
#include "panel/tray_tip.h"

namespace {

constexpr UINT retryMilliseconds = 10 * 1000;
constexpr ULONGLONG retryPeriodMilliseconds = 2 * 60 * 1000;

} // namespace

MenuImpWindows::MenuImpWindows(HWND window, HINSTANCE instance, const utils::AppDataManager& layout)
    : window_(window), instance_(instance), layout_(layout) {
    if (window_ == nullptr || instance_ == nullptr ||
        (menuHandle_ = CreatePopupMenu()) == nullptr) {
        throw BasicException(panelMessages.text(panelmsg::menuNotCreated));
    }
    // A program without its icon is broken for good; only the shell's refusal is worth a retry.
    notifyData_.hIcon = LoadIconW(instance_, MAKEINTRESOURCEW(programIconId));
    if (notifyData_.hIcon == nullptr) {
        DestroyMenu(menuHandle_);
        throw BasicException(panelMessages.text(panelmsg::menuNotCreated));
    }
    if (!showTrayIcon(true)) {
        retryUntil_ = GetTickCount64() + retryPeriodMilliseconds;
        SetTimer(window_, trayIconRetryTimerId, retryMilliseconds, nullptr);
    }
}

MenuImpWindows::~MenuImpWindows() {
    removeTrayIcon();
    DestroyMenu(menuHandle_);
}

void MenuImpWindows::removeTrayIcon() {
    KillTimer(window_, trayIconRetryTimerId);
    Shell_NotifyIconW(NIM_DELETE, &notifyData_);
}

bool MenuImpWindows::fillTooltip() {
    const std::wstring tip = fromCp1251(trayTipText(layout_.window().title, notice()));
    const std::size_t room = sizeof(notifyData_.szTip) / sizeof(notifyData_.szTip[0]);
    const std::wstring fitting = tip.substr(0, room - 1);
    if (fitting == notifyData_.szTip) {
        return false;
    }
    std::wmemcpy(notifyData_.szTip, fitting.c_str(), fitting.size() + 1);
    return true;
}

bool MenuImpWindows::showTrayIcon(bool add) {
    const bool tipChanged = fillTooltip();
    if (!add) {
        // Every tick asks; the shell hears of the icon only when its tip has changed.
        if (tipChanged) {
            Shell_NotifyIconW(NIM_MODIFY, &notifyData_);
        }
        return true;
    }
    notifyData_.cbSize = sizeof(notifyData_);
    notifyData_.hWnd = window_;
    notifyData_.uID = programIconId;
    notifyData_.uFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP;
    notifyData_.uCallbackMessage = trayMessage;
    return Shell_NotifyIconW(NIM_ADD, &notifyData_) != FALSE;
}

bool MenuImpWindows::addTrayIcon() {
    const bool added = Shell_NotifyIconW(NIM_ADD, &notifyData_) != FALSE;
    if (added) {
        KillTimer(window_, trayIconRetryTimerId);
    }
    return added;
}

void MenuImpWindows::refreshTrayIcon() {
    showTrayIcon(false);
}

namespace {

// Copies as much of the text as the field holds, with its terminator.
template <std::size_t extent> void copyFitting(wchar_t (&field)[extent], const std::wstring& text) {
    constexpr std::size_t room = sizeof(field) / sizeof(field[0]);
    const std::size_t length = std::min(text.size(), room - 1);
    std::wmemcpy(field, text.c_str(), length);
    field[length] = L'\0';
}

} // namespace

void MenuImpWindows::showBalloon(const std::string& text) {
    // The balloon rides on one modify of the icon; the flag is taken back at once, so that the
    // tooltip's later modifies don't show it again.
    copyFitting(notifyData_.szInfoTitle,
                fromCp1251(panelMessages.text(layout_.window().title.c_str())));
    copyFitting(notifyData_.szInfo, fromCp1251(text));
    notifyData_.dwInfoFlags = NIIF_ERROR;
    notifyData_.uFlags |= NIF_INFO;
    Shell_NotifyIconW(NIM_MODIFY, &notifyData_);
    notifyData_.uFlags &= ~static_cast<UINT>(NIF_INFO);
    notifyData_.szInfo[0] = L'\0';
    notifyData_.szInfoTitle[0] = L'\0';
}

void MenuImpWindows::restoreTrayIcon() {
    addTrayIcon();
}

void MenuImpWindows::retryTrayIcon() {
    if (!addTrayIcon() && GetTickCount64() >= retryUntil_) {
        KillTimer(window_, trayIconRetryTimerId);
    }
}

void MenuImpWindows::popup() {
    POINT cursor{};
    GetCursorPos(&cursor);
    // The menu closes when the user clicks elsewhere only if its window is in the foreground, and
    // the posted empty message lets a second popup open at once.
    SetForegroundWindow(window_);
    TrackPopupMenu(menuHandle_, TPM_BOTTOMALIGN, cursor.x, cursor.y, 0, window_, nullptr);
    PostMessageW(window_, WM_NULL, 0, 0);
}

void MenuImpWindows::enableItem(std::int32_t id, bool enabled) {
    // Disabled, not greyed.
    EnableMenuItem(menuHandle_, static_cast<UINT>(id), enabled ? MF_ENABLED : MF_DISABLED);
}

void MenuImpWindows::appendEntry(std::int32_t id, const std::string& text) {
    InsertMenuW(menuHandle_, static_cast<UINT>(-1), MF_STRING, static_cast<UINT_PTR>(id),
                fromCp1251(text).c_str());
}

void MenuImpWindows::modifyEntry(std::int32_t oldId, std::int32_t newId, const std::string& text) {
    ModifyMenuW(menuHandle_, static_cast<UINT>(oldId), MF_STRING, static_cast<UINT_PTR>(newId),
                fromCp1251(text).c_str());
}

void MenuImpWindows::deleteEntry(std::int32_t id) {
    DeleteMenu(menuHandle_, static_cast<UINT>(id), MF_BYCOMMAND);
}
