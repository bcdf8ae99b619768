#include "tests/e2e/panel_session_windows.h"

using namespace e2e;

namespace {
constexpr int English = 1;
}

using BrokenInstallation = PanelSession;

TEST_F(BrokenInstallation, MissingNginxConfShowsCVCP006018AndExitsWithOne) {
    installation.removeFile(L"conf\\nginx.conf");
    ProgramRun run;
    const auto box = ui::waitForMessageBox(run.processId());
    ASSERT_TRUE(box.has_value());
    // The box comes before any window exists.
    EXPECT_EQ(ui::findTopWindow(windowClass, run.processId()), nullptr);
    EXPECT_EQ(box->caption, L"Corvanite");
    EXPECT_EQ(box->text, words("CVCP-006018", English, "Corvanite"));
    ui::answerMessageBox(run.processId());
    EXPECT_EQ(run.waitForExit(), std::optional<DWORD>(1));
    EXPECT_FALSE(installation.serverRuns());
}

TEST_F(BrokenInstallation, BrokenLayoutShowsCVCP006013AndExitsWithOne) {
    installation.writeFile(L"CVHControlPanel.json", "{\"window\": ");
    ProgramRun run;
    const auto box = ui::answerMessageBox(run.processId());
    ASSERT_TRUE(box.has_value());
    EXPECT_EQ(box->text, words("CVCP-006013", English));
    EXPECT_EQ(run.waitForExit(), std::optional<DWORD>(1));
}

TEST_F(BrokenInstallation, LayoutWithoutTheStatusLabelEndsAtTheFirstTick) {
    // The failure meets the window procedure during the dispatch of the timer; it still reaches
    // the program's entry as a box and exit code 1.
    std::string layoutText = installation.readFile(L"CVHControlPanel.json");
    const std::string status = "\"status\"";
    const auto at = layoutText.find(status);
    ASSERT_NE(at, std::string::npos);
    const auto id = layoutText.rfind("\"id\"", at);
    ASSERT_NE(id, std::string::npos);
    const auto number = layoutText.find_first_of("0123456789", id);
    layoutText.replace(number, layoutText.find_first_not_of("0123456789", number) - number, "99");
    installation.writeFile(L"CVHControlPanel.json", layoutText);
    ProgramRun run;
    const auto box = ui::answerMessageBox(run.processId(), 60s);
    ASSERT_TRUE(box.has_value());
    EXPECT_EQ(box->text, L"widget is not found");
    EXPECT_EQ(run.waitForExit(), std::optional<DWORD>(1));
}
