#include "tests/panel/windows/native_fixture_windows.h"

#include <commctrl.h>

#include <stdexcept>

#include "foundation/exceptions.h"
#include "foundation/text.h"
#include "panel/windows/button_imp_windows.h"
#include "panel/windows/checkbox_imp_windows.h"
#include "panel/windows/combobox_imp_windows.h"
#include "panel/windows/label_imp_windows.h"
#include "panel/windows/syslink_imp_windows.h"
#include "panel/windows/tabpanel_imp_windows.h"

using namespace native_test;

using NativeWidgets = NativeFixture;

namespace {

const std::vector<std::string> levels = {"CVCP-005201", "CVCP-005202", "CVCP-005203"};
// A widget id that no start-up state is kept for.
constexpr std::int32_t plainId = 99;

std::shared_ptr<CountingCommand> command(std::int32_t id) {
    return std::make_shared<CountingCommand>(id);
}

// Counts the messages of one kind that windows of this thread are sent while it lives.
class MessageCounter {
public:
    explicit MessageCounter(UINT message) {
        counted() = message;
        sent() = 0;
        hook_ = SetWindowsHookExW(WH_CALLWNDPROC, record, nullptr, GetCurrentThreadId());
    }
    ~MessageCounter() { UnhookWindowsHookEx(hook_); }
    MessageCounter(const MessageCounter&) = delete;
    MessageCounter& operator=(const MessageCounter&) = delete;

    int count() const { return sent(); }

private:
    static UINT& counted() {
        static UINT message = 0;
        return message;
    }
    static int& sent() {
        static int count = 0;
        return count;
    }
    static LRESULT CALLBACK record(int code, WPARAM wParam, LPARAM lParam) {
        if (code == HC_ACTION && reinterpret_cast<CWPSTRUCT*>(lParam)->message == counted()) {
            ++sent();
        }
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }

    HHOOK hook_ = nullptr;
};

} // namespace

TEST_F(NativeWidgets, EachKindHasItsClassStyleAndControlId) {
    const CreationStyles created;
    ButtonImpWindows button(place(0, 0, "CVCP-004001"), instance, parent, command(5));
    CheckboxImpWindows checkbox(place(0, 30, "CVCP-005402"), instance, parent, plainId,
                                command(14));
    ComboboxImpWindows combobox(place(0, 60), instance, parent, levels, plainId, nullptr);
    LabelImpWindows label(place(0, 90, "CVCP-005006"), instance, parent);
    SyslinkImpWindows link(place(0, 120, "CVCP-004101"), instance, parent, command(10));
    TabpanelImpWindows tabs(place(0, 150), instance, parent, {"CVCP-002001", "CVCP-002002"});

    struct Expected {
        HWND handle;
        const wchar_t* className;
        LONG style;
        int controlId;
        WidgetKind kind;
    };
    const Expected table[] = {
        {button.nativeHandle(), L"Button", 0x50010000, 5, button.kind()},
        {checkbox.nativeHandle(), L"Button", 0x50010003, 14, checkbox.kind()},
        {combobox.nativeHandle(), L"ComboBox", 0x50810203, 0, combobox.kind()},
        {label.nativeHandle(), L"Static", 0x50000000, 0, label.kind()},
        {link.nativeHandle(), L"SysLink", 0x50010000, 10, link.kind()},
        {tabs.nativeHandle(), L"SysTabControl32", 0x52010000, 0, tabs.kind()},
    };
    const WidgetKind kinds[] = {WidgetKind::Button, WidgetKind::Checkbox, WidgetKind::Combobox,
                                WidgetKind::Label,  WidgetKind::Syslink,  WidgetKind::Tabpanel};
    for (std::size_t row = 0; row < std::size(table); ++row) {
        wchar_t name[64] = {};
        GetClassNameW(table[row].handle, name, 64);
        EXPECT_EQ(_wcsicmp(name, table[row].className), 0) << row;
        EXPECT_EQ(created.of(table[row].handle), table[row].style) << row;
        EXPECT_EQ(GetDlgCtrlID(table[row].handle), table[row].controlId) << row;
        EXPECT_EQ(table[row].kind, kinds[row]) << row;
        EXPECT_EQ(GetParent(table[row].handle), parent) << row;
    }
    EXPECT_EQ(button.commandId(), 5);
    EXPECT_EQ(checkbox.commandId(), 14);
    EXPECT_EQ(link.commandId(), 10);
    EXPECT_EQ(combobox.commandId(), 0);
    EXPECT_EQ(label.commandId(), 0);
}

