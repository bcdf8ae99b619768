#include "panel/windows/window_imp_windows.h"

#include <commctrl.h>

#include "foundation/exceptions.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"
#include "panel/app_data_manager.h"
#include "panel/windows/button_imp_windows.h"
#include "panel/windows/checkbox_imp_windows.h"
#include "panel/windows/combobox_imp_windows.h"
#include "panel/windows/label_imp_windows.h"
#include "panel/windows/menu_imp_windows.h"
#include "panel/windows/syslink_imp_windows.h"
#include "panel/windows/tabpanel_imp_windows.h"
#include "panel/windows/window_procedure_windows.h"

namespace {

constexpr UINT_PTR updateTimerId = 0;
// A fixed-size window: caption and close box, no minimise or maximise box.
constexpr DWORD windowStyle = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU;

} // namespace

WindowImpWindows::WindowImpWindows(std::string title, PixelPair size, HINSTANCE instance,
                                   const utils::AppDataManager& layout)
    : WindowImp(std::move(title), size), instance_(instance), layout_(layout) {
    InitCommonControls();
    if (!registerWindowClass()) {
        throw BasicException(panelMessages.text(panelmsg::windowNotRegistered));
    }
}

WindowImpWindows::~WindowImpWindows() {
    // Messages that still reach a window that outlives this object go to the default procedure.
    if (IsWindow(window_)) {
        SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
    }
}

bool WindowImpWindows::registerWindowClass() {
    const std::wstring className = fromCp1251(layout_.window().className);
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof(windowClass);
    windowClass.style = CS_VREDRAW | CS_HREDRAW;
    windowClass.lpfnWndProc = staticWindowProcedure;
    windowClass.hInstance = instance_;
    windowClass.hIcon = LoadIconW(instance_, MAKEINTRESOURCEW(programIconId));
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_MENU + 1);
    windowClass.lpszClassName = className.c_str();
    windowClass.hIconSm = LoadIconW(instance_, MAKEINTRESOURCEW(programIconId));
    return RegisterClassExW(&windowClass) != 0;
}

void WindowImpWindows::registerClass() {
    registerWindowClass();
}

bool WindowImpWindows::create() {
    if (window_ != nullptr) {
        return true;
    }
    const WindowRecord record = layout_.window();
    const auto [width, height] = size();
    // Centred on the primary screen, each half rounded down by itself.
    const auto screenWidth = static_cast<unsigned>(GetSystemMetrics(SM_CXSCREEN));
    const auto screenHeight = static_cast<unsigned>(GetSystemMetrics(SM_CYSCREEN));
    const int left = static_cast<int>((screenWidth >> 1) - (static_cast<unsigned>(width) >> 1));
    const int top = static_cast<int>((screenHeight >> 1) - (static_cast<unsigned>(height) >> 1));
    const std::wstring caption = fromCp1251(panelMessages.text(title().c_str()));
    window_ = CreateWindowExW(0, fromCp1251(record.className).c_str(), caption.c_str(), windowStyle,
                              left, top, width, height, nullptr, nullptr, instance_, this);
    if (window_ == nullptr) {
        return false;
    }
    // Never killed: the timer runs while the window is hidden and dies with the window.
    SetTimer(window_, updateTimerId, static_cast<UINT>(record.updateTime), nullptr);
    return true;
}

void WindowImpWindows::show() {
    if (IsWindow(window_)) {
        UpdateWindow(window_);
        SetForegroundWindow(window_);
        ShowWindow(window_, SW_SHOW);
    }
}

void WindowImpWindows::hide() {
    if (IsWindow(window_)) {
        ShowWindow(window_, SW_HIDE);
    }
}

void WindowImpWindows::destroy() {
    if (IsWindow(window_)) {
        DestroyWindow(window_);
    }
}

bool WindowImpWindows::isVisible() const {
    return IsWindowVisible(window_) != FALSE;
}

void WindowImpWindows::setCaption(const std::string& text) {
    SendMessageW(window_, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(fromCp1251(text).c_str()));
}

void WindowImpWindows::addTabpanel(const TabpanelRecord& record) {
    addWidget({record.id, std::make_shared<TabpanelImpWindows>(record.disposition, instance_,
                                                               window_, record.tabs)});
}

void WindowImpWindows::addCombobox(const ComboboxRecord& record) {
    addWidget({record.id,
               std::make_shared<ComboboxImpWindows>(record.disposition, instance_, window_,
                                                    record.values, record.id, record.command)});
}

void WindowImpWindows::addLabel(const LabelRecord& record) {
    addWidget(
        {record.id, std::make_shared<LabelImpWindows>(record.disposition, instance_, window_)});
}

void WindowImpWindows::addButton(const ButtonRecord& record) {
    addWidget({record.id, std::make_shared<ButtonImpWindows>(record.disposition, instance_, window_,
                                                             record.command)});
}

void WindowImpWindows::addSyslink(const ButtonRecord& record) {
    addWidget({record.id, std::make_shared<SyslinkImpWindows>(record.disposition, instance_,
                                                              window_, record.command)});
}

void WindowImpWindows::addCheckbox(const ButtonRecord& record) {
    addWidget({record.id, std::make_shared<CheckboxImpWindows>(
                              record.disposition, instance_, window_, record.id, record.command)});
}

void WindowImpWindows::createMenu() {
    if (!menu()) {
        setMenu(std::make_shared<MenuImpWindows>(window_, instance_, layout_));
    }
}

void WindowImpWindows::postLaneResult(LaneResult result, std::int32_t value) {
    // A window already gone takes no result: the program is ending.
    PostMessageW(window_, laneResultMessage, static_cast<WPARAM>(result),
                 static_cast<LPARAM>(value));
}
