#include "panel/windows/label_imp_windows.h"

#include "foundation/exceptions.h"
#include "foundation/message_catalogue.h"

namespace {
constexpr DWORD labelStyle = WS_CHILD | WS_VISIBLE;
}

LabelImpWindows::LabelImpWindows(const WidgetDisposition& disposition, HINSTANCE instance,
                                 HWND parent)
    : WidgetImpWindows(disposition, instance, parent, L"Static", labelStyle, 0) {
    if (!applyStockFont()) {
        throw BasicException(panelMessages.text(panelmsg::labelNotCreated));
    }
    font_ = stockFont();
}

// Freeing a stock object is harmless; the label frees what it holds.
LabelImpWindows::~LabelImpWindows() {
    DeleteObject(font_);
}
