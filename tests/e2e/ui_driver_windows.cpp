#include "tests/e2e/ui_driver_windows.h"

#include <commctrl.h>
#include <shellapi.h>

#include <cstdint>
#include <thread>

namespace ui {

namespace {

constexpr UINT trayMessage = WM_USER + 1;
constexpr UINT trayIconId = 202;
// The control of a message box that holds its text.
constexpr int messageBoxTextId = 0xFFFF;

struct TopSearch {
    std::wstring className;
    DWORD processId;
    HWND found;
};

BOOL CALLBACK matchTopWindow(HWND window, LPARAM data) {
    auto* search = reinterpret_cast<TopSearch*>(data);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner == search->processId && className(window) == search->className) {
        search->found = window;
        return FALSE;
    }
    return TRUE;
}

BOOL CALLBACK collectChild(HWND window, LPARAM data) {
    auto* found = reinterpret_cast<std::vector<HWND>*>(data);
    found->push_back(window);
    return TRUE;
}

LRESULT sendBounded(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    DWORD_PTR result = 0;
    SendMessageTimeoutW(window, message, wParam, lParam, SMTO_ABORTIFHUNG, 5000, &result);
    return static_cast<LRESULT>(result);
}

void postKey(HWND window, UINT key) {
    PostMessageW(window, WM_KEYDOWN, key, 1);
    PostMessageW(window, WM_KEYUP, key, 0xC0000001);
}

} // namespace

bool waitUntil(const std::function<bool()>& ready, std::chrono::milliseconds timeout) {
    const auto end = std::chrono::steady_clock::now() + timeout;
    while (!ready()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(50ms);
    }
    return true;
}

