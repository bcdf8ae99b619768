#include "tests/e2e/panel_session_windows.h"

using namespace e2e;

using SettingsBoxes = PanelSession;

namespace {
bool holds(const std::optional<std::string>& file, const std::string& line) {
    return file && file->find(line) != std::string::npos;
}
} // namespace

TEST_F(SettingsBoxes, StartWithTheStoredSettings) {
    ProgramRun run;
    HWND window = startPanel(run);
    ASSERT_NE(window, nullptr);
    // With no settings file port autoselection is on and UNC paths are off.
    EXPECT_TRUE(ui::isChecked(control(window, PortAutoselectBox)));
    EXPECT_FALSE(ui::isChecked(control(window, UncPathsBox)));
}

TEST_F(SettingsBoxes, UncPathsBoxWritesTheSettingsFile) {
    ProgramRun run;
    HWND window = startPanel(run);
    ASSERT_NE(window, nullptr);
    ui::click(control(window, UncPathsBox));
    EXPECT_TRUE(ui::waitUntil(
        [&] { return holds(installation.readSettings(), "cv_use_unc_paths=true\n"); }));
    ui::click(control(window, UncPathsBox));
    EXPECT_TRUE(ui::waitUntil(
        [&] { return holds(installation.readSettings(), "cv_use_unc_paths=false\n"); }));
}

TEST_F(SettingsBoxes, TurningPortAutoselectionOffWarnsAndWritesTheFile) {
    ProgramRun run;
    HWND window = startPanel(run);
    ASSERT_NE(window, nullptr);
    ui::click(control(window, PortAutoselectBox));
    const auto box = ui::answerMessageBox(run.processId());
    ASSERT_TRUE(box.has_value());
    EXPECT_EQ(box->caption, L"Corvanite");
    EXPECT_EQ(box->text, words("CVCP-006105", 1));
    EXPECT_TRUE(ui::waitUntil(
        [&] { return holds(installation.readSettings(), "cv_port_autoselect=false\n"); }));

    // Turning it on again writes without a word.
    ui::click(control(window, PortAutoselectBox));
    EXPECT_TRUE(ui::waitUntil(
        [&] { return holds(installation.readSettings(), "cv_port_autoselect=true\n"); }));
    EXPECT_FALSE(ui::waitForMessageBox(run.processId(), 1s).has_value());
}
