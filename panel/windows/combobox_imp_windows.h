#pragma once

#include <memory>
#include <string>
#include <vector>

#include "panel/windows/widget_imp_windows.h"

// A drop-down list whose entries are catalogue ids. Its choice arrives at the main window as a
// selection change; the control id is 0.
class ComboboxImpWindows : public WidgetImpWindows {
public:
    // The entry selected at start is the one that the widget id stands for.
    ComboboxImpWindows(const WidgetDisposition& disposition, HINSTANCE instance, HWND parent,
                       std::vector<std::string> values, std::int32_t widgetId,
                       std::shared_ptr<Command> command);

    WidgetKind kind() const override { return WidgetKind::Combobox; }
    // Rewrites the entries in the language in force and keeps the selected index (0 if none).
    void updateText() override;
    std::int32_t selectedIndex() const override;
    void select(std::int32_t index) override;

private:
    void addEntries();

    std::vector<std::string> values_;
    // The start-up state only; afterwards the control is the truth.
    std::uint8_t selection_ = 0;
};
