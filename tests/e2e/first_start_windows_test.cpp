#include "tests/e2e/panel_session_windows.h"

using namespace e2e;

namespace {
constexpr int English = 1;
}

using FirstStart = PanelSession;

TEST_F(FirstStart, EmptyCommandLineShowsTheWindowWithItsTitle) {
    ProgramRun run;
    HWND window = startPanel(run);
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(ui::waitUntil([&] { return ui::isVisible(window); }));
    EXPECT_EQ(ui::text(window), L"Corvanite Control Panel");
}

TEST_F(FirstStart, StatusBecomesRunningAndTheLinkShowsTheServersPort) {
    ProgramRun run;
    HWND window = startPanel(run);
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(waitForText(control(window, StatusLabel), words("CVCP-000009", English)));
    const std::wstring port = std::to_wstring(installation.port());
    EXPECT_TRUE(ui::waitUntil([&] {
        return ui::text(control(window, AddressLink)).find(L":" + port) != std::wstring::npos;
    })) << "link: "
        << ui::text(control(window, AddressLink)).c_str();
}

TEST_F(FirstStart, OperatingTimeCountsUp) {
    ProgramRun run;
    HWND window = startPanel(run);
    ASSERT_NE(window, nullptr);
    HWND time = control(window, TimeLabel);
    ASSERT_TRUE(ui::waitUntil([&] { return ui::text(time) != L"-"; }));
    const std::wstring first = ui::text(time);
    EXPECT_TRUE(ui::waitUntil([&] { return ui::text(time) != first; }))
        << "time stays " << first.c_str();
}

TEST_F(FirstStart, RunIsDisabledAndStopEnabledWhileTheServerRuns) {
    ProgramRun run;
    HWND window = startPanel(run);
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(ui::waitUntil([&] {
        return !ui::isEnabled(control(window, RunButton)) &&
               ui::isEnabled(control(window, StopButton));
    }));
}

TEST_F(FirstStart, MissingLanguageValueStartsInRussianAndIsWritten) {
    installation.language.write(std::nullopt);
    ProgramRun run;
    HWND window = run.window();
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(ui::text(window), words("CVCP-001001", 0));
    EXPECT_EQ(installation.language.read(), std::optional<std::wstring>(L"1049"));
}

TEST_F(FirstStart, UnknownLanguageCodeStartsInUkrainianAndIsRewritten) {
    installation.language.write(L"1036");
    ProgramRun run;
    HWND window = run.window();
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(ui::text(window), words("CVCP-001001", 2));
    EXPECT_EQ(installation.language.read(), std::optional<std::wstring>(L"1058"));
}

TEST_F(FirstStart, WithoutDisplayVersionNothingIsWritten) {
    ProgramRun run;
    ASSERT_NE(run.window(), nullptr);
    EXPECT_FALSE(installation.displayVersion.read().has_value());
}

TEST_F(FirstStart, DisplayVersionThatDiffersTakesTheLibrarysVersion) {
    installation.displayVersion.write(L"0.0.0.1");
    ProgramRun run;
    ASSERT_NE(run.window(), nullptr);
    const auto version = installation.displayVersion.read();
    ASSERT_TRUE(version.has_value());
    EXPECT_NE(*version, L"0.0.0.1");
    EXPECT_NE(*version, L"-");
}
