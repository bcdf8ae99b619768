#include "tests/support/diagnostics/zip_tool_command.h"

#include <chrono>
#include <fstream>
#include <sstream>
#include <thread>

#include <windows.h>

#include "foundation/text.h"
#include "tests/support/foundation/temp_folder.h"

// Under Wine a Windows program can start a Unix one, but gets no handle that it could wait on:
// the shell script therefore leaves its status in a file as the very last thing it does, and the
// test polls for that file. On Windows itself there is no POSIX side and nothing runs.

namespace {

using UnixNameOf = char*(__cdecl*)(const wchar_t*);
using DosNameOf = wchar_t*(__cdecl*)(const char*);

template <typename Function> Function wineFunction(const char* name) {
    const HMODULE kernel = GetModuleHandleW(L"kernel32.dll");
    if (kernel == nullptr) {
        return nullptr;
    }
    // Through the generic function type, which any function pointer may be cast to and from.
    return reinterpret_cast<Function>(reinterpret_cast<void (*)()>(GetProcAddress(kernel, name)));
}

std::optional<std::string> unixNameOf(const std::string& path) {
    const auto convert = wineFunction<UnixNameOf>("wine_get_unix_file_name");
    if (convert == nullptr) {
        return std::nullopt;
    }
    char* name = convert(utf8ToUtf16(path).c_str());
    if (name == nullptr) {
        return std::nullopt;
    }
    std::string result(name);
    HeapFree(GetProcessHeap(), 0, name);
    return result;
}

std::optional<std::wstring> dosNameOf(const char* unixPath) {
    const auto convert = wineFunction<DosNameOf>("wine_get_dos_file_name");
    if (convert == nullptr) {
        return std::nullopt;
    }
    wchar_t* name = convert(unixPath);
    if (name == nullptr) {
        return std::nullopt;
    }
    std::wstring result(name);
    HeapFree(GetProcessHeap(), 0, name);
    return result;
}

std::string quoted(const std::string& text) {
    std::string result = "'";
    for (const char c : text) {
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return result + "'";
}

std::optional<std::string> readAll(const std::string& path) {
    std::ifstream in(nativePath(path), std::ios::binary);
    if (!in) {
        return std::nullopt;
    }
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

bool startShell(const std::wstring& shell, const std::string& script) {
    std::wstring line = L"sh -c \"" + utf8ToUtf16(script) + L"\"";
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION information{};
    if (!CreateProcessW(shell.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &information)) {
        return false;
    }
    CloseHandle(information.hThread);
    CloseHandle(information.hProcess);
    return true;
}

std::optional<std::string> waitForFile(const std::string& path) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (std::chrono::steady_clock::now() < end) {
        if (auto text = readAll(path)) {
            return text;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return std::nullopt;
}

} // namespace

std::optional<ToolResult> runPosixTool(const std::string& program, const std::string& arguments,
                                       const std::string& path) {
    const std::optional<std::string> unixPath = unixNameOf(path);
    const std::optional<std::wstring> shell = dosNameOf("/bin/sh");
    if (!unixPath || !shell) {
        return std::nullopt;
    }
    const std::string output = quoted(*unixPath + ".out");
    const std::string status = *unixPath + ".status";
    // The status file appears whole, by a rename, so that a reader never sees half of it.
    const std::string script =
        "PATH=/usr/local/bin:/usr/bin:/bin; command -v " + program +
        " >/dev/null 2>&1 || { echo 127 >" + quoted(status + ".part") + "; mv " +
        quoted(status + ".part") + " " + quoted(status) + "; exit 0; }; " + program + " " +
        arguments + " " + quoted(*unixPath) + " >" + output + " 2>&1; echo $? >" +
        quoted(status + ".part") + "; mv " + quoted(status + ".part") + " " + quoted(status);
    if (!startShell(*shell, script)) {
        return std::nullopt;
    }
    const std::optional<std::string> statusText = waitForFile(path + ".status");
    DeleteFileW(utf8ToUtf16(path + ".status").c_str());
    if (!statusText || std::stoi(*statusText) == 127) {
        DeleteFileW(utf8ToUtf16(path + ".out").c_str());
        return std::nullopt;
    }
    ToolResult result;
    result.status = std::stoi(*statusText);
    result.output = readAll(path + ".out").value_or("");
    DeleteFileW(utf8ToUtf16(path + ".out").c_str());
    return result;
}

bool posixToolsReachable() {
    return wineFunction<UnixNameOf>("wine_get_unix_file_name") != nullptr &&
           dosNameOf("/bin/sh").has_value();
}
