#include "panel/windows/loop_dispatch_windows.h"

namespace {

bool hasClass(HWND control, const wchar_t* name) {
    wchar_t className[32] = {};
    GetClassNameW(control, className, sizeof(className) / sizeof(className[0]));
    return lstrcmpiW(className, name) == 0;
}

// An open drop-down list takes Esc and Enter for itself: they close it.
bool isOpenComboBox(HWND control) {
    return hasClass(control, L"ComboBox") &&
           SendMessageW(control, CB_GETDROPPEDSTATE, 0, 0) != FALSE;
}

bool isPushButton(HWND control) {
    const LRESULT code = SendMessageW(control, WM_GETDLGCODE, 0, 0);
    return (code & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) != 0;
}

void pressEnter(const MSG& message) {
    const HWND focus = message.hwnd;
    if (!IsWindowEnabled(focus)) {
        return;
    }
    if (isPushButton(focus)) {
        SendMessageW(focus, BM_CLICK, 0, 0);
    } else if (hasClass(focus, L"SysLink")) {
        // The link answers Enter itself, with the notification that a click gives.
        DispatchMessageW(&message);
    }
}

// True when the key was handled here and must go no further.
bool handleWindowKey(const MSG& message) {
    if (message.message != WM_KEYDOWN || isOpenComboBox(message.hwnd)) {
        return false;
    }
    switch (message.wParam) {
    case VK_ESCAPE:
        PostMessageW(GetAncestor(message.hwnd, GA_ROOT), WM_CLOSE, 0, 0);
        return true;
    case VK_RETURN:
        pressEnter(message);
        return true;
    default:
        return false;
    }
}

} // namespace

void dispatchLoopMessage(MSG& message, HACCEL accelerators) {
    if (TranslateAcceleratorW(message.hwnd, accelerators, &message) != 0 ||
        handleWindowKey(message)) {
        return;
    }
    // Gives the Tab key its meaning between the controls of the plain window.
    if (IsDialogMessageW(GetAncestor(message.hwnd, GA_ROOT), &message) == 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}