TEST_F(NativeWidgets, ControlsShowTheirStartTextAndTheStockFont) {
    ButtonImpWindows button(place(0, 0, "CVCP-004001"), instance, parent, command(5));
    EXPECT_EQ(textOf(button.nativeHandle()), L"OK");
    EXPECT_EQ(reinterpret_cast<HFONT>(SendMessageW(button.nativeHandle(), WM_GETFONT, 0, 0)),
              static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT)));
}

TEST_F(NativeWidgets, LabelWithEmptyTextIsCreatedWithoutTextAndTakesOneLater) {
    LabelImpWindows label(place(0, 0), instance, parent);
    EXPECT_EQ(GetWindowTextLengthW(label.nativeHandle()), 0);
    label.setText("12:00:05");
    EXPECT_EQ(textOf(label.nativeHandle()), L"12:00:05");
    EXPECT_EQ(label.getDisplayText(), "12:00:05");
}

// The window's tick sets the same texts every second; only a change reaches the control.
TEST_F(NativeWidgets, TheSameTextAgainIsNotSentToTheControl) {
    LabelImpWindows label(place(0, 0), instance, parent);
    label.setText("12:00:05");
    const MessageCounter counter(WM_SETTEXT);
    label.setText("12:00:05");
    EXPECT_EQ(counter.count(), 0);
    label.setText("12:00:06");
    EXPECT_EQ(counter.count(), 1);
    EXPECT_EQ(textOf(label.nativeHandle()), L"12:00:06");
}

TEST_F(NativeWidgets, SetTextIsUndoneByTheNextUpdateText) {
    LabelImpWindows label(place(0, 0, "CVCP-005006"), instance, parent);
    label.setText("other");
    EXPECT_EQ(textOf(label.nativeHandle()), L"other");
    label.updateText();
    EXPECT_EQ(textOf(label.nativeHandle()), L"Server status:");
}

TEST_F(NativeWidgets, ComboBoxKeepsItsSelectionAtALanguageChange) {
    ComboboxImpWindows box(place(0, 0), instance, parent, levels, plainId, nullptr);
    EXPECT_EQ(box.selectedIndex(), 0);
    SendMessageW(box.nativeHandle(), CB_SETCURSEL, 2, 0);
    panelMessages.setLanguage(Russian);
    box.updateText();
    EXPECT_EQ(box.selectedIndex(), 2);
    wchar_t entry[64] = {};
    SendMessageW(box.nativeHandle(), CB_GETLBTEXT, 0, reinterpret_cast<LPARAM>(entry));
    EXPECT_EQ(std::wstring(entry), fromCp1251(panelMessages.text("CVCP-005201")));
    EXPECT_EQ(SendMessageW(box.nativeHandle(), CB_GETCOUNT, 0, 0), 3);
}

TEST_F(NativeWidgets, ComboBoxWithoutSelectionFallsToTheFirstEntry) {
    ComboboxImpWindows box(place(0, 0), instance, parent, levels, plainId, nullptr);
    SendMessageW(box.nativeHandle(), CB_SETCURSEL, static_cast<WPARAM>(-1), 0);
    ASSERT_EQ(box.selectedIndex(), -1);
    box.updateText();
    EXPECT_EQ(box.selectedIndex(), 0);
}

TEST_F(NativeWidgets, ComboBoxValueThatIsNoCatalogueIdFails) {
    EXPECT_THROW(
        {
            try {
                ComboboxImpWindows box(place(0, 0), instance, parent, {"Errors"}, plainId, nullptr);
            } catch (const std::out_of_range& failure) {
                EXPECT_STREQ(failure.what(), "invalid map<K, T> key");
                throw;
            }
        },
        std::out_of_range);
}

TEST_F(NativeWidgets, LinkOnNoTabIsTransparentAndOthersAreNot) {
    const CreationStyles created;
    SyslinkImpWindows onNoTab(place(0, 0, "CVCP-004101", -1), instance, parent, command(10));
    SyslinkImpWindows onTab(place(0, 30, "CVCP-004102", 1), instance, parent, command(11));
    EXPECT_EQ(created.of(onNoTab.nativeHandle()), LONG{0x50010001});
    EXPECT_EQ(created.of(onTab.nativeHandle()), LONG{0x50010000});
    // No other kind changes with its tab.
    ButtonImpWindows button(place(0, 60, "CVCP-004001", -1), instance, parent, command(5));
    EXPECT_EQ(created.of(button.nativeHandle()), LONG{0x50010000});
}

