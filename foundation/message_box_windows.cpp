#include "foundation/message_box.h"

#include <windows.h>

void systemMessageBox(const std::wstring& caption, const std::wstring& text, unsigned flags) {
    MessageBoxW(nullptr, text.c_str(), caption.c_str(), flags);
}
