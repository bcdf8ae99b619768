#pragma once

#include <string>
#include <vector>

#include "panel/windows/widget_imp_windows.h"

// The tab strip. It parents no control: a change of tab shows and hides the widgets of each tab.
class TabpanelImpWindows : public WidgetImpWindows {
public:
    TabpanelImpWindows(const WidgetDisposition& disposition, HINSTANCE instance, HWND parent,
                       std::vector<std::string> tabs);

    WidgetKind kind() const override { return WidgetKind::Tabpanel; }
    // Renames the tabs in the language in force; the selection stays.
    void updateText() override;
    std::int32_t selectedIndex() const override;

private:
    void setTab(std::uint8_t index, UINT message);

    std::vector<std::string> tabs_;
};
