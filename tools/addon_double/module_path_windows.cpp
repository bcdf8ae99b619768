#include "module_path.h"

#include <windows.h>

// The module is found from the address of this very function.
std::filesystem::path modulePath() {
    HMODULE module = nullptr;
    const DWORD flags =
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (!GetModuleHandleExW(flags, reinterpret_cast<LPCWSTR>(&modulePath), &module)) {
        return {};
    }
    wchar_t buffer[MAX_PATH] = {};
    const DWORD length = GetModuleFileNameW(module, buffer, sizeof(buffer) / sizeof(buffer[0]));
    return std::filesystem::path(std::wstring(buffer, length));
}
