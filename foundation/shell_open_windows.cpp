#include "foundation/shell_open.h"

#include <windows.h>

#include <objbase.h>
#include <shellapi.h>

bool systemShellOpenPath(const std::wstring& path) {
    // A path that isn't there is refused at once: the shell would refuse it too, but may first
    // search for handlers for a long while.
    if (GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES) {
        return false;
    }
    // Called on whatever thread opens the folder; the result is deliberately not looked at.
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE);
    const HINSTANCE result =
        ShellExecuteW(nullptr, L"open", path.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    return reinterpret_cast<INT_PTR>(result) > 32;
}

void systemShellOpenUrl(const std::wstring& url) {
    ShellExecuteW(nullptr, L"open", url.c_str(), nullptr, nullptr, SW_SHOW);
}
