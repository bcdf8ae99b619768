#include "tests/panel/windows/native_fixture_windows.h"

#include <commctrl.h>

#include <chrono>
#include <future>
#include <stdexcept>
#include <thread>

#include "diagnostics/os_info.h"
#include "foundation/exceptions.h"
#include "panel/window.h"
#include "panel/window_imp.h"
#include "panel/windows/button_imp_windows.h"
#include "panel/windows/combobox_imp_windows.h"
#include "panel/windows/dispatch_failure_windows.h"
#include "panel/windows/label_imp_windows.h"
#include "panel/windows/loop_dispatch_windows.h"
#include "panel/windows/static_colour_windows.h"
#include "panel/windows/tabpanel_imp_windows.h"
#include "panel/windows/window_imp_windows.h"

using namespace native_test;

namespace {

// The native window with the update cycle replaced: the tests count ticks, or make one fail,
// without a server behind them.
class TestWindow : public WindowImpWindows {
public:
    using WindowImpWindows::WindowImpWindows;
    bool update() override {
        ++ticks;
        if (failTicks) {
            throw std::logic_error("widget is not found");
        }
        return false;
    }
    std::atomic<int> ticks{0};
    bool failTicks = false;
};

// Lets the window's thread take its messages for a while.
void pumpMessages(std::chrono::milliseconds span) {
    const auto end = std::chrono::steady_clock::now() + span;
    MSG message{};
    while (std::chrono::steady_clock::now() < end) {
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (message.message == WM_QUIT) {
                continue;
            }
            DispatchMessageW(&message);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}

// A key going down on a control of the window, as the message loop receives it.
void pressKey(HWND focus, WPARAM key) {
    MSG message{};
    message.hwnd = focus;
    message.message = WM_KEYDOWN;
    message.wParam = key;
    dispatchLoopMessage(message, nullptr);
}

// Waits a little for a command's worker thread to have run it as often as expected.
bool runsReach(const CountingCommand& command, int expected) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (command.runs < expected && std::chrono::steady_clock::now() < end) {
        pumpMessages(std::chrono::milliseconds(10));
    }
    return command.runs == expected;
}

bool quitPosted() {
    MSG message{};
    return PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) != FALSE;
}

struct NativeWindow : NativeFixture {
    std::shared_ptr<TestWindow> makeWindow(int updateTime = 1000) {
        layout =
            layoutOf(windowLayout("CVHControlPanelTest" + std::to_string(++classes), updateTime));
        auto window =
            std::make_shared<TestWindow>("CVCP-001001", PixelPair{400, 300}, instance, *layout);
        EXPECT_TRUE(window->create());
        return window;
    }
    // The Run and Stop buttons (widgetid::runButton and stopButton) with counting commandid::run
    // and stop, as they stand while the server runs: Run disabled. The window is shown.
    struct ServerButtons {
        std::shared_ptr<CountingCommand> run = std::make_shared<CountingCommand>(1);
        std::shared_ptr<CountingCommand> stop = std::make_shared<CountingCommand>(2);
        std::shared_ptr<ButtonImpWindows> runButton;
        std::shared_ptr<ButtonImpWindows> stopButton;
    };
    ServerButtons addServerButtons(TestWindow& window) {
        ServerButtons buttons;
        buttons.runButton = std::make_shared<ButtonImpWindows>(
            place(0, 210, "CVCP-000001"), instance, window.nativeHandle(), buttons.run);
        buttons.stopButton = std::make_shared<ButtonImpWindows>(
            place(0, 240, "CVCP-000001"), instance, window.nativeHandle(), buttons.stop);
        window.addWidget({7, buttons.runButton});
        window.addWidget({8, buttons.stopButton});
        EnableWindow(buttons.runButton->nativeHandle(), FALSE);
        window.show();
        return buttons;
    }
    std::shared_ptr<TabpanelImpWindows> addTwoTabs(TestWindow& window) {
        auto tabs = std::make_shared<TabpanelImpWindows>(
            place(0, 0, "", -1), instance, window.nativeHandle(),
            std::vector<std::string>{"CVCP-002001", "CVCP-002002"});
        window.addWidget({9, tabs});
        return tabs;
    }
    HWND labelOnTab(TestWindow& window, std::int32_t id, std::int32_t tab, int y) {
        auto label = std::make_shared<LabelImpWindows>(place(0, y, "x", tab), instance,
                                                       window.nativeHandle());
        window.addWidget({id, label});
        return label->nativeHandle();
    }

