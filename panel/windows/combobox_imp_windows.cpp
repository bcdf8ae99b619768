#include "panel/windows/combobox_imp_windows.h"

#include "foundation/exceptions.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"
#include "panel/startup_state.h"

namespace {
constexpr DWORD comboStyle =
    WS_CHILD | WS_VISIBLE | WS_BORDER | WS_TABSTOP | CBS_DROPDOWNLIST | CBS_HASSTRINGS;
}

ComboboxImpWindows::ComboboxImpWindows(const WidgetDisposition& disposition, HINSTANCE instance,
                                       HWND parent, std::vector<std::string> values,
                                       std::int32_t widgetId, std::shared_ptr<Command> command)
    : WidgetImpWindows(disposition, instance, parent, L"ComboBox", comboStyle, 0) {
    setCommand(std::move(command));
    if (!applyStockFont()) {
        throw BasicException(panelMessages.text(panelmsg::comboboxNotCreated));
    }
    values_ = std::move(values);
    selection_ = static_cast<std::uint8_t>(startupSelection(widgetId));
    addEntries();
    SendMessageW(handle_, CB_SETCURSEL, selection_, 0);
}

void ComboboxImpWindows::addEntries() {
    for (const std::string& value : values_) {
        const std::wstring entry = fromCp1251(panelMessages.text(value.c_str()));
        SendMessageW(handle_, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(entry.c_str()));
    }
}

void ComboboxImpWindows::updateText() {
    const LRESULT kept = SendMessageW(handle_, CB_GETCURSEL, 0, 0);
    SendMessageW(handle_, CB_RESETCONTENT, 0, 0);
    addEntries();
    SendMessageW(handle_, CB_SETCURSEL, kept == CB_ERR ? 0 : static_cast<WPARAM>(kept), 0);
}

std::int32_t ComboboxImpWindows::selectedIndex() const {
    return static_cast<std::int32_t>(SendMessageW(handle_, CB_GETCURSEL, 0, 0));
}

void ComboboxImpWindows::select(std::int32_t index) {
    // CB_SETCURSEL sends no selection change: the program's own choice is no user's event.
    SendMessageW(handle_, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
}
