#include "panel/windows/window_procedure_windows.h"

#include <commctrl.h>

#include <exception>

#include "panel/layout_ids.h"
#include "panel/windows/dispatch_failure_windows.h"
#include "panel/windows/menu_imp_windows.h"
#include "panel/windows/static_colour_windows.h"
#include "panel/windows/widget_imp_windows.h"
#include "panel/windows/window_imp_windows.h"

namespace {

HWND handleOf(const std::shared_ptr<WidgetImp>& widget) {
    return std::static_pointer_cast<WidgetImpWindows>(widget)->nativeHandle();
}

// A result that a handler gives as a byte, the way the system reads a true or false answer.
LRESULT byteResult(bool value) {
    return static_cast<LRESULT>(static_cast<std::uint8_t>(value));
}

// The shell's word to every top-level window that its taskbar was made anew (Explorer ended and
// started again): the icons it showed are gone.
UINT taskbarCreatedMessage() {
    static const UINT message = RegisterWindowMessageW(L"TaskbarCreated");
    return message;
}

} // namespace

LRESULT CALLBACK staticWindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        SetWindowLongPtrW(window, GWLP_USERDATA,
                          reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
    }
    auto* self = reinterpret_cast<WindowImpWindows*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self == nullptr) {
        return DefWindowProcW(window, message, wParam, lParam);
    }
    // mingw's unwinder can't cross the system's dispatch frames: the failure is kept here and
    // thrown again by the message loop's owner once the loop has ended.
    try {
        return self->windowProc(window, message, wParam, lParam);
    } catch (...) {
        keepDispatchFailure(std::current_exception());
        return 0;
    }
}

LRESULT WindowImpWindows::windowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_DESTROY:
        if (menu()) {
            std::static_pointer_cast<MenuImpWindows>(menu())->removeTrayIcon();
        }
        PostQuitMessage(0);
        return 0;
    case WM_CLOSE:
        // The close box only hides: the timer and the tray stay.
        hide();
        return 0;
    case WM_SHOWWINDOW:
        changeTab();
        return 0;
    case WM_NOTIFY:
        return onNotify(wParam, lParam);
    case WM_COMMAND:
        return onCommand(wParam, lParam);
    case WM_TIMER:
        if (wParam == trayIconRetryTimerId) {
            if (menu()) {
                std::static_pointer_cast<MenuImpWindows>(menu())->retryTrayIcon();
            }
            return 0;
        }
        update();
        return 0;
    case WM_CTLCOLORSTATIC:
        return reinterpret_cast<LRESULT>(staticControlBrush(reinterpret_cast<HDC>(wParam)));
    case trayMessage:
        return onTrayMessage(lParam);
    case laneResultMessage:
        laneResultArrived(static_cast<LaneResult>(wParam), static_cast<std::int32_t>(lParam));
        return 0;
    default:
        if (message == taskbarCreatedMessage() && menu()) {
            std::static_pointer_cast<MenuImpWindows>(menu())->restoreTrayIcon();
            return 0;
        }
        return DefWindowProcW(window, message, wParam, lParam);
    }
}

LRESULT WindowImpWindows::onNotify(WPARAM wParam, LPARAM lParam) {
    const auto* header = reinterpret_cast<const NMHDR*>(lParam);
    switch (header->code) {
    case TCN_SELCHANGE:
        changeTab();
        return 0;
    case NM_RETURN:
    case NM_CLICK:
        return byteResult(runCommand(static_cast<std::int32_t>(wParam)));
    default:
        return 0;
    }
}

LRESULT WindowImpWindows::onCommand(WPARAM wParam, LPARAM lParam) {
    if (HIWORD(wParam) == CBN_SELCHANGE) {
        const HWND language = handleOf(widget(widgetid::languageBox));
        const HWND logLevel = handleOf(widget(widgetid::logLevelBox));
        const auto control = reinterpret_cast<HWND>(lParam);
        if (control == language) {
            changeLanguage(static_cast<std::int32_t>(SendMessageW(language, CB_GETCURSEL, 0, 0)));
        } else if (control == logLevel) {
            changeLogLevel(static_cast<std::int32_t>(SendMessageW(logLevel, CB_GETCURSEL, 0, 0)));
        }
        return 0;
    }
    return byteResult(commandEvent(LOWORD(wParam)));
}

LRESULT WindowImpWindows::onTrayMessage(LPARAM lParam) {
    switch (LOWORD(lParam)) {
    case WM_LBUTTONDOWN:
        show();
        return 0;
    case WM_RBUTTONDOWN:
        showMenu();
        return 0;
    default:
        return 0;
    }
}