    std::unique_ptr<utils::AppDataManager> layout;
    static inline int classes = 0;
};

} // namespace

TEST_F(NativeWindow, IsCreatedHiddenCentredAndWithItsCaption) {
    auto window = makeWindow();
    HWND handle = window->nativeHandle();
    EXPECT_FALSE(window->isVisible());
    RECT box{};
    GetWindowRect(handle, &box);
    const unsigned screenWidth = GetSystemMetrics(SM_CXSCREEN);
    const unsigned screenHeight = GetSystemMetrics(SM_CYSCREEN);
    EXPECT_EQ(box.left, static_cast<LONG>((screenWidth >> 1) - 200));
    EXPECT_EQ(box.top, static_cast<LONG>((screenHeight >> 1) - 150));
    EXPECT_EQ(box.right - box.left, 400);
    EXPECT_EQ(textOf(handle), L"Corvanite Control Panel");
    EXPECT_EQ(styleOf(handle) & (WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | WS_MAXIMIZEBOX),
              WS_CAPTION | WS_SYSMENU);
    EXPECT_TRUE(window->create());
    window->destroy();
}

TEST_F(NativeWindow, EmptyClassNameFailsWithCVCP006009) {
    layout = layoutOf(windowLayout("", 1000));
    try {
        TestWindow window("CVCP-001001", {400, 300}, instance, *layout);
        FAIL() << "no exception";
    } catch (const BasicException& failure) {
        EXPECT_STREQ(failure.what(), "Error registering control panel window");
    }
}

TEST_F(NativeWindow, CloseBoxHidesAndKeepsTheTimer) {
    auto window = makeWindow(50);
    window->show();
    EXPECT_TRUE(window->isVisible());
    SendMessageW(window->nativeHandle(), WM_CLOSE, 0, 0);
    EXPECT_FALSE(window->isVisible());
    EXPECT_TRUE(IsWindow(window->nativeHandle()));
    const int before = window->ticks;
    pumpMessages(std::chrono::milliseconds(400));
    EXPECT_GT(window->ticks, before);
    window->destroy();
}

TEST_F(NativeWindow, PeriodZeroTicksAtTheSystemsMinimum) {
    auto window = makeWindow(0);
    pumpMessages(std::chrono::milliseconds(300));
    EXPECT_GT(window->ticks, 3);
    window->destroy();
}

TEST_F(NativeWindow, HidingAlsoShowsTheSelectedTab) {
    auto window = makeWindow();
    auto tabs = addTwoTabs(*window);
    HWND first = labelOnTab(*window, 20, 0, 40);
    HWND second = labelOnTab(*window, 21, 1, 70);
    window->show();
    SendMessageW(tabs->nativeHandle(), TCM_SETCURSEL, 1, 0);
    // A label of the other tab made visible behind the model's back is hidden again on hiding.
    ShowWindow(first, SW_SHOW);
    window->hide();
    EXPECT_EQ(styleOf(first) & WS_VISIBLE, 0);
    EXPECT_NE(styleOf(second) & WS_VISIBLE, 0);
    window->destroy();
}

TEST_F(NativeWindow, TabChangeShowsTheTabsWidgets) {
    auto window = makeWindow();
    auto tabs = addTwoTabs(*window);
    HWND first = labelOnTab(*window, 20, 0, 40);
    HWND second = labelOnTab(*window, 21, 1, 70);
    HWND everywhere = labelOnTab(*window, 22, -1, 100);
    window->show();
    SendMessageW(tabs->nativeHandle(), TCM_SETCURFOCUS, 1, 0);
    EXPECT_EQ(styleOf(first) & WS_VISIBLE, 0);
    EXPECT_NE(styleOf(second) & WS_VISIBLE, 0);
    EXPECT_NE(styleOf(everywhere) & WS_VISIBLE, 0);
    window->destroy();
}

