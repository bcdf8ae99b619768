#pragma once

#include <windows.h>

#include <string>

#include "panel/widget_imp.h"

// The native half shared by the six kinds of control: one child window of the main window. All
// controls are children of the main window, also those that lie on a tab: the tab panel isn't
// their parent, and tabs work only by showing and hiding.
class WidgetImpWindows : public WidgetImp {
public:
    void setVisible(bool visible) override;
    void setEnabled(bool enabled) override;
    bool isEnabled() const override;

    HWND nativeHandle() const { return handle_; }

protected:
    // Makes the control of that window class, style and control id at the disposition's place,
    // showing its start text. Fails with "CVCP-006006" when the control can't be made.
    WidgetImpWindows(const WidgetDisposition& disposition, HINSTANCE instance, HWND parent,
                     const wchar_t* windowClass, DWORD style, int controlId);

    void showText(const std::string& text) override;
    // Gives the control the system's GUI font; false when there is none.
    bool applyStockFont();
    // The stock GUI font, or null; the label keeps it in order to free it.
    static HFONT stockFont();

    HWND tooltip_ = nullptr;
    HINSTANCE instance_;
    HWND parent_;
    HWND handle_ = nullptr;

private:
    // The text the control was last given: the window's tick sets the same text every second,
    // and setting it again would only repaint the control.
    std::wstring shownText_;
};
