#include "tests/e2e/installation_windows.h"

#include <winsock2.h>

#include <shlobj.h>
#include <tlhelp32.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "host/detector/processes.h"
#include "tests/e2e/ui_driver_windows.h"

namespace e2e {

namespace {

const std::wstring productKey = L"Software\\Ormal Co\\CorvaniteHost";
const std::wstring uninstallKey =
    L"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\CorvaniteHost";

std::wstring widen(const std::string& text) {
    return std::wstring(text.begin(), text.end());
}

std::wstring freshFolder() {
    static std::atomic<unsigned> counter{0};
    wchar_t temp[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, temp);
    std::wstring folder = std::wstring(temp) + L"cvh-e2e-" + std::to_wstring(GetTickCount64()) +
                          L"-" + std::to_wstring(counter.fetch_add(1));
    std::filesystem::create_directories(folder);
    return folder;
}

// A port that nobody listens on at this moment.
int freePort() {
    WSADATA data{};
    WSAStartup(MAKEWORD(2, 2), &data);
    SOCKET probe = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    bind(probe, reinterpret_cast<sockaddr*>(&address), sizeof(address));
    int length = sizeof(address);
    getsockname(probe, reinterpret_cast<sockaddr*>(&address), &length);
    closesocket(probe);
    return ntohs(address.sin_port);
}

std::string nginxConf(int port, const std::string& address = "") {
    std::ostringstream conf;
    conf << "worker_processes 1;\n"
         << "error_log logs/error.log info;\n"
         << "events {\n    worker_connections 64;\n}\n"
         << "http {\n    server {\n        listen " << (address.empty() ? "" : address + ":")
         << port << " ssl;\n"
         << "        server_name localhost;\n    }\n}\n";
    return conf.str();
}

void copyInto(const std::wstring& folder, const std::string& unixPath) {
    const std::filesystem::path source = windowsPathOf(unixPath);
    std::filesystem::copy_file(source, std::filesystem::path(folder) / source.filename(),
                               std::filesystem::copy_options::overwrite_existing);
}

std::wstring imageOf(DWORD processId) {
    HANDLE process = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, processId);
    if (process == nullptr) {
        return {};
    }
    wchar_t image[MAX_PATH * 2] = {};
    DWORD length = sizeof(image) / sizeof(image[0]);
    QueryFullProcessImageNameW(process, 0, image, &length);
    CloseHandle(process);
    return image;
}

bool startsWithIgnoringCase(const std::wstring& text, const std::wstring& prefix) {
    return text.size() >= prefix.size() &&
           _wcsnicmp(text.c_str(), prefix.c_str(), prefix.size()) == 0;
}

// The process and all its descendants, found by their parents' ids, the root first. A process older
// than the id's holder is left alone: its parent was an earlier process with the same id.
std::vector<DWORD> processTree(DWORD root) {
    const std::vector<detector::ProcessEntry> all = detector::listProcesses();
    std::vector<DWORD> tree{root};
    for (std::size_t next = 0; next < tree.size(); ++next) {
        for (const std::uint32_t child :
             detector::childProcessIds(all, tree[next], detector::native::processCreationTime)) {
            if (std::find(tree.begin(), tree.end(), child) == tree.end()) {
                tree.push_back(child);
            }
        }
    }
    return tree;
}

void endProcess(DWORD id) {
    HANDLE process = OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, id);
    if (process != nullptr) {
        TerminateProcess(process, 9);
        WaitForSingleObject(process, 5000);
        CloseHandle(process);
    }
}

// The console hosts that the system gave the installation's servers and left behind when a test
// killed a server in the middle of a start or stop: their parent is gone and, under Wine, they stay
// and keep the test runner's output open. Only hosts made during the installation's life go.
void endOrphanedConsoleHosts(std::uint64_t since) {
    const std::vector<detector::ProcessEntry> all = detector::listProcesses();
    for (const detector::ProcessEntry& entry : all) {
        if (_wcsicmp(entry.exeName.c_str(), L"conhost.exe") != 0) {
            continue;
        }
        const std::optional<std::uint64_t> created =
            detector::native::processCreationTime(entry.pid);
        const bool parentAlive = std::any_of(all.begin(), all.end(), [&](const auto& other) {
            return other.pid == entry.parentPid;
        });
        if (created && *created >= since && !parentAlive) {
            endProcess(entry.pid);
        }
    }
}

} // namespace

