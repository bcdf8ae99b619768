#pragma once

#include <memory>

#include "panel/windows/widget_imp_windows.h"

// A push button; its control id is its command's id, so a click arrives as that command.
class ButtonImpWindows : public WidgetImpWindows {
public:
    ButtonImpWindows(const WidgetDisposition& disposition, HINSTANCE instance, HWND parent,
                     std::shared_ptr<Command> command);

    WidgetKind kind() const override { return WidgetKind::Button; }
    std::int32_t commandId() const override { return command()->id; }
};
