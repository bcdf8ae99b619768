#include "panel/windows/button_imp_windows.h"

#include "foundation/exceptions.h"
#include "foundation/message_catalogue.h"

namespace {
constexpr DWORD buttonStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP;
}

ButtonImpWindows::ButtonImpWindows(const WidgetDisposition& disposition, HINSTANCE instance,
                                   HWND parent, std::shared_ptr<Command> command)
    : WidgetImpWindows(disposition, instance, parent, L"Button", buttonStyle,
                       requiredCommandId(command)) {
    setCommand(std::move(command));
    if (!applyStockFont()) {
        throw BasicException(panelMessages.text(panelmsg::buttonNotCreated));
    }
}
