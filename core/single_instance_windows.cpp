#include "core/single_instance.h"

#include <windows.h>

#include "foundation/text.h"

namespace {

HANDLE handleOf(InstanceMutex mutex) {
    return reinterpret_cast<HANDLE>(mutex);
}

HWND runningWindow(const std::string& className) {
    return FindWindowW(fromCp1251(className).c_str(), nullptr);
}

} // namespace

namespace singleinstance::native {

std::optional<InstanceMutex> openMutex(const std::string& name) {
    HANDLE mutex = OpenMutexW(MUTEX_ALL_ACCESS, FALSE, utf8ToUtf16(name).c_str());
    if (mutex == nullptr) {
        return std::nullopt;
    }
    return reinterpret_cast<InstanceMutex>(mutex);
}

std::optional<InstanceMutex> createMutex(const std::string& name) {
    HANDLE mutex = CreateMutexW(nullptr, FALSE, utf8ToUtf16(name).c_str());
    if (mutex == nullptr) {
        return std::nullopt;
    }
    return reinterpret_cast<InstanceMutex>(mutex);
}

void releaseMutex(InstanceMutex handle) {
    ReleaseMutex(handleOf(handle));
}

void bringToFront(const std::string& className) {
    HWND window = runningWindow(className);
    if (window == nullptr) {
        return;
    }
    SetForegroundWindow(window);
    ShowWindow(window, SW_SHOW);
}

void sendDestroy(const std::string& className) {
    // WM_DESTROY itself, sent rather than posted: the running window answers it by ending its
    // message loop. With no window found the message goes to a null handle and nothing happens.
    SendMessageW(runningWindow(className), WM_DESTROY, 0, 0);
}

} // namespace singleinstance::native
