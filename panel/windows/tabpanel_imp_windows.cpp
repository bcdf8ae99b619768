#include "panel/windows/tabpanel_imp_windows.h"

#include <commctrl.h>

#include "foundation/exceptions.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"

namespace {
constexpr DWORD tabStyle = WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_TABSTOP;
}

TabpanelImpWindows::TabpanelImpWindows(const WidgetDisposition& disposition, HINSTANCE instance,
                                       HWND parent, std::vector<std::string> tabs)
    : WidgetImpWindows(disposition, instance, parent, WC_TABCONTROLW, tabStyle, 0),
      tabs_(std::move(tabs)) {
    for (std::uint8_t index = 0; index < tabs_.size(); ++index) {
        setTab(index, TCM_INSERTITEMW);
    }
    SendMessageW(handle_, TCM_SETCURSEL, 0, 0);
    if (!applyStockFont()) {
        // The tab panel's failure has an id of its own that the catalogue lacks: its lookup is
        // what fails.
        throw BasicException(panelMessages.text("CVCP-006020"));
    }
}

void TabpanelImpWindows::setTab(std::uint8_t index, UINT message) {
    std::wstring caption = fromCp1251(panelMessages.text(tabs_[index].c_str()));
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = caption.data();
    SendMessageW(handle_, message, index, reinterpret_cast<LPARAM>(&item));
}

void TabpanelImpWindows::updateText() {
    for (std::uint8_t index = 0; index < tabs_.size(); ++index) {
        setTab(index, TCM_SETITEMW);
    }
}

std::int32_t TabpanelImpWindows::selectedIndex() const {
    return static_cast<std::int32_t>(SendMessageW(handle_, TCM_GETCURSEL, 0, 0));
}