HWND findTopWindow(const std::wstring& className, DWORD processId) {
    TopSearch search{className, processId, nullptr};
    EnumWindows(matchTopWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

HWND waitForTopWindow(const std::wstring& className, DWORD processId,
                      std::chrono::milliseconds timeout) {
    HWND found = nullptr;
    waitUntil([&] { return (found = findTopWindow(className, processId)) != nullptr; }, timeout);
    return found;
}

std::vector<HWND> children(HWND parent) {
    std::vector<HWND> found;
    EnumChildWindows(parent, collectChild, reinterpret_cast<LPARAM>(&found));
    std::vector<HWND> direct;
    for (HWND child : found) {
        if (GetParent(child) == parent) {
            direct.push_back(child);
        }
    }
    return direct;
}

std::wstring className(HWND window) {
    wchar_t name[256] = {};
    GetClassNameW(window, name, static_cast<int>(sizeof(name) / sizeof(name[0])));
    return name;
}

HWND controlAt(HWND parent, const std::wstring& wanted, POINT position) {
    for (HWND child : children(parent)) {
        if (_wcsicmp(className(child).c_str(), wanted.c_str()) != 0) {
            continue;
        }
        RECT box{};
        GetWindowRect(child, &box);
        POINT corner{box.left, box.top};
        ScreenToClient(parent, &corner);
        if (corner.x == position.x && corner.y == position.y) {
            return child;
        }
    }
    return nullptr;
}

std::wstring text(HWND window) {
    const auto length = sendBounded(window, WM_GETTEXTLENGTH, 0, 0);
    std::wstring result(static_cast<std::size_t>(length) + 1, L'\0');
    const auto copied =
        sendBounded(window, WM_GETTEXT, result.size(), reinterpret_cast<LPARAM>(result.data()));
    result.resize(static_cast<std::size_t>(copied));
    return result;
}

bool isEnabled(HWND window) {
    return IsWindowEnabled(window) != FALSE;
}
bool isVisible(HWND window) {
    return IsWindowVisible(window) != FALSE;
}

void click(HWND button) {
    PostMessageW(button, BM_CLICK, 0, 0);
}

bool isChecked(HWND checkbox) {
    return sendBounded(checkbox, BM_GETCHECK, 0, 0) == BST_CHECKED;
}

void clickLink(HWND link) {
    const LPARAM point = MAKELPARAM(4, 6);
    PostMessageW(link, WM_LBUTTONDOWN, MK_LBUTTON, point);
    PostMessageW(link, WM_LBUTTONUP, 0, point);
}

void chooseComboEntry(HWND combobox, int index) {
    sendBounded(combobox, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
    const WPARAM command = MAKEWPARAM(GetDlgCtrlID(combobox), CBN_SELCHANGE);
    PostMessageW(GetParent(combobox), WM_COMMAND, command, reinterpret_cast<LPARAM>(combobox));
}

void chooseComboEntryNow(HWND combobox, int index) {
    sendBounded(combobox, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
    const WPARAM command = MAKEWPARAM(GetDlgCtrlID(combobox), CBN_SELCHANGE);
    sendBounded(GetParent(combobox), WM_COMMAND, command, reinterpret_cast<LPARAM>(combobox));
}

int comboSelection(HWND combobox) {
    return static_cast<int>(sendBounded(combobox, CB_GETCURSEL, 0, 0));
}

int comboCount(HWND combobox) {
    return static_cast<int>(sendBounded(combobox, CB_GETCOUNT, 0, 0));
}

std::wstring comboEntry(HWND combobox, int index) {
    const auto length = sendBounded(combobox, CB_GETLBTEXTLEN, static_cast<WPARAM>(index), 0);
    if (length < 0) {
        return {};
    }
    std::wstring entry(static_cast<std::size_t>(length) + 1, L'\0');
    sendBounded(combobox, CB_GETLBTEXT, static_cast<WPARAM>(index),
                reinterpret_cast<LPARAM>(entry.data()));
    entry.resize(static_cast<std::size_t>(length));
    return entry;
}

void chooseTab(HWND tabControl, int index) {
    sendBounded(tabControl, TCM_SETCURFOCUS, static_cast<WPARAM>(index), 0);
}

int tabSelection(HWND tabControl) {
    return static_cast<int>(sendBounded(tabControl, TCM_GETCURSEL, 0, 0));
}

std::wstring tabCaption(HWND tabControl, int index) {
    // The item record and its text buffer must lie in the control's own process.
    DWORD processId = 0;
    GetWindowThreadProcessId(tabControl, &processId);
    HANDLE process =
        OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, processId);
    if (process == nullptr) {
        return {};
    }
    constexpr std::size_t capacity = 256;
    const std::size_t bytes = sizeof(TCITEMW) + capacity * sizeof(wchar_t);
    auto* remote = static_cast<char*>(
        VirtualAllocEx(process, nullptr, bytes, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE));
    std::wstring caption;
    if (remote != nullptr) {
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = reinterpret_cast<wchar_t*>(remote + sizeof(TCITEMW));
        item.cchTextMax = capacity;
        WriteProcessMemory(process, remote, &item, sizeof(item), nullptr);
        if (sendBounded(tabControl, TCM_GETITEMW, static_cast<WPARAM>(index),
                        reinterpret_cast<LPARAM>(remote)) != 0) {
            wchar_t buffer[capacity] = {};
            ReadProcessMemory(process, remote + sizeof(TCITEMW), buffer, sizeof(buffer), nullptr);
            buffer[capacity - 1] = L'\0';
            caption = buffer;
        }
        VirtualFreeEx(process, remote, 0, MEM_RELEASE);
    }
    CloseHandle(process);
    return caption;
}

void trayClick(HWND window, UINT mouseMessage) {
    PostMessageW(window, trayMessage, trayIconId, static_cast<LPARAM>(mouseMessage));
}

void closeBox(HWND window) {
    PostMessageW(window, WM_CLOSE, 0, 0);
}

bool pressKey(HWND window, WORD key) {
    GUITHREADINFO thread{};
    thread.cbSize = sizeof(thread);
    if (!GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &thread)) {
        return false;
    }
    postKey(thread.hwndFocus != nullptr ? thread.hwndFocus : window, key);
    return true;
}

bool trayIconShown(HWND window) {
    NOTIFYICONDATAW icon{};
    icon.cbSize = sizeof(icon);
    icon.hWnd = window;
    icon.uID = trayIconId;
    return Shell_NotifyIconW(NIM_MODIFY, &icon) != FALSE;
}

void removeTrayIcon(HWND window) {
    NOTIFYICONDATAW icon{};
    icon.cbSize = sizeof(icon);
    icon.hWnd = window;
    icon.uID = trayIconId;
    Shell_NotifyIconW(NIM_DELETE, &icon);
}

namespace {

// The texts of the tools of a tooltip window of another process: the tool record and its text
// buffer must lie in that process.
// TTTOOLINFOW as a 64-bit process lays it out, for a 32-bit driver that asks the 64-bit shell.
struct ToolInfo64 {
    UINT cbSize;
    UINT uFlags;
    std::uint64_t hwnd;
    std::uint64_t uId;
    RECT rect;
    std::uint64_t hinst;
    std::uint64_t lpszText;
    std::uint64_t lParam;
    std::uint64_t lpReserved;
};
static_assert(sizeof(ToolInfo64) == 72);

// Whether the process is a 64-bit one while this driver runs in 32 bits.
bool widerThanThisProcess(HANDLE process) {
    BOOL selfEmulated = FALSE;
    BOOL otherEmulated = FALSE;
    return sizeof(void*) == 4 && IsWow64Process(GetCurrentProcess(), &selfEmulated) &&
           selfEmulated && IsWow64Process(process, &otherEmulated) && !otherEmulated;
}

// The tool's description, the form the tooltip's process expects, at `remote` in that process.
std::vector<char> toolInfoFor(bool wide, char* remote, std::size_t textOffset) {
    const auto text = reinterpret_cast<std::uintptr_t>(remote) + textOffset;
    if (wide) {
        ToolInfo64 tool{};
        tool.cbSize = sizeof(tool);
        tool.lpszText = text;
        const auto* bytes = reinterpret_cast<const char*>(&tool);
        return {bytes, bytes + sizeof(tool)};
    }
    TTTOOLINFOW tool{};
    tool.cbSize = sizeof(tool);
    tool.lpszText = reinterpret_cast<wchar_t*>(text);
    const auto* bytes = reinterpret_cast<const char*>(&tool);
    return {bytes, bytes + sizeof(tool)};
}

void appendToolTexts(HWND tooltip, std::vector<std::wstring>& texts) {
    DWORD processId = 0;
    GetWindowThreadProcessId(tooltip, &processId);
    HANDLE process = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE |
                                     PROCESS_QUERY_LIMITED_INFORMATION,
                                 FALSE, processId);
    if (process == nullptr) {
        return;
    }
    // The shell may be a 64-bit process: its tooltips read the 64-bit form of the description.
    const bool wide = widerThanThisProcess(process);
    constexpr std::size_t capacity = 512;
    constexpr std::size_t textOffset = sizeof(ToolInfo64);
    const std::size_t bytes = textOffset + capacity * sizeof(wchar_t);
    auto* remote = static_cast<char*>(
        VirtualAllocEx(process, nullptr, bytes, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE));
    if (remote != nullptr) {
        const auto tools = sendBounded(tooltip, TTM_GETTOOLCOUNT, 0, 0);
        const std::vector<char> tool = toolInfoFor(wide, remote, textOffset);
        for (LRESULT index = 0; index < tools; ++index) {
            wchar_t buffer[capacity] = {};
            WriteProcessMemory(process, remote, tool.data(), tool.size(), nullptr);
            WriteProcessMemory(process, remote + textOffset, buffer, sizeof(buffer), nullptr);
            if (sendBounded(tooltip, TTM_ENUMTOOLSW, static_cast<WPARAM>(index),
                            reinterpret_cast<LPARAM>(remote)) != 0) {
                ReadProcessMemory(process, remote + textOffset, buffer, sizeof(buffer), nullptr);
                buffer[capacity - 1] = L'\0';
                texts.emplace_back(buffer);
            }
        }
        VirtualFreeEx(process, remote, 0, MEM_RELEASE);
    }
    CloseHandle(process);
}

BOOL CALLBACK collectTrayTips(HWND window, LPARAM texts) {
    if (className(window) == TOOLTIPS_CLASSW) {
        appendToolTexts(window, *reinterpret_cast<std::vector<std::wstring>*>(texts));
    }
    return TRUE;
}

} // namespace

std::vector<std::wstring> trayTips() {
    std::vector<std::wstring> texts;
    EnumWindows(collectTrayTips, reinterpret_cast<LPARAM>(&texts));
    return texts;
}

void announceTaskbarCreated(HWND window) {
    SendMessageW(window, RegisterWindowMessageW(L"TaskbarCreated"), 0, 0);
}

std::optional<MessageBoxSeen> waitForMessageBox(DWORD processId,
                                                std::chrono::milliseconds timeout) {
    HWND box = waitForTopWindow(L"#32770", processId, timeout);
    if (box == nullptr) {
        return std::nullopt;
    }
    MessageBoxSeen seen;
    // The box fills in its caption and text while it is being shown; wait for both.
    waitUntil([&] {
        HWND message = GetDlgItem(box, messageBoxTextId);
        seen.caption = text(box);
        seen.text = message != nullptr ? text(message) : std::wstring();
        return !seen.caption.empty() && !seen.text.empty();
    });
    return seen;
}

std::optional<MessageBoxSeen> answerMessageBox(DWORD processId, std::chrono::milliseconds timeout) {
    auto seen = waitForMessageBox(processId, timeout);
    if (seen) {
        HWND box = findTopWindow(L"#32770", processId);
        PostMessageW(box, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
        waitUntil([&] { return !IsWindow(box); });
    }
    return seen;
}

HWND waitForPopupMenu(DWORD processId, std::chrono::milliseconds timeout) {
    HWND found = nullptr;
    waitUntil(
        [&] {
            found = findTopWindow(L"#32768", processId);
            return found != nullptr && IsWindowVisible(found);
        },
        timeout);
    return found;
}

void choosePopupEntry(HWND menuWindow, int position) {
    for (int step = 0; step <= position; ++step) {
        postKey(menuWindow, VK_DOWN);
    }
    postKey(menuWindow, VK_RETURN);
}

void dismissPopup(HWND menuWindow) {
    postKey(menuWindow, VK_ESCAPE);
}

} // namespace ui
