#include "panel/windows/widget_imp_windows.h"

#include <utility>

#include "foundation/exceptions.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"

WidgetImpWindows::WidgetImpWindows(const WidgetDisposition& disposition, HINSTANCE instance,
                                   HWND parent, const wchar_t* windowClass, DWORD style,
                                   int controlId)
    : WidgetImp(disposition), instance_(instance), parent_(parent) {
    handle_ = CreateWindowExW(0, windowClass, nullptr, style, position().first, position().second,
                              size().first, size().second, parent,
                              reinterpret_cast<HMENU>(static_cast<INT_PTR>(controlId)), instance,
                              nullptr);
    if (handle_ == nullptr) {
        throw BasicException(panelMessages.text(panelmsg::widgetNotCreated));
    }
    if (!displayText().empty()) {
        showText(displayText());
    }
}

void WidgetImpWindows::setVisible(bool visible) {
    ShowWindow(handle_, visible ? SW_SHOW : SW_HIDE);
}

void WidgetImpWindows::setEnabled(bool enabled) {
    // The window's tick sets every button's state each second; disabling a control again would
    // still cancel its mouse capture and ask the system which window holds it.
    if (isEnabled() == enabled) {
        return;
    }
    EnableWindow(handle_, enabled ? TRUE : FALSE);
}

bool WidgetImpWindows::isEnabled() const {
    return IsWindowEnabled(handle_) != FALSE;
}

void WidgetImpWindows::showText(const std::string& text) {
    std::wstring wide = fromCp1251(text);
    if (wide == shownText_) {
        return;
    }
    SetWindowTextW(handle_, wide.c_str());
    shownText_ = std::move(wide);
}

HFONT WidgetImpWindows::stockFont() {
    return static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
}

bool WidgetImpWindows::applyStockFont() {
    HFONT font = stockFont();
    if (font == nullptr) {
        return false;
    }
    SendMessageW(handle_, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    return true;
}
