// The control panel's entry on Windows.
#include <windows.h>

#include <cwchar>

#include "core/application.h"
#include "core/display_version.h"
#include "core/program_entry.h"
#include "core/single_instance.h"
#include "foundation/language.h"
#include "foundation/system_library_windows.h"
#include "foundation/text.h"
#include "host/host_facts.h"
#include "panel/app_data_manager.h"

namespace {

// The running instance's window is found by the class that the layout names; the layout is read
// only when another instance runs.
std::string layoutClassName() {
    return utils::AppDataManager::instance().window().className;
}

StartupSteps controlPanelSteps() {
    return {
        [] { applyLanguage(readLanguage()); },
        [] { quitRunningInstance(layoutClassName); },
        [] { return ensureSingleInstance(layoutClassName); },
        [] { return checkInstallation(); },
        [] { syncDisplayVersion(hostUninstallKey(), [] { return libraryVersion(); }); },
        [](const std::string& commandLine) { return getApplication()->run(commandLine); },
    };
}

} // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR commandLine, int) {
    // Before anything loads a library: none comes from the program's folder or the current one.
    searchLibrariesInTheSystemFolderOnly();
    // The whole line, not split into arguments.
    const std::string line = utf16ToUtf8(std::wstring_view(commandLine, std::wcslen(commandLine)));
    const int code = runControlPanel(line, controlPanelSteps());
    // A worker may still be inside a long wait of a start or a report, reading the host and the
    // catalogues. Returning would destroy those statics while it runs. Ending the process by
    // ExitProcess would still run every library's detach after its other threads were stopped
    // wherever they stood: a report stopped inside the system's management calls then crashed the
    // exit now and again. The process ends here at once instead; every setting is written when it
    // is made, so only the mutex is left to give back.
    releaseInstanceMutex();
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(code));
    return code;
}
