#pragma once

#include "panel/windows/widget_imp_windows.h"

// A static text. Its colours come from the main window's answer to WM_CTLCOLORSTATIC.
class LabelImpWindows : public WidgetImpWindows {
public:
    LabelImpWindows(const WidgetDisposition& disposition, HINSTANCE instance, HWND parent);
    ~LabelImpWindows() override;

    WidgetKind kind() const override { return WidgetKind::Label; }

private:
    HFONT font_ = nullptr;
};
