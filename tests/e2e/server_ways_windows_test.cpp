// Winsock's header comes before the system's main header, which would bring the old one.
#include <winsock2.h>

#include "tests/e2e/panel_session_windows.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <thread>

using namespace e2e;

namespace {

constexpr int English = 1;

// A program that is not this installation's server, started by the test and ended with it.
class Bystander {
public:
    Bystander(const std::wstring& program, const std::wstring& arguments) {
        std::wstring line = L"\"" + program + L"\" " + arguments;
        STARTUPINFOW startup{};
        startup.cb = sizeof(startup);
        const std::wstring folder = std::filesystem::path(program).parent_path().wstring();
        if (CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW,
                           nullptr, folder.c_str(), &startup, &info_)) {
            CloseHandle(info_.hThread);
        }
    }
    ~Bystander() {
        if (info_.hProcess != nullptr) {
            endProcessTree(info_.dwProcessId);
            CloseHandle(info_.hProcess);
        }
    }
    Bystander(const Bystander&) = delete;
    Bystander& operator=(const Bystander&) = delete;

    DWORD processId() const { return info_.dwProcessId; }
    bool running() const {
        return info_.hProcess != nullptr && WaitForSingleObject(info_.hProcess, 0) == WAIT_TIMEOUT;
    }

private:
    PROCESS_INFORMATION info_{};
};

// Whether something listens on the port on this machine: a connection to it is taken.
bool portTaken(int port) {
    WSADATA data{};
    WSAStartup(MAKEWORD(2, 2), &data);
    SOCKET probe = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<u_short>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const bool taken =
        connect(probe, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
    closesocket(probe);
    WSACleanup();
    return taken;
}

bool trayTipHolds(const std::wstring& words) {
    const auto tips = ui::trayTips();
    return std::any_of(tips.begin(), tips.end(), [&](const std::wstring& tip) {
        return tip.find(words) != std::wstring::npos;
    });
}

std::wstring toolPath(const char* name) {
    return windowsPathOf(std::string(CVH_TOOLS_DIR) + "/" + name);
}

} // namespace

using ServerWays = PanelSession;

// Another program holds the configured port: Run doesn't wait its 90 s in vain; within a few
// seconds a box names the holder, and the status and the tray tip say the port is held.
TEST_F(ServerWays, RunWithThePortHeldByAnotherProgramNamesItInABox) {
    ProgramRun run;
    HWND window = startPanel(run);
    ASSERT_NE(window, nullptr);
    ASSERT_NO_FATAL_FAILURE(clickOnceEnabled(window, StopButton));
    ASSERT_TRUE(installation.waitForServer(false));
    ASSERT_TRUE(ui::waitUntil([&] { return ui::isEnabled(control(window, RunButton)); }));
    ASSERT_TRUE(ui::waitUntil([&] { return !portTaken(installation.port()); }, 10s));

    Bystander holder(toolPath("PortHolder.exe"), std::to_wstring(installation.port()));
    ASSERT_TRUE(ui::waitUntil([&] { return portTaken(installation.port()); }, 10s));
    const auto clicked = std::chrono::steady_clock::now();
    ui::click(control(window, RunButton));
    const auto box = ui::waitForMessageBox(run.processId(), 20s);
    ASSERT_TRUE(box.has_value());
    EXPECT_LE(std::chrono::steady_clock::now() - clicked, 15s);
    const std::wstring port = std::to_wstring(installation.port());
    EXPECT_NE(box->text.find(L"port " + port + L" is held"), std::wstring::npos) << box->text;
    const std::wstring named =
        L"PortHolder.exe (process " + std::to_wstring(holder.processId()) + L")";
    EXPECT_NE(box->text.find(named), std::wstring::npos) << box->text;
    EXPECT_TRUE(waitForText(
        control(window, StatusLabel),
        words("CVCP-000013", English, std::to_string(installation.port()).c_str()), 10s));
    EXPECT_TRUE(ui::waitUntil([&] { return trayTipHolds(named); }, 10s));
    ui::answerMessageBox(run.processId(), 5s);
    EXPECT_FALSE(installation.serverRuns());
}

