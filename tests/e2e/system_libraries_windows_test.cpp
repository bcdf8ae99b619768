#include "tests/e2e/panel_session_windows.h"
#include "tests/e2e/shell_stand_in_windows.h"

#include <tlhelp32.h>

#include <filesystem>
#include <map>
#include <memory>
#include <vector>

using namespace e2e;

namespace {

constexpr int English = 1;
constexpr int hostVersionLabel = 5;
constexpr int informationLink = 16;

std::wstring lower(std::wstring text) {
    for (auto& letter : text) {
        letter = static_cast<wchar_t>(towlower(letter));
    }
    return text;
}

// The libraries that the process has loaded: lower-case name to full path, lower case.
std::map<std::wstring, std::wstring> loadedLibraries(DWORD processId) {
    std::map<std::wstring, std::wstring> found;
    HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPMODULE, processId);
    if (snapshot == INVALID_HANDLE_VALUE) {
        return found;
    }
    MODULEENTRY32W entry{};
    entry.dwSize = sizeof(entry);
    for (BOOL more = Module32FirstW(snapshot, &entry); more;
         more = Module32NextW(snapshot, &entry)) {
        found[lower(entry.szModule)] = lower(entry.szExePath);
    }
    CloseHandle(snapshot);
    return found;
}

std::wstring systemFolder() {
    wchar_t folder[MAX_PATH] = {};
    const UINT length = GetSystemDirectoryW(folder, MAX_PATH);
    return lower(std::wstring(folder, length));
}

// Runs a program with no standard handles and waits for its end; its exit code.
std::optional<DWORD> runToTheEnd(const std::wstring& program) {
    std::wstring line = L"\"" + program + L"\"";
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESTDHANDLES;
    PROCESS_INFORMATION info{};
    if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &info)) {
        return std::nullopt;
    }
    std::optional<DWORD> code;
    if (WaitForSingleObject(info.hProcess, 60000) == WAIT_OBJECT_0) {
        DWORD exitCode = 0;
        GetExitCodeProcess(info.hProcess, &exitCode);
        code = exitCode;
    } else {
        TerminateProcess(info.hProcess, 9);
    }
    CloseHandle(info.hThread);
    CloseHandle(info.hProcess);
    return code;
}

// The proofs that a planted library left in the folder: its files whose names end in ".loaded".
std::vector<std::wstring> proofsIn(const std::filesystem::path& folder) {
    std::vector<std::wstring> found;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        const std::wstring name = lower(entry.path().filename().wstring());
        if (name.size() > 7 && name.compare(name.size() - 7, 7, L".loaded") == 0) {
            found.push_back(name);
        }
    }
    return found;
}

} // namespace

using SystemLibraries = PanelSession;

// The installation folder is one the user can write, and the program lies in it. Libraries planted
// there under the names of the system libraries that the panel loads while it runs (IPHLPAPI for
// the connection table, DNSAPI for the report's look-up), with Wine told to prefer a library
// beside the program to its own (as Windows does for a library that is not one of its known DLLs),
// are never loaded: the panel takes them, and VERSION, from the system folder, and runs: the
// status shows the server's port from the connection table, the server's version is read, and a
// report is made.
TEST_F(SystemLibraries, LibrariesPlantedBesideTheProgramAreNeverLoadedAndThePanelRuns) {
    namespace fs = std::filesystem;
    const fs::path folder = installation.folder();
    const fs::path program = folder / L"CVHControlPanel.exe";
    const fs::path controlFolder = folder / L"control";
    const fs::path importer = controlFolder / L"cvh_version_importer.exe";
    fs::create_directories(controlFolder);
    fs::copy_file(windowsPathOf(CVH_PROGRAM), program);
    for (const wchar_t* library : {L"iphlpapi.dll", L"dnsapi.dll"}) {
        fs::copy_file(windowsPathOf(CVH_VERSION_MARKER), folder / library);
    }
    fs::copy_file(windowsPathOf(CVH_VERSION_MARKER), controlFolder / L"version.dll");
    fs::copy_file(windowsPathOf(CVH_VERSION_IMPORTER), importer);
    // Wine told to prefer these libraries beside the program to its own, for these two programs:
    // Wine's own form of "iphlpapi,dnsapi,version=n,b" in WINEDLLOVERRIDES. The variable itself is
    // read from the session's Unix environment only; set in this process's environment, it doesn't
    // reach the programs this process starts.
    const std::wstring wineDefaults = L"Software\\Wine\\AppDefaults\\";
    std::vector<std::unique_ptr<SavedRegistryValue>> overrides;
    for (const wchar_t* library : {L"iphlpapi", L"dnsapi"}) {
        overrides.push_back(std::make_unique<SavedRegistryValue>(
            wineDefaults + L"CVHControlPanel.exe\\DllOverrides", library));
    }
    overrides.push_back(std::make_unique<SavedRegistryValue>(
        wineDefaults + L"cvh_version_importer.exe\\DllOverrides", L"version"));
    for (const auto& value : overrides) {
        value->write(L"native,builtin");
    }

    // The planted library is taken for a program that imports it from its folder.
    ASSERT_TRUE(runToTheEnd(importer.wstring()).has_value());
    ASSERT_EQ(proofsIn(controlFolder).size(), 1u)
        << "the marker isn't loaded even for its importer";

    ShellStandIn shell{installation.pathOf(L"shell-records")};
    ProgramRun run(L"", program.wstring());
    HWND window = run.window();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(ui::waitUntil([&] { return ui::isVisible(window); }));
    EXPECT_TRUE(waitForText(control(window, StatusLabel), words("CVCP-000009", English)));
    const std::wstring port = std::to_wstring(installation.port());
    EXPECT_TRUE(ui::waitUntil([&] {
        return ui::text(control(window, AddressLink)).find(L":" + port) != std::wstring::npos;
    }));
    EXPECT_TRUE(waitForText(control(window, hostVersionLabel), L"3.8.2"));

    ui::clickLink(control(window, informationLink));
    const auto opened = shell.waitForRecord(0, 60s);
    ASSERT_TRUE(opened.has_value()) << "the report didn't end";
    EXPECT_NE(installation.readFile(L"logs\\info.log").find("Domain name "), std::string::npos);

    const auto loaded = loadedLibraries(run.processId());
    for (const wchar_t* library : {L"version.dll", L"iphlpapi.dll", L"dnsapi.dll"}) {
        const auto found = loaded.find(library);
        ASSERT_NE(found, loaded.end()) << fs::path(library).string() << " isn't loaded";
        EXPECT_EQ(fs::path(found->second).parent_path(), fs::path(systemFolder()))
            << fs::path(found->second).string();
    }
    EXPECT_TRUE(proofsIn(folder).empty()) << "the panel loaded a planted library";
    EXPECT_TRUE(run.running());
}