void endProcessTree(DWORD root) {
    for (DWORD id : processTree(root)) {
        endProcess(id);
    }
}

std::wstring windowsPathOf(const std::string& unixPath) {
    std::wstring path = L"Z:" + widen(unixPath);
    for (auto& letter : path) {
        if (letter == L'/') {
            letter = L'\\';
        }
    }
    return path;
}

SavedRegistryValue::SavedRegistryValue(std::wstring key, std::wstring name)
    : key_(std::move(key)), name_(std::move(name)), original_(read()) {}

SavedRegistryValue::~SavedRegistryValue() {
    write(original_);
}

std::optional<std::wstring> SavedRegistryValue::read() const {
    wchar_t data[512] = {};
    DWORD size = sizeof(data) - sizeof(wchar_t);
    if (RegGetValueW(HKEY_CURRENT_USER, key_.c_str(), name_.c_str(), RRF_RT_REG_SZ, nullptr, data,
                     &size) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    return std::wstring(data);
}

void SavedRegistryValue::write(const std::optional<std::wstring>& value) const {
    HKEY key = nullptr;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, key_.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                        &key, nullptr) != ERROR_SUCCESS) {
        throw std::runtime_error("registry key can't be made");
    }
    if (value) {
        RegSetValueExW(key, name_.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(value->c_str()),
                       static_cast<DWORD>((value->size() + 1) * sizeof(wchar_t)));
    } else {
        RegDeleteValueW(key, name_.c_str());
    }
    RegCloseKey(key);
}

UserProfileMade::UserProfileMade() {
    wchar_t folder[MAX_PATH] = {};
    SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA | CSIDL_FLAG_CREATE, nullptr, 0, folder);
}

// Ahead of every other static object of the test program: the settings store of the program's
// own code takes the profile folder during static initialisation and ends the process without it.
__attribute__((init_priority(101))) const UserProfileMade profileMadeFirst;

std::string serverBuildName(ServerBuild build) {
    return build == ServerBuild::Console ? "Console" : "Windowless";
}

Installation::Installation(ServerBuild server, const std::wstring& folderName)
    : language(productKey, L"Language"), displayVersion(uninstallKey, L"DisplayVersion"),
      root_(freshFolder()), folder_(folderName.empty() ? root_ : root_ + L"\\" + folderName),
      port_(freePort()), path_(productKey, L"Path") {
    std::filesystem::create_directories(folder_);
    wchar_t shortFolder[MAX_PATH] = {};
    const DWORD length = GetShortPathNameW(folder_.c_str(), shortFolder, MAX_PATH);
    shortFolder_ = length > 0 && length < MAX_PATH ? std::wstring(shortFolder, length) : folder_;
    copyInto(folder_, server == ServerBuild::Console ? CVH_TOOLS_DIR "/CorvaniteHost.exe"
                                                     : CVH_TOOLS_DIR
                          "/windowless/CorvaniteHost.exe");
    copyInto(folder_, CVH_TOOLS_DIR "/Corvanite.dll");
    copyInto(folder_, CVH_LAYOUT_FILE);
    std::filesystem::create_directories(folder_ + L"\\conf");
    std::filesystem::create_directories(folder_ + L"\\logs");
    std::filesystem::create_directories(folder_ + L"\\tmp");
    writeFile(L"conf\\nginx.conf", nginxConf(port_));
    path_.write(folder_);
    language.write(L"1033");
    displayVersion.write(std::nullopt);
    std::filesystem::remove(settingsPath());
}

void Installation::listenOnLoopback() const {
    writeFile(L"conf\\nginx.conf", nginxConf(port_, "127.0.0.1"));
}

