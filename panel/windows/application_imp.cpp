#include "panel/windows/application_imp.h"

#include "panel/app_data_manager.h"
#include "panel/windows/dispatch_failure_windows.h"
#include "panel/windows/window_imp_windows.h"

namespace {

// The program's resources hold no accelerator table: the handle is null and nothing translates.
constexpr WORD acceleratorTable = 110;

} // namespace

ApplicationImp::ApplicationImp(const WindowRecord& record)
    : Application(
          std::make_shared<WindowImpWindows>(record.title, record.size, GetModuleHandleW(nullptr)),
          utils::AppDataManager::instance()) {}

std::int32_t ApplicationImp::run(const std::string& commandLine) {
    HACCEL accelerators =
        LoadAcceleratorsW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(acceleratorTable));
    if (commandLine.find("--silent") == std::string::npos) {
        window().show();
    }
    MSG message{};
    for (;;) {
        const BOOL got = GetMessageW(&message, nullptr, 0, 0);
        if (got == 0 || got == -1) {
            break;
        }
        if (TranslateAcceleratorW(message.hwnd, accelerators, &message) != 0) {
            continue;
        }
        // Gives the Tab key its meaning between the controls of the plain window.
        if (IsDialogMessageW(GetAncestor(message.hwnd, GA_ROOT), &message) == 0) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    rethrowDispatchFailure();
    return static_cast<std::int32_t>(message.wParam);
}

void ApplicationImp::quit() {
    window().destroy();
}

std::shared_ptr<Application> makeApplicationImp(const WindowRecord& record) {
    return std::make_shared<ApplicationImp>(record);
}
