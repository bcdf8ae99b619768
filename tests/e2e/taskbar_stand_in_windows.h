#pragma once

#include <windows.h>

#include <atomic>
#include <thread>

// A taskbar that isn't ready yet, as at log-on: a window of the taskbar's class, above the real
// one, that refuses every icon it is given. The system's Shell_NotifyIconW finds the first window
// of that class, so while the stand-in lives, every program's NIM_ADD fails. It lives on a thread
// of its own, which answers the programs' messages.
namespace e2e {

class TaskbarStandIn {
public:
    TaskbarStandIn();
    ~TaskbarStandIn();
    TaskbarStandIn(const TaskbarStandIn&) = delete;
    TaskbarStandIn& operator=(const TaskbarStandIn&) = delete;

    bool ready() const { return window_ != nullptr; }
    // How many icon requests were refused so far.
    int refused() const { return refused_.load(); }

private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void run(HANDLE created);

    std::atomic<HWND> window_{nullptr};
    std::atomic<int> refused_{0};
    std::thread thread_;
};

} // namespace e2e