TEST_F(NativeWindow, ClickOnTheTabPanelRunsCommandZeroWhichDoesNothing) {
    auto window = makeWindow();
    auto box =
        std::make_shared<ComboboxImpWindows>(place(0, 0), instance, window->nativeHandle(),
                                             std::vector<std::string>{"CVCP-005201"}, 30, nullptr);
    window->addWidget({30, box});
    NMHDR header{};
    header.code = NM_CLICK;
    header.idFrom = 0;
    const LRESULT result =
        SendMessageW(window->nativeHandle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&header));
    EXPECT_EQ(result, 1);
    window->destroy();
}

TEST_F(NativeWindow, ButtonClickRunsItsCommand) {
    auto window = makeWindow();
    auto logs = std::make_shared<CountingCommand>(3);
    auto button = std::make_shared<ButtonImpWindows>(place(0, 0, "CVCP-004002"), instance,
                                                     window->nativeHandle(), logs);
    window->addWidget({40, button});
    SendMessageW(button->nativeHandle(), BM_CLICK, 0, 0);
    EXPECT_EQ(logs->runs, 1);
    window->destroy();
}

// A command that waits until the test lets it go, then counts its run.
class GatedCommand : public CountingCommand {
public:
    GatedCommand(std::int32_t id, std::shared_future<void> released)
        : CountingCommand(id), released_(std::move(released)) {}
    void execute() override {
        released_.wait();
        CountingCommand::execute();
    }

private:
    std::shared_future<void> released_;
};

TEST_F(NativeWindow, LevelChoicesWhileAStopRunsAreAppliedOnceRightAfterIt) {
    auto window = makeWindow();
    auto apply = std::make_shared<CountingCommand>(9);
    std::promise<void> release;
    std::shared_future<void> released = release.get_future().share();
    auto stop = std::make_shared<GatedCommand>(2, released);
    auto other =
        std::make_shared<ComboboxImpWindows>(place(0, 0), instance, window->nativeHandle(),
                                             std::vector<std::string>{"CVCP-005101"}, 12, nullptr);
    auto levels = std::make_shared<ComboboxImpWindows>(
        place(0, 30), instance, window->nativeHandle(),
        std::vector<std::string>{"CVCP-005201", "CVCP-005202", "CVCP-005203"}, 30, apply);
    window->addWidget({12, other});
    window->addWidget({13, levels});
    window->addWidget({7, std::make_shared<ButtonImpWindows>(
                              place(0, 60, "CVCP-000001"), instance, window->nativeHandle(),
                              std::make_shared<CountingCommand>(1))});
    window->addWidget({8, std::make_shared<ButtonImpWindows>(place(0, 90, "CVCP-000002"), instance,
                                                             window->nativeHandle(), stop)});
    window->runCommand(2);
    const WPARAM change = MAKEWPARAM(0, CBN_SELCHANGE);
    const auto control = reinterpret_cast<LPARAM>(levels->nativeHandle());
    SendMessageW(window->nativeHandle(), WM_COMMAND, change, control);
    SendMessageW(window->nativeHandle(), WM_COMMAND, change, control);
    pumpMessages(std::chrono::milliseconds(300));
    EXPECT_EQ(apply->runs, 0);
    EXPECT_TRUE(IsWindowEnabled(levels->nativeHandle()));
    release.set_value();
    EXPECT_TRUE(runsReach(*apply, 1));
    pumpMessages(std::chrono::milliseconds(300));
    EXPECT_EQ(apply->runs, 1);
    EXPECT_EQ(stop->runs, 1);
    window->destroy();
}

TEST_F(NativeWindow, FailureInAHandlerEndsTheLoopAndIsThrownAgain) {
    auto window = makeWindow();
    window->failTicks = true;
    SendMessageW(window->nativeHandle(), WM_TIMER, 0, 0);
    EXPECT_TRUE(quitPosted());
    try {
        rethrowDispatchFailure();
        FAIL() << "no exception";
    } catch (const std::logic_error& failure) {
        EXPECT_STREQ(failure.what(), "widget is not found");
    }
    EXPECT_NO_THROW(rethrowDispatchFailure());
    window->destroy();
}

TEST_F(NativeWindow, DestroyPostsTheQuitMessage) {
    auto window = makeWindow();
    window->destroy();
    EXPECT_FALSE(IsWindow(window->nativeHandle()));
    EXPECT_TRUE(quitPosted());
}

