// A command-line face of the UI driver, for scripts that show the running control panel (the
// demo, the screenshots):
//   cvh_ui wait-ready [seconds]   waits until the window is shown and the link has the address
//   cvh_ui tab INDEX              shows a tab of the window as a click on it would
//   cvh_ui text ID                prints a control's text (layout id)
//   cvh_ui controls               prints every control: class, place, visible, text
//   cvh_ui wait-ended [seconds]   waits until no control panel runs (its instance mutex is gone)
// Exit code 0 on success, 1 when the window or control isn't there in time.
#include <windows.h>

#include <cstdio>
#include <string>

#include "foundation/text.h"
#include "tests/e2e/layout_index_windows.h"
#include "tests/e2e/ui_driver_windows.h"

namespace {

constexpr int addressLink = 2;
constexpr int tabs = 9;

HWND panelWindow(std::chrono::milliseconds timeout) {
    HWND window = nullptr;
    ui::waitUntil([&] { return (window = FindWindowW(L"CVHControlPanel", nullptr)) != nullptr; },
                  timeout);
    return window;
}

int waitReady(int seconds) {
    const auto timeout = std::chrono::seconds(seconds);
    HWND window = panelWindow(timeout);
    if (window == nullptr) {
        return 1;
    }
    const e2e::LayoutIndex layout;
    const bool ready = ui::waitUntil(
        [&] {
            HWND link = layout.widget(window, addressLink);
            return ui::isVisible(window) && link != nullptr && ui::text(link) != L"-" &&
                   !ui::text(link).empty();
        },
        timeout);
    return ready ? 0 : 1;
}

int showTab(int index) {
    HWND window = panelWindow(std::chrono::seconds(10));
    if (window == nullptr) {
        return 1;
    }
    HWND control = e2e::LayoutIndex().widget(window, tabs);
    if (control == nullptr) {
        return 1;
    }
    ui::chooseTab(control, index);
    return ui::waitUntil([&] { return ui::tabSelection(control) == index; }) ? 0 : 1;
}

int printText(int id) {
    HWND window = panelWindow(std::chrono::seconds(10));
    HWND control = window != nullptr ? e2e::LayoutIndex().widget(window, id) : nullptr;
    if (control == nullptr) {
        return 1;
    }
    std::printf("%s\n", utf16ToUtf8(ui::text(control)).c_str());
    return 0;
}

int waitEnded(int seconds) {
    const bool ended = ui::waitUntil(
        [] {
            HANDLE mutex = OpenMutexW(SYNCHRONIZE, FALSE, L"CVHControlPanel");
            if (mutex == nullptr) {
                return true;
            }
            CloseHandle(mutex);
            return false;
        },
        std::chrono::seconds(seconds));
    return ended ? 0 : 1;
}

int printControls() {
    HWND window = panelWindow(std::chrono::seconds(10));
    if (window == nullptr) {
        return 1;
    }
    for (HWND child : ui::children(window)) {
        RECT box{};
        GetWindowRect(child, &box);
        POINT corner{box.left, box.top};
        ScreenToClient(window, &corner);
        std::printf("%-16s %4ld %4ld %4ld %4ld %s %s\n", utf16ToUtf8(ui::className(child)).c_str(),
                    corner.x, corner.y, box.right - box.left, box.bottom - box.top,
                    ui::isVisible(child) ? "shown " : "hidden",
                    utf16ToUtf8(ui::text(child)).c_str());
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    const std::string command = argc > 1 ? argv[1] : "";
    const int number = argc > 2 ? std::atoi(argv[2]) : 0;
    if (command == "wait-ready") {
        return waitReady(argc > 2 ? number : 60);
    }
    if (command == "tab" && argc > 2) {
        return showTab(number);
    }
    if (command == "text" && argc > 2) {
        return printText(number);
    }
    if (command == "wait-ended") {
        return waitEnded(argc > 2 ? number : 30);
    }
    if (command == "controls") {
        return printControls();
    }
    std::fprintf(stderr, "usage: cvh_ui wait-ready [seconds] | tab INDEX | text ID | controls | "
                         "wait-ended [seconds]\n");
    return 2;
}
