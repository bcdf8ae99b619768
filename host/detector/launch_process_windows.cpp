#include "host/detector/launch_process.h"

#include <windows.h>

#include <vector>

#include "foundation/text.h"

namespace detector::native {

bool startDetached(const std::string& path, const std::string& arguments,
                   const std::string& folder) {
    const std::string application = utf8ToCp1251(path);
    const std::string workingFolder = utf8ToCp1251(folder);
    // The system may write into the command line, so it gets a copy of its own.
    const std::string line = utf8ToCp1251(arguments);
    std::vector<char> commandLine(line.begin(), line.end());
    commandLine.push_back('\0');
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION information{};
    if (!CreateProcessA(path.empty() ? nullptr : application.c_str(),
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
