#include "diagnostics/event_log_export.h"

#include <windows.h>

#include "foundation/text.h"

std::optional<std::string> systemToolFolder() {
    wchar_t folder[MAX_PATH] = {};
    const UINT length = GetSystemDirectoryW(folder, MAX_PATH);
    if (length == 0 || length >= MAX_PATH) {
        return std::nullopt;
    }
    return utf16ToUtf8(folder);
}
