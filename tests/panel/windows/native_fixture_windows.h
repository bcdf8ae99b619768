#pragma once

#include <windows.h>

#include <atomic>
#include <fstream>
#include <map>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "foundation/language.h"
#include "foundation/message_catalogue.h"
#include "panel/app_data_manager.h"
#include "panel/command.h"
#include "tests/support/foundation/temp_folder.h"

// What the tests of the native half share: a hidden parent window, a layout file of their own,
// commands that count their runs, and the catalogues in English.
namespace native_test {

class CountingCommand : public Command {
public:
    explicit CountingCommand(std::int32_t id) : Command(id) {}
    void execute() override { ++runs; }
    std::atomic<int> runs{0};
};

inline WidgetDisposition place(int x, int y, std::string text = "", std::int32_t tab = 0) {
    WidgetDisposition disposition;
    disposition.size = {120, 24};
    disposition.position = {x, y};
    disposition.text = text.find("CVCP-") != std::string::npos ? text : std::string();
    disposition.displayText =
        disposition.text.empty() ? text : std::string(panelMessages.text(text.c_str()));
    disposition.tabIndex = tab;
    return disposition;
}

inline LONG styleOf(HWND window) {
    return GetWindowLongW(window, GWL_STYLE);
}

inline std::wstring textOf(HWND window) {
    wchar_t buffer[512] = {};
    GetWindowTextW(window, buffer, static_cast<int>(sizeof(buffer) / sizeof(buffer[0])));
    return buffer;
}

// The styles that the windows of this thread were asked for, as CreateWindowExW got them. Some
// controls change their own style at creation (the combo box drops WS_BORDER, the tab control adds
// WS_CLIPSIBLINGS), so the style read back later is not what the program asked for.
class CreationStyles {
public:
    CreationStyles() {
        styles().clear();
        hook_ = SetWindowsHookExW(WH_CBT, record, nullptr, GetCurrentThreadId());
    }
    ~CreationStyles() { UnhookWindowsHookEx(hook_); }
    CreationStyles(const CreationStyles&) = delete;
    CreationStyles& operator=(const CreationStyles&) = delete;

    LONG of(HWND window) const { return styles().at(window); }

private:
    static std::map<HWND, LONG>& styles() {
        static std::map<HWND, LONG> created;
        return created;
    }
    static LRESULT CALLBACK record(int code, WPARAM wParam, LPARAM lParam) {
        if (code == HCBT_CREATEWND) {
            const auto* creation = reinterpret_cast<CBT_CREATEWNDW*>(lParam);
            styles()[reinterpret_cast<HWND>(wParam)] = static_cast<LONG>(creation->lpcs->style);
        }
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }

    HHOOK hook_ = nullptr;
};

// A layout with the window record and no widgets; the window class and timer period are the
// test's.
inline std::string windowLayout(const std::string& className, int updateTime) {
    return R"({"window": {"title": "CVCP-001001", "size": {"x": 400, "y": 300}, "className": ")" +
           className + R"(", "updateTime": )" + std::to_string(updateTime) +
           R"(}, "menu": {"items": []}, "widgets": {}})";
}

struct NativeFixture : ::testing::Test {
    void SetUp() override {
        language = panelMessages.language;
        panelMessages.setLanguage(English);
        instance = GetModuleHandleW(nullptr);
        parent = CreateWindowExW(0, L"STATIC", L"parent", WS_OVERLAPPED, 0, 0, 400, 300, nullptr,
                                 nullptr, instance, nullptr);
        ASSERT_NE(parent, nullptr);
    }
    void TearDown() override {
        DestroyWindow(parent);
        panelMessages.setLanguage(language);
    }

    // A layout file of the test's own, parsed.
    std::unique_ptr<utils::AppDataManager> layoutOf(const std::string& json) {
        const std::string path = folder.file("CVHControlPanel.json");
        std::ofstream(nativePath(path), std::ios::binary) << json;
        return std::make_unique<utils::AppDataManager>(path);
    }

    TempFolder folder;
    HINSTANCE instance = nullptr;
    HWND parent = nullptr;
    int language = 0;
};

} // namespace native_test
