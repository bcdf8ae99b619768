// Folders whose names the system's 8-bit code page can't write: the installation folder, where
// the server (an nginx build) opens its files through the 8-bit calls, and the user's profile
// folder, which holds the settings file. The ctest entries "*.en_US" and "*.ru_RU" run these tests
// under code page 1252 and 1251 (Wine takes it from the locale that a program is started under)
// and as a user whose profile folder's name the code page can't write.
#include "tests/e2e/panel_session_windows.h"

#include <cstdlib>
#include <fstream>

#include "foundation/code_page.h"

using namespace e2e;

namespace {

constexpr int English = 1;

struct FolderName {
    const char* label;
    const wchar_t* name;
};

const FolderName cyrillicName{"Cyrillic", L"\x041A\x043E\x0440\x0432\x0430\x043D\x0438\x0442 "
                                          L"\x0425\x043E\x0441\x0442"}; // Корванит Хост
const FolderName westernName{"Western", L"Jos\x00E9 Host"};

bool writable(const std::wstring& path) {
    return codepage::survives(path, codepage::systemConversion());
}

// The code page that the ctest entry's locale gives, when the entry names one: a run that didn't
// get its locale fails instead of passing under another code page.
void expectTheCodePageOfTheRun() {
    if (const char* expected = std::getenv("CVH_CODE_PAGE")) {
        EXPECT_EQ(GetACP(), std::stoul(expected)) << "the run's locale didn't reach Wine";
    }
}

// Starts the server double as a user would from a shell: by its path, in the folder given.
PROCESS_INFORMATION startServerIn(const std::wstring& folder) {
    const std::wstring program = folder + L"\\CorvaniteHost.exe";
    std::wstring line = L"\"" + program + L"\"";
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESTDHANDLES;
    PROCESS_INFORMATION info{};
    CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr,
                   folder.c_str(), &startup, &info);
    return info;
}

} // namespace

class FolderNames : public ::testing::WithParamInterface<FolderName>, public PanelSession {
protected:
    FolderNames() : PanelSession(ServerBuild::Console, GetParam().name) {}
};

INSTANTIATE_TEST_SUITE_P(Installation, FolderNames, ::testing::Values(cyrillicName, westernName),
                         [](const auto& info) { return std::string(info.param.label); });

// The double is as bound to the code page as the real server: from the folder's long name it
// finds its files only where the code page writes that name, from the short name always.
TEST_P(FolderNames, TheServerFindsItsFilesFromTheShortNameAndFromTheLongOneOnlyIfWritable) {
    expectTheCodePageOfTheRun();
    const bool longNameServes = writable(installation.folder());
    PROCESS_INFORMATION fromLongName = startServerIn(installation.folder());
    ASSERT_NE(fromLongName.hProcess, nullptr);
    if (longNameServes) {
        EXPECT_TRUE(ui::waitUntil([&] { return !installation.readFile(L"nginx.pid").empty(); }));
        installation.killServer();
    } else {
        EXPECT_EQ(WaitForSingleObject(fromLongName.hProcess, 30000), WAIT_OBJECT_0);
        DWORD code = 0;
        GetExitCodeProcess(fromLongName.hProcess, &code);
        EXPECT_EQ(code, 1u) << "the server found its configuration through a name it can't write";
        EXPECT_TRUE(installation.readFile(L"nginx.pid").empty());
    }
    CloseHandle(fromLongName.hThread);
    CloseHandle(fromLongName.hProcess);
    installation.removeFile(L"nginx.pid");

    ASSERT_TRUE(writable(installation.shortFolder()));
    PROCESS_INFORMATION fromShortName = startServerIn(installation.shortFolder());
    ASSERT_NE(fromShortName.hProcess, nullptr);
    EXPECT_TRUE(ui::waitUntil([&] { return !installation.readFile(L"nginx.pid").empty(); }));
    installation.killServer();
    CloseHandle(fromShortName.hThread);
    CloseHandle(fromShortName.hProcess);
}

TEST_P(FolderNames, StartRunningStopRunAndALevelChange) {
    expectTheCodePageOfTheRun();
    ProgramRun run;
    HWND window = startPanel(run);
    ASSERT_NE(window, nullptr);
    // Running, on the port of nginx.conf: the server has read its configuration.
    EXPECT_TRUE(waitForText(control(window, StatusLabel), words("CVCP-000009", English)));
    const std::wstring port = L":" + std::to_wstring(installation.port());
    EXPECT_TRUE(ui::waitUntil(
        [&] { return ui::text(control(window, AddressLink)).find(port) != std::wstring::npos; }));
    EXPECT_FALSE(ui::waitForMessageBox(run.processId(), 1s).has_value());

    HWND stop = control(window, StopButton);
    HWND start = control(window, RunButton);
    ASSERT_TRUE(ui::waitUntil([&] { return ui::isEnabled(stop); }));
    ui::click(stop);
    EXPECT_TRUE(installation.waitForServer(false));
    EXPECT_TRUE(waitForText(control(window, StatusLabel), words("CVCP-000010", English)));
    EXPECT_TRUE(installation.readFile(L"nginx.pid").empty());

    ASSERT_TRUE(ui::waitUntil([&] { return ui::isEnabled(start); }));
    ui::click(start);
    EXPECT_TRUE(installation.waitForServer(true));
    EXPECT_TRUE(waitForText(control(window, StatusLabel), words("CVCP-000009", English)));

    ASSERT_TRUE(ui::waitUntil([&] { return ui::isEnabled(stop); }));
    const std::string masterBefore = installation.readFile(L"nginx.pid");
    ui::chooseComboEntry(control(window, LogLevelBox), 2);
    EXPECT_TRUE(ui::waitUntil([&] { return installation.confHoldsLevel("debug"); }));
    EXPECT_TRUE(ui::waitUntil([&] {
        const std::string master = installation.readFile(L"nginx.pid");
        return !master.empty() && master != masterBefore;
    }));
    EXPECT_TRUE(waitForText(control(window, StatusLabel), words("CVCP-000009", English)));
    EXPECT_TRUE(ui::waitUntil([&] { return ui::isEnabled(stop); }));
    EXPECT_FALSE(ui::waitForMessageBox(run.processId(), 1s).has_value());
}

using ProfileFolder = PanelSession;

// The settings file in a profile folder whose name the code page can't write (the entries run as
// such a user): read at start, written on a change.
TEST_F(ProfileFolder, TheSettingsFileIsReadAndWrittenThere) {
    expectTheCodePageOfTheRun();
    const std::wstring settings = installation.settingsPath();
    if (std::getenv("CVH_CODE_PAGE") != nullptr) {
        EXPECT_FALSE(writable(settings)) << "the run's user has a plain profile folder";
    }
    std::ofstream(std::filesystem::path(settings), std::ios::binary | std::ios::trunc)
        << "cv_use_unc_paths=true\n";
    ProgramRun run;
    HWND window = startPanel(run);
    ASSERT_NE(window, nullptr);
    HWND uncPaths = control(window, UncPathsBox);
    EXPECT_TRUE(ui::waitUntil([&] { return ui::isChecked(uncPaths); }));
    ui::click(uncPaths);
    EXPECT_TRUE(ui::waitUntil([&] {
        const auto file = installation.readSettings();
        return file && file->find("cv_use_unc_paths=false\n") != std::string::npos;
    }));
    EXPECT_FALSE(ui::waitForMessageBox(run.processId(), 1s).has_value());
}
