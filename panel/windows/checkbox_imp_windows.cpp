#include "panel/windows/checkbox_imp_windows.h"

#include "foundation/exceptions.h"
#include "foundation/message_catalogue.h"
#include "panel/startup_state.h"

namespace {
constexpr DWORD checkboxStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_AUTOCHECKBOX;
}

CheckboxImpWindows::CheckboxImpWindows(const WidgetDisposition& disposition, HINSTANCE instance,
                                       HWND parent, std::int32_t widgetId,
                                       std::shared_ptr<Command> command)
    : WidgetImpWindows(disposition, instance, parent, L"Button", checkboxStyle,
                       requiredCommandId(command)) {
    setCommand(std::move(command));
    if (!applyStockFont()) {
        throw BasicException(panelMessages.text(panelmsg::checkboxNotCreated));
    }
    checked_ = startupChecked(widgetId);
    SendMessageW(handle_, BM_SETCHECK, checked_ ? BST_CHECKED : BST_UNCHECKED, 0);
}

bool CheckboxImpWindows::isChecked() const {
    return SendMessageW(handle_, BM_GETCHECK, 0, 0) != 0;
}