TEST_F(NativeWidgets, OnlyTheServicePageLinkHasATooltip) {
    SyslinkImpWindows address(place(0, 0, "-"), instance, parent, command(12));
    SyslinkImpWindows other(place(0, 30, "-"), instance, parent, command(10));
    EXPECT_NE(address.tooltipHandle(), nullptr);
    EXPECT_EQ(other.tooltipHandle(), nullptr);
    // The update's tooltip call on a link without one goes nowhere and does no harm.
    other.setTooltipText(L"https://localhost:8443");
    address.setTooltipText(L"https://localhost:8443");
    wchar_t text[128] = {};
    TOOLINFOW info{};
    info.cbSize = sizeof(info);
    info.uFlags = TTF_IDISHWND;
    info.uId = reinterpret_cast<UINT_PTR>(address.nativeHandle());
    info.lpszText = text;
    SendMessageW(address.tooltipHandle(), TTM_GETTEXTW, 128, reinterpret_cast<LPARAM>(&info));
    EXPECT_EQ(std::wstring(text), L"https://localhost:8443");
}

// The tick gives the service's address every second; only a new one reaches the tooltip.
TEST_F(NativeWidgets, TheSameTooltipTextAgainIsNotSentToTheTooltip) {
    SyslinkImpWindows address(place(0, 0, "-"), instance, parent, command(12));
    address.setTooltipText(L"https://localhost:8443");
    const MessageCounter counter(TTM_UPDATETIPTEXTW);
    address.setTooltipText(L"https://localhost:8443");
    EXPECT_EQ(counter.count(), 0);
    address.setTooltipText(L"https://localhost:9443");
    EXPECT_EQ(counter.count(), 1);
}

TEST_F(NativeWidgets, LinkKeepsItsMarkup) {
    SyslinkImpWindows link(place(0, 0, "CVCP-004101"), instance, parent, command(10));
    EXPECT_EQ(textOf(link.nativeHandle()), L"<a>Get information</a>");
}

TEST_F(NativeWidgets, TabPanelRenamesItsTabsAndKeepsItsSelection) {
    TabpanelImpWindows tabs(place(0, 0), instance, parent, {"CVCP-002001", "CVCP-002002"});
    EXPECT_EQ(SendMessageW(tabs.nativeHandle(), TCM_GETITEMCOUNT, 0, 0), 2);
    EXPECT_EQ(tabs.selectedIndex(), 0);
    SendMessageW(tabs.nativeHandle(), TCM_SETCURSEL, 1, 0);
    panelMessages.setLanguage(Ukrainian);
    tabs.updateText();
    EXPECT_EQ(tabs.selectedIndex(), 1);
    wchar_t caption[64] = {};
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = caption;
    item.cchTextMax = 64;
    SendMessageW(tabs.nativeHandle(), TCM_GETITEMW, 1, reinterpret_cast<LPARAM>(&item));
    EXPECT_EQ(std::wstring(caption), fromCp1251(panelMessages.text("CVCP-002002")));
}

TEST_F(NativeWidgets, CheckBoxReadsTheControlsOwnCheck) {
    CheckboxImpWindows box(place(0, 0, "CVCP-005402"), instance, parent, plainId, command(14));
    EXPECT_FALSE(box.isChecked());
    SendMessageW(box.nativeHandle(), BM_CLICK, 0, 0);
    EXPECT_TRUE(box.isChecked());
}

TEST_F(NativeWidgets, HidingEnablingAndExecuting) {
    auto run = command(3);
    ButtonImpWindows button(place(0, 0, "CVCP-004002"), instance, parent, run);
    button.setEnabled(false);
    EXPECT_FALSE(button.isEnabled());
    button.setEnabled(true);
    EXPECT_TRUE(button.isEnabled());
    button.setVisible(false);
    EXPECT_EQ(styleOf(button.nativeHandle()) & WS_VISIBLE, 0);
    button.execute();
    EXPECT_EQ(run->runs, 1);
}

// The tick sets both buttons' states every second; a control keeps its state without a word.
TEST_F(NativeWidgets, TheSameStateAgainIsNotSentToTheControl) {
    ButtonImpWindows button(place(0, 0, "CVCP-004002"), instance, parent, command(3));
    button.setEnabled(false);
    // Disabling a control cancels its mouse capture first, even when it was disabled already.
    const MessageCounter cancels(WM_CANCELMODE);
    button.setEnabled(false);
    EXPECT_EQ(cancels.count(), 0);
    button.setEnabled(true);
    button.setEnabled(false);
    EXPECT_EQ(cancels.count(), 1);
    EXPECT_FALSE(button.isEnabled());
}

TEST_F(NativeWidgets, ControlThatCannotBeMadeFailsWithCVCP006006) {
    // A child window needs a parent.
    try {
        LabelImpWindows label(place(0, 0), instance, nullptr);
        FAIL() << "no exception";
    } catch (const BasicException& failure) {
        EXPECT_STREQ(failure.what(), "Error creating control panel widget element");
    }
}

TEST_F(NativeWidgets, ButtonWithoutCommandIsRefused) {
    EXPECT_THROW(ButtonImpWindows(place(0, 0), instance, parent, nullptr), std::invalid_argument);
}
