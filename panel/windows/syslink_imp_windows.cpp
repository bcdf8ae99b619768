#include "panel/windows/syslink_imp_windows.h"

#include <commctrl.h>

#include "foundation/exceptions.h"
#include "foundation/message_catalogue.h"
#include "host/corvanite_host.h"
#include "panel/layout_ids.h"

namespace {

constexpr DWORD linkStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP;

// A link on no tab in particular lies over the tab panel's frame and lets it show through.
DWORD styleFor(const WidgetDisposition& disposition) {
    return disposition.tabIndex == -1 ? linkStyle | LWS_TRANSPARENT : linkStyle;
}

} // namespace

SyslinkImpWindows::SyslinkImpWindows(const WidgetDisposition& disposition, HINSTANCE instance,
                                     HWND parent, std::shared_ptr<Command> command)
    : WidgetImpWindows(disposition, instance, parent, WC_LINK, styleFor(disposition),
                       requiredCommandId(command)) {
    setCommand(std::move(command));
    if (!applyStockFont()) {
        throw BasicException(panelMessages.text(panelmsg::syslinkNotCreated));
    }
    if (commandId() == commandid::openServicePage) {
        createTooltip();
    }
}

TOOLINFOW SyslinkImpWindows::toolInfo(const std::wstring& text) const {
    TOOLINFOW info{};
    info.cbSize = sizeof(info);
    info.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    info.hwnd = nullptr;
    info.uId = reinterpret_cast<UINT_PTR>(handle_);
    info.hinst = instance_;
    info.lpszText = const_cast<wchar_t*>(text.c_str());
    return info;
}

void SyslinkImpWindows::createTooltip() {
    tooltip_ = CreateWindowExW(0, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                               0, 0, 0, 0, nullptr, nullptr, instance_, nullptr);
    // The port follows at the first refresh.
    const std::wstring text = serviceUrl("");
    TOOLINFOW info = toolInfo(text);
    SendMessageW(tooltip_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&info));
    tooltipText_ = text;
}

// Without a tooltip (a link whose command isn't 12) the message goes to a null handle and is lost.
void SyslinkImpWindows::setTooltipText(const std::wstring& text) {
    // The window's tick gives the same address every second.
    if (text == tooltipText_) {
        return;
    }
    TOOLINFOW info = toolInfo(text);
    SendMessageW(tooltip_, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&info));
    tooltipText_ = text;
}
