#include "panel/windows/widget_imp_windows.h"

#include <utility>

#include "foundation/exceptions.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"

WidgetImpWindows::WidgetImpWindows(const WidgetDisposition& disposition, HINSTANCE instance,
                                   HWND parent, const wchar_t* windowClass, DWORD style,
                                   int controlId)
    : WidgetImp(disposition), instance(instance), parent(parent) {
    handle = CreateWindowExW(0, windowClass, nullptr, style, position().first, position().second,
                             size().first, size().second, parent,
                             reinterpret_cast<HMENU>(static_cast<INT_PTR>(controlId)), instance,
                             nullptr);
    if (handle == nullptr) {
        throw BasicException(panelMessages.text(panelmsg::widgetNotCreated));
    }
    if (!displayText().empty()) {
        showText(displayText());
    }
}

void WidgetImpWindows::setVisible(bool visible) {
    ShowWindow(handle, visible ? SW_SHOW : SW_HIDE);
}

void WidgetImpWindows::setEnabled(bool enabled) {
    EnableWindow(handle, enabled ? TRUE : FALSE);
}

bool WidgetImpWindows::isEnabled() const {
    return IsWindowEnabled(handle) != FALSE;
}

void WidgetImpWindows::showText(const std::string& text) {
    std::wstring wide = fromCp1251(text);
    if (wide == shownText) {
        return;
    }
    SetWindowTextW(handle, wide.c_str());
    shownText = std::move(wide);
}

HFONT WidgetImpWindows::stockFont() {
    return static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
}

bool WidgetImpWindows::applyStockFont() {
    HFONT font = stockFont();
    if (font == nullptr) {
        return false;
    }
    SendMessageW(handle, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    return true;
}
