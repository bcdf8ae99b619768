#include "tests/e2e/panel_session_windows.h"

using namespace e2e;

using LanguageChange = PanelSession;

TEST_F(LanguageChange, RewritesEveryTextAndStoresTheCode) {
    ProgramRun run;
    HWND window = startPanel(run);
    ASSERT_NE(window, nullptr);
    HWND languages = control(window, LanguageBox);
    ASSERT_EQ(ui::comboSelection(languages), 1);

    struct Case {
        int index;
        const wchar_t* code;
    };
    for (const Case& choice : {Case{0, L"1049"}, Case{2, L"1058"}, Case{1, L"1033"}}) {
        ui::chooseComboEntry(languages, choice.index);
        // The window rewrites its texts one after another: each is waited for.
        const int language = choice.index;
        EXPECT_TRUE(waitForText(window, words("CVCP-001001", language))) << language;
        EXPECT_TRUE(ui::waitUntil([&] { return installation.language.read() == choice.code; }));
        EXPECT_TRUE(waitForText(control(window, RunButton), words("CVCP-000001", language)));
        EXPECT_TRUE(waitForText(control(window, StopButton), words("CVCP-000002", language)));
        const int ok = layout.idOf("buttons", "CVCP-004001");
        EXPECT_TRUE(waitForText(control(window, ok), words("CVCP-004001", language)));
        HWND tabs = control(window, Tabs);
        EXPECT_TRUE(ui::waitUntil([&] {
            return ui::tabCaption(tabs, 0) == words("CVCP-002001", language) &&
                   ui::tabCaption(tabs, 1) == words("CVCP-002002", language);
        })) << language;
        EXPECT_TRUE(ui::waitUntil(
            [&] { return ui::comboEntry(languages, 0) == words("CVCP-005101", language); }));
        EXPECT_EQ(ui::comboSelection(languages), language);
        HWND levels = control(window, LogLevelBox);
        EXPECT_TRUE(ui::waitUntil(
            [&] { return ui::comboEntry(levels, 2) == words("CVCP-005203", language); }));
        EXPECT_TRUE(
            waitForText(control(window, PortAutoselectBox), words("CVCP-005401", language)));
        // Texts made from the server's state follow at the next tick.
        EXPECT_TRUE(waitForText(control(window, StatusLabel), words("CVCP-000009", choice.index)));
    }
}