// A server that ignores its stop: Stop ends it within its wait, master and worker, and a program
// of the same name run from another folder is left alone.
TEST_F(ServerWays, StopEndsAServerThatIgnoresItAndSparesASameNamedProgramElsewhere) {
    installation.writeFile(L"host_double.cfg", "ignore_quit\n");
    const std::filesystem::path elsewhere =
        std::filesystem::path(installation.folder()).parent_path() /
        (std::filesystem::path(installation.folder()).filename().wstring() + L"-elsewhere");
    std::filesystem::create_directories(elsewhere);
    std::filesystem::copy_file(std::filesystem::path(installation.folder()) / L"CorvaniteHost.exe",
                               elsewhere / L"CorvaniteHost.exe",
                               std::filesystem::copy_options::overwrite_existing);
    Bystander sameName((elsewhere / L"CorvaniteHost.exe").wstring(), L"--linger 200");
    ASSERT_TRUE(sameName.running());

    ProgramRun run;
    HWND window = startPanel(run);
    ASSERT_NE(window, nullptr);
    ASSERT_NO_FATAL_FAILURE(clickOnceEnabled(window, StopButton));
    EXPECT_TRUE(installation.waitForServer(false, 40s));
    EXPECT_TRUE(waitForText(control(window, StatusLabel), words("CVCP-000010", English)));
    EXPECT_TRUE(ui::waitUntil([&] { return !portTaken(installation.port()); }, 10s));
    EXPECT_TRUE(sameName.running());
    std::error_code ignored;
    std::filesystem::remove_all(elsewhere, ignored);
}

// A worker that outlives its master: Stop leaves no process of the installation, and no worker
// holds the port; Run then starts one server, not a second one beside a leftover.
TEST_F(ServerWays, StopLeavesNoWorkerThatOutlivedItsMaster) {
    installation.writeFile(L"host_double.cfg", "orphan_worker\n");
    ProgramRun run;
    HWND window = startPanel(run);
    ASSERT_NE(window, nullptr);
    ASSERT_NO_FATAL_FAILURE(clickOnceEnabled(window, StopButton));
    EXPECT_TRUE(installation.waitForServer(false, 40s));
    EXPECT_TRUE(ui::waitUntil([&] { return !portTaken(installation.port()); }, 10s));
    EXPECT_TRUE(ui::waitUntil([&] { return ui::isEnabled(control(window, RunButton)); }));

    ui::click(control(window, RunButton));
    EXPECT_TRUE(installation.waitForServer(true));
    EXPECT_TRUE(waitForText(control(window, StatusLabel), words("CVCP-000009", English)));
    // One master and its worker.
    EXPECT_LE(installation.serverProcesses().size(), 3u);
}

// A level change restarts the server: with a server that ignores its stop, the old master and
// worker are gone when the new one runs.
TEST_F(ServerWays, ALevelChangeLeavesNoSecondMasterOfAServerThatIgnoresItsStop) {
    installation.writeFile(L"host_double.cfg", "ignore_quit\norphan_worker\n");
    ProgramRun run;
    HWND window = startPanel(run);
    ASSERT_NE(window, nullptr);
    ASSERT_TRUE(ui::waitUntil([&] { return ui::isEnabled(control(window, StopButton)); }));
    const std::vector<DWORD> before = installation.serverProcesses();
    ASSERT_FALSE(before.empty());
    HWND tabs = control(window, Tabs);
    ui::chooseTab(tabs, 1);
    HWND level = control(window, LogLevelBox);
    ui::chooseComboEntry(level, (ui::comboSelection(level) + 1) % 3);
    // The stop waits its 20 s for a server that ignores it, then the start.
    EXPECT_TRUE(ui::waitUntil(
        [&] {
            const std::vector<DWORD> now = installation.serverProcesses();
            return !now.empty() && std::none_of(now.begin(), now.end(), [&](DWORD pid) {
                return std::find(before.begin(), before.end(), pid) != before.end();
            });
        },
        90s));
    EXPECT_TRUE(waitForText(control(window, StatusLabel), words("CVCP-000009", English), 30s));
    EXPECT_LE(installation.serverProcesses().size(), 3u);
}
