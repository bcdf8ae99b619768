#pragma once

#include <windows.h>

// Functions of Windows' own libraries that are not among the system's known libraries (VERSION,
// IPHLPAPI, DNSAPI, WSCAPI). The program's folder is one the user can write, and the system looks
// there first for an imported library it doesn't know; so these are loaded at run time from the
// system folder only, and kept until the process ends.

// The function, or null when the library or the function isn't there.
FARPROC systemFunction(const wchar_t* library, const char* name);

template <typename Function> Function systemFunctionAs(const wchar_t* library, const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(systemFunction(library, name)));
}

// Makes the system folder the only place that later loads of libraries by name look in.
void searchLibrariesInTheSystemFolderOnly();
