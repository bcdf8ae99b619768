#include "tests/e2e/taskbar_stand_in_windows.h"

namespace e2e {

namespace {

constexpr wchar_t taskbarClass[] = L"Shell_TrayWnd";

} // namespace

TaskbarStandIn::TaskbarStandIn() {
    HANDLE created = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    thread_ = std::thread([this, created] { run(created); });
    WaitForSingleObject(created, 10000);
    CloseHandle(created);
}

TaskbarStandIn::~TaskbarStandIn() {
    if (HWND window = window_.load()) {
        PostMessageW(window, WM_CLOSE, 0, 0);
    }
    thread_.join();
}

LRESULT CALLBACK TaskbarStandIn::procedure(HWND window, UINT message, WPARAM wParam,
                                           LPARAM lParam) {
    auto* self = reinterpret_cast<TaskbarStandIn*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    switch (message) {
    case WM_COPYDATA:
        // Every icon request reaches the taskbar as a copy of its data: each is refused.
        if (self != nullptr) {
            ++self->refused_;
        }
        return FALSE;
    case WM_DESTROY:
        PostQuitMessage(0);
        return 0;
    default:
        return DefWindowProcW(window, message, wParam, lParam);
    }
}

void TaskbarStandIn::run(HANDLE created) {
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof(windowClass);
    windowClass.lpfnWndProc = procedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = taskbarClass;
    RegisterClassExW(&windowClass);
    // Top-most, so that it comes before the real taskbar in the order the system searches.
    HWND window = CreateWindowExW(WS_EX_TOPMOST | WS_EX_TOOLWINDOW, taskbarClass, L"", WS_POPUP, 0,
                                  0, 0, 0, nullptr, nullptr, windowClass.hInstance, nullptr);
    if (window != nullptr) {
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
    window_ = window;
    SetEvent(created);
    MSG message{};
    while (window != nullptr && GetMessageW(&message, nullptr, 0, 0) > 0) {
        DispatchMessageW(&message);
    }
    window_ = nullptr;
    UnregisterClassW(taskbarClass, windowClass.hInstance);
}

} // namespace e2e
