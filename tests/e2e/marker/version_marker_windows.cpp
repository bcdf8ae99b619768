// A library that stands where an attacker would plant one: laid beside a program under the name of
// a system library (version.dll, iphlpapi.dll, dnsapi.dll). Loading it leaves its proof, the empty
// file "<its path>.loaded", next to it; it does nothing else.
// It exports the one function that the importer (version_importer_windows.cpp) takes from
// version.dll, so that a program importing that library can start with it.
#include <windows.h>

#include <string>

extern "C" __declspec(dllexport) DWORD WINAPI GetFileVersionInfoSizeW(LPCWSTR, LPDWORD handle) {
    if (handle != nullptr) {
        *handle = 0;
    }
    SetLastError(ERROR_RESOURCE_TYPE_NOT_FOUND);
    return 0;
}

BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) {
        wchar_t path[MAX_PATH] = {};
        const DWORD length = GetModuleFileNameW(module, path, MAX_PATH);
        if (length > 0 && length < MAX_PATH) {
            const std::wstring proof = std::wstring(path, length) + L".loaded";
            HANDLE file = CreateFileW(proof.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
            if (file != INVALID_HANDLE_VALUE) {
                CloseHandle(file);
            }
        }
    }
    return TRUE;
}
