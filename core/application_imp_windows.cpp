#include "core/application_imp_windows.h"

#include "panel/app_data_manager.h"
#include "panel/windows/dispatch_failure_windows.h"
#include "panel/windows/loop_dispatch_windows.h"
#include "panel/windows/window_imp_windows.h"

namespace {

// The program's resources hold no accelerator table: the handle is null and nothing translates.
constexpr WORD acceleratorTable = 110;

// Takes back the end of the loop that the window's destruction asked for.
void discardQuitMessage() {
    MSG quit{};
    while (PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) != FALSE) {
    }
}

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
        dispatchLoopMessage(message, accelerators);
    }
    if (hasDispatchFailure()) {
        // The box that tells the failure runs a message loop of its own: a window and timer still
        // alive would fail again inside it, end that loop and close the box before it is read.
        window().destroy();
        discardQuitMessage();
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
