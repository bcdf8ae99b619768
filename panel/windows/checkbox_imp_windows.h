#pragma once

#include <memory>

#include "panel/windows/widget_imp_windows.h"

// A check box that toggles itself; its control id is its command's id.
class CheckboxImpWindows : public WidgetImpWindows {
public:
    // The check at start is the setting that the widget id stands for.
    CheckboxImpWindows(const WidgetDisposition& disposition, HINSTANCE instance, HWND parent,
                       std::int32_t widgetId, std::shared_ptr<Command> command);

    WidgetKind kind() const override { return WidgetKind::Checkbox; }
    std::int32_t commandId() const override { return command()->id; }
    // The control's own check, as the user left it.
    bool isChecked() const override;

private:
    // The start-up state only; afterwards the control is the truth.
    bool checked_ = false;
};
