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
        EXPECT_TRUE(waitForText(window, words("CVCP-001001", choice.index))) << choice.index;
        EXPECT_EQ(installation.language.read(), std::optional<std::wstring>(choice.code));
        EXPECT_EQ(ui::text(control(window, RunButton)), words("CVCP-000001", choice.index));
        EXPECT_EQ(ui::text(control(window, StopButton)), words("CVCP-000002", choice.index));
        const int ok = layout.idOf("buttons", "CVCP-004001");
        EXPECT_EQ(ui::text(control(window, ok)), words("CVCP-004001", choice.index));
        HWND tabs = control(window, Tabs);
        EXPECT_EQ(ui::tabCaption(tabs, 0), words("CVCP-002001", choice.index));
        EXPECT_EQ(ui::tabCaption(tabs, 1), words("CVCP-002002", choice.index));
        EXPECT_EQ(ui::comboEntry(languages, 0), words("CVCP-005101", choice.index));
        EXPECT_EQ(ui::comboSelection(languages), choice.index);
        HWND levels = control(window, LogLevelBox);
        EXPECT_EQ(ui::comboEntry(levels, 2), words("CVCP-005203", choice.index));
        EXPECT_EQ(ui::text(control(window, PortAutoselectBox)), words("CVCP-005401", choice.index));
        // Texts made from the server's state follow at the next tick.
        EXPECT_TRUE(waitForText(control(window, StatusLabel), words("CVCP-000009", choice.index)));
    }
}
