#include "tests/e2e/panel_session_windows.h"

#include "foundation/message_catalogue.h"
#include "foundation/text.h"

namespace e2e {

std::wstring words(const char* id, int language, const char* argument) {
    const int kept = panelMessages.language;
    panelMessages.setLanguage(language);
    const std::string text = panelMessages.format(id, argument);
    panelMessages.setLanguage(kept);
    return fromCp1251(text);
}

HWND PanelSession::startPanel(ProgramRun& run) {
    HWND window = run.window();
    EXPECT_NE(window, nullptr);
    EXPECT_TRUE(installation.waitForServer(true));
    return window;
}

HWND PanelSession::control(HWND window, int id) const {
    HWND found = nullptr;
    ui::waitUntil([&] { return (found = layout.widget(window, id)) != nullptr; });
    return found;
}

void PanelSession::clickOnceEnabled(HWND window, int id) const {
    HWND button = control(window, id);
    ASSERT_TRUE(ui::waitUntil([&] { return ui::isEnabled(button); })) << "control " << id;
    ui::click(button);
}

bool PanelSession::waitForText(HWND control, const std::wstring& text,
                               std::chrono::milliseconds timeout) const {
    return ui::waitUntil([&] { return ui::text(control) == text; }, timeout);
}

} // namespace e2e
