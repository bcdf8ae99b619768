#pragma once

#include <memory>
#include <string>

#include "panel/windows/widget_imp_windows.h"

#include <commctrl.h>

// A link label. The control reads the "<a>" markup of its text itself; a click or Return on the
// link reaches the main window as a notification with the command's id as control id. The link
// of the service page (commandid::openServicePage) carries a tooltip with the service's address.
class SyslinkImpWindows : public WidgetImpWindows {
public:
    SyslinkImpWindows(const WidgetDisposition& disposition, HINSTANCE instance, HWND parent,
                      std::shared_ptr<Command> command);

    WidgetKind kind() const override { return WidgetKind::Syslink; }
    std::int32_t commandId() const override { return command()->id; }
    void setTooltipText(const std::wstring& text) override;

    HWND tooltipHandle() const { return tooltip_; }

private:
    void createTooltip();
    TOOLINFOW toolInfo(const std::wstring& text) const;

    // The tooltip's text as it was last given.
    std::wstring tooltipText_;
};