TEST_F(NativeWindow, WindowModelRaisesCVCP006019WhenCreateFails) {
    // A window class that nobody registered: creation fails.
    layout = layoutOf(windowLayout("CVHControlPanelTestUnregistered", 1000));
    class UnregisteredWindow : public TestWindow {
    public:
        using TestWindow::TestWindow;
    };
    auto imp =
        std::make_shared<UnregisteredWindow>("CVCP-001001", PixelPair{400, 300}, instance, *layout);
    UnregisterClassW(L"CVHControlPanelTestUnregistered", instance);
    try {
        Window window(imp);
        FAIL() << "no exception";
    } catch (const BasicException& failure) {
        EXPECT_STREQ(failure.what(), "Error creating control panel window");
    }
}

TEST_F(NativeWindow, LabelsTakeTheirBackgroundFromTheWindow) {
    auto window = makeWindow();
    HWND label = labelOnTab(*window, 20, -1, 0);
    HDC context = GetDC(label);
    SetBkMode(context, OPAQUE);
    const auto brush = reinterpret_cast<HBRUSH>(
        SendMessageW(window->nativeHandle(), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(context),
                     reinterpret_cast<LPARAM>(label)));
    EXPECT_EQ(GetBkMode(context), TRANSPARENT);
    const int generation = osGenerationOf([] { return detector::queryOsInfo().versionName; });
    if (generation < 11) {
        EXPECT_EQ(brush, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    } else {
        LOGBRUSH colour{};
        GetObjectW(brush, sizeof(colour), &colour);
        EXPECT_EQ(colour.lbColor, RGB(0xF9, 0xF9, 0xF9));
    }
    // The label itself sets no colour: on a parent that doesn't answer, the system's brush stays.
    LabelImpWindows plain(place(0, 0, "x"), instance, parent);
    const auto systemBrush = reinterpret_cast<HBRUSH>(
        SendMessageW(parent, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(context),
                     reinterpret_cast<LPARAM>(plain.nativeHandle())));
    EXPECT_NE(systemBrush, brush);
    ReleaseDC(label, context);
    window->destroy();
}

TEST(StaticColour, GenerationIsTheVersionNamesNumberAndOtherwiseTen) {
    struct Case {
        const char* name;
        int generation;
    };
    for (const Case& row : {Case{"10", 10}, Case{"11", 11}, Case{"XP", 10}, Case{"Vista", 10},
                            Case{"Server 2019", 10}, Case{"", 10}}) {
        EXPECT_EQ(osGenerationOf([&] { return std::string(row.name); }), row.generation)
            << row.name;
    }
    EXPECT_EQ(osGenerationOf([]() -> std::string { throw std::runtime_error("no WMI"); }), 10);
}

TEST_F(NativeWindow, EscHidesTheWindowAndNeitherStopsNorRunsTheServer) {
    auto window = makeWindow();
    const ServerButtons buttons = addServerButtons(*window);
    const auto& [run, stop, runButton, stopButton] = buttons;
    pressKey(stopButton->nativeHandle(), VK_ESCAPE);
    pumpMessages(std::chrono::milliseconds(300));
    EXPECT_FALSE(window->isVisible());
    EXPECT_TRUE(IsWindow(window->nativeHandle()));
    EXPECT_EQ(stop->runs, 0);
    EXPECT_EQ(run->runs, 0);
    window->destroy();
}

TEST_F(NativeWindow, EnterPressesOnlyTheFocusedButtonAndNeverADisabledOne) {
    auto window = makeWindow();
    const ServerButtons buttons = addServerButtons(*window);
    const auto& [run, stop, runButton, stopButton] = buttons;
    pressKey(window->nativeHandle(), VK_RETURN);
    pressKey(runButton->nativeHandle(), VK_RETURN);
    pumpMessages(std::chrono::milliseconds(300));
    EXPECT_EQ(run->runs, 0);
    EXPECT_EQ(stop->runs, 0);
    pressKey(stopButton->nativeHandle(), VK_RETURN);
    EXPECT_TRUE(runsReach(*stop, 1));
    EXPECT_EQ(run->runs, 0);
    EXPECT_TRUE(window->isVisible());
    window->destroy();
}