Installation::~Installation() {
    killServer();
    if (const auto since = detector::native::processCreationTime(GetCurrentProcessId())) {
        endOrphanedConsoleHosts(*since);
    }
    std::error_code ignored;
    std::filesystem::remove_all(root_, ignored);
}

std::wstring Installation::pathOf(const std::wstring& relative) const {
    return folder_ + L"\\" + relative;
}

std::string Installation::readFile(const std::wstring& relative) const {
    std::ifstream file(std::filesystem::path(pathOf(relative)), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

bool Installation::confHoldsLevel(const std::string& level) const {
    return readFile(L"conf\\nginx.conf").find("error_log logs/error.log " + level + ";") !=
           std::string::npos;
}

void Installation::writeFile(const std::wstring& relative, const std::string& content) const {
    std::ofstream(std::filesystem::path(pathOf(relative)), std::ios::binary | std::ios::trunc)
        << content;
}

void Installation::removeFile(const std::wstring& relative) const {
    std::filesystem::remove(pathOf(relative));
}

std::wstring Installation::settingsPath() const {
    wchar_t profile[MAX_PATH] = {};
    SHGetFolderPathW(nullptr, CSIDL_PROFILE, nullptr, 0, profile);
    return std::wstring(profile) + L"\\.corvanite_settings";
}

std::optional<std::string> Installation::readSettings() const {
    std::ifstream file(std::filesystem::path(settingsPath()), std::ios::binary);
    if (!file) {
        return std::nullopt;
    }
    return std::string(std::istreambuf_iterator<char>(file), {});
}

std::vector<DWORD> Installation::serverProcesses() const {
    std::vector<DWORD> found;
    HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof(entry);
    for (BOOL more = Process32FirstW(snapshot, &entry); more;
         more = Process32NextW(snapshot, &entry)) {
        const std::wstring image = _wcsicmp(entry.szExeFile, L"CorvaniteHost.exe") == 0
                                       ? imageOf(entry.th32ProcessID)
                                       : std::wstring();
        if (startsWithIgnoringCase(image, folder_ + L"\\") ||
            startsWithIgnoringCase(image, shortFolder_ + L"\\")) {
            found.push_back(entry.th32ProcessID);
        }
    }
    CloseHandle(snapshot);
    return found;
}

bool Installation::waitForServer(bool running, std::chrono::milliseconds timeout) const {
    return ui::waitUntil([&] { return serverRuns() == running; }, timeout);
}

void Installation::killServer() const {
    for (DWORD id : serverProcesses()) {
        endProcessTree(id);
    }
}

ProgramRun::ProgramRun(const std::wstring& commandLine)
    : ProgramRun(commandLine, windowsPathOf(CVH_PROGRAM)) {}

ProgramRun::ProgramRun(const std::wstring& commandLine, const std::wstring& program) {
    std::wstring line = L"\"" + program + L"\"";
    if (!commandLine.empty()) {
        line += L" " + commandLine;
    }
    // No standard handles: under Wine they would be the test runner's pipes, and every program
    // that the panel starts would inherit them and keep the runner waiting.
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESTDHANDLES;
    if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &info_)) {
        throw std::runtime_error("the control panel can't be started");
    }
}

ProgramRun::~ProgramRun() {
    // The panel and whatever it started and left running: probes, the shell's handlers.
    endProcessTree(info_.dwProcessId);
    CloseHandle(info_.hThread);
    CloseHandle(info_.hProcess);
}

std::optional<DWORD> ProgramRun::waitForExit(std::chrono::milliseconds timeout) const {
    if (WaitForSingleObject(info_.hProcess, static_cast<DWORD>(timeout.count())) != WAIT_OBJECT_0) {
        return std::nullopt;
    }
    DWORD code = 0;
    GetExitCodeProcess(info_.hProcess, &code);
    return code;
}

bool ProgramRun::running() const {
    return WaitForSingleObject(info_.hProcess, 0) == WAIT_TIMEOUT;
}

HWND ProgramRun::window(std::chrono::milliseconds timeout) const {
    return ui::waitForTopWindow(windowClass, processId(), timeout);
}

} // namespace e2e
