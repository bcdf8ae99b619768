#include "tests/e2e/panel_session_windows.h"

#include <thread>

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

// The files of a folder whose path is longer than Windows' path limit can't be reached by name: the
// program says that its files are missing, names nothing it can't reach, and ends.
TEST_F(BrokenInstallation, APathPastTheSystemsLimitShowsCVCP006018AndExitsWithOne) {
    const std::wstring tooLong = installation.folder() + L"\\" + std::wstring(MAX_PATH, L'a');
    installation.pointPathAt(tooLong);
    ProgramRun run;
    const auto box = ui::waitForMessageBox(run.processId());
    ASSERT_TRUE(box.has_value());
    EXPECT_EQ(ui::findTopWindow(windowClass, run.processId()), nullptr);
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

namespace {

// The layout file with the status label's id changed to one the program doesn't address: the
// first tick then misses its widget.
void loseTheStatusLabel(const Installation& installation) {
    std::string layoutText = installation.readFile(L"CVHControlPanel.json");
    const std::string status = "\"status\"";
    const auto at = layoutText.find(status);
    const auto id = layoutText.rfind("\"id\"", at);
    ASSERT_NE(at, std::string::npos);
    ASSERT_NE(id, std::string::npos);
    const auto number = layoutText.find_first_of("0123456789", id);
    layoutText.replace(number, layoutText.find_first_not_of("0123456789", number) - number, "99");
    installation.writeFile(L"CVHControlPanel.json", layoutText);
}

} // namespace

// The failure meets the window procedure during the dispatch of the timer; it still reaches the
// program's entry as a box and exit code 1. The box stays until the user answers it: the window
// and its timer are gone before it shows, so no later tick closes it.
TEST_F(BrokenInstallation, TheBoxOfAFailedTickStaysUntilItIsAnswered) {
    loseTheStatusLabel(installation);
    ProgramRun run;
    const auto box = ui::waitForMessageBox(run.processId(), 60s);
    ASSERT_TRUE(box.has_value());
    EXPECT_EQ(box->text, L"widget is not found");
    EXPECT_EQ(ui::findTopWindow(windowClass, run.processId()), nullptr);
    std::this_thread::sleep_for(std::chrono::milliseconds(3 * layout.updateTime() + 500));
    EXPECT_TRUE(run.running());
    EXPECT_TRUE(ui::answerMessageBox(run.processId(), 5s).has_value());
    EXPECT_EQ(run.waitForExit(), std::optional<DWORD>(1));
}
