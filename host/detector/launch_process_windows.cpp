#include "host/detector/launch_process.h"

#include <windows.h>

#include <vector>

#include "foundation/text.h"

namespace detector::native {

bool startDetached(const std::string& path, const std::string& arguments,
                   const std::string& folder) {
    const std::wstring application = utf8ToUtf16(path);
    const std::wstring workingFolder = utf8ToUtf16(folder);
    // The system may write into the command line, so it gets a copy of its own.
    const std::wstring line = utf8ToUtf16(arguments);
    std::vector<wchar_t> commandLine(line.begin(), line.end());
    commandLine.push_back(L'\0');
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION information{};
    if (!CreateProcessW(path.empty() ? nullptr : application.c_str(),
                        arguments.empty() ? nullptr : commandLine.data(), nullptr, nullptr, FALSE,
                        CREATE_NO_WINDOW, nullptr, folder.empty() ? nullptr : workingFolder.c_str(),
                        &startup, &information)) {
        return false;
    }
    CloseHandle(information.hProcess);
    CloseHandle(information.hThread);
    return true;
}

} // namespace detector::native
